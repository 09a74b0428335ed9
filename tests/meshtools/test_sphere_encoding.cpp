#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "brindle.h"

namespace {

struct Vec {
  float x, y, z;
};

Vec Encode(int value, int expectedStatus = 0) {
  Vec v{9.0f, 9.0f, 9.0f};
  EXPECT_EQ(encode_integer_to_sphere(value, &v.x, &v.y, &v.z), expectedStatus) << value;
  return v;
}

TEST(SphereEncoding, EncodesBytesAsCapCoordinates) {
  const struct {
    int value;
    float x, y, z;
  } table[] = {{0, -0.5f, -0.5f, 0.70710677f},
               {-1, 0.5f, 0.5f, 0.70710677f},
               {1, -0.49607846f, -0.5f, 0.7098635f},
               {65534, 0.49607846f, 0.5f, 0.7098635f}};
  for (const auto& row : table) {
    const Vec v = Encode(row.value);
    // Exact: the values are the single-precision results, not approximations.
    EXPECT_EQ(v.x, row.x) << row.value;
    EXPECT_EQ(v.y, row.y) << row.value;
    EXPECT_EQ(v.z, row.z) << row.value;
  }
}

TEST(SphereEncoding, RejectsOutOfRangeAndNullOutputs) {
  for (int value : {65535, -2, 1 << 20, std::numeric_limits<int>::min()}) {
    const Vec v = Encode(value, -1);
    EXPECT_EQ(v.x, 0.0f);
    EXPECT_EQ(v.y, 0.0f);
    EXPECT_EQ(v.z, 0.0f);
  }
  float x = 9.0f, y = 9.0f;
  EXPECT_EQ(encode_integer_to_sphere(5, &x, &y, nullptr), -1);
  EXPECT_EQ(encode_integer_to_sphere(70000, nullptr, &y, &x), -1);
  EXPECT_EQ(x, 9.0f);
  EXPECT_EQ(y, 9.0f);
}

TEST(SphereEncoding, DecodesWithUnsignedByteClamp) {
  EXPECT_EQ(decode_integer_from_sphere(0.0f, 0.0f, 1.0f), 32896);
  // Too large and too small both clamp the low byte to 255.
  EXPECT_EQ(decode_integer_from_sphere(0.6f, 0.0f, 1.0f), 33023);
  EXPECT_EQ(decode_integer_from_sphere(-0.6f, 0.0f, 1.0f), 33023);
  EXPECT_EQ(decode_integer_from_sphere(0.51f, 0.51f, 0.5f), -1);
  // Just below -128/255 truncates to 0, at or below -129/255 wraps to 255.
  EXPECT_EQ(decode_integer_from_sphere(-0.5f, -0.5f, 1.0f), 0);
  EXPECT_EQ(decode_integer_from_sphere(-0.51f, -0.5f, 1.0f), 255);
  const float nan = std::numeric_limits<float>::quiet_NaN();
  EXPECT_EQ(decode_integer_from_sphere(nan, -0.5f, 1.0f), 255);
  EXPECT_EQ(decode_integer_from_sphere(1e30f, -1e30f, 1.0f), -1);
}

TEST(SphereEncoding, NegativeZFlipsOnlyWhenStrictlyNegative) {
  // z = -0.0 and NaN do not flip; the low byte of (-0.5, -0.5) is 0 either way, so use x = 0.2.
  const int upper = decode_integer_from_sphere(0.2f, -0.3f, 1.0f);
  EXPECT_EQ(decode_integer_from_sphere(0.2f, -0.3f, -0.0f), upper);
  EXPECT_EQ(decode_integer_from_sphere(0.2f, -0.3f, std::numeric_limits<float>::quiet_NaN()),
            upper);
  EXPECT_EQ(decode_integer_from_sphere(-0.2f, 0.3f, -1.0f), upper);
}

TEST(SphereEncoding, EveryCodeRoundTripsAlsoNegated) {
  for (int value = -1; value <= 65534; ++value) {
    float x, y, z;
    ASSERT_EQ(encode_integer_to_sphere(value, &x, &y, &z), 0);
    ASSERT_EQ(decode_integer_from_sphere(x, y, z), value);
    ASSERT_EQ(decode_integer_from_sphere(-x, -y, -z), value);
    // Never on the equator: the lowest point is a corner of the byte square.
    ASSERT_GE(z, 0.70710677f);
    ASSERT_LE(z, 1.0f);
  }
}

}  // namespace
