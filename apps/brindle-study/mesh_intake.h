// Reading a user's mesh for a study: gmsh .msh files and .geo geometries through gmsh's own
// library, MEDIT .mesh files through the tool's reader; naming references; uniform refinement.
#ifndef BRINDLE_STUDY_MESH_INTAKE_H
#define BRINDLE_STUDY_MESH_INTAKE_H

#include <stdexcept>
#include <string>
#include <vector>

#include "study_mesh.h"

namespace brindle::study {

// A mesh the tool cannot study; what() is meant for the user and names the file.
class MeshInputError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// True when this build reads .msh and meshes .geo files (it was built with gmsh's library).
bool CanReadGmshFiles();

// Reads a .msh (gmsh, ASCII or binary, format 2 or 4) or .mesh (MEDIT, ASCII) file.
// Element references are gmsh physical group tags (the elementary entity tags for a dimension
// that has no physical groups) or MEDIT references; gmsh physical names fill `names`.
// A mesh with tetrahedra is 3-D; one of triangles only that lies in a plane z = constant (or a
// MEDIT file of Dimension 2) is a 2-D section and gets z = 0. Vertices no element uses are
// dropped. Boundary elements of an entity in several physical groups appear once per group.
// Elements the solvers cannot take (quadrilaterals, hexahedra, prisms, pyramids,
// higher-order elements) are refused with their counts: never silently dropped.
StudyMesh ReadStudyMesh(const std::string& path);

// Meshes a gmsh geometry with elements no larger than `meshSize` (in the geometry's units):
// tetrahedra when it has volumes, triangles otherwise. Physical groups are kept as above.
StudyMesh MeshGeometry(const std::string& geoPath, double meshSize);

// Reference numbers of the entities of `entityDimension` (3 tetrahedra, 2 triangles, 1 edges)
// that `keys` name: a name the file gives, or a reference number written as text. The result
// has no duplicates and follows the order of the keys. An unknown key, or a name whose elements
// the mesh lacks, throws MeshInputError with the file's references and names; `what` names
// the role of the keys in the message (e.g. "material", "boundary of environment inside").
std::vector<int> ResolveReferences(const StudyMesh& mesh, int entityDimension,
                                   const std::vector<std::string>& keys, const std::string& what);

// One line per reference of the entities of `entityDimension`, with its name and element
// count, e.g. `  2 "insulation": 840 tetrahedra`.
std::string DescribeReferences(const StudyMesh& mesh, int entityDimension);

// Splits each tetrahedron into 8, each triangle into 4 and each edge into 2 through the
// midpoints of their edges, shared between elements so that the result stays conforming.
// References, names and the dimension are kept; new vertices follow the old ones.
StudyMesh RefineUniformly(const StudyMesh& mesh);

}  // namespace brindle::study

#endif
