// Entry points of the surface conduction solver. They check the caller's arguments, call the
// solver and translate its results into statuses and messages.
#include <memory>
#include <new>

#include "brindle.h"
#include "common/error_text.h"
#include "common/trace.h"
#include "surface/surface_solver.h"
#include "surface/surface_status.h"

using namespace brindle;

namespace {

// The flux mesh numbers its vertices from 0, so it must not hold anything that the appended
// vertices, colours, normals or faces would have to line up with.
bool IsBlankMesh(const ON_Mesh& mesh) {
  return mesh.m_V.Count() == 0 && mesh.m_dV.Count() == 0 && mesh.m_F.Count() == 0 &&
         mesh.m_C.Count() == 0 && mesh.m_N.Count() == 0;
}

// The optional outputs are made only when every array they need is there.
SolveTargets RequestedTargets(double* temperatures, const double* levels, int levelCount,
                              ON_SimpleArray<ON_Line>* isotherms, double* faceFlux,
                              int faceFluxCount, double* levelFlow, ON_Mesh* fluxMesh) {
  SolveTargets targets{};
  targets.temperatures = temperatures;
  targets.withFaceFlux = faceFlux && faceFluxCount != 0 && fluxMesh && levelFlow;
  targets.faceFlux = faceFlux;
  targets.faceFluxCount = faceFluxCount;
  targets.fluxMesh = fluxMesh;
  targets.withIsotherms = levels && levelCount != 0 && isotherms && levelFlow;
  targets.levels = levels;
  targets.levelCount = levelCount;
  targets.isotherms = isotherms;
  targets.levelFlow = levelFlow;
  return targets;
}

int CheckSolveArguments(const SurfaceSolver& solver, int temperatureCount,
                        const SolveTargets& targets, char* error) {
  const int vertexCount = solver.model.VertexCount();
  if (temperatureCount != vertexCount) {
    // Reported on standard output only, without a line end.
    TraceOut("length = %i, n() = %i", temperatureCount, vertexCount);
    return kTemperatureCountMismatch;
  }
  if (!targets.temperatures) {
    SetErrorText(error, "Null temperature array");
    return kNullTemperatures;
  }
  if (targets.levelCount < 0) {
    SetErrorText(error, "Negative level count %d", targets.levelCount);
    return kNegativeLevelCount;
  }
  if (targets.faceFluxCount < 0) {
    SetErrorText(error, "Negative face flux count %d", targets.faceFluxCount);
    return kNegativeFaceFluxCount;
  }
  if (targets.withFaceFlux && !IsBlankMesh(*targets.fluxMesh)) {
    SetErrorText(error, "Flux mesh must be empty");
    return kFluxMeshNotEmpty;
  }
  return kSurfaceSucceeded;
}

}  // namespace

extern "C" {

BRINDLE_API int sldmMalloc(const ON_Mesh* mesh, const int* faceRegions, int method, void** handle,
                           char* error) {
  ClearErrorText(error);
  if (!handle) {
    SetErrorText(error, "Null handle pointer");
    return kNullHandleSlot;
  }
  *handle = nullptr;
  try {
    std::unique_ptr<SurfaceSolver> solver;
    const int code = CreateSurfaceSolver(mesh, faceRegions, method, solver, error);
    if (code == kSurfaceSucceeded) *handle = solver.release();
    return code;
  } catch (const std::bad_alloc&) {
    SetErrorText(error, "Out of memory");
    return kCreateOutOfMemory;
  }
}

BRINDLE_API int sldmupdate(void* handle, const double* conductivities, int count, char* error) {
  ClearErrorText(error);
  if (!handle) {
    SetErrorText(error, "Null solver handle");
    return kNullSolverHandle;
  }
  auto& solver = *static_cast<SurfaceSolver*>(handle);
  try {
    if (count > solver.model.LargestRegion() && !conductivities) {
      SetErrorText(error, "Null conductivity array");
      return kNullConductivities;
    }
    return UpdateSurfaceConductivities(solver, conductivities, count);
  } catch (const std::bad_alloc&) {
    SetErrorText(error, "Out of memory");
    return kUpdateOutOfMemory;
  }
}

BRINDLE_API int sldmsolve(const void* handle, double* temperatures, int temperatureCount,
                          double* levels, int levelCount, ON_SimpleArray<ON_Line>* isotherms,
                          double* faceFlux, int faceFluxCount, double* levelFlow, ON_Mesh* fluxMesh,
                          char* error) {
  ClearErrorText(error);
  if (!handle) {
    SetErrorText(error, "Null solver handle");
    return kNullSolverHandle;
  }
  const auto& solver = *static_cast<const SurfaceSolver*>(handle);
  const SolveTargets targets = RequestedTargets(temperatures, levels, levelCount, isotherms,
                                                faceFlux, faceFluxCount, levelFlow, fluxMesh);
  if (const int code = CheckSolveArguments(solver, temperatureCount, targets, error)) return code;
  try {
    SolveInto(solver, targets);
    return kSurfaceSucceeded;
  } catch (const std::bad_alloc&) {
    SetErrorText(error, "Out of memory");
    return kSolveOutOfMemory;
  }
}

BRINDLE_API void sldmfree(void* handle) {
  delete static_cast<SurfaceSolver*>(handle);
}

}  // extern "C"
