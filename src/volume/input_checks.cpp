#include "volume/input_checks.h"

#include <cstdint>

namespace brindle {
namespace {

bool AllBelow(const int* values, std::int64_t count, int limit) {
  for (std::int64_t i = 0; i < count; ++i) {
    if (values[i] < 0 || values[i] >= limit) return false;
  }
  return true;
}

bool CountsAreUsable(const VolumeInput& in) {
  if (in.vertexCount <= 0 || in.tetrahedronCount <= 0 || in.materialCount <= 0) return false;
  if (in.highCount < 0 || in.lowCount < 0) return false;
  return std::int64_t(in.highCount) + in.lowCount > 0;
}

bool ArraysArePresent(const VolumeInput& in) {
  return in.coordinates && in.tetrahedra && in.tetrahedronMaterials && in.conductivities &&
         (in.highCount == 0 || in.highVertices) && (in.lowCount == 0 || in.lowVertices);
}

}  // namespace

bool IsUsableVolumeInput(const VolumeInput& in) {
  return CountsAreUsable(in) && ArraysArePresent(in) &&
         AllBelow(in.tetrahedra, 4 * std::int64_t(in.tetrahedronCount), in.vertexCount) &&
         AllBelow(in.tetrahedronMaterials, in.tetrahedronCount, in.materialCount) &&
         AllBelow(in.highVertices, in.highCount, in.vertexCount) &&
         AllBelow(in.lowVertices, in.lowCount, in.vertexCount);
}

}  // namespace brindle
