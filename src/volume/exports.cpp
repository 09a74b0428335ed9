// The volume solver's flat exports: thin wrappers that check their arguments, call the solver
// and turn failures into statuses and messages.
#include <brindle.h>

#include <memory>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "common/error_text.h"
#include "common/trace.h"
#include "volume/conduction_solver.h"
#include "volume/input_checks.h"
#include "volume/model.h"
#include "volume/volume_status.h"

namespace {

using Solver = brindle::brindle;

const char* const kOutOfMemoryText = "Out of memory, too much mesh for your RAM";
const char* const kNullHandleText = "Null solver handle";

int RefuseInput(void const** handle, char* error) {
  if (handle) *handle = nullptr;
  brindle::SetErrorText(error, "Error with input data");
  return brindle::kBadInput;
}

int ReportOutOfMemory(char* error) {
  brindle::SetErrorText(error, "%s", kOutOfMemoryText);
  return brindle::kOutOfMemory;
}

int ReportNullArgument(char* error, const char* text) {
  brindle::SetErrorText(error, "%s", text);
  return brindle::kNullArgument;
}

}  // namespace

extern "C" {

BRINDLE_API int poissonmallocvol(int vertexCount, double* coordinates, int tetrahedronCount,
                                 int* tetrahedra, int* tetrahedronMaterials, int materialCount,
                                 double* conductivities, int highCount, int* highVertices,
                                 int lowCount, int* lowVertices, double tolerance,
                                 int* /*reserved*/, char* detail, void const** handle,
                                 char* error) {
  brindle::ClearErrorText(error);
  // The trace texts are fixed, misspellings and doubled blanks included: keep them as they are.
  brindle::TraceOut("entering poissonmallocvol\n");
  const brindle::VolumeInput input{
      vertexCount,          coordinates,   tetrahedronCount, tetrahedra,
      tetrahedronMaterials, materialCount, conductivities,   highCount,
      highVertices,         lowCount,      lowVertices};
  if (!handle || !brindle::IsUsableVolumeInput(input)) return RefuseInput(handle, error);
  *handle = nullptr;

  try {
    brindle::TraceOut("define a new prepoisson\n");
    brindle::prepoisson model(vertexCount, coordinates, tetrahedronCount, tetrahedra,
                              tetrahedronMaterials, materialCount, conductivities, highCount,
                              highVertices, lowCount, lowVertices);
    brindle::TraceOut("define a new brindle\n");
    int code = brindle::kVolumeSucceeded;
    // The model moves into the solver; the temporary is released here rather than copied.
    auto solver = std::make_unique<Solver>(std::move(model), tolerance, &code, detail);
    brindle::TraceOut("done defining  a new brindle\n");
    if (code == brindle::kVolumeSucceeded) {
      *handle = solver.release();
      brindle::TraceOut("returning ffrom poissonmallocvol\n");
      return brindle::kVolumeSucceeded;
    }
    brindle::TraceErr("there was an error with the new brindle\n");
    brindle::SetErrorText(error, "Error constructing solver, code %d", code);
    return code;
  } catch (const std::bad_alloc&) {
    return ReportOutOfMemory(error);
  }
}

BRINDLE_API int poissonsolve(void* handle, double* temperatures, char* error) {
  brindle::ClearErrorText(error);
  if (!handle) return ReportNullArgument(error, kNullHandleText);
  if (!temperatures) return ReportNullArgument(error, "Null temperature array");
  Solver& solver = *static_cast<Solver*>(handle);
  try {
    solver.Solve();
  } catch (const std::bad_alloc&) {
    return ReportOutOfMemory(error);
  }
  solver.CopyTemperatures(temperatures);
  return brindle::kVolumeSucceeded;
}

BRINDLE_API int poissonresid(void* handle, double* residual, char* error) {
  brindle::ClearErrorText(error);
  if (!handle) return ReportNullArgument(error, kNullHandleText);
  if (!residual) return ReportNullArgument(error, "Null residual pointer");
  try {
    *residual = static_cast<const Solver*>(handle)->Residual();
  } catch (const std::bad_alloc&) {
    return ReportOutOfMemory(error);
  }
  return brindle::kVolumeSucceeded;
}

BRINDLE_API int poissoninfo(void* handle, char* error) {
  brindle::ClearErrorText(error);
  if (!handle) {
    brindle::SetErrorText(error, "%s", kNullHandleText);
    return brindle::kInfoNullHandle;
  }
  return static_cast<const Solver*>(handle)->Status();
}

BRINDLE_API int poissonresetconductivities(void* handle, double* conductivities, int /*count*/,
                                           char* error) {
  brindle::ClearErrorText(error);
  if (!handle) return ReportNullArgument(error, kNullHandleText);
  if (!conductivities) return ReportNullArgument(error, "Null conductivity array");
  Solver& solver = *static_cast<Solver*>(handle);
  try {
    const std::vector<double> values(conductivities, conductivities + solver.MaterialCount());
    std::string message;
    const int code = solver.UpdateConductivities(values, message);
    if (code != brindle::kVolumeSucceeded) brindle::SetErrorText(error, "%s", message.c_str());
    return code;
  } catch (const std::bad_alloc&) {
    return ReportOutOfMemory(error);
  }
}

BRINDLE_API void poissonfree(void* handle) {
  delete static_cast<Solver*>(handle);
}

}  // extern "C"
