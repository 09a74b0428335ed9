#include "volume/mesh_checks.h"

#include <algorithm>
#include <cstdarg>
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
  incidence.offsets = std::vector<std::size_t>(vertexCount + 1, 0);
  for (const Tetrahedron& tet : tetrahedra) {
    for (std::int32_t v : tet)
      ++incidence.offsets[v + 1];
  }
  for (std::size_t v = 0; v < vertexCount; ++v)
    incidence.offsets[v + 1] += incidence.offsets[v];
  incidence.tetrahedra = std::vector<std::int32_t>(incidence.offsets[vertexCount]);
  std::vector<std::size_t> next(incidence.offsets.begin(), incidence.offsets.end() - 1);
  for (std::size_t t = 0; t < tetrahedra.size(); ++t) {
    for (std::int32_t v : tetrahedra[t])
      incidence.tetrahedra[next[v]++] = std::int32_t(t);
  }
  return incidence;
}

}  // namespace

std::string Formatted(const char* format, ...) {
  va_list args;
  va_start(args, format);
  va_list again;
  va_copy(again, args);
  const int length = std::vsnprintf(nullptr, 0, format, args);
  va_end(args);
  std::string text(length > 0 ? std::size_t(length) : 0, '\0');
  if (length > 0) std::vsnprintf(&text[0], text.size() + 1, format, again);
  va_end(again);
  return text;
}

std::int64_t FirstVertexUnreachableFromZero(std::size_t vertexCount,
                                            const std::vector<Tetrahedron>& tetrahedra) {
  if (vertexCount == 0) return -1;
  const VertexTetrahedra incidence = BuildVertexTetrahedra(vertexCount, tetrahedra);
  std::vector<char> visited(vertexCount, 0);
  // Every vertex is pushed at most once, so the stack never outgrows the vertex count.
  std::vector<std::int32_t> stack(vertexCount);
  std::size_t top = 0;
  stack[top++] = 0;
  visited[0] = 1;
  while (top > 0) {
    const std::int32_t vertex = stack[--top];
    // The neighbour set of a vertex is the union of its tetrahedra's corners. Pushing only the
    // unvisited ones and then sorting what was pushed gives the same stack as walking the
    // ordered set.
    const std::size_t firstPushed = top;
    for (std::size_t i = incidence.offsets[vertex]; i < incidence.offsets[vertex + 1]; ++i) {
      for (std::int32_t neighbour : tetrahedra[incidence.tetrahedra[i]]) {
        if (!visited[neighbour]) {
          visited[neighbour] = 1;
          stack[top++] = neighbour;
        }
      }
    }
    std::sort(stack.begin() + firstPushed, stack.begin() + top);
  }
  const auto unvisited = std::find(visited.begin(), visited.end(), 0);
  return unvisited == visited.end() ? -1 : std::int64_t(unvisited - visited.begin());
}

std::string DisconnectedMeshMessage(std::int64_t vertex) {
  return Formatted(
      "Error: The tetrahedral mesh is disconnected. Vertex %lld is not connected to vertex "
      "zero.\n",
      static_cast<long long>(vertex));
}

std::string DegenerateTetrahedronMessage(std::size_t tetrahedron,
                                         const std::int32_t (&vertices)[4]) {
  return Formatted(
      "Error: Tetrahedron number %zu is degenerate, consisting of vertex indices %d, %d, %d, "
      "%d. Please use a quality tet mesher.\n",
      tetrahedron, int(vertices[0]), int(vertices[1]), int(vertices[2]), int(vertices[3]));
}

std::string SliverTetrahedronMessage(std::int32_t apex, double tolerance,
                                     const std::int32_t (&others)[3], std::size_t tetrahedron) {
  return Formatted(
      "Error: There is a sliver (thin) tetrahedron. Vertex number %d is, up to your document "
      "tolerance %f, on the same plane as the other tetrahedral vertices %d, %d, %d of "
      "tetrahedron number %zu.\n",
      int(apex), tolerance, int(others[0]), int(others[1]), int(others[2]), tetrahedron);
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
