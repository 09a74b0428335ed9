// Entry points of the surface conduction solver. They check the caller's arguments, call the
// solver and translate its results into statuses and messages. The runtime errors of the
// solver ("Large reduced residual" and the two element-table errors of method 1) are left to
// reach the host, which catches them; allocation failures are reported as statuses.
#include <memory>
#include <new>
#include <vector>

#include "brindle.h"
#include "common/error_text.h"
#include "common/trace.h"
#include "surface/face_flux.h"
#include "surface/flux_mesh.h"
#include "surface/isotherms.h"
#include "surface/surface_solver.h"

namespace {

constexpr int kNullHandleSlot = 41;
constexpr int kCreateOutOfMemory = 44;

constexpr int kNullSolverHandle = -1001;
constexpr int kTemperatureCountMismatch = -17;
constexpr int kNullTemperatures = -18;
constexpr int kNegativeLevelCount = -19;
constexpr int kNegativeFaceFluxCount = -20;
constexpr int kFluxMeshNotEmpty = -21;
constexpr int kSolveOutOfMemory = -22;

constexpr int kConductivityCountTooSmall = -3003;
constexpr int kNullConductivities = -3004;
constexpr int kUpdateOutOfMemory = -3005;

// Which optional outputs a solve call asks for.
struct SolveOutputs {
  bool faceFlux;   // flux magnitudes and the flux mesh
  bool isotherms;  // segments and level flows
};

SolveOutputs RequestedOutputs(const double* levels, int levelCount,
                              const ON_SimpleArray<ON_Line>* isotherms, const double* faceFlux,
                              int faceFluxCount, const double* levelFlow, const ON_Mesh* fluxMesh) {
  return SolveOutputs{faceFlux && faceFluxCount != 0 && fluxMesh && levelFlow,
                      levels && levelCount != 0 && isotherms && levelFlow};
}

// The flux mesh numbers its vertices from 0, so it must not hold anything that the appended
// vertices, colours, normals or faces would have to line up with.
bool IsBlankMesh(const ON_Mesh& mesh) {
  return mesh.m_V.Count() == 0 && mesh.m_dV.Count() == 0 && mesh.m_F.Count() == 0 &&
         mesh.m_C.Count() == 0 && mesh.m_N.Count() == 0;
}

int CheckSolveArguments(const brindle::SurfaceSolver& solver, const double* temperatures,
                        int temperatureCount, int levelCount, int faceFluxCount,
                        const ON_Mesh* fluxMesh, const SolveOutputs& outputs, char* error) {
  const int vertexCount = solver.model.VertexCount();
  if (temperatureCount != vertexCount) {
    // Reported on standard output only, without a line end.
    brindle::TraceOut("length = %i, n() = %i", temperatureCount, vertexCount);
    return kTemperatureCountMismatch;
  }
  if (!temperatures) {
    brindle::SetErrorText(error, "Null temperature array");
    return kNullTemperatures;
  }
  if (levelCount < 0) {
    brindle::SetErrorText(error, "Negative level count %d", levelCount);
    return kNegativeLevelCount;
  }
  if (faceFluxCount < 0) {
    brindle::SetErrorText(error, "Negative face flux count %d", faceFluxCount);
    return kNegativeFaceFluxCount;
  }
  if (outputs.faceFlux && !IsBlankMesh(*fluxMesh)) {
    brindle::SetErrorText(error, "Flux mesh must be empty");
    return kFluxMeshNotEmpty;
  }
  return 0;
}

}  // namespace

int sldmMalloc(const ON_Mesh* mesh, const int* faceRegions, int method, void** handle,
               char* error) {
  brindle::ClearErrorText(error);
  if (!handle) {
    brindle::SetErrorText(error, "Null handle pointer");
    return kNullHandleSlot;
  }
  *handle = nullptr;
  try {
    std::unique_ptr<brindle::SurfaceSolver> solver;
    const int code = brindle::CreateSurfaceSolver(mesh, faceRegions, method, solver, error);
    if (code == 0) *handle = solver.release();
    return code;
  } catch (const std::bad_alloc&) {
    brindle::SetErrorText(error, "Out of memory");
    return kCreateOutOfMemory;
  }
}

int sldmupdate(void* handle, const double* conductivities, int count, char* error) {
  brindle::ClearErrorText(error);
  if (!handle) {
    brindle::SetErrorText(error, "Null solver handle");
    return kNullSolverHandle;
  }
  auto& solver = *static_cast<brindle::SurfaceSolver*>(handle);
  try {
    if (count > solver.model.LargestRegion() && !conductivities) {
      brindle::SetErrorText(error, "Null conductivity array");
      return kNullConductivities;
    }
    if (!solver.model.SetConductivities(conductivities, count)) {
      solver.model.SetDefaultConductivities();
      return kConductivityCountTooSmall;
    }
    return brindle::RefactoriseSurfaceSolver(solver);
  } catch (const std::bad_alloc&) {
    brindle::SetErrorText(error, "Out of memory");
    return kUpdateOutOfMemory;
  }
}

int sldmsolve(const void* handle, double* temperatures, int temperatureCount, double* levels,
              int levelCount, ON_SimpleArray<ON_Line>* isotherms, double* faceFlux,
              int faceFluxCount, double* levelFlow, ON_Mesh* fluxMesh, char* error) {
  brindle::ClearErrorText(error);
  if (!handle) {
    brindle::SetErrorText(error, "Null solver handle");
    return kNullSolverHandle;
  }
  const auto& solver = *static_cast<const brindle::SurfaceSolver*>(handle);
  const SolveOutputs outputs =
      RequestedOutputs(levels, levelCount, isotherms, faceFlux, faceFluxCount, levelFlow, fluxMesh);
  if (const int code = CheckSolveArguments(solver, temperatures, temperatureCount, levelCount,
                                           faceFluxCount, fluxMesh, outputs, error))
    return code;

  try {
    const Eigen::VectorXd temperature = solver.SolveTemperatures();
    const brindle::SurfaceModel& model = solver.model;
    for (int i = 0; i < model.VertexCount(); ++i)
      temperatures[i] = temperature[model.oldToNew[i]];

    // Magnitudes stay 0 unless the flux array has exactly three entries per face.
    std::vector<double> magnitude(static_cast<std::size_t>(model.FaceCount()), 0.0);
    if (outputs.faceFlux) {
      if (faceFluxCount == 3 * model.FaceCount())
        magnitude = brindle::ComputeFaceFlux(model, temperature, faceFlux);
      brindle::BuildFluxMesh(model, magnitude, *fluxMesh);
    }
    if (outputs.isotherms) {
      brindle::TraceIsotherms(model.mesh, temperature, magnitude, levels, levelCount, *isotherms,
                              levelFlow);
    }
    return 0;
  } catch (const std::bad_alloc&) {
    brindle::SetErrorText(error, "Out of memory");
    return kSolveOutOfMemory;
  }
}

void sldmfree(void* handle) {
  delete static_cast<brindle::SurfaceSolver*>(handle);
}
