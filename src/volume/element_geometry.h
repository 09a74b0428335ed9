// Geometry of one linear tetrahedron: six times its volume and, per corner, the signed height
// over the opposite face and the gradient of that corner's shape function.
#ifndef BRINDLE_VOLUME_ELEMENT_GEOMETRY_H
#define BRINDLE_VOLUME_ELEMENT_GEOMETRY_H

#include <cmath>

namespace brindle {

struct Vec3 {
  double x, y, z;
};

inline Vec3 operator-(const Vec3& a, const Vec3& b) {
  return {a.x - b.x, a.y - b.y, a.z - b.z};
}
inline double Dot(const Vec3& a, const Vec3& b) {
  return a.x * b.x + a.y * b.y + a.z * b.z;
}
inline Vec3 Cross(const Vec3& a, const Vec3& b) {
  return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

// |(P0 - P3) . ((P1 - P3) x (P2 - P3))|
inline double SixTimesVolume(const Vec3& p0, const Vec3& p1, const Vec3& p2, const Vec3& p3) {
  return std::fabs(Dot(p0 - p3, Cross(p1 - p3, p2 - p3)));
}

// Normals shorter than this have no usable direction; the height then falls back to it.
constexpr double kShortestFaceNormal = 1e-20;

struct ApexGradient {
  double height;  // signed distance of the apex from the plane of the face
  Vec3 gradient;  // n / (|n| h)
};

// Corner `apex` over the face (a, b, c) with normal n = (a - c) x (b - c).
inline ApexGradient GradientAtApex(const Vec3& apex, const Vec3& a, const Vec3& b, const Vec3& c) {
  const Vec3 n = Cross(a - c, b - c);
  const double length = std::sqrt(Dot(n, n));
  double height = kShortestFaceNormal;
  if (length >= kShortestFaceNormal) {
    const Vec3 unit{n.x / length, n.y / length, n.z / length};
    height = Dot(unit, apex - c);
  }
  const double scale = length * height;
  return {height, {n.x / scale, n.y / scale, n.z / scale}};
}

// The sliver test: a NaN height fails as well.
inline bool IsThickEnough(double height, double tolerance) {
  return std::fabs(height) >= tolerance;
}

}  // namespace brindle

#endif
