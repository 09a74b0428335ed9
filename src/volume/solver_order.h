// Solver order: the vertex records sorted by kind so that fixed vertices come first.
#ifndef BRINDLE_VOLUME_SOLVER_ORDER_H
#define BRINDLE_VOLUME_SOLVER_ORDER_H

#include <cstddef>
#include <cstdint>
#include <vector>

#include "volume/model.h"

namespace brindle {

struct SolverOrder {
  std::vector<VertexRecord> vertices;   // sorted by kind; number = input index
  std::vector<std::int32_t> positions;  // input index -> position in `vertices`
  std::size_t fixedCount = 0;           // vertices of kind Low, Mid or High
};

// Sorts with std::sort on the kind alone, so the order within one kind is whatever that
// unstable sort leaves. It shows only in the vertex numbers of the element-check messages.
SolverOrder SortIntoSolverOrder(const std::vector<VertexRecord>& inputVertices);

}  // namespace brindle

#endif
