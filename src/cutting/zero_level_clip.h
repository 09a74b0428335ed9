// Clipping of a tetrahedral mesh to the non-positive side of a vertex field (marching
// tetrahedra without remeshing): kept tetrahedra are the input's, whole or cut, and every cut
// edge gets exactly one new vertex that all pieces around it share.
#ifndef BRINDLE_CUTTING_ZERO_LEVEL_CLIP_H
#define BRINDLE_CUTTING_ZERO_LEVEL_CLIP_H

#include <cstdint>
#include <memory>
#include <unordered_map>
#include <vector>

#include "opennurbs.h"

namespace brindle {

// Statuses of the clip export.
enum ZeroLevelClipStatus {
  kClipSucceeded = 0,
  kClipNullInput = 1,
};

// One clip of one mesh. The input is read through its single-precision vertices and its faces,
// each face being one tetrahedron (vi[0..3]); `vertexValues` holds one value per
// single-precision vertex. The result is a copy of the input, edited in place: tetrahedra on the
// positive side removed, mixed ones replaced by their non-positive part, vertices coloured
// (50, 50, 50) and the archive written with every key empty.
class ZeroLevelClip {
 public:
  ZeroLevelClip(const ON_Mesh& mesh, const double* vertexValues);

  // Runs the clip; call once. Allocation failures leave as std::bad_alloc.
  std::unique_ptr<ON_Mesh> Run();

 private:
  struct Tetrahedron {
    int v[4];
  };

  void ClipFace(int faceIndex);
  void EmitPieces(int faceIndex, const Tetrahedron* pieces, int count, bool oddParity);
  // Index of the vertex on the edge from `positive` (value > 0) to `negative` (value < 0),
  // created on first request at the linear zero crossing of the values.
  int EdgeVertex(int positive, int negative);

  std::unique_ptr<ON_Mesh> result_;
  std::vector<float> values_;
  std::unordered_map<std::uint64_t, int> edgeVertices_;
  std::vector<Tetrahedron> extraTetrahedra_;
};

}  // namespace brindle

#endif
