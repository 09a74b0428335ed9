#ifndef BRINDLE_COMPAT_OPENNURBS_POINT_INLINE_H
#define BRINDLE_COMPAT_OPENNURBS_POINT_INLINE_H

// The constructors and the arithmetic used in every mesh loop, kept inline so that they cost
// no call. Included at the end of opennurbs_point.h, once all four types are complete.

inline ON_3dPoint::ON_3dPoint(double xx, double yy, double zz) : x(xx), y(yy), z(zz) {}

inline ON_3dPoint::ON_3dPoint(const ON_3dVector& v) : x(v.x), y(v.y), z(v.z) {}

inline ON_3dPoint::ON_3dPoint(const ON_3fPoint& p) : x(p.x), y(p.y), z(p.z) {}

inline ON_3dPoint::ON_3dPoint(const ON_3fVector& v) : x(v.x), y(v.y), z(v.z) {}

inline ON_3dPoint::ON_3dPoint(const double* p) {
  if (p != nullptr) {
    x = p[0];
    y = p[1];
    z = p[2];
  } else {
    x = y = z = 0.0;
  }
}

inline ON_3dPoint::ON_3dPoint(const float* p) {
  if (p != nullptr) {
    x = p[0];
    y = p[1];
    z = p[2];
  } else {
    x = y = z = 0.0;
  }
}

inline ON_3dVector::ON_3dVector(double xx, double yy, double zz) : x(xx), y(yy), z(zz) {}

inline ON_3dVector::ON_3dVector(const ON_3dPoint& p) : x(p.x), y(p.y), z(p.z) {}

inline ON_3dVector::ON_3dVector(const ON_3fVector& v) : x(v.x), y(v.y), z(v.z) {}

inline ON_3dVector::ON_3dVector(const ON_3fPoint& p) : x(p.x), y(p.y), z(p.z) {}

inline ON_3dVector::ON_3dVector(const double* v) {
  if (v != nullptr) {
    x = v[0];
    y = v[1];
    z = v[2];
  } else {
    x = y = z = 0.0;
  }
}

inline ON_3dVector::ON_3dVector(const float* v) {
  if (v != nullptr) {
    x = v[0];
    y = v[1];
    z = v[2];
  } else {
    x = y = z = 0.0;
  }
}

inline ON_3fPoint::ON_3fPoint(float xx, float yy, float zz) : x(xx), y(yy), z(zz) {}

inline ON_3fPoint::ON_3fPoint(const ON_3dPoint& p)
    : x(static_cast<float>(p.x)), y(static_cast<float>(p.y)), z(static_cast<float>(p.z)) {}
inline ON_3fPoint::ON_3fPoint(const ON_3fVector& v) : x(v.x), y(v.y), z(v.z) {}
inline ON_3fPoint::ON_3fPoint(const ON_3dVector& v)
    : x(static_cast<float>(v.x)), y(static_cast<float>(v.y)), z(static_cast<float>(v.z)) {}
inline ON_3fPoint::ON_3fPoint(const float* p) {
  if (p != nullptr) {
    x = p[0];
    y = p[1];
    z = p[2];
  } else {
    x = y = z = 0.0f;
  }
}

inline ON_3fPoint::ON_3fPoint(const double* p) {
  if (p != nullptr) {
    x = static_cast<float>(p[0]);
    y = static_cast<float>(p[1]);
    z = static_cast<float>(p[2]);
  } else {
    x = y = z = 0.0f;
  }
}

inline ON_3fVector::ON_3fVector(float xx, float yy, float zz) : x(xx), y(yy), z(zz) {}

inline ON_3fVector::ON_3fVector(const ON_3fPoint& p) : x(p.x), y(p.y), z(p.z) {}

inline ON_3fVector::ON_3fVector(const float* v) {
  if (v != nullptr) {
    x = v[0];
    y = v[1];
    z = v[2];
  } else {
    x = y = z = 0.0f;
  }
}

inline ON_3fVector::ON_3fVector(const ON_3dPoint& p)
    : x(static_cast<float>(p.x)), y(static_cast<float>(p.y)), z(static_cast<float>(p.z)) {}
