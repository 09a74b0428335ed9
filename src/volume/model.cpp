#include "volume/model.h"

namespace brindle {
namespace {

// Low entries win over everything before them; a high entry that finds its vertex already
// classified (low, or named earlier in the high list) makes it Mid.
void ClassifyVertices(std::vector<VertexRecord>& vertices, int highCount, const int* highVertices,
                      int lowCount, const int* lowVertices) {
  for (int i = 0; i < lowCount; ++i)
    vertices[lowVertices[i]].kind = VertexKind::Low;
  for (int i = 0; i < highCount; ++i) {
    VertexKind& kind = vertices[highVertices[i]].kind;
    kind = kind == VertexKind::Free ? VertexKind::High : VertexKind::Mid;
  }
}

}  // namespace

prepoisson::prepoisson(int vertexCount, const double* coordinates, int tetrahedronCount,
                       const int* tetrahedra, const int* tetrahedronMaterials, int materialCount,
                       const double* conductivities, int highCount, const int* highVertices,
                       int lowCount, const int* lowVertices) {
  vertices = std::vector<VertexRecord>(vertexCount);
  for (int i = 0; i < vertexCount; ++i) {
    VertexRecord& v = vertices[i];
    v.number = i;
    v.kind = VertexKind::Free;
    v.x = coordinates[3 * i];
    v.y = coordinates[3 * i + 1];
    v.z = coordinates[3 * i + 2];
  }
  this->tetrahedra = std::vector<Tetrahedron>(tetrahedronCount);
  for (int t = 0; t < tetrahedronCount; ++t) {
    for (int c = 0; c < 4; ++c)
      this->tetrahedra[t][c] = tetrahedra[4 * t + c];
  }
  this->tetrahedronMaterials =
      std::vector<std::int32_t>(tetrahedronMaterials, tetrahedronMaterials + tetrahedronCount);
  materials = std::vector<MaterialRecord>(materialCount);
  for (int m = 0; m < materialCount; ++m)
    materials[m].conductivity = conductivities[m];
  ClassifyVertices(vertices, highCount, highVertices, lowCount, lowVertices);
}

}  // namespace brindle
