// Exported MMG quality queries.
#include "brindle.h"
#include "common/error_text.h"
#include "meshtools/quality_mmg.h"

using namespace brindle;

namespace {

int ReportQuality(bool surface, const ON_Mesh* mesh, double* quality, char* errorText) {
  ClearErrorText(errorText);
  // A host bug must not crash the host: without a mesh or an output array there is nothing
  // to measure, reported with a status of its own past MMG's four.
  if (!mesh || !quality) {
    SetErrorText(errorText, "Null mesh or quality array");
    return 5;
  }
  const int status =
      surface ? MmgTriangleQualities(*mesh, quality) : MmgTetrahedronQualities(*mesh, quality);
  if (status != kQualitySucceeded)
    SetErrorText(errorText, "%s", MmgQualityMessage(surface, status));
  return status;
}

}  // namespace

extern "C" {

BRINDLE_API int qual(const ON_Mesh* mesh, double* quality, char* errorText) {
  return ReportQuality(false, mesh, quality, errorText);
}

BRINDLE_API int qualS(const ON_Mesh* mesh, double* quality, char* errorText) {
  return ReportQuality(true, mesh, quality, errorText);
}

}  // extern "C"
