// The two MMG branches of the level-set cut, one driver instantiated per MMG library: the
// volume branch (MMG3D, tetrahedra stored as quad faces) and the surface branch (MMGS,
// triangle faces only).
#include <memory>
#include <vector>

#include "cutting/interface_extraction.h"
#include "cutting/level_set_cut.h"
#include "cutting/signal_guard.h"
#include "mmglink/mmg_arrays.h"
#include "mmglink/mmg_handles.h"

namespace brindle {

namespace {

using namespace level_set_cut_detail;

// The status each step of a branch reports when MMG refuses it.
struct CutStatuses {
  LevelSetCutStatus iso;
  LevelSetCutStatus meshSize;
  LevelSetCutStatus vertices;
  LevelSetCutStatus elements;
  LevelSetCutStatus solSize;
  LevelSetCutStatus scalarSols;
  LevelSetCutStatus check;
  LevelSetCutStatus levelSet;
};

// Counts of the cut as MMG reports them.
struct CutSize {
  int vertexCount = 0;
  int elementCount = 0;
  int boundaryTriangleCount = 0;
};

struct VolumeBranch {
  using Api = Mmg3dApi;
  static constexpr CutStatuses kStatuses = {
      kCutVolumeIso,     kCutVolumeMeshSize,   kCutVolumeVertices, kCutVolumeTetrahedra,
      kCutVolumeSolSize, kCutVolumeScalarSols, kCutVolumeCheck,    kCutVolumeLevelSet};

  static CutSize GetSize(MMG5_pMesh mmgMesh) {
    MMG5_int np = 0, ne = 0, nprism = 0, nt = 0, nquad = 0, na = 0;
    MMG3D_Get_meshSize(mmgMesh, &np, &ne, &nprism, &nt, &nquad, &na);
    return {np, ne, nt};
  }

  // The tetrahedra come back as whole arrays, 1-based; the interface, when asked for, is read
  // from the boundary triangles while MMG still holds them.
  static void ReadElements(MMG5_pMesh mmgMesh, const CutSize& size, ON_Mesh& result,
                           std::vector<int>& references, ON_Mesh* interfaceMesh) {
    MMG3D_Get_tetrahedra(mmgMesh, FaceIndexArray(result.m_F), references.data(), nullptr);
    for (int i = 0; i < size.elementCount; ++i) {
      for (int& v : result.m_F[i].vi)
        --v;
    }
    if (interfaceMesh) {
      ExtractInterface(mmgMesh, size.boundaryTriangleCount, result, references, *interfaceMesh);
    }
  }
};

struct SurfaceBranch {
  using Api = MmgsApi;
  static constexpr CutStatuses kStatuses = {
      kCutSurfaceIso,     kCutSurfaceMeshSize,   kCutSurfaceVertices, kCutSurfaceTriangles,
      kCutSurfaceSolSize, kCutSurfaceScalarSols, kCutSurfaceCheck,    kCutSurfaceLevelSet};

  static CutSize GetSize(MMG5_pMesh mmgMesh) {
    MMG5_int np = 0, nt = 0, na = 0;
    MMGS_Get_meshSize(mmgMesh, &np, &nt, &na);
    return {np, nt, nt};
  }

