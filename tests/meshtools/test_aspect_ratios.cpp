#include <cmath>
#include <limits>
#include <vector>

#include <gtest/gtest.h>

#include "brindle.h"
#include "support/tet_meshes.h"

namespace {

using brindle::testing::TetMesh;

TEST(AspectRatios, TellingValuesInFaceOrderAndBadInput) {
  // Regular tetrahedron, corner tetrahedron, a triangle face and four coplanar corners; the
  // last face lies far out, where only the double-precision vertices keep it apart.
  const ON_3dVector far(3e7, 0, 0);
  const ON_Mesh mesh = TetMesh(
      {ON_3dPoint(1, 1, 1), ON_3dPoint(1, -1, -1), ON_3dPoint(-1, 1, -1), ON_3dPoint(-1, -1, 1),
       ON_3dPoint(0, 0, 0), ON_3dPoint(1, 0, 0), ON_3dPoint(0, 1, 0), ON_3dPoint(0, 0, 1),
       ON_3dPoint(1, 1, 0), far + ON_3dPoint(0, 0, 0), far + ON_3dPoint(0.5, 0, 0),
       far + ON_3dPoint(0, 0.5, 0), far + ON_3dPoint(0, 0, 0.5)},
      {{0, 1, 2, 3}, {4, 5, 6, 7}, {4, 5, 6, 6}, {4, 5, 8, 6}, {9, 10, 11, 12}});
  std::vector<double> ratios(5, -1.0);
  char error[1024] = "stale";
  ASSERT_EQ(AspectRatios(&mesh, ratios.data(), error), 0);
  EXPECT_STREQ(error, "");
  EXPECT_NEAR(ratios[0], 1.2247449, 1e-7);
  EXPECT_NEAR(ratios[1], std::sqrt(6.0), 1e-14);
  EXPECT_EQ(ratios[2], std::numeric_limits<double>::infinity());
  EXPECT_EQ(ratios[3], std::numeric_limits<double>::infinity());
  EXPECT_NEAR(ratios[4], std::sqrt(6.0), 1e-6);

  EXPECT_EQ(AspectRatios(nullptr, ratios.data(), error), 1);
  EXPECT_STREQ(error, "Null mesh");
  const auto faceless = TetMesh({ON_3dPoint(1, 2, 3)}, {});
  EXPECT_EQ(AspectRatios(&faceless, nullptr, error), 0);
  // Corners outside the vertex list read unset points: no crash, every ratio written.
  const auto broken = TetMesh({ON_3dPoint(0, 0, 0), ON_3dPoint(1, 0, 0), ON_3dPoint(0, 1, 0)},
                              {{0, 1, 2, 99}, {-5, 0, 1, 2}});
  EXPECT_EQ(AspectRatios(&broken, nullptr, error), 2);
  EXPECT_STREQ(error, "Null output array");
  ratios.assign(2, -1.0);
  EXPECT_EQ(AspectRatios(&broken, ratios.data(), error), 0);
  EXPECT_NE(ratios[0], -1.0);
  EXPECT_NE(ratios[1], -1.0);
}

}  // namespace
