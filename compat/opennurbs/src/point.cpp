#include <cmath>
#include <limits>

#include "opennurbs.h"

namespace {

const double kNan = std::numeric_limits<double>::quiet_NaN();

// Overflow-safe length: scale by the largest magnitude first. A NaN that ends up as the
// largest component gives 0, a NaN elsewhere propagates.
double Length3d(double x, double y, double z) {
  x = std::fabs(x);
  y = std::fabs(y);
  z = std::fabs(z);
  if (y >= x && y >= z) {
    const double t = x;
    x = y;
    y = t;
  } else if (z >= x && z >= y) {
    const double t = x;
    x = z;
    z = t;
  }
  if (x > ON_DBL_MIN) {
    y /= x;
    z /= x;
    return x * std::sqrt(1.0 + y * y + z * z);
  }
  if (x > 0.0 && std::isfinite(x)) return x;
  return 0.0;
}

int MaximumIndex(double x, double y, double z) {
  x = std::fabs(x);
  y = std::fabs(y);
  z = std::fabs(z);
  return (x >= y) ? ((x >= z) ? 0 : 2) : ((y >= z) ? 1 : 2);
}

double MaximumAbs(double x, double y, double z) {
  const int i = MaximumIndex(x, y, z);
  return std::fabs(i == 0 ? x : (i == 1 ? y : z));
}

// Out-of-range indices clamp to the nearest coordinate.
template <class Coord>
Coord& ClampedCoordinate(Coord& x, Coord& y, Coord& z, long long i) {
  return (i <= 0) ? x : ((i >= 2) ? z : y);
}

template <class P>
bool LexLess(const P& a, const P& b) {
  return (a.x == b.x) ? ((a.y == b.y) ? (a.z < b.z) : (a.y < b.y)) : (a.x < b.x);
}

}  // namespace

// ---------------------------------------------------------------------------------------
// 2-D points

ON_2dPoint::ON_2dPoint(double xx, double yy) : x(xx), y(yy) {}
ON_2fPoint::ON_2fPoint(float xx, float yy) : x(xx), y(yy) {}

// ---------------------------------------------------------------------------------------
// ON_3dPoint

const ON_3dPoint ON_3dPoint::Origin(0.0, 0.0, 0.0);
const ON_3dPoint ON_3dPoint::UnsetPoint(ON_UNSET_VALUE, ON_UNSET_VALUE, ON_UNSET_VALUE);
const ON_3dPoint ON_3dPoint::NanPoint(kNan, kNan, kNan);

ON_3dPoint::operator double*() {
  return &x;
}
ON_3dPoint::operator const double*() const {
  return &x;
}

ON_3dPoint& ON_3dPoint::operator=(const ON_3fPoint& p) {
  Set(p.x, p.y, p.z);
  return *this;
}
ON_3dPoint& ON_3dPoint::operator=(const ON_3dVector& v) {
  Set(v.x, v.y, v.z);
  return *this;
}
ON_3dPoint& ON_3dPoint::operator=(const ON_3fVector& v) {
  Set(v.x, v.y, v.z);
  return *this;
}

ON_3dPoint& ON_3dPoint::operator*=(double s) {
  x *= s;
  y *= s;
  z *= s;
  return *this;
}
ON_3dPoint& ON_3dPoint::operator/=(double s) {
  const double r = 1.0 / s;
  x *= r;
  y *= r;
  z *= r;
  return *this;
}
ON_3dPoint& ON_3dPoint::operator+=(const ON_3dVector& v) {
  x += v.x;
  y += v.y;
  z += v.z;
  return *this;
}
ON_3dPoint& ON_3dPoint::operator-=(const ON_3dVector& v) {
  x -= v.x;
  y -= v.y;
  z -= v.z;
  return *this;
}

ON_3dPoint ON_3dPoint::operator*(int s) const {
  return ON_3dPoint(x * s, y * s, z * s);
}
ON_3dPoint ON_3dPoint::operator*(float s) const {
  return ON_3dPoint(x * s, y * s, z * s);
}
ON_3dPoint ON_3dPoint::operator/(int s) const {
  return *this / static_cast<double>(s);
}
ON_3dPoint ON_3dPoint::operator/(float s) const {
  return *this / static_cast<double>(s);
}
ON_3dPoint ON_3dPoint::operator/(double s) const {
  const double r = 1.0 / s;
  return ON_3dPoint(x * r, y * r, z * r);
}

