#include "meshtools/quality_mmg.h"

#include <vector>

#include "mmglink/mmg_arrays.h"
#include "mmglink/mmg_handles.h"

namespace brindle {

const char* MmgQualityMessage(bool surface, int status) {
  switch (status) {
    case kQualityMeshSize:
      return surface ? "MMGS_Set_meshSize failed" : "MMG3D_Set_meshSize failed";
    case kQualityVertices:
      return surface ? "MMGS_Set_vertices failed" : "MMG3D_Set_vertices failed";
    case kQualityElements:
      return surface ? "MMGS_Set_triangles failed" : "MMG3D_Set_tetrahedra failed";
    case kQualityCheck:
      return surface ? "MMGS_Chk_meshData failed" : "MMG3D_Chk_meshData failed";
    default:
      return "";
  }
}

namespace {

// Hands the mesh to MMG element by element and reads back every element's quality. `Api` is
// Mmg3dApi (tetrahedra) or MmgsApi (triangles).
template <class Api>
int MmgElementQualities(const ON_Mesh& mesh, double* quality) {
  MmgHandles<Api> mmg;
  mmg.CreateWithMetric();
  const int vertexCount = mesh.m_dV.Count();
  const int elementCount = mesh.FaceCount();
  std::vector<int> vertexReferences = MmgVertexReferences(mesh, vertexCount);
  std::vector<int> elementReferences(static_cast<std::size_t>(elementCount), 0);
  if (Api::SetMeshSize(mmg.mesh, vertexCount, elementCount) != 1) return kQualityMeshSize;
  if (Api::SetVertices(mmg.mesh, CoordinateArray(mesh.m_dV), vertexReferences.data()) != 1) {
    return kQualityVertices;
  }
  std::vector<int> corners;
  if (!MmgElementCorners(mesh, vertexCount, Api::kCornerCount, corners) ||
      Api::SetElements(mmg.mesh, corners.data(), elementReferences.data()) != 1) {
    return kQualityElements;
  }
  if (Api::ChkMeshData(mmg.mesh, mmg.metric) != 1) return kQualityCheck;
  for (int k = 1; k <= elementCount; ++k) {
    quality[k - 1] = Api::ElementQuality(mmg.mesh, mmg.metric, k);
  }
  return kQualitySucceeded;
}

}  // namespace

int MmgTetrahedronQualities(const ON_Mesh& mesh, double* quality) {
  return MmgElementQualities<Mmg3dApi>(mesh, quality);
}

int MmgTriangleQualities(const ON_Mesh& mesh, double* quality) {
  return MmgElementQualities<MmgsApi>(mesh, quality);
}

}  // namespace brindle
