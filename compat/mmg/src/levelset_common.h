// Pieces shared by the volume and surface level-set drivers: the scaling frame, the level-set
// values in that frame, the edge table of cut points and the final vertex compaction.
#ifndef BRINDLE_COMPAT_MMG_LEVELSET_COMMON_H
#define BRINDLE_COMPAT_MMG_LEVELSET_COMMON_H

#include <cstdint>
#include <utility>
#include <vector>

#include "mesh_data.h"

namespace mmgcompat {

// Thresholds of the discretisation, in the scaled frame where the largest bounding-box extent
// of the used vertices is 1.
constexpr double kSnapBand = 1e-6;       // values closer than this to the level become 0
constexpr double kRepairValue = 1e-4;    // replaces a zero that would make the surface singular
constexpr double kSliverQuality = 1e-6;  // unnormalised tetrahedron quality of a sliver
constexpr double kSliverBand = 1e-3;     // slivers this close to the level go negative
constexpr double kExactZero = 1e-30;     // a value this small counts as an exact zero
constexpr double kCutClamp = 1e-6;       // cut points stay this far (relative) from the ends
constexpr double kMinExtent = 1e-30;     // smaller bounding boxes cannot be scaled

// The affine frame x_scaled = (x - origin) / extent of MMG's drivers.
struct ScaleFrame {
  double origin[3] = {0.0, 0.0, 0.0};
  double extent = 0.0;
};

// Bounding box of the used vertices; false (with MMG's stderr line) when it is degenerate.
bool ComputeScaleFrame(const MMG5_Mesh& mesh, ScaleFrame* frame);

// Moves the used vertices into the scaled frame. MMG leaves the mesh that way on several
// failure paths, and callers may observe it.
void ApplyScaleFrame(MMG5_Mesh& mesh, const ScaleFrame& frame);

// Level-set values of the used vertices in the scaled frame, minus the scaled level, so that
// the level is 0. Index 0 and unused vertices hold 0.
std::vector<double> ShiftedScaledValues(const MMG5_Mesh& mesh, const MMG5_Sol& ls,
                                        const ScaleFrame& frame);

// -1, 0 or +1; values within 1e-200 of the level count as 0 (never cut).
inline int SignOf(double value) {
  if (value > 1e-200) return 1;
  if (value < -1e-200) return -1;
  return 0;
}

// Decides whether a vertex at the level can stay there. `link_edges` are the edges of the
// vertex's link (pairs of neighbour numbers) and `values` the shifted values. The zero is
// accepted when both signs occur around the vertex and the neighbours of each sign are
// connected through link edges between neighbours of that sign: the level set then passes
// through the vertex as one sheet instead of touching it or crossing itself there.
bool ZeroIsManifold(const std::vector<std::pair<MMG5_int, MMG5_int>>& link_edges,
                    const std::vector<double>& values);

// Map from an undirected edge (two vertex numbers) to the number of the point cut on it.
// Open addressing with linear probing; sized once for the expected number of edges.
class EdgePointMap {
 public:
  explicit EdgePointMap(std::size_t expected_edges);
  // Returns the stored point or 0.
  MMG5_int Find(MMG5_int a, MMG5_int b) const;
  // Stores `point` for the edge unless one is already there; returns the stored point.
  MMG5_int Insert(MMG5_int a, MMG5_int b, MMG5_int point);

 private:
  static std::uint64_t Key(MMG5_int a, MMG5_int b);
  std::size_t Slot(std::uint64_t key) const;
  void Grow();

  std::vector<std::uint64_t> keys_;
  std::vector<MMG5_int> points_;
  std::size_t mask_ = 0;
  std::size_t size_ = 0;
};

// Position of the cut point on the edge p0-p1 whose shifted values v0 and v1 have opposite
// signs: linear interpolation, the parameter clamped to [kCutClamp, 1 - kCutClamp].
void CutPosition(const double* p0, const double* p1, double v0, double v1, double* out);

// The worst element of MMG's input quality check, on the unnormalised scale of quality.h.
struct WorstElement {
  double quality = 1.0;
  MMG5_int number = 0;
  void Consider(double q, MMG5_int k) {
    if (q < quality) {
      quality = q;
      number = k;
    }
  }
};

// MMG's input quality check: true, with MMG's stderr line, when the worst element is below
// 1e-30 once multiplied by `scale` (the normalisation of its kind of element).
bool TooBadQuality(const WorstElement& worst, double scale);

// MMG's check for level-set values: true, with MMG's stderr line, when there are none for
// every vertex.
bool MissingLevelSetValues(const MMG5_Mesh& mesh, const MMG5_Sol& ls);

// Input vertex references equal to the interface reference are cleared before the cut.
void ClearIsoReferences(MMG5_Mesh& mesh);

// Removes vertices no element uses by moving the last used vertex into each hole (MMG's
// compaction without renumbering), takes absolute values of the vertex references, and
// returns the old-to-new vertex numbers (0 for removed vertices).
std::vector<MMG5_int> CompactVertices(MMG5_Mesh& mesh, const std::vector<char>& used);

}  // namespace mmgcompat

#endif