ON_3dPoint ON_3dPoint::operator+(const ON_3fPoint& p) const {
  return ON_3dPoint(x + p.x, y + p.y, z + p.z);
}
ON_3dPoint ON_3dPoint::operator+(const ON_3fVector& v) const {
  return ON_3dPoint(x + v.x, y + v.y, z + v.z);
}
ON_3dVector ON_3dPoint::operator-(const ON_3fPoint& p) const {
  return ON_3dVector(x - p.x, y - p.y, z - p.z);
}
ON_3dPoint ON_3dPoint::operator-(const ON_3fVector& v) const {
  return ON_3dPoint(x - v.x, y - v.y, z - v.z);
}

double ON_3dPoint::operator*(const ON_3dPoint& p) const {
  return x * p.x + y * p.y + z * p.z;
}

bool ON_3dPoint::operator==(const ON_3dPoint& p) const {
  return x == p.x && y == p.y && z == p.z;
}
bool ON_3dPoint::operator!=(const ON_3dPoint& p) const {
  return !(*this == p);
}
bool ON_3dPoint::operator<(const ON_3dPoint& p) const {
  return LexLess(*this, p);
}
bool ON_3dPoint::operator>(const ON_3dPoint& p) const {
  return LexLess(p, *this);
}
bool ON_3dPoint::operator<=(const ON_3dPoint& p) const {
  return !LexLess(p, *this);
}
bool ON_3dPoint::operator>=(const ON_3dPoint& p) const {
  return !LexLess(*this, p);
}

double& ON_3dPoint::operator[](int i) {
  return ClampedCoordinate(x, y, z, i);
}
double ON_3dPoint::operator[](int i) const {
  return (i <= 0) ? x : ((i >= 2) ? z : y);
}
double& ON_3dPoint::operator[](unsigned int i) {
  return ClampedCoordinate(x, y, z, i);
}
double ON_3dPoint::operator[](unsigned int i) const {
  return (i == 0) ? x : ((i >= 2) ? z : y);
}

bool ON_3dPoint::IsValid() const {
  return ON_IS_VALID(x) && ON_IS_VALID(y) && ON_IS_VALID(z);
}
bool ON_3dPoint::IsZero() const {
  return x == 0.0 && y == 0.0 && z == 0.0;
}
void ON_3dPoint::Set(double xx, double yy, double zz) {
  x = xx;
  y = yy;
  z = zz;
}
double ON_3dPoint::DistanceTo(const ON_3dPoint& p) const {
  return (p - *this).Length();
}
int ON_3dPoint::MaximumCoordinateIndex() const {
  return MaximumIndex(x, y, z);
}
double ON_3dPoint::MaximumCoordinate() const {
  return MaximumAbs(x, y, z);
}

ON_3dPoint operator*(int s, const ON_3dPoint& p) {
  return p * s;
}
ON_3dPoint operator*(float s, const ON_3dPoint& p) {
  return p * s;
}

// ---------------------------------------------------------------------------------------
// ON_3dVector

const ON_3dVector ON_3dVector::ZeroVector(0.0, 0.0, 0.0);
const ON_3dVector ON_3dVector::XAxis(1.0, 0.0, 0.0);
const ON_3dVector ON_3dVector::YAxis(0.0, 1.0, 0.0);
const ON_3dVector ON_3dVector::ZAxis(0.0, 0.0, 1.0);
const ON_3dVector ON_3dVector::UnsetVector(ON_UNSET_VALUE, ON_UNSET_VALUE, ON_UNSET_VALUE);
const ON_3dVector ON_3dVector::NanVector(kNan, kNan, kNan);

ON_3dVector::operator double*() {
  return &x;
}
ON_3dVector::operator const double*() const {
  return &x;
}

ON_3dVector& ON_3dVector::operator=(const ON_3dPoint& p) {
  Set(p.x, p.y, p.z);
  return *this;
}
ON_3dVector& ON_3dVector::operator=(const ON_3fVector& v) {
  Set(v.x, v.y, v.z);
  return *this;
}

