#include "opennurbs.h"

ON_3dPointArray::ON_3dPointArray() = default;
ON_3dPointArray::ON_3dPointArray(int initial_capacity)
    : ON_SimpleArray<ON_3dPoint>(initial_capacity > 0 ? static_cast<size_t>(initial_capacity) : 0) {
}
ON_3dPointArray::ON_3dPointArray(const ON_SimpleArray<ON_3dPoint>& src)
    : ON_SimpleArray<ON_3dPoint>(src) {}
ON_3dPointArray::ON_3dPointArray(const ON_SimpleArray<ON_3fPoint>& src) {
  *this = src;
}
ON_3dPointArray& ON_3dPointArray::operator=(const ON_3dPointArray& src) {
  ON_SimpleArray<ON_3dPoint>::operator=(src);
  return *this;
}
ON_3dPointArray& ON_3dPointArray::operator=(const ON_SimpleArray<ON_3fPoint>& src) {
  m_count = 0;
  Reserve(static_cast<size_t>(src.Count()));
  for (int i = 0; i < src.Count(); i++)
    Append(ON_3dPoint(src[i]));
  return *this;
}

ON_3fPointArray::ON_3fPointArray() = default;
ON_3fPointArray::ON_3fPointArray(int initial_capacity)
    : ON_SimpleArray<ON_3fPoint>(initial_capacity > 0 ? static_cast<size_t>(initial_capacity) : 0) {
}
ON_3fPointArray::ON_3fPointArray(const ON_3fPointArray& src) : ON_SimpleArray<ON_3fPoint>(src) {}
ON_3fPointArray& ON_3fPointArray::operator=(const ON_3fPointArray& src) {
  ON_SimpleArray<ON_3fPoint>::operator=(src);
  return *this;
}

ON_3fVectorArray::ON_3fVectorArray() = default;
ON_3fVectorArray::ON_3fVectorArray(int initial_capacity)
    : ON_SimpleArray<ON_3fVector>(initial_capacity > 0 ? static_cast<size_t>(initial_capacity)
                                                       : 0) {}
ON_3fVectorArray::ON_3fVectorArray(const ON_3fVectorArray& src)
    : ON_SimpleArray<ON_3fVector>(src) {}
ON_3fVectorArray& ON_3fVectorArray::operator=(const ON_3fVectorArray& src) {
  ON_SimpleArray<ON_3fVector>::operator=(src);
  return *this;
}

ON_2fPointArray::ON_2fPointArray() = default;
ON_2fPointArray::ON_2fPointArray(int initial_capacity)
    : ON_SimpleArray<ON_2fPoint>(initial_capacity > 0 ? static_cast<size_t>(initial_capacity) : 0) {
}
ON_2fPointArray::ON_2fPointArray(const ON_2fPointArray& src) : ON_SimpleArray<ON_2fPoint>(src) {}
ON_2fPointArray& ON_2fPointArray::operator=(const ON_2fPointArray& src) {
  ON_SimpleArray<ON_2fPoint>::operator=(src);
  return *this;
}

ON_2dPointArray::ON_2dPointArray() = default;
ON_2dPointArray::ON_2dPointArray(int initial_capacity)
    : ON_SimpleArray<ON_2dPoint>(initial_capacity > 0 ? static_cast<size_t>(initial_capacity) : 0) {
}
ON_2dPointArray::ON_2dPointArray(const ON_2dPointArray& src) : ON_SimpleArray<ON_2dPoint>(src) {}
ON_2dPointArray& ON_2dPointArray::operator=(const ON_2dPointArray& src) {
  ON_SimpleArray<ON_2dPoint>::operator=(src);
  return *this;
}
