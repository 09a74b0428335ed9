#include "volume/mesh_checks.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace brindle {
namespace {

// For every vertex, the tetrahedra it belongs to, in compressed rows.
struct VertexTetrahedra {
  std::vector<std::size_t> offsets;
  std::vector<std::int32_t> tetrahedra;
};

VertexTetrahedra BuildVertexTetrahedra(std::size_t vertexCount,
                                       const std::vector<Tetrahedron>& tetrahedra) {
  VertexTetrahedra incidence;
  incidence.offsets.assign(vertexCount + 1, 0);
  for (const Tetrahedron& tet : tetrahedra) {
    for (std::int32_t v : tet)
      ++incidence.offsets[v + 1];
  }
  for (std::size_t v = 0; v < vertexCount; ++v)
    incidence.offsets[v + 1] += incidence.offsets[v];
  incidence.tetrahedra.resize(incidence.offsets[vertexCount]);
  std::vector<std::size_t> next(incidence.offsets.begin(), incidence.offsets.end() - 1);
  for (std::size_t t = 0; t < tetrahedra.size(); ++t) {
    for (std::int32_t v : tetrahedra[t])
      incidence.tetrahedra[next[v]++] = std::int32_t(t);
  }
  return incidence;
}

}  // namespace

std::int64_t FirstVertexUnreachableFromZero(std::size_t vertexCount,
                                            const std::vector<Tetrahedron>& tetrahedra) {
  if (vertexCount == 0) return -1;
  const VertexTetrahedra incidence = BuildVertexTetrahedra(vertexCount, tetrahedra);
  std::vector<char> visited(vertexCount, 0);
  std::vector<std::int32_t> stack{0};
  std::vector<std::int32_t> found;
  visited[0] = 1;
  while (!stack.empty()) {
    const std::int32_t vertex = stack.back();
    stack.pop_back();
    // The neighbour set of a vertex is the union of its tetrahedra's corners. Collecting only
    // the unvisited ones and sorting them gives the same pushes as walking the ordered set.
    found.clear();
    for (std::size_t i = incidence.offsets[vertex]; i < incidence.offsets[vertex + 1]; ++i) {
      for (std::int32_t neighbour : tetrahedra[incidence.tetrahedra[i]]) {
        if (!visited[neighbour]) {
          visited[neighbour] = 1;
          found.push_back(neighbour);
        }
      }
    }
    std::sort(found.begin(), found.end());
    stack.insert(stack.end(), found.begin(), found.end());
  }
  const auto unvisited = std::find(visited.begin(), visited.end(), 0);
  return unvisited == visited.end() ? -1 : std::int64_t(unvisited - visited.begin());
}

std::string DisconnectedMeshMessage(std::int64_t vertex) {
  return "Error: The tetrahedral mesh is disconnected. Vertex " + std::to_string(vertex) +
         " is not connected to vertex zero.\n";
}

std::string DegenerateTetrahedronMessage(std::size_t tetrahedron,
                                         const std::int32_t (&vertices)[4]) {
  return "Error: Tetrahedron number " + std::to_string(tetrahedron) +
         " is degenerate, consisting of vertex indices " + std::to_string(vertices[0]) + ", " +
         std::to_string(vertices[1]) + ", " + std::to_string(vertices[2]) + ", " +
         std::to_string(vertices[3]) + ". Please use a quality tet mesher.\n";
}

std::string SliverTetrahedronMessage(std::int32_t apex, double tolerance,
                                     const std::int32_t (&others)[3], std::size_t tetrahedron) {
  // "%f" of a huge tolerance needs over 300 digits.
  char toleranceText[400];
  std::snprintf(toleranceText, sizeof toleranceText, "%f", tolerance);
  return "Error: There is a sliver (thin) tetrahedron. Vertex number " + std::to_string(apex) +
         " is, up to your document tolerance " + toleranceText +
         ", on the same plane as the other tetrahedral vertices " + std::to_string(others[0]) +
         ", " + std::to_string(others[1]) + ", " + std::to_string(others[2]) +
         " of tetrahedron number " + std::to_string(tetrahedron) + ".\n";
}

std::string SoloVertexMessage() {
  return "Error: there is a solo vertex, not connected to a tetrahedron.\n";
}

void CopyDetailText(char* detail, const std::string& message) {
  if (!detail) return;
  const std::size_t length = std::min(message.size(), kDetailTextCapacity - 1);
  std::memcpy(detail, message.data(), length);
  detail[length] = '\0';
}

}  // namespace brindle
