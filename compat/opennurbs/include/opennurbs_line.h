#ifndef BRINDLE_COMPAT_OPENNURBS_LINE_H
#define BRINDLE_COMPAT_OPENNURBS_LINE_H

// A line segment between two points.

#include "opennurbs_point.h"

class ON_CLASS ON_Line {
 public:
  ON_3dPoint from;
  ON_3dPoint to;

  ON_Line();
  ~ON_Line();
  explicit ON_Line(ON_3dPoint start, ON_3dPoint end);
  explicit ON_Line(ON_2dPoint start, ON_2dPoint end);

  ON_3dPoint& operator[](int i);
  const ON_3dPoint& operator[](int i) const;

  bool IsValid() const;
  double Length() const;
  ON_3dVector Direction() const;
};

#endif