ON_3dVector& ON_3dVector::operator*=(double s) {
  x *= s;
  y *= s;
  z *= s;
  return *this;
}
ON_3dVector& ON_3dVector::operator/=(double s) {
  const double r = 1.0 / s;
  x *= r;
  y *= r;
  z *= r;
  return *this;
}
ON_3dVector& ON_3dVector::operator+=(const ON_3dVector& v) {
  x += v.x;
  y += v.y;
  z += v.z;
  return *this;
}
ON_3dVector& ON_3dVector::operator-=(const ON_3dVector& v) {
  x -= v.x;
  y -= v.y;
  z -= v.z;
  return *this;
}

double ON_3dVector::operator*(const ON_3dPoint& p) const {
  return x * p.x + y * p.y + z * p.z;
}
double ON_3dVector::operator*(const ON_3fVector& v) const {
  return x * v.x + y * v.y + z * v.z;
}

ON_3dVector ON_3dVector::operator*(int s) const {
  return ON_3dVector(x * s, y * s, z * s);
}
ON_3dVector ON_3dVector::operator*(float s) const {
  return ON_3dVector(x * s, y * s, z * s);
}
ON_3dVector ON_3dVector::operator/(int s) const {
  return *this / static_cast<double>(s);
}
ON_3dVector ON_3dVector::operator/(float s) const {
  return *this / static_cast<double>(s);
}
ON_3dVector ON_3dVector::operator/(double s) const {
  const double r = 1.0 / s;
  return ON_3dVector(x * r, y * r, z * r);
}

ON_3dPoint ON_3dVector::operator-(const ON_3dPoint& p) const {
  return ON_3dPoint(x - p.x, y - p.y, z - p.z);
}
ON_3dVector ON_3dVector::operator+(const ON_3fVector& v) const {
  return ON_3dVector(x + v.x, y + v.y, z + v.z);
}
ON_3dVector ON_3dVector::operator-(const ON_3fVector& v) const {
  return ON_3dVector(x - v.x, y - v.y, z - v.z);
}

bool ON_3dVector::operator==(const ON_3dVector& v) const {
  return x == v.x && y == v.y && z == v.z;
}
bool ON_3dVector::operator!=(const ON_3dVector& v) const {
  return !(*this == v);
}

double& ON_3dVector::operator[](int i) {
  return ClampedCoordinate(x, y, z, i);
}
double ON_3dVector::operator[](int i) const {
  return (i <= 0) ? x : ((i >= 2) ? z : y);
}
double& ON_3dVector::operator[](unsigned int i) {
  return ClampedCoordinate(x, y, z, i);
}
double ON_3dVector::operator[](unsigned int i) const {
  return (i == 0) ? x : ((i >= 2) ? z : y);
}

bool ON_3dVector::IsValid() const {
  return ON_IS_VALID(x) && ON_IS_VALID(y) && ON_IS_VALID(z);
}
bool ON_3dVector::IsZero() const {
  return x == 0.0 && y == 0.0 && z == 0.0;
}
bool ON_3dVector::IsNotZero() const {
  return !IsZero() && IsValid();
}
bool ON_3dVector::IsTiny(double tiny_tol) const {
  return std::fabs(x) <= tiny_tol && std::fabs(y) <= tiny_tol && std::fabs(z) <= tiny_tol;
}
bool ON_3dVector::IsUnitVector() const {
  return x != ON_UNSET_VALUE && y != ON_UNSET_VALUE && z != ON_UNSET_VALUE &&
         std::fabs(Length() - 1.0) <= ON_SQRT_EPSILON;
}
void ON_3dVector::Set(double xx, double yy, double zz) {
  x = xx;
  y = yy;
  z = zz;
}
int ON_3dVector::MaximumCoordinateIndex() const {
  return MaximumIndex(x, y, z);
}
double ON_3dVector::MaximumCoordinate() const {
  return MaximumAbs(x, y, z);
}
double ON_3dVector::Length() const {
  return Length3d(x, y, z);
}
double ON_3dVector::LengthSquared() const {
  return x * x + y * y + z * z;
}