inline ON_3fVector::ON_3fVector(const ON_3dVector& v)
    : x(static_cast<float>(v.x)), y(static_cast<float>(v.y)), z(static_cast<float>(v.z)) {}
inline ON_3fVector::ON_3fVector(const double* v) {
  if (v != nullptr) {
    x = static_cast<float>(v[0]);
    y = static_cast<float>(v[1]);
    z = static_cast<float>(v[2]);
  } else {
    x = y = z = 0.0f;
  }
}

inline ON_3dPoint ON_3dPoint::operator+(const ON_3dPoint& p) const {
  return ON_3dPoint(x + p.x, y + p.y, z + p.z);
}

inline ON_3dPoint ON_3dPoint::operator+(const ON_3dVector& v) const {
  return ON_3dPoint(x + v.x, y + v.y, z + v.z);
}

inline ON_3dVector ON_3dPoint::operator-(const ON_3dPoint& p) const {
  return ON_3dVector(x - p.x, y - p.y, z - p.z);
}

inline ON_3dPoint ON_3dPoint::operator-(const ON_3dVector& v) const {
  return ON_3dPoint(x - v.x, y - v.y, z - v.z);
}

inline ON_3dPoint ON_3dPoint::operator*(double s) const {
  return ON_3dPoint(x * s, y * s, z * s);
}

inline double ON_3dPoint::operator*(const ON_3dVector& v) const {
  return x * v.x + y * v.y + z * v.z;
}

inline ON_3dVector ON_3dVector::operator-() const {
  return ON_3dVector(-x, -y, -z);
}

inline double ON_3dVector::operator*(const ON_3dVector& v) const {
  return x * v.x + y * v.y + z * v.z;
}

inline ON_3dVector ON_3dVector::operator*(double s) const {
  return ON_3dVector(x * s, y * s, z * s);
}

inline ON_3dVector ON_3dVector::operator+(const ON_3dVector& v) const {
  return ON_3dVector(x + v.x, y + v.y, z + v.z);
}

inline ON_3dVector ON_3dVector::operator-(const ON_3dVector& v) const {
  return ON_3dVector(x - v.x, y - v.y, z - v.z);
}

inline ON_3dPoint ON_3dVector::operator+(const ON_3dPoint& p) const {
  return ON_3dPoint(x + p.x, y + p.y, z + p.z);
}

inline ON_3fVector ON_3fPoint::operator-(const ON_3fPoint& p) const {
  return ON_3fVector(x - p.x, y - p.y, z - p.z);
}

inline ON_3fPoint ON_3fPoint::operator+(const ON_3fVector& v) const {
  return ON_3fPoint(x + v.x, y + v.y, z + v.z);
}

inline ON_3fVector ON_3fVector::operator+(const ON_3fVector& v) const {
  return ON_3fVector(x + v.x, y + v.y, z + v.z);
}

inline ON_3fVector ON_3fVector::operator-(const ON_3fVector& v) const {
  return ON_3fVector(x - v.x, y - v.y, z - v.z);
}

inline ON_3dPoint operator*(double s, const ON_3dPoint& p) {
  return p * s;
}

inline ON_3dVector operator*(double s, const ON_3dVector& v) {
  return v * s;
}

inline double ON_DotProduct(const ON_3dVector& a, const ON_3dVector& b) {
  return a.x * b.x + a.y * b.y + a.z * b.z;
}

inline ON_3dVector ON_CrossProduct(const ON_3dVector& a, const ON_3dVector& b) {
  return ON_3dVector(a.y * b.z - b.y * a.z, a.z * b.x - b.z * a.x, a.x * b.y - b.x * a.y);
}

inline float ON_DotProduct(const ON_3fVector& a, const ON_3fVector& b) {
  return a.x * b.x + a.y * b.y + a.z * b.z;
}

inline ON_3fVector ON_CrossProduct(const ON_3fVector& a, const ON_3fVector& b) {
  return ON_3fVector(a.y * b.z - b.y * a.z, a.z * b.x - b.z * a.x, a.x * b.y - b.x * a.y);
}

#endif
