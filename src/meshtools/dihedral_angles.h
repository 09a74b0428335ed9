// Interior dihedral angles of tetrahedra, six per element, in the edge order
// (0,1), (0,2), (0,3), (1,2), (1,3), (2,3).
#ifndef BRINDLE_MESHTOOLS_DIHEDRAL_ANGLES_H
#define BRINDLE_MESHTOOLS_DIHEDRAL_ANGLES_H

#include "opennurbs.h"

namespace brindle {

// Writes the six angles in radians of every face of `mesh`, read as a tetrahedron, into
// `angles` (six per face); an angle beside a face whose normal vanishes is 0.
void ComputeDihedralAngles(const ON_Mesh& mesh, double* angles);

}  // namespace brindle

#endif