// No tolerance: anything with a positive finite length unitizes, denormal lengths after a
// rescale by 2^1023. Failure leaves the zero vector.
bool ON_3dVector::Unitize() {
  double d = Length();
  if (std::isfinite(d)) {
    if (d > ON_DBL_MIN) {
      x /= d;
      y /= d;
      z /= d;
      return true;
    }
    if (d > 0.0) {
      const double two_pow_1023 = 8.9884656743115795386465259539451e+307;
      const ON_3dVector scaled(x * two_pow_1023, y * two_pow_1023, z * two_pow_1023);
      d = scaled.Length();
      if (std::isfinite(d) && d > ON_DBL_MIN) {
        x = scaled.x / d;
        y = scaled.y / d;
        z = scaled.z / d;
        return true;
      }
    }
  }
  x = y = z = 0.0;
  return false;
}

double ON_3dVector::LengthAndUnitize() {
  const double length = Length();
  return Unitize() ? length : 0.0;
}

ON_3dVector ON_3dVector::UnitVector() const {
  ON_3dVector u(*this);
  u.Unitize();
  return u;
}

// The normal of the triangle P0 P1 P2 from whichever of the three edge cross products is
// most perpendicular to the edges after rounding.
bool ON_3dVector::PerpendicularTo(const ON_3dPoint& P0, const ON_3dPoint& P1,
                                  const ON_3dPoint& P2) {
  x = y = z = 0.0;
  const ON_3dVector V0 = P2 - P1;
  const ON_3dVector V1 = P0 - P2;
  const ON_3dVector V2 = P1 - P0;
  ON_3dVector N0 = ON_CrossProduct(V1, V2);
  if (!N0.Unitize()) return false;
  ON_3dVector N1 = ON_CrossProduct(V2, V0);
  if (!N1.Unitize()) return false;
  ON_3dVector N2 = ON_CrossProduct(V0, V1);
  if (!N2.Unitize()) return false;

  const double s0 = 1.0 / V0.Length();
  const double s1 = 1.0 / V1.Length();
  const double s2 = 1.0 / V2.Length();
  const double e0 = s0 * std::fabs(ON_DotProduct(N0, V0)) + s1 * std::fabs(ON_DotProduct(N0, V1)) +
                    s2 * std::fabs(ON_DotProduct(N0, V2));
  const double e1 = s0 * std::fabs(ON_DotProduct(N1, V0)) + s1 * std::fabs(ON_DotProduct(N1, V1)) +
                    s2 * std::fabs(ON_DotProduct(N1, V2));
  const double e2 = s0 * std::fabs(ON_DotProduct(N2, V0)) + s1 * std::fabs(ON_DotProduct(N2, V1)) +
                    s2 * std::fabs(ON_DotProduct(N2, V2));

  if (e0 <= e1) {
    *this = (e0 <= e2) ? N0 : N2;
  } else {
    *this = (e1 <= e2) ? N1 : N2;
  }
  return true;
}

double ON_3dVector::DotProduct(ON_3dVector A, ON_3dVector B) {
  return ON_DotProduct(A, B);
}
const ON_3dVector ON_3dVector::CrossProduct(ON_3dVector A, ON_3dVector B) {
  return ON_CrossProduct(A, B);
}

ON_3dVector operator*(int s, const ON_3dVector& v) {
  return v * s;
}
ON_3dVector operator*(float s, const ON_3dVector& v) {
  return v * s;
}

// ---------------------------------------------------------------------------------------
// ON_3fPoint

const ON_3fPoint ON_3fPoint::Origin(0.0f, 0.0f, 0.0f);

ON_3fPoint::operator float*() {
  return &x;
}
ON_3fPoint::operator const float*() const {
  return &x;
}

ON_3fPoint& ON_3fPoint::operator=(const ON_3dPoint& p) {
  *this = ON_3fPoint(p);
  return *this;
}
ON_3fPoint& ON_3fPoint::operator=(const ON_3fVector& v) {
  Set(v.x, v.y, v.z);
  return *this;
}
ON_3fPoint& ON_3fPoint::operator=(const ON_3dVector& v) {
  *this = ON_3fPoint(v);
  return *this;
}

