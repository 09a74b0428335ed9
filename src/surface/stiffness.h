// Global conduction matrix of linear triangle elements, in four formulations selected by the
// solver's method number. All produce the same Laplace operator on interior edges; they differ
// in their degeneracy checks and in how an edge shared by two regions is weighted.
#ifndef BRINDLE_SURFACE_STIFFNESS_H
#define BRINDLE_SURFACE_STIFFNESS_H

#include <Eigen/SparseCore>
#include <vector>

#include "surface/surface_model.h"

namespace brindle {

using Triplets = std::vector<Eigen::Triplet<double>>;

// Smallest triangle area (methods 0 and 3) or cross-product length (methods 1 and 2) that
// counts as a proper triangle.
constexpr double kMinimumArea = 1e-10;

// Method 0: element matrices from the gradients of the barycentric functions. Writes one
// "Conductivity" trace line per face.
int AssembleGradientForm(const SurfaceModel& model, Triplets& triplets);
// Method 1: cotangent weights per edge; an edge between two regions takes the harmonic mean
// of their conductivities. Throws std::runtime_error on a non-triangle face or a conductivity
// list of the wrong size, which a checked model never has.
int AssembleEdgeCotangentForm(const SurfaceModel& model, Triplets& triplets);
// Method 2: cotangent weights gathered row by row.
int AssembleVertexRowForm(const SurfaceModel& model, Triplets& triplets);
// Method 3: element matrices from edge vectors, scaled by k/area (four times method 0).
int AssembleEdgeVectorForm(const SurfaceModel& model, Triplets& triplets);

// Runs the formulation of `method` (0..3). Returns 0, or the failure code with `triplets`
// left empty.
int AssembleStiffness(const SurfaceModel& model, int method, Triplets& triplets);

// Cotangent of the angle at `apex` between the edges to `first` and `second`. The length of
// the edges' cross product is returned through `crossLength` so callers can judge degeneracy.
double CornerCotangent(const ON_3dPoint& apex, const ON_3dPoint& first, const ON_3dPoint& second,
                       double* crossLength);

}  // namespace brindle

#endif
