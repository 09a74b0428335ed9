// Triangle meshes coloured with vertex statuses, and solver helpers, for the surface solver tests.
#ifndef BRINDLE_TESTS_SURFACE_SURFACE_SUPPORT_H
#define BRINDLE_TESTS_SURFACE_SURFACE_SUPPORT_H

#include <gtest/gtest.h>

#include <array>
#include <initializer_list>
#include <memory>
#include <vector>

#include "brindle.h"
#include "common/boundary_status.h"
#include "support/triangle_meshes.h"

namespace brindle {
namespace testing {

// A width x height rectangle centred on the origin of the xy plane, nx by ny cells each split
// along its rising diagonal. Row 0 is held at 0, row ny at 1, the others are free.
inline ON_Mesh RectangleMesh(double width, double height, int nx, int ny) {
  ON_Mesh mesh = RectangleGrid(width, height, nx, ny, ON_3dPoint(-0.5 * width, -0.5 * height, 0));
  for (int j = 0; j <= ny; ++j)
    for (int i = 0; i <= nx; ++i)
      mesh.m_C.Append(BoundaryStatusColor(j == 0 ? 1 : j == ny ? 3 : 5));
  return mesh;
}

// Region of each face of RectangleMesh: 0 below `splitRow`, 1 from it upwards.
inline std::vector<int> TwoLayerRegions(int nx, int ny, int splitRow) {
  std::vector<int> regions;
  for (int r = 0; r < ny; ++r)
    regions.insert(regions.end(), 2 * nx, r < splitRow ? 0 : 1);
  return regions;
}

// A mesh from explicit points, triangles and vertex statuses.
inline ON_Mesh MeshOf(const std::vector<ON_3dPoint>& points,
                      const std::vector<std::array<int, 3>>& triangles,
                      std::initializer_list<int> statuses) {
  ON_Mesh mesh = TriangleMesh(points, triangles);
  for (int status : statuses)
    mesh.m_C.Append(BoundaryStatusColor(status));
  return mesh;
}

struct SolverDeleter {
  void operator()(void* handle) const { sldmfree(handle); }
};
using SolverHandle = std::unique_ptr<void, SolverDeleter>;

// Creates a solver and expects success; method 0's trace lines are swallowed.
inline SolverHandle CreateSolver(const ON_Mesh& mesh, int method,
                                 const std::vector<int>& regions = {}) {
  void* handle = nullptr;
  char error[1024];
  ::testing::internal::CaptureStdout();
  const int status =
      sldmMalloc(&mesh, regions.empty() ? nullptr : regions.data(), method, &handle, error);
  ::testing::internal::GetCapturedStdout();
  EXPECT_EQ(status, 0) << error;
  return SolverHandle(handle);
}

inline int Update(void* handle, const std::vector<double>& conductivities) {
  ::testing::internal::CaptureStdout();
  const int status =
      sldmupdate(handle, conductivities.data(), static_cast<int>(conductivities.size()), nullptr);
  ::testing::internal::GetCapturedStdout();
  return status;
}

// The outputs of one solve, prefilled with -7 to show what was written.
struct Solution {
  std::vector<double> temperature, faceFlux, levelFlow;
  ON_SimpleArray<ON_Line> isotherms;
  ON_Mesh fluxMesh;
  int status = 0;
};

// Solves asking for every output; `fluxCount` overrides the face-flux length 3F and
// `withFlow` = false passes a null level-flow array.
inline std::unique_ptr<Solution> SolveAll(const void* handle, const ON_Mesh& mesh,
                                          std::vector<double> levels = {}, int fluxCount = -1,
                                          bool withFlow = true) {
  auto s = std::make_unique<Solution>();
  s->temperature.assign(mesh.VertexCount(), -7.0);
  s->faceFlux.assign(3 * mesh.FaceCount(), -7.0);
  s->levelFlow.assign(levels.size() + 1, -7.0);  // never empty: flux needs a flow array
  s->status = sldmsolve(handle, s->temperature.data(), mesh.VertexCount(), levels.data(),
                        static_cast<int>(levels.size()), &s->isotherms, s->faceFlux.data(),
                        fluxCount < 0 ? 3 * mesh.FaceCount() : fluxCount,
                        withFlow ? s->levelFlow.data() : nullptr, &s->fluxMesh, nullptr);
  EXPECT_EQ(s->status, 0);
  return s;
}

}  // namespace testing
}  // namespace brindle

#endif
