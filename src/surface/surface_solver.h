// The object behind a surface solver handle: the ordered model, the element formulation
// chosen at creation and the factorised system.
#ifndef BRINDLE_SURFACE_SURFACE_SOLVER_H
#define BRINDLE_SURFACE_SURFACE_SOLVER_H

#include <memory>

#include "surface/conduction_system.h"
#include "surface/surface_model.h"

namespace brindle {

struct SurfaceSolver {
  SurfaceModel model;
  int method = 0;
  ConductionSystem system;

  // Temperature of every ordered vertex: the prescribed values followed by the solution of
  // the free block. Throws std::runtime_error on a large residual.
  Eigen::VectorXd SolveTemperatures() const;
};

// Checks the input, builds the ordered model, assembles and factorises. Returns 0 with the
// new solver in `solver`, or the failure code with its message written and `solver` empty.
int CreateSurfaceSolver(const ON_Mesh* mesh, const int* faceRegions, int method,
                        std::unique_ptr<SurfaceSolver>& solver, char* error);

// Re-assembles with the current conductivities and refactorises. A failing formulation
// returns its code and leaves the previous blocks and factorisation in place.
int RefactoriseSurfaceSolver(SurfaceSolver& solver);

}  // namespace brindle

#endif
