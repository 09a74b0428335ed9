// Integers 0..65534 (and the marker -1) stored as unit vectors, so that a per-face or
// per-vertex normal array can carry small integer tags through file formats that keep only
// normals. The two bytes of the integer become the x and y coordinates on the upper cap of
// the unit sphere; decoding also accepts the negated vector, since normals may be flipped.
#include <cmath>
#include <cstdint>
#include <cstring>

#include "brindle.h"

namespace {

float FloatFromBits(std::uint32_t bits) {
  float value;
  std::memcpy(&value, &bits, sizeof value);
  return value;
}

// 1/255 and its square as single-precision constants; their bit patterns fix every code.
const float kByteScale = FloatFromBits(0x3B808081u);         // 0.003921569
const float kByteScaleSquared = FloatFromBits(0x37810183u);  // 1.5378702e-5

constexpr int kMarkerCode = 0xFFFF;  // -1 travels as both bytes 255

// Truncates toward zero and clamps as an unsigned byte: anything outside [0, 256) after
// truncation, negatives and NaN included, becomes 255. Testing the float range first keeps
// the conversion to int defined for every input.
unsigned int ClampedByte(float value) {
  if (value > -1.0f && value < 256.0f) return static_cast<unsigned int>(static_cast<int>(value));
  return 255u;
}

}  // namespace

int encode_integer_to_sphere(int value, float* x, float* y, float* z) {
  if (!x || !y || !z) return -1;
  if (value < -1 || value > 65534) {
    *z = 0.0f;
    *y = 0.0f;
    *x = 0.0f;
    return -1;
  }
  const int code = value == -1 ? kMarkerCode : value;
  const int lo = code & 0xFF;
  const int hi = (code >> 8) & 0xFF;
  const float a = static_cast<float>(lo) - 127.5f;
  const float b = static_cast<float>(hi) - 127.5f;
  *x = a * kByteScale;
  *y = b * kByteScale;
  const float loTerm = a * a * kByteScaleSquared;
  const float hiTerm = b * b * kByteScaleSquared;
  *z = std::sqrt(1.0f - loTerm - hiTerm);
  return 0;
}

int decode_integer_from_sphere(float x, float y, float z) {
  if (z < 0.0f) {
    x = -x;
    y = -y;
  }
  // Adding 128 = 127.5 + 0.5 before truncating rounds to the nearest byte.
  const unsigned int lo = ClampedByte(std::fma(x, 255.0f, 128.0f));
  const unsigned int hi = ClampedByte(std::fma(y, 255.0f, 128.0f));
  const int code = static_cast<int>((hi << 8) | lo);
  return code == kMarkerCode ? -1 : code;
}
