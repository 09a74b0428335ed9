// Element quality as MMG measures it (1 for the regular element, falling towards 0), for the
// tetrahedra (MMG3D) or triangles (MMGS) of an openNURBS mesh.
#ifndef BRINDLE_MESHTOOLS_QUALITY_MMG_H
#define BRINDLE_MESHTOOLS_QUALITY_MMG_H

class ON_Mesh;

namespace brindle {

// Statuses: the MMG step that refused the mesh. The message of each is returned by
// MmgQualityMessage.
enum MmgQualityStatus {
  kQualitySucceeded = 0,
  kQualityMeshSize = 1,
  kQualityVertices = 2,
  kQualityElements = 3,
  kQualityCheck = 4,
  kQualityNullInput = 5,  // no mesh or no quality array: the exports refuse before MMG
};

const char* MmgQualityMessage(bool surface, int status);

// Writes the MMG3D quality of every face, read as the tetrahedron vi[0..3], into
// quality[0 .. FaceCount() - 1]. Vertices are the double-precision list; vertex colours go to
// MMG as vertex references. On a refusal nothing is written.
int MmgTetrahedronQualities(const ON_Mesh& mesh, double* quality);

// The same with MMGS for the triangles vi[0..2] of every face (vi[3] of a quad is ignored).
int MmgTriangleQualities(const ON_Mesh& mesh, double* quality);

}  // namespace brindle

#endif
