// Meshes and measurements shared by the cutting tests.
#ifndef BRINDLE_TESTS_CUTTING_TETRA_MESH_FIXTURES_H
#define BRINDLE_TESTS_CUTTING_TETRA_MESH_FIXTURES_H

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
  const ON_3dVector u = b - a, v = c - a, w = d - a;
  return u.x * (v.y * w.z - v.z * w.y) - u.y * (v.x * w.z - v.z * w.x) +
         u.z * (v.x * w.y - v.y * w.x);
}

// Corner i of face f: the double-precision vertex where it matches the single-precision one
// (the level-set cut), else the single-precision vertex (the clip extends only that list).
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
  const ON_3dVector u = b - a, v = c - a;
  const ON_3dVector n(u.y * v.z - u.z * v.y, u.z * v.x - u.x * v.z, u.x * v.y - u.y * v.x);
  return 0.5 * std::sqrt(n.x * n.x + n.y * n.y + n.z * n.z);
}

// Adds a vertex to both precision lists and optionally a colour.
inline void AddVertex(ON_Mesh& mesh, double x, double y, double z) {
  mesh.SetVertex(mesh.VertexCount(), ON_3dPoint(x, y, z));
}

inline void AddTetrahedron(ON_Mesh& mesh, int a, int b, int c, int d) {
  mesh.SetQuad(mesh.FaceCount(), a, b, c, d);
}

// The corner tetrahedron (0,0,0), (1,0,0), (0,1,0), (0,0,1), positively oriented.
inline ON_Mesh CornerTetrahedron() {
  ON_Mesh mesh;
  AddVertex(mesh, 0, 0, 0);
  AddVertex(mesh, 1, 0, 0);
  AddVertex(mesh, 0, 1, 0);
  AddVertex(mesh, 0, 0, 1);
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
  auto id = [n](int i, int j, int k) { return i + (n + 1) * (j + (n + 1) * k); };
  const int axes[6][3] = {{0, 1, 2}, {0, 2, 1}, {1, 0, 2}, {1, 2, 0}, {2, 0, 1}, {2, 1, 0}};
  for (int k = 0; k < n; ++k)
    for (int j = 0; j < n; ++j)
      for (int i = 0; i < n; ++i)
        for (const auto& order : axes) {
          int at[3] = {i, j, k};
          int v[4];
          v[0] = id(at[0], at[1], at[2]);
          for (int s = 0; s < 3; ++s) {
            ++at[order[s]];
            v[s + 1] = id(at[0], at[1], at[2]);
          }
          const double six =
              SixVolume(mesh.Vertex(v[0]), mesh.Vertex(v[1]), mesh.Vertex(v[2]), mesh.Vertex(v[3]));
          if (six < 0) std::swap(v[2], v[3]);
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

// How many tetrahedra use each triangle, keyed by the sorted corner indices.
inline std::map<std::array<int, 3>, int> TriangleUse(const ON_Mesh& mesh) {
  std::map<std::array<int, 3>, int> use;
  static const int kFaces[4][3] = {{0, 1, 2}, {0, 1, 3}, {0, 2, 3}, {1, 2, 3}};
  for (int f = 0; f < mesh.FaceCount(); ++f) {
    for (const auto& face : kFaces) {
      std::array<int, 3> key = {mesh.m_F[f].vi[face[0]], mesh.m_F[f].vi[face[1]],
                                mesh.m_F[f].vi[face[2]]};
      std::sort(key.begin(), key.end());
      ++use[key];
    }
  }
  return use;
}

// Conformity: no triangle is shared by more than two tetrahedra, and the triangles used once
// (the boundary) enclose `expectedArea`; a hanging node would add boundary inside the volume.
inline ::testing::AssertionResult IsConforming(const ON_Mesh& mesh, double expectedArea,
                                               double tolerance) {
  double boundaryArea = 0;
  for (const auto& [key, count] : TriangleUse(mesh)) {
    if (count > 2) return ::testing::AssertionFailure() << "triangle used " << count << " times";
    if (count == 1) {
      boundaryArea += TriangleArea(mesh.Vertex(key[0]), mesh.Vertex(key[1]), mesh.Vertex(key[2]));
    }
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

// Element references back from the KSmesh_mi text.
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
    if (bits >= 8) {
      bits -= 8;
      bytes.push_back(static_cast<unsigned char>((buffer >> bits) & 0xff));
    }
  }
  std::vector<int> references(bytes.size() / 4);
  for (std::size_t i = 0; i < references.size(); ++i) {
    unsigned int value = 0;
    for (int b = 3; b >= 0; --b)
      value = (value << 8) | bytes[4 * i + b];
    references[i] = static_cast<int>(value);
  }
  return references;
}

}  // namespace brindle::cut_test

#endif
