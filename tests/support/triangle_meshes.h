// Triangle meshes in an ON_Mesh: grids over a rectangle and meshes of listed points and faces.
#ifndef BRINDLE_TESTS_SUPPORT_TRIANGLE_MESHES_H
#define BRINDLE_TESTS_SUPPORT_TRIANGLE_MESHES_H

#include <array>
#include <vector>

#include "opennurbs.h"

namespace brindle::testing {

// A width x height rectangle of the xy plane from `corner`, nx by ny cells, each split along
// its rising diagonal; normals +z. Vertices row by row, two faces per cell.
inline ON_Mesh RectangleGrid(double width, double height, int nx, int ny,
                             ON_3dPoint corner = ON_3dPoint(0, 0, 0)) {
  ON_Mesh mesh;
  for (int j = 0; j <= ny; ++j)
    for (int i = 0; i <= nx; ++i)
      mesh.SetVertex(mesh.VertexCount(),
                     ON_3dPoint(corner.x + i * width / nx, corner.y + j * height / ny, corner.z));
  for (int j = 0; j < ny; ++j)
    for (int i = 0; i < nx; ++i) {
      const int a = i + (nx + 1) * j, b = a + 1, c = a + nx + 2, d = a + nx + 1;
      mesh.SetTriangle(mesh.FaceCount(), a, b, c);
      mesh.SetTriangle(mesh.FaceCount(), a, c, d);
    }
  return mesh;
}

// The unit square in n x n cells.
inline ON_Mesh SquarePlate(int n) {
  return RectangleGrid(1.0, 1.0, n, n);
}

// A mesh of the listed points and triangles, as given.
inline ON_Mesh TriangleMesh(const std::vector<ON_3dPoint>& points,
                            const std::vector<std::array<int, 3>>& triangles) {
  ON_Mesh mesh;
  for (const ON_3dPoint& p : points)
    mesh.SetVertex(mesh.VertexCount(), p);
  for (const auto& t : triangles)
    mesh.SetTriangle(mesh.FaceCount(), t[0], t[1], t[2]);
  return mesh;
}

}  // namespace brindle::testing

#endif
