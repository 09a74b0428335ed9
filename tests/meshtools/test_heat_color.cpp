#include <gtest/gtest.h>

#include <limits>

#include "brindle.h"

namespace {

void ExpectRgb(double t, int red, int green, int blue) {
  int rgb[3] = {-1, -1, -1};
  HeatColor(t, &rgb[0], &rgb[1], &rgb[2]);
  EXPECT_EQ(rgb[0], red) << "t = " << t;
  EXPECT_EQ(rgb[1], green) << "t = " << t;
  EXPECT_EQ(rgb[2], blue) << "t = " << t;
}

TEST(HeatColor, RampKnotsWithTruncatedPowerBrightening) {
  // 146 is the truncation of 0.5^0.8 * 255; 202 that of 0.75^0.8 * 255.
  ExpectRgb(0.0, 0, 0, 146);
  ExpectRgb(0.0625, 0, 0, 202);
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
  ExpectRgb(7.0, 146, 0, 0);
  int green = -1;
  HeatColor(0.5, nullptr, &green, nullptr);  // null channels are skipped
  EXPECT_EQ(green, 255);
}

}  // namespace
