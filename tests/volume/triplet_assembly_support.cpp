#include "volume/triplet_assembly_support.h"

#include "volume/element_pass.h"

namespace volume_test {

std::vector<StiffnessTriplet> ElementTriplets(const brindle::prepoisson& model,
                                              const std::vector<std::int32_t>& positions,
                                              double tolerance, std::string& message) {
  std::vector<StiffnessTriplet> triplets;
  triplets.reserve(16 * model.tetrahedra.size());
  brindle::ForEachElementMatrix(
      model, positions, tolerance, nullptr, message,
      [&](std::size_t, const std::int32_t(&p)[4], const brindle::ElementMatrix& k) {
        for (int i = 0; i < 4; ++i)
          triplets.emplace_back(p[i], p[i], k[i][i]);
        for (int i = 0; i < 4; ++i) {
          for (int j = i + 1; j < 4; ++j) {
            triplets.emplace_back(p[i], p[j], k[i][j]);
            triplets.emplace_back(p[j], p[i], k[j][i]);
          }
        }
      });
  return triplets;
}

brindle::SystemBlocks AssembleBlocksFromTriplets(const std::vector<StiffnessTriplet>& triplets,
                                                 Eigen::Index n, Eigen::Index fixedCount) {
  const Eigen::Index f = fixedCount;
  Eigen::SparseMatrix<double> global(n, n);
  global.setFromTriplets(triplets.begin(), triplets.end());
  brindle::SystemBlocks blocks;
  blocks.freeBlock = global.block(f, f, n - f, n - f);
  blocks.couplingBlock = global.block(f, 0, n - f, f);
  blocks.freeBlock.makeCompressed();
  blocks.couplingBlock.makeCompressed();
  return blocks;
}

}  // namespace volume_test
