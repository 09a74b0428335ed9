// Summing element matrices into the global stiffness matrix in solver order, kept as the block
// of free vertices and the block coupling them to the fixed ones (the fixed rows are never
// used, so they are not stored).
#ifndef BRINDLE_VOLUME_BLOCK_ASSEMBLY_H
#define BRINDLE_VOLUME_BLOCK_ASSEMBLY_H

#include <Eigen/SparseCore>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "volume/element_pass.h"
#include "volume/model.h"

namespace brindle {

struct SystemBlocks {
  Eigen::SparseMatrix<double> freeBlock;      // rows and columns f..n-1, compressed
  Eigen::SparseMatrix<double> couplingBlock;  // rows f..n-1, columns 0..f-1, compressed
};

// Collects the element matrices column by column, in element order, and sums them per entry.
// The result is exactly what summing the 16 triplets per element into an n x n matrix (repeated
// entries added in triplet order, the first one taken as it is) and cutting out the two blocks
// gives, bit for bit. It needs about 12 bytes per stored element entry instead of the triplet
// list plus the sorted copy that a general triplet conversion holds at once.
class BlockAssembler {
 public:
  // Sizes one bucket per column from the tetrahedra: each element adds one entry per free
  // corner to the column of each of its corners.
  BlockAssembler(const std::vector<Tetrahedron>& tetrahedra,
                 const std::vector<std::int32_t>& positions, std::size_t fixedCount);

  // Element matrix k of the element with corners at solver positions p.
  void Add(const std::int32_t (&p)[4], const ElementMatrix& k) {
    for (int i = 0; i < 4; ++i) {
      std::size_t& next = next_[p[i]];
      for (int j = 0; j < 4; ++j) {
        if (std::size_t(p[j]) < fixedCount_) continue;
        rows_[next] = p[j];
        values_[next] = k[j][i];
        ++next;
      }
    }
  }

  // Sums repeated entries in the order they were added, sorts each column by row and hands
  // the blocks over; the buckets are released.
  SystemBlocks Finish();

 private:
  std::size_t fixedCount_;
  std::vector<std::size_t> begin_;  // bucket start of each column, plus the end
  std::vector<std::size_t> next_;   // next free slot of each column's bucket
  std::vector<std::int32_t> rows_;
  std::vector<double> values_;
};

}  // namespace brindle

#endif
