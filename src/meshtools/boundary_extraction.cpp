#include "meshtools/boundary_extraction.h"

#include <new>

#include "meshtools/face_table.h"

namespace brindle {
namespace {

// Adds the four triangles of every face of `tetrahedra`, read as a tetrahedron, to `table`.
void AddTetrahedra(const ON_Mesh& tetrahedra, FaceTable& table) {
  for (int t = 0; t < tetrahedra.FaceCount(); ++t)
    table.AddTetrahedron(tetrahedra.m_F[t].vi);
}

}  // namespace

std::unique_ptr<ON_Mesh> ExtractBoundaryMesh(const ON_Mesh& tetrahedra,
                                             BoundaryFaceCounts* counts) {
  // A closed tetrahedral mesh has about two distinct triangles per tetrahedron.
  FaceTable table(2 * static_cast<std::size_t>(tetrahedra.FaceCount()) + 16);
  AddTetrahedra(tetrahedra, table);

  auto boundary = std::make_unique<ON_Mesh>();
  boundary->m_V = tetrahedra.m_V;
  boundary->m_dV = tetrahedra.m_dV;
  if (tetrahedra.m_C.Count() > 0) boundary->m_C = tetrahedra.m_C;
  if (boundary->m_V.Count() != tetrahedra.m_V.Count() ||
      boundary->m_dV.Count() != tetrahedra.m_dV.Count() ||
      boundary->m_C.Count() != tetrahedra.m_C.Count()) {
    throw std::bad_alloc();  // a copy that could not get its memory comes out short
  }

  // The triangle list is reserved once, empty, and checked: openNURBS arrays report a failed
  // reservation only through their capacity, and a failed growth would lose the old buffer.
  std::size_t boundaryTriangles = 0;
  table.ForEach([&boundaryTriangles](const FaceKey&, int tets) { boundaryTriangles += tets == 1; });
  boundary->m_F.Reserve(boundaryTriangles);
  if (static_cast<std::size_t>(boundary->m_F.Capacity()) < boundaryTriangles)
    throw std::bad_alloc();

  BoundaryFaceCounts found;
  ON_SimpleArray<ON_MeshFace>& faces = boundary->m_F;
  table.ForEach([&found, &faces](const FaceKey& key, int tets) {
    if (tets == 1) {
      ON_MeshFace& face = faces.AppendNew();
      face.vi[0] = key.v[0];
      face.vi[1] = key.v[1];
      face.vi[2] = key.v[2];
      face.vi[3] = key.v[2];
      ++found.boundary;
    } else if (tets == 2) {
      ++found.interior;
    } else {
      ++found.overShared;
    }
  });
  // Drops the vertices inside the volume and renumbers the triangles, keeping their order.
  boundary->Compact();
  *counts = found;
  return boundary;
}

}  // namespace brindle
