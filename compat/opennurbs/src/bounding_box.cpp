#include <limits>

#include "opennurbs.h"

const ON_BoundingBox ON_BoundingBox::EmptyBoundingBox;
// Spelled out rather than copied from the point constants, whose initialisation order across
// files is unspecified.
const ON_BoundingBox ON_BoundingBox::UnsetBoundingBox(ON_3dPoint(ON_UNSET_VALUE, ON_UNSET_VALUE,
                                                                 ON_UNSET_VALUE),
                                                      ON_3dPoint(ON_UNSET_VALUE, ON_UNSET_VALUE,
                                                                 ON_UNSET_VALUE));
const ON_BoundingBox ON_BoundingBox::NanBoundingBox(
    ON_3dPoint(std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::quiet_NaN(),
               std::numeric_limits<double>::quiet_NaN()),
    ON_3dPoint(std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::quiet_NaN(),
               std::numeric_limits<double>::quiet_NaN()));

ON_BoundingBox::ON_BoundingBox() noexcept : m_min(1.0, 0.0, 0.0), m_max(-1.0, 0.0, 0.0) {}
ON_BoundingBox::ON_BoundingBox(const ON_3dPoint& min_pt, const ON_3dPoint& max_pt)
    : m_min(min_pt), m_max(max_pt) {}

void ON_BoundingBox::Destroy() {
  *this = EmptyBoundingBox;
}
ON_3dPoint ON_BoundingBox::Min() const {
  return m_min;
}
ON_3dPoint ON_BoundingBox::Max() const {
  return m_max;
}
ON_3dVector ON_BoundingBox::Diagonal() const {
  return m_max - m_min;
}
ON_3dPoint ON_BoundingBox::Center() const {
  return 0.5 * (m_max + m_min);
}

bool ON_BoundingBox::IsNotEmpty() const {
  return m_min.x <= m_max.x && m_min.y <= m_max.y && m_min.z <= m_max.z && m_min.IsValid() &&
         m_max.IsValid();
}

bool ON_BoundingBox::IsValid() const {
  return IsNotEmpty();
}

bool ON_BoundingBox::IsEmpty() const {
  return (m_min.x > m_max.x || m_min.y > m_max.y || m_min.z > m_max.z) && m_min.IsValid() &&
         m_max.IsValid();
}
