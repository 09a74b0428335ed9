#include <algorithm>
#include <array>
#include <cmath>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "brindle.h"
#include "meshtools/dihedral_angles.h"
#include "tet_mesh_builders.h"

namespace {

using brindle::testing::MakeTetMesh;

constexpr double kPi = 3.141592653589793;
const double kRegularAngle = std::acos(1.0 / 3.0);            // 1.2309594
const double kCornerAngle = std::acos(1.0 / std::sqrt(3.0));  // 0.9553166

TEST(DihedralAngles, TellingValuesInEdgeOrder) {
  const auto mesh = MakeTetMesh(
      {ON_3dPoint(1, 1, 1), ON_3dPoint(1, -1, -1), ON_3dPoint(-1, 1, -1), ON_3dPoint(-1, -1, 1),
       ON_3dPoint(0, 0, 0), ON_3dPoint(1, 0, 0), ON_3dPoint(0, 1, 0), ON_3dPoint(0, 0, 1)},
      {{0, 1, 2, 3}, {4, 5, 6, 7}});
  std::vector<double> angles(12, -1.0);
  char error[1024] = "stale";
  ASSERT_EQ(DihedralAngles(mesh.get(), angles.data(), error), 0);
  EXPECT_STREQ(error, "");
  for (int j = 0; j < 6; ++j)
    EXPECT_NEAR(angles[j], kRegularAngle, 1e-14) << j;
  EXPECT_NEAR(kRegularAngle, 1.2309594, 1e-7);
  EXPECT_NEAR(kCornerAngle, 0.9553166, 1e-7);
  for (int j = 0; j < 3; ++j)
    EXPECT_NEAR(angles[6 + j], kPi / 2, 1e-14) << j;
  for (int j = 3; j < 6; ++j)
    EXPECT_NEAR(angles[6 + j], kCornerAngle, 1e-14) << j;
}

TEST(DihedralAngles, IndependentOfCornerOrder) {
  const std::array<ON_3dPoint, 4> p = {ON_3dPoint(0.1, -0.2, 0.3), ON_3dPoint(2.0, 0.1, -0.4),
                                       ON_3dPoint(0.7, 1.6, 0.2), ON_3dPoint(0.4, 0.5, 1.9)};
  const int edge[6][2] = {{0, 1}, {0, 2}, {0, 3}, {1, 2}, {1, 3}, {2, 3}};
  double reference[6];
  brindle::TetrahedronDihedralAngles(p.data(), reference);
  // The angles of a tetrahedron sum to more than 2 pi and less than 3 pi.
  double sum = 0.0;
  for (double a : reference)
    sum += a;
  EXPECT_GT(sum, 2 * kPi);
  EXPECT_LT(sum, 3 * kPi);

  std::array<int, 4> perm = {0, 1, 2, 3};
  do {
    ON_3dPoint q[4];
    for (int k = 0; k < 4; ++k)
      q[k] = p[perm[k]];
    double angles[6];
    brindle::TetrahedronDihedralAngles(q, angles);
    for (int j = 0; j < 6; ++j) {
      // Edge j of the permuted tetrahedron joins original corners perm[a] and perm[b].
      int a = perm[edge[j][0]], b = perm[edge[j][1]];
      if (a > b) std::swap(a, b);
      const int original =
          static_cast<int>(std::find_if(std::begin(edge), std::end(edge),
                                        [&](const int* e) { return e[0] == a && e[1] == b; }) -
                           std::begin(edge));
      EXPECT_NEAR(angles[j], reference[original], 1e-13);
    }
  } while (std::next_permutation(perm.begin(), perm.end()));
}

// The angles as defined: for edge (a, b) with the other corners c < d, the normal of (a, b, c)
// away from d against the normal of (a, b, d) away from c, all twelve computed separately.
void ReferenceAngles(const ON_3dPoint p[4], double angles[6]) {
  const int edge[6][4] = {{0, 1, 2, 3}, {0, 2, 1, 3}, {0, 3, 1, 2},
                          {1, 2, 0, 3}, {1, 3, 0, 2}, {2, 3, 0, 1}};
  for (int j = 0; j < 6; ++j) {
    const ON_3dPoint &a = p[edge[j][0]], &b = p[edge[j][1]], &c = p[edge[j][2]], &d = p[edge[j][3]];
    const ON_3dVector n1 = brindle::NormalAwayFrom(a, b, c, d);
    const ON_3dVector n2 = brindle::NormalAwayFrom(a, b, d, c);
    angles[j] =
        n1.IsZero() || n2.IsZero() ? 0.0 : kPi - std::acos(std::max(std::min(n1 * n2, 1.0), -1.0));
  }
}

TEST(DihedralAngles, SharedNormalsGiveTheBitsOfTwelveSeparateOnes) {
  // Small integer grids make coplanar, collinear and repeated corners common, where a side
  // test of exactly zero decides the direction of a normal.
  std::mt19937 random(7);
  std::uniform_int_distribution<int> coordinate(-2, 2);
  std::uniform_real_distribution<double> real(-1.0, 1.0);
  for (int trial = 0; trial < 20000; ++trial) {
    ON_3dPoint p[4];
    for (ON_3dPoint& q : p) {
      q = trial % 2 == 0 ? ON_3dPoint(coordinate(random), coordinate(random), coordinate(random))
                         : ON_3dPoint(real(random), real(random), real(random));
    }
    double shared[6], reference[6];
    brindle::TetrahedronDihedralAngles(p, shared);
    ReferenceAngles(p, reference);
    for (int j = 0; j < 6; ++j)
      ASSERT_EQ(shared[j], reference[j]) << trial << " edge " << j;
  }
}

TEST(DihedralAngles, FlatElementsGiveZeroBesideVanishingNormals) {
  // A triangle face (0, 1, 2, 2): only the faces through edge (0,1) keep a normal, and they are
  // the same plane, so that edge opens to pi.
  const auto mesh =
      MakeTetMesh({ON_3dPoint(0, 0, 0), ON_3dPoint(1, 0, 0), ON_3dPoint(0, 1, 0)}, {{0, 1, 2, 2}});
  double angles[6];
  ASSERT_EQ(DihedralAngles(mesh.get(), angles, nullptr), 0);
  EXPECT_NEAR(angles[0], kPi, 1e-7);
  for (int j = 1; j < 6; ++j)
    EXPECT_EQ(angles[j], 0.0) << j;

  const ON_3dPoint o(0, 0, 0);
  EXPECT_TRUE(brindle::NormalAwayFrom(o, o, ON_3dPoint(1, 0, 0), ON_3dPoint(0, 0, 1)).IsZero());
  const ON_3dVector n =
      brindle::NormalAwayFrom(o, ON_3dPoint(1, 0, 0), ON_3dPoint(0, 1, 0), ON_3dPoint(0, 0, 1));
  EXPECT_EQ(n.z, -1.0);
}

TEST(DihedralAngles, BadInput) {
  char error[1024] = "stale";
  double angles[12];
  std::fill(std::begin(angles), std::end(angles), -1.0);
  EXPECT_EQ(DihedralAngles(nullptr, angles, error), 1);
  EXPECT_STREQ(error, "Null mesh");

  ON_Mesh faceless;
  EXPECT_EQ(DihedralAngles(&faceless, angles, error), 0);
  EXPECT_EQ(DihedralAngles(&faceless, nullptr, error), 0);
  EXPECT_EQ(angles[0], -1.0);

  const auto mesh = MakeTetMesh(
      {ON_3dPoint(0, 0, 0), ON_3dPoint(1, 0, 0), ON_3dPoint(0, 1, 0), ON_3dPoint(0, 0, 1)},
      {{0, 1, 2, 3}, {0, 1, 2, 1000000}});
  EXPECT_EQ(DihedralAngles(mesh.get(), nullptr, error), 2);
  EXPECT_STREQ(error, "Null output array");
  // The second face reaches outside the vertex list: finite or not, no crash and all written.
  EXPECT_EQ(DihedralAngles(mesh.get(), angles, error), 0);
  for (double a : angles)
    EXPECT_NE(a, -1.0);
}

}  // namespace
