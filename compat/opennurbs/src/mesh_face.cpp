#include "opennurbs.h"

namespace {

bool IndicesValid(const int* vi, unsigned int n) {
  for (int k = 0; k < 4; k++) {
    if (static_cast<unsigned int>(vi[k]) >= n) return false;
  }
  if (vi[0] == vi[1] || vi[1] == vi[2] || vi[2] == vi[0]) return false;
  return vi[2] == vi[3] || (vi[0] != vi[3] && vi[1] != vi[3]);
}

// Only exact coincidence counts; NaN coordinates compare as distinct.
template <class Point>
bool LocationsDistinct(const int* vi, const Point* V) {
  if (V[vi[0]] == V[vi[1]] || V[vi[0]] == V[vi[2]] || V[vi[1]] == V[vi[2]]) return false;
  if (vi[2] != vi[3]) {
    if (V[vi[0]] == V[vi[3]] || V[vi[1]] == V[vi[3]] || V[vi[2]] == V[vi[3]]) return false;
  }
  return true;
}

// Walks the corners in order and keeps each one that is in range, not yet kept, and (when
// positions are given) at a valid location not occupied by a kept corner.
template <class Point>
bool RepairFace(int* vi, int n, const Point* V) {
  int kept[4] = {-1, -1, -1, -1};
  int count = 0;
  for (int k = 0; k < 4; k++) {
    const int candidate = vi[k];
    if (candidate < 0 || candidate >= n) continue;
    bool usable = (V == nullptr) || V[candidate].IsValid();
    for (int j = 0; j < count && usable; j++) {
      usable = kept[j] != candidate && (V == nullptr || V[kept[j]] != V[candidate]);
    }
    if (usable) kept[count++] = candidate;
  }
  if (count < 3) return false;
  if (count == 3) kept[3] = kept[2];
  for (int k = 0; k < 4; k++)
    vi[k] = kept[k];
  return true;
}

template <class Point>
bool FaceNormal(const int* vi, const Point* V, ON_3dVector& FN) {
  if (V != nullptr) {
    const ON_3dVector a = V[vi[2]] - V[vi[0]];
    const ON_3dVector b = V[vi[3]] - V[vi[1]];
    FN = ON_CrossProduct(a, b);
    if (FN.Unitize()) return true;
  }
  FN = ON_3dVector::ZeroVector;
  return false;
}

}  // namespace

const ON_MeshFace ON_MeshFace::UnsetMeshFace = {{-1, -1, -1, -1}};

bool ON_MeshFace::IsTriangle() const {
  return vi[2] == vi[3];
}
bool ON_MeshFace::IsQuad() const {
  return vi[2] != vi[3];
}

// A negative count makes every face invalid, as does any negative index.
bool ON_MeshFace::IsValid(int mesh_vertex_count) const {
  return mesh_vertex_count > 0 && IndicesValid(vi, static_cast<unsigned int>(mesh_vertex_count));
}

bool ON_MeshFace::IsValid(unsigned int mesh_vertex_count) const {
  return IndicesValid(vi, mesh_vertex_count);
}

bool ON_MeshFace::IsValid(int mesh_vertex_count, const ON_3fPoint* V) const {
  return IsValid(mesh_vertex_count) && V != nullptr && LocationsDistinct(vi, V);
}

bool ON_MeshFace::IsValid(int mesh_vertex_count, const ON_3dPoint* V) const {
  return IsValid(mesh_vertex_count) && V != nullptr && LocationsDistinct(vi, V);
}

bool ON_MeshFace::Repair(int mesh_vertex_count) {
  return RepairFace<ON_3dPoint>(vi, mesh_vertex_count, nullptr);
}

bool ON_MeshFace::Repair(int mesh_vertex_count, const ON_3fPoint* V) {
  return V != nullptr && RepairFace(vi, mesh_vertex_count, V);
}

bool ON_MeshFace::Repair(int mesh_vertex_count, const ON_3dPoint* V) {
  return V != nullptr && RepairFace(vi, mesh_vertex_count, V);
}

bool ON_MeshFace::ComputeFaceNormal(const ON_3dPoint* dV, ON_3dVector& FN) const {
  return FaceNormal(vi, dV, FN);
}

bool ON_MeshFace::ComputeFaceNormal(const ON_3fPoint* fV, ON_3dVector& FN) const {
  return FaceNormal(vi, fV, FN);
}

// Reverses the orientation while keeping the first corner.
void ON_MeshFace::Flip() {
  if (vi[2] == vi[3]) {
    const int t = vi[1];
    vi[1] = vi[2];
    vi[2] = t;
    vi[3] = t;
  } else {
    const int t = vi[1];
    vi[1] = vi[3];
    vi[3] = t;
  }
}
