// Scalar helpers, constants and the memory functions.

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "opennurbs.h"

namespace {

const double kNan = std::numeric_limits<double>::quiet_NaN();
const double kInf = std::numeric_limits<double>::infinity();

TEST(OpenNurbsScalars, ValidityRejectsNanInfinityAndUnsetRange) {
  EXPECT_TRUE(ON_IsValid(0.0));
  EXPECT_TRUE(ON_IsValid(1e308));
  EXPECT_TRUE(ON_IsValid(-1e308));
  EXPECT_FALSE(ON_IsValid(1.3e308));
  EXPECT_FALSE(ON_IsValid(ON_UNSET_VALUE));
  EXPECT_FALSE(ON_IsValid(ON_UNSET_POSITIVE_VALUE));
  EXPECT_FALSE(ON_IsValid(kNan));
  EXPECT_FALSE(ON_IsValid(kInf));
  EXPECT_FALSE(ON_IsValid(-kInf));
  EXPECT_TRUE(ON_IS_VALID_FLOAT(1.0e38f));
  EXPECT_FALSE(ON_IS_VALID_FLOAT(1.3e38f));
  EXPECT_FALSE(ON_IS_VALID_FLOAT(ON_UNSET_FLOAT));
  EXPECT_FALSE(ON_IS_VALID_FLOAT(std::numeric_limits<float>::infinity()));
}

TEST(OpenNurbsScalars, MinMaxPreferTheNonNanArgument) {
  EXPECT_EQ(ON_Min(1.0, 2.0), 1.0);
  EXPECT_EQ(ON_Max(1.0, 2.0), 2.0);
  EXPECT_EQ(ON_Min(kNan, 2.0), 2.0);
  EXPECT_EQ(ON_Min(2.0, kNan), 2.0);
  EXPECT_EQ(ON_Max(kNan, -2.0), -2.0);
  EXPECT_EQ(ON_Max(-2.0, kNan), -2.0);
  EXPECT_EQ(ON_Min(3.0f, 1.5f), 1.5f);
  EXPECT_EQ(ON_Max(-4, 7), 7);
  EXPECT_EQ(ON_Min(-4, 7), -4);
}

TEST(OpenNurbsScalars, ConstantsHaveTheirExactValues) {
  EXPECT_EQ(ON_ZERO_TOLERANCE, std::ldexp(1.0, -32));
  EXPECT_EQ(ON_UNSET_VALUE, -1.23432101234321e+308);
  EXPECT_EQ(ON_UNSET_POSITIVE_FLOAT, 1.234321e+38f);
  EXPECT_EQ(ON_UNSET_UINT_INDEX, 0xFFFFFFFFu);
  EXPECT_EQ(ON_SQRT_EPSILON, 1.490116119385e-8);
}

TEST(OpenNurbsScalars, MemoryFunctionsTreatZeroSizesAsNothing) {
  EXPECT_EQ(onmalloc(0), nullptr);
  EXPECT_EQ(oncalloc(0, 8), nullptr);
  EXPECT_EQ(oncalloc(8, 0), nullptr);
  void* p = onrealloc(nullptr, 16);
  ASSERT_NE(p, nullptr);
  p = onrealloc(p, 64);
  ASSERT_NE(p, nullptr);
  EXPECT_EQ(onrealloc(p, 0), nullptr);  // frees
  onfree(nullptr);
  int* zeros = static_cast<int*>(oncalloc(4, sizeof(int)));
  ASSERT_NE(zeros, nullptr);
  EXPECT_EQ(zeros[0] | zeros[1] | zeros[2] | zeros[3], 0);
  onfree(zeros);
}

TEST(OpenNurbsScalars, TriangleAreaIsHalfTheCrossProductLength) {
  EXPECT_EQ(ON_TriangleArea3d(ON_3dPoint(0, 0, 0), ON_3dPoint(2, 0, 0), ON_3dPoint(0, 3, 0)), 3.0);
  EXPECT_EQ(ON_TriangleArea3d(ON_3dPoint(0, 0, 0), ON_3dPoint(0, 3, 0), ON_3dPoint(2, 0, 0)), 3.0);
  EXPECT_EQ(ON_TriangleArea3d(ON_3dPoint(0, 0, 0), ON_3dPoint(1, 1, 1), ON_3dPoint(2, 2, 2)), 0.0);
  // Far from the origin the overflow-safe length still gives a finite area.
  EXPECT_TRUE(std::isfinite(
      ON_TriangleArea3d(ON_3dPoint(0, 0, 0), ON_3dPoint(1e200, 0, 0), ON_3dPoint(0, 1e100, 0))));
}

}  // namespace
