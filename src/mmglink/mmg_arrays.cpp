#include "mmglink/mmg_arrays.h"

#include <cstring>

namespace brindle {

std::vector<int> MmgVertexReferences(const ON_Mesh& mesh, int vertexCount) {
  std::vector<int> references(static_cast<std::size_t>(vertexCount), 0);
  if (mesh.HasVertexColors()) {
    // The colour list follows the single-precision vertices; never read past it when the
    // double-precision list is longer.
    const int count = vertexCount < mesh.m_C.Count() ? vertexCount : mesh.m_C.Count();
    for (int i = 0; i < count; ++i) {
      const unsigned int packed = mesh.m_C[i];
      std::memcpy(&references[i], &packed, sizeof packed);
    }
  }
  return references;
}

bool MmgElementCorners(const ON_Mesh& mesh, int vertexCount, int cornerCount,
                       std::vector<int>& corners) {
  const int faceCount = mesh.FaceCount();
  corners.resize(static_cast<std::size_t>(cornerCount) * faceCount);
  for (int i = 0; i < faceCount; ++i) {
    for (int j = 0; j < cornerCount; ++j) {
      const int v = mesh.m_F[i].vi[j];
      if (v < 0 || v >= vertexCount) return false;
      corners[static_cast<std::size_t>(cornerCount) * i + j] = v + 1;
    }
  }
  return true;
}

}  // namespace brindle
