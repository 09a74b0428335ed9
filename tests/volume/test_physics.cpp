// Temperatures against fields known in closed form.
#include <gtest/gtest.h>

#include "volume/volume_support.h"

namespace volume_test {
namespace {

constexpr double kLow = -13.1, kHigh = 20.0;

double Residual(void* handle) {
  double residual = -1.0;
  EXPECT_EQ(poissonresid(handle, &residual, nullptr), 0);
  return residual;
}

// Two slabs in series, x < a with conductivity k0 and x > a with k1: the flux is the same in
// both, so the profile is linear in each slab with the interface at
// (k0 TL / a + k1 TH / (1 - a)) / (k0 / a + k1 / (1 - a)). Equal conductivities make it the
// patch test: linear elements reproduce a linear field on distorted cells to round-off.
TEST(VolumePhysics, TwoMaterialWallBeforeAndAfterUpdate) {
  const double a = 0.4;
  Mesh mesh = Box(5, 0.3);
  mesh.conductivities = {1.0, 1.0};
  for (int t = 0; t < mesh.TetrahedronCount(); ++t) {
    double centre = 0;
    for (int c = 0; c < 4; ++c)
      centre += mesh.X(mesh.tetrahedra[4 * t + c]) / 4;
    mesh.materials[t] = centre < a ? 0 : 1;
  }
  Created created;
  Create(mesh, created);
  ASSERT_EQ(created.status, 0) << created.detail;

  auto expectSeriesProfile = [&](double k0, double k1) {
    const double interface = (k0 * kLow / a + k1 * kHigh / (1 - a)) / (k0 / a + k1 / (1 - a));
    const std::vector<double> t = Solve(created.handle, mesh.VertexCount());
    for (int v = 0; v < mesh.VertexCount(); ++v) {
      const double x = mesh.X(v);
      const double expected = x <= a ? kLow + (interface - kLow) * x / a
                                     : interface + (kHigh - interface) * (x - a) / (1 - a);
      EXPECT_NEAR(t[v], expected, 1e-11) << "vertex " << v << " at x = " << x;
    }
    EXPECT_LT(Residual(created.handle), 1e-22);
  };
  expectSeriesProfile(1.0, 1.0);
  EXPECT_EQ(poissoninfo(created.handle, nullptr), 0);

  double conductivities[] = {3.0, 4.0};
  char error[1024] = "stale";
  testing::internal::CaptureStdout();
  EXPECT_EQ(poissonresetconductivities(created.handle, conductivities, 0, error), 0);
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "Updating conductivities to 3.000000 4.000000\n");
  EXPECT_STREQ(error, "");
  // The temperatures wait for the next solve: the old ones no longer balance.
  EXPECT_GT(Residual(created.handle), 1e-6);
  EXPECT_EQ(poissoninfo(created.handle, nullptr), 0);
  expectSeriesProfile(3.0, 4.0);
}

// Low entries win, then a high entry turns a vertex that is no longer free into Mid (3.45):
// one in both lists, or twice in the high list. Twice in the low list stays low. Fixed values
// land on the caller's vertex numbers whatever the solver's order; with no free vertex there
// is nothing to balance.
TEST(VolumePhysics, FixedVerticesAndTheMidRule) {
  Mesh mesh = Box(2);
  const int lowAndHigh = mesh.low[0], highTwice = mesh.high[0], lowTwice = mesh.low[1];
  mesh.high.insert(mesh.high.end(), {lowAndHigh, highTwice});
  mesh.low.push_back(lowTwice);
  Created created;
  Create(mesh, created);
  ASSERT_EQ(created.status, 0);
  const std::vector<double> t = Solve(created.handle, mesh.VertexCount());
  EXPECT_EQ(t[lowAndHigh], 3.45);
  EXPECT_EQ(t[highTwice], 3.45);
  EXPECT_EQ(t[lowTwice], kLow);
  EXPECT_EQ(t[mesh.high[1]], kHigh);

  Mesh allFixed = SingleTetrahedron();
  allFixed.low = {3};
  allFixed.high = {1, 0, 2};
  Created fixed;
  Create(allFixed, fixed);
  EXPECT_EQ(Solve(fixed.handle, 4), (std::vector<double>{kHigh, kHigh, kHigh, kLow}));
  EXPECT_EQ(Residual(fixed.handle), 0.0);
}

}  // namespace
}  // namespace volume_test
