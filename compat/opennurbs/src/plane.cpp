#include <cmath>

#include "opennurbs.h"

namespace {

// Mutually perpendicular, non-zero, valid axes. Near misses get a second, more careful look
// through triple products.
bool IsOrthogonalFrame(const ON_3dVector& X, const ON_3dVector& Y, const ON_3dVector& Z) {
  if (!X.IsValid() || !Y.IsValid() || !Z.IsValid()) return false;
  double lx = X.Length();
  double ly = Y.Length();
  double lz = Z.Length();
  if (lx <= ON_SQRT_EPSILON || ly <= ON_SQRT_EPSILON || lz <= ON_SQRT_EPSILON) return false;
  lx = 1.0 / lx;
  ly = 1.0 / ly;
  lz = 1.0 / lz;
  const double xy = (X.x * Y.x + X.y * Y.y + X.z * Y.z) * lx * ly;
  const double yz = (Y.x * Z.x + Y.y * Z.y + Y.z * Z.z) * ly * lz;
  const double zx = (Z.x * X.x + Z.y * X.y + Z.z * X.z) * lz * lx;
  if (std::fabs(xy) <= ON_SQRT_EPSILON && std::fabs(yz) <= ON_SQRT_EPSILON &&
      std::fabs(zx) <= ON_SQRT_EPSILON)
    return true;
  const double coarse = 0.0000152587890625;  // 2^-16
  if (std::fabs(xy) >= coarse || std::fabs(yz) >= coarse || std::fabs(zx) >= coarse) return false;
  ON_3dVector V = (lx * ly) * ON_CrossProduct(X, Y);
  if (std::fabs(std::fabs((V.x * Z.x + V.y * Z.y + V.z * Z.z) * lz) - 1.0) > ON_SQRT_EPSILON)
    return false;
  V = (ly * lz) * ON_CrossProduct(Y, Z);
  if (std::fabs(std::fabs((V.x * X.x + V.y * X.y + V.z * X.z) * lx) - 1.0) > ON_SQRT_EPSILON)
    return false;
  V = (lz * lx) * ON_CrossProduct(Z, X);
  if (std::fabs(std::fabs((V.x * Y.x + V.y * Y.y + V.z * Y.z) * ly) - 1.0) > ON_SQRT_EPSILON)
    return false;
  return true;
}

bool IsRightHandFrame(const ON_3dVector& X, const ON_3dVector& Y, const ON_3dVector& Z) {
  if (!IsOrthogonalFrame(X, Y, Z)) return false;
  if (std::fabs(X.Length() - 1.0) > ON_SQRT_EPSILON) return false;
  if (std::fabs(Y.Length() - 1.0) > ON_SQRT_EPSILON) return false;
  if (std::fabs(Z.Length() - 1.0) > ON_SQRT_EPSILON) return false;
  return ON_DotProduct(ON_CrossProduct(X, Y), Z) > ON_SQRT_EPSILON;
}

// A vector perpendicular to v built from its two largest components (not unitized).
ON_3dVector PerpendicularVector(const ON_3dVector& v) {
  const double ax = std::fabs(v.x), ay = std::fabs(v.y), az = std::fabs(v.z);
  if (ay > ax) {
    if (az > ay) return ON_3dVector(0.0, v.z, -v.y);
    if (az >= ax) return ON_3dVector(0.0, -v.z, v.y);
    return ON_3dVector(v.y, -v.x, 0.0);
  }
  if (az > ax) return ON_3dVector(v.z, 0.0, -v.x);
  if (az > ay) return ON_3dVector(-v.z, 0.0, v.x);
  return ON_3dVector(-v.y, v.x, 0.0);
}

}  // namespace

// ---------------------------------------------------------------------------------------
// ON_PlaneEquation

ON_PlaneEquation::ON_PlaneEquation() : x(0.0), y(0.0), z(0.0), d(0.0) {}
ON_PlaneEquation::ON_PlaneEquation(double xx, double yy, double zz, double dd)
    : x(xx), y(yy), z(zz), d(dd) {}

// The normal is re-unitized only when it is noticeably off unit length; a zero normal fails.
bool ON_PlaneEquation::Create(ON_3dPoint P, ON_3dVector N) {
  if (!P.IsValid() || !N.IsValid()) return false;
  ON_3dVector unit = N;
  const bool ok = (std::fabs(1.0 - unit.Length()) > ON_ZERO_TOLERANCE) ? unit.Unitize() : true;
  x = unit.x;
  y = unit.y;
  z = unit.z;
  d = -(x * P.x + y * P.y + z * P.z);
  return ok;
}

double ON_PlaneEquation::ValueAt(ON_3dPoint P) const {
  return x * P.x + y * P.y + z * P.z + d;
}
double ON_PlaneEquation::ValueAt(ON_3dVector P) const {
  return x * P.x + y * P.y + z * P.z + d;
}
double ON_PlaneEquation::ValueAt(double px, double py, double pz) const {
  return x * px + y * py + z * pz + d;
}

bool ON_PlaneEquation::IsValid() const {
  return ON_IS_VALID(x) && ON_IS_VALID(y) && ON_IS_VALID(z) && ON_IS_VALID(d);
}

