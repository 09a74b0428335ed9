#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>

#include "infowindow/info_picture.h"

namespace {

using brindle::HeatRampPixel;
using brindle::RenderInfoPicture;

int Red(std::uint32_t pixel) {
  return static_cast<int>((pixel >> 16) & 0xFF);
}
int Blue(std::uint32_t pixel) {
  return static_cast<int>(pixel & 0xFF);
}

TEST(HeatRamp, RunsFromBlueThroughGreenToRedAndClampsOutside) {
  EXPECT_EQ(HeatRampPixel(0.0), 0x0000FFu);
  EXPECT_EQ(HeatRampPixel(0.25), 0x00FFFFu);
  EXPECT_EQ(HeatRampPixel(0.5), 0x00FF00u);
  EXPECT_EQ(HeatRampPixel(0.75), 0xFFFF00u);
  EXPECT_EQ(HeatRampPixel(1.0), 0xFF0000u);
  EXPECT_EQ(HeatRampPixel(0.125), 0x0080FFu);  // halfway between blue and cyan
  EXPECT_EQ(HeatRampPixel(-3.0), 0x0000FFu);
  EXPECT_EQ(HeatRampPixel(7.0), 0xFF0000u);
  EXPECT_EQ(HeatRampPixel(std::numeric_limits<double>::quiet_NaN()), 0x0000FFu);
  EXPECT_EQ(HeatRampPixel(std::numeric_limits<double>::infinity()), 0xFF0000u);
}

TEST(InfoPicture, IsWarmNextToTheRoomAndColdNextToTheOutdoorAir) {
  const int width = 100;
  const int height = 80;
  const auto pixels = RenderInfoPicture(width, height);
  ASSERT_EQ(pixels.size(), static_cast<std::size_t>(width * height));
  auto at = [&](double u, double v) {
    return pixels[static_cast<std::size_t>(std::floor(v * height)) * width +
                  static_cast<std::size_t>(std::floor(u * width))];
  };
  // Outdoor air fills the upper right, the room the lower left, each in one plain colour.
  EXPECT_EQ(at(0.99, 0.01), at(0.7, 0.3));
  EXPECT_EQ(at(0.01, 0.99), at(0.3, 0.7));
  EXPECT_NE(at(0.99, 0.01), at(0.01, 0.99));
  // Just inside the wall (off the isotherm lines): hot beside the room's corner, cold beside
  // the outdoor corner.
  const std::uint32_t warm = at(0.40, 0.60);
  const std::uint32_t cold = at(0.60, 0.40);
  EXPECT_GT(Red(warm), 200);
  EXPECT_LT(Blue(warm), 60);
  EXPECT_GT(Blue(cold), 200);
  EXPECT_LT(Red(cold), 60);

  EXPECT_TRUE(RenderInfoPicture(0, 10).empty());
  EXPECT_TRUE(RenderInfoPicture(10, -1).empty());
  EXPECT_EQ(RenderInfoPicture(1, 1).size(), 1u);
}

}  // namespace
