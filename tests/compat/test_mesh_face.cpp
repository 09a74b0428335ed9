// ON_MeshFace validity, repair and normals.

#include <gtest/gtest.h>

#include <cstddef>
#include <limits>
#include <type_traits>
#include <utility>

#include "compat/mesh_support.h"

namespace {

// IsValid has int and unsigned overloads only, so a size_t count is ambiguous.
template <class Count, class = void>
struct IsValidCompiles : std::false_type {};
template <class Count>
struct IsValidCompiles<Count, decltype(void(ON_MeshFace().IsValid(std::declval<Count>())))>
    : std::true_type {};
static_assert(IsValidCompiles<int>::value && IsValidCompiles<unsigned int>::value, "");
static_assert(!IsValidCompiles<size_t>::value, "IsValid(size_t) must be ambiguous");

using compat_test::Face;
using compat_test::SameFace;

TEST(OpenNurbsMeshFace, IndexValidity) {
  static_assert(sizeof(ON_MeshFace) == 16, "");
  EXPECT_TRUE(Face(0, 1, 2, 3).IsValid(4));
  EXPECT_TRUE(Face(0, 1, 2, 2).IsValid(3));
  EXPECT_TRUE(Face(0, 1, 2, 2).IsTriangle());
  EXPECT_FALSE(Face(0, 1, 2, 0).IsValid(4));
  EXPECT_FALSE(Face(0, 0, 1, 2).IsValid(4));
  EXPECT_FALSE(Face(0, 1, 2, 3).IsValid(3));
  EXPECT_FALSE(Face(-1, 1, 2, 2).IsValid(3));
  EXPECT_FALSE(Face(-1, 1, 2, 2).IsValid(3u));
  EXPECT_TRUE(Face(-1, -1, -1, -1).IsTriangle());
  EXPECT_FALSE(ON_MeshFace::UnsetMeshFace.IsValid(10));
}

TEST(OpenNurbsMeshFace, LocationValidityIsExactDistinctness) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const ON_3dPoint V[] = {ON_3dPoint(0, 0, 0), ON_3dPoint(1, 0, 0), ON_3dPoint(2, 0, 0),
                          ON_3dPoint(0, 0, 0), ON_3dPoint(nan, 0, 0)};
  EXPECT_TRUE(Face(0, 1, 2, 2).IsValid(5, V));  // collinear is fine
  EXPECT_FALSE(Face(0, 1, 3, 3).IsValid(5, V));
  EXPECT_FALSE(Face(0, 1, 2, 3).IsValid(5, V));
  EXPECT_TRUE(Face(0, 1, 4, 4).IsValid(5, V));  // NaN counts as distinct
}

TEST(OpenNurbsMeshFace, RepairKeepsDistinctCornersInOrder) {
  ON_MeshFace f = Face(0, 1, 2, 0);
  EXPECT_TRUE(f.Repair(3));
  EXPECT_TRUE(SameFace(f, 0, 1, 2, 2));
  f = Face(0, 0, 1, 2);
  EXPECT_TRUE(f.Repair(3));
  EXPECT_TRUE(SameFace(f, 0, 1, 2, 2));
  f = Face(0, 0, 1, 1);
  EXPECT_FALSE(f.Repair(3));
  EXPECT_TRUE(SameFace(f, 0, 0, 1, 1));  // untouched on failure

  const double nan = std::numeric_limits<double>::quiet_NaN();
  const ON_3dPoint V[] = {ON_3dPoint(nan, 0, 0), ON_3dPoint(1, 0, 0), ON_3dPoint(1, 1, 0),
                          ON_3dPoint(0, 1, 0), ON_3dPoint(1, 0, 0)};
  f = Face(0, 1, 2, 3);
  EXPECT_TRUE(f.Repair(5, V));
  EXPECT_TRUE(SameFace(f, 1, 2, 3, 3));
  f = Face(1, 4, 2, 3);
  EXPECT_TRUE(f.Repair(5, V));
  EXPECT_TRUE(SameFace(f, 1, 2, 3, 3));
}

TEST(OpenNurbsMeshFace, NormalFromTheDiagonals) {
  const ON_3dPoint V[] = {ON_3dPoint(0, 0, 0), ON_3dPoint(1, 0, 0), ON_3dPoint(1, 1, 0),
                          ON_3dPoint(0, 1, 0)};
  ON_3dVector n;
  EXPECT_TRUE(Face(0, 1, 2, 2).ComputeFaceNormal(V, n));
  EXPECT_EQ(n, ON_3dVector(0, 0, 1));
  EXPECT_TRUE(Face(0, 3, 2, 1).ComputeFaceNormal(V, n));
  EXPECT_EQ(n, ON_3dVector(0, 0, -1));
  n = ON_3dVector(1, 1, 1);
  EXPECT_FALSE(Face(0, 1, 1, 1).ComputeFaceNormal(V, n));
  EXPECT_EQ(n, ON_3dVector(0, 0, 0));
}

}  // namespace
