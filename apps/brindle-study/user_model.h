// Turns a MEDIT mesh and the user's reference assignments into a study model.
#ifndef BRINDLE_STUDY_USER_MODEL_H
#define BRINDLE_STUDY_USER_MODEL_H

#include <map>
#include <stdexcept>
#include <vector>

#include "medit.h"
#include "model.h"

namespace brindle::study {

// Which reference numbers mean what. Element references (tetrahedra in a volume mesh,
// triangles in a surface mesh) select materials. The boundary groups select the vertices of the
// boundary elements carrying those references (triangles of a volume mesh, edges of a surface
// mesh); a mesh without such boundary elements is matched by vertex references instead.
struct Assignment {
  std::map<int, double> conductivity;  // element reference -> W/(m K)
  std::vector<int> low;                // cold side
  std::vector<int> high;               // warm side
  std::vector<int> surface;            // where the lowest surface temperature is looked for
};

// A reference assignment that does not fit the mesh.
class AssignmentError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// A mesh with tetrahedra is a volume model; one with triangles only is a surface model.
bool IsVolumeMesh(const MeditMesh& mesh);
TetMesh BuildVolumeModel(const MeditMesh& mesh, const Assignment& assignment);
TriMesh BuildSurfaceModel(const MeditMesh& mesh, const Assignment& assignment);

}  // namespace brindle::study

#endif
