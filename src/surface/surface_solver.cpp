#include "surface/surface_solver.h"

#include "common/error_text.h"

namespace brindle {

Eigen::VectorXd SurfaceSolver::SolveTemperatures() const {
  const Eigen::VectorXd free = system.Solve(model.prescribed);
  Eigen::VectorXd temperatures(model.VertexCount());
  temperatures.head(model.fixedCount) = model.prescribed;
  temperatures.tail(free.size()) = free;
  return temperatures;
}

int CreateSurfaceSolver(const ON_Mesh* mesh, const int* faceRegions, int method,
                        std::unique_ptr<SurfaceSolver>& solver, char* error) {
  solver.reset();
  if (const int code = CheckSurfaceInput(mesh, method, error)) return code;

  auto created = std::make_unique<SurfaceSolver>();
  created->method = method;
  if (const int code = BuildSurfaceModel(*mesh, faceRegions, created->model, error)) return code;

  Triplets triplets;
  if (const int code = AssembleStiffness(created->model, method, triplets)) {
    SetErrorText(error, "Stiffness assembly failed with error %d", code);
    return code;
  }
  if (!created->system.Factorise(triplets, created->model.VertexCount(),
                                 created->model.fixedCount)) {
    SetErrorText(error, "Eigen solver factorization failed");
    return kFactorisationFailed;
  }
  solver = std::move(created);
  return 0;
}

int RefactoriseSurfaceSolver(SurfaceSolver& solver) {
  Triplets triplets;
  if (const int code = AssembleStiffness(solver.model, solver.method, triplets)) return code;
  // Only assembly failures are reported by an update; the factorisation's status is not.
  solver.system.Factorise(triplets, solver.model.VertexCount(), solver.model.fixedCount);
  return 0;
}

}  // namespace brindle
