#include "block_study_mesh.h"

#include <algorithm>
#include <map>

#include "geometry.h"

namespace brindle::study {
namespace {

// Faces met once are on the outside; the opposite vertex orients their normal.
template <std::size_t N>
std::map<std::array<int, N>, std::pair<int, std::array<int, N>>> OutsideFaces(
    const std::vector<std::array<int, N + 1>>& elements) {
  std::map<std::array<int, N>, std::pair<int, std::array<int, N>>> seen;  // key -> count, face
  for (const auto& e : elements)
    for (std::size_t skip = 0; skip <= N; ++skip) {
      std::array<int, N> face;
      std::size_t k = 0;
      for (std::size_t i = 0; i <= N; ++i)
        if (i != skip) face[k++] = e[i];
      auto key = face;
      std::sort(key.begin(), key.end());
      auto& entry = seen[key];
      ++entry.first;
      entry.second = face;
    }
  for (auto it = seen.begin(); it != seen.end();)
    it = it->second.first == 1 ? std::next(it) : seen.erase(it);
  return seen;
}

Point Centre(const std::vector<Point>& points) {
  Point c{0.0, 0.0, 0.0};
  for (const Point& p : points)
    c = c + p;
  return (1.0 / static_cast<double>(points.size())) * c;
}

}  // namespace

StudyMesh BlockStudyMesh(const TetMesh& mesh, const FaceTagger& tag) {
  StudyMesh s;
  s.dimension = 3;
  s.vertices = mesh.points;
  s.tetrahedra = mesh.tetrahedra;
  for (int r : mesh.region)
    s.tetrahedronRef.push_back(r + 1);
  // Centre of each tetrahedron's owner for orienting normals: the element centre lies inside.
  std::map<std::array<int, 3>, Point> inner;
  for (const auto& t : mesh.tetrahedra)
    for (int skip = 0; skip < 4; ++skip) {
      const std::array<int, 3> key = SortedFace(t, skip);
      inner[key] = mesh.points[t[skip]];
    }
  for (const auto& [key, entry] : OutsideFaces<3>(mesh.tetrahedra)) {
    const auto& f = entry.second;
    const Point& a = mesh.points[f[0]];
    Point n = Cross(mesh.points[f[1]] - a, mesh.points[f[2]] - a);
    n = (1.0 / Norm(n)) * n;
    if (Dot(n, inner[key] - a) > 0.0) n = (-1.0) * n;
    const int ref = tag(Centre({a, mesh.points[f[1]], mesh.points[f[2]]}), n);
    if (ref == 0) continue;
    s.triangles.push_back(f);
    s.triangleRef.push_back(ref);
  }
  return s;
}

StudyMesh BlockStudyMesh(const TriMesh& mesh, const FaceTagger& tag) {
  StudyMesh s;
  s.dimension = 2;
  s.vertices = mesh.points;
  s.triangles = mesh.triangles;
  for (int r : mesh.region)
    s.triangleRef.push_back(r + 1);
  std::map<std::array<int, 2>, Point> inner;
  for (const auto& t : mesh.triangles)
    for (int skip = 0; skip < 3; ++skip) {
      std::array<int, 2> key{t[(skip + 1) % 3], t[(skip + 2) % 3]};
      std::sort(key.begin(), key.end());
      inner[key] = mesh.points[t[skip]];
    }
  for (const auto& [key, entry] : OutsideFaces<2>(mesh.triangles)) {
    const auto& f = entry.second;
    const Point& a = mesh.points[f[0]];
    const Point t = mesh.points[f[1]] - a;
    Point n{t[1], -t[0], 0.0};
    n = (1.0 / Norm(n)) * n;
    if (Dot(n, inner[key] - a) > 0.0) n = (-1.0) * n;
    const int ref = tag(Centre({a, mesh.points[f[1]]}), n);
    if (ref == 0) continue;
    s.edges.push_back(f);
    s.edgeRef.push_back(ref);
  }
  return s;
}

}  // namespace brindle::study
