#include <gtest/gtest.h>

#include "common/boundary_status.h"

namespace brindle {
namespace {

TEST(BoundaryStatus, DecodesTheRedChannelOnly) {
  EXPECT_EQ(DecodeBoundaryStatus(ON_Color(39, 0, 0)), 1);
  EXPECT_EQ(DecodeBoundaryStatus(ON_Color(245, 17, 200, 3)), 2);
  EXPECT_EQ(DecodeBoundaryStatus(ON_Color(255, 255, 255)), 3);
  EXPECT_EQ(DecodeBoundaryStatus(ON_Color(135, 1, 2)), 4);
  EXPECT_EQ(DecodeBoundaryStatus(ON_Color(50, 50, 50)), 5);
  EXPECT_EQ(DecodeBoundaryStatus(ON_Color(150, 150, 150)), -1);
  EXPECT_EQ(DecodeBoundaryStatus(ON_Color(128, 39, 255)), -1);
  EXPECT_EQ(DecodeBoundaryStatus(ON_Color(0, 0, 0)), -1);
}

TEST(BoundaryStatus, PaletteIsTheInverseOfDecoding) {
  const struct {
    int status;
    unsigned int packed;
    int red, green, blue;
  } palette[] = {{1, 0x96F7A827u, 39, 168, 247},
                 {2, 0x960055F5u, 245, 85, 0},
                 {3, 0x968181FFu, 255, 129, 129},
                 {4, 0x966F9587u, 135, 149, 111},
                 {5, 0x96323232u, 50, 50, 50}};
  for (const auto& entry : palette) {
    const ON_Color color = BoundaryStatusColor(entry.status);
    EXPECT_EQ(static_cast<unsigned int>(color), entry.packed) << entry.status;
    EXPECT_EQ(color.Red(), entry.red);
    EXPECT_EQ(color.Green(), entry.green);
    EXPECT_EQ(color.Blue(), entry.blue);
    EXPECT_EQ(color.Alpha(), 150);
    EXPECT_EQ(DecodeBoundaryStatus(color), entry.status);
  }
  for (int unknown : {-1, 0, 6, 99}) {
    EXPECT_EQ(static_cast<unsigned int>(BoundaryStatusColor(unknown)), 0x96969696u);
    EXPECT_EQ(DecodeBoundaryStatus(BoundaryStatusColor(unknown)), -1);
  }
}

TEST(BoundaryStatus, FixedStatusesPrescribeTheirTemperature) {
  EXPECT_TRUE(IsFixedBoundaryStatus(1));
  EXPECT_TRUE(IsFixedBoundaryStatus(2));
  EXPECT_TRUE(IsFixedBoundaryStatus(3));
  for (int free : {-1, 0, 4, 5})
    EXPECT_FALSE(IsFixedBoundaryStatus(free));
  EXPECT_EQ(PrescribedTemperature(1), 0.0);
  EXPECT_EQ(PrescribedTemperature(2), 0.5);
  EXPECT_EQ(PrescribedTemperature(3), 1.0);
}

}  // namespace
}  // namespace brindle
