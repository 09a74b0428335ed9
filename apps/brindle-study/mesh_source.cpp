#include "mesh_source.h"

#include "mesh_intake.h"

#include <filesystem>

namespace brindle::study {
StudyMesh LoadStudyMesh(const StudyDefinition& definition, const std::string& baseDir) {
  const std::filesystem::path base(baseDir);
  if (!definition.geometry.empty())
    return MeshGeometry((base / definition.geometry).string(), definition.meshSize);
  return ReadStudyMesh((base / definition.mesh).string());
}

}  // namespace brindle::study
