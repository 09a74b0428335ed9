#include "surface/surface_solver.h"

#include <vector>

#include "common/error_text.h"
#include "surface/face_flux.h"
#include "surface/flux_mesh.h"
#include "surface/isotherms.h"

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
  return kSurfaceSucceeded;
}

int RefactoriseSurfaceSolver(SurfaceSolver& solver) {
  Triplets triplets;
  if (const int code = AssembleStiffness(solver.model, solver.method, triplets)) return code;
  // Only assembly failures are reported by an update; the factorisation's status is not.
  solver.system.Factorise(triplets, solver.model.VertexCount(), solver.model.fixedCount);
  return kSurfaceSucceeded;
}

int UpdateSurfaceConductivities(SurfaceSolver& solver, const double* values, int count) {
  if (!solver.model.SetConductivities(values, count)) {
    solver.model.SetDefaultConductivities();
    return kConductivityCountTooSmall;
  }
  return RefactoriseSurfaceSolver(solver);
}

void SolveInto(const SurfaceSolver& solver, const SolveTargets& targets) {
  const Eigen::VectorXd temperature = solver.SolveTemperatures();
  const SurfaceModel& model = solver.model;
  for (int i = 0; i < model.VertexCount(); ++i)
    targets.temperatures[i] = temperature[model.oldToNew[i]];

  // Magnitudes stay 0 unless the flux array has exactly three entries per face.
  std::vector<double> magnitude(static_cast<std::size_t>(model.FaceCount()), 0.0);
  if (targets.withFaceFlux) {
    if (targets.faceFluxCount == 3 * model.FaceCount())
      magnitude = ComputeFaceFlux(model, temperature, targets.faceFlux);
    BuildFluxMesh(model, magnitude, *targets.fluxMesh);
  }
  if (targets.withIsotherms) {
    TraceIsotherms(model.mesh, temperature, magnitude, targets.levels, targets.levelCount,
                   *targets.isotherms, targets.levelFlow);
  }
}

}  // namespace brindle
