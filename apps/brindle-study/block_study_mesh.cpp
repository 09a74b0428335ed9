#include "block_study_mesh.h"

#include <algorithm>
#include <map>

#include "geometry.h"

namespace brindle::study {
namespace {

// An outside face as its element lists it, with the element's vertex opposite it.
template <std::size_t N>
struct OutsideFace {
  std::array<int, N> face;
  int opposite;
};

// Faces met once are on the outside, in the order of their sorted vertices.
template <std::size_t N>
std::vector<OutsideFace<N>> OutsideFaces(const std::vector<std::array<int, N + 1>>& elements) {
  std::map<std::array<int, N>, std::pair<int, OutsideFace<N>>> seen;  // key -> count, face
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
      entry.second = {face, e[skip]};
    }
  std::vector<OutsideFace<N>> outside;
  for (const auto& [key, entry] : seen)
    if (entry.first == 1) outside.push_back(entry.second);
  return outside;
}

// A normal of a face (either sense): of a triangle in space, of an edge in the xy plane.
Point FaceNormal(const std::vector<Point>& points, const std::array<int, 3>& f) {
  return Cross(points[f[1]] - points[f[0]], points[f[2]] - points[f[0]]);
}

Point FaceNormal(const std::vector<Point>& points, const std::array<int, 2>& f) {
  const Point t = points[f[1]] - points[f[0]];
  return {t[1], -t[0], 0.0};
}

// Tags every outside face of the elements by its centre and outward unit normal (the vertex
// opposite it lies inside); the faces the tagger names are appended with their references.
template <std::size_t N>
void TagOutsideFaces(const std::vector<Point>& points,
                     const std::vector<std::array<int, N + 1>>& elements, const FaceTagger& tag,
                     std::vector<std::array<int, N>>& faces, std::vector<int>& references) {
  for (const auto& [face, opposite] : OutsideFaces<N>(elements)) {
    const Point& a = points[face[0]];
    Point n = FaceNormal(points, face);
    n = (1.0 / Norm(n)) * n;
    if (Dot(n, points[opposite] - a) > 0.0) n = (-1.0) * n;
    Point centre{0.0, 0.0, 0.0};
    for (int v : face)
      centre = centre + points[v];
    const int reference = tag((1.0 / static_cast<double>(N)) * centre, n);
    if (reference == 0) continue;
    faces.push_back(face);
    references.push_back(reference);
  }
}

}  // namespace

StudyMesh BlockStudyMesh(const TetMesh& mesh, const FaceTagger& tag) {
  StudyMesh s;
  s.dimension = 3;
  s.vertices = mesh.points;
  s.tetrahedra = mesh.tetrahedra;
  for (int r : mesh.region)
    s.tetrahedronRef.push_back(r + 1);
  TagOutsideFaces<3>(mesh.points, mesh.tetrahedra, tag, s.triangles, s.triangleRef);
  return s;
}

StudyMesh BlockStudyMesh(const TriMesh& mesh, const FaceTagger& tag) {
  StudyMesh s;
  s.dimension = 2;
  s.vertices = mesh.points;
  s.triangles = mesh.triangles;
  for (int r : mesh.region)
    s.triangleRef.push_back(r + 1);
  TagOutsideFaces<2>(mesh.points, mesh.triangles, tag, s.edges, s.edgeRef);
  return s;
}

}  // namespace brindle::study
