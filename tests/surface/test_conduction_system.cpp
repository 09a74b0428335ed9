#include <gtest/gtest.h>

#include "surface/conduction_system.h"

namespace brindle {
namespace {

// Chain 0 - 1 - 2 - 3 with conductances `w`, vertices 0 and 3 fixed: ordered (0, 3 | 1, 2).
Triplets Chain(const double (&w)[3]) {
  const int ordered[4] = {0, 2, 3, 1};
  Triplets triplets;
  for (int link = 0; link < 3; ++link) {
    if (w[link] == 0.0) continue;
    const int i = ordered[link], j = ordered[link + 1];
    triplets.insert(triplets.end(),
                    {{i, i, w[link]}, {j, j, w[link]}, {i, j, -w[link]}, {j, i, -w[link]}});
  }
  return triplets;
}

TEST(ConductionSystem, RefactorisesWhetherOrNotThePatternChanges) {
  ConductionSystem system;
  const Eigen::Vector2d fixed(0.0, 1.0);
  ASSERT_TRUE(system.Factorise(Chain({1.0, 1.0, 1.0}), 4, 2));
  EXPECT_EQ(system.FreeFixed().cols(), 2);
  EXPECT_TRUE(system.Solve(fixed).isApprox(Eigen::Vector2d(1.0 / 3, 2.0 / 3), 1e-15));
  // Same pattern, new values: the analysis is reused.
  ASSERT_TRUE(system.Factorise(Chain({1.0, 2.0, 1.0}), 4, 2));
  EXPECT_TRUE(system.Solve(fixed).isApprox(Eigen::Vector2d(0.4, 0.6), 1e-15));
  // The middle link gone: a new pattern, analysed afresh.
  ASSERT_TRUE(system.Factorise(Chain({1.0, 0.0, 1.0}), 4, 2));
  EXPECT_EQ(system.FreeFree().nonZeros(), 2);
  EXPECT_TRUE(system.Solve(fixed).isApprox(Eigen::Vector2d(0.0, 1.0), 1e-15));
}

}  // namespace
}  // namespace brindle
