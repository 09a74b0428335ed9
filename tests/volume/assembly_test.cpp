// The column-bucket assembly against the plain triplet route, and the model it starts from.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <random>

#include "volume/block_assembly.h"
#include "volume/conduction_solver.h"
#include "volume/element_pass.h"
#include "volume/model.h"
#include "volume/solve_threads.h"
#include "volume/solver_order.h"
#include "volume/volume_fixtures.h"

namespace volume_test {
namespace {

brindle::prepoisson ModelOf(const Mesh& mesh) {
  return brindle::prepoisson(
      mesh.VertexCount(), mesh.coordinates.data(), mesh.TetrahedronCount(), mesh.tetrahedra.data(),
      mesh.materials.data(), int(mesh.conductivities.size()), mesh.conductivities.data(),
      int(mesh.high.size()), mesh.high.data(), int(mesh.low.size()), mesh.low.data());
}

void ExpectIdentical(const Eigen::SparseMatrix<double>& a, const Eigen::SparseMatrix<double>& b) {
  ASSERT_EQ(a.rows(), b.rows());
  ASSERT_EQ(a.cols(), b.cols());
  ASSERT_EQ(a.nonZeros(), b.nonZeros());
  ASSERT_TRUE(a.isCompressed() && b.isCompressed());
  EXPECT_TRUE(std::equal(a.outerIndexPtr(), a.outerIndexPtr() + a.cols() + 1, b.outerIndexPtr()));
  EXPECT_TRUE(std::equal(a.innerIndexPtr(), a.innerIndexPtr() + a.nonZeros(), b.innerIndexPtr()));
  // Bit for bit: the solver's arithmetic depends on every last digit.
  EXPECT_EQ(0, std::memcmp(a.valuePtr(), b.valuePtr(), sizeof(double) * a.nonZeros()));
}

// Shuffles vertex numbers so that fixed and free vertices interleave and the unstable sort
// has work to do; three materials with unrelated conductivities.
Mesh ShuffledBox(unsigned seed) {
  Mesh box = Box(3, 0.3);
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
  for (int& v : mesh.tetrahedra)
    v = renumber[v];
  for (int& v : mesh.high)
    v = renumber[v];
  for (int& v : mesh.low)
    v = renumber[v];
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
  const brindle::SystemBlocks reference = brindle::AssembleBlocksFromTriplets(
      brindle::ElementTriplets(model, order.positions, mesh.tolerance, message), mesh.VertexCount(),
      Eigen::Index(order.fixedCount));
  ExpectIdentical(blocks.freeBlock, reference.freeBlock);
  ExpectIdentical(blocks.couplingBlock, reference.couplingBlock);
}

TEST(VolumeAssembly, ColumnBucketsMatchTripletsBitForBit) {
  for (unsigned seed : {1u, 2u, 3u})
    ExpectAssemblyMatchesTriplets(ShuffledBox(seed));
  // Every vertex fixed (no free block), and none fixed (no coupling block).
  Mesh allFixed = SingleTetrahedron();
  ExpectAssemblyMatchesTriplets(allFixed);
  Mesh noneFixed = Box(2);
  noneFixed.high.clear();
  noneFixed.low.clear();
  ExpectAssemblyMatchesTriplets(noneFixed);
}

// The solver order puts every fixed vertex first, keeps each record's input number, and the
// positions invert it.
TEST(VolumeAssembly, SolverOrderPutsFixedVerticesFirst) {
  const Mesh mesh = ShuffledBox(4);
  const brindle::prepoisson model = ModelOf(mesh);
  const brindle::SolverOrder order = brindle::SortIntoSolverOrder(model.vertices);
  EXPECT_EQ(order.fixedCount, mesh.high.size() + mesh.low.size());
  for (std::size_t i = 0; i < order.vertices.size(); ++i) {
    const brindle::VertexRecord& record = order.vertices[i];
    EXPECT_EQ(brindle::IsFixed(record.kind), i < order.fixedCount);
    EXPECT_EQ(order.positions[record.number], std::int32_t(i));
    EXPECT_EQ(record.x, model.vertices[record.number].x);
    if (i > 0) {
      EXPECT_LE(order.vertices[i - 1].kind, record.kind);
    }
  }
}

// A model without fixed vertices solves a zero right-hand side to zeros; one made only of
// fixed vertices just writes them.
TEST(VolumeAssembly, SolverWithoutFreeOrFixedVertices) {
  for (bool fixedAll : {false, true}) {
    Mesh mesh = Box(2);
    if (fixedAll) {
      mesh.low.clear();
      mesh.high.clear();
      for (int v = 0; v < mesh.VertexCount(); ++v)
        mesh.low.push_back(v);
    } else {
      mesh.low.clear();
      mesh.high.clear();
    }
    int code = -1;
    testing::internal::CaptureStdout();
    brindle::brindle solver(ModelOf(mesh), 1e-3, &code, nullptr);
    testing::internal::GetCapturedStdout();
    ASSERT_EQ(code, 0);
    EXPECT_EQ(solver.Solve(), 0);
    std::vector<double> t(mesh.VertexCount(), 1.0);
    solver.CopyTemperatures(t.data());
    EXPECT_EQ(t, std::vector<double>(mesh.VertexCount(), fixedAll ? -13.1 : 0.0));
    EXPECT_EQ(solver.Residual(), 0.0);
    EXPECT_EQ(solver.Status(), 0);
  }
}

// A count that is not the material count is ignored without a word beyond the trace.
TEST(VolumeAssembly, UpdateWithWrongCountChangesNothing) {
  Mesh mesh = Box(2, 0.2);
  int code = -1;
  testing::internal::CaptureStdout();
  brindle::brindle solver(ModelOf(mesh), 1e-3, &code, nullptr);
  testing::internal::GetCapturedStdout();
  ASSERT_EQ(code, 0);
  const Eigen::SparseMatrix<double> before = solver.FreeMatrix();
  std::string message;
  testing::internal::CaptureStdout();
  EXPECT_EQ(solver.UpdateConductivities({5.0, 6.0}, message), 0);
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "Updating conductivities to 5.000000 6.000000\n");
  EXPECT_EQ(message, "");
  ExpectIdentical(solver.FreeMatrix(), before);
}

TEST(VolumeModel, ClassifiesInOrderAndNamesMaterials) {
  const double xyz[15] = {};
  const int tetrahedra[4] = {0, 1, 2, 3}, materials[1] = {0};
  const double conductivities[3] = {1, 2, 3};
  const int high[4] = {1, 2, 2, 4}, low[2] = {1, 3};
  const brindle::prepoisson model(5, xyz, 1, tetrahedra, materials, 3, conductivities, 4, high, 2,
                                  low);
  using K = brindle::VertexKind;
  const K expected[5] = {K::Free, K::Mid, K::Mid, K::Low, K::High};
  for (int v = 0; v < 5; ++v) {
    EXPECT_EQ(model.vertices[v].kind, expected[v]) << v;
    EXPECT_EQ(model.vertices[v].number, v);
  }
  EXPECT_EQ(model.materials[2].name, "material_2");
  EXPECT_EQ(model.materials[2].conductivity, 3.0);
}

TEST(VolumeThreads, TeamGetsOnlyIdleCores) {
  EXPECT_EQ(brindle::SolveTeamSize(1000, 8, 0), 1);     // too small to share
  EXPECT_EQ(brindle::SolveTeamSize(5000000, 2, 0), 2);  // idle machine
  EXPECT_EQ(brindle::SolveTeamSize(5000000, 2, 1), 1);  // the other core is busy
  EXPECT_EQ(brindle::SolveTeamSize(5000000, 8, 3), 5);
  EXPECT_EQ(brindle::SolveTeamSize(5000000, 4, 40), 1);
  EXPECT_EQ(brindle::SolveTeamSize(5000000, 1, 0), 1);
}

}  // namespace
}  // namespace volume_test
