#ifndef BRINDLE_TESTS_COMPAT_MESH_SUPPORT_H
#define BRINDLE_TESTS_COMPAT_MESH_SUPPORT_H

// Vertex and face helpers shared by the openNURBS mesh tests.

#include <initializer_list>

#include "opennurbs.h"

namespace compat_test {

struct Corner {
  double x, y, z;
};

// Vertices through SetVertex, so m_dV and m_V are filled together.
inline void AddVertices(ON_Mesh& mesh, std::initializer_list<Corner> corners) {
  for (const Corner& c : corners)
    mesh.SetVertex(mesh.VertexCount(), ON_3dPoint(c.x, c.y, c.z));
}

// Vertices in the float list only.
inline void AddFloatVertices(ON_Mesh& mesh, std::initializer_list<Corner> corners) {
  for (const Corner& c : corners) {
    mesh.m_V.Append(
        ON_3fPoint(static_cast<float>(c.x), static_cast<float>(c.y), static_cast<float>(c.z)));
  }
}

inline ON_MeshFace Face(int a, int b, int c, int d) {
  return ON_MeshFace{{a, b, c, d}};
}

inline bool SameFace(const ON_MeshFace& f, int a, int b, int c, int d) {
  return f.vi[0] == a && f.vi[1] == b && f.vi[2] == c && f.vi[3] == d;
}

// The unit square as two triangles.
inline void MakeTwoTriangles(ON_Mesh& mesh) {
  AddVertices(mesh, {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}});
  mesh.SetTriangle(0, 0, 1, 2);
  mesh.SetTriangle(1, 0, 2, 3);
}

}  // namespace compat_test

#endif
