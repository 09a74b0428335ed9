// Creation: input checks in order, region labels, and assembly and factorisation
// failures as the caller sees them.
#include <gtest/gtest.h>

#include <string>

#include "surface/surface_solver.h"
#include "surface/surface_support.h"

namespace brindle {
namespace testing {
namespace {

void ExpectCreateFailure(const ON_Mesh* mesh, int method, int code, const std::string& message,
                         const int* regions = nullptr) {
  void* handle = &handle;  // stale value: must come back null
  char error[1024];
  ::testing::internal::CaptureStdout();
  EXPECT_EQ(sldmMalloc(mesh, regions, method, &handle, error), code) << message;
  ::testing::internal::GetCapturedStdout();
  EXPECT_EQ(std::string(error), message);
  EXPECT_EQ(handle, nullptr);
  if (handle != &handle) sldmfree(handle);
}

TEST(SldmCreate, InputChecksInOrder) {
  ExpectCreateFailure(nullptr, 4, 24, "Invalid method 4, must be 0-3");
  ExpectCreateFailure(nullptr, -1, 24, "Invalid method -1, must be 0-3");
  ExpectCreateFailure(nullptr, 0, 25, "Null mesh");
  ON_Mesh mesh = RectangleMesh(1, 1, 1, 1);
  mesh.SetQuad(mesh.FaceCount(), 0, 1, 3, 2);
  mesh.m_dV.Destroy();  // single precision only
  ExpectCreateFailure(&mesh, 0, 26, "Double and single precision vertex counts differ");
  mesh.UpdateDoublePrecisionVertices();
  ExpectCreateFailure(&mesh, 0, 27, "Mesh contains quads, only triangles supported");
  mesh.m_F.Remove();
  mesh.m_C.Remove();
  ExpectCreateFailure(&mesh, 0, 28, "Mesh has no vertex colors for boundary conditions");
  mesh.m_C.Append(ON_Color(255, 0, 0));
  mesh.m_F.Destroy();
  ExpectCreateFailure(&mesh, 0, 30, "Mesh has no faces");
  char error[1024];
  EXPECT_EQ(sldmMalloc(&mesh, nullptr, 0, nullptr, error), 41);
  EXPECT_STREQ(error, "Null handle pointer");

  ON_Mesh strip = RectangleMesh(1, 1, 1, 2);
  const int regions[4] = {0, 2, -3, 1};
  ExpectCreateFailure(&strip, 1, 43, "Face 2 has negative region number -3", regions);
  for (int outside : {-1, 6}) {
    strip.m_F[3].vi[1] = outside;
    ExpectCreateFailure(&strip, 3, 42, "Face 3 has a vertex index out of range");
  }
  const ON_Mesh coincident = MeshOf({ON_3dPoint(0, 0, 0), ON_3dPoint(1, 0, 0), ON_3dPoint(1, 0, 0)},
                                    {{0, 1, 2}}, {1, 3, 5});
  ExpectCreateFailure(&coincident, 3, 127, "Ordered mesh is invalid");
}

// Region numbers are labels: the largest int or one in the hundreds of millions costs no more
// than region 0, only the regions in use carry a conductivity, and sldmupdate reads values[r]
// for those regions only.
TEST(SldmCreate, RegionNumbersAreLabels) {
  const ON_Mesh mesh = RectangleMesh(1, 1, 2, 2);
  const std::vector<int> layers = TwoLayerRegions(2, 2, 1);
  auto solverWith = [&](int lower, int upper) {
    std::vector<int> regions = layers;
    for (int& r : regions)
      r = r == 0 ? lower : upper;
    return CreateSolver(mesh, 1, regions);
  };
  auto conductivities = [](const SolverHandle& solver) {
    return static_cast<SurfaceSolver*>(solver.get())->model.conductivity;
  };
  SolverHandle huge = solverWith(2147483647, 300000000);
  ASSERT_TRUE(huge);
  const SurfaceModel& model = static_cast<SurfaceSolver*>(huge.get())->model;
  EXPECT_EQ(model.usedRegions, (std::vector<int>{300000000, 2147483647}));
  EXPECT_EQ(model.LargestRegion(), 2147483647);
  EXPECT_EQ(conductivities(huge), (std::vector<double>{1.0, 1.0}));

  SolverHandle sparse = solverWith(1, 6);
  std::vector<double> values(7, -1.0);
  values[1] = 3.0;
  values[6] = 1.0;
  ASSERT_EQ(Update(sparse.get(), values), 0);
  EXPECT_EQ(conductivities(sparse), (std::vector<double>{3.0, 1.0}));
}

TEST(SldmCreate, AssemblyAndFactorisationFailuresPerMethod) {
  // Collinear but distinct corners pass the mesh validation and reach the formulations.
  const ON_Mesh collinear =
      MeshOf({ON_3dPoint(0, 0, 0), ON_3dPoint(1, 0, 0), ON_3dPoint(2, 0, 0), ON_3dPoint(0, 1, 0)},
             {{0, 1, 3}, {0, 1, 2}}, {1, 1, 1, 3});
  ExpectCreateFailure(&collinear, 0, 23, "Stiffness assembly failed with error 23");
  CreateSolver(collinear, 1);  // a degenerate corner weighs 0
  ExpectCreateFailure(&collinear, 2, 128, "Stiffness assembly failed with error 128");
  ExpectCreateFailure(&collinear, 3, 2025, "Stiffness assembly failed with error 2025");

  // Vertex 4 is in no face: method 0 refuses it, the others leave its row empty, which fails
  // the factorisation only when the vertex is free.
  auto square = [](int lastStatus) {
    return MeshOf({ON_3dPoint(0, 0, 0), ON_3dPoint(1, 0, 0), ON_3dPoint(1, 1, 0),
                   ON_3dPoint(0, 1, 0), ON_3dPoint(5, 5, 0)},
                  {{0, 1, 2}, {0, 2, 3}}, {1, 5, 3, 5, lastStatus});
  };
  const ON_Mesh fixedUnused = square(3), freeUnused = square(5);
  ExpectCreateFailure(&fixedUnused, 0, 24, "Stiffness assembly failed with error 24");
  for (int method : {1, 2, 3}) {
    CreateSolver(fixedUnused, method);
    ExpectCreateFailure(&freeUnused, method, 33, "Eigen solver factorization failed");
  }
  // Without a fixed vertex only a pivot that comes out exactly 0 is caught; on a right
  // isosceles triangle every entry and pivot is exact.
  const ON_Mesh allFree = MeshOf({ON_3dPoint(0, 0, 0), ON_3dPoint(1, 0, 0), ON_3dPoint(0, 1, 0)},
                                 {{0, 1, 2}}, {5, 5, 5});
  for (int method = 0; method < 4; ++method)
    ExpectCreateFailure(&allFree, method, 33, "Eigen solver factorization failed");
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
