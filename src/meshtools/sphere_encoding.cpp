#include "meshtools/sphere_encoding.h"

#include <cmath>
#include <cstdint>
#include <cstring>

namespace brindle {
namespace {

float FloatFromBits(std::uint32_t bits) {
  float value;
  std::memcpy(&value, &bits, sizeof value);
  return value;
}

// 1/255 and its square as single-precision constants; their bit patterns fix every code.
const float kByteScale = FloatFromBits(0x3B808081u);         // 0.003921569
const float kByteScaleSquared = FloatFromBits(0x37810183u);  // 1.5378702e-5

constexpr int kMarkerCode = 0xFFFF;  // kSphereMarkerValue travels as both bytes 255

// Truncates toward zero and clamps as an unsigned byte: anything outside [0, 256) after
// truncation, negatives and NaN included, becomes 255. Testing the float range first keeps
// the conversion to int defined for every input.
unsigned int ClampedByte(float value) {
  if (value > -1.0f && value < 256.0f) return static_cast<unsigned int>(static_cast<int>(value));
  return 255u;
}

}  // namespace

bool IsSphereEncodable(int value) {
  return value >= kSphereMarkerValue && value <= kSphereLargestValue;
}

void EncodeIntegerToSphere(int value, float& x, float& y, float& z) {
  const int code = value == kSphereMarkerValue ? kMarkerCode : value;
  const int lo = code & 0xFF;
  const int hi = (code >> 8) & 0xFF;
  const float a = static_cast<float>(lo) - 127.5f;
  const float b = static_cast<float>(hi) - 127.5f;
  x = a * kByteScale;
  y = b * kByteScale;
  const float loTerm = a * a * kByteScaleSquared;
  const float hiTerm = b * b * kByteScaleSquared;
  z = std::sqrt(1.0f - loTerm - hiTerm);
}

int DecodeIntegerFromSphere(float x, float y, float z) {
  if (z < 0.0f) {
    x = -x;
    y = -y;
  }
  // Adding 128 = 127.5 + 0.5 before truncating rounds to the nearest byte.
  const unsigned int lo = ClampedByte(std::fma(x, 255.0f, 128.0f));
  const unsigned int hi = ClampedByte(std::fma(y, 255.0f, 128.0f));
  const int code = static_cast<int>((hi << 8) | lo);
  return code == kMarkerCode ? kSphereMarkerValue : code;
}

}  // namespace brindle
