// A copy of the surface coloured by flux magnitude: every face gets its own three vertices so
// that it shows one flat colour from the heat ramp.
#ifndef BRINDLE_SURFACE_FLUX_MESH_H
#define BRINDLE_SURFACE_FLUX_MESH_H

#include <vector>

#include "surface/surface_model.h"

namespace brindle {

// Appends 3F vertices (with colours and unit face normals) and F faces to the empty `out`.
// Magnitudes are scaled by the largest one; when all are 0 every face takes the colour of 0.
void BuildFluxMesh(const SurfaceModel& model, const std::vector<double>& magnitude, ON_Mesh& out);

}  // namespace brindle

#endif
