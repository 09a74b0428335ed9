#include <gtest/gtest.h>

#include <cmath>
#include <csignal>
#include <cstring>
#include <memory>
#include <vector>

#include "brindle.h"
#include "cutting/signal_guard.h"
#include "opennurbs.h"
#include "support/tet_meshes.h"
#include "support/triangle_meshes.h"
#include "support/user_strings.h"

namespace brindle {
namespace {

using namespace testing;

constexpr double kPlane = 0.37;

// The bundled MMG subset only discretises the level set, so volumes and boundary areas of a
// cut come out exact. A real MMG then moves vertices, boundary ones included since ridge
// detection is off, which changes them by a fraction of a percent on these meshes.
#ifdef BRINDLE_REAL_MMG
constexpr double kVolumeTolerance = 5e-3;
constexpr double kAreaTolerance = 5e-2;
#else
constexpr double kVolumeTolerance = 1e-9;
constexpr double kAreaTolerance = 1e-9;
#endif

double PlaneField(const ON_3dPoint& p) {
  return p.x - kPlane;
}

struct CutResult {
  int status = -1;
  std::string error;
  std::unique_ptr<ON_Mesh> mesh;
};

CutResult Cut(const ON_Mesh* mesh, const double* values, int keepRef,
              ON_Mesh* interfaceMesh = nullptr, double hmin = 0.01, double hmax = 0.5) {
  ON_Mesh sentinel;
  ON_Mesh* result = &sentinel;
  char error[1024] = "stale";
  CutResult outcome;
  outcome.status =
      CutTetrahedralMesh(mesh, values, keepRef, hmin, hmax, interfaceMesh, &result, error);
  outcome.error = error;
  if (result == &sentinel)
    ADD_FAILURE() << "result slot not written";
  else
    outcome.mesh.reset(result);
  return outcome;
}

std::vector<int> References(const ON_Mesh& mesh) {
  return DecodeElementReferences(UserString(mesh, L"KSmesh_mi"));
}

double VolumeWithReference(const ON_Mesh& mesh, const std::vector<int>& references, int ref) {
  double volume = 0;
  for (int f = 0; f < mesh.FaceCount(); ++f)
    if (references[f] == ref) volume += SignedTetraVolume(mesh, f);
  return volume;
}

double TriangleArea(const ON_Mesh& mesh, int f) {
  return testing::TriangleArea(Corner(mesh, f, 0), Corner(mesh, f, 1), Corner(mesh, f, 2));
}

// Every refusal names its cause, and the result slot is cleared.
TEST(CutTetrahedralMesh, RefusalsNameTheFailingStep) {
  const ON_Mesh tet = CornerTetrahedron();
  ON_Mesh mixed = CornerTetrahedron();
  mixed.SetTriangle(1, 0, 1, 2);
  // Without double-precision vertices the mesh has no vertices for this entry.
  const UnacceptedTetrahedra refused;
  // No faces: the volume branch, where MMG cannot scale a mesh without used vertices.
  ON_Mesh pointsOnly = CornerTetrahedron();
  pointsOnly.m_F.SetCount(0);
  ON_Mesh floatPlate = SquarePlate(1);
  floatPlate.m_dV.Destroy();

  const double values[8] = {1, 1, 1, -1, 1, 1, 1, 1};
  const struct {
    const ON_Mesh* mesh;
    const double* values;
    int status;
    const char* message;
  } cases[] = {
      {nullptr, values, 1, "Null input mesh"},
      {&tet, nullptr, 2, "Null vertex values"},
      {&mixed, values, 3, "Mesh has both triangles and quads"},
      {&refused.floatOnly, values, 5, "MMG3D_Set_meshSize failed"},
      {&refused.flat, values, 7, "MMG3D_Set_tetrahedra failed"},
      {&refused.outsideIndex, values, 7, "MMG3D_Set_tetrahedra failed"},
      {&pointsOnly, values, 11, "MMG3D_mmg3dls failed with status 2"},
      {&floatPlate, values, 13, "MMGS_Set_meshSize failed"},
  };
  for (const auto& c : cases) {
    const CutResult cut = Cut(c.mesh, c.values, 0);
    EXPECT_EQ(cut.status, c.status);
    EXPECT_EQ(cut.error, c.message);
    EXPECT_FALSE(cut.mesh) << c.message;
  }
  // A null error buffer suppresses the message only.
  ON_Mesh* result = nullptr;
  EXPECT_EQ(CutTetrahedralMesh(nullptr, values, 0, 0, 0, nullptr, &result, nullptr), 1);
}

// A flat tetrahedron of positive volume (six times it is about 1e-38): MMG accepts it, then
// reports a low failure for the input quality and hands the mesh back uncut, in its unit
// working frame where (15, 20, 0) would be (1, 0, 0). The cut delivers it where the caller has
// it.
TEST(CutTetrahedralMesh, LowFailureDeliversTheUncutMeshInTheCallersCoordinates) {
  const ON_Mesh flat = TetMesh(
      {ON_3dPoint(0, 20, 0), ON_3dPoint(15, 20, 0), ON_3dPoint(0, 30, 0), ON_3dPoint(5, 25, 1e-40)},
      {{0, 1, 2, 3}});
  const double values[4] = {1, 1, 1, -1};
  CutResult cut = Cut(&flat, values, 0);
  EXPECT_EQ(cut.status, 0);
  EXPECT_EQ(cut.error, "");
  ASSERT_TRUE(cut.mesh);
  EXPECT_EQ(cut.mesh->FaceCount(), 1);
  EXPECT_EQ(References(*cut.mesh).size(), 1u);
  ASSERT_EQ(cut.mesh->m_dV.Count(), 4);
  for (int v = 0; v < 4; ++v) {
    EXPECT_EQ(cut.mesh->m_dV[v], flat.m_dV[v]) << v;
    EXPECT_EQ(cut.mesh->m_V[v], ON_3fPoint(flat.m_dV[v])) << v;
  }
}

// Keeping both sides (0) or one (2 above the plane, 3 below): the kept volume is the
// analytic one, the mesh stays conforming, every element is tagged with the side its centroid
// lies on, and the interface is the unit cross-section whatever is kept. hmin has no effect.
TEST(CutTetrahedralMesh, CubeCutByAPlaneKeepsSidesVolumesReferencesAndInterface) {
  const ON_Mesh cube = StructuredCube(4);
  const std::vector<double> values = SampleField(cube, PlaneField);
  for (int keep : {0, 2, 3}) {
    SCOPED_TRACE(keep);
    ON_Mesh interfaceMesh;
    const CutResult cut = Cut(&cube, values.data(), keep, &interfaceMesh);
    ASSERT_EQ(cut.status, 0);
    EXPECT_EQ(cut.error, "");
    const ON_Mesh& mesh = *cut.mesh;
    const std::vector<int> references = References(mesh);
    ASSERT_EQ(static_cast<int>(references.size()), mesh.FaceCount());
    EXPECT_EQ(UserString(mesh, L"Kestra_version"), L"0.2.9181.2064");
    EXPECT_TRUE(mesh.HasSynchronizedDoubleAndSinglePrecisionVertices());

    const double below = keep == 2 ? 0 : kPlane, above = keep == 3 ? 0 : 1 - kPlane;
    EXPECT_NEAR(VolumeWithReference(mesh, references, 3), below, kVolumeTolerance);
    EXPECT_NEAR(VolumeWithReference(mesh, references, 2), above, kVolumeTolerance);
    EXPECT_NEAR(TotalVolume(mesh), below + above, kVolumeTolerance);
    const double width = below + above;
    EXPECT_TRUE(IsConforming(mesh, 2 * (width + width + 1), kAreaTolerance));
    for (int f = 0; f < mesh.FaceCount(); ++f) {
      ON_3dPoint centroid(0, 0, 0);
      for (int j = 0; j < 4; ++j)
        centroid += 0.25 * ON_3dVector(Corner(mesh, f, j));
      EXPECT_EQ(references[f], centroid.x < kPlane ? 3 : 2) << "element " << f;
      EXPECT_TRUE(keep == 0 || references[f] == keep);
      EXPECT_GT(SignedTetraVolume(mesh, f), 0);
    }

    ASSERT_GT(interfaceMesh.FaceCount(), 0);
    EXPECT_FALSE(HasUserString(interfaceMesh, L"Kestra_version"));
    double area = 0;
    for (int f = 0; f < interfaceMesh.FaceCount(); ++f) {
      EXPECT_TRUE(interfaceMesh.m_F[f].IsTriangle());
      area += TriangleArea(interfaceMesh, f);
    }
    for (int v = 0; v < interfaceMesh.VertexCount(); ++v)
      EXPECT_NEAR(interfaceMesh.m_dV[v].x, kPlane, 1e-12);
    EXPECT_NEAR(area, 1.0, 1e-9);
  }
  // Not even above hmax.
  const CutResult small = Cut(&cube, values.data(), 0, nullptr, 0.001, 0.2);
  const CutResult large = Cut(&cube, values.data(), 0, nullptr, 50.0, 0.2);
  ASSERT_TRUE(small.mesh && large.mesh);
  ASSERT_EQ(small.mesh->m_dV.Count(), large.mesh->m_dV.Count());
  EXPECT_EQ(0, std::memcmp(small.mesh->m_dV.Array(), large.mesh->m_dV.Array(),
                           sizeof(ON_3dPoint) * small.mesh->m_dV.Count()));
  EXPECT_EQ(small.mesh->FaceCount(), large.mesh->FaceCount());
}

TEST(CutTetrahedralMesh, VertexColorsTravelAsReferences) {
  ON_Mesh tet = CornerTetrahedron();
  for (int i = 0; i < 4; ++i)
    tet.m_C.Append(ON_Color(7u + 2u * static_cast<unsigned int>(i)));
  const double values[4] = {1, 1, 1, -1};
  CutResult cut = Cut(&tet, values, 0);
  ASSERT_EQ(cut.status, 0);
  const ON_Mesh& mesh = *cut.mesh;
  ASSERT_EQ(mesh.m_C.Count(), mesh.VertexCount());
  ASSERT_EQ(mesh.VertexCount(), 7);
  // Input vertices keep their numbers and references; the three cut vertices follow with 0.
  for (int v = 0; v < mesh.VertexCount(); ++v) {
    const unsigned int expected = v < 4 ? 7u + 2u * static_cast<unsigned int>(v) : 0u;
    EXPECT_EQ(static_cast<unsigned int>(mesh.m_C[v]), expected) << "vertex " << v;
  }
}

TEST(CutTetrahedralMesh, SurfaceMeshIsCutWithItsOwnBranch) {
  const ON_Mesh plate = SquarePlate(4);
  const std::vector<double> values = SampleField(plate, PlaneField);
  ON_Mesh interfaceMesh;
  for (int keep : {0, 3}) {
    CutResult cut = Cut(&plate, values.data(), keep, &interfaceMesh);
    ASSERT_EQ(cut.status, 0) << cut.error;
    const ON_Mesh& mesh = *cut.mesh;
    const std::vector<int> references = References(mesh);
    ASSERT_EQ(static_cast<int>(references.size()), mesh.FaceCount());
    double negativeArea = 0, totalArea = 0;
    for (int f = 0; f < mesh.FaceCount(); ++f) {
      EXPECT_TRUE(mesh.m_F[f].IsTriangle());
      const double area = TriangleArea(mesh, f);
      totalArea += area;
      if (references[f] == 3) negativeArea += area;
      EXPECT_TRUE(references[f] == 3 || (keep == 0 && references[f] == 2));
    }
    EXPECT_NEAR(negativeArea, kPlane, 1e-9);
    EXPECT_NEAR(totalArea, keep == 0 ? 1.0 : kPlane, 1e-9);
  }
  // The interface mesh belongs to the volume branch only.
  EXPECT_EQ(interfaceMesh.FaceCount(), 0);
  EXPECT_EQ(interfaceMesh.VertexCount(), 0);
}

void CountingHandler(int) {}

// The guard puts back handlers that MMG's level-set call resets, and the host's handlers
// survive both cuts.
TEST(SignalHandlerGuard, RestoresTheCallersHandlers) {
  for (int sig : SignalHandlerGuard::kSignals) {
    if (sig == SIGSEGV || sig == SIGABRT) continue;  // left to the sanitizers and gtest
    const auto previous = std::signal(sig, CountingHandler);
    {
      SignalHandlerGuard guard;
      std::signal(sig, SIG_DFL);
    }
    EXPECT_EQ(std::signal(sig, previous), &CountingHandler) << "signal " << sig;
  }
  const auto previousInt = std::signal(SIGINT, CountingHandler);
  const auto previousTerm = std::signal(SIGTERM, CountingHandler);
  const ON_Mesh tet = CornerTetrahedron(), plate = SquarePlate(2);
  const double tetValues[4] = {1, 1, 1, -1};
  EXPECT_EQ(Cut(&tet, tetValues, 0).status, 0);
  EXPECT_EQ(Cut(&plate, SampleField(plate, PlaneField).data(), 0).status, 0);
  EXPECT_EQ(std::signal(SIGINT, previousInt), &CountingHandler);
  EXPECT_EQ(std::signal(SIGTERM, previousTerm), &CountingHandler);
}

}  // namespace
}  // namespace brindle
