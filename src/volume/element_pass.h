// The element pass: per tetrahedron, in input order, the degenerate and sliver checks and the
// 4 x 4 stiffness matrix of the linear element, handed to a sink in solver positions.
#ifndef BRINDLE_VOLUME_ELEMENT_PASS_H
#define BRINDLE_VOLUME_ELEMENT_PASS_H

#include <cstdint>
#include <string>
#include <vector>

#include "volume/element_geometry.h"
#include "volume/mesh_checks.h"
#include "volume/model.h"

namespace brindle {

using ElementMatrix = double[4][4];

namespace element_pass_detail {

// Corners of the face opposite each corner, in tetrahedron order.
constexpr int kOppositeFace[4][3] = {{1, 2, 3}, {0, 2, 3}, {0, 1, 3}, {0, 1, 2}};

inline Vec3 PointOf(const VertexRecord& vertex) {
  return {vertex.x, vertex.y, vertex.z};
}

inline bool HasRepeatedCorner(const std::int32_t (&p)[4]) {
  return p[0] == p[1] || p[0] == p[2] || p[0] == p[3] || p[1] == p[2] || p[1] == p[3] ||
         p[2] == p[3];
}

}  // namespace element_pass_detail

// Visits the tetrahedra in input order. For each: corners mapped through `positions`, the
// degenerate test, the corners marked in `used` (when given), six times the volume D, the
// scale s = D k / 6, the four shape-function gradients g_i with their sliver tests, and
// K_ij = s (g_i . g_j), passed on as sink(t, p, K). A failed check stores its sentence in
// `message` and throws MeshCheckFailure.
template <class Sink>
void ForEachElementMatrix(const prepoisson& model, const std::vector<std::int32_t>& positions,
                          double tolerance, std::vector<char>* used, std::string& message,
                          Sink&& sink) {
  using namespace element_pass_detail;
  std::vector<double> conductivityOfMaterial(model.materials.size());
  for (std::size_t m = 0; m < model.materials.size(); ++m)
    conductivityOfMaterial[m] = model.materials[m].conductivity;

  const std::vector<Tetrahedron>& tetrahedra = model.tetrahedra;
  for (std::size_t t = 0; t < tetrahedra.size(); ++t) {
    const Tetrahedron& tet = tetrahedra[t];
    const std::int32_t p[4] = {positions[tet[0]], positions[tet[1]], positions[tet[2]],
                               positions[tet[3]]};
    if (HasRepeatedCorner(p)) {
      message = DegenerateTetrahedronMessage(t, p);
      throw MeshCheckFailure{kDegenerateTetrahedron};
    }
    if (used) {
      for (std::int32_t position : p)
        (*used)[position] = 1;
    }

    const Vec3 points[4] = {PointOf(model.vertices[tet[0]]), PointOf(model.vertices[tet[1]]),
                            PointOf(model.vertices[tet[2]]), PointOf(model.vertices[tet[3]])};
    const double sixVolume = SixTimesVolume(points[0], points[1], points[2], points[3]);
    const double scale = sixVolume * conductivityOfMaterial[model.tetrahedronMaterials[t]] / 6;

    Vec3 gradients[4];
    for (int apex = 0; apex < 4; ++apex) {
      const int* face = kOppositeFace[apex];
      const ApexGradient g =
          GradientAtApex(points[apex], points[face[0]], points[face[1]], points[face[2]]);
      if (!IsThickEnough(g.height, tolerance)) {
        const std::int32_t others[3] = {p[face[0]], p[face[1]], p[face[2]]};
        message = SliverTetrahedronMessage(p[apex], tolerance, others, t);
        throw MeshCheckFailure{kSliverTetrahedron};
      }
      gradients[apex] = g.gradient;
    }

    ElementMatrix k;
    for (int i = 0; i < 4; ++i) {
      k[i][i] = scale * Dot(gradients[i], gradients[i]);
      for (int j = i + 1; j < 4; ++j)
        k[i][j] = k[j][i] = scale * Dot(gradients[i], gradients[j]);
    }
    sink(t, p, k);
  }
}

}  // namespace brindle

#endif
