#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "brindle.h"

namespace {

struct Rgb {
  int red, green, blue;
};

Rgb Heat(double t) {
  Rgb rgb{-1, -1, -1};
  HeatColor(t, &rgb.red, &rgb.green, &rgb.blue);
  return rgb;
}

void ExpectRgb(double t, int red, int green, int blue) {
  const Rgb rgb = Heat(t);
  EXPECT_EQ(rgb.red, red) << "t = " << t;
  EXPECT_EQ(rgb.green, green) << "t = " << t;
  EXPECT_EQ(rgb.blue, blue) << "t = " << t;
}

TEST(HeatColor, RampPassesThroughItsKnots) {
  ExpectRgb(0.0, 0, 0, 146);
  ExpectRgb(0.125, 0, 0, 255);
  ExpectRgb(0.25, 0, 146, 255);
  ExpectRgb(0.375, 0, 255, 255);
  ExpectRgb(0.5, 146, 255, 146);
  ExpectRgb(0.625, 255, 255, 0);
  ExpectRgb(0.75, 255, 146, 0);
  ExpectRgb(0.875, 255, 0, 0);
  ExpectRgb(1.0, 146, 0, 0);
}

TEST(HeatColor, ClampsOutOfRangeAndNotANumber) {
  ExpectRgb(-3.0, 0, 0, 146);
  ExpectRgb(std::numeric_limits<double>::quiet_NaN(), 0, 0, 146);
  ExpectRgb(-std::numeric_limits<double>::infinity(), 0, 0, 146);
  ExpectRgb(7.0, 146, 0, 0);
  ExpectRgb(std::numeric_limits<double>::infinity(), 146, 0, 0);
}

TEST(HeatColor, BrightensWithPowerAndTruncates) {
  // Between knots each channel is (linear hat)^0.8 * 255, truncated: 0.0625 gives blue hat
  // 0.75, so 0.75^0.8 * 255 = 202.6..., written as 202.
  ExpectRgb(0.0625, 0, 0, static_cast<int>(std::pow(0.75, 0.8) * 255.0));
  EXPECT_EQ(Heat(0.0625).blue, 202);
}

TEST(HeatColor, SkipsNullChannels) {
  int green = -1;
  HeatColor(0.5, nullptr, &green, nullptr);
  EXPECT_EQ(green, 255);
}

}  // namespace
