#include "quality.h"

#include <cmath>

namespace mmgcompat {

double SixVolume(const double* a, const double* b, const double* c, const double* d) {
  const double abx = b[0] - a[0], aby = b[1] - a[1], abz = b[2] - a[2];
  const double acx = c[0] - a[0], acy = c[1] - a[1], acz = c[2] - a[2];
  const double adx = d[0] - a[0], ady = d[1] - a[1], adz = d[2] - a[2];
  return abx * (acy * adz - acz * ady) + aby * (acz * adx - acx * adz) +
         abz * (acx * ady - acy * adx);
}

double UnscaledTetQuality(const double* a, const double* b, const double* c, const double* d) {
  // Squared lengths are summed in the order ab, ac, ad, bc, bd, cd.
  double sum = 0.0;
  auto add_squared = [&sum](const double* p, const double* q) {
    const double x = q[0] - p[0], y = q[1] - p[1], z = q[2] - p[2];
    sum += x * x + y * y + z * z;
  };
  add_squared(a, b);
  add_squared(a, c);
  add_squared(a, d);
  const double volume = SixVolume(a, b, c, d);
  if (volume < kNullMeasure) return 0.0;
  add_squared(b, c);
  add_squared(b, d);
  add_squared(c, d);
  if (sum < kNullMeasure) return 0.0;
  return volume / (sum * std::sqrt(sum));
}

double UnscaledTriQuality(const double* a, const double* b, const double* c) {
  const double abx = b[0] - a[0], aby = b[1] - a[1], abz = b[2] - a[2];
  const double acx = c[0] - a[0], acy = c[1] - a[1], acz = c[2] - a[2];
  const double bcx = c[0] - b[0], bcy = c[1] - b[1], bcz = c[2] - b[2];
  const double nx = aby * acz - abz * acy;
  const double ny = abz * acx - abx * acz;
  const double nz = abx * acy - aby * acx;
  const double cross_squared = nx * nx + ny * ny + nz * nz;
  if (cross_squared < kNullMeasure) return 0.0;
  double sum = abx * abx + aby * aby + abz * abz;
  sum += acx * acx + acy * acy + acz * acz;
  sum += bcx * bcx + bcy * bcy + bcz * bcz;
  if (sum < kNullMeasure) return 0.0;
  return std::sqrt(cross_squared) / sum;
}

}  // namespace mmgcompat
