// The solver's internals where the exports cannot reach: the column-bucket assembly against
// the plain triplet route, and the thread team.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <random>

#include "volume/block_assembly.h"
#include "volume/conduction_solver.h"
#include "volume/element_pass.h"
#include "volume/solve_threads.h"
#include "volume/solver_order.h"
#include "volume/volume_support.h"

namespace volume_test {
namespace {

// The straightforward route the block assembler must match: all 16 entries of each element
// matrix summed by setFromTriplets into the n x n matrix, and the two blocks cut out of it.
brindle::SystemBlocks AssembleFromTriplets(const brindle::prepoisson& model,
                                           const brindle::SolverOrder& order, double tolerance) {
  std::vector<Eigen::Triplet<double, int>> triplets;
  std::string message;
  brindle::ForEachElementMatrix(
      model, order.positions, tolerance, nullptr, message,
      [&](std::size_t, const std::int32_t(&p)[4], const brindle::ElementMatrix& k) {
        for (int i = 0; i < 4; ++i)
          for (int j = 0; j < 4; ++j)
            triplets.emplace_back(p[i], p[j], k[i][j]);
      });
  const Eigen::Index n = Eigen::Index(order.positions.size()), f = Eigen::Index(order.fixedCount);
  Eigen::SparseMatrix<double> global(n, n);
  global.setFromTriplets(triplets.begin(), triplets.end());
  brindle::SystemBlocks blocks;
  blocks.freeBlock = global.block(f, f, n - f, n - f);
  blocks.couplingBlock = global.block(f, 0, n - f, f);
  blocks.freeBlock.makeCompressed();
  blocks.couplingBlock.makeCompressed();
  return blocks;
}

brindle::prepoisson ModelOf(const Mesh& mesh) {
  return brindle::prepoisson(
      mesh.VertexCount(), mesh.coordinates.data(), mesh.TetrahedronCount(), mesh.tetrahedra.data(),
      mesh.materials.data(), int(mesh.conductivities.size()), mesh.conductivities.data(),
      int(mesh.high.size()), mesh.high.data(), int(mesh.low.size()), mesh.low.data());
}

// Same structure and the same bits in every value: the solver's arithmetic depends on them.
void ExpectIdentical(const Eigen::SparseMatrix<double>& a, const Eigen::SparseMatrix<double>& b) {
  ASSERT_EQ(a.rows(), b.rows());
  ASSERT_EQ(a.cols(), b.cols());
  ASSERT_EQ(a.nonZeros(), b.nonZeros());
  ASSERT_TRUE(a.isCompressed() && b.isCompressed());
  EXPECT_TRUE(std::equal(a.outerIndexPtr(), a.outerIndexPtr() + a.cols() + 1, b.outerIndexPtr()));
  EXPECT_TRUE(std::equal(a.innerIndexPtr(), a.innerIndexPtr() + a.nonZeros(), b.innerIndexPtr()));
  if (a.nonZeros() > 0) {
    EXPECT_EQ(0, std::memcmp(a.valuePtr(), b.valuePtr(), sizeof(double) * a.nonZeros()));
  }
}

// Vertex numbers shuffled so that fixed and free vertices interleave and the unstable sort has
// work to do; three materials with unrelated conductivities.
Mesh ShuffledBox(unsigned seed) {
  const Mesh box = Box(3, 0.3);
  std::vector<int> renumber(box.VertexCount());
  for (int v = 0; v < box.VertexCount(); ++v)
    renumber[v] = v;
  std::mt19937 random(seed);
  std::shuffle(renumber.begin(), renumber.end(), random);
  Mesh mesh = box;
  for (int v = 0; v < box.VertexCount(); ++v) {
    for (int c = 0; c < 3; ++c)
      mesh.coordinates[3 * renumber[v] + c] = box.coordinates[3 * v + c];
  }
  for (std::vector<int>* list : {&mesh.tetrahedra, &mesh.high, &mesh.low}) {
    for (int& v : *list)
      v = renumber[v];
  }
  mesh.conductivities = {0.037, 1.7, 210.0};
  for (int t = 0; t < mesh.TetrahedronCount(); ++t)
    mesh.materials[t] = (t * 7) % 3;
  return mesh;
}

void ExpectAssemblyMatchesTriplets(const Mesh& mesh) {
  const brindle::prepoisson model = ModelOf(mesh);
  const brindle::SolverOrder order = brindle::SortIntoSolverOrder(model.vertices);
  std::string message;
  brindle::BlockAssembler assembler(model.tetrahedra, order.positions, order.fixedCount);
  brindle::ForEachElementMatrix(model, order.positions, mesh.tolerance, nullptr, message,
                                [&](std::size_t, const std::int32_t(&p)[4],
                                    const brindle::ElementMatrix& k) { assembler.Add(p, k); });
  const brindle::SystemBlocks blocks = assembler.Finish();
  const brindle::SystemBlocks reference = AssembleFromTriplets(model, order, mesh.tolerance);
  ExpectIdentical(blocks.freeBlock, reference.freeBlock);
  ExpectIdentical(blocks.couplingBlock, reference.couplingBlock);
}

TEST(VolumeAssembly, ColumnBucketsMatchTripletsBitForBit) {
  for (unsigned seed : {1u, 2u, 3u})
    ExpectAssemblyMatchesTriplets(ShuffledBox(seed));
  ExpectAssemblyMatchesTriplets(SingleTetrahedron());  // no free block
}

TEST(VolumeThreads, TeamGetsOnlyIdleCores) {
  EXPECT_EQ(brindle::SolveTeamSize(1000, 8, 0), 1);     // too small to share
  EXPECT_EQ(brindle::SolveTeamSize(5000000, 2, 0), 2);  // idle machine
  EXPECT_EQ(brindle::SolveTeamSize(5000000, 2, 1), 1);  // the other core is busy
  EXPECT_EQ(brindle::SolveTeamSize(5000000, 8, 3), 5);
  EXPECT_EQ(brindle::SolveTeamSize(5000000, 4, 40), 1);
}

}  // namespace
}  // namespace volume_test
