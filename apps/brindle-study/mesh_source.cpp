#include "mesh_source.h"

#include "mesh_intake.h"

#include <filesystem>

namespace brindle::study {
StudyMesh LoadStudyMesh(const StudySpec& spec, const std::string& baseDir) {
  const std::filesystem::path base(baseDir);
  if (!spec.geometry.empty()) return MeshGeometry((base / spec.geometry).string(), spec.meshSize);
  return ReadStudyMesh((base / spec.mesh).string());
}

}  // namespace brindle::study
