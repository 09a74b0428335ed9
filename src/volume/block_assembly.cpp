#include "volume/block_assembly.h"

#include <algorithm>

namespace brindle {
namespace {

using SparseMatrix = Eigen::SparseMatrix<double>;

struct ColumnEntry {
  std::int32_t row;
  double value;
};

// Columns [first, last) of the compacted storage as a compressed matrix.
SparseMatrix MakeColumnRange(Eigen::Index rows, std::size_t first, std::size_t last,
                             const std::vector<std::size_t>& columnStart,
                             const std::vector<std::int32_t>& rowIndices,
                             const std::vector<double>& values, std::int32_t rowOffset) {
  SparseMatrix matrix(rows, Eigen::Index(last - first));
  const std::size_t begin = columnStart[first];
  const std::size_t count = columnStart[last] - begin;
  matrix.resizeNonZeros(Eigen::Index(count));
  for (std::size_t c = first; c <= last; ++c)
    matrix.outerIndexPtr()[c - first] = int(columnStart[c] - begin);
  for (std::size_t e = 0; e < count; ++e) {
    matrix.innerIndexPtr()[e] = rowIndices[begin + e] - rowOffset;
    matrix.valuePtr()[e] = values[begin + e];
  }
  return matrix;
}

}  // namespace

BlockAssembler::BlockAssembler(const std::vector<Tetrahedron>& tetrahedra,
                               const std::vector<std::int32_t>& positions, std::size_t fixedCount)
    : fixedCount_(fixedCount), begin_(positions.size() + 1, 0) {
  for (const Tetrahedron& tet : tetrahedra) {
    int freeCorners = 0;
    for (std::int32_t v : tet)
      freeCorners += std::size_t(positions[v]) >= fixedCount;
    for (std::int32_t v : tet)
      begin_[positions[v] + 1] += freeCorners;
  }
  for (std::size_t c = 0; c + 1 < begin_.size(); ++c)
    begin_[c + 1] += begin_[c];
  next_.assign(begin_.begin(), begin_.end() - 1);
  rows_ = std::vector<std::int32_t>(begin_.back());
  values_ = std::vector<double>(begin_.back());
}

SystemBlocks BlockAssembler::Finish() {
  const std::size_t n = next_.size();
  // Compacts column after column into the front of the same storage: a column never writes
  // past the start of its own bucket. slot[row] is the entry of `row` in the current column.
  std::vector<std::int32_t> slot(n, -1);
  std::vector<ColumnEntry> column;
  std::vector<std::size_t> columnStart(n + 1, 0);
  std::size_t written = 0;
  for (std::size_t c = 0; c < n; ++c) {
    column.clear();
    for (std::size_t e = begin_[c]; e < next_[c]; ++e) {
      std::int32_t& s = slot[rows_[e]];
      if (s < 0) {
        s = std::int32_t(column.size());
        column.push_back({rows_[e], values_[e]});
      } else {
        column[s].value += values_[e];
      }
    }
    for (const ColumnEntry& entry : column)
      slot[entry.row] = -1;
    std::sort(column.begin(), column.end(),
              [](const ColumnEntry& a, const ColumnEntry& b) { return a.row < b.row; });
    columnStart[c] = written;
    for (const ColumnEntry& entry : column) {
      rows_[written] = entry.row;
      values_[written] = entry.value;
      ++written;
    }
  }
  columnStart[n] = written;

  const Eigen::Index freeCount = Eigen::Index(n - fixedCount_);
  const std::int32_t offset = std::int32_t(fixedCount_);
  SystemBlocks blocks;
  blocks.couplingBlock =
      MakeColumnRange(freeCount, 0, fixedCount_, columnStart, rows_, values_, offset);
  blocks.freeBlock =
      MakeColumnRange(freeCount, fixedCount_, n, columnStart, rows_, values_, offset);
  std::vector<std::int32_t>().swap(rows_);
  std::vector<double>().swap(values_);
  return blocks;
}

}  // namespace brindle
