// The interface of a volume cut: the boundary triangles MMG reports between a tetrahedron of
// the positive side and one of the negative side.
#ifndef BRINDLE_CUTTING_INTERFACE_EXTRACTION_H
#define BRINDLE_CUTTING_INTERFACE_EXTRACTION_H

#include <cstdint>
#include <vector>

#include "mmglink/mmg_handles.h"
#include "opennurbs.h"

namespace brindle {

// Key of the triangle (a, b, c): the 64-bit FNV-1a hash of the three indices sorted ascending,
// each as 4 little-endian bytes. Two faces with equal hashes count as the same face; with 64
// bits this is accepted rather than stored as full index triples.
std::uint64_t TriangleFaceKey(int a, int b, int c);

// Fills `interfaceMesh` from the cut held by `mmgMesh`, which must still be alive: `result` is
// the cut as read back (vertices, colours, tetrahedra with 0-based corners) and `references`
// its element references. Every one of the `triangleCount` boundary triangles is read once
// through MMG's call-by-call cursor; those whose key belongs to both a reference-2 and a
// reference-3 tetrahedron become faces, the others are dropped together with unused vertices.
void ExtractInterface(MMG5_pMesh mmgMesh, int triangleCount, const ON_Mesh& result,
                      const std::vector<int>& references, ON_Mesh& interfaceMesh);

}  // namespace brindle

#endif
