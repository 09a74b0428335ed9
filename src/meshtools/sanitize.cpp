#include "meshtools/sanitize.h"

#include <algorithm>
#include <new>

#include "brindle.h"
#include "common/error_text.h"

namespace brindle {

SanitizeProblem FindSanitizeProblem(const ON_Mesh& mesh) {
  const int single_count = mesh.m_V.Count();
  const int double_count = mesh.m_dV.Count();
  if (mesh.TriangleCount() != 0 && mesh.QuadCount() != 0) return SanitizeProblem::kMixedFaceTypes;
  if (single_count != 0 && double_count != 0 && single_count != double_count) {
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

extern "C" BRINDLE_API int TrySanitize(const ON_Mesh* mesh, int* error_code, ON_Mesh** result,
                                       char* error) {
  using brindle::SanitizeProblem;
  brindle::ClearErrorText(error);
  if (mesh == nullptr || error_code == nullptr) {
    if (result != nullptr) *result = nullptr;
    brindle::SetErrorText(error, "Null mesh or error code pointer");
    return 1;
  }
  const SanitizeProblem problem = brindle::FindSanitizeProblem(*mesh);
  if (problem != SanitizeProblem::kNone) {
    if (result != nullptr) *result = nullptr;
    switch (problem) {
      case SanitizeProblem::kMixedFaceTypes:
        *error_code = -1;
        brindle::SetErrorText(error, "Mesh has both triangles and quads");
        return 2;
      case SanitizeProblem::kVertexCountsDiffer:
        *error_code = -2;
        brindle::SetErrorText(error, "Single and double precision vertex counts differ");
        return 3;
      default:
        *error_code = -2;
        brindle::SetErrorText(error,
                              "Vertices not synchronized between single and double precision");
        return 3;
    }
  }
  if (result == nullptr) {
    brindle::SetErrorText(error, "Null result pointer");
    return 4;
  }
  try {
    *result = brindle::CopyWithBothPrecisions(*mesh).release();
  } catch (const std::bad_alloc&) {
    *result = nullptr;
    brindle::SetErrorText(error, "Out of memory");
    return 5;
  }
  return 0;
}
