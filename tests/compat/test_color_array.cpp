// ON_Color byte order and transparency, and ON_SimpleArray growth and counts.

#include <gtest/gtest.h>

#include "opennurbs.h"

namespace {

TEST(OpenNurbsColor, PacksRedLowAndTransparencyHighAndClampsChannels) {
  static_assert(sizeof(ON_Color) == 4, "");
  EXPECT_EQ(static_cast<unsigned int>(ON_Color(10, 20, 30)), 0x001e140au);  // opaque
  EXPECT_EQ(static_cast<unsigned int>(ON_Color(10, 20, 30, 40)), 0x281e140au);
  const ON_Color packed(0x11223344u);
  EXPECT_EQ(packed.Red(), 0x44);
  EXPECT_EQ(packed.Alpha(), 0x11);
  EXPECT_EQ(static_cast<unsigned int>(ON_Color::UnsetColor), 0xFFFFFFFFu);

  const ON_Color clamped(300, -5, 128, 999);
  EXPECT_EQ(static_cast<unsigned int>(clamped), 0xFF8000FFu);
  ON_Color c(1, 2, 3, 200);
  c.SetRGB(4, 5, 6);
  EXPECT_EQ(c.Alpha(), 0);  // SetRGB makes it opaque
  // No operator==: equality goes through the packed value, alpha included.
  c.SetAlpha(1000);
  EXPECT_TRUE(ON_Color(4, 5, 6, 255) == c);
  EXPECT_FALSE(ON_Color(4, 5, 6) == c);
}

TEST(OpenNurbsSimpleArray, GrowthDoublesFromFourAndReserveIsExact) {
  ON_SimpleArray<int> a;
  EXPECT_EQ(a.Array(), nullptr);
  const int expectedCapacity[] = {4, 4, 4, 4, 8, 8, 8, 8, 16};
  for (int i = 0; i < 9; i++) {
    a.Append(i);
    EXPECT_EQ(a.Capacity(), expectedCapacity[i]) << "after " << i + 1 << " appends";
  }
  ON_SimpleArray<int> reserved(10);
  reserved.Reserve(11);
  EXPECT_EQ(reserved.Capacity(), 11);  // exact, no rounding
  reserved.Reserve(3);
  EXPECT_EQ(reserved.Capacity(), 11);  // never shrinks
}

TEST(OpenNurbsSimpleArray, AppendOfOwnElementSurvivesReallocation) {
  ON_SimpleArray<double> a;
  for (int i = 0; i < 4; i++)
    a.Append(i + 0.5);
  ASSERT_EQ(a.Count(), a.Capacity());
  a.Append(a[1]);
  EXPECT_EQ(a[4], 1.5);
  a.Append(a.Count(), a.Array());
  EXPECT_EQ(a.Count(), 10);
  EXPECT_EQ(a[9], 1.5);
}

TEST(OpenNurbsSimpleArray, SetCountStaysWithinCapacityAndFreshSlotsAreZero) {
  ON_SimpleArray<int> a(4);
  a.SetCount(10);
  EXPECT_EQ(a.Count(), 0);
  a.SetCount(4);
  EXPECT_EQ(a[3], 0);
  a[3] = 9;
  a.Empty();
  a.SetCount(4);
  EXPECT_EQ(a[3], 0);  // Empty wipes
  // The pointer conversion is null for an empty array, Array() is not.
  ON_SimpleArray<int> b(2);
  EXPECT_EQ(static_cast<int*>(b), nullptr);
  EXPECT_NE(b.Array(), nullptr);
}

}  // namespace
