#include <gtest/gtest.h>

#include <stdexcept>

#include "surface/conduction_system.h"

namespace brindle {
namespace {

// A chain 0 - 1 - 2 - 3 with vertex 0 fixed; `weights` are the three link conductances.
Triplets Chain(const double (&weights)[3]) {
  Triplets triplets;
  for (int link = 0; link < 3; ++link) {
    const int i = link, j = link + 1;
    const double w = weights[link];
    triplets.emplace_back(i, i, w);
    triplets.emplace_back(j, j, w);
    triplets.emplace_back(i, j, -w);
    triplets.emplace_back(j, i, -w);
  }
  return triplets;
}

TEST(ConductionSystem, SplitsBlocksAndRefactorisesOnAChangedPattern) {
  ConductionSystem system;
  Eigen::VectorXd fixed(2);
  fixed << 0.0, 1.0;
  // Vertices 0 and 3 fixed at 0 and 1: reorder as (0, 3 | 1, 2).
  auto reorder = [](Triplets triplets) {
    const int order[4] = {0, 2, 3, 1};  // old index -> ordered index
    for (auto& t : triplets)
      t = Eigen::Triplet<double>(order[t.row()], order[t.col()], t.value());
    return triplets;
  };
  ASSERT_TRUE(system.Factorise(reorder(Chain({1.0, 1.0, 1.0})), 4, 2));
  EXPECT_EQ(system.FreeFree().rows(), 2);
  EXPECT_EQ(system.FreeFixed().cols(), 2);
  Eigen::VectorXd free = system.Solve(fixed);
  EXPECT_NEAR(free[0], 1.0 / 3.0, 1e-15);
  EXPECT_NEAR(free[1], 2.0 / 3.0, 1e-15);

  // Same pattern, new values: the earlier analysis is reused.
  ASSERT_TRUE(system.Factorise(reorder(Chain({1.0, 2.0, 1.0})), 4, 2));
  free = system.Solve(fixed);
  EXPECT_NEAR(free[0], 0.4, 1e-15);
  EXPECT_NEAR(free[1], 0.6, 1e-15);

  // Cutting the middle link drops the free-free coupling; the new pattern is analysed afresh.
  Triplets cut;
  for (const auto& t : reorder(Chain({1.0, 0.0, 1.0})))
    if (t.value() != 0.0) cut.push_back(t);
  ASSERT_TRUE(system.Factorise(cut, 4, 2));
  EXPECT_EQ(system.FreeFree().nonZeros(), 2);
  free = system.Solve(fixed);
  EXPECT_NEAR(free[0], 0.0, 1e-15);
  EXPECT_NEAR(free[1], 1.0, 1e-15);
}

TEST(ConductionSystem, AllFixedHasNothingToSolve) {
  ConductionSystem system;
  ASSERT_TRUE(system.Factorise(Chain({1.0, 1.0, 1.0}), 4, 4));
  EXPECT_EQ(system.Solve(Eigen::VectorXd::Zero(4)).size(), 0);
}

}  // namespace
}  // namespace brindle
