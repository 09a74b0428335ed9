// Exported entries of the cutting subsystem.
#include "brindle.h"
#include "common/error_text.h"
#include "cutting/level_set_cut.h"
#include "cutting/zero_level_clip.h"

using namespace brindle;

namespace {

// A call without a result slot has nowhere to deliver its mesh; it still reports its status.
void StoreResult(ON_Mesh** result, std::unique_ptr<ON_Mesh> mesh) {
  if (result) *result = mesh.release();
}

}  // namespace

extern "C" {

BRINDLE_API int CutTetrahedralMesh(const ON_Mesh* mesh, const double* vertexValues, int keepRef,
                                   double hmin, double hmax, ON_Mesh* interfaceMesh,
                                   ON_Mesh** result, char* errorText) {
  ClearErrorText(errorText);
  // The slot stays null unless a mesh is delivered, also when an allocation failure leaves.
  StoreResult(result, nullptr);
  LevelSetCutRequest request;
  request.mesh = mesh;
  request.vertexValues = vertexValues;
  request.keepRef = keepRef;
  request.hmin = hmin;
  request.hmax = hmax;
  request.interfaceMesh = interfaceMesh;
  LevelSetCutOutcome outcome = CutAlongZeroLevel(request);
  if (outcome.status != kCutSucceeded) {
    SetErrorText(errorText, LevelSetCutMessage(outcome.status), outcome.engineStatus);
    return outcome.status;
  }
  StoreResult(result, std::move(outcome.mesh));
  return kCutSucceeded;
}

BRINDLE_API int CutTetrahedralMesh2(const ON_Mesh* mesh, const double* vertexValues,
                                    int /*keepRef*/, double /*hmin*/, double /*hmax*/,
                                    ON_Mesh* /*interfaceMesh*/, ON_Mesh** result, char* errorText) {
  ClearErrorText(errorText);
  StoreResult(result, nullptr);
  if (!mesh || !vertexValues) {
    SetErrorText(errorText, "Null input mesh or vertex values");
    return kClipNullInput;
  }
  ZeroLevelClip clip(*mesh, vertexValues);
  StoreResult(result, clip.Run());
  return kClipSucceeded;
}

}  // extern "C"
