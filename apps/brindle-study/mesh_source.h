// Where a study's mesh comes from, and what its material and boundary names stand for.
#ifndef BRINDLE_STUDY_MESH_SOURCE_H
#define BRINDLE_STUDY_MESH_SOURCE_H

#include <string>
#include <vector>

#include "medit.h"
#include "study_file.h"
#include "study_mesh.h"

namespace brindle::study {

// A MEDIT mesh as a study mesh: triangles only (or all z equal) make a 2-D section.
StudyMesh StudyMeshFromMedit(const MeditMesh& medit);

// MEDIT text of a study mesh with its elements and boundary elements (references kept).
std::string StudyMeshMeditText(const StudyMesh& mesh);

// Reads the study's "mesh" (or meshes its "geometry"), relative to baseDir.
StudyMesh LoadStudyMesh(const StudySpec& spec, const std::string& baseDir);

// Reference numbers of the entities of `entityDimension` that the keys name.
std::vector<int> ReferencesOf(const StudyMesh& mesh, int entityDimension,
                              const std::vector<std::string>& keys, const std::string& what);

}  // namespace brindle::study

#endif
