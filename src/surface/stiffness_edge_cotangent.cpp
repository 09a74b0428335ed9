// Method 1: one cotangent weight per edge. The conductivity of an edge between two regions is
// the harmonic mean of its two faces' conductivities, as for two layers in series.
#include <cstdint>
#include <stdexcept>
#include <unordered_map>
#include <vector>

#include "common/edge_key.h"
#include "surface/stiffness.h"

namespace brindle {
namespace {

struct EdgeRecord {
  double cotangentSum = 0.0;
  double conductivity[2] = {0.0, 0.0};
  int conductivityCount = 0;
};

// Cotangent that treats a degenerate corner as a right angle (weight 0) instead of failing.
double TolerantCotangent(const ON_3dPoint& apex, const ON_3dPoint& first,
                         const ON_3dPoint& second) {
  double crossLength = 0.0;
  const double cotangent = CornerCotangent(apex, first, second, &crossLength);
  return crossLength <= kMinimumArea ? 0.0 : cotangent;
}

double EdgeConductivity(const EdgeRecord& edge) {
  if (edge.conductivityCount < 2) return edge.conductivity[0];
  const double k1 = edge.conductivity[0], k2 = edge.conductivity[1];
  return k1 + k2 > 0.0 ? 2.0 * k1 * k2 / (k1 + k2) : 0.0;
}

}  // namespace

int AssembleEdgeCotangentForm(const SurfaceModel& model, Triplets& triplets) {
  const int faceCount = model.FaceCount();
  std::vector<double> faceConductivity(static_cast<std::size_t>(faceCount));
  for (int f = 0; f < faceCount; ++f)
    faceConductivity[f] = model.FaceConductivity(f);
  // Guards: both sizes are the face count by construction, and quads are refused when the
  // solver is created. They stay as this formulation's own checks on its input, and leave by
  // exception, see brindle.h.
  if (static_cast<int>(faceConductivity.size()) != model.mesh.FaceCount())
    throw std::runtime_error("r_per_face size must equal face count");
  for (int f = 0; f < faceCount; ++f) {
    if (!model.mesh.m_F[f].IsTriangle()) throw std::runtime_error("Mesh contains non-tri faces");
  }

  std::unordered_map<std::uint64_t, EdgeRecord> edges;
  edges.reserve(static_cast<std::size_t>(1.5 * faceCount));
  const ON_3dPoint* points = model.mesh.m_dV.Array();
  auto visit = [&](int i, int j, double cotangent, double k) {
    EdgeRecord& edge = edges[EdgeKey(i, j)];
    edge.cotangentSum += cotangent;
    if (edge.conductivityCount < 2) edge.conductivity[edge.conductivityCount++] = k;
  };
  for (int f = 0; f < faceCount; ++f) {
    const ON_MeshFace& face = model.mesh.m_F[f];
    const int a = face.vi[0], b = face.vi[1], c = face.vi[2];
    const ON_3dPoint &pa = points[a], &pb = points[b], &pc = points[c];
    const double k = faceConductivity[f];
    visit(a, b, TolerantCotangent(pc, pa, pb), k);
    visit(b, c, TolerantCotangent(pa, pb, pc), k);
    visit(c, a, TolerantCotangent(pb, pc, pa), k);
  }

  triplets.reserve(12 * static_cast<std::size_t>(faceCount));
  std::vector<double> diagonal(static_cast<std::size_t>(model.VertexCount()), 0.0);
  for (const auto& [key, edge] : edges) {
    const int i = static_cast<int>(key >> 32);
    const int j = static_cast<int>(key & 0xFFFFFFFFu);
    const double weight = -0.5 * EdgeConductivity(edge) * edge.cotangentSum;
    triplets.emplace_back(i, j, weight);
    triplets.emplace_back(j, i, weight);
    diagonal[i] -= weight;
    diagonal[j] -= weight;
  }
  for (int i = 0; i < model.VertexCount(); ++i) {
    if (diagonal[i] != 0.0) triplets.emplace_back(i, i, diagonal[i]);
  }
  return kSurfaceSucceeded;
}

}  // namespace brindle
