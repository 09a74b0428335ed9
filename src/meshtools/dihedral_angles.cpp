#include "meshtools/dihedral_angles.h"

#include <algorithm>
#include <cmath>

#include "brindle.h"
#include "common/error_text.h"

namespace brindle {
namespace {

constexpr double kPi = 3.141592653589793;

// unit((b - a) x (c - a)), or the zero vector when it has no direction.
ON_3dVector UnitNormal(const ON_3dPoint& a, const ON_3dPoint& b, const ON_3dPoint& c) {
  ON_3dVector n = ON_CrossProduct(b - a, c - a);
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

}  // namespace

ON_3dVector NormalAwayFrom(const ON_3dPoint& a, const ON_3dPoint& b, const ON_3dPoint& c,
                           const ON_3dPoint& d) {
  const ON_3dVector n = UnitNormal(a, b, c);
  return TurnedAway(n, n * (d - a));
}

void TetrahedronDihedralAngles(const ON_3dPoint p[4], double angles[6]) {
  // Each edge (a, b) with the other corners c, d needs the normals of (a, b, c) away from d and
  // of (a, b, d) away from c: twelve normals. Swapping the last two corners of a triangle only
  // negates its cross product exactly, and with it the side test, so the triangles (0,2,1),
  // (0,3,1), (0,3,2) and (1,3,2) reuse the unit normals of (0,1,2), (0,1,3), (0,2,3) and
  // (1,2,3): eight unitisations give the same bits as twelve.
  const ON_3dVector n012 = UnitNormal(p[0], p[1], p[2]);
  const ON_3dVector n013 = UnitNormal(p[0], p[1], p[3]);
  const ON_3dVector n023 = UnitNormal(p[0], p[2], p[3]);
  const ON_3dVector n123 = UnitNormal(p[1], p[2], p[3]);
  const double s012 = n012 * (p[3] - p[0]);
  const double s013 = n013 * (p[2] - p[0]);
  const double s023 = n023 * (p[1] - p[0]);
  const double s123 = n123 * (p[0] - p[1]);

  angles[0] = AngleBetweenFaces(TurnedAway(n012, s012), TurnedAway(n013, s013));
  angles[1] = AngleBetweenFaces(TurnedAway(-n012, -s012), TurnedAway(n023, s023));
  angles[2] = AngleBetweenFaces(TurnedAway(-n013, -s013), TurnedAway(-n023, -s023));
  angles[3] = AngleBetweenFaces(NormalAwayFrom(p[1], p[2], p[0], p[3]), TurnedAway(n123, s123));
  angles[4] = AngleBetweenFaces(NormalAwayFrom(p[1], p[3], p[0], p[2]), TurnedAway(-n123, -s123));
  angles[5] = AngleBetweenFaces(NormalAwayFrom(p[2], p[3], p[0], p[1]),
                                NormalAwayFrom(p[2], p[3], p[1], p[0]));
}

void ComputeDihedralAngles(const ON_Mesh& mesh, double* angles) {
  for (int i = 0; i < mesh.FaceCount(); ++i) {
    const int* corner = mesh.m_F[i].vi;
    const ON_3dPoint p[4] = {mesh.Vertex(corner[0]), mesh.Vertex(corner[1]), mesh.Vertex(corner[2]),
                             mesh.Vertex(corner[3])};
    TetrahedronDihedralAngles(p, angles + 6 * static_cast<std::size_t>(i));
  }
}

}  // namespace brindle

extern "C" BRINDLE_API int DihedralAngles(const ON_Mesh* mesh, double* angles, char* error) {
  brindle::ClearErrorText(error);
  if (mesh == nullptr) {
    brindle::SetErrorText(error, "Null mesh");
    return 1;
  }
  if (angles == nullptr && mesh->FaceCount() > 0) {
    brindle::SetErrorText(error, "Null output array");
    return 2;
  }
  brindle::ComputeDihedralAngles(*mesh, angles);
  return 0;
}
