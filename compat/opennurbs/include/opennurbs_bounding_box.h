#ifndef BRINDLE_COMPAT_OPENNURBS_BOUNDING_BOX_H
#define BRINDLE_COMPAT_OPENNURBS_BOUNDING_BOX_H

// Axis-aligned boxes. The default box is the empty box ((1,0,0),(-1,0,0)), which is invalid.

#include "opennurbs_point.h"

class ON_CLASS ON_BoundingBox {
 public:
  static const ON_BoundingBox EmptyBoundingBox;
  static const ON_BoundingBox UnsetBoundingBox;
  static const ON_BoundingBox NanBoundingBox;

  ON_3dPoint m_min;
  ON_3dPoint m_max;

  ON_BoundingBox() noexcept;
  ~ON_BoundingBox() = default;
  ON_BoundingBox(const ON_BoundingBox&) = default;
  ON_BoundingBox& operator=(const ON_BoundingBox&) = default;
  explicit ON_BoundingBox(const ON_3dPoint& min_pt, const ON_3dPoint& max_pt);

  void Destroy();
  ON_3dPoint Min() const;
  ON_3dPoint Max() const;
  ON_3dVector Diagonal() const;
  ON_3dPoint Center() const;
  bool IsValid() const;
  bool IsEmpty() const;
  bool IsNotEmpty() const;
};

#endif
