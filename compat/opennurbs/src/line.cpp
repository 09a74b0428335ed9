#include <cmath>

#include "opennurbs.h"

ON_Line::ON_Line() : from(ON_3dPoint::Origin), to(ON_3dPoint::Origin) {}
ON_Line::~ON_Line() = default;
ON_Line::ON_Line(ON_3dPoint start, ON_3dPoint end) : from(start), to(end) {}
ON_Line::ON_Line(ON_2dPoint start, ON_2dPoint end)
    : from(start.x, start.y, 0.0), to(end.x, end.y, 0.0) {}

ON_3dPoint& ON_Line::operator[](int i) {
  return (i <= 0) ? from : to;
}
const ON_3dPoint& ON_Line::operator[](int i) const {
  return (i <= 0) ? from : to;
}

// Distinct end points with coordinates safely inside the representable range.
bool ON_Line::IsValid() const {
  if (from == to) return false;
  const double limit = 1.0e307;
  for (int i = 0; i < 3; i++) {
    if (!(std::fabs(from[i]) < limit) || !(std::fabs(to[i]) < limit)) return false;
  }
  return true;
}

double ON_Line::Length() const {
  return from.DistanceTo(to);
}

// Unset end points give the unset vector, any other invalid x coordinate the NaN vector.
ON_3dVector ON_Line::Direction() const {
  if (ON_IS_VALID(from.x) && ON_IS_VALID(to.x)) return to - from;
  if (from == ON_3dPoint::UnsetPoint && to == ON_3dPoint::UnsetPoint)
    return ON_3dVector::UnsetVector;
  return ON_3dVector::NanVector;
}
