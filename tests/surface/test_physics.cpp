// A rectangle held at 0 along its lower edge and at 1 along its upper edge has the linear
// temperature (y - ymin) / height, the uniform flux k / height along +y, and isotherms across
// its full width carrying k / height * width. Every formulation must reproduce this exactly.
#include <gtest/gtest.h>

#include "surface/stiffness.h"
#include "surface/surface_support.h"

namespace brindle {
namespace testing {
namespace {

constexpr double kWidth = 3.0, kHeight = 2.0;
constexpr int kNx = 6;

class EveryMethod : public ::testing::TestWithParam<int> {};

TEST_P(EveryMethod, LinearProfileUniformFluxAndIsotherms) {
  const int ny = 5;  // rows at fifths, so the quarter levels miss every vertex
  const ON_Mesh mesh = RectangleMesh(kWidth, kHeight, kNx, ny);
  SolverHandle solver = CreateSolver(mesh, GetParam());
  const double k = 2.5;
  ASSERT_EQ(Update(solver.get(), {k}), 0);

  const double levels[3] = {0.75, 0.25, 0.5};
  const auto s = SolveAll(solver.get(), mesh, {levels[0], levels[1], levels[2]});
  for (int i = 0; i < mesh.VertexCount(); ++i)
    EXPECT_NEAR(s->temperature[i], (mesh.m_dV[i].y + 0.5 * kHeight) / kHeight, 1e-12) << i;
  for (int f = 0; f < mesh.FaceCount(); ++f) {
    EXPECT_NEAR(s->faceFlux[3 * f], 0.0, 1e-11);
    EXPECT_NEAR(s->faceFlux[3 * f + 1], k / kHeight, 1e-11);
  }
  // Each level crosses one band of 2 nx faces; results come in the order of the levels.
  ASSERT_EQ(s->isotherms.Count(), 3 * 2 * kNx);
  for (int level = 0; level < 3; ++level) {
    double length = 0.0;
    for (int i = 0; i < 2 * kNx; ++i) {
      const ON_Line& segment = s->isotherms[level * 2 * kNx + i];
      EXPECT_NEAR(segment.from.y, (levels[level] - 0.5) * kHeight, 1e-12);
      length += segment.Length();
    }
    EXPECT_NEAR(length, kWidth, 1e-12);
    EXPECT_NEAR(s->levelFlow[level], k / kHeight * kWidth, 1e-10);
  }
}

TEST_P(EveryMethod, SeriesLayersMeetAtTheSeriesResistanceTemperature) {
  // Equal layers of conductivity 1 (below) and 3 (above) meet at k2 / (k1 + k2) = 0.75.
  const int ny = 4;
  const ON_Mesh mesh = RectangleMesh(kWidth, kHeight, kNx, ny);
  SolverHandle solver = CreateSolver(mesh, GetParam(), TwoLayerRegions(kNx, ny, ny / 2));
  ASSERT_EQ(Update(solver.get(), {1.0, 3.0}), 0);

  const auto s = SolveAll(solver.get(), mesh);
  const double half = 0.5 * kHeight;
  for (int i = 0; i < mesh.VertexCount(); ++i) {
    const double y = mesh.m_dV[i].y + half;
    const double expected = y <= half ? 0.75 * y / half : 0.75 + 0.25 * (y - half) / half;
    EXPECT_NEAR(s->temperature[i], expected, 1e-12) << i;
  }
  for (int f = 0; f < mesh.FaceCount(); ++f)
    EXPECT_NEAR(s->faceFlux[3 * f + 1], 0.75 / half, 1e-11);
}

INSTANTIATE_TEST_SUITE_P(Surface, EveryMethod, ::testing::Values(0, 1, 2, 3));

// Methods 1 and 2 build the same cotangent matrix except on edges shared by two regions:
// method 1 weights their summed cotangents with the harmonic mean of the conductivities,
// method 2 weights each face's cotangent with its own conductivity.
TEST(EdgeCotangentForm, DiffersFromVertexRowsOnlyByTheHarmonicMeanRule) {
  const int nx = 3, ny = 2;
  const ON_Mesh mesh = RectangleMesh(3.0, 2.0, nx, ny);  // unit-square cells
  const std::vector<int> regions = TwoLayerRegions(nx, ny, 1);
  SurfaceModel model;
  ASSERT_EQ(BuildSurfaceModel(mesh, regions.data(), model, nullptr), 0);
  const double k[2] = {1.0, 3.0};
  ASSERT_TRUE(model.SetConductivities(k, 2));

  auto assemble = [&](int method) {
    Triplets triplets;
    EXPECT_EQ(AssembleStiffness(model, method, triplets), 0);
    Eigen::SparseMatrix<double> matrix(model.VertexCount(), model.VertexCount());
    matrix.setFromTriplets(triplets.begin(), triplets.end());
    return Eigen::MatrixXd(matrix);
  };
  const Eigen::MatrixXd harmonic = assemble(1), perFace = assemble(2);

  // An edge between two vertices of input row 1 has cotangent 1 in both its faces, so
  // method 1 weights it -0.5 * 1.5 * 2 and method 2 -0.5 * (1 + 3).
  auto onInterface = [&](int ordered) { return model.newToOld[ordered] / (nx + 1) == 1; };
  for (int i = 0; i < model.VertexCount(); ++i) {
    for (int j = 0; j < model.VertexCount(); ++j) {
      if (i != j && onInterface(i) && onInterface(j) && perFace(i, j) != 0.0) {
        EXPECT_NEAR(harmonic(i, j), -1.5, 1e-14);
        EXPECT_NEAR(perFace(i, j), -2.0, 1e-14);
      } else if (i != j) {
        EXPECT_NEAR(harmonic(i, j), perFace(i, j), 1e-14) << i << "," << j;
      }
    }
    EXPECT_NEAR(harmonic.row(i).sum(), 0.0, 1e-13);
  }
}

}  // namespace
}  // namespace testing
}  // namespace brindle
