// Points and vectors: which conversions exist, the result types of mixed arithmetic, and the
// two different Unitize behaviours. Overload sets are checked at compile time so that code
// written against the subset also compiles (and means the same) against the real SDK.

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <type_traits>
#include <utility>

#include "opennurbs.h"

namespace {

const double kNan = std::numeric_limits<double>::quiet_NaN();
const double kInf = std::numeric_limits<double>::infinity();

// --- compile-time checks -----------------------------------------------------------------

// Implicit conversions between the 3-D types; everything else needs an explicit cast.
static_assert(std::is_convertible<ON_3dPoint, ON_3dVector>::value, "");
static_assert(std::is_convertible<ON_3dVector, ON_3dPoint>::value, "");
static_assert(std::is_convertible<ON_3fPoint, ON_3dPoint>::value, "");
static_assert(std::is_convertible<ON_3fVector, ON_3dVector>::value, "");
static_assert(!std::is_convertible<ON_3dPoint, ON_3fPoint>::value, "");
static_assert(!std::is_convertible<ON_3fVector, ON_3dPoint>::value, "");
static_assert(!std::is_convertible<ON_3fPoint, ON_3dVector>::value, "");
static_assert(!std::is_convertible<ON_3dVector, ON_3fVector>::value, "");
static_assert(std::is_constructible<ON_3fPoint, ON_3dPoint>::value, "");
static_assert(std::is_constructible<ON_3dPoint, ON_3fVector>::value, "");
static_assert(std::is_assignable<ON_3fPoint&, ON_3dPoint>::value, "");
// Component constructors are explicit: no brace-initialisation from a list.
static_assert(!std::is_convertible<const double*, ON_3dPoint>::value, "");
static_assert(std::is_trivially_default_constructible<ON_3dPoint>::value, "");
static_assert(sizeof(ON_3dPoint) == 24 && sizeof(ON_3fPoint) == 12, "");
static_assert(sizeof(ON_3fVector) == 12 && sizeof(ON_3dVector) == 24, "");

// Result types of mixed arithmetic.
template <class A, class B>
using Sum = decltype(std::declval<A>() + std::declval<B>());
template <class A, class B>
using Difference = decltype(std::declval<A>() - std::declval<B>());
template <class A, class B>
using Product = decltype(std::declval<A>() * std::declval<B>());
static_assert(std::is_same<Difference<ON_3dPoint, ON_3dPoint>, ON_3dVector>::value, "");
static_assert(std::is_same<Difference<ON_3dVector, ON_3dPoint>, ON_3dPoint>::value, "");
static_assert(std::is_same<Sum<ON_3dVector, ON_3dPoint>, ON_3dPoint>::value, "");
static_assert(std::is_same<Difference<ON_3fPoint, ON_3fPoint>, ON_3fVector>::value, "");
static_assert(std::is_same<Difference<ON_3fPoint, ON_3dPoint>, ON_3dVector>::value, "");
static_assert(std::is_same<Sum<ON_3fPoint, ON_3dVector>, ON_3dPoint>::value, "");
static_assert(std::is_same<Product<ON_3fPoint, double>, ON_3dPoint>::value, "");
static_assert(std::is_same<Product<ON_3fPoint, float>, ON_3fPoint>::value, "");
static_assert(std::is_same<Product<double, ON_3fVector>, ON_3dVector>::value, "");
static_assert(std::is_same<Product<float, ON_3fVector>, ON_3fVector>::value, "");
static_assert(std::is_same<Product<ON_3fVector, ON_3fVector>, float>::value, "");
static_assert(std::is_same<Product<ON_3dVector, ON_3dPoint>, double>::value, "");
static_assert(std::is_same<decltype(ON_3fVector() / 2.0), ON_3dVector>::value, "");
static_assert(std::is_same<decltype(ON_3fVector() / 2), ON_3fVector>::value, "");

// Calls that the SDK rejects as ambiguous must stay ill-formed.
template <class A, class B, class = void>
struct MinCompiles : std::false_type {};
template <class A, class B>
struct MinCompiles<A, B, decltype(void(ON_Min(std::declval<A>(), std::declval<B>())))>
    : std::true_type {};
static_assert(MinCompiles<double, double>::value, "");
static_assert(MinCompiles<int, int>::value, "");
static_assert(!MinCompiles<int, double>::value, "ON_Min(int, double) must be ambiguous");
static_assert(!MinCompiles<size_t, size_t>::value, "ON_Min(size_t, size_t) must be ambiguous");
static_assert(!MinCompiles<float, double>::value, "");

template <class A, class B, class = void>
struct CrossCompiles : std::false_type {};
template <class A, class B>
struct CrossCompiles<A, B, decltype(void(ON_CrossProduct(std::declval<A>(), std::declval<B>())))>
    : std::true_type {};
static_assert(CrossCompiles<ON_3dVector, ON_3dVector>::value, "");
static_assert(CrossCompiles<ON_3dVector, ON_3fVector>::value, "");
static_assert(!CrossCompiles<ON_3dPoint, ON_3dPoint>::value,
              "ON_CrossProduct of two points must be ambiguous");
static_assert(
    std::is_same<decltype(ON_CrossProduct(ON_3dVector(), ON_3fVector())), ON_3dVector>::value, "");

// --- run-time behaviour --------------------------------------------------------------------

TEST(OpenNurbsPoints, ComponentArithmeticAndComparison) {
  const ON_3dPoint A(1, 2, 3);
  const ON_3dPoint B(4, 6, 3);
  const ON_3dVector D = B - A;
  EXPECT_EQ(D, ON_3dVector(3, 4, 0));
  EXPECT_EQ(D.Length(), 5.0);
  EXPECT_EQ(A.DistanceTo(B), 5.0);
  EXPECT_EQ(A + D, B);
  EXPECT_EQ(D * ON_3dVector(1, 1, 1), 7.0);
  EXPECT_EQ(ON_DotProduct(D, ON_3dVector(0, 1, 0)), 4.0);
  EXPECT_EQ(ON_CrossProduct(ON_3dVector::XAxis, ON_3dVector::YAxis), ON_3dVector::ZAxis);
  EXPECT_EQ(ON_CrossProduct(ON_3fVector(0, 1, 0), ON_3fVector(1, 0, 0)), ON_3fVector(0, 0, -1));
  EXPECT_EQ(2 * A, ON_3dPoint(2, 4, 6));
  EXPECT_EQ(A / 2.0, ON_3dPoint(0.5, 1, 1.5));
  EXPECT_TRUE(ON_3dPoint(0, 5, 5) < ON_3dPoint(1, 0, 0));
  EXPECT_TRUE(ON_3dPoint(1, 0, 0) < ON_3dPoint(1, 0, 1));
  EXPECT_TRUE(ON_3dPoint(kNan, 0, 0) != ON_3dPoint(kNan, 0, 0));
  EXPECT_TRUE(ON_3dPoint(0.0, 0, 0) == ON_3dPoint(-0.0, 0, 0));

  ON_3dPoint clamped(7, 8, 9);
  EXPECT_EQ(clamped[-3], 7.0);
  EXPECT_EQ(clamped[1], 8.0);
  EXPECT_EQ(clamped[17], 9.0);
}

TEST(OpenNurbsPoints, PrecisionOfMixedOperations) {
  // Float operands stay in float unless a double joins in.
  const ON_3fPoint p(1.0f, 0.0f, 0.0f);
  const ON_3fPoint q(1.0f + 1e-7f, 0.0f, 0.0f);
  const ON_3fVector fv = q - p;
  EXPECT_EQ(fv.x, q.x - p.x);
  const ON_3dPoint half = p * 0.1;
  EXPECT_EQ(half.x, 1.0 * 0.1);
  const ON_3fPoint narrowed(ON_3dPoint(0.1, 0.2, 0.3));
  EXPECT_EQ(narrowed.x, 0.1f);
  ON_3fPoint assigned;
  assigned = ON_3dPoint(0.1, 0.2, 0.3);
  EXPECT_EQ(assigned, narrowed);
  const ON_3dPoint widened = narrowed;
  EXPECT_EQ(widened.x, static_cast<double>(0.1f));
  // Single precision squares overflow where the double length does not.
  EXPECT_TRUE(std::isinf(ON_3fVector(1e20f, 1e20f, 0).LengthSquared()));
  EXPECT_TRUE(std::isfinite(ON_3fVector(1e20f, 1e20f, 0).Length()));
}

TEST(OpenNurbsPoints, ValidityAndZeroTests) {
  EXPECT_TRUE(ON_3dPoint(1, 2, 3).IsValid());
  EXPECT_FALSE(ON_3dPoint(1, kNan, 3).IsValid());
  EXPECT_FALSE(ON_3dPoint(kInf, 0, 0).IsValid());
  EXPECT_FALSE(ON_3dPoint::UnsetPoint.IsValid());
  EXPECT_FALSE(ON_3fPoint(2e38f, 0, 0).IsValid());
  EXPECT_TRUE(ON_3dVector(-0.0, 0.0, 0.0).IsZero());
  EXPECT_FALSE(ON_3dVector(1e-300, 0, 0).IsZero());
  EXPECT_TRUE(ON_3dVector(1e-11, 0, 0).IsTiny());
  EXPECT_FALSE(ON_3dVector(1e-9, 0, 0).IsTiny());
  EXPECT_EQ(ON_3dVector(1, -7, 3).MaximumCoordinate(), 7.0);
  EXPECT_EQ(ON_3dPoint(static_cast<const double*>(nullptr)), ON_3dPoint::Origin);
}

TEST(OpenNurbsPoints, LengthIsOverflowSafeWithItsNanQuirk) {
  EXPECT_EQ(ON_3dVector(3e300, 4e300, 0).Length(), 5e300);
  EXPECT_EQ(ON_3dVector(1e-320, 0, 0).Length(), 1e-320);
  EXPECT_EQ(ON_3dVector(kNan, 1, 0).Length(), 0.0);
  EXPECT_TRUE(std::isnan(ON_3dVector(1, kNan, 0).Length()));
  EXPECT_TRUE(std::isnan(ON_3dVector(1, 0, kNan).Length()));
  EXPECT_EQ(ON_3fVector(3, 4, 0).Length(), 5.0);
}

TEST(OpenNurbsPoints, DoubleUnitizeHasNoToleranceAndZeroesOnFailure) {
  ON_3dVector tiny(1e-300, 0, 0);
  EXPECT_TRUE(tiny.Unitize());
  EXPECT_EQ(tiny, ON_3dVector(1, 0, 0));
  ON_3dVector denormal(5e-324, 0, 0);
  EXPECT_TRUE(denormal.Unitize());
  EXPECT_EQ(denormal, ON_3dVector(1, 0, 0));

  for (ON_3dVector bad : {ON_3dVector(0, 0, 0), ON_3dVector(kInf, 1, 0), ON_3dVector(kNan, 1, 0)}) {
    EXPECT_FALSE(bad.Unitize());
    EXPECT_EQ(bad, ON_3dVector(0, 0, 0));
  }
  ON_3dVector v(0, 3, 4);
  EXPECT_TRUE(v.Unitize());
  EXPECT_EQ(v, ON_3dVector(0, 0.6, 0.8));
  EXPECT_EQ(ON_3dVector(0, 0, 0).UnitVector(), ON_3dVector(0, 0, 0));
}

TEST(OpenNurbsPoints, FloatUnitizeLeavesFailuresUnchanged) {
  ON_3fVector zero(0, 0, 0);
  EXPECT_FALSE(zero.Unitize());
  EXPECT_EQ(zero, ON_3fVector(0, 0, 0));
  ON_3fVector with_nan(std::numeric_limits<float>::quiet_NaN(), 1, 0);
  EXPECT_FALSE(with_nan.Unitize());
  EXPECT_EQ(with_nan.y, 1.0f);
  // An infinite component: the length is infinite, the division gives NaN, and it "works".
  ON_3fVector with_inf(std::numeric_limits<float>::infinity(), 1, 0);
  EXPECT_TRUE(with_inf.Unitize());
  EXPECT_TRUE(std::isnan(with_inf.x));
  ON_3fVector v(0, 3, 4);
  EXPECT_TRUE(v.Unitize());
  EXPECT_EQ(v, ON_3fVector(0, 0.6f, 0.8f));
}

TEST(OpenNurbsPoints, PerpendicularToFollowsPointOrder) {
  ON_3dVector n;
  EXPECT_TRUE(n.PerpendicularTo(ON_3dPoint(0, 0, 0), ON_3dPoint(1, 0, 0), ON_3dPoint(0, 1, 0)));
  EXPECT_EQ(n, ON_3dVector(0, 0, 1));
  EXPECT_TRUE(n.PerpendicularTo(ON_3dPoint(0, 0, 0), ON_3dPoint(0, 1, 0), ON_3dPoint(1, 0, 0)));
  EXPECT_EQ(n, ON_3dVector(0, 0, -1));
  n = ON_3dVector(5, 5, 5);
  EXPECT_FALSE(n.PerpendicularTo(ON_3dPoint(0, 0, 0), ON_3dPoint(1, 1, 1), ON_3dPoint(2, 2, 2)));
  EXPECT_EQ(n, ON_3dVector(0, 0, 0));
}

}  // namespace
