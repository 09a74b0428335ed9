#include "cutting/level_set_cut.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <new>

#include "cutting/mesh_archive.h"

namespace brindle {

const char* LevelSetCutMessage(int status) {
  switch (status) {
    case kCutNullMesh:
      return "Null input mesh";
    case kCutNullValues:
      return "Null vertex values";
    case kCutMixedFaces:
      return "Mesh has both triangles and quads";
    case kCutVolumeIso:
      return "MMG3D_Set_iparameter iso failed";
    case kCutVolumeMeshSize:
      return "MMG3D_Set_meshSize failed";
    case kCutVolumeVertices:
      return "MMG3D_Set_vertices failed";
    case kCutVolumeTetrahedra:
      return "MMG3D_Set_tetrahedra failed";
    case kCutVolumeSolSize:
      return "MMG3D_Set_solSize failed";
    case kCutVolumeScalarSols:
      return "MMG3D_Set_scalarSols failed";
    case kCutVolumeCheck:
      return "MMG3D_Chk_meshData failed";
    case kCutVolumeLevelSet:
      return "MMG3D_mmg3dls failed with status %d";
    case kCutSurfaceIso:
      return "MMGS_Set_iparameter iso failed";
    case kCutSurfaceMeshSize:
      return "MMGS_Set_meshSize failed";
    case kCutSurfaceVertices:
      return "MMGS_Set_vertices failed";
    case kCutSurfaceTriangles:
      return "MMGS_Set_triangles failed";
    case kCutSurfaceSolSize:
      return "MMGS_Set_solSize failed";
    case kCutSurfaceScalarSols:
      return "MMGS_Set_scalarSols failed";
    case kCutSurfaceCheck:
      return "MMGS_Chk_meshData failed";
    case kCutSurfaceLevelSet:
      return "MMGS_mmgsls failed with status %d";
    default:
      return "";
  }
}

LevelSetCutOutcome CutAlongZeroLevel(const LevelSetCutRequest& request) {
  LevelSetCutOutcome outcome;
  if (!request.mesh) {
    outcome.status = kCutNullMesh;
  } else if (!request.vertexValues) {
    outcome.status = kCutNullValues;
  } else if (request.mesh->TriangleCount() == 0) {
    outcome = CutVolumeAlongZeroLevel(request);
  } else if (request.mesh->QuadCount() != 0) {
    outcome.status = kCutMixedFaces;
  } else {
    outcome = CutSurfaceAlongZeroLevel(request);
  }
  return outcome;
}

namespace level_set_cut_detail {

int HausdorffAsInteger(const ON_Mesh& mesh) {
  const double value = mesh.BoundingBox().Diagonal().Length() * 0.005;
  // A NaN or out-of-range value has no integer truncation; it is passed as 0 or saturated
  // (MMG refuses this key through the integer setter anyway).
  if (!(value == value)) return 0;
  if (value >= static_cast<double>(INT_MAX)) return INT_MAX;
  if (value <= static_cast<double>(INT_MIN)) return INT_MIN;
  return static_cast<int>(value);
}

void SizeResultArrays(ON_Mesh& result, int vertexCount, int faceCount) {
  const auto vertices = static_cast<std::size_t>(vertexCount);
  const auto faces = static_cast<std::size_t>(faceCount);
  result.m_dV.Reserve(vertices);
  result.m_C.Reserve(vertices);
  result.m_F.Reserve(faces);
  if (result.m_dV.Capacity() < vertexCount || result.m_C.Capacity() < vertexCount ||
      result.m_F.Capacity() < faceCount) {
    throw std::bad_alloc();
  }
  result.m_dV.SetCount(vertexCount);
  result.m_C.SetCount(vertexCount);
  result.m_F.SetCount(faceCount);
}

void FinishResult(ON_Mesh& result, std::vector<int>& references, int keepRef) {
  if (keepRef != 0) {
    const int faceCount = result.FaceCount();
    for (int i = 0; i < faceCount; ++i) {
      if (references[i] != keepRef) {
        ON_MeshFace& face = result.m_F[i];
        face.vi[0] = face.vi[1] = face.vi[2] = face.vi[3] = -1;
      }
    }
    result.Cleanup(false, true, true);
    references.assign(static_cast<std::size_t>(result.FaceCount()), keepRef);
  }
  WriteMeshArchive(result, references.data(), references.size());
}

namespace {

// The frame MMG works in: (x - low) / extent, with low the corner and extent the largest side
// of the bounding box of the vertices the elements use.
struct WorkingFrame {
  ON_3dPoint low;
  double extent = 0.0;
};

bool InputWorkingFrame(const ON_Mesh& input, WorkingFrame& frame) {
  const int vertexCount = input.m_dV.Count();
  double low[3] = {INFINITY, INFINITY, INFINITY};
  double high[3] = {-INFINITY, -INFINITY, -INFINITY};
  for (int f = 0; f < input.FaceCount(); ++f) {
    for (int v : input.m_F[f].vi) {
      if (v < 0 || v >= vertexCount) return false;
      const ON_3dPoint& p = input.m_dV[v];
      for (int a = 0; a < 3; ++a) {
        low[a] = std::min(low[a], p[a]);
        high[a] = std::max(high[a], p[a]);
      }
    }
  }
  frame.low = ON_3dPoint(low[0], low[1], low[2]);
  frame.extent = std::max(high[0] - low[0], std::max(high[1] - low[1], high[2] - low[2]));
  return frame.extent > 0.0 && std::isfinite(frame.extent);
}

}  // namespace

void RestoreInputFrame(const ON_Mesh& input, ON_Mesh& result) {
  const int vertexCount = input.m_dV.Count();
  if (result.m_dV.Count() != vertexCount || result.FaceCount() != input.FaceCount()) return;
  WorkingFrame frame;
  if (!InputWorkingFrame(input, frame)) return;
  // Every used vertex must sit where MMG's frame puts its input twin; otherwise the mesh is
  // not the untouched input and is left alone.
  constexpr double kFrameTolerance = 1e-9;
  for (int f = 0; f < input.FaceCount(); ++f) {
    for (int v : input.m_F[f].vi) {
      const ON_3dPoint& p = input.m_dV[v];
      const ON_3dPoint expected((p.x - frame.low.x) / frame.extent,
                                (p.y - frame.low.y) / frame.extent,
                                (p.z - frame.low.z) / frame.extent);
      if (!(expected.DistanceTo(result.m_dV[v]) <= kFrameTolerance)) return;
    }
  }
  for (int v = 0; v < vertexCount; ++v)
    result.m_dV[v] = input.m_dV[v];
}

}  // namespace level_set_cut_detail

}  // namespace brindle
