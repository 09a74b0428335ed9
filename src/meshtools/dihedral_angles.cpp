#include "meshtools/dihedral_angles.h"

#include <algorithm>
#include <cmath>

namespace brindle {
namespace {

constexpr double kPi = 3.141592653589793;

// unit(u x v), or the zero vector when it has no direction.
ON_3dVector UnitCross(const ON_3dVector& u, const ON_3dVector& v) {
  ON_3dVector n = ON_CrossProduct(u, v);
  n.Unitize();  // zeroes n when it fails
  return n;
}

// `n` turned away from a corner on the side `side` = n . (corner - a).
ON_3dVector TurnedAway(const ON_3dVector& n, double side) {
  return side > 0.0 ? -n : n;
}

double AngleBetweenFaces(const ON_3dVector& n1, const ON_3dVector& n2) {
  if (n1.IsZero() || n2.IsZero()) return 0.0;
  return kPi - std::acos(std::max(std::min(n1 * n2, 1.0), -1.0));
}

// The six dihedral angles in radians of the tetrahedron p[0..3]; an angle whose face normals
// vanish is 0.
void TetrahedronDihedralAngles(const ON_3dPoint p[4], double angles[6]) {
  // Each edge (a, b) with the other corners c, d needs the unit normals of (a, b, c) turned away
  // from d and of (a, b, d) turned away from c: twelve normals. Swapping the last two corners of
  // a triangle only negates its cross product exactly, and with it the side test, so the triangles
  // (0,2,1), (0,3,1), (0,3,2) and (1,3,2) reuse the unit normals of (0,1,2), (0,1,3), (0,2,3) and
  // (1,2,3): eight unitisations give the same bits as twelve. The nine edge vectors serve all of
  // them.
  const ON_3dVector e01 = p[1] - p[0], e02 = p[2] - p[0], e03 = p[3] - p[0];
  const ON_3dVector e10 = p[0] - p[1], e12 = p[2] - p[1], e13 = p[3] - p[1];
  const ON_3dVector e20 = p[0] - p[2], e21 = p[1] - p[2], e23 = p[3] - p[2];
  const ON_3dVector n012 = UnitCross(e01, e02), n013 = UnitCross(e01, e03);
  const ON_3dVector n023 = UnitCross(e02, e03), n123 = UnitCross(e12, e13);
  const ON_3dVector n120 = UnitCross(e12, e10), n130 = UnitCross(e13, e10);
  const ON_3dVector n230 = UnitCross(e23, e20), n231 = UnitCross(e23, e21);
  const double s012 = n012 * e03, s013 = n013 * e02, s023 = n023 * e01, s123 = n123 * e10;

  angles[0] = AngleBetweenFaces(TurnedAway(n012, s012), TurnedAway(n013, s013));
  angles[1] = AngleBetweenFaces(TurnedAway(-n012, -s012), TurnedAway(n023, s023));
  angles[2] = AngleBetweenFaces(TurnedAway(-n013, -s013), TurnedAway(-n023, -s023));
  angles[3] = AngleBetweenFaces(TurnedAway(n120, n120 * e13), TurnedAway(n123, s123));
  angles[4] = AngleBetweenFaces(TurnedAway(n130, n130 * e12), TurnedAway(-n123, -s123));
  angles[5] = AngleBetweenFaces(TurnedAway(n230, n230 * e21), TurnedAway(n231, n231 * e20));
}

}  // namespace

void ComputeDihedralAngles(const ON_Mesh& mesh, double* angles) {
  for (int i = 0; i < mesh.FaceCount(); ++i) {
    const int* corner = mesh.m_F[i].vi;
    const ON_3dPoint p[4] = {mesh.Vertex(corner[0]), mesh.Vertex(corner[1]), mesh.Vertex(corner[2]),
                             mesh.Vertex(corner[3])};
    TetrahedronDihedralAngles(p, angles + 6 * static_cast<std::size_t>(i));
  }
}

}  // namespace brindle
