// The straightforward assembly route, kept beside the tests as the reference the block
// assembler must match: 16 triplets per element summed by Eigen's setFromTriplets into the
// n x n matrix, and the two blocks cut out of it.
#ifndef BRINDLE_TESTS_VOLUME_TRIPLET_ASSEMBLY_SUPPORT_H
#define BRINDLE_TESTS_VOLUME_TRIPLET_ASSEMBLY_SUPPORT_H

#include <Eigen/SparseCore>
#include <cstdint>
#include <string>
#include <vector>

#include "volume/block_assembly.h"
#include "volume/model.h"

namespace volume_test {

using StiffnessTriplet = Eigen::Triplet<double, int>;

// The element matrices as a flat list of 16 triplets per tetrahedron: the 4 diagonal entries,
// then (p_i, p_j) and (p_j, p_i) for each pair, so that the full symmetric matrix is stored.
std::vector<StiffnessTriplet> ElementTriplets(const brindle::prepoisson& model,
                                              const std::vector<std::int32_t>& positions,
                                              double tolerance, std::string& message);

// The triplets summed into the n x n matrix and the free and coupling blocks extracted.
brindle::SystemBlocks AssembleBlocksFromTriplets(const std::vector<StiffnessTriplet>& triplets,
                                                 Eigen::Index n, Eigen::Index fixedCount);

}  // namespace volume_test

#endif
