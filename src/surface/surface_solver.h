// The object behind a surface solver handle: the ordered model, the element formulation
// chosen at creation and the factorised system.
#ifndef BRINDLE_SURFACE_SURFACE_SOLVER_H
#define BRINDLE_SURFACE_SURFACE_SOLVER_H

#include <memory>

#include "surface/conduction_system.h"
#include "surface/surface_model.h"
#include "surface/surface_status.h"

namespace brindle {

struct SurfaceSolver {
  SurfaceModel model;
  int method = 0;
  ConductionSystem system;

  // Temperature of every ordered vertex: the prescribed values followed by the solution of
  // the free block. Throws std::runtime_error on a large residual.
  Eigen::VectorXd SolveTemperatures() const;
};

// Checks the input, builds the ordered model, assembles and factorises. Returns
// kSurfaceSucceeded with the new solver in `solver`, or the failure code with its message
// written and `solver` empty.
int CreateSurfaceSolver(const ON_Mesh* mesh, const int* faceRegions, int method,
                        std::unique_ptr<SurfaceSolver>& solver, char* error);

// Re-assembles with the current conductivities and refactorises. A failing formulation
// returns its code and leaves the previous blocks and factorisation in place.
int RefactoriseSurfaceSolver(SurfaceSolver& solver);

// Takes values[r] for every region r in use and refactorises. When `count` does not cover
// every region, every region goes back to 1.0, the factorisation is kept and the result is
// kConductivityCountTooSmall; otherwise the result is that of RefactoriseSurfaceSolver.
int UpdateSurfaceConductivities(SurfaceSolver& solver, const double* values, int count);

// Where a solve call writes. The optional outputs are made when `withFaceFlux` or
// `withIsotherms` is set; the flux mesh must then be blank.
struct SolveTargets {
  double* temperatures;  // one per vertex, caller's order
  bool withFaceFlux;     // flux mesh, and faceFlux when it has three entries per face
  double* faceFlux;
  int faceFluxCount;
  ON_Mesh* fluxMesh;
  bool withIsotherms;  // isotherm segments and the flow across each level
  const double* levels;
  int levelCount;
  ON_SimpleArray<ON_Line>* isotherms;
  double* levelFlow;
};

// Solves and writes the temperatures and the requested outputs. Throws std::runtime_error on
// a large residual (nothing is written then) and std::bad_alloc when memory runs out.
void SolveInto(const SurfaceSolver& solver, const SolveTargets& targets);

}  // namespace brindle

#endif
