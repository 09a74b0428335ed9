// Small coloured triangle meshes for the surface solver tests.
#ifndef BRINDLE_TESTS_SURFACE_MESHES_H
#define BRINDLE_TESTS_SURFACE_MESHES_H

#include <initializer_list>
#include <vector>

#include "common/boundary_status.h"
#include "opennurbs.h"

namespace brindle {
namespace testing {

// A width x height rectangle in the world xy plane centred on the origin, nx by ny cells each
// split along its rising diagonal. Row 0 is held at 0, row ny at 1, the others are free.
inline ON_Mesh RectangleMesh(double width, double height, int nx, int ny) {
  ON_Mesh mesh;
  for (int j = 0; j <= ny; ++j) {
    for (int i = 0; i <= nx; ++i) {
      mesh.SetVertex(mesh.VertexCount(),
                     ON_3dPoint(i * width / nx - 0.5 * width, j * height / ny - 0.5 * height, 0.0));
      const int status = j == 0 ? kBoundaryLow : j == ny ? kBoundaryHigh : kBoundaryInterior;
      mesh.m_C.Append(BoundaryStatusColor(status));
    }
  }
  for (int r = 0; r < ny; ++r) {
    for (int c = 0; c < nx; ++c) {
      const int k = r * (nx + 1) + c;
      mesh.SetTriangle(mesh.FaceCount(), k, k + 1, k + nx + 2);
      mesh.SetTriangle(mesh.FaceCount(), k, k + nx + 2, k + nx + 1);
    }
  }
  return mesh;
}

// Region of each face of RectangleMesh: 0 below `splitRow`, 1 from it upwards.
inline std::vector<int> TwoLayerRegions(int nx, int ny, int splitRow) {
  std::vector<int> regions;
  for (int r = 0; r < ny; ++r)
    regions.insert(regions.end(), 2 * nx, r < splitRow ? 0 : 1);
  return regions;
}

// A mesh from explicit points (z = 0), triangles and vertex statuses.
inline ON_Mesh MeshOf(std::initializer_list<ON_3dPoint> points,
                      std::initializer_list<std::vector<int>> triangles,
                      std::initializer_list<int> statuses) {
  ON_Mesh mesh;
  for (const ON_3dPoint& p : points)
    mesh.SetVertex(mesh.VertexCount(), p);
  for (const auto& t : triangles)
    mesh.SetTriangle(mesh.FaceCount(), t[0], t[1], t[2]);
  for (int status : statuses)
    mesh.m_C.Append(BoundaryStatusColor(status));
  return mesh;
}

}  // namespace testing
}  // namespace brindle

#endif
