#include <cmath>
#include <limits>
#include <vector>

#include <gtest/gtest.h>

#include "brindle.h"
#include "meshtools/aspect_ratios.h"
#include "tet_mesh_builders.h"

namespace {

using brindle::testing::MakeTetMesh;

const std::vector<ON_3dPoint> kRegular = {ON_3dPoint(1, 1, 1), ON_3dPoint(1, -1, -1),
                                          ON_3dPoint(-1, 1, -1), ON_3dPoint(-1, -1, 1)};
const std::vector<ON_3dPoint> kCorner = {ON_3dPoint(0, 0, 0), ON_3dPoint(1, 0, 0),
                                         ON_3dPoint(0, 1, 0), ON_3dPoint(0, 0, 1)};

TEST(AspectRatios, TellingValuesInFaceOrder) {
  std::vector<ON_3dPoint> points = kRegular;
  points.insert(points.end(), kCorner.begin(), kCorner.end());
  // Regular, corner, corner as a triangle face, four coplanar corners.
  points.push_back(ON_3dPoint(1, 1, 0));
  const auto mesh = MakeTetMesh(points, {{0, 1, 2, 3}, {4, 5, 6, 7}, {4, 5, 6, 6}, {4, 5, 8, 6}});
  std::vector<double> ratios(4, -1.0);
  char error[1024] = "stale";
  ASSERT_EQ(AspectRatios(mesh.get(), ratios.data(), error), 0);
  EXPECT_STREQ(error, "");
  EXPECT_NEAR(ratios[0], 1.2247449, 1e-7);
  EXPECT_NEAR(ratios[0], std::sqrt(6.0) / 2.0, 1e-14);
  EXPECT_NEAR(ratios[1], std::sqrt(6.0), 1e-14);
  EXPECT_EQ(ratios[2], std::numeric_limits<double>::infinity());
  EXPECT_EQ(ratios[3], std::numeric_limits<double>::infinity());
}

TEST(AspectRatios, DependsOnShapeOnlyAndGrowsForSlivers) {
  const double corner =
      brindle::TetrahedronAspectRatio(kCorner[0], kCorner[1], kCorner[2], kCorner[3]);
  // Scaled, moved and with the corners in another order: the same shape.
  const ON_3dVector shift(5, -3, 7);
  const double moved =
      brindle::TetrahedronAspectRatio(kCorner[3] * 4.0 + shift, kCorner[1] * 4.0 + shift,
                                      kCorner[0] * 4.0 + shift, kCorner[2] * 4.0 + shift);
  EXPECT_NEAR(moved, corner, 1e-13);
  const double sliver = brindle::TetrahedronAspectRatio(
      ON_3dPoint(0, 0, 0), ON_3dPoint(1, 0, 0), ON_3dPoint(0, 1, 0), ON_3dPoint(0.5, 0.5, 1e-6));
  EXPECT_GT(sliver, 1e5);
}

TEST(AspectRatios, ReadsDoublePrecisionVertices) {
  // Far from the origin the corners collapse in single precision; the double list keeps them.
  std::vector<ON_3dPoint> points;
  for (const ON_3dPoint& p : kCorner)
    points.push_back(p * 0.5 + ON_3dVector(3e7, 0, 0));
  const auto mesh = MakeTetMesh(points, {{0, 1, 2, 3}});
  double ratio = 0.0;
  ASSERT_EQ(AspectRatios(mesh.get(), &ratio, nullptr), 0);
  EXPECT_NEAR(ratio, std::sqrt(6.0), 1e-6);
}

TEST(AspectRatios, BadInput) {
  char error[1024] = "stale";
  double ratio = -1.0;
  EXPECT_EQ(AspectRatios(nullptr, &ratio, error), 1);
  EXPECT_STREQ(error, "Null mesh");
  EXPECT_EQ(AspectRatios(nullptr, &ratio, nullptr), 1);

  ON_Mesh faceless;
  faceless.SetVertex(0, ON_3dPoint(1, 2, 3));
  EXPECT_EQ(AspectRatios(&faceless, &ratio, error), 0);
  EXPECT_EQ(AspectRatios(&faceless, nullptr, error), 0);
  EXPECT_EQ(ratio, -1.0);

  const auto mesh = MakeTetMesh(kCorner, {{0, 1, 2, 3}});
  EXPECT_EQ(AspectRatios(mesh.get(), nullptr, error), 2);
  EXPECT_STREQ(error, "Null output array");

  // Corner indices outside the vertex list read unset points and must not crash.
  const auto broken = MakeTetMesh(kCorner, {{0, 1, 2, 99}, {-5, 1, 2, 3}});
  std::vector<double> ratios(2, -1.0);
  EXPECT_EQ(AspectRatios(broken.get(), ratios.data(), error), 0);
  EXPECT_NE(ratios[0], -1.0);
  EXPECT_NE(ratios[1], -1.0);
}

}  // namespace
