// Temperatures against fields known in closed form.
#include <gtest/gtest.h>

#include <cmath>

#include "volume/volume_fixtures.h"

namespace volume_test {
namespace {

constexpr double kLow = -13.1, kHigh = 20.0;

double Residual(void* handle) {
  double residual = -1.0;
  char error[1024];
  EXPECT_EQ(poissonresid(handle, &residual, error), 0);
  return residual;
}

// Linear elements reproduce a linear field exactly, on regular and on distorted cells.
TEST(VolumePhysics, BoxReproducesLinearFieldToRoundOff) {
  for (double jitter : {0.0, 0.3}) {
    const Mesh mesh = Box(5, jitter);
    Created created;
    Create(mesh, created);
    ASSERT_EQ(created.status, 0) << created.error << created.detail;
    const std::vector<double> t = Solve(created.handle, mesh.VertexCount());
    for (int v = 0; v < mesh.VertexCount(); ++v) {
      EXPECT_NEAR(t[v], kLow + (kHigh - kLow) * mesh.X(v), 1e-12) << "vertex " << v;
    }
    EXPECT_LT(Residual(created.handle), 1e-24);
    EXPECT_EQ(poissoninfo(created.handle, nullptr), 0);
  }
}

// Two slabs in series, x < 0.4 with conductivity k0 and x > 0.4 with k1: the flux is the same
// in both, so the profile is linear in each slab and the interface sits at
// (k0 TL / a + k1 TH / (1 - a)) / (k0 / a + k1 / (1 - a)).
class TwoMaterialWall : public testing::Test {
 protected:
  static constexpr double kInterface = 0.4;

  void SetUp() override {
    mesh_ = Box(5, 0.25);
    mesh_.conductivities = {1.0, 2.0};
    for (int t = 0; t < mesh_.TetrahedronCount(); ++t) {
      double centre = 0;
      for (int c = 0; c < 4; ++c)
        centre += mesh_.X(mesh_.tetrahedra[4 * t + c]) / 4;
      mesh_.materials[t] = centre < kInterface ? 0 : 1;
    }
    Create(mesh_, created_);
    ASSERT_EQ(created_.status, 0) << created_.detail;
  }

  void ExpectSeriesProfile(double k0, double k1) {
    const double a = kInterface;
    const double interface = (k0 * kLow / a + k1 * kHigh / (1 - a)) / (k0 / a + k1 / (1 - a));
    const std::vector<double> t = Solve(created_.handle, mesh_.VertexCount());
    for (int v = 0; v < mesh_.VertexCount(); ++v) {
      const double x = mesh_.X(v);
      const double expected = x <= a ? kLow + (interface - kLow) * x / a
                                     : interface + (kHigh - interface) * (x - a) / (1 - a);
      EXPECT_NEAR(t[v], expected, 1e-11) << "vertex " << v << " at x = " << x;
    }
    EXPECT_LT(Residual(created_.handle), 1e-22);
  }

  Mesh mesh_;
  Created created_;
};

TEST_F(TwoMaterialWall, GivesPiecewiseLinearProfile) {
  ExpectSeriesProfile(1.0, 2.0);
}

TEST_F(TwoMaterialWall, NewConductivitiesMoveTheInterfaceTemperature) {
  ExpectSeriesProfile(1.0, 2.0);
  double conductivities[] = {3.0, 4.0};
  char error[1024] = "stale";
  testing::internal::CaptureStdout();
  EXPECT_EQ(poissonresetconductivities(created_.handle, conductivities, 2, error), 0);
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "Updating conductivities to 3.000000 4.000000\n");
  EXPECT_STREQ(error, "");
  EXPECT_EQ(poissoninfo(created_.handle, nullptr), 0);
  ExpectSeriesProfile(3.0, 4.0);
}

// Every fixed temperature lands on the caller's vertex number, whatever the solver's order.
TEST(VolumePhysics, FixedTemperaturesFollowVertexNumbers) {
  Mesh mesh = SingleTetrahedron();
  mesh.low = {3};
  mesh.high = {1, 0, 2};
  Created created;
  Create(mesh, created);
  ASSERT_EQ(created.status, 0);
  EXPECT_EQ(Solve(created.handle, 4), (std::vector<double>{kHigh, kHigh, kHigh, kLow}));
  // No free vertex: nothing to balance.
  EXPECT_EQ(Residual(created.handle), 0.0);
}

// A vertex in both lists, or twice in the high list, is held at the mean temperature; a
// vertex twice in the low list stays low.
TEST(VolumePhysics, MidRule) {
  Mesh mesh = Box(2);
  const int corner = 0;  // on the low face
  mesh.high.push_back(corner);
  const int highFace = mesh.high.front();
  mesh.high.push_back(highFace);
  const int other = mesh.low.back();
  mesh.low.push_back(other);
  Created created;
  Create(mesh, created);
  ASSERT_EQ(created.status, 0);
  const std::vector<double> t = Solve(created.handle, mesh.VertexCount());
  EXPECT_EQ(t[corner], 3.45);
  EXPECT_EQ(t[highFace], 3.45);
  EXPECT_EQ(t[other], kLow);
  EXPECT_EQ(t[mesh.high[1]], kHigh);
}

// A second solve starts again from zero and gives the same answer.
TEST(VolumePhysics, RepeatedSolvesAgree) {
  const Mesh mesh = Box(3, 0.2);
  Created created;
  Create(mesh, created);
  ASSERT_EQ(created.status, 0);
  const std::vector<double> first = Solve(created.handle, mesh.VertexCount());
  EXPECT_EQ(Solve(created.handle, mesh.VertexCount()), first);
}

}  // namespace
}  // namespace volume_test
