// Surface branch of the level-set cut (MMGS): triangle faces only.
#include <vector>

#include "cutting/level_set_cut.h"
#include "mmglink/mmg_arrays.h"
#include "mmglink/mmg_handles.h"
#include "cutting/signal_guard.h"

namespace brindle {

namespace {

using namespace level_set_cut_detail;

// Same sequence as the volume branch, with MMGS's parameter keys.
bool SetParameters(MMG5_pMesh mesh, MMG5_pSol levelSet, const ON_Mesh& input, double hmin,
                   double hmax) {
  if (MMGS_Set_iparameter(mesh, levelSet, MMGS_IPARAM_iso, 1) != 1) return false;
  MMGS_Set_iparameter(mesh, levelSet, MMGS_IPARAM_nreg, 0);
  MMGS_Set_iparameter(mesh, levelSet, MMGS_IPARAM_noinsert, 1);
  MMGS_Set_iparameter(mesh, levelSet, MMGS_DPARAM_hausd, HausdorffAsInteger(input));
  MMGS_Set_dparameter(mesh, levelSet, MMGS_DPARAM_hgrad, 20.0);
  MMGS_Set_dparameter(mesh, levelSet, MMGS_DPARAM_hmax, hmin);
  MMGS_Set_dparameter(mesh, levelSet, MMGS_DPARAM_hmax, hmax);
  MMGS_Set_iparameter(mesh, levelSet, MMGS_IPARAM_angle, 0);
  return true;
}

}  // namespace

LevelSetCutOutcome CutSurfaceAlongZeroLevel(const LevelSetCutRequest& request) {
  const ON_Mesh& input = *request.mesh;
  LevelSetCutOutcome outcome;
  MmgsHandles mmg;
  mmg.CreateWithLevelSet();
  if (!SetParameters(mmg.mesh, mmg.levelSet, input, request.hmin, request.hmax)) {
    outcome.status = kCutSurfaceIso;
    return outcome;
  }

  const int vertexCount = input.m_dV.Count();
  const int faceCount = input.FaceCount();
  std::vector<int> vertexReferences = MmgVertexReferences(input, vertexCount);
  std::vector<int> triangleReferences(static_cast<std::size_t>(faceCount), 0);
  if (MMGS_Set_meshSize(mmg.mesh, vertexCount, faceCount, 0) != 1) {
    outcome.status = kCutSurfaceMeshSize;
    return outcome;
  }
  if (MMGS_Set_vertices(mmg.mesh, CoordinateArray(input.m_dV), vertexReferences.data()) != 1) {
    outcome.status = kCutSurfaceVertices;
    return outcome;
  }
  std::vector<int> corners;
  if (!MmgElementCorners(input, vertexCount, 3, corners) ||
      MMGS_Set_triangles(mmg.mesh, corners.data(), triangleReferences.data()) != 1) {
    outcome.status = kCutSurfaceTriangles;
    return outcome;
  }
  if (MMGS_Set_solSize(mmg.mesh, mmg.levelSet, MMG5_Vertex, vertexCount, MMG5_Scalar) != 1) {
    outcome.status = kCutSurfaceSolSize;
    return outcome;
  }
  // MMG copies the values; its setter only lacks const.
  if (MMGS_Set_scalarSols(mmg.levelSet, const_cast<double*>(request.vertexValues)) != 1) {
    outcome.status = kCutSurfaceScalarSols;
    return outcome;
  }
  if (MMGS_Chk_meshData(mmg.mesh, mmg.levelSet) != 1) {
    outcome.status = kCutSurfaceCheck;
    return outcome;
  }
  int engineStatus;
  {
    SignalHandlerGuard keepHostHandlers;
    engineStatus = MMGS_mmgsls(mmg.mesh, mmg.levelSet, nullptr);
  }
  if (engineStatus != MMG5_SUCCESS && engineStatus != MMG5_LOWFAILURE) {
    outcome.status = kCutSurfaceLevelSet;
    outcome.engineStatus = engineStatus;
    return outcome;
  }

  MMG5_int np = 0, nt = 0, na = 0;
  MMGS_Get_meshSize(mmg.mesh, &np, &nt, &na);
  auto result = std::make_unique<ON_Mesh>();
  SizeResultArrays(*result, np, nt);
  MMGS_Get_vertices(mmg.mesh, CoordinateArray(result->m_dV), ColourReferenceArray(result->m_C),
                    nullptr, nullptr);
  if (engineStatus == MMG5_LOWFAILURE) RestoreInputFrame(input, *result);
  result->UpdateSinglePrecisionVertices();
  std::vector<int> references(static_cast<std::size_t>(nt), 0);
  for (int i = 0; i < nt; ++i) {
    MMG5_int a = 0, b = 0, c = 0, ref = 0;
    int required = 0;
    MMGS_Get_triangle(mmg.mesh, &a, &b, &c, &ref, &required);
    ON_MeshFace& face = result->m_F[i];
    face.vi[0] = a - 1;
    face.vi[1] = b - 1;
    face.vi[2] = c - 1;
    face.vi[3] = c - 1;
    references[i] = ref;
  }
  mmg.Release();
  result->UpdateSinglePrecisionVertices();

  FinishResult(*result, references, request.keepRef);
  outcome.mesh = std::move(result);
  return outcome;
}

}  // namespace brindle
