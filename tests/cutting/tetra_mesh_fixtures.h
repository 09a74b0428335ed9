// Meshes and measurements shared by the cutting tests.
#ifndef BRINDLE_TESTS_CUTTING_TETRA_MESH_FIXTURES_H
#define BRINDLE_TESTS_CUTTING_TETRA_MESH_FIXTURES_H

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "opennurbs.h"

namespace brindle::cut_test {

// Six times the signed volume of (a, b, c, d).
inline double SixVolume(const ON_3dPoint& a, const ON_3dPoint& b, const ON_3dPoint& c,
                        const ON_3dPoint& d) {
  return ON_DotProduct(b - a, ON_CrossProduct(c - a, d - a));
}

inline ON_3dPoint Corner(const ON_Mesh& mesh, int f, int i) {
  return mesh.Vertex(mesh.m_F[f].vi[i]);
}

inline double SignedTetraVolume(const ON_Mesh& mesh, int f) {
  return SixVolume(Corner(mesh, f, 0), Corner(mesh, f, 1), Corner(mesh, f, 2), Corner(mesh, f, 3)) /
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

// The corner tetrahedron (0,0,0), (1,0,0), (0,1,0), (0,0,1), positively oriented.
inline ON_Mesh CornerTetrahedron() {
  ON_Mesh mesh;
  for (const ON_3dPoint& p :
       {ON_3dPoint(0, 0, 0), ON_3dPoint(1, 0, 0), ON_3dPoint(0, 1, 0), ON_3dPoint(0, 0, 1)})
    AddVertex(mesh, p.x, p.y, p.z);
  AddTetrahedron(mesh, 0, 1, 2, 3);
  return mesh;
}

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

// The unit square in n x n cells, two triangles each along the same diagonal, normals +z.
inline ON_Mesh SquarePlate(int n) {
  ON_Mesh mesh;
  for (int j = 0; j <= n; ++j)
    for (int i = 0; i <= n; ++i)
      AddVertex(mesh, double(i) / n, double(j) / n, 0);
  for (int j = 0; j < n; ++j)
    for (int i = 0; i < n; ++i) {
      const int a = i + (n + 1) * j, b = a + 1, c = a + n + 2, d = a + n + 1;
      mesh.SetTriangle(mesh.FaceCount(), a, b, c);
      mesh.SetTriangle(mesh.FaceCount(), a, c, d);
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

inline std::wstring UserString(const ON_Mesh& mesh, const wchar_t* key) {
  ON_wString value;
  mesh.GetUserString(key, value);
  return value.IsEmpty() ? std::wstring() : std::wstring(value.Array());
}

inline bool HasUserString(const ON_Mesh& mesh, const wchar_t* key) {
  ON_wString value;
  return mesh.GetUserString(key, value);
}

// Element references back from the KSmesh_mi text (Base64 of little-endian 32-bit integers).
inline std::vector<int> DecodeElementReferences(const std::wstring& text) {
  static const std::string kAlphabet =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::vector<unsigned char> bytes;
  unsigned int buffer = 0;
  int bits = 0;
  for (wchar_t symbol : text) {
    if (symbol == L'=') break;
    buffer = (buffer << 6) | static_cast<unsigned int>(kAlphabet.find(static_cast<char>(symbol)));
    bits += 6;
    if (bits >= 8) bytes.push_back(static_cast<unsigned char>((buffer >> (bits -= 8)) & 0xff));
  }
  std::vector<int> references(bytes.size() / 4);
  for (std::size_t i = 0; i < references.size(); ++i)
    references[i] = static_cast<int>(bytes[4 * i] | bytes[4 * i + 1] << 8 | bytes[4 * i + 2] << 16 |
                                     static_cast<unsigned int>(bytes[4 * i + 3]) << 24);
  return references;
}

}  // namespace brindle::cut_test

#endif
