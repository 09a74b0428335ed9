#include "volume/solver_order.h"

#include <algorithm>

namespace brindle {

SolverOrder SortIntoSolverOrder(const std::vector<VertexRecord>& inputVertices) {
  SolverOrder order;
  order.vertices = inputVertices;
  const std::size_t n = order.vertices.size();
  for (std::size_t i = 0; i < n; ++i)
    order.vertices[i].number = std::int64_t(i);
  std::sort(order.vertices.begin(), order.vertices.end(),
            [](const VertexRecord& a, const VertexRecord& b) { return a.kind < b.kind; });
  order.positions = std::vector<std::int32_t>(n);
  for (std::size_t i = 0; i < n; ++i)
    order.positions[order.vertices[i].number] = std::int32_t(i);
  order.fixedCount =
      std::size_t(std::count_if(order.vertices.begin(), order.vertices.end(),
                                [](const VertexRecord& v) { return IsFixed(v.kind); }));
  return order;
}

}  // namespace brindle
