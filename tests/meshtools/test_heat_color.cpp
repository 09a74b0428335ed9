#include <gtest/gtest.h>

#include <limits>

#include "brindle.h"

namespace {

TEST(HeatColor, RampKnotsClampAndNotANumber) {
  // 146 is the truncation of 0.5^0.8 * 255; 202 that of 0.75^0.8 * 255.
  const struct {
    double t;
    int rgb[3];
  } table[] = {{0.0, {0, 0, 146}},
               {0.0625, {0, 0, 202}},
               {0.125, {0, 0, 255}},
               {0.25, {0, 146, 255}},
               {0.375, {0, 255, 255}},
               {0.5, {146, 255, 146}},
               {0.625, {255, 255, 0}},
               {0.75, {255, 146, 0}},
               {0.875, {255, 0, 0}},
               {1.0, {146, 0, 0}},
               {-3.0, {0, 0, 146}},
               {7.0, {146, 0, 0}},
               {std::numeric_limits<double>::quiet_NaN(), {0, 0, 146}}};
  for (const auto& row : table) {
    int rgb[3] = {-1, -1, -1};
    HeatColor(row.t, &rgb[0], &rgb[1], &rgb[2]);
    for (int c = 0; c < 3; ++c)
      EXPECT_EQ(rgb[c], row.rgb[c]) << "t = " << row.t << " channel " << c;
  }
  int green = -1;
  HeatColor(0.5, nullptr, &green, nullptr);  // null channels are skipped
  EXPECT_EQ(green, 255);
}

}  // namespace
