// Tetrahedral meshes for the mesh-tool tests and benchmarks, carried in an ON_Mesh the way the
// host does: every face is one tetrahedron, its four indices the corners.
#ifndef BRINDLE_TESTS_MESHTOOLS_TET_MESH_BUILDERS_H
#define BRINDLE_TESTS_MESHTOOLS_TET_MESH_BUILDERS_H

#include <array>
#include <memory>
#include <vector>

#include "opennurbs.h"

namespace brindle::testing {

// A mesh with the given vertices (single and double precision, synchronised) and tetrahedra.
inline std::unique_ptr<ON_Mesh> MakeTetMesh(const std::vector<ON_3dPoint>& points,
                                            const std::vector<std::array<int, 4>>& tets) {
  auto mesh = std::make_unique<ON_Mesh>();
  for (const ON_3dPoint& p : points)
    mesh->SetVertex(mesh->VertexCount(), p);
  for (const auto& t : tets)
    mesh->SetQuad(mesh->FaceCount(), t[0], t[1], t[2], t[3]);
  return mesh;
}

// The unit cube split into n^3 cells of six tetrahedra each (all around the cell diagonal from
// corner (0,0,0) to (1,1,1)), which makes a conforming mesh of 6 n^3 tetrahedra.
inline std::unique_ptr<ON_Mesh> MakeStructuredCube(int n) {
  auto mesh = std::make_unique<ON_Mesh>();
  const int m = n + 1;
  mesh->ReserveVertexCapacity(static_cast<std::size_t>(m) * m * m);
  for (int k = 0; k <= n; ++k) {
    for (int j = 0; j <= n; ++j) {
      for (int i = 0; i <= n; ++i) {
        mesh->SetVertex(mesh->VertexCount(),
                        ON_3dPoint(double(i) / n, double(j) / n, double(k) / n));
      }
    }
  }
  const int step[3] = {1, m, m * m};
  const int order[6][3] = {{0, 1, 2}, {0, 2, 1}, {1, 0, 2}, {1, 2, 0}, {2, 0, 1}, {2, 1, 0}};
  mesh->m_F.Reserve(static_cast<std::size_t>(6) * n * n * n);
  for (int k = 0; k < n; ++k) {
    for (int j = 0; j < n; ++j) {
      for (int i = 0; i < n; ++i) {
        const int base = i + m * (j + m * k);
        for (const auto& axes : order) {
          const int v1 = base + step[axes[0]];
          const int v2 = v1 + step[axes[1]];
          const int v3 = v2 + step[axes[2]];
          mesh->SetQuad(mesh->FaceCount(), base, v1, v2, v3);
        }
      }
    }
  }
  return mesh;
}

}  // namespace brindle::testing

#endif
