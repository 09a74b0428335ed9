// ON_Color byte order and transparency, and ON_SimpleArray's growth and copy rules.

#include <gtest/gtest.h>

#include <cstdint>

#include "opennurbs.h"

namespace {

TEST(OpenNurbsColor, PacksRedInTheLowByteAndTransparencyInTheTop) {
  static_assert(sizeof(ON_Color) == 4, "");
  const ON_Color rgb(10, 20, 30);
  EXPECT_EQ(static_cast<unsigned int>(rgb), 0x001e140au);
  EXPECT_EQ(rgb.Alpha(), 0);  // opaque
  const ON_Color rgba(10, 20, 30, 40);
  EXPECT_EQ(static_cast<unsigned int>(rgba), 0x281e140au);

  const ON_Color packed(0x11223344u);
  EXPECT_EQ(packed.Red(), 0x44);
  EXPECT_EQ(packed.Green(), 0x33);
  EXPECT_EQ(packed.Blue(), 0x22);
  EXPECT_EQ(packed.Alpha(), 0x11);

  const ON_Color defaulted;
  EXPECT_EQ(static_cast<unsigned int>(defaulted), 0u);
  EXPECT_EQ(static_cast<unsigned int>(ON_Color::UnsetColor), 0xFFFFFFFFu);
  EXPECT_EQ(static_cast<unsigned int>(ON_Color::White), 0x00FFFFFFu);
}

TEST(OpenNurbsColor, ClampsChannelsAndSetRgbMakesOpaque) {
  const ON_Color clamped(300, -5, 128, 999);
  EXPECT_EQ(clamped.Red(), 255);
  EXPECT_EQ(clamped.Green(), 0);
  EXPECT_EQ(clamped.Blue(), 128);
  EXPECT_EQ(clamped.Alpha(), 255);

  ON_Color c(1, 2, 3, 200);
  c.SetRGB(4, 5, 6);
  EXPECT_EQ(c.Alpha(), 0);
  c.SetAlpha(1000);
  EXPECT_EQ(c.Alpha(), 255);
  EXPECT_EQ(c.Red(), 4);
  // No operator==: equality goes through the packed value, alpha included.
  EXPECT_TRUE(ON_Color(4, 5, 6, 255) == c);
  EXPECT_FALSE(ON_Color(4, 5, 6) == c);
}

TEST(OpenNurbsSimpleArray, GrowthDoublesFromFour) {
  ON_SimpleArray<int> a;
  EXPECT_EQ(a.Capacity(), 0);
  EXPECT_EQ(a.Array(), nullptr);
  int expected_capacity[] = {4, 4, 4, 4, 8, 8, 8, 8, 16};
  for (int i = 0; i < 9; i++) {
    a.Append(i);
    EXPECT_EQ(a.Capacity(), expected_capacity[i]) << "after " << i + 1 << " appends";
  }
  for (int i = 9; i < 33; i++)
    a.Append(i);
  EXPECT_EQ(a.Capacity(), 64);
  EXPECT_EQ(a.Count(), 33);
  EXPECT_EQ(a[32], 32);

  ON_SimpleArray<int> reserved(10);
  EXPECT_EQ(reserved.Capacity(), 10);
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

TEST(OpenNurbsSimpleArray, CopiesAreSizedToTheSourceCount) {
  ON_SimpleArray<int> a(4);
  a.Append(7);
  const ON_SimpleArray<int> copy(a);
  EXPECT_EQ(copy.Count(), 1);
  EXPECT_EQ(copy.Capacity(), 1);

  ON_SimpleArray<int> big(20);
  big.Append(1);
  big = ON_SimpleArray<int>();
  EXPECT_EQ(big.Count(), 0);     // the empty source only resets the count...
  EXPECT_EQ(big.Capacity(), 0);  // ...but a moved-in empty array replaces the buffer

  ON_SimpleArray<int> kept(20);
  kept.Append(1);
  const ON_SimpleArray<int> empty;
  kept = empty;
  EXPECT_EQ(kept.Count(), 0);
  EXPECT_EQ(kept.Capacity(), 20);

  ON_SimpleArray<int> moved(std::move(a));
  EXPECT_EQ(moved.Count(), 1);
  EXPECT_EQ(a.Count(), 0);  // NOLINT(bugprone-use-after-move)
  EXPECT_EQ(a.Capacity(), 0);
}

TEST(OpenNurbsSimpleArray, SetCountOnlyWithinCapacityAndEmptyWipes) {
  ON_SimpleArray<int> a(4);
  a.SetCount(10);
  EXPECT_EQ(a.Count(), 0);
  a.SetCount(-1);
  EXPECT_EQ(a.Count(), 0);
  a.SetCount(4);
  EXPECT_EQ(a.Count(), 4);
  EXPECT_EQ(a[3], 0);  // fresh storage is zero-filled
  a[3] = 9;
  a.Empty();
  EXPECT_EQ(a.Capacity(), 4);
  a.SetCount(4);
  EXPECT_EQ(a[3], 0);

  // The pointer conversion is null for an empty array, Array() is not.
  ON_SimpleArray<int> b(2);
  EXPECT_EQ(static_cast<int*>(b), nullptr);
  EXPECT_NE(b.Array(), nullptr);
  b.Destroy();
  EXPECT_EQ(b.Array(), nullptr);
  EXPECT_EQ(b.Capacity(), 0);
}

TEST(OpenNurbsSimpleArray, RemoveShiftsDownAndZeroesTheVacatedSlot) {
  ON_SimpleArray<int> a;
  for (int i = 1; i <= 4; i++)
    a.Append(i);
  a.Remove(1);
  ASSERT_EQ(a.Count(), 3);
  EXPECT_EQ(a[0], 1);
  EXPECT_EQ(a[1], 3);
  EXPECT_EQ(a[2], 4);
  a.Remove(7);
  a.Remove(-1);
  EXPECT_EQ(a.Count(), 3);
  a.SetCount(4);
  EXPECT_EQ(a[3], 0);
  a.Remove();
  EXPECT_EQ(a.Count(), 3);
  EXPECT_EQ(*a.Last(), 4);

  // The usual index types all work.
  const size_t s = 1;
  const unsigned u = 2;
  const int64_t l = 0;
  EXPECT_EQ(a[s] + a[u] + a[l], 1 + 3 + 4);
}

TEST(OpenNurbsSimpleArray, KeepArrayHandsOverTheBuffer) {
  ON_SimpleArray<int> a;
  a.Append(5);
  int* buffer = a.KeepArray();
  EXPECT_EQ(a.Count(), 0);
  EXPECT_EQ(a.Array(), nullptr);
  EXPECT_EQ(buffer[0], 5);
  onfree(buffer);
}

}  // namespace
