// Aspect ratio of tetrahedra: the largest doubled face area times the longest edge over six
// times the volume. A regular tetrahedron measures sqrt(6)/2; slivers and needles grow large.
#ifndef BRINDLE_MESHTOOLS_ASPECT_RATIOS_H
#define BRINDLE_MESHTOOLS_ASPECT_RATIOS_H

#include "opennurbs.h"

namespace brindle {

// Writes one ratio per face of `mesh` into `ratios`, reading every face as a tetrahedron.
void ComputeAspectRatios(const ON_Mesh& mesh, double* ratios);

}  // namespace brindle

#endif
