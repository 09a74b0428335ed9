#ifndef BRINDLE_COMPAT_OPENNURBS_POINT_H
#define BRINDLE_COMPAT_OPENNURBS_POINT_H

// Double and single precision points and vectors. The default constructors leave the
// coordinates uninitialised; which conversions are implicit decides overload resolution, so
// every explicit/implicit choice below is deliberate.

#include "opennurbs_defines.h"

class ON_2dPoint;
class ON_2fPoint;
class ON_3dPoint;
class ON_3dVector;
class ON_3fPoint;
class ON_3fVector;

class ON_CLASS ON_2dPoint {
 public:
  double x, y;
  ON_2dPoint() = default;
  explicit ON_2dPoint(double x, double y);
};

class ON_CLASS ON_2fPoint {
 public:
  float x, y;
  ON_2fPoint() = default;
  explicit ON_2fPoint(float x, float y);
};

class ON_CLASS ON_3dPoint {
 public:
  double x, y, z;

  static const ON_3dPoint Origin;
  static const ON_3dPoint UnsetPoint;
  static const ON_3dPoint NanPoint;

  ON_3dPoint() = default;
  explicit ON_3dPoint(double x, double y, double z);
  ON_3dPoint(const ON_3dVector& v);
  ON_3dPoint(const ON_3fPoint& p);
  explicit ON_3dPoint(const ON_3fVector& v);
  explicit ON_3dPoint(const double* p);
  explicit ON_3dPoint(const float* p);

  operator double*();
  operator const double*() const;

  ON_3dPoint& operator=(const ON_3fPoint& p);
  ON_3dPoint& operator=(const ON_3dVector& v);
  ON_3dPoint& operator=(const ON_3fVector& v);

  ON_3dPoint& operator*=(double s);
  ON_3dPoint& operator/=(double s);
  ON_3dPoint& operator+=(const ON_3dVector& v);
  ON_3dPoint& operator-=(const ON_3dVector& v);

  ON_3dPoint operator*(int s) const;
  ON_3dPoint operator/(int s) const;
  ON_3dPoint operator*(float s) const;
  ON_3dPoint operator/(float s) const;
  ON_3dPoint operator*(double s) const;
  ON_3dPoint operator/(double s) const;

  ON_3dPoint operator+(const ON_3dPoint& p) const;
  ON_3dPoint operator+(const ON_3dVector& v) const;
  ON_3dVector operator-(const ON_3dPoint& p) const;
  ON_3dPoint operator-(const ON_3dVector& v) const;
  ON_3dPoint operator+(const ON_3fPoint& p) const;
  ON_3dPoint operator+(const ON_3fVector& v) const;
  ON_3dVector operator-(const ON_3fPoint& p) const;
  ON_3dPoint operator-(const ON_3fVector& v) const;

  double operator*(const ON_3dPoint& p) const;
  double operator*(const ON_3dVector& v) const;

  bool operator==(const ON_3dPoint& p) const;
  bool operator!=(const ON_3dPoint& p) const;
  bool operator<=(const ON_3dPoint& p) const;
  bool operator>=(const ON_3dPoint& p) const;
  bool operator<(const ON_3dPoint& p) const;
  bool operator>(const ON_3dPoint& p) const;

  double& operator[](int i);
  double operator[](int i) const;
  double& operator[](unsigned int i);
  double operator[](unsigned int i) const;

  bool IsValid() const;
  bool IsZero() const;
  void Set(double x, double y, double z);
  double DistanceTo(const ON_3dPoint& p) const;
  int MaximumCoordinateIndex() const;
  double MaximumCoordinate() const;
};

class ON_CLASS ON_3dVector {
 public:
  double x, y, z;

  static const ON_3dVector ZeroVector;
  static const ON_3dVector XAxis;
  static const ON_3dVector YAxis;
  static const ON_3dVector ZAxis;
  static const ON_3dVector UnsetVector;
  static const ON_3dVector NanVector;

  ON_3dVector() = default;
  explicit ON_3dVector(double x, double y, double z);
  ON_3dVector(const ON_3dPoint& p);
  ON_3dVector(const ON_3fVector& v);
  explicit ON_3dVector(const ON_3fPoint& p);
  explicit ON_3dVector(const double* v);
  explicit ON_3dVector(const float* v);

  operator double*();
  operator const double*() const;

  ON_3dVector& operator=(const ON_3dPoint& p);
  ON_3dVector& operator=(const ON_3fVector& v);

  ON_3dVector operator-() const;

