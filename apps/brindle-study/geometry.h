// Small vector helpers on study points.
#ifndef BRINDLE_STUDY_GEOMETRY_H
#define BRINDLE_STUDY_GEOMETRY_H

#include <cmath>

#include "model.h"

namespace brindle::study {

inline Point operator-(const Point& a, const Point& b) {
  return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}
inline Point operator+(const Point& a, const Point& b) {
  return {a[0] + b[0], a[1] + b[1], a[2] + b[2]};
}
inline Point operator*(double s, const Point& a) {
  return {s * a[0], s * a[1], s * a[2]};
}
inline double Dot(const Point& a, const Point& b) {
  return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}
inline Point Cross(const Point& a, const Point& b) {
  return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}
inline double Norm(const Point& a) {
  return std::sqrt(Dot(a, a));
}

}  // namespace brindle::study

#endif
