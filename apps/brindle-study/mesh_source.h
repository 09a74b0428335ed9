// Where a study's mesh comes from, and what its material and boundary names stand for.
#ifndef BRINDLE_STUDY_MESH_SOURCE_H
#define BRINDLE_STUDY_MESH_SOURCE_H

#include <string>
#include <vector>

#include "study_file.h"
#include "study_mesh.h"

namespace brindle::study {

// Reads the study's "mesh" (or meshes its "geometry"), relative to baseDir.
StudyMesh LoadStudyMesh(const StudyDefinition& definition, const std::string& baseDir);

}  // namespace brindle::study

#endif