  ON_3dVector& operator*=(double s);
  ON_3dVector& operator/=(double s);
  ON_3dVector& operator+=(const ON_3dVector& v);
  ON_3dVector& operator-=(const ON_3dVector& v);

  double operator*(const ON_3dVector& v) const;
  double operator*(const ON_3dPoint& p) const;
  double operator*(const ON_3fVector& v) const;

  ON_3dVector operator*(int s) const;
  ON_3dVector operator/(int s) const;
  ON_3dVector operator*(float s) const;
  ON_3dVector operator/(float s) const;
  ON_3dVector operator*(double s) const;
  ON_3dVector operator/(double s) const;

  ON_3dVector operator+(const ON_3dVector& v) const;
  ON_3dPoint operator+(const ON_3dPoint& p) const;
  ON_3dVector operator-(const ON_3dVector& v) const;
  ON_3dPoint operator-(const ON_3dPoint& p) const;
  ON_3dVector operator+(const ON_3fVector& v) const;
  ON_3dVector operator-(const ON_3fVector& v) const;

  bool operator==(const ON_3dVector& v) const;
  bool operator!=(const ON_3dVector& v) const;

  double& operator[](int i);
  double operator[](int i) const;
  double& operator[](unsigned int i);
  double operator[](unsigned int i) const;

  bool IsValid() const;
  bool IsZero() const;
  bool IsNotZero() const;
  bool IsTiny(double tiny_tol = ON_ZERO_TOLERANCE) const;
  bool IsUnitVector() const;
  void Set(double x, double y, double z);
  int MaximumCoordinateIndex() const;
  double MaximumCoordinate() const;
  double Length() const;
  double LengthSquared() const;
  bool Unitize();
  double LengthAndUnitize();
  ON_3dVector UnitVector() const;
  bool PerpendicularTo(const ON_3dPoint& P0, const ON_3dPoint& P1, const ON_3dPoint& P2);

  static double DotProduct(ON_3dVector A, ON_3dVector B);
  static const ON_3dVector CrossProduct(ON_3dVector A, ON_3dVector B);
};

class ON_CLASS ON_3fPoint {
 public:
  float x, y, z;

  static const ON_3fPoint Origin;

  ON_3fPoint() = default;
  explicit ON_3fPoint(float x, float y, float z);
  explicit ON_3fPoint(const ON_3dPoint& p);
  explicit ON_3fPoint(const ON_3fVector& v);
  explicit ON_3fPoint(const ON_3dVector& v);
  explicit ON_3fPoint(const float* p);
  explicit ON_3fPoint(const double* p);

  operator float*();
  operator const float*() const;

  ON_3fPoint& operator=(const ON_3dPoint& p);
  ON_3fPoint& operator=(const ON_3fVector& v);
  ON_3fPoint& operator=(const ON_3dVector& v);

  ON_3fPoint& operator*=(float s);
  ON_3fPoint& operator/=(float s);
  ON_3fPoint& operator+=(const ON_3fVector& v);
  ON_3fPoint& operator-=(const ON_3fVector& v);

  ON_3fPoint operator*(int s) const;
  ON_3fPoint operator/(int s) const;
  ON_3fPoint operator*(float s) const;
  ON_3fPoint operator/(float s) const;
  ON_3dPoint operator*(double s) const;
  ON_3dPoint operator/(double s) const;

  ON_3fPoint operator+(const ON_3fPoint& p) const;
  ON_3fPoint operator+(const ON_3fVector& v) const;
  ON_3fVector operator-(const ON_3fPoint& p) const;
  ON_3fPoint operator-(const ON_3fVector& v) const;
  ON_3dPoint operator+(const ON_3dPoint& p) const;
  ON_3dPoint operator+(const ON_3dVector& v) const;
  ON_3dVector operator-(const ON_3dPoint& p) const;
  ON_3dPoint operator-(const ON_3dVector& v) const;

  float operator*(const ON_3fPoint& p) const;
  float operator*(const ON_3fVector& v) const;

  bool operator==(const ON_3fPoint& p) const;
  bool operator!=(const ON_3fPoint& p) const;
  bool operator<=(const ON_3fPoint& p) const;
  bool operator>=(const ON_3fPoint& p) const;
  bool operator<(const ON_3fPoint& p) const;
  bool operator>(const ON_3fPoint& p) const;

  float& operator[](int i);
  float operator[](int i) const;
  float& operator[](unsigned int i);
  float operator[](unsigned int i) const;

  bool IsValid() const;
  bool IsZero() const;
  void Set(float x, float y, float z);
  double DistanceTo(const ON_3fPoint& p) const;
  int MaximumCoordinateIndex() const;
  double MaximumCoordinate() const;
};

