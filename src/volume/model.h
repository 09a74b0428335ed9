// The tetrahedral model handed over by the host: vertex records with their boundary kind,
// tetrahedra, tetrahedron materials and the material table.
#ifndef BRINDLE_VOLUME_MODEL_H
#define BRINDLE_VOLUME_MODEL_H

#include <array>
#include <cstdint>
#include <vector>

namespace brindle {

// Boundary kind of a vertex. The values are ordered so that sorting by kind puts every fixed
// vertex (Low, Mid, High) before the free ones; no kind uses the value 4.
enum class VertexKind : std::int32_t { Low = 1, Mid = 2, High = 3, Free = 5 };

inline bool IsFixed(VertexKind kind) {
  return kind == VertexKind::Low || kind == VertexKind::Mid || kind == VertexKind::High;
}

struct VertexRecord {
  std::int64_t number = 0;  // input index of the vertex
  VertexKind kind = VertexKind::Free;
  double x = 0.0, y = 0.0, z = 0.0;
};

struct MaterialRecord {
  double conductivity = 0.0;
};

// The four corners of a tetrahedron. A type of its own (not a bare std::array) keeps the
// library's container code out of the shared library's exported symbols.
struct Tetrahedron : std::array<std::int32_t, 4> {};

// Copies the host's arrays into typed records and classifies the vertices. No validation is
// done here: the exports check counts and index ranges, the solver runs the mesh checks.
class prepoisson {
 public:
  prepoisson() = default;
  prepoisson(int vertexCount, const double* coordinates, int tetrahedronCount,
             const int* tetrahedra, const int* tetrahedronMaterials, int materialCount,
             const double* conductivities, int highCount, const int* highVertices, int lowCount,
             const int* lowVertices);

  std::vector<VertexRecord> vertices;  // input order
  std::vector<Tetrahedron> tetrahedra;
  std::vector<std::int32_t> tetrahedronMaterials;
  std::vector<MaterialRecord> materials;
};

}  // namespace brindle

#endif
