// Tetrahedral meshes carried in an ON_Mesh the way the host does (every face one tetrahedron,
// its four indices the corners), and the measures the tests check them by.
#ifndef BRINDLE_TESTS_SUPPORT_TET_MESHES_H
#define BRINDLE_TESTS_SUPPORT_TET_MESHES_H

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <map>
#include <vector>

#include "opennurbs.h"

namespace brindle::testing {

// Six times the signed volume of (a, b, c, d).
inline double SixVolume(const ON_3dPoint& a, const ON_3dPoint& b, const ON_3dPoint& c,
                        const ON_3dPoint& d) {
  return ON_DotProduct(b - a, ON_CrossProduct(c - a, d - a));
}

inline ON_3dPoint Corner(const ON_Mesh& mesh, int face, int corner) {
  return mesh.Vertex(mesh.m_F[face].vi[corner]);
}

inline double SignedTetraVolume(const ON_Mesh& mesh, int face) {
  return SixVolume(Corner(mesh, face, 0), Corner(mesh, face, 1), Corner(mesh, face, 2),
                   Corner(mesh, face, 3)) /
         6.0;
}

inline double TotalVolume(const ON_Mesh& mesh) {
  double total = 0;
  for (int f = 0; f < mesh.FaceCount(); ++f)
    total += SignedTetraVolume(mesh, f);
  return total;
}

inline double TriangleArea(const ON_3dPoint& a, const ON_3dPoint& b, const ON_3dPoint& c) {
  return 0.5 * ON_CrossProduct(b - a, c - a).Length();
}

inline void AddVertex(ON_Mesh& mesh, double x, double y, double z) {
  mesh.SetVertex(mesh.VertexCount(), ON_3dPoint(x, y, z));
}

inline void AddTetrahedron(ON_Mesh& mesh, int a, int b, int c, int d) {
  mesh.SetQuad(mesh.FaceCount(), a, b, c, d);
}

// A mesh of the listed points and tetrahedra, as given (corner indices are not checked).
inline ON_Mesh TetMesh(const std::vector<ON_3dPoint>& points,
                       const std::vector<std::array<int, 4>>& tets) {
  ON_Mesh mesh;
  for (const ON_3dPoint& p : points)
    mesh.SetVertex(mesh.VertexCount(), p);
  for (const auto& t : tets)
    AddTetrahedron(mesh, t[0], t[1], t[2], t[3]);
  return mesh;
}

// The corner tetrahedron (0,0,0), (1,0,0), (0,1,0), (0,0,1), positively oriented.
inline ON_Mesh CornerTetrahedron() {
  return TetMesh(
      {ON_3dPoint(0, 0, 0), ON_3dPoint(1, 0, 0), ON_3dPoint(0, 1, 0), ON_3dPoint(0, 0, 1)},
      {{0, 1, 2, 3}});
}

// Corner tetrahedra that MMG refuses to take in: without double-precision vertices, flat (the
// corners on the plane z = 0), and with a corner index outside the vertex list.
struct UnacceptedTetrahedra {
  ON_Mesh floatOnly = CornerTetrahedron(), outsideIndex = CornerTetrahedron();
  ON_Mesh flat =
      TetMesh({ON_3dPoint(0, 0, 0), ON_3dPoint(1, 1, 0), ON_3dPoint(2, 4, 0), ON_3dPoint(3, 9, 0)},
              {{0, 1, 2, 3}});
  UnacceptedTetrahedra() {
    floatOnly.m_dV.Destroy();
    outsideIndex.m_F[0].vi[3] = 9;
  }
};

// The cube [0, size]^3 in n^3 cells, each split into six tetrahedra around its main diagonal
// (the same pattern in every cell, so the mesh is conforming), all positively oriented.
inline ON_Mesh StructuredCube(int n, double size = 1.0) {
  ON_Mesh mesh;
  const double h = size / n;
  for (int k = 0; k <= n; ++k)
    for (int j = 0; j <= n; ++j)
      for (int i = 0; i <= n; ++i)
        AddVertex(mesh, i * h, j * h, k * h);
  auto id = [n](const int* at) { return at[0] + (n + 1) * (at[1] + (n + 1) * at[2]); };
  const int axes[6][3] = {{0, 1, 2}, {0, 2, 1}, {1, 0, 2}, {1, 2, 0}, {2, 0, 1}, {2, 1, 0}};
  for (int k = 0; k < n; ++k)
    for (int j = 0; j < n; ++j)
      for (int i = 0; i < n; ++i)
        for (const auto& order : axes) {
          int at[3] = {i, j, k};
          int v[4] = {id(at)};
          for (int s = 0; s < 3; ++s) {
            ++at[order[s]];
            v[s + 1] = id(at);
          }
          if (SixVolume(mesh.Vertex(v[0]), mesh.Vertex(v[1]), mesh.Vertex(v[2]),
                        mesh.Vertex(v[3])) < 0)
            std::swap(v[2], v[3]);
          AddTetrahedron(mesh, v[0], v[1], v[2], v[3]);
        }
  return mesh;
}

// Values of `field` at the double-precision vertices.
inline std::vector<double> SampleField(const ON_Mesh& mesh,
                                       const std::function<double(const ON_3dPoint&)>& field) {
  std::vector<double> values;
  for (int i = 0; i < mesh.m_dV.Count(); ++i)
    values.push_back(field(mesh.m_dV[i]));
  return values;
}

// The tetrahedra using each triangle, keyed by its sorted corner indices.
template <typename Tetrahedra>
std::map<std::array<int, 3>, std::vector<int>> TriangleOwners(const Tetrahedra& tets, int count) {
  std::map<std::array<int, 3>, std::vector<int>> owners;
  static const int kFaces[4][3] = {{0, 1, 2}, {0, 1, 3}, {0, 2, 3}, {1, 2, 3}};
  for (int f = 0; f < count; ++f) {
    for (const auto& face : kFaces) {
      std::array<int, 3> key = {static_cast<int>(tets[f][face[0]]),
                                static_cast<int>(tets[f][face[1]]),
                                static_cast<int>(tets[f][face[2]])};
      std::sort(key.begin(), key.end());
      owners[key].push_back(f);
    }
  }
  return owners;
}

inline std::map<std::array<int, 3>, std::vector<int>> TriangleOwners(const ON_Mesh& mesh) {
  std::vector<std::array<int, 4>> tets;
  for (int f = 0; f < mesh.FaceCount(); ++f)
    tets.push_back({mesh.m_F[f].vi[0], mesh.m_F[f].vi[1], mesh.m_F[f].vi[2], mesh.m_F[f].vi[3]});
  return TriangleOwners(tets, mesh.FaceCount());
}

// Conformity: no triangle is shared by more than two tetrahedra, and the triangles used once
// (the boundary) enclose `expectedArea`; a hanging node would add boundary inside the volume.
inline ::testing::AssertionResult IsConforming(const ON_Mesh& mesh, double expectedArea,
                                               double tolerance) {
  double boundaryArea = 0;
  for (const auto& [key, owners] : TriangleOwners(mesh)) {
    if (owners.size() > 2)
      return ::testing::AssertionFailure() << "triangle used " << owners.size() << " times";
    if (owners.size() == 1)
      boundaryArea += TriangleArea(mesh.Vertex(key[0]), mesh.Vertex(key[1]), mesh.Vertex(key[2]));
  }
  if (std::fabs(boundaryArea - expectedArea) > tolerance) {
    return ::testing::AssertionFailure()
           << "boundary area " << boundaryArea << ", expected " << expectedArea;
  }
  return ::testing::AssertionSuccess();
}

}  // namespace brindle::testing

#endif
