// Solving and its outputs: argument statuses, which outputs appear for which arguments, the
// flux mesh, isotherm edge cases, and the update rules.
#include <gtest/gtest.h>

#include <cmath>
#include <stdexcept>
#include <string>

#include "sldm_test_support.h"
#include "surface_meshes.h"

namespace brindle {
namespace testing {
namespace {

constexpr int kNx = 4, kNy = 3;

class SolveOutputs : public ::testing::Test {
 protected:
  SolveOutputs() : mesh_(RectangleMesh(2.0, 1.5, kNx, kNy)), solver_(CreateSolver(mesh_, 3)) {}

  int Faces() const { return mesh_.FaceCount(); }
  int Vertices() const { return mesh_.VertexCount(); }

  ON_Mesh mesh_;
  SolverHandle solver_;
};

TEST_F(SolveOutputs, HandleAndTemperatureArgumentStatuses) {
  std::vector<double> t(Vertices(), -7.0);
  char error[1024];
  EXPECT_EQ(sldmsolve(nullptr, t.data(), Vertices(), nullptr, 0, nullptr, nullptr, 0, nullptr,
                      nullptr, error),
            -1001);
  EXPECT_STREQ(error, "Null solver handle");

  ::testing::internal::CaptureStdout();
  EXPECT_EQ(sldmsolve(solver_.get(), t.data(), Vertices() - 1, nullptr, 0, nullptr, nullptr, 0,
                      nullptr, nullptr, error),
            -17);
  EXPECT_EQ(::testing::internal::GetCapturedStdout(),
            "length = " + std::to_string(Vertices() - 1) + ", n() = " + std::to_string(Vertices()));
  EXPECT_STREQ(error, "");
  EXPECT_EQ(t, std::vector<double>(Vertices(), -7.0));

  EXPECT_EQ(sldmsolve(solver_.get(), nullptr, Vertices(), nullptr, 0, nullptr, nullptr, 0, nullptr,
                      nullptr, error),
            -18);
  EXPECT_STREQ(error, "Null temperature array");
}

TEST_F(SolveOutputs, NegativeCountsAndNonEmptyFluxMeshAreRefusedBeforeWriting) {
  std::vector<double> t(Vertices(), -7.0), flux(3 * Faces(), -7.0);
  double level = 0.5, flow = -7.0;
  ON_SimpleArray<ON_Line> lines;
  ON_Mesh fluxMesh;
  char error[1024];
  EXPECT_EQ(sldmsolve(solver_.get(), t.data(), Vertices(), &level, -1, &lines, nullptr, 0, &flow,
                      nullptr, error),
            -19);
  EXPECT_STREQ(error, "Negative level count -1");
  EXPECT_EQ(sldmsolve(solver_.get(), t.data(), Vertices(), nullptr, 0, nullptr, flux.data(), -3,
                      &flow, &fluxMesh, error),
            -20);
  EXPECT_STREQ(error, "Negative face flux count -3");
  ON_Mesh used = RectangleMesh(1, 1, 1, 1);
  EXPECT_EQ(sldmsolve(solver_.get(), t.data(), Vertices(), nullptr, 0, nullptr, flux.data(),
                      3 * Faces(), &flow, &used, error),
            -21);
  EXPECT_STREQ(error, "Flux mesh must be empty");
  EXPECT_EQ(t, std::vector<double>(Vertices(), -7.0));
  EXPECT_EQ(flux, std::vector<double>(3 * Faces(), -7.0));
  EXPECT_EQ(used.VertexCount(), 4);
}

TEST_F(SolveOutputs, FluxMeshHasOneFlatColouredTrianglePerFace) {
  const auto s = SolveAll(solver_.get(), mesh_);
  const ON_Mesh& out = s->fluxMesh;
  ASSERT_EQ(out.VertexCount(), 3 * Faces());
  ASSERT_EQ(out.FaceCount(), Faces());
  ASSERT_EQ(out.m_C.Count(), 3 * Faces());
  ASSERT_EQ(out.m_N.Count(), 3 * Faces());
  EXPECT_TRUE(out.HasSynchronizedDoubleAndSinglePrecisionVertices());
  EXPECT_TRUE(out.IsValid());
  for (int f = 0; f < Faces(); ++f) {
    const ON_MeshFace& face = out.m_F[f];
    EXPECT_EQ(face.vi[0], 3 * f);
    EXPECT_EQ(face.vi[1], 3 * f + 1);
    EXPECT_EQ(face.vi[2], 3 * f + 2);
    EXPECT_EQ(face.vi[3], 3 * f + 2);
    for (int c = 0; c < 3; ++c) {
      // Uniform flux: every face is at the top of the ramp. Normals face +z (anticlockwise).
      const ON_Color color = out.m_C[3 * f + c];
      EXPECT_EQ(color.Red(), 146);
      EXPECT_EQ(color.Green(), 0);
      EXPECT_EQ(color.Blue(), 0);
      EXPECT_EQ(out.m_N[3 * f + c], ON_3fVector(0, 0, 1));
      EXPECT_EQ(out.m_dV[3 * f + c], mesh_.m_dV[mesh_.m_F[f].vi[c]]);
    }
  }
}

TEST_F(SolveOutputs, NullLevelFlowDisablesFluxAndIsotherms) {
  std::vector<double> t(Vertices()), flux(3 * Faces(), -7.0);
  double level = 0.5;
  ON_SimpleArray<ON_Line> lines;
  ON_Mesh fluxMesh;
  ASSERT_EQ(sldmsolve(solver_.get(), t.data(), Vertices(), &level, 1, &lines, flux.data(),
                      3 * Faces(), nullptr, &fluxMesh, nullptr),
            0);
  EXPECT_EQ(flux, std::vector<double>(3 * Faces(), -7.0));
  EXPECT_EQ(fluxMesh.VertexCount(), 0);
  EXPECT_EQ(lines.Count(), 0);
}

TEST_F(SolveOutputs, IsothermsWithoutFluxCarryNoFlow) {
  std::vector<double> t(Vertices());
  double level = 0.5, flow = -7.0;
  ON_SimpleArray<ON_Line> lines;
  ASSERT_EQ(sldmsolve(solver_.get(), t.data(), Vertices(), &level, 1, &lines, nullptr, 0, &flow,
                      nullptr, nullptr),
            0);
  EXPECT_EQ(lines.Count(), 2 * kNx);
  EXPECT_EQ(flow, 0.0);
}

TEST_F(SolveOutputs, WrongFluxLengthStillBuildsTheMeshAtZeroFlux) {
  std::vector<double> t(Vertices()), flux(3 * Faces(), -7.0);
  double flow = -7.0;
  ON_Mesh fluxMesh;
  ASSERT_EQ(sldmsolve(solver_.get(), t.data(), Vertices(), nullptr, 0, nullptr, flux.data(),
                      3 * Faces() - 1, &flow, &fluxMesh, nullptr),
            0);
  EXPECT_EQ(flux, std::vector<double>(3 * Faces(), -7.0));
  ASSERT_EQ(fluxMesh.FaceCount(), Faces());
  for (int i = 0; i < fluxMesh.m_C.Count(); ++i) {
    EXPECT_EQ(fluxMesh.m_C[i].Red(), 0);
    EXPECT_EQ(fluxMesh.m_C[i].Blue(), 146);
  }
}

TEST_F(SolveOutputs, LevelsOutsideTheRangeOrAtFixedValuesDrawNothing) {
  const auto s = SolveAll(solver_.get(), mesh_, {-0.5, 0.0, 1.0, 1.5});
  EXPECT_EQ(s->isotherms.Count(), 0);
  EXPECT_EQ(s->levelFlow, std::vector<double>(4, 0.0));
}

TEST_F(SolveOutputs, IsothermsAreAppendedInLevelOrder) {
  ON_SimpleArray<ON_Line> lines;
  lines.Append(ON_Line(ON_3dPoint(9, 9, 9), ON_3dPoint(8, 8, 8)));
  std::vector<double> t(Vertices()), flux(3 * Faces()), levels = {0.8, 0.1, 0.5}, flows(3);
  ON_Mesh fluxMesh;
  ASSERT_EQ(sldmsolve(solver_.get(), t.data(), Vertices(), levels.data(), 3, &lines, flux.data(),
                      3 * Faces(), flows.data(), &fluxMesh, nullptr),
            0);
  ASSERT_EQ(lines.Count(), 1 + 3 * 2 * kNx);
  EXPECT_EQ(lines[0].from, ON_3dPoint(9, 9, 9));
  for (int level = 0; level < 3; ++level) {
    for (int i = 0; i < 2 * kNx; ++i)
      EXPECT_NEAR(lines[1 + level * 2 * kNx + i].from.y, levels[level] * 1.5 - 0.75, 1e-12);
    EXPECT_NEAR(flows[level], 2.0 / 1.5, 1e-12);
  }
}

TEST(SldmSolve, SegmentRunsFromTheFirstCrossedEdgeInCornerOrder) {
  // One fixed triangle: T = 0 at a, 1 at b, 0 at c. Level 0.5 crosses (a,b) and (b,c).
  const ON_Mesh mesh = MeshOf({ON_3dPoint(0, 0, 0), ON_3dPoint(2, 0, 0), ON_3dPoint(0, 2, 0)},
                              {{0, 1, 2}}, {1, 3, 1});
  SolverHandle solver = CreateSolver(mesh, 3);
  const auto s = SolveAll(solver.get(), mesh, {0.25});
  ASSERT_EQ(s->isotherms.Count(), 1);
  EXPECT_EQ(s->isotherms[0].from, ON_3dPoint(0.5, 0, 0));
  EXPECT_EQ(s->isotherms[0].to, ON_3dPoint(0.5, 1.5, 0));
  // T = x / 2, so the flux is (0.5, 0, 0) and the flow is 0.5 times the segment length.
  EXPECT_NEAR(s->faceFlux[0], 0.5, 1e-15);
  EXPECT_NEAR(s->faceFlux[1], 0.0, 1e-15);
  EXPECT_NEAR(s->levelFlow[0], 0.5 * s->isotherms[0].Length(), 1e-15);
}

TEST(SldmSolve, AllFixedMeshNeedsNoSolve) {
  const ON_Mesh mesh = RectangleMesh(1, 2, 1, 1);
  SolverHandle solver = CreateSolver(mesh, 2);
  const auto s = SolveAll(solver.get(), mesh, {0.5});
  EXPECT_EQ(s->temperature, (std::vector<double>{0, 0, 1, 1}));
  EXPECT_NEAR(s->faceFlux[1], 0.5, 1e-15);
  EXPECT_EQ(s->isotherms.Count(), 2);
  EXPECT_NEAR(s->levelFlow[0], 0.5, 1e-15);
}

TEST(SldmSolve, TinyFaceCarriesNoFluxAndTakesTheZeroColour) {
  // A proper square plus a detached triangle too small for the flux determinant (1e-8).
  const double e = 5e-5;
  const ON_Mesh mesh =
      MeshOf({ON_3dPoint(0, 0, 0), ON_3dPoint(1, 0, 0), ON_3dPoint(1, 1, 0), ON_3dPoint(0, 1, 0),
              ON_3dPoint(3, 0, 0), ON_3dPoint(3 + e, 0, 0), ON_3dPoint(3, e, 0)},
             {{0, 1, 2}, {0, 2, 3}, {4, 5, 6}}, {1, 1, 3, 3, 1, 1, 3});
  SolverHandle solver = CreateSolver(mesh, 3);
  const auto s = SolveAll(solver.get(), mesh);
  EXPECT_NEAR(s->faceFlux[1], 1.0, 1e-14);
  EXPECT_EQ(s->faceFlux[6], -7.0);  // left untouched
  EXPECT_EQ(s->fluxMesh.m_C[0].Red(), 146);
  EXPECT_EQ(s->fluxMesh.m_C[6].Red(), 0);
  EXPECT_EQ(s->fluxMesh.m_C[6].Blue(), 146);
}

TEST(SldmUpdate, StatusesAndConductivityReset) {
  const int nx = 2, ny = 2;
  const ON_Mesh mesh = RectangleMesh(1, 1, nx, ny);
  SolverHandle solver = CreateSolver(mesh, 1, TwoLayerRegions(nx, ny, 1));
  char error[1024];
  EXPECT_EQ(sldmupdate(nullptr, nullptr, 0, error), -1001);
  EXPECT_STREQ(error, "Null solver handle");
  EXPECT_EQ(sldmupdate(solver.get(), nullptr, 2, error), -3004);
  EXPECT_STREQ(error, "Null conductivity array");

  auto middle = [&] { return SolveAll(solver.get(), mesh)->temperature[nx + 1]; };
  ASSERT_EQ(Update(solver.get(), {1.0, 3.0}), 0);
  EXPECT_NEAR(middle(), 0.75, 1e-14);
  ASSERT_EQ(Update(solver.get(), {3.0, 1.0}), 0);
  EXPECT_NEAR(middle(), 0.25, 1e-14);

  // Too few values (count equal to the largest region, or negative) resets every region to
  // 1.0 without a message, but the factorisation of the last update stays.
  const double one[1] = {5.0};
  EXPECT_EQ(sldmupdate(solver.get(), one, 1, error), -3003);
  EXPECT_STREQ(error, "");
  EXPECT_NEAR(middle(), 0.25, 1e-14);
  EXPECT_EQ(sldmupdate(solver.get(), one, -4, error), -3003);
  ASSERT_EQ(Update(solver.get(), {1.0, 1.0}), 0);
  EXPECT_NEAR(middle(), 0.5, 1e-14);
}

TEST(SldmUpdate, ResidualAboveTheAbsoluteLimitEscapes) {
  // The residual limit is absolute, so huge conductivities make it fail on rounding alone.
  const ON_Mesh mesh = RectangleMesh(1, 1, 8, 8);
  SolverHandle solver = CreateSolver(mesh, 2);
  ASSERT_EQ(Update(solver.get(), {1e12}), 0);
  std::vector<double> t(mesh.VertexCount(), -7.0);
  EXPECT_THROW(
      {
        try {
          sldmsolve(solver.get(), t.data(), mesh.VertexCount(), nullptr, 0, nullptr, nullptr, 0,
                    nullptr, nullptr, nullptr);
        } catch (const std::runtime_error& e) {
          EXPECT_STREQ(e.what(), "Large reduced residual");
          throw;
        }
      },
      std::runtime_error);
  EXPECT_EQ(t, std::vector<double>(mesh.VertexCount(), -7.0));
}

TEST(SldmFree, NullIsIgnored) {
  sldmfree(nullptr);
}

}  // namespace
}  // namespace testing
}  // namespace brindle
