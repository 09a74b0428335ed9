// Boundary surface of a tetrahedral mesh: the triangles that belong to exactly one tetrahedron,
// with counts of boundary, interior and over-shared triangles.
#ifndef BRINDLE_MESHTOOLS_BOUNDARY_EXTRACTION_H
#define BRINDLE_MESHTOOLS_BOUNDARY_EXTRACTION_H

#include <memory>

#include "opennurbs.h"

namespace brindle {

// Statuses of ExtractBoundaryMeshWithStats.
enum BoundaryExtractionStatus {
  kExtractSucceeded = 0,
  kExtractNullOrEmptyMesh = 1,
  kExtractNullResult = 2,
};

struct BoundaryFaceCounts {
  int boundary = 0;    // triangles of exactly one tetrahedron
  int interior = 0;    // triangles of exactly two
  int overShared = 0;  // triangles of three or more: a broken volume mesh
};

// Builds the boundary mesh: copies of the input's single- and double-precision vertices and
// vertex colours, and one triangle (k0, k1, k2, k2) per boundary key in ascending key order,
// then compacted so that only the vertices of boundary triangles remain. The triangles keep
// the index order of their key and are therefore not consistently oriented.
std::unique_ptr<ON_Mesh> ExtractBoundaryMesh(const ON_Mesh& tetrahedra, BoundaryFaceCounts* counts);

}  // namespace brindle

#endif
