// Uniform refinement of a study mesh through edge midpoints.
#include <algorithm>
#include <cstdint>
#include <unordered_map>

#include "mesh_intake.h"

namespace brindle::study {
namespace {

// Midpoint vertices of edges, created once per edge and shared by every element on it.
class Midpoints {
 public:
  explicit Midpoints(std::vector<Point>& vertices) : vertices_(vertices) {}

  int operator()(int a, int b) {
    const std::uint64_t low = static_cast<std::uint32_t>(std::min(a, b));
    const std::uint64_t high = static_cast<std::uint32_t>(std::max(a, b));
    const auto [entry, inserted] =
        index_.try_emplace((low << 32) | high, static_cast<int>(vertices_.size()));
    if (inserted) {
      const Point pa = vertices_[a], pb = vertices_[b];
      vertices_.push_back({(pa[0] + pb[0]) / 2, (pa[1] + pb[1]) / 2, (pa[2] + pb[2]) / 2});
    }
    return entry->second;
  }

 private:
  std::vector<Point>& vertices_;
  std::unordered_map<std::uint64_t, int> index_;
};

double SignedVolume(const std::vector<Point>& v, const std::array<int, 4>& t) {
  double d[3][3];
  for (int r = 0; r < 3; ++r)
    for (int c = 0; c < 3; ++c)
      d[r][c] = v[t[r + 1]][c] - v[t[0]][c];
  return d[0][0] * (d[1][1] * d[2][2] - d[1][2] * d[2][1]) -
         d[0][1] * (d[1][0] * d[2][2] - d[1][2] * d[2][0]) +
         d[0][2] * (d[1][0] * d[2][1] - d[1][1] * d[2][0]);
}

double SquaredDistance(const Point& a, const Point& b) {
  return (a[0] - b[0]) * (a[0] - b[0]) + (a[1] - b[1]) * (a[1] - b[1]) +
         (a[2] - b[2]) * (a[2] - b[2]);
}

// Eight children: four corner tetrahedra, and the inner octahedron cut into four along its
// shortest diagonal, which keeps the children's shapes closest to the parent's. Children keep
// the parent's orientation.
void SplitTetrahedron(const std::array<int, 4>& t, int ref, Midpoints& midpoint, StudyMesh& out) {
  int m[4][4];
  for (int i = 0; i < 4; ++i)
    for (int j = i + 1; j < 4; ++j)
      m[i][j] = m[j][i] = midpoint(t[i], t[j]);
  std::vector<std::array<int, 4>> children = {{t[0], m[0][1], m[0][2], m[0][3]},
                                              {m[0][1], t[1], m[1][2], m[1][3]},
                                              {m[0][2], m[1][2], t[2], m[2][3]},
                                              {m[0][3], m[1][3], m[2][3], t[3]}};
  // The diagonals join the midpoints of opposite edges (i j) and (k l).
  const int pairings[3][4] = {{0, 1, 2, 3}, {0, 2, 1, 3}, {0, 3, 1, 2}};
  int best = 0;
  double shortest = -1.0;
  for (int p = 0; p < 3; ++p) {
    const auto& [i, j, k, l] = pairings[p];
    const double length = SquaredDistance(out.vertices[m[i][j]], out.vertices[m[k][l]]);
    if (shortest < 0.0 || length < shortest) {
      shortest = length;
      best = p;
    }
  }
  const auto& [i, j, k, l] = pairings[best];
  const int ring[4] = {m[i][k], m[i][l], m[j][l], m[j][k]};  // around the diagonal, in order
  for (int r = 0; r < 4; ++r)
    children.push_back({m[i][j], m[k][l], ring[r], ring[(r + 1) % 4]});

  const bool parentPositive = SignedVolume(out.vertices, t) >= 0.0;
  for (auto& child : children) {
    if ((SignedVolume(out.vertices, child) >= 0.0) != parentPositive) std::swap(child[0], child[1]);
    out.tetrahedra.push_back(child);
    out.tetrahedronRef.push_back(ref);
  }
}

// Four children with the parent's orientation: three corners and the middle triangle.
void SplitTriangle(const std::array<int, 3>& t, int ref, Midpoints& midpoint, StudyMesh& out) {
  const int m01 = midpoint(t[0], t[1]), m12 = midpoint(t[1], t[2]), m20 = midpoint(t[2], t[0]);
  for (const std::array<int, 3>& child :
       {std::array<int, 3>{t[0], m01, m20}, std::array<int, 3>{m01, t[1], m12},
        std::array<int, 3>{m20, m12, t[2]}, std::array<int, 3>{m01, m12, m20}}) {
    out.triangles.push_back(child);
    out.triangleRef.push_back(ref);
  }
}

}  // namespace

StudyMesh RefineUniformly(const StudyMesh& mesh) {
  StudyMesh out;
  out.dimension = mesh.dimension;
  out.names = mesh.names;
  out.vertices = mesh.vertices;
  out.tetrahedra.reserve(8 * mesh.tetrahedra.size());
  out.tetrahedronRef.reserve(8 * mesh.tetrahedra.size());
  out.triangles.reserve(4 * mesh.triangles.size());
  out.triangleRef.reserve(4 * mesh.triangles.size());
  out.edges.reserve(2 * mesh.edges.size());
  out.edgeRef.reserve(2 * mesh.edges.size());
  Midpoints midpoint(out.vertices);
  for (std::size_t e = 0; e < mesh.tetrahedra.size(); ++e)
    SplitTetrahedron(mesh.tetrahedra[e], mesh.tetrahedronRef[e], midpoint, out);
  for (std::size_t e = 0; e < mesh.triangles.size(); ++e)
    SplitTriangle(mesh.triangles[e], mesh.triangleRef[e], midpoint, out);
  for (std::size_t e = 0; e < mesh.edges.size(); ++e) {
    const auto [a, b] = mesh.edges[e];
    const int middle = midpoint(a, b);
    out.edges.push_back({a, middle});
    out.edges.push_back({middle, b});
    out.edgeRef.insert(out.edgeRef.end(), 2, mesh.edgeRef[e]);
  }
  return out;
}

}  // namespace brindle::study
