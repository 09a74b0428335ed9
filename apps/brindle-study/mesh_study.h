// The --mesh options as a study: the --high references are the inside environment, the --low
// ones the outside, both without surface resistance.
#ifndef BRINDLE_STUDY_MESH_STUDY_H
#define BRINDLE_STUDY_MESH_STUDY_H

#include <nlohmann/json.hpp>

#include "options.h"

namespace brindle::study {

nlohmann::json MeshShorthandStudy(const Options& options);

}  // namespace brindle::study

#endif
