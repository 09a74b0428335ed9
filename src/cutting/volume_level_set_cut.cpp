// Volume branch of the level-set cut (MMG3D): tetrahedra stored as quad faces.
#include <vector>

#include "cutting/interface_extraction.h"
#include "cutting/level_set_cut.h"
#include "mmglink/mmg_arrays.h"
#include "mmglink/mmg_handles.h"
#include "cutting/signal_guard.h"

namespace brindle {

namespace {

using namespace level_set_cut_detail;

// The production parameter sequence. Only the iso switch is checked. The Hausdorff distance
// goes through the integer setter and hmin is stored as hmax before hmax itself: MMG refuses
// the first and the second is overwritten, so neither reaches the cut, and this is kept so that
// results stay those of the meshes the host already holds.
bool SetParameters(MMG5_pMesh mesh, MMG5_pSol levelSet, const ON_Mesh& input, double hmin,
                   double hmax) {
  if (MMG3D_Set_iparameter(mesh, levelSet, MMG3D_IPARAM_iso, 1) != 1) return false;
  MMG3D_Set_iparameter(mesh, levelSet, MMG3D_IPARAM_nreg, 0);
  MMG3D_Set_iparameter(mesh, levelSet, MMG3D_IPARAM_noinsert, 1);
  MMG3D_Set_iparameter(mesh, levelSet, MMG3D_DPARAM_hausd, HausdorffAsInteger(input));
  MMG3D_Set_dparameter(mesh, levelSet, MMG3D_DPARAM_hgrad, 20.0);
  MMG3D_Set_dparameter(mesh, levelSet, MMG3D_DPARAM_hmax, hmin);
  MMG3D_Set_dparameter(mesh, levelSet, MMG3D_DPARAM_hmax, hmax);
  MMG3D_Set_iparameter(mesh, levelSet, MMG3D_IPARAM_angle, 0);
  return true;
}

}  // namespace

LevelSetCutOutcome CutVolumeAlongZeroLevel(const LevelSetCutRequest& request) {
  const ON_Mesh& input = *request.mesh;
  LevelSetCutOutcome outcome;
  Mmg3dHandles mmg;
  mmg.CreateWithLevelSet();
  if (!SetParameters(mmg.mesh, mmg.levelSet, input, request.hmin, request.hmax)) {
    outcome.status = kCutVolumeIso;
    return outcome;
  }

  const int vertexCount = input.m_dV.Count();
  const int faceCount = input.FaceCount();
  std::vector<int> vertexReferences = MmgVertexReferences(input, vertexCount);
  std::vector<int> elementReferences(static_cast<std::size_t>(faceCount), 0);
  if (MMG3D_Set_meshSize(mmg.mesh, vertexCount, faceCount, 0, 0, 0, 0) != 1) {
    outcome.status = kCutVolumeMeshSize;
    return outcome;
  }
  if (MMG3D_Set_vertices(mmg.mesh, CoordinateArray(input.m_dV), vertexReferences.data()) != 1) {
    outcome.status = kCutVolumeVertices;
    return outcome;
  }
  std::vector<int> corners;
  if (!MmgElementCorners(input, vertexCount, 4, corners) ||
      MMG3D_Set_tetrahedra(mmg.mesh, corners.data(), elementReferences.data()) != 1) {
    outcome.status = kCutVolumeTetrahedra;
    return outcome;
  }
  if (MMG3D_Set_solSize(mmg.mesh, mmg.levelSet, MMG5_Vertex, vertexCount, MMG5_Scalar) != 1) {
    outcome.status = kCutVolumeSolSize;
    return outcome;
  }
  // MMG copies the values; its setter only lacks const.
  if (MMG3D_Set_scalarSols(mmg.levelSet, const_cast<double*>(request.vertexValues)) != 1) {
    outcome.status = kCutVolumeScalarSols;
    return outcome;
  }
  if (MMG3D_Chk_meshData(mmg.mesh, mmg.levelSet) != 1) {
    outcome.status = kCutVolumeCheck;
    return outcome;
  }
  int engineStatus;
  {
    SignalHandlerGuard keepHostHandlers;
    engineStatus = MMG3D_mmg3dls(mmg.mesh, mmg.levelSet, nullptr);
  }
  // A low failure still leaves a usable cut mesh; only a strong failure is an error.
  if (engineStatus != MMG5_SUCCESS && engineStatus != MMG5_LOWFAILURE) {
    outcome.status = kCutVolumeLevelSet;
    outcome.engineStatus = engineStatus;
    return outcome;
  }

  MMG5_int np = 0, ne = 0, nprism = 0, nt = 0, nquad = 0, na = 0;
  MMG3D_Get_meshSize(mmg.mesh, &np, &ne, &nprism, &nt, &nquad, &na);
  auto result = std::make_unique<ON_Mesh>();
  SizeResultArrays(*result, np, ne);
  // Vertex references come back as packed colours, the way they went in.
  MMG3D_Get_vertices(mmg.mesh, CoordinateArray(result->m_dV), ColourReferenceArray(result->m_C),
                     nullptr, nullptr);
  if (engineStatus == MMG5_LOWFAILURE) RestoreInputFrame(input, *result);
  result->UpdateSinglePrecisionVertices();
  std::vector<int> references(static_cast<std::size_t>(ne), 0);
  MMG3D_Get_tetrahedra(mmg.mesh, FaceIndexArray(result->m_F), references.data(), nullptr);
  for (int i = 0; i < ne; ++i) {
    for (int& v : result->m_F[i].vi)
      --v;
  }
  if (request.interfaceMesh) {
    ExtractInterface(mmg.mesh, nt, *result, references, *request.interfaceMesh);
  }
  mmg.Release();
  result->UpdateSinglePrecisionVertices();

  FinishResult(*result, references, request.keepRef);
  outcome.mesh = std::move(result);
  return outcome;
}

}  // namespace brindle
