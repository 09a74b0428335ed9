// Scalars, points, vectors and planes: which overloads exist, and the quirks of validity,
// Length, Unitize and degenerate planes that code written against the subset relies on. Overload
// sets are checked at compile time so that such code also compiles (and means the same) against
// the real SDK.

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <type_traits>
#include <utility>

#include "opennurbs.h"

namespace {

const double kNan = std::numeric_limits<double>::quiet_NaN();
const double kInf = std::numeric_limits<double>::infinity();

// Implicit conversions widen only; mixed arithmetic yields the wider type.
static_assert(std::is_convertible<ON_3dPoint, ON_3dVector>::value, "");
static_assert(std::is_convertible<ON_3fPoint, ON_3dPoint>::value, "");
static_assert(!std::is_convertible<ON_3dPoint, ON_3fPoint>::value, "");
static_assert(std::is_constructible<ON_3fPoint, ON_3dPoint>::value, "");
static_assert(sizeof(ON_3dPoint) == 24 && sizeof(ON_3fVector) == 12, "");
static_assert(std::is_same<decltype(ON_3dPoint() - ON_3dPoint()), ON_3dVector>::value, "");
static_assert(std::is_same<decltype(ON_3fPoint() - ON_3dPoint()), ON_3dVector>::value, "");
static_assert(std::is_same<decltype(ON_3fPoint() * 1.0), ON_3dPoint>::value, "");
static_assert(std::is_same<decltype(ON_3fPoint() * 1.0f), ON_3fPoint>::value, "");

// Calls that the SDK rejects as ambiguous must stay ill-formed.
template <class A, class B, class = void>
struct MinCompiles : std::false_type {};
template <class A, class B>
struct MinCompiles<A, B, decltype(void(ON_Min(std::declval<A>(), std::declval<B>())))>
    : std::true_type {};
static_assert(MinCompiles<double, double>::value && MinCompiles<int, int>::value, "");
static_assert(!MinCompiles<int, double>::value, "ON_Min(int, double) must be ambiguous");
static_assert(!MinCompiles<size_t, size_t>::value, "ON_Min(size_t, size_t) must be ambiguous");

template <class A, class B, class = void>
struct CrossCompiles : std::false_type {};
template <class A, class B>
struct CrossCompiles<A, B, decltype(void(ON_CrossProduct(std::declval<A>(), std::declval<B>())))>
    : std::true_type {};
static_assert(CrossCompiles<ON_3dVector, ON_3fVector>::value, "");
static_assert(!CrossCompiles<ON_3dPoint, ON_3dPoint>::value,
              "ON_CrossProduct of two points must be ambiguous");

// Three points or a point and two vectors select a plane constructor; a mix is ambiguous.
static_assert(std::is_constructible<ON_Plane, ON_3dPoint, ON_3dPoint, ON_3dPoint>::value, "");
static_assert(!std::is_constructible<ON_Plane, ON_3dPoint, ON_3dPoint, ON_3dVector>::value, "");

TEST(OpenNurbsScalars, ValidityAndNanAwareMinMax) {
  for (double bad : {1.3e308, ON_UNSET_VALUE, ON_UNSET_POSITIVE_VALUE, kNan, kInf, -kInf})
    EXPECT_FALSE(ON_IsValid(bad)) << bad;
  EXPECT_TRUE(ON_IsValid(-1e308));
  EXPECT_FALSE(ON_3dPoint(1, kNan, 3).IsValid());
  EXPECT_FALSE(ON_3fPoint(2e38f, 0, 0).IsValid());
  EXPECT_FALSE(ON_3dVector(1e-300, 0, 0).IsZero());
  // Min and max prefer the argument that is not NaN, whichever side it is on.
  EXPECT_EQ(ON_Min(kNan, 2.0), 2.0);
  EXPECT_EQ(ON_Min(2.0, kNan), 2.0);
  EXPECT_EQ(ON_Max(kNan, -2.0), -2.0);
  EXPECT_EQ(ON_Max(-2.0, kNan), -2.0);
}

TEST(OpenNurbsPoints, LengthIsOverflowSafeWithItsNanQuirk) {
  EXPECT_EQ(ON_3dVector(3e300, 4e300, 0).Length(), 5e300);
  EXPECT_EQ(ON_3dVector(1e-320, 0, 0).Length(), 1e-320);
  EXPECT_EQ(ON_3dVector(kNan, 1, 0).Length(), 0.0);
  EXPECT_TRUE(std::isnan(ON_3dVector(1, kNan, 0).Length()));
  // Single precision squares overflow where the double length does not.
  EXPECT_TRUE(std::isinf(ON_3fVector(1e20f, 1e20f, 0).LengthSquared()));
  EXPECT_TRUE(std::isfinite(ON_3fVector(1e20f, 1e20f, 0).Length()));
}

TEST(OpenNurbsPoints, DoubleUnitizeHasNoToleranceAndZeroesOnFailure) {
  for (double tiny : {1e-300, 5e-324}) {
    ON_3dVector v(tiny, 0, 0);
    EXPECT_TRUE(v.Unitize());
    EXPECT_EQ(v, ON_3dVector(1, 0, 0));
  }
  for (ON_3dVector bad : {ON_3dVector(0, 0, 0), ON_3dVector(kInf, 1, 0), ON_3dVector(kNan, 1, 0)}) {
    EXPECT_FALSE(bad.Unitize());
    EXPECT_EQ(bad, ON_3dVector(0, 0, 0));
  }
}

TEST(OpenNurbsPoints, FloatUnitizeLeavesFailuresUnchanged) {
  ON_3fVector withNan(std::numeric_limits<float>::quiet_NaN(), 1, 0);
  EXPECT_FALSE(withNan.Unitize());
  EXPECT_EQ(withNan.y, 1.0f);
  // An infinite component: the length is infinite, the division gives NaN, and it "works".
  ON_3fVector withInf(std::numeric_limits<float>::infinity(), 1, 0);
  EXPECT_TRUE(withInf.Unitize());
  EXPECT_TRUE(std::isnan(withInf.x));
}

TEST(OpenNurbsPlane, ThreePointsGiveARightHandedFrameWithYPerpendicularToX) {
  const ON_Plane plane(ON_3dPoint(1, 1, 0), ON_3dPoint(3, 1, 0), ON_3dPoint(2, -5, 0));
  EXPECT_TRUE(plane.IsValid());
  EXPECT_EQ(plane.xaxis, ON_3dVector(1, 0, 0));
  EXPECT_EQ(plane.yaxis, ON_3dVector(0, -1, 0));
  EXPECT_EQ(plane.zaxis, ON_3dVector(0, 0, -1));
  EXPECT_EQ(plane.plane_equation.z, -1.0);
  double u = 0.0, v = 0.0;
  EXPECT_TRUE(plane.ClosestPointTo(ON_3dPoint(4, 6, 7), &u, &v));
  EXPECT_EQ(u, 3.0);
  EXPECT_EQ(v, -5.0);
  EXPECT_EQ(plane.DistanceTo(ON_3dPoint(4, 6, 7)), -7.0);
  // Unitize has no tolerance, so nearly collinear points still make a valid plane.
  EXPECT_TRUE(ON_Plane(ON_3dPoint(0, 0, 0), ON_3dPoint(1, 0, 0), ON_3dPoint(2, 1e-9, 0)).IsValid());
}

TEST(OpenNurbsPlane, CollinearPointsLeaveZeroAxesAndStillProject) {
  const ON_Plane plane(ON_3dPoint(0, 0, 0), ON_3dPoint(1, 1, 1), ON_3dPoint(2, 2, 2));
  EXPECT_FALSE(plane.IsValid());
  EXPECT_NEAR(plane.xaxis.x, 1.0 / std::sqrt(3.0), 1e-15);
  EXPECT_EQ(plane.yaxis, ON_3dVector(0, 0, 0));
  EXPECT_EQ(plane.zaxis, ON_3dVector(0, 0, 0));
  EXPECT_EQ(plane.plane_equation.d, 0.0);
  const ON_Plane coincident(ON_3dPoint(1, 2, 3), ON_3dPoint(1, 2, 3), ON_3dPoint(4, 5, 6));
  EXPECT_EQ(coincident.xaxis, ON_3dVector(0, 0, 0));
  // Projection onto an invalid plane still "succeeds".
  double u = 0.0, v = 0.0;
  const ON_Plane flat(ON_3dPoint(0, 0, 0), ON_3dPoint(1, 0, 0), ON_3dPoint(2, 0, 0));
  EXPECT_TRUE(flat.ClosestPointTo(ON_3dPoint(5, 5, 5), &u, &v));
  EXPECT_EQ(u, 5.0);
  EXPECT_EQ(v, 0.0);
}

}  // namespace