ON_3fPoint& ON_3fPoint::operator*=(float s) {
  x *= s;
  y *= s;
  z *= s;
  return *this;
}
ON_3fPoint& ON_3fPoint::operator/=(float s) {
  const float r = 1.0f / s;
  x *= r;
  y *= r;
  z *= r;
  return *this;
}
ON_3fPoint& ON_3fPoint::operator+=(const ON_3fVector& v) {
  x += v.x;
  y += v.y;
  z += v.z;
  return *this;
}
ON_3fPoint& ON_3fPoint::operator-=(const ON_3fVector& v) {
  x -= v.x;
  y -= v.y;
  z -= v.z;
  return *this;
}

ON_3fPoint ON_3fPoint::operator*(int s) const {
  return ON_3fPoint(x * s, y * s, z * s);
}
ON_3fPoint ON_3fPoint::operator*(float s) const {
  return ON_3fPoint(x * s, y * s, z * s);
}
ON_3dPoint ON_3fPoint::operator*(double s) const {
  return ON_3dPoint(x * s, y * s, z * s);
}
ON_3fPoint ON_3fPoint::operator/(int s) const {
  return *this / static_cast<float>(s);
}
ON_3fPoint ON_3fPoint::operator/(float s) const {
  const float r = 1.0f / s;
  return ON_3fPoint(x * r, y * r, z * r);
}
ON_3dPoint ON_3fPoint::operator/(double s) const {
  const double r = 1.0 / s;
  return ON_3dPoint(x * r, y * r, z * r);
}

ON_3fPoint ON_3fPoint::operator+(const ON_3fPoint& p) const {
  return ON_3fPoint(x + p.x, y + p.y, z + p.z);
}
ON_3fPoint ON_3fPoint::operator-(const ON_3fVector& v) const {
  return ON_3fPoint(x - v.x, y - v.y, z - v.z);
}
ON_3dPoint ON_3fPoint::operator+(const ON_3dPoint& p) const {
  return ON_3dPoint(x + p.x, y + p.y, z + p.z);
}
ON_3dPoint ON_3fPoint::operator+(const ON_3dVector& v) const {
  return ON_3dPoint(x + v.x, y + v.y, z + v.z);
}
ON_3dVector ON_3fPoint::operator-(const ON_3dPoint& p) const {
  return ON_3dVector(x - p.x, y - p.y, z - p.z);
}
ON_3dPoint ON_3fPoint::operator-(const ON_3dVector& v) const {
  return ON_3dPoint(x - v.x, y - v.y, z - v.z);
}

float ON_3fPoint::operator*(const ON_3fPoint& p) const {
  return x * p.x + y * p.y + z * p.z;
}
float ON_3fPoint::operator*(const ON_3fVector& v) const {
  return x * v.x + y * v.y + z * v.z;
}

bool ON_3fPoint::operator==(const ON_3fPoint& p) const {
  return x == p.x && y == p.y && z == p.z;
}
bool ON_3fPoint::operator!=(const ON_3fPoint& p) const {
  return !(*this == p);
}
bool ON_3fPoint::operator<(const ON_3fPoint& p) const {
  return LexLess(*this, p);
}
bool ON_3fPoint::operator>(const ON_3fPoint& p) const {
  return LexLess(p, *this);
}
bool ON_3fPoint::operator<=(const ON_3fPoint& p) const {
  return !LexLess(p, *this);
}
bool ON_3fPoint::operator>=(const ON_3fPoint& p) const {
  return !LexLess(*this, p);
}

float& ON_3fPoint::operator[](int i) {
  return ClampedCoordinate(x, y, z, i);
}
float ON_3fPoint::operator[](int i) const {
  return (i <= 0) ? x : ((i >= 2) ? z : y);
}
float& ON_3fPoint::operator[](unsigned int i) {
  return ClampedCoordinate(x, y, z, i);
}
float ON_3fPoint::operator[](unsigned int i) const {
  return (i == 0) ? x : ((i >= 2) ? z : y);
}

bool ON_3fPoint::IsValid() const {
  return ON_IS_VALID_FLOAT(x) && ON_IS_VALID_FLOAT(y) && ON_IS_VALID_FLOAT(z);
}
bool ON_3fPoint::IsZero() const {
  return x == 0.0f && y == 0.0f && z == 0.0f;
}
void ON_3fPoint::Set(float xx, float yy, float zz) {
  x = xx;
  y = yy;
  z = zz;
}
// The differences are taken in single precision, the length in double.
double ON_3fPoint::DistanceTo(const ON_3fPoint& p) const {
  return Length3d(p.x - x, p.y - y, p.z - z);
}
int ON_3fPoint::MaximumCoordinateIndex() const {
  return MaximumIndex(x, y, z);
}
double ON_3fPoint::MaximumCoordinate() const {
  return MaximumAbs(x, y, z);
}

