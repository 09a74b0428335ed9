// Planes from three points (including the degenerate case), evaluation, lines and boxes.

#include <gtest/gtest.h>

#include <cmath>
#include <type_traits>

#include "opennurbs.h"

namespace {

// Three points or a point and two vectors select a constructor; a mix of the two is ambiguous.
static_assert(std::is_constructible<ON_Plane, ON_3dPoint, ON_3dPoint, ON_3dPoint>::value, "");
static_assert(std::is_constructible<ON_Plane, ON_3dPoint, ON_3dVector, ON_3dVector>::value, "");
static_assert(!std::is_constructible<ON_Plane, ON_3dPoint, ON_3dPoint, ON_3dVector>::value, "");

void ExpectVector(const ON_3dVector& actual, double x, double y, double z) {
  EXPECT_EQ(actual.x, x);
  EXPECT_EQ(actual.y, y);
  EXPECT_EQ(actual.z, z);
}

TEST(OpenNurbsPlane, ThreePointsGiveARightHandedFrame) {
  const ON_Plane plane(ON_3dPoint(1, 1, 0), ON_3dPoint(3, 1, 0), ON_3dPoint(1, 5, 0));
  EXPECT_TRUE(plane.IsValid());
  EXPECT_EQ(plane.origin, ON_3dPoint(1, 1, 0));
  ExpectVector(plane.xaxis, 1, 0, 0);
  ExpectVector(plane.yaxis, 0, 1, 0);
  ExpectVector(plane.zaxis, 0, 0, 1);
  EXPECT_EQ(plane.plane_equation.x, 0.0);
  EXPECT_EQ(plane.plane_equation.z, 1.0);
  EXPECT_EQ(plane.plane_equation.d, 0.0);

  const ON_Plane flipped(ON_3dPoint(1, 1, 0), ON_3dPoint(3, 1, 0), ON_3dPoint(1, -5, 0));
  EXPECT_TRUE(flipped.IsValid());
  ExpectVector(flipped.yaxis, 0, -1, 0);
  ExpectVector(flipped.zaxis, 0, 0, -1);
}

TEST(OpenNurbsPlane, YAxisIsPerpendicularToXNotTowardsTheThirdPoint) {
  const ON_Plane plane(ON_3dPoint(0, 0, 0), ON_3dPoint(2, 0, 0), ON_3dPoint(1, 1, 0));
  EXPECT_TRUE(plane.IsValid());
  ExpectVector(plane.yaxis, 0, 1, 0);
  EXPECT_EQ(plane.xaxis * plane.yaxis, 0.0);
}

TEST(OpenNurbsPlane, CollinearPointsLeaveZeroAxesAndAnInvalidPlane) {
  const ON_Plane plane(ON_3dPoint(0, 0, 0), ON_3dPoint(1, 1, 1), ON_3dPoint(2, 2, 2));
  EXPECT_FALSE(plane.IsValid());
  EXPECT_EQ(plane.origin, ON_3dPoint(0, 0, 0));
  EXPECT_NEAR(plane.xaxis.x, 1.0 / std::sqrt(3.0), 1e-15);
  EXPECT_EQ(plane.xaxis.x, plane.xaxis.z);
  ExpectVector(plane.yaxis, 0, 0, 0);
  ExpectVector(plane.zaxis, 0, 0, 0);
  EXPECT_EQ(plane.plane_equation.x, 0.0);
  EXPECT_EQ(plane.plane_equation.z, 0.0);
  EXPECT_EQ(plane.plane_equation.d, 0.0);

  const ON_Plane coincident(ON_3dPoint(1, 2, 3), ON_3dPoint(1, 2, 3), ON_3dPoint(4, 5, 6));
  EXPECT_FALSE(coincident.IsValid());
  ExpectVector(coincident.xaxis, 0, 0, 0);

  // Unitize has no tolerance, so nearly collinear points still make a valid plane.
  const ON_Plane nearly(ON_3dPoint(0, 0, 0), ON_3dPoint(1, 0, 0), ON_3dPoint(2, 1e-9, 0));
  EXPECT_TRUE(nearly.IsValid());
}

TEST(OpenNurbsPlane, EvaluationAndProjection) {
  const ON_Plane plane(ON_3dPoint(1, 1, 0), ON_3dPoint(3, 1, 0), ON_3dPoint(1, 5, 0));
  double u = 0.0;
  double v = 0.0;
  EXPECT_TRUE(plane.ClosestPointTo(ON_3dPoint(4, 6, 7), &u, &v));
  EXPECT_EQ(u, 3.0);
  EXPECT_EQ(v, 5.0);
  EXPECT_EQ(plane.PointAt(3, 5), ON_3dPoint(4, 6, 0));
  EXPECT_EQ(plane.ClosestPointTo(ON_3dPoint(4, 6, 7)), ON_3dPoint(4, 6, 0));
  EXPECT_EQ(plane.DistanceTo(ON_3dPoint(4, 6, 7)), 7.0);
  EXPECT_TRUE(plane.ClosestPointTo(ON_3dPoint(4, 6, 7), nullptr, &v));

  // Projection onto an invalid plane still "succeeds".
  const ON_Plane degenerate(ON_3dPoint(0, 0, 0), ON_3dPoint(1, 0, 0), ON_3dPoint(2, 0, 0));
  EXPECT_TRUE(degenerate.ClosestPointTo(ON_3dPoint(5, 5, 5), &u, &v));
  EXPECT_EQ(u, 5.0);
  EXPECT_EQ(v, 0.0);
}

TEST(OpenNurbsPlane, WorldXyConstants) {
  for (const ON_Plane* plane : {&ON_Plane::World_xy, &ON_xy_plane}) {
    EXPECT_TRUE(plane->IsValid());
    EXPECT_EQ(plane->origin, ON_3dPoint::Origin);
    ExpectVector(plane->zaxis, 0, 0, 1);
    EXPECT_EQ(plane->plane_equation.z, 1.0);
  }
  const ON_Plane from_normal(ON_3dPoint(0, 0, 2), ON_3dVector(0, 0, 5));
  EXPECT_TRUE(from_normal.IsValid());
  ExpectVector(from_normal.zaxis, 0, 0, 1);
  const ON_Plane from_frame(ON_3dPoint(0, 0, 0), ON_3dVector(2, 0, 0), ON_3dVector(1, 1, 0));
  EXPECT_TRUE(from_frame.IsValid());
  ExpectVector(from_frame.yaxis, 0, 1, 0);
}

TEST(OpenNurbsLineAndBox, LineBasics) {
  const ON_Line line(ON_3dPoint(0, 0, 0), ON_3dPoint(3, 4, 0));
  EXPECT_TRUE(line.IsValid());
  EXPECT_EQ(line.Length(), 5.0);
  EXPECT_EQ(line.Direction(), ON_3dVector(3, 4, 0));
  const ON_Line point(ON_3dPoint(1, 1, 1), ON_3dPoint(1, 1, 1));
  EXPECT_FALSE(point.IsValid());
  const ON_Line huge(ON_3dPoint(0, 0, 0), ON_3dPoint(2e307, 0, 0));
  EXPECT_FALSE(huge.IsValid());
  const ON_Line defaulted;
  EXPECT_EQ(defaulted.from, ON_3dPoint::Origin);
  EXPECT_EQ(defaulted.to, ON_3dPoint::Origin);
}

TEST(OpenNurbsLineAndBox, EmptyBoxIsInvalidAndHasANegativeDiagonal) {
  const ON_BoundingBox empty;
  EXPECT_FALSE(empty.IsValid());
  EXPECT_EQ(empty.m_min, ON_3dPoint(1, 0, 0));
  EXPECT_EQ(empty.m_max, ON_3dPoint(-1, 0, 0));
  EXPECT_EQ(empty.Diagonal(), ON_3dVector(-2, 0, 0));
  EXPECT_FALSE(ON_BoundingBox::UnsetBoundingBox.IsValid());
  EXPECT_EQ(ON_BoundingBox::UnsetBoundingBox.m_min.x, ON_UNSET_VALUE);

  const ON_BoundingBox box(ON_3dPoint(0, 0, 0), ON_3dPoint(2, 4, 6));
  EXPECT_TRUE(box.IsValid());
  EXPECT_EQ(box.Center(), ON_3dPoint(1, 2, 3));
  const ON_BoundingBox flat(ON_3dPoint(0, 0, 0), ON_3dPoint(2, 0, 6));
  EXPECT_TRUE(flat.IsValid());
}

}  // namespace
