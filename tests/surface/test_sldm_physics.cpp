// Physical checks of the whole solver: a rectangle held at 0 along its lower edge and at 1
// along its upper edge has the linear temperature (y - ymin) / height, the uniform flux
// k / height along +y, and isotherms across its full width carrying k / height * width.
#include <gtest/gtest.h>

#include <cmath>

#include "sldm_test_support.h"
#include "surface/sldm_solver.h"
#include "surface/stiffness.h"
#include "surface_meshes.h"

namespace brindle {
namespace testing {
namespace {

constexpr double kWidth = 3.0;
constexpr double kHeight = 2.0;
constexpr int kNx = 6;
constexpr int kNy = 5;  // rows at fifths, so the quarter levels miss every vertex

class EveryMethod : public ::testing::TestWithParam<int> {};

TEST_P(EveryMethod, LinearProfileUniformFluxAndIsotherms) {
  const ON_Mesh mesh = RectangleMesh(kWidth, kHeight, kNx, kNy);
  SolverHandle solver = CreateSolver(mesh, GetParam(), std::vector<int>(2 * kNx * kNy, 0));
  const double k = 2.5;
  ASSERT_EQ(Update(solver.get(), {k}), 0);

  const auto s = SolveAll(solver.get(), mesh, {0.25, 0.5, 0.75});
  for (int i = 0; i < mesh.VertexCount(); ++i) {
    const double expected = (mesh.m_dV[i].y + 0.5 * kHeight) / kHeight;
    EXPECT_NEAR(s->temperature[i], expected, 1e-12) << "vertex " << i;
  }
  for (int f = 0; f < mesh.FaceCount(); ++f) {
    EXPECT_NEAR(s->faceFlux[3 * f], 0.0, 1e-11);
    EXPECT_NEAR(s->faceFlux[3 * f + 1], k / kHeight, 1e-11);
    EXPECT_NEAR(s->faceFlux[3 * f + 2], 0.0, 1e-11);
  }
  // Each quarter level crosses one row of 2 nx faces.
  ASSERT_EQ(s->isotherms.Count(), 3 * 2 * kNx);
  const double levels[3] = {0.25, 0.5, 0.75};
  for (int level = 0; level < 3; ++level) {
    double length = 0.0;
    for (int i = 0; i < 2 * kNx; ++i) {
      const ON_Line& segment = s->isotherms[level * 2 * kNx + i];
      const double y = levels[level] * kHeight - 0.5 * kHeight;
      EXPECT_NEAR(segment.from.y, y, 1e-12);
      EXPECT_NEAR(segment.to.y, y, 1e-12);
      length += segment.Length();
    }
    EXPECT_NEAR(length, kWidth, 1e-12);
    EXPECT_NEAR(s->levelFlow[level], k / kHeight * kWidth, 1e-10);
  }
}

TEST_P(EveryMethod, SeriesLayersMeetAtTheSeriesResistanceTemperature) {
  // Equal layers of conductivity 1 (below) and 3 (above): the interface sits at
  // k2 / (k1 + k2) = 0.75 and the flux is the same in both layers.
  const int ny = 4;
  const ON_Mesh mesh = RectangleMesh(kWidth, kHeight, kNx, ny);
  SolverHandle solver = CreateSolver(mesh, GetParam(), TwoLayerRegions(kNx, ny, ny / 2));
  ASSERT_EQ(Update(solver.get(), {1.0, 3.0}), 0);

  const auto s = SolveAll(solver.get(), mesh);
  const double layer = 0.5 * kHeight;
  for (int i = 0; i < mesh.VertexCount(); ++i) {
    const double y = mesh.m_dV[i].y + 0.5 * kHeight;
    const double expected = y <= layer ? 0.75 * y / layer : 0.75 + 0.25 * (y - layer) / layer;
    EXPECT_NEAR(s->temperature[i], expected, 1e-12) << "vertex " << i;
  }
  for (int f = 0; f < mesh.FaceCount(); ++f)
    EXPECT_NEAR(s->faceFlux[3 * f + 1], 0.75 / layer, 1e-11) << "face " << f;
}

INSTANTIATE_TEST_SUITE_P(Surface, EveryMethod, ::testing::Values(0, 1, 2, 3));

// The cotangent methods 1 and 2 build the same matrix except on edges between two regions,
// where method 1 weights the summed cotangents with the harmonic mean of the conductivities
// and method 2 weights each face's cotangent with its own conductivity.
TEST(EdgeCotangentForm, DiffersFromVertexRowsOnlyByTheHarmonicMeanRule) {
  const int nx = 3, ny = 2;
  SurfaceModel model;
  char error[1024];
  const ON_Mesh mesh = RectangleMesh(3.0, 2.0, nx, ny);
  const std::vector<int> regions = TwoLayerRegions(nx, ny, 1);
  ASSERT_EQ(BuildSurfaceModel(mesh, regions.data(), model, error), 0);
  const double k[2] = {1.0, 3.0};
  ASSERT_TRUE(model.SetConductivities(k, 2));

  auto assemble = [&](int method) {
    Triplets triplets;
    EXPECT_EQ(AssembleStiffness(model, method, triplets), 0);
    Eigen::SparseMatrix<double> matrix(model.VertexCount(), model.VertexCount());
    matrix.setFromTriplets(triplets.begin(), triplets.end());
    return Eigen::MatrixXd(matrix);
  };
  const Eigen::MatrixXd harmonic = assemble(1);
  const Eigen::MatrixXd perFace = assemble(2);

  // Interface vertices are those of input row 1; edges between two of them are shared by a
  // face of each layer. With unit-square cells the cotangent opposite a horizontal edge is 1
  // in both faces, so method 1 weights -0.5 * 1.5 * 2 and method 2 -0.5 * (1 + 3).
  auto onInterface = [&](int ordered) {
    const int input = model.newToOld[ordered];
    return input / (nx + 1) == 1;
  };
  for (int i = 0; i < model.VertexCount(); ++i) {
    for (int j = 0; j < model.VertexCount(); ++j) {
      if (i == j) continue;
      if (onInterface(i) && onInterface(j) && perFace(i, j) != 0.0) {
        EXPECT_NEAR(harmonic(i, j), -1.5, 1e-14);
        EXPECT_NEAR(perFace(i, j), -2.0, 1e-14);
      } else {
        EXPECT_NEAR(harmonic(i, j), perFace(i, j), 1e-14) << i << "," << j;
      }
    }
    // Rows still sum to zero in both.
    EXPECT_NEAR(harmonic.row(i).sum(), 0.0, 1e-13);
    EXPECT_NEAR(perFace.row(i).sum(), 0.0, 1e-13);
  }
}

// Method 3 is four times method 0, which changes residual sizes but not temperatures.
TEST(EdgeVectorForm, IsFourTimesTheGradientForm) {
  SurfaceModel model;
  const ON_Mesh mesh = RectangleMesh(1.7, 0.9, 3, 4);
  ASSERT_EQ(BuildSurfaceModel(mesh, nullptr, model, nullptr), 0);
  Triplets gradient, edgeVector;
  ::testing::internal::CaptureStdout();
  ASSERT_EQ(AssembleStiffness(model, 0, gradient), 0);
  ::testing::internal::GetCapturedStdout();
  ASSERT_EQ(AssembleStiffness(model, 3, edgeVector), 0);
  const int n = model.VertexCount();
  Eigen::SparseMatrix<double> a(n, n), b(n, n);
  a.setFromTriplets(gradient.begin(), gradient.end());
  b.setFromTriplets(edgeVector.begin(), edgeVector.end());
  EXPECT_LT((Eigen::MatrixXd(b) - 4.0 * Eigen::MatrixXd(a)).cwiseAbs().maxCoeff(), 1e-12);
}

}  // namespace
}  // namespace testing
}  // namespace brindle