ON_3fPoint operator*(int s, const ON_3fPoint& p) {
  return p * s;
}
ON_3fPoint operator*(float s, const ON_3fPoint& p) {
  return p * s;
}
ON_3dPoint operator*(double s, const ON_3fPoint& p) {
  return p * s;
}

// ---------------------------------------------------------------------------------------
// ON_3fVector

const ON_3fVector ON_3fVector::ZeroVector(0.0f, 0.0f, 0.0f);
const ON_3fVector ON_3fVector::XAxis(1.0f, 0.0f, 0.0f);
const ON_3fVector ON_3fVector::YAxis(0.0f, 1.0f, 0.0f);
const ON_3fVector ON_3fVector::ZAxis(0.0f, 0.0f, 1.0f);

ON_3fVector::operator float*() {
  return &x;
}
ON_3fVector::operator const float*() const {
  return &x;
}

ON_3fVector& ON_3fVector::operator=(const ON_3fPoint& p) {
  Set(p.x, p.y, p.z);
  return *this;
}
ON_3fVector& ON_3fVector::operator=(const ON_3dPoint& p) {
  *this = ON_3fVector(p);
  return *this;
}
ON_3fVector& ON_3fVector::operator=(const ON_3dVector& v) {
  *this = ON_3fVector(v);
  return *this;
}

ON_3fVector ON_3fVector::operator-() const {
  return ON_3fVector(-x, -y, -z);
}

ON_3fVector& ON_3fVector::operator*=(float s) {
  x *= s;
  y *= s;
  z *= s;
  return *this;
}
ON_3fVector& ON_3fVector::operator/=(float s) {
  const float r = 1.0f / s;
  x *= r;
  y *= r;
  z *= r;
  return *this;
}
ON_3fVector& ON_3fVector::operator+=(const ON_3fVector& v) {
  x += v.x;
  y += v.y;
  z += v.z;
  return *this;
}
ON_3fVector& ON_3fVector::operator-=(const ON_3fVector& v) {
  x -= v.x;
  y -= v.y;
  z -= v.z;
  return *this;
}

float ON_3fVector::operator*(const ON_3fVector& v) const {
  return x * v.x + y * v.y + z * v.z;
}
float ON_3fVector::operator*(const ON_3fPoint& p) const {
  return x * p.x + y * p.y + z * p.z;
}
double ON_3fVector::operator*(const ON_3dVector& v) const {
  return x * v.x + y * v.y + z * v.z;
}

ON_3fVector ON_3fVector::operator*(int s) const {
  return ON_3fVector(x * s, y * s, z * s);
}
ON_3fVector ON_3fVector::operator*(float s) const {
  return ON_3fVector(x * s, y * s, z * s);
}
ON_3dVector ON_3fVector::operator*(double s) const {
  return ON_3dVector(x * s, y * s, z * s);
}
ON_3fVector ON_3fVector::operator/(int s) const {
  return *this / static_cast<float>(s);
}
ON_3fVector ON_3fVector::operator/(float s) const {
  const float r = 1.0f / s;
  return ON_3fVector(x * r, y * r, z * r);
}
ON_3dVector ON_3fVector::operator/(double s) const {
  const double r = 1.0 / s;
  return ON_3dVector(x * r, y * r, z * r);
}

ON_3fPoint ON_3fVector::operator+(const ON_3fPoint& p) const {
  return ON_3fPoint(x + p.x, y + p.y, z + p.z);
}
ON_3fPoint ON_3fVector::operator-(const ON_3fPoint& p) const {
  return ON_3fPoint(x - p.x, y - p.y, z - p.z);
}
ON_3dVector ON_3fVector::operator+(const ON_3dVector& v) const {
  return ON_3dVector(x + v.x, y + v.y, z + v.z);
}
ON_3dPoint ON_3fVector::operator+(const ON_3dPoint& p) const {
  return ON_3dPoint(x + p.x, y + p.y, z + p.z);
}
ON_3dVector ON_3fVector::operator-(const ON_3dVector& v) const {
  return ON_3dVector(x - v.x, y - v.y, z - v.z);
}
ON_3dPoint ON_3fVector::operator-(const ON_3dPoint& p) const {
  return ON_3dPoint(x - p.x, y - p.y, z - p.z);
}

