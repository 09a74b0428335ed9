// The mesh checks that refuse a tetrahedral model before any matrix is formed, with the codes
// and sentences the host shows to the user.
#ifndef BRINDLE_VOLUME_MESH_CHECKS_H
#define BRINDLE_VOLUME_MESH_CHECKS_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "common/format_attribute.h"
#include "volume/model.h"
#include "volume/volume_status.h"

namespace brindle {

// Raised inside the element loop once the failing check's message has been stored; caught
// where the solver is built or updated.
struct MeshCheckFailure {
  int code;
};

// Walks the mesh from vertex 0 through shared tetrahedra: the most recently found vertex is
// expanded first, its unvisited neighbours pushed in ascending order. Returns the lowest vertex
// that the walk does not reach, or -1 when every vertex is reached. Vertex indices must be
// below vertexCount.
std::int64_t FirstVertexUnreachableFromZero(std::size_t vertexCount,
                                            const std::vector<Tetrahedron>& tetrahedra);

// printf-style formatting into a string of any length.
std::string Formatted(const char* format, ...) BRINDLE_PRINTF_FORMAT(1, 2);

std::string DisconnectedMeshMessage(std::int64_t vertex);
std::string DegenerateTetrahedronMessage(std::size_t tetrahedron,
                                         const std::int32_t (&vertices)[4]);
std::string SliverTetrahedronMessage(std::int32_t apex, double tolerance,
                                     const std::int32_t (&others)[3], std::size_t tetrahedron);
std::string SoloVertexMessage();

// Copies a check message into the caller's 2000-character detail buffer, cut to fit.
constexpr std::size_t kDetailTextCapacity = 2000;
void CopyDetailText(char* detail, const std::string& message);

}  // namespace brindle

#endif
