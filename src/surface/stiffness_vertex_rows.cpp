// Method 2: the cotangent weights of each vertex's row are gathered first, then written with
// the row sum on the diagonal, so every row adds up to zero by construction.
#include <utility>
#include <vector>

#include "surface/stiffness.h"

namespace brindle {
namespace {

// Off-diagonal weights of one row. A vertex has only a handful of neighbours, so a short
// vector searched linearly beats a hash map, and it keeps the summation order fixed.
class RowWeights {
 public:
  void Add(int column, double weight) {
    for (auto& entry : entries_) {
      if (entry.first == column) {
        entry.second += weight;
        return;
      }
    }
    entries_.emplace_back(column, weight);
  }
  const std::vector<std::pair<int, double>>& Entries() const { return entries_; }

 private:
  std::vector<std::pair<int, double>> entries_;
};

}  // namespace

int AssembleVertexRowForm(const SurfaceModel& model, Triplets& triplets) {
  const int vertexCount = model.VertexCount();
  std::vector<RowWeights> rows(static_cast<std::size_t>(vertexCount));
  const ON_3dPoint* points = model.mesh.m_dV.Array();

  for (int f = 0; f < model.FaceCount(); ++f) {
    const ON_MeshFace& face = model.mesh.m_F[f];
    const int a = face.vi[0], b = face.vi[1], c = face.vi[2];
    const ON_3dPoint &pa = points[a], &pb = points[b], &pc = points[c];
    double lengthA = 0.0, lengthB = 0.0, lengthC = 0.0;
    const double cotA = CornerCotangent(pa, pb, pc, &lengthA);
    const double cotB = CornerCotangent(pb, pc, pa, &lengthB);
    const double cotC = CornerCotangent(pc, pa, pb, &lengthC);
    if (!(lengthA >= kMinimumArea) || !(lengthB >= kMinimumArea) || !(lengthC >= kMinimumArea))
      return kDegenerateCorner;

    const double k = model.FaceConductivity(f);
    const double wa = 0.5 * k * cotA, wb = 0.5 * k * cotB, wc = 0.5 * k * cotC;
    rows[b].Add(c, wa);
    rows[c].Add(b, wa);
    rows[c].Add(a, wb);
    rows[a].Add(c, wb);
    rows[a].Add(b, wc);
    rows[b].Add(a, wc);
  }

  triplets.reserve(7 * static_cast<std::size_t>(vertexCount));
  for (int i = 0; i < vertexCount; ++i) {
    double sum = 0.0;
    for (const auto& [j, weight] : rows[i].Entries()) {
      if (j == i) continue;
      triplets.emplace_back(i, j, -weight);
      sum += weight;
    }
    triplets.emplace_back(i, i, sum);  // also when the vertex has no neighbour
  }
  return kSurfaceSucceeded;
}

}  // namespace brindle