  // The triangles come back one call at a time, 1-based; a surface cut has no interface mesh.
  static void ReadElements(MMG5_pMesh mmgMesh, const CutSize& size, ON_Mesh& result,
                           std::vector<int>& references, ON_Mesh* /*interfaceMesh*/) {
    for (int i = 0; i < size.elementCount; ++i) {
      MMG5_int a = 0, b = 0, c = 0, ref = 0;
      int required = 0;
      MMGS_Get_triangle(mmgMesh, &a, &b, &c, &ref, &required);
      ON_MeshFace& face = result.m_F[i];
      face.vi[0] = a - 1;
      face.vi[1] = b - 1;
      face.vi[2] = c - 1;
      face.vi[3] = c - 1;
      references[i] = ref;
    }
  }
};

// The production parameter sequence. Only the iso switch is checked. The Hausdorff distance
// goes through the integer setter and hmin is stored as hmax before hmax itself: MMG refuses
// the first and the second is overwritten, so neither reaches the cut, and this is kept so that
// results stay those of the meshes the host already holds.
template <class Api>
bool SetParameters(MMG5_pMesh mesh, MMG5_pSol levelSet, const ON_Mesh& input, double hmin,
                   double hmax) {
  if (Api::SetIparameter(mesh, levelSet, Api::kIsoKey, 1) != 1) return false;
  Api::SetIparameter(mesh, levelSet, Api::kNregKey, 0);
  Api::SetIparameter(mesh, levelSet, Api::kNoinsertKey, 1);
  Api::SetIparameter(mesh, levelSet, Api::kHausdKey, HausdorffAsInteger(input));
  Api::SetDparameter(mesh, levelSet, Api::kHgradKey, 20.0);
  Api::SetDparameter(mesh, levelSet, Api::kHmaxKey, hmin);
  Api::SetDparameter(mesh, levelSet, Api::kHmaxKey, hmax);
  Api::SetIparameter(mesh, levelSet, Api::kAngleKey, 0);
  return true;
}

// Hands the parameters, the mesh and the level-set values to MMG and has it check them;
// returns the status of the first step MMG refuses, or kCutSucceeded.
template <class Branch>
LevelSetCutStatus LoadInput(MmgHandles<typename Branch::Api>& mmg,
                            const LevelSetCutRequest& request) {
  using Api = typename Branch::Api;
  constexpr const CutStatuses& kFailed = Branch::kStatuses;
  const ON_Mesh& input = *request.mesh;
  if (!SetParameters<Api>(mmg.mesh, mmg.levelSet, input, request.hmin, request.hmax)) {
    return kFailed.iso;
  }
  const int vertexCount = input.m_dV.Count();
  const int faceCount = input.FaceCount();
  std::vector<int> vertexReferences = MmgVertexReferences(input, vertexCount);
  std::vector<int> elementReferences(static_cast<std::size_t>(faceCount), 0);
  if (Api::SetMeshSize(mmg.mesh, vertexCount, faceCount) != 1) return kFailed.meshSize;
  if (Api::SetVertices(mmg.mesh, CoordinateArray(input.m_dV), vertexReferences.data()) != 1) {
    return kFailed.vertices;
  }
  std::vector<int> corners;
  if (!MmgElementCorners(input, vertexCount, Api::kCornerCount, corners) ||
      Api::SetElements(mmg.mesh, corners.data(), elementReferences.data()) != 1) {
    return kFailed.elements;
  }
  if (Api::SetSolSize(mmg.mesh, mmg.levelSet, vertexCount) != 1) return kFailed.solSize;
  // MMG copies the values; its setter only lacks const.
  if (Api::SetScalarSols(mmg.levelSet, const_cast<double*>(request.vertexValues)) != 1) {
    return kFailed.scalarSols;
  }
  if (Api::ChkMeshData(mmg.mesh, mmg.levelSet) != 1) return kFailed.check;
  return kCutSucceeded;
}

// MMG installs handlers of its own for some signals; the host's are put back afterwards.
template <class Api>
int RunLevelSet(MmgHandles<Api>& mmg) {
  SignalHandlerGuard keepHostHandlers;
  return Api::LevelSet(mmg.mesh, mmg.levelSet);
}

// Reads the cut back while MMG still holds it: vertices with their references, then the
// elements with theirs.
template <class Branch>
std::unique_ptr<ON_Mesh> ReadResult(MMG5_pMesh mmgMesh, const LevelSetCutRequest& request,
                                    bool lowFailure, std::vector<int>& references) {
  const CutSize size = Branch::GetSize(mmgMesh);
  auto result = std::make_unique<ON_Mesh>();
  SizeResultArrays(*result, size.vertexCount, size.elementCount);
  // Vertex references come back as packed colors, the way they went in.
  Branch::Api::GetVertices(mmgMesh, CoordinateArray(result->m_dV),
                           ColorReferenceArray(result->m_C));
  if (lowFailure) RestoreInputFrame(*request.mesh, *result);
  result->UpdateSinglePrecisionVertices();
  references.assign(static_cast<std::size_t>(size.elementCount), 0);
  Branch::ReadElements(mmgMesh, size, *result, references, request.interfaceMesh);
  return result;
}

template <class Branch>
LevelSetCutOutcome CutWith(const LevelSetCutRequest& request) {
  LevelSetCutOutcome outcome;
  MmgHandles<typename Branch::Api> mmg;
  mmg.CreateWithLevelSet();
  outcome.status = LoadInput<Branch>(mmg, request);
  if (outcome.status != kCutSucceeded) return outcome;
  const int engineStatus = RunLevelSet(mmg);
  // A low failure still leaves a usable cut mesh; only a strong failure is an error.
  if (engineStatus != MMG5_SUCCESS && engineStatus != MMG5_LOWFAILURE) {
    outcome.status = Branch::kStatuses.levelSet;
    outcome.engineStatus = engineStatus;
    return outcome;
  }
  std::vector<int> references;
  std::unique_ptr<ON_Mesh> result =
      ReadResult<Branch>(mmg.mesh, request, engineStatus == MMG5_LOWFAILURE, references);
  mmg.Release();
  FinishResult(*result, references, request.keepRef);
  outcome.mesh = std::move(result);
  return outcome;
}

}  // namespace

LevelSetCutOutcome CutVolumeAlongZeroLevel(const LevelSetCutRequest& request) {
  return CutWith<VolumeBranch>(request);
}

LevelSetCutOutcome CutSurfaceAlongZeroLevel(const LevelSetCutRequest& request) {
  return CutWith<SurfaceBranch>(request);
}

}  // namespace brindle