bool ON_3fVector::operator==(const ON_3fVector& v) const {
  return x == v.x && y == v.y && z == v.z;
}
bool ON_3fVector::operator!=(const ON_3fVector& v) const {
  return !(*this == v);
}

float& ON_3fVector::operator[](int i) {
  return ClampedCoordinate(x, y, z, i);
}
float ON_3fVector::operator[](int i) const {
  return (i <= 0) ? x : ((i >= 2) ? z : y);
}
float& ON_3fVector::operator[](unsigned int i) {
  return ClampedCoordinate(x, y, z, i);
}
float ON_3fVector::operator[](unsigned int i) const {
  return (i == 0) ? x : ((i >= 2) ? z : y);
}

bool ON_3fVector::IsValid() const {
  return ON_IS_VALID_FLOAT(x) && ON_IS_VALID_FLOAT(y) && ON_IS_VALID_FLOAT(z);
}
bool ON_3fVector::IsZero() const {
  return x == 0.0f && y == 0.0f && z == 0.0f;
}
// Only the unset values are excluded; a NaN coordinate counts as non-zero.
bool ON_3fVector::IsNotZero() const {
  return (x != 0.0f || y != 0.0f || z != 0.0f) &&
         (x != ON_UNSET_FLOAT && y != ON_UNSET_FLOAT && z != ON_UNSET_FLOAT) &&
         (x != ON_UNSET_POSITIVE_FLOAT && y != ON_UNSET_POSITIVE_FLOAT &&
          z != ON_UNSET_POSITIVE_FLOAT);
}
bool ON_3fVector::IsTiny(double tiny_tol) const {
  return std::fabs(x) <= tiny_tol && std::fabs(y) <= tiny_tol && std::fabs(z) <= tiny_tol;
}
// Single precision gets a looser tolerance than ON_3dVector.
bool ON_3fVector::IsUnitVector() const {
  return x != ON_UNSET_FLOAT && y != ON_UNSET_FLOAT && z != ON_UNSET_FLOAT &&
         std::fabs(Length() - 1.0) <= 1.0e-5;
}
void ON_3fVector::Set(float xx, float yy, float zz) {
  x = xx;
  y = yy;
  z = zz;
}
int ON_3fVector::MaximumCoordinateIndex() const {
  return MaximumIndex(x, y, z);
}
double ON_3fVector::MaximumCoordinate() const {
  return MaximumAbs(x, y, z);
}
double ON_3fVector::Length() const {
  return Length3d(x, y, z);
}
// Summed in single precision (so it can overflow where Length() does not).
double ON_3fVector::LengthSquared() const {
  return x * x + y * y + z * z;
}

// Divides in double; a zero or NaN length leaves the vector as it was.
bool ON_3fVector::Unitize() {
  const double d = Length();
  if (!(d > 0.0)) return false;
  x = static_cast<float>(x / d);
  y = static_cast<float>(y / d);
  z = static_cast<float>(z / d);
  return true;
}

ON_3fVector ON_3fVector::UnitVector() const {
  ON_3fVector u(*this);
  u.Unitize();
  return u;
}

ON_3fVector operator*(int s, const ON_3fVector& v) {
  return v * s;
}
ON_3fVector operator*(float s, const ON_3fVector& v) {
  return v * s;
}
ON_3dVector operator*(double s, const ON_3fVector& v) {
  return v * s;
}

// ---------------------------------------------------------------------------------------
// Products and areas

ON_3dVector ON_CrossProduct(const double* a, const double* b) {
  return ON_CrossProduct(ON_3dVector(a), ON_3dVector(b));
}

ON_3fVector ON_CrossProduct(const float* a, const float* b) {
  return ON_CrossProduct(ON_3fVector(a), ON_3fVector(b));
}

double ON_TriangleArea3d(ON_3dPoint A, ON_3dPoint B, ON_3dPoint C) {
  return 0.5 * ON_CrossProduct(B - A, C - A).Length();
}
