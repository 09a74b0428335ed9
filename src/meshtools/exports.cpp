// The mesh tools' exports: argument checks, statuses and messages; the work is done by the
// internals declared in the headers included here.
#include <memory>
#include <new>

#include "brindle.h"
#include "common/error_text.h"
#include "meshtools/aspect_ratios.h"
#include "meshtools/boundary_extraction.h"
#include "meshtools/dihedral_angles.h"
#include "meshtools/element_measure_status.h"
#include "meshtools/heat_color.h"
#include "meshtools/quality_mmg.h"
#include "meshtools/rect_mesh.h"
#include "meshtools/sanitize.h"
#include "meshtools/sphere_encoding.h"

using namespace brindle;

namespace {

// AspectRatios and DihedralAngles: a mesh is required, and an output array when the mesh has
// faces to measure.
int MeasureEveryFace(const ON_Mesh* mesh, double* values, char* error,
                     void (*measure)(const ON_Mesh&, double*)) {
  ClearErrorText(error);
  if (mesh == nullptr) {
    SetErrorText(error, "Null mesh");
    return kMeasureNullMesh;
  }
  if (values == nullptr && mesh->FaceCount() > 0) {
    SetErrorText(error, "Null output array");
    return kMeasureNullOutput;
  }
  measure(*mesh, values);
  return kMeasureSucceeded;
}

int ReportQuality(bool surface, const ON_Mesh* mesh, double* quality, char* errorText) {
  ClearErrorText(errorText);
  // A host bug must not crash the host: without a mesh or an output array there is nothing
  // to measure, reported with a status of its own past MMG's four.
  if (!mesh || !quality) {
    SetErrorText(errorText, "Null mesh or quality array");
    return kQualityNullInput;
  }
  const int status =
      surface ? MmgTriangleQualities(*mesh, quality) : MmgTetrahedronQualities(*mesh, quality);
  if (status != kQualitySucceeded)
    SetErrorText(errorText, "%s", MmgQualityMessage(surface, status));
  return status;
}

}  // namespace

extern "C" {

BRINDLE_API void HeatColor(double t, int* red, int* green, int* blue) {
  const RgbChannels rgb = HeatColorChannels(t);
  // A null channel pointer is skipped rather than dereferenced.
  if (red) *red = rgb.red;
  if (green) *green = rgb.green;
  if (blue) *blue = rgb.blue;
}

BRINDLE_API int encode_integer_to_sphere(int value, float* x, float* y, float* z) {
  if (!x || !y || !z) return kSphereRefused;
  if (!IsSphereEncodable(value)) {
    *z = 0.0f;
    *y = 0.0f;
    *x = 0.0f;
    return kSphereRefused;
  }
  EncodeIntegerToSphere(value, *x, *y, *z);
  return kSphereEncoded;
}

BRINDLE_API int decode_integer_from_sphere(float x, float y, float z) {
  return DecodeIntegerFromSphere(x, y, z);
}

BRINDLE_API int AspectRatios(const ON_Mesh* mesh, double* ratios, char* error) {
  return MeasureEveryFace(mesh, ratios, error, &ComputeAspectRatios);
}

BRINDLE_API int DihedralAngles(const ON_Mesh* mesh, double* angles, char* error) {
  return MeasureEveryFace(mesh, angles, error, &ComputeDihedralAngles);
}

// Running out of memory leaves by exception, see brindle.h.
BRINDLE_API int ExtractBoundaryMeshWithStats(const ON_Mesh* tetrahedra, int* boundaryCount,
                                             int* interiorCount, int* overSharedCount,
                                             ON_Mesh** result, char* error) {
  ClearErrorText(error);
  if (tetrahedra == nullptr || tetrahedra->FaceCount() == 0) {
    if (result != nullptr) *result = nullptr;
    SetErrorText(error, "Null or empty tet mesh");
    return kExtractNullOrEmptyMesh;
  }
  if (result == nullptr) {
    SetErrorText(error, "Null result pointer");
    return kExtractNullResult;
  }
  BoundaryFaceCounts counts;
  std::unique_ptr<ON_Mesh> boundary = ExtractBoundaryMesh(*tetrahedra, &counts);
  if (boundaryCount != nullptr) *boundaryCount = counts.boundary;
  if (interiorCount != nullptr) *interiorCount = counts.interior;
  if (overSharedCount != nullptr) *overSharedCount = counts.overShared;
  *result = boundary.release();
  return kExtractSucceeded;
}

BRINDLE_API int MakeRectMesh(const ON_Plane* plane, double width, double height, int nx, int ny,
                             ON_Mesh** result, char* error) {
  ClearErrorText(error);
  if (!IsValidRectangle(width, height, nx, ny)) {
    if (result != nullptr) *result = nullptr;
    SetErrorText(error, "Invalid dimensions or subdivisions");
    return kRectInvalidDimensions;
  }
  if (plane == nullptr || result == nullptr) {
    if (result != nullptr) *result = nullptr;
    SetErrorText(error, "Null plane or result pointer");
    return kRectNullArgument;
  }
  std::unique_ptr<ON_Mesh> mesh;
  try {
    mesh = BuildRectMesh(*plane, width, height, nx, ny);
  } catch (const std::bad_alloc&) {
    *result = nullptr;
    SetErrorText(error, "Out of memory");
    return kRectOutOfMemory;
  }
  if (!mesh->IsValid()) {
    *result = nullptr;
    SetErrorText(error, "Generated mesh is invalid");
    return kRectInvalidMesh;
  }
  *result = mesh.release();
  return kRectSucceeded;
}

BRINDLE_API int TrySanitize(const ON_Mesh* mesh, int* errorCode, ON_Mesh** result, char* error) {
  ClearErrorText(error);
  if (mesh == nullptr || errorCode == nullptr) {
    if (result != nullptr) *result = nullptr;
    SetErrorText(error, "Null mesh or error code pointer");
    return kSanitizeNullArgument;
  }
  const SanitizeProblem problem = FindSanitizeProblem(*mesh);
  if (problem != SanitizeProblem::kNone) {
    if (result != nullptr) *result = nullptr;
    switch (problem) {
      case SanitizeProblem::kMixedFaceTypes:
        *errorCode = kSanitizeCodeMixedFaces;
        SetErrorText(error, "Mesh has both triangles and quads");
        return kSanitizeMixedFaces;
      case SanitizeProblem::kVertexCountsDiffer:
        *errorCode = kSanitizeCodeVertexMismatch;
        SetErrorText(error, "Single and double precision vertex counts differ");
        return kSanitizeVertexMismatch;
      default:
        *errorCode = kSanitizeCodeVertexMismatch;
        SetErrorText(error, "Vertices not synchronized between single and double precision");
        return kSanitizeVertexMismatch;
    }
  }
  if (result == nullptr) {
    SetErrorText(error, "Null result pointer");
    return kSanitizeNullResult;
  }
  try {
    *result = CopyWithBothPrecisions(*mesh).release();
  } catch (const std::bad_alloc&) {
    *result = nullptr;
    SetErrorText(error, "Out of memory");
    return kSanitizeOutOfMemory;
  }
  return kSanitizeSucceeded;
}

BRINDLE_API int qual(const ON_Mesh* mesh, double* quality, char* errorText) {
  return ReportQuality(false, mesh, quality, errorText);
}

BRINDLE_API int qualS(const ON_Mesh* mesh, double* quality, char* errorText) {
  return ReportQuality(true, mesh, quality, errorText);
}

}  // extern "C"
