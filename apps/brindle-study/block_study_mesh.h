// Block-meshed details as study meshes, so that the built-in examples and the tests run through
// the same engine as a user's file.
#ifndef BRINDLE_STUDY_BLOCK_STUDY_MESH_H
#define BRINDLE_STUDY_BLOCK_STUDY_MESH_H

#include <functional>

#include "model.h"
#include "study_mesh.h"

namespace brindle::study {

// Gives an outside face its boundary reference from its centre and outward unit normal; 0
// leaves the face out (adiabatic).
using FaceTagger = std::function<int(const Point& centre, const Point& normal)>;

// Elements carry their material index + 1 as reference; the outside faces (edges in 2-D) that
// the tagger names become boundary elements.
StudyMesh BlockStudyMesh(const TetMesh& mesh, const FaceTagger& tag);
StudyMesh BlockStudyMesh(const TriMesh& mesh, const FaceTagger& tag);

}  // namespace brindle::study

#endif