class ON_CLASS ON_3fVector {
 public:
  float x, y, z;

  static const ON_3fVector ZeroVector;
  static const ON_3fVector XAxis;
  static const ON_3fVector YAxis;
  static const ON_3fVector ZAxis;

  ON_3fVector() = default;
  explicit ON_3fVector(float x, float y, float z);
  explicit ON_3fVector(const ON_3fPoint& p);
  explicit ON_3fVector(const float* v);
  explicit ON_3fVector(const ON_3dPoint& p);
  explicit ON_3fVector(const ON_3dVector& v);
  explicit ON_3fVector(const double* v);

  operator float*();
  operator const float*() const;

  ON_3fVector& operator=(const ON_3fPoint& p);
  ON_3fVector& operator=(const ON_3dPoint& p);
  ON_3fVector& operator=(const ON_3dVector& v);

  ON_3fVector operator-() const;

  ON_3fVector& operator*=(float s);
  ON_3fVector& operator/=(float s);
  ON_3fVector& operator+=(const ON_3fVector& v);
  ON_3fVector& operator-=(const ON_3fVector& v);

  float operator*(const ON_3fVector& v) const;
  float operator*(const ON_3fPoint& p) const;
  double operator*(const ON_3dVector& v) const;

  ON_3fVector operator*(int s) const;
  ON_3fVector operator/(int s) const;
  ON_3fVector operator*(float s) const;
  ON_3fVector operator/(float s) const;
  ON_3dVector operator*(double s) const;
  ON_3dVector operator/(double s) const;

  ON_3fVector operator+(const ON_3fVector& v) const;
  ON_3fPoint operator+(const ON_3fPoint& p) const;
  ON_3fVector operator-(const ON_3fVector& v) const;
  ON_3fPoint operator-(const ON_3fPoint& p) const;
  ON_3dVector operator+(const ON_3dVector& v) const;
  ON_3dPoint operator+(const ON_3dPoint& p) const;
  ON_3dVector operator-(const ON_3dVector& v) const;
  ON_3dPoint operator-(const ON_3dPoint& p) const;

  bool operator==(const ON_3fVector& v) const;
  bool operator!=(const ON_3fVector& v) const;

  float& operator[](int i);
  float operator[](int i) const;
  float& operator[](unsigned int i);
  float operator[](unsigned int i) const;

  bool IsValid() const;
  bool IsZero() const;
  bool IsNotZero() const;
  bool IsTiny(double tiny_tol = ON_ZERO_TOLERANCE) const;
  bool IsUnitVector() const;
  void Set(float x, float y, float z);
  int MaximumCoordinateIndex() const;
  double MaximumCoordinate() const;
  double Length() const;
  double LengthSquared() const;
  bool Unitize();
  ON_3fVector UnitVector() const;
};

// Functions declared without ON_DECL are defined inline in opennurbs_point_inline.h: every
// module compiles its own copy and none is imported from the library.
ON_DECL ON_3dPoint operator*(int s, const ON_3dPoint& p);
ON_DECL ON_3dPoint operator*(float s, const ON_3dPoint& p);
ON_3dPoint operator*(double s, const ON_3dPoint& p);
ON_DECL ON_3dVector operator*(int s, const ON_3dVector& v);
ON_DECL ON_3dVector operator*(float s, const ON_3dVector& v);
ON_3dVector operator*(double s, const ON_3dVector& v);
ON_DECL ON_3fPoint operator*(int s, const ON_3fPoint& p);
ON_DECL ON_3fPoint operator*(float s, const ON_3fPoint& p);
ON_DECL ON_3dPoint operator*(double s, const ON_3fPoint& p);
ON_DECL ON_3fVector operator*(int s, const ON_3fVector& v);
ON_DECL ON_3fVector operator*(float s, const ON_3fVector& v);
ON_DECL ON_3dVector operator*(double s, const ON_3fVector& v);

double ON_DotProduct(const ON_3dVector& a, const ON_3dVector& b);
float ON_DotProduct(const ON_3fVector& a, const ON_3fVector& b);
ON_3dVector ON_CrossProduct(const ON_3dVector& a, const ON_3dVector& b);
ON_DECL ON_3dVector ON_CrossProduct(const double* a, const double* b);
ON_3fVector ON_CrossProduct(const ON_3fVector& a, const ON_3fVector& b);
ON_DECL ON_3fVector ON_CrossProduct(const float* a, const float* b);

ON_DECL double ON_TriangleArea3d(ON_3dPoint A, ON_3dPoint B, ON_3dPoint C);

#include "opennurbs_point_inline.h"

#endif
