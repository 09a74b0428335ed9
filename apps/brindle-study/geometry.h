// Small vector helpers on study points.
#ifndef BRINDLE_STUDY_GEOMETRY_H
#define BRINDLE_STUDY_GEOMETRY_H

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "model.h"

namespace brindle::study {

inline Point operator-(const Point& a, const Point& b) {
  return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}
inline Point operator+(const Point& a, const Point& b) {
  return {a[0] + b[0], a[1] + b[1], a[2] + b[2]};
}
inline Point operator*(double s, const Point& a) {
  return {s * a[0], s * a[1], s * a[2]};
}
inline double Dot(const Point& a, const Point& b) {
  return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}
inline Point Cross(const Point& a, const Point& b) {
  return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}
inline double Norm(const Point& a) {
  return std::sqrt(Dot(a, a));
}

// Area of each triangle of a mesh.
inline std::vector<double> TriangleAreas(const TriMesh& mesh) {
  std::vector<double> areas;
  areas.reserve(mesh.triangles.size());
  for (const auto& t : mesh.triangles) {
    const Point& a = mesh.points[t[0]];
    areas.push_back(0.5 * Norm(Cross(mesh.points[t[1]] - a, mesh.points[t[2]] - a)));
  }
  return areas;
}

// The face of a tetrahedron opposite its corner `skip`, corners sorted: the key on which the two
// tetrahedra sharing a face agree.
inline std::array<int, 3> SortedFace(const std::array<int, 4>& tet, int skip) {
  std::array<int, 3> key;
  int k = 0;
  for (int i = 0; i < 4; ++i)
    if (i != skip) key[k++] = tet[i];
  std::sort(key.begin(), key.end());
  return key;
}

}  // namespace brindle::study

#endif
