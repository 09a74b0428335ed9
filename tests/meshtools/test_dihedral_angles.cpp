#include <algorithm>
#include <array>
#include <cmath>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "brindle.h"
#include "meshtools/dihedral_angles.h"
#include "support/tet_meshes.h"

namespace {

constexpr double kPi = 3.141592653589793;

TEST(DihedralAngles, TellingValuesInEdgeOrder) {
  const ON_Mesh mesh = brindle::testing::TetMesh(
      {ON_3dPoint(1, 1, 1), ON_3dPoint(1, -1, -1), ON_3dPoint(-1, 1, -1), ON_3dPoint(-1, -1, 1),
       ON_3dPoint(0, 0, 0), ON_3dPoint(1, 0, 0), ON_3dPoint(0, 1, 0), ON_3dPoint(0, 0, 1)},
      {{0, 1, 2, 3}, {4, 5, 6, 7}, {4, 5, 6, 6}});
  std::vector<double> angles(18, -1.0);
  char error[1024] = "stale";
  ASSERT_EQ(DihedralAngles(&mesh, angles.data(), error), 0);
  EXPECT_STREQ(error, "");
  // Regular (acos 1/3), corner (right angles at corner 0), and a triangle face, which keeps
  // normals only on the two copies of its plane through edge (0,1).
  const double r = 1.2309594, h = kPi / 2, c = 0.9553166;
  const double expected[18] = {r, r, r, r, r, r, h, h, h, c, c, c, kPi, 0, 0, 0, 0, 0};
  for (int j = 0; j < 18; ++j)
    EXPECT_NEAR(angles[j], expected[j], 1e-7) << j;
  EXPECT_EQ(angles[13], 0.0);
  EXPECT_EQ(DihedralAngles(&mesh, nullptr, error), 2);
  EXPECT_STREQ(error, "Null output array");
}

// The unit normal of the triangle (a, b, c) turned away from the fourth corner d; the zero
// vector when the triangle has no direction.
ON_3dVector NormalAwayFrom(const ON_3dPoint& a, const ON_3dPoint& b, const ON_3dPoint& c,
                           const ON_3dPoint& d) {
  ON_3dVector n = ON_CrossProduct(b - a, c - a);
  n.Unitize();
  return n * (d - a) > 0.0 ? -n : n;
}

// For edge (a, b) with the other corners c < d: the normal of (a, b, c) away from d against
// the normal of (a, b, d) away from c, twelve normals computed separately.
void ReferenceAngles(const ON_3dPoint p[4], double angles[6]) {
  const int edge[6][4] = {{0, 1, 2, 3}, {0, 2, 1, 3}, {0, 3, 1, 2},
                          {1, 2, 0, 3}, {1, 3, 0, 2}, {2, 3, 0, 1}};
  for (int j = 0; j < 6; ++j) {
    const ON_3dPoint &a = p[edge[j][0]], &b = p[edge[j][1]], &c = p[edge[j][2]], &d = p[edge[j][3]];
    const ON_3dVector n1 = NormalAwayFrom(a, b, c, d);
    const ON_3dVector n2 = NormalAwayFrom(a, b, d, c);
    angles[j] = n1.IsZero() || n2.IsZero() ? 0.0 : kPi - std::acos(std::clamp(n1 * n2, -1.0, 1.0));
  }
}

// Each tetrahedron against the reference. Small integer grids make coplanar, collinear and
// repeated corners common, where a side test of exactly zero decides the direction of a normal.
TEST(DihedralAngles, MatchTwelveSeparateNormals) {
  std::mt19937 random(7);
  std::uniform_int_distribution<int> grid(-2, 2);
  std::uniform_real_distribution<double> real(-1.0, 1.0);
  const int trials = 20000;
  std::vector<ON_3dPoint> points;
  std::vector<std::array<int, 4>> tets;
  for (int trial = 0; trial < trials; ++trial) {
    for (int k = 0; k < 4; ++k) {
      points.push_back(trial % 2 ? ON_3dPoint(real(random), real(random), real(random))
                                 : ON_3dPoint(grid(random), grid(random), grid(random)));
    }
    tets.push_back({4 * trial, 4 * trial + 1, 4 * trial + 2, 4 * trial + 3});
  }
  const ON_Mesh mesh = brindle::testing::TetMesh(points, tets);
  std::vector<double> angles(6 * tets.size());
  ASSERT_EQ(DihedralAngles(&mesh, angles.data(), nullptr), 0);
  for (int trial = 0; trial < trials; ++trial) {
    double reference[6];
    ReferenceAngles(&points[4 * static_cast<std::size_t>(trial)], reference);
    for (int j = 0; j < 6; ++j)
      ASSERT_EQ(angles[6 * static_cast<std::size_t>(trial) + j], reference[j]) << trial << " " << j;
  }
}

}  // namespace
