// Solving: argument statuses, which outputs appear for which arguments, the flux mesh,
// isotherm edge cases, and the update rules.
#include <gtest/gtest.h>

#include <stdexcept>

#include "support/buffer_limit.h"
#include "surface/surface_solver.h"
#include "surface/surface_support.h"

namespace brindle {
namespace testing {
namespace {

constexpr int kNx = 4;

class SolveOutputs : public ::testing::Test {
 protected:
  // T = (y + 0.75) / 1.5 on three bands of 2 kNx faces; flux 1 / 1.5 along +y.
  SolveOutputs() : mesh_(RectangleMesh(2.0, 1.5, kNx, 3)), solver_(CreateSolver(mesh_, 3)) {}
  int Faces() const { return mesh_.FaceCount(); }
  int Vertices() const { return mesh_.VertexCount(); }

  ON_Mesh mesh_;
  SolverHandle solver_;
};

TEST_F(SolveOutputs, ArgumentStatusesWriteNothing) {
  std::vector<double> t(Vertices(), -7.0), flux(3 * Faces(), -7.0);
  double level = 0.5, flow = -7.0;
  ON_SimpleArray<ON_Line> lines;
  ON_Mesh used = RectangleMesh(1, 1, 1, 1);
  char error[1024];
  auto solve = [&](const void* handle, double* temperatures, int count, int levelCount,
                   int fluxCount, ON_Mesh* fluxMesh) {
    return sldmsolve(handle, temperatures, count, &level, levelCount, &lines, flux.data(),
                     fluxCount, &flow, fluxMesh, error);
  };
  EXPECT_EQ(solve(nullptr, t.data(), Vertices(), 1, 0, nullptr), -1001);
  EXPECT_STREQ(error, "Null solver handle");
  ::testing::internal::CaptureStdout();
  EXPECT_EQ(solve(solver_.get(), t.data(), Vertices() - 1, 1, 0, nullptr), -17);
  EXPECT_EQ(::testing::internal::GetCapturedStdout(), "length = 19, n() = 20");
  EXPECT_STREQ(error, "");
  EXPECT_EQ(solve(solver_.get(), nullptr, Vertices(), 1, 0, nullptr), -18);
  EXPECT_STREQ(error, "Null temperature array");
  EXPECT_EQ(solve(solver_.get(), t.data(), Vertices(), -1, 0, nullptr), -19);
  EXPECT_STREQ(error, "Negative level count -1");
  EXPECT_EQ(solve(solver_.get(), t.data(), Vertices(), 1, -3, &used), -20);
  EXPECT_STREQ(error, "Negative face flux count -3");
  EXPECT_EQ(solve(solver_.get(), t.data(), Vertices(), 1, 3 * Faces(), &used), -21);
  EXPECT_STREQ(error, "Flux mesh must be empty");
  EXPECT_EQ(t, std::vector<double>(Vertices(), -7.0));
  EXPECT_EQ(flux, std::vector<double>(3 * Faces(), -7.0));
  EXPECT_EQ(lines.Count(), 0);
  EXPECT_EQ(used.VertexCount(), 4);
  sldmfree(nullptr);  // ignored
}

TEST_F(SolveOutputs, FluxMeshHasOneFlatColoredTrianglePerFace) {
  const auto s = SolveAll(solver_.get(), mesh_);
  const ON_Mesh& out = s->fluxMesh;
  ASSERT_EQ(out.FaceCount(), Faces());
  ASSERT_TRUE(out.VertexCount() == 3 * Faces() && out.m_C.Count() == 3 * Faces() &&
              out.m_N.Count() == 3 * Faces() && out.IsValid());
  for (int f = 0; f < Faces(); ++f) {
    EXPECT_EQ(out.m_F[f].vi[0], 3 * f);
    EXPECT_EQ(out.m_F[f].vi[3], 3 * f + 2);
    for (int c = 0; c < 3; ++c) {
      // Uniform flux puts every face at the top of the ramp; anticlockwise faces face +z.
      EXPECT_EQ(unsigned(out.m_C[3 * f + c]), unsigned(ON_Color(146, 0, 0)));
      EXPECT_EQ(out.m_N[3 * f + c], ON_3fVector(0, 0, 1));
      EXPECT_EQ(out.m_V[3 * f + c], mesh_.m_V[mesh_.m_F[f].vi[c]]);
    }
  }
}

TEST_F(SolveOutputs, OptionalOutputsFollowTheirArguments) {
  // A null level-flow array disables face flux and isotherms alike.
  auto s = SolveAll(solver_.get(), mesh_, {0.5}, -1, false);
  EXPECT_EQ(s->faceFlux[1], -7.0);
  EXPECT_EQ(s->fluxMesh.VertexCount(), 0);
  EXPECT_EQ(s->isotherms.Count(), 0);
  // A flux length other than 3F writes no flux, so the isotherms carry no flow and the flux
  // mesh is coloured as zero flux.
  s = SolveAll(solver_.get(), mesh_, {0.5}, 3 * Faces() - 1);
  EXPECT_EQ(s->faceFlux[1], -7.0);
  EXPECT_EQ(s->isotherms.Count(), 2 * kNx);
  EXPECT_EQ(s->levelFlow[0], 0.0);
  ASSERT_EQ(s->fluxMesh.FaceCount(), Faces());
  EXPECT_EQ(unsigned(s->fluxMesh.m_C[0]), unsigned(ON_Color(0, 0, 146)));
  // Levels outside the range, or through fixed vertices, draw nothing.
  s = SolveAll(solver_.get(), mesh_, {-0.5, 0.0, 1.0, 1.5});
  EXPECT_EQ(s->isotherms.Count(), 0);
  EXPECT_EQ(s->levelFlow, std::vector<double>({0, 0, 0, 0, -7}));
}

TEST(SldmSolve, SegmentRunsFromTheFirstCrossedEdgeInCornerOrder) {
  // One fixed triangle, T = 0, 1, 0 at a, b, c: level 0.25 crosses (a,b), then (b,c).
  const ON_Mesh mesh = MeshOf({ON_3dPoint(0, 0, 0), ON_3dPoint(2, 0, 0), ON_3dPoint(0, 2, 0)},
                              {{0, 1, 2}}, {1, 3, 1});
  SolverHandle solver = CreateSolver(mesh, 2);
  const auto s = SolveAll(solver.get(), mesh, {0.25});
  ASSERT_EQ(s->isotherms.Count(), 1);
  EXPECT_EQ(s->isotherms[0].from, ON_3dPoint(0.5, 0, 0));
  EXPECT_EQ(s->isotherms[0].to, ON_3dPoint(0.5, 1.5, 0));
  EXPECT_NEAR(s->faceFlux[0], 0.5, 1e-15);  // T = x / 2
  EXPECT_NEAR(s->levelFlow[0], 0.5 * 1.5, 1e-15);
}

TEST(SldmSolve, TinyFaceCarriesNoFluxAndTakesTheZeroColor) {
  // A unit square plus a detached triangle too small for the flux determinant (1e-8).
  const double e = 5e-5;
  const ON_Mesh mesh =
      MeshOf({ON_3dPoint(0, 0, 0), ON_3dPoint(1, 0, 0), ON_3dPoint(1, 1, 0), ON_3dPoint(0, 1, 0),
              ON_3dPoint(3, 0, 0), ON_3dPoint(3 + e, 0, 0), ON_3dPoint(3, e, 0)},
             {{0, 1, 2}, {0, 2, 3}, {4, 5, 6}}, {1, 1, 3, 3, 1, 1, 3});
  SolverHandle solver = CreateSolver(mesh, 3);
  const auto s = SolveAll(solver.get(), mesh);
  EXPECT_EQ(s->temperature, (std::vector<double>{0, 0, 1, 1, 0, 0, 1}));
  EXPECT_NEAR(s->faceFlux[1], 1.0, 1e-14);
  EXPECT_EQ(s->faceFlux[6], -7.0);
  EXPECT_EQ(unsigned(s->fluxMesh.m_C[0]), unsigned(ON_Color(146, 0, 0)));
  EXPECT_EQ(unsigned(s->fluxMesh.m_C[6]), unsigned(ON_Color(0, 0, 146)));
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
  ASSERT_EQ(Update(solver.get(), {3.0, 1.0}), 0);
  EXPECT_NEAR(middle(), 0.25, 1e-14);
  // Too few values resets every region to 1.0 without a message, and keeps the last
  // factorisation until the next successful update.
  const double k = 5.0;
  EXPECT_EQ(sldmupdate(solver.get(), &k, 1, error), -3003);
  EXPECT_STREQ(error, "");
  EXPECT_EQ(static_cast<SurfaceSolver*>(solver.get())->model.conductivity,
            (std::vector<double>{1.0, 1.0}));
  EXPECT_NEAR(middle(), 0.25, 1e-14);
  EXPECT_EQ(sldmupdate(solver.get(), &k, -4, error), -3003);
  ASSERT_EQ(Update(solver.get(), {1.0, 1.0}), 0);
  EXPECT_NEAR(middle(), 0.5, 1e-14);
}

TEST(SldmSolve, AbsoluteResidualLimitEscapesAsRuntimeError) {
  // Huge conductivities make the absolute 1e-8 limit fail on rounding alone.
  const ON_Mesh mesh = RectangleMesh(1, 1, 8, 8);
  SolverHandle solver = CreateSolver(mesh, 2);
  ASSERT_EQ(Update(solver.get(), {1e12}), 0);
  std::vector<double> t(mesh.VertexCount(), -7.0);
  try {
    sldmsolve(solver.get(), t.data(), mesh.VertexCount(), nullptr, 0, nullptr, nullptr, 0, nullptr,
              nullptr, nullptr);
    ADD_FAILURE() << "no exception";
  } catch (const std::runtime_error& e) {
    EXPECT_STREQ(e.what(), "Large reduced residual");
  }
  EXPECT_EQ(t, std::vector<double>(mesh.VertexCount(), -7.0));
}

// Arrays that cannot be reserved end in the out-of-memory statuses: creation hands back no
// handle, and a solve leaves the caller's flux mesh and isotherm list as they were.
TEST(SldmOutOfMemory, ReservationsThatFailGiveStatuses) {
  if (!brindle::testing::BufferLimit::Available()) GTEST_SKIP() << brindle::testing::kNoBufferLimit;
  const ON_Mesh mesh = RectangleMesh(1, 1, 3, 3);
  char error[1024];
  void* handle = &handle;
  {
    brindle::testing::BufferLimit cap(0);
    EXPECT_EQ(sldmMalloc(&mesh, nullptr, 2, &handle, error), 44);
  }
  EXPECT_STREQ(error, "Out of memory");
  EXPECT_EQ(handle, nullptr);

  SolverHandle solver = CreateSolver(mesh, 2);
  std::vector<double> t(mesh.VertexCount()), flux(3 * mesh.FaceCount()), flow(2);
  double levels[2] = {0.25, 0.75};
  ON_SimpleArray<ON_Line> isotherms;
  isotherms.Append(ON_Line(ON_3dPoint(1, 2, 3), ON_3dPoint(4, 5, 6)));
  for (bool withFlux : {true, false}) {
    SCOPED_TRACE(withFlux);
    ON_Mesh fluxMesh;
    int status;
    {
      brindle::testing::BufferLimit cap(0);
      status = sldmsolve(solver.get(), t.data(), mesh.VertexCount(), levels, 2, &isotherms,
                         withFlux ? flux.data() : nullptr, 3 * mesh.FaceCount(), flow.data(),
                         &fluxMesh, error);
    }
    EXPECT_EQ(status, -22);
    EXPECT_STREQ(error, "Out of memory");
    EXPECT_EQ(fluxMesh.m_dV.Count() + fluxMesh.m_F.Count() + fluxMesh.m_C.Count(), 0);
    EXPECT_EQ(isotherms.Count(), 1);
  }
}

// A long level list is traced by a few tasks, not one thread per level, and still gives every
// level its own segments and flow, in level order.
TEST(SldmSolve, ThousandsOfLevelsMatchTheSingleLevel) {
  const ON_Mesh mesh = RectangleMesh(1, 1, 3, 3);
  SolverHandle solver = CreateSolver(mesh, 2);
  const std::unique_ptr<Solution> one = SolveAll(solver.get(), mesh, {0.4});
  const int segments = one->isotherms.Count();
  ASSERT_GT(segments, 0);
  const std::unique_ptr<Solution> many = SolveAll(solver.get(), mesh, std::vector(20000, 0.4));
  ASSERT_EQ(many->isotherms.Count(), segments * 20000);
  for (int i = 0; i < 20000; i += 997) {
    EXPECT_EQ(many->levelFlow[i], one->levelFlow[0]) << i;
    EXPECT_EQ(many->isotherms[i * segments].from, one->isotherms[0].from) << i;
  }
}

}  // namespace
}  // namespace testing
}  // namespace brindle
