// Views of openNURBS mesh arrays as the flat arrays MMG reads and fills: x, y, z doubles per
// vertex, four ints per face, one int per vertex colour (its packed value).
#ifndef BRINDLE_MMGLINK_MMG_ARRAYS_H
#define BRINDLE_MMGLINK_MMG_ARRAYS_H

#include <vector>

#include "opennurbs.h"

namespace brindle {

static_assert(sizeof(ON_3dPoint) == 3 * sizeof(double), "ON_3dPoint must be three doubles");
static_assert(sizeof(ON_MeshFace) == 4 * sizeof(int), "ON_MeshFace must be four ints");
static_assert(sizeof(ON_Color) == sizeof(int), "ON_Color must be one packed 32-bit value");

inline double* CoordinateArray(ON_SimpleArray<ON_3dPoint>& points) {
  return reinterpret_cast<double*>(points.Array());
}

// MMG's setters take non-const arrays but only copy from them.
inline double* CoordinateArray(const ON_SimpleArray<ON_3dPoint>& points) {
  return reinterpret_cast<double*>(const_cast<ON_3dPoint*>(points.Array()));
}

inline int* FaceIndexArray(ON_SimpleArray<ON_MeshFace>& faces) {
  return reinterpret_cast<int*>(faces.Array());
}

inline int* ColorReferenceArray(ON_SimpleArray<ON_Color>& colors) {
  return reinterpret_cast<int*>(colors.Array());
}

// MMG vertex references: the packed vertex colours when the mesh has them, else zeros.
std::vector<int> MmgVertexReferences(const ON_Mesh& mesh, int vertexCount);

// 1-based corners 0 .. cornerCount - 1 of every face, as MMG's element setters take them.
// MMG does not range-check element indices, so a face pointing outside the vertex list makes
// this return false, and the caller refuses the mesh as the element setter's failure instead
// of letting MMG read outside its tables.
bool MmgElementCorners(const ON_Mesh& mesh, int vertexCount, int cornerCount,
                       std::vector<int>& corners);

}  // namespace brindle

#endif
