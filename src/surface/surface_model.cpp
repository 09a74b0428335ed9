#include "surface/surface_model.h"

#include <algorithm>
#include <new>

#include "common/boundary_status.h"
#include "common/error_text.h"

namespace brindle {

int SurfaceModel::LargestRegion() const {
  return usedRegions.empty() ? -1 : usedRegions.back();
}

void SurfaceModel::IndexRegions() {
  usedRegions = faceRegion;
  std::sort(usedRegions.begin(), usedRegions.end());
  usedRegions.erase(std::unique(usedRegions.begin(), usedRegions.end()), usedRegions.end());
  faceRegionSlot.resize(faceRegion.size());
  for (std::size_t f = 0; f < faceRegion.size(); ++f) {
    const auto slot = std::lower_bound(usedRegions.begin(), usedRegions.end(), faceRegion[f]);
    faceRegionSlot[f] = static_cast<int>(slot - usedRegions.begin());
  }
}

bool SurfaceModel::SetConductivities(const double* values, int count) {
  if (count > LargestRegion()) {
    std::vector<double> taken(usedRegions.size());
    for (std::size_t i = 0; i < usedRegions.size(); ++i)
      taken[i] = values[usedRegions[i]];
    conductivity.swap(taken);
    return true;
  }
  conductivity.clear();
  return false;
}

void SurfaceModel::SetDefaultConductivities() {
  conductivity.assign(usedRegions.size(), 1.0);
}

int CheckSurfaceInput(const ON_Mesh* mesh, int method, char* error) {
  // Unsigned, so that negative methods fail as well.
  if (static_cast<unsigned int>(method) > 3u) {
    SetErrorText(error, "Invalid method %d, must be 0-3", method);
    return kInvalidMethod;
  }
  if (!mesh) {
    SetErrorText(error, "Null mesh");
    return kNullMesh;
  }
  // Raw counts: a mesh with single-precision vertices only is refused.
  if (mesh->m_dV.Count() != mesh->m_V.Count()) {
    SetErrorText(error, "Double and single precision vertex counts differ");
    return kVertexCountsDiffer;
  }
  if (mesh->QuadCount() != 0) {
    SetErrorText(error, "Mesh contains quads, only triangles supported");
    return kQuadFaces;
  }
  if (!mesh->HasVertexColors()) {
    SetErrorText(error, "Mesh has no vertex colors for boundary conditions");
    return kNoVertexColors;
  }
  if (mesh->VertexCount() == 0) {
    SetErrorText(error, "Mesh has no vertices");
    return kNoVertices;
  }
  if (mesh->FaceCount() == 0) {
    SetErrorText(error, "Mesh has no faces");
    return kNoFaces;
  }
  return kSurfaceSucceeded;
}

namespace {

// Every face index must address a vertex before it can be renumbered.
int CheckFaceIndices(const ON_Mesh& input, char* error) {
  const unsigned int vertexCount = static_cast<unsigned int>(input.VertexCount());
  for (int f = 0; f < input.FaceCount(); ++f) {
    const ON_MeshFace& face = input.m_F[f];
    for (int corner = 0; corner < 4; ++corner) {
      if (static_cast<unsigned int>(face.vi[corner]) >= vertexCount) {
        SetErrorText(error, "Face %d has a vertex index out of range", f);
        return kFaceVertexOutOfRange;
      }
    }
  }
  return kSurfaceSucceeded;
}

int CopyFaceRegions(const int* faceRegions, int faceCount, std::vector<int>& regions, char* error) {
  if (!faceRegions) {
    // Without regions the whole surface is one material of conductivity 1.0.
    regions.assign(static_cast<std::size_t>(faceCount), 0);
    return kSurfaceSucceeded;
  }
  regions.assign(faceRegions, faceRegions + faceCount);
  for (int f = 0; f < faceCount; ++f) {
    if (regions[f] < 0) {
      SetErrorText(error, "Face %d has negative region number %d", f, regions[f]);
      return kNegativeFaceRegion;
    }
  }
  return kSurfaceSucceeded;
}

// Sizes an openNURBS array to `count` elements. The arrays report a failed reservation only
// through their capacity, and writing into the elements would then go through a null buffer.
template <class T>
void SizeArray(ON_SimpleArray<T>& array, int count) {
  array.Reserve(static_cast<std::size_t>(count));
  if (array.Capacity() < count) throw std::bad_alloc();
  array.SetCount(count);
}

// Fixed vertices take the next index from the front, free ones the next from the back.
void OrderVertices(const ON_Mesh& input, SurfaceModel& model) {
  const int vertexCount = input.VertexCount();
  model.oldToNew.resize(static_cast<std::size_t>(vertexCount));
  model.newToOld.resize(static_cast<std::size_t>(vertexCount));
  SizeArray(model.mesh.m_C, vertexCount);
  int fixed = 0;
  for (int i = 0; i < vertexCount; ++i) {
    const ON_Color color = input.m_C[i];
    int ordered;
    if (IsFixedBoundaryStatus(DecodeBoundaryStatus(color))) {
      ordered = fixed++;
    } else {
      ordered = (vertexCount - 1) - (i - fixed);
    }
    model.mesh.m_C[ordered] = color;
    model.newToOld[ordered] = i;
    model.oldToNew[i] = ordered;
  }
  model.fixedCount = fixed;
}

void CopyVerticesAndFaces(const ON_Mesh& input, SurfaceModel& model) {
  const int vertexCount = input.VertexCount();
  const int faceCount = input.FaceCount();
  ON_Mesh& mesh = model.mesh;
  SizeArray(mesh.m_dV, vertexCount);
  SizeArray(mesh.m_V, vertexCount);
  for (int j = 0; j < vertexCount; ++j) {
    const int i = model.newToOld[j];
    mesh.m_dV[j] = input.m_dV[i];
    mesh.m_V[j] = input.m_V[i];
  }
  SizeArray(mesh.m_F, faceCount);
  for (int f = 0; f < faceCount; ++f) {
    const ON_MeshFace& source = input.m_F[f];
    ON_MeshFace& target = mesh.m_F[f];
    for (int corner = 0; corner < 4; ++corner)
      target.vi[corner] = model.oldToNew[source.vi[corner]];
  }
}

int SetPrescribedValues(SurfaceModel& model, char* error) {
  model.prescribed.resize(model.fixedCount);
  for (int j = 0; j < model.fixedCount; ++j) {
    const int status = DecodeBoundaryStatus(model.mesh.m_C[j]);
    // The ordering put only fixed statuses here; this guards that invariant.
    if (!IsFixedBoundaryStatus(status)) {
      SetErrorText(error, "Unexpected boundary status at vertex %d", j);
      return kUnexpectedBoundaryStatus;
    }
    model.prescribed[j] = PrescribedTemperature(status);
  }
  return kSurfaceSucceeded;
}

}  // namespace

int BuildSurfaceModel(const ON_Mesh& input, const int* faceRegions, SurfaceModel& model,
                      char* error) {
  if (const int code = CheckFaceIndices(input, error)) return code;
  if (const int code = CopyFaceRegions(faceRegions, input.FaceCount(), model.faceRegion, error))
    return code;
  model.IndexRegions();
  OrderVertices(input, model);
  CopyVerticesAndFaces(input, model);

  ON_wString discarded;
  ON_TextLog log(discarded);
  if (!model.mesh.IsValid(&log)) {
    SetErrorText(error, "Ordered mesh is invalid");
    return kOrderedMeshInvalid;
  }
  if (const int code = SetPrescribedValues(model, error)) return code;
  model.SetDefaultConductivities();
  return kSurfaceSucceeded;
}

}  // namespace brindle
