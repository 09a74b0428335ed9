#include <gtest/gtest.h>

#include <limits>

#include "brindle.h"

namespace {

TEST(SphereEncoding, EncodesInSinglePrecisionAndRejectsOutOfRange) {
  const struct {
    int value;
    float x, y, z;
  } table[] = {{0, -0.5f, -0.5f, 0.70710677f},
               {-1, 0.5f, 0.5f, 0.70710677f},
               {1, -0.49607846f, -0.5f, 0.7098635f},
               {65534, 0.49607846f, 0.5f, 0.7098635f},
               {65535, 0.0f, 0.0f, 0.0f},
               {-2, 0.0f, 0.0f, 0.0f}};
  for (const auto& row : table) {
    float x = 9, y = 9, z = 9;
    EXPECT_EQ(encode_integer_to_sphere(row.value, &x, &y, &z), row.z == 0.0f ? -1 : 0);
    EXPECT_EQ(x, row.x) << row.value;  // exact single-precision results
    EXPECT_EQ(y, row.y) << row.value;
    EXPECT_EQ(z, row.z) << row.value;
  }
  float x = 9, y = 9;
  EXPECT_EQ(encode_integer_to_sphere(70000, &x, &y, nullptr), -1);
  EXPECT_EQ(x, 9.0f);  // nothing written with a null output
}

TEST(SphereEncoding, DecodesWithUnsignedByteClamp) {
  EXPECT_EQ(decode_integer_from_sphere(0.0f, 0.0f, 1.0f), 32896);
  // Too large and too small both clamp the low byte to 255...
  EXPECT_EQ(decode_integer_from_sphere(0.6f, 0.0f, 1.0f), 33023);
  EXPECT_EQ(decode_integer_from_sphere(-0.6f, 0.0f, 1.0f), 33023);
  EXPECT_EQ(decode_integer_from_sphere(std::numeric_limits<float>::quiet_NaN(), -0.5f, 1.0f), 255);
  // ...while a value above -1 before truncation still gives 0.
  EXPECT_EQ(decode_integer_from_sphere(-0.5f, -0.5f, 1.0f), 0);
  EXPECT_EQ(decode_integer_from_sphere(0.51f, 0.51f, 0.5f), -1);
  // Only a strictly negative z flips the vector.
  const int upper = decode_integer_from_sphere(0.2f, -0.3f, 1.0f);
  EXPECT_EQ(decode_integer_from_sphere(0.2f, -0.3f, -0.0f), upper);
  EXPECT_EQ(decode_integer_from_sphere(-0.2f, 0.3f, -1.0f), upper);
}

TEST(SphereEncoding, EveryCodeRoundTripsAlsoNegated) {
  for (int value = -1; value <= 65534; ++value) {
    float x, y, z;
    ASSERT_EQ(encode_integer_to_sphere(value, &x, &y, &z), 0);
    ASSERT_EQ(decode_integer_from_sphere(x, y, z), value);
    ASSERT_EQ(decode_integer_from_sphere(-x, -y, -z), value);
    ASSERT_GE(z, 0.70710677f);  // never near the equator
  }
}

}  // namespace
