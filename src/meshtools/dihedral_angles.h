// Interior dihedral angles of tetrahedra, six per element, in the edge order
// (0,1), (0,2), (0,3), (1,2), (1,3), (2,3).
#ifndef BRINDLE_MESHTOOLS_DIHEDRAL_ANGLES_H
#define BRINDLE_MESHTOOLS_DIHEDRAL_ANGLES_H

#include "opennurbs.h"

namespace brindle {

// Unit normal of the triangle (a, b, c), turned away from the fourth corner d; the zero vector
// when the triangle has no direction (coincident or collinear corners).
ON_3dVector NormalAwayFrom(const ON_3dPoint& a, const ON_3dPoint& b, const ON_3dPoint& c,
                           const ON_3dPoint& d);

// The six dihedral angles in radians of the tetrahedron p[0..3]; an angle whose face normals
// vanish is 0.
void TetrahedronDihedralAngles(const ON_3dPoint p[4], double angles[6]);

// Writes six angles per face of `mesh` into `angles`, reading every face as a tetrahedron.
void ComputeDihedralAngles(const ON_Mesh& mesh, double* angles);

}  // namespace brindle

#endif
