#ifndef BRINDLE_COMPAT_OPENNURBS_PLANE_H
#define BRINDLE_COMPAT_OPENNURBS_PLANE_H

// Plane equations and planes with a local frame.

#include "opennurbs_point.h"

class ON_CLASS ON_PlaneEquation {
 public:
  double x, y, z, d;

  ON_PlaneEquation();
  ON_PlaneEquation(double xx, double yy, double zz, double dd);

  bool Create(ON_3dPoint P, ON_3dVector N);
  double ValueAt(ON_3dPoint P) const;
  double ValueAt(ON_3dVector P) const;
  double ValueAt(double x, double y, double z) const;
  bool IsValid() const;
};

class ON_CLASS ON_Plane {
 public:
  ON_Plane();
  ON_Plane(const ON_3dPoint& origin, const ON_3dVector& normal);
  ON_Plane(const ON_3dPoint& origin, const ON_3dVector& x_dir, const ON_3dVector& y_dir);
  ON_Plane(const ON_3dPoint& origin, const ON_3dPoint& x_point, const ON_3dPoint& y_point);
  ~ON_Plane();

  static const ON_Plane World_xy;

  bool CreateFromNormal(const ON_3dPoint& origin, const ON_3dVector& normal);
  bool CreateFromFrame(const ON_3dPoint& origin, const ON_3dVector& x_dir,
                       const ON_3dVector& y_dir);
  bool CreateFromPoints(const ON_3dPoint& origin, const ON_3dPoint& x_point,
                        const ON_3dPoint& y_point);

  bool IsValid() const;
  ON_3dPoint PointAt(double u, double v) const;
  ON_3dPoint PointAt(double u, double v, double w) const;
  bool ClosestPointTo(ON_3dPoint world_point, double* u, double* v) const;
  ON_3dPoint ClosestPointTo(ON_3dPoint point) const;
  double DistanceTo(const ON_3dPoint& point) const;

  ON_3dPoint origin;
  ON_3dVector xaxis;
  ON_3dVector yaxis;
  ON_3dVector zaxis;
  ON_PlaneEquation plane_equation;
};

ON_EXTERN_DECL extern const ON_Plane ON_xy_plane;

#endif
