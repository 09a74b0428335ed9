// A study of the user's own MEDIT mesh.
#ifndef BRINDLE_STUDY_MESH_STUDY_H
#define BRINDLE_STUDY_MESH_STUDY_H

#include "json_writer.h"
#include "options.h"
#include "report.h"

namespace brindle::study {

// Reads the mesh, solves it with the volume or the surface solver and writes its results.
JsonObject RunMeshStudy(const Options& options, const Progress& progress);

}  // namespace brindle::study

#endif
