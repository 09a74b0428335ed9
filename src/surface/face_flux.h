// Heat-flux vector of each face, q = k grad T, taken in the plane of the face. The sign is
// that of the gradient: q points towards higher temperature.
#ifndef BRINDLE_SURFACE_FACE_FLUX_H
#define BRINDLE_SURFACE_FACE_FLUX_H

#include <Eigen/Core>
#include <vector>

#include "surface/surface_model.h"

namespace brindle {

// Writes the three components of the flux of face f to fluxOut[3f..3f+2] and returns the
// flux magnitude of every face. A face is skipped, keeping its entries of `fluxOut` and
// magnitude 0, when it is not a triangle, when its corners span less than 1e-8 in plane
// coordinates, or when a corner temperature is not valid.
std::vector<double> ComputeFaceFlux(const SurfaceModel& model, const Eigen::VectorXd& temperature,
                                    double* fluxOut);

}  // namespace brindle

#endif
