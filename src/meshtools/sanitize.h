// Sanitising: refuses meshes that mix triangles and quads or whose single- and double-precision
// vertex lists disagree, and hands back a copy in which both vertex lists are filled.
#ifndef BRINDLE_MESHTOOLS_SANITIZE_H
#define BRINDLE_MESHTOOLS_SANITIZE_H

#include <memory>

#include "opennurbs.h"

namespace brindle {

// Statuses of TrySanitize.
enum SanitizeStatus {
  kSanitizeSucceeded = 0,
  kSanitizeNullArgument = 1,
  kSanitizeMixedFaces = 2,
  kSanitizeVertexMismatch = 3,
  kSanitizeNullResult = 4,
  kSanitizeOutOfMemory = 5,
};

// The error codes TrySanitize writes beside statuses 2 and 3.
enum SanitizeErrorCode {
  kSanitizeCodeMixedFaces = -1,
  kSanitizeCodeVertexMismatch = -2,
};

enum class SanitizeProblem {
  kNone,
  kMixedFaceTypes,           // triangles and quads at once
  kVertexCountsDiffer,       // both vertex lists filled, with different lengths
  kVerticesNotSynchronized,  // the lists do not round to each other (or one is empty)
};

// The first problem that keeps `mesh` from being sanitised, in the order listed above.
SanitizeProblem FindSanitizeProblem(const ON_Mesh& mesh);

// A deep copy of `mesh` whose missing vertex list, single or double precision, is filled from
// the other one. `mesh` itself is not changed.
std::unique_ptr<ON_Mesh> CopyWithBothPrecisions(const ON_Mesh& mesh);

}  // namespace brindle

#endif
