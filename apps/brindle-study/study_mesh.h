// A user's mesh as a study reads it: the elements the solvers take, the boundary elements that
// environments are attached to, the file's own reference numbers and the names it gives them.
#ifndef BRINDLE_STUDY_STUDY_MESH_H
#define BRINDLE_STUDY_STUDY_MESH_H

#include <array>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "model.h"

namespace brindle::study {

struct StudyMesh {
  // 3: tetrahedra are the elements, triangles the boundary faces. 2: a section, triangles are
  // the elements (z = 0 after reading), edges the boundary segments.
  int dimension = 3;
  std::vector<Point> vertices;  // in the file's length unit
  std::vector<std::array<int, 4>> tetrahedra;
  std::vector<int> tetrahedronRef;
  std::vector<std::array<int, 3>> triangles;
  std::vector<int> triangleRef;
  std::vector<std::array<int, 2>> edges;
  std::vector<int> edgeRef;
  // Names of references, keyed by (entity dimension, reference number): gmsh physical names.
  // MEDIT files carry none.
  std::map<std::pair<int, int>, std::string> names;
};

}  // namespace brindle::study

#endif
