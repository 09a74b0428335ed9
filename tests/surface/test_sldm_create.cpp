// Creation: input checks in order, the ordered model, and the failures of assembly and
// factorisation as the caller sees them.
#include <gtest/gtest.h>

#include <string>

#include "sldm_test_support.h"
#include "surface/sldm_solver.h"
#include "surface/stiffness.h"
#include "surface_meshes.h"

namespace brindle {
namespace testing {
namespace {

void* const kStaleHandle = reinterpret_cast<void*>(0x1234);

// Runs sldmMalloc expecting a failure, checking the null handle and the message.
void ExpectCreateFailure(const ON_Mesh* mesh, int method, int code, const std::string& message,
                         const int* regions = nullptr) {
  void* handle = kStaleHandle;
  char error[1024] = "stale";
  ::testing::internal::CaptureStdout();
  EXPECT_EQ(sldmMalloc(mesh, regions, method, &handle, error), code) << message;
  ::testing::internal::GetCapturedStdout();
  EXPECT_EQ(handle, nullptr);
  EXPECT_EQ(std::string(error), message);
  if (handle != kStaleHandle) sldmfree(handle);
}

TEST(SldmCreate, InputChecksInOrder) {
  ExpectCreateFailure(nullptr, 4, 24, "Invalid method 4, must be 0-3");
  ExpectCreateFailure(nullptr, -1, 24, "Invalid method -1, must be 0-3");
  ExpectCreateFailure(nullptr, 0, 25, "Null mesh");

  ON_Mesh floatOnly = RectangleMesh(1, 1, 1, 1);
  floatOnly.m_dV.Destroy();
  ExpectCreateFailure(&floatOnly, 0, 26, "Double and single precision vertex counts differ");

  ON_Mesh quads = RectangleMesh(1, 1, 1, 1);
  quads.m_dV.Destroy();  // the vertex-count check comes first
  quads.SetQuad(quads.FaceCount(), 0, 1, 3, 2);
  ExpectCreateFailure(&quads, 0, 26, "Double and single precision vertex counts differ");
  quads.UpdateDoublePrecisionVertices();
  ExpectCreateFailure(&quads, 0, 27, "Mesh contains quads, only triangles supported");

  ON_Mesh uncoloured = RectangleMesh(1, 1, 1, 1);
  uncoloured.m_C.Remove();
  ExpectCreateFailure(&uncoloured, 0, 28, "Mesh has no vertex colors for boundary conditions");
  ON_Mesh empty;
  ExpectCreateFailure(&empty, 0, 28, "Mesh has no vertex colors for boundary conditions");

  ON_Mesh faceless = RectangleMesh(1, 1, 1, 1);
  faceless.m_F.Destroy();
  ExpectCreateFailure(&faceless, 0, 30, "Mesh has no faces");
}

TEST(SldmCreate, RejectsBadIndicesRegionsAndHandleSlot) {
  ON_Mesh outOfRange = RectangleMesh(1, 1, 1, 2);
  outOfRange.m_F[3].vi[1] = 6;
  ExpectCreateFailure(&outOfRange, 3, 42, "Face 3 has a vertex index out of range");
  outOfRange.m_F[3].vi[1] = -1;
  ExpectCreateFailure(&outOfRange, 3, 42, "Face 3 has a vertex index out of range");

  const ON_Mesh mesh = RectangleMesh(1, 1, 1, 2);
  const int regions[4] = {0, 2, -3, 1};
  ExpectCreateFailure(&mesh, 1, 43, "Face 2 has negative region number -3", regions);

  char error[1024];
  EXPECT_EQ(sldmMalloc(&mesh, nullptr, 0, nullptr, error), 41);
  EXPECT_STREQ(error, "Null handle pointer");
}

TEST(SldmCreate, OrderedMeshMustBeValid) {
  // Two faces on the same three corners twice over is fine; coincident corners are not.
  ON_Mesh mesh = MeshOf({ON_3dPoint(0, 0, 0), ON_3dPoint(1, 0, 0), ON_3dPoint(1, 0, 0)},
                        {{0, 1, 2}}, {1, 3, 5});
  ExpectCreateFailure(&mesh, 3, 127, "Ordered mesh is invalid");
  ON_Mesh twoVertices = MeshOf({ON_3dPoint(0, 0, 0), ON_3dPoint(1, 0, 0)}, {{0, 1, 1}}, {1, 3});
  ExpectCreateFailure(&twoVertices, 3, 127, "Ordered mesh is invalid");
}

TEST(SurfaceModel, FixedFirstInInputOrderFreeLastReversed) {
  // Statuses (free, fixed 1.0, free, fixed 0.0).
  const ON_Mesh mesh =
      MeshOf({ON_3dPoint(0, 0, 0), ON_3dPoint(1, 0, 0), ON_3dPoint(1, 1, 0), ON_3dPoint(0, 1, 0)},
             {{0, 1, 2}, {0, 2, 3}}, {5, 3, -1, 1});
  SurfaceModel model;
  ASSERT_EQ(BuildSurfaceModel(mesh, nullptr, model, nullptr), 0);
  EXPECT_EQ(model.newToOld, (std::vector<int>{1, 3, 2, 0}));
  EXPECT_EQ(model.oldToNew, (std::vector<int>{3, 0, 2, 1}));
  EXPECT_EQ(model.fixedCount, 2);
  EXPECT_EQ(model.prescribed[0], 1.0);
  EXPECT_EQ(model.prescribed[1], 0.0);
  for (int j = 0; j < 4; ++j) {
    const int i = model.newToOld[j];
    EXPECT_EQ(model.mesh.m_dV[j], mesh.m_dV[i]);
    EXPECT_EQ(model.mesh.m_V[j], mesh.m_V[i]);
    EXPECT_EQ(static_cast<unsigned int>(model.mesh.m_C[j]), static_cast<unsigned int>(mesh.m_C[i]));
  }
  // Faces keep their order and have every corner renumbered, the repeated third included.
  for (int f = 0; f < 2; ++f) {
    for (int c = 0; c < 4; ++c)
      EXPECT_EQ(model.mesh.m_F[f].vi[c], model.oldToNew[mesh.m_F[f].vi[c]]);
  }
  // No region array: one region of conductivity 1.
  EXPECT_EQ(model.faceRegion, (std::vector<int>{0, 0}));
  EXPECT_EQ(model.conductivity, (std::vector<double>{1.0}));
}

TEST(SurfaceModel, RedChannelDecidesThePrescribedValue) {
  ON_Mesh mesh = MeshOf({ON_3dPoint(0, 0, 0), ON_3dPoint(1, 0, 0), ON_3dPoint(0, 1, 0)},
                        {{0, 1, 2}}, {1, 3, 5});
  mesh.m_C[0] = ON_Color(245, 3, 4);
  mesh.m_C[2] = ON_Color(128, 39, 255);
  SurfaceModel model;
  ASSERT_EQ(BuildSurfaceModel(mesh, nullptr, model, nullptr), 0);
  EXPECT_EQ(model.fixedCount, 2);
  EXPECT_EQ(model.prescribed[0], 0.5);
  EXPECT_EQ(model.prescribed[1], 1.0);
  EXPECT_EQ(model.newToOld[2], 2);
}

TEST(SurfaceModel, DefaultConductivitiesCoverTheLargestRegion) {
  const ON_Mesh mesh = RectangleMesh(1, 1, 1, 2);
  const int regions[4] = {0, 4, 2, 2};
  SurfaceModel model;
  ASSERT_EQ(BuildSurfaceModel(mesh, regions, model, nullptr), 0);
  EXPECT_EQ(model.conductivity, std::vector<double>(5, 1.0));
  const double four[4] = {1, 2, 3, 4};
  EXPECT_FALSE(model.SetConductivities(four, 4));
  EXPECT_TRUE(model.conductivity.empty());
  const double five[5] = {1, 2, 3, 4, 5};
  EXPECT_TRUE(model.SetConductivities(five, 5));
  EXPECT_EQ(model.FaceConductivity(1), 5.0);
}

// A hand-made model, to reach faces that the mesh validation would refuse.
SurfaceModel ModelOf(std::initializer_list<ON_3dPoint> points,
                     std::initializer_list<std::vector<int>> triangles) {
  SurfaceModel model;
  for (const ON_3dPoint& p : points)
    model.mesh.SetVertex(model.mesh.VertexCount(), p);
  for (const auto& t : triangles)
    model.mesh.SetTriangle(model.mesh.FaceCount(), t[0], t[1], t[2]);
  for (int i = 0; i < model.mesh.VertexCount(); ++i) {
    model.newToOld.push_back(i);
    model.oldToNew.push_back(i);
  }
  model.faceRegion.assign(model.mesh.FaceCount(), 0);
  model.SetDefaultConductivities();
  return model;
}

int Assemble(const SurfaceModel& model, int method) {
  Triplets triplets;
  ::testing::internal::CaptureStdout();
  const int code = AssembleStiffness(model, method, triplets);
  ::testing::internal::GetCapturedStdout();
  if (code != 0) {
    EXPECT_TRUE(triplets.empty());
  }
  return code;
}

TEST(Stiffness, DegenerateFacesPerMethod) {
  const SurfaceModel collinear =
      ModelOf({ON_3dPoint(0, 0, 0), ON_3dPoint(1, 0, 0), ON_3dPoint(2, 0, 0), ON_3dPoint(0, 1, 0)},
              {{0, 1, 3}, {0, 1, 2}});
  EXPECT_EQ(Assemble(collinear, 0), kDegenerateFace);
  EXPECT_EQ(Assemble(collinear, 1), 0);  // that face's cotangents count as 0
  EXPECT_EQ(Assemble(collinear, 2), kDegenerateCorner);
  EXPECT_EQ(Assemble(collinear, 3), kDegenerateTriangle);

  const SurfaceModel repeated =
      ModelOf({ON_3dPoint(0, 0, 0), ON_3dPoint(1, 0, 0), ON_3dPoint(0, 1, 0)}, {{0, 1, 1}});
  EXPECT_EQ(Assemble(repeated, 0), kRepeatedFaceVertex);
  EXPECT_EQ(Assemble(repeated, 1), 0);
  EXPECT_EQ(Assemble(repeated, 2), kDegenerateCorner);
  EXPECT_EQ(Assemble(repeated, 3), kDegenerateTriangle);
}

TEST(SldmCreate, AssemblyFailuresAreReportedWithTheirCode) {
  const ON_Mesh collinear =
      MeshOf({ON_3dPoint(0, 0, 0), ON_3dPoint(1, 0, 0), ON_3dPoint(2, 0, 0), ON_3dPoint(0, 1, 0)},
             {{0, 1, 3}, {0, 1, 2}}, {1, 1, 1, 3});
  ExpectCreateFailure(&collinear, 0, 23, "Stiffness assembly failed with error 23");
  ExpectCreateFailure(&collinear, 2, 128, "Stiffness assembly failed with error 128");
  ExpectCreateFailure(&collinear, 3, 2025, "Stiffness assembly failed with error 2025");
  CreateSolver(collinear, 1);
}

TEST(SldmCreate, UnusedVertex) {
  // Vertex 4 belongs to no face. Method 0 refuses it; the others leave its row empty, which
  // only matters when it is free.
  auto mesh = [](int unusedStatus) {
    return MeshOf({ON_3dPoint(0, 0, 0), ON_3dPoint(1, 0, 0), ON_3dPoint(1, 1, 0),
                   ON_3dPoint(0, 1, 0), ON_3dPoint(5, 5, 0)},
                  {{0, 1, 2}, {0, 2, 3}}, {1, 5, 3, 5, unusedStatus});
  };
  const ON_Mesh fixedUnused = mesh(3), freeUnused = mesh(5);
  ExpectCreateFailure(&fixedUnused, 0, 24, "Stiffness assembly failed with error 24");
  for (int method : {1, 2, 3}) {
    CreateSolver(fixedUnused, method);
    ExpectCreateFailure(&freeUnused, method, 33, "Eigen solver factorization failed");
  }
}

TEST(SldmCreate, WithoutFixedVertexOnlyAnExactZeroPivotFails) {
  // All vertices free: the matrix is singular, but only a pivot that comes out exactly 0 is
  // caught. On one right isosceles triangle every entry and pivot is exact.
  const ON_Mesh triangle = MeshOf({ON_3dPoint(0, 0, 0), ON_3dPoint(1, 0, 0), ON_3dPoint(0, 1, 0)},
                                  {{0, 1, 2}}, {5, 5, 5});
  for (int method = 0; method < 4; ++method) {
    SCOPED_TRACE(method);
    ExpectCreateFailure(&triangle, method, 33, "Eigen solver factorization failed");
  }
}

TEST(SldmCreate, MethodZeroTracesEveryFaceConductivity) {
  const ON_Mesh mesh = RectangleMesh(1, 1, 1, 1);
  const int regions[2] = {1, 0};
  void* handle = nullptr;
  ::testing::internal::CaptureStdout();
  ASSERT_EQ(sldmMalloc(&mesh, regions, 0, &handle, nullptr), 0);
  EXPECT_EQ(::testing::internal::GetCapturedStdout(), "Conductivity1\nConductivity1\n");
  const double k[2] = {0.1, 2.5e7};
  ::testing::internal::CaptureStdout();
  EXPECT_EQ(sldmupdate(handle, k, 2, nullptr), 0);
  EXPECT_EQ(::testing::internal::GetCapturedStdout(), "Conductivity2.5e+07\nConductivity0.1\n");
  sldmfree(handle);
}

}  // namespace
}  // namespace testing
}  // namespace brindle
