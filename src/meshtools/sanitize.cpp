#include "meshtools/sanitize.h"

#include <algorithm>
#include <new>

namespace brindle {

SanitizeProblem FindSanitizeProblem(const ON_Mesh& mesh) {
  const int singleCount = mesh.m_V.Count();
  const int doubleCount = mesh.m_dV.Count();
  if (mesh.TriangleCount() != 0 && mesh.QuadCount() != 0) return SanitizeProblem::kMixedFaceTypes;
  if (singleCount != 0 && doubleCount != 0 && singleCount != doubleCount) {
    return SanitizeProblem::kVertexCountsDiffer;
  }
  if (!mesh.HasSynchronizedDoubleAndSinglePrecisionVertices()) {
    return SanitizeProblem::kVerticesNotSynchronized;
  }
  return SanitizeProblem::kNone;
}

std::unique_ptr<ON_Mesh> CopyWithBothPrecisions(const ON_Mesh& mesh) {
  std::unique_ptr<ON_Mesh> copy(mesh.Duplicate());
  if (mesh.m_V.Count() == 0) copy->UpdateSinglePrecisionVertices();
  if (mesh.m_dV.Count() == 0) copy->UpdateDoublePrecisionVertices();
  // openNURBS copies report a failed allocation only by coming out short.
  const int vertexCount = std::max(mesh.m_V.Count(), mesh.m_dV.Count());
  if (copy->m_V.Count() != vertexCount || copy->m_dV.Count() != vertexCount ||
      copy->m_F.Count() != mesh.m_F.Count() || copy->m_C.Count() != mesh.m_C.Count() ||
      copy->m_N.Count() != mesh.m_N.Count()) {
    throw std::bad_alloc();
  }
  return copy;
}

}  // namespace brindle