// ---------------------------------------------------------------------------------------
// ON_Plane

const ON_Plane ON_Plane::World_xy;
const ON_Plane ON_xy_plane;

ON_Plane::ON_Plane()
    : origin(0.0, 0.0, 0.0),
      xaxis(1.0, 0.0, 0.0),
      yaxis(0.0, 1.0, 0.0),
      zaxis(0.0, 0.0, 1.0),
      plane_equation(0.0, 0.0, 1.0, 0.0) {}

ON_Plane::ON_Plane(const ON_3dPoint& P, const ON_3dVector& normal) : ON_Plane() {
  CreateFromNormal(P, normal);
}

ON_Plane::ON_Plane(const ON_3dPoint& P, const ON_3dVector& x_dir, const ON_3dVector& y_dir)
    : ON_Plane() {
  CreateFromFrame(P, x_dir, y_dir);
}

// The result of the construction is not reported; callers check IsValid().
ON_Plane::ON_Plane(const ON_3dPoint& P, const ON_3dPoint& x_point, const ON_3dPoint& y_point)
    : ON_Plane() {
  CreateFromPoints(P, x_point, y_point);
}

ON_Plane::~ON_Plane() = default;

bool ON_Plane::CreateFromNormal(const ON_3dPoint& P, const ON_3dVector& normal) {
  origin = P;
  zaxis = normal;
  const bool ok = zaxis.Unitize();
  xaxis = PerpendicularVector(zaxis);
  xaxis.Unitize();
  yaxis = ON_CrossProduct(zaxis, xaxis);
  yaxis.Unitize();
  plane_equation.Create(origin, zaxis);
  return ok;
}

bool ON_Plane::CreateFromFrame(const ON_3dPoint& P, const ON_3dVector& x_dir,
                               const ON_3dVector& y_dir) {
  const ON_3dPoint local_origin(P);
  const ON_3dVector local_x(x_dir);
  const ON_3dVector local_y(y_dir);
  origin = local_origin;
  xaxis = local_x;
  xaxis.Unitize();
  yaxis = local_y - ON_DotProduct(local_y, xaxis) * xaxis;
  yaxis.Unitize();
  zaxis = ON_CrossProduct(xaxis, yaxis);
  bool ok = zaxis.Unitize();
  plane_equation.Create(origin, zaxis);
  if (ok) {
    ok = IsValid() && std::fabs(local_y * zaxis) <= ON_SQRT_EPSILON * local_y.Length();
  }
  return ok;
}

// x along x_point - origin, z the best normal of the three points, y = z cross x. Exactly
// collinear points leave y and z zero and an invalid plane.
bool ON_Plane::CreateFromPoints(const ON_3dPoint& P, const ON_3dPoint& x_point,
                                const ON_3dPoint& y_point) {
  origin = P;
  const bool has_normal = zaxis.PerpendicularTo(P, x_point, y_point);
  xaxis = x_point - P;
  xaxis.Unitize();
  yaxis = ON_CrossProduct(zaxis, xaxis);
  yaxis.Unitize();
  const bool has_equation = plane_equation.Create(origin, zaxis);
  return has_normal && has_equation;
}

bool ON_Plane::IsValid() const {
  if (!plane_equation.IsValid()) return false;
  const double value = plane_equation.ValueAt(origin);
  if (std::isnan(value)) return false;
  if (std::fabs(value) > ON_ZERO_TOLERANCE) {
    // Far from the origin only the leading digits can be expected to cancel.
    const double tol = std::fabs(origin.MaximumCoordinate()) + std::fabs(plane_equation.d);
    if (!(tol > 1000.0 && origin.IsValid())) return false;
    if (std::fabs(value) > tol * (ON_EPSILON * 10.0)) return false;
  }
  if (!IsRightHandFrame(xaxis, yaxis, zaxis)) return false;
  const ON_3dVector N =
      ON_3dVector(plane_equation.x, plane_equation.y, plane_equation.z).UnitVector();
  return std::fabs(ON_DotProduct(N, zaxis) - 1.0) <= ON_SQRT_EPSILON;
}

ON_3dPoint ON_Plane::PointAt(double u, double v) const {
  return origin + u * xaxis + v * yaxis;
}

ON_3dPoint ON_Plane::PointAt(double u, double v, double w) const {
  return origin + u * xaxis + v * yaxis + w * zaxis;
}

// Always succeeds: the coordinates are plain projections on the axes, even on an invalid plane.
bool ON_Plane::ClosestPointTo(ON_3dPoint world_point, double* u, double* v) const {
  const ON_3dVector offset = world_point - origin;
  if (u != nullptr) *u = offset * xaxis;
  if (v != nullptr) *v = offset * yaxis;
  return true;
}

ON_3dPoint ON_Plane::ClosestPointTo(ON_3dPoint point) const {
  double u = 0.0;
  double v = 0.0;
  ClosestPointTo(point, &u, &v);
  return PointAt(u, v);
}

double ON_Plane::DistanceTo(const ON_3dPoint& point) const {
  return (point - origin) * zaxis;
}
