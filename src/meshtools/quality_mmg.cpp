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

int MmgTetrahedronQualities(const ON_Mesh& mesh, double* quality) {
  Mmg3dHandles mmg;
  mmg.CreateWithMetric();
  const int vertexCount = mesh.m_dV.Count();
  const int elementCount = mesh.FaceCount();
  std::vector<int> vertexReferences = MmgVertexReferences(mesh, vertexCount);
  std::vector<int> elementReferences(static_cast<std::size_t>(elementCount), 0);
  if (MMG3D_Set_meshSize(mmg.mesh, vertexCount, elementCount, 0, 0, 0, 0) != 1) {
    return kQualityMeshSize;
  }
  if (MMG3D_Set_vertices(mmg.mesh, CoordinateArray(mesh.m_dV), vertexReferences.data()) != 1) {
    return kQualityVertices;
  }
  std::vector<int> corners;
  if (!MmgElementCorners(mesh, vertexCount, 4, corners) ||
      MMG3D_Set_tetrahedra(mmg.mesh, corners.data(), elementReferences.data()) != 1) {
    return kQualityElements;
  }
  if (MMG3D_Chk_meshData(mmg.mesh, mmg.metric) != 1) return kQualityCheck;
  for (int k = 1; k <= elementCount; ++k) {
    quality[k - 1] = MMG3D_Get_tetrahedronQuality(mmg.mesh, mmg.metric, k);
  }
  return kQualitySucceeded;
}

int MmgTriangleQualities(const ON_Mesh& mesh, double* quality) {
  MmgsHandles mmg;
  mmg.CreateWithMetric();
  const int vertexCount = mesh.m_dV.Count();
  const int elementCount = mesh.FaceCount();
  std::vector<int> vertexReferences = MmgVertexReferences(mesh, vertexCount);
  std::vector<int> elementReferences(static_cast<std::size_t>(elementCount), 0);
  if (MMGS_Set_meshSize(mmg.mesh, vertexCount, elementCount, 0) != 1) return kQualityMeshSize;
  if (MMGS_Set_vertices(mmg.mesh, CoordinateArray(mesh.m_dV), vertexReferences.data()) != 1) {
    return kQualityVertices;
  }
  std::vector<int> corners;
  if (!MmgElementCorners(mesh, vertexCount, 3, corners) ||
      MMGS_Set_triangles(mmg.mesh, corners.data(), elementReferences.data()) != 1) {
    return kQualityElements;
  }
  if (MMGS_Chk_meshData(mmg.mesh, mmg.metric) != 1) return kQualityCheck;
  for (int k = 1; k <= elementCount; ++k) {
    quality[k - 1] = MMGS_Get_triangleQuality(mmg.mesh, mmg.metric, k);
  }
  return kQualitySucceeded;
}

}  // namespace brindle
