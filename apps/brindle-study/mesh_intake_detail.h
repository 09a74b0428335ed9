// Steps shared by the mesh readers of mesh_intake.h.
#ifndef BRINDLE_STUDY_MESH_INTAKE_DETAIL_H
#define BRINDLE_STUDY_MESH_INTAKE_DETAIL_H

#include <string>
#include <utility>
#include <vector>

#include "study_mesh.h"

namespace brindle::study::intake_detail {

// Elements of kinds the solvers cannot take, counted per kind in the user's words
// ({"quadrilateral", "quadrilaterals"}, {"second-order tetrahedron", "second-order tetrahedra"}),
// in the order the reader met them.
class RefusedElements {
 public:
  struct Kind {
    std::string one;
    std::string many;
  };
  void Add(const Kind& kind, long count);
  bool Empty() const { return counts_.empty(); }
  bool AnyHigherOrder() const { return higherOrder_; }
  // "312 quadrilaterals, 4 prisms"
  std::string Summary() const;
  void MarkHigherOrder() { higherOrder_ = true; }

 private:
  std::vector<std::pair<Kind, long>> counts_;
  bool higherOrder_ = false;
};

// Refuses what the solvers cannot take, decides the study's dimension (3 with tetrahedra; 2 for
// triangles in a plane z = constant, or when the file declares 2), puts a section at z = 0 and
// drops vertices no element uses. `source` names the file in messages.
void FinishStudyMesh(StudyMesh& mesh, int declaredDimension, const RefusedElements& refused,
                     const std::string& source);

// The gmsh side (gmsh_model.cpp); without gmsh's library they throw MeshInputError.
StudyMesh ReadGmshMesh(const std::string& path);
StudyMesh MeshGmshGeometry(const std::string& path, double meshSize);

}  // namespace brindle::study::intake_detail

#endif
