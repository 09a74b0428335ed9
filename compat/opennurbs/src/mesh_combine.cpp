#include <algorithm>
#include <vector>

#include "opennurbs.h"

namespace {

// Three-way comparison of vertex i with vertex j on the merge key, in descending order:
// negative when i sorts first, i.e. when i has the larger key. Only the float vertices are
// compared; the optional arrays are null when they are not part of the key.
struct VertexKey {
  const ON_3fPoint* V = nullptr;
  const ON_3fVector* N = nullptr;
  const ON_2fPoint* T = nullptr;
  const ON_Color* C = nullptr;
  const ON_SurfaceCurvature* K = nullptr;

  static int Sign(double difference) { return difference < 0.0 ? -1 : (difference > 0.0 ? 1 : 0); }

  int Compare(int i, int j) const {
    int c = Sign(V[j].x - V[i].x);
    if (c == 0) c = Sign(V[j].y - V[i].y);
    if (c == 0) c = Sign(V[j].z - V[i].z);
    if (c == 0 && N != nullptr) {
      c = Sign(N[j].x - N[i].x);
      if (c == 0) c = Sign(N[j].y - N[i].y);
      if (c == 0) c = Sign(N[j].z - N[i].z);
    }
    if (c == 0 && T != nullptr) {
      c = Sign(T[j].x - T[i].x);
      if (c == 0) c = Sign(T[j].y - T[i].y);
    }
    if (c == 0 && C != nullptr) {
      // Packed values compared as signed 32-bit numbers with wrap-around.
      const unsigned int cj = C[j];
      const unsigned int ci = C[i];
      const int packed_difference = static_cast<int>(cj - ci);
      c = packed_difference < 0 ? -1 : (packed_difference > 0 ? 1 : 0);
    }
    if (c == 0 && K != nullptr) {
      c = Sign(K[j].k1 - K[i].k1);
      if (c == 0) c = Sign(K[j].k2 - K[i].k2);
    }
    return c;
  }
};

// Moves each element of a per-vertex array to its group's slot; the member with the highest
// original index wins.
template <class T>
void RemapInPlace(ON_SimpleArray<T>& values, const std::vector<int>& remap, int new_count) {
  std::vector<T> merged(static_cast<size_t>(new_count));
  for (size_t k = 0; k < remap.size(); k++)
    merged[static_cast<size_t>(remap[k])] = values[static_cast<int>(k)];
  for (int k = 0; k < new_count; k++)
    values[k] = merged[static_cast<size_t>(k)];
  values.SetCount(new_count);
}

}  // namespace

// Merges vertices whose key (float position, then normal, texture coordinate, colour and
// curvature where present and not ignored) is exactly equal. The surviving vertices come out
// sorted by the key in descending order. Faces are renumbered but never removed, even when
// they collapse; face indices outside the vertex list are left as they are.
bool ON_Mesh::CombineIdenticalVertices(bool bIgnoreVertexNormals, bool bIgnoreTextureCoordinates) {
  const int vertex_count = m_V.Count();
  if (vertex_count <= 0) return false;

  const bool has_normals = HasVertexNormals();
  const bool has_texture = HasTextureCoordinates();
  const bool has_colors = HasVertexColors();
  const bool has_curvatures = HasPrincipalCurvatures();

  VertexKey key;
  key.V = m_V.Array();
  key.N = (has_normals && !bIgnoreVertexNormals) ? m_N.Array() : nullptr;
  if (!bIgnoreTextureCoordinates) {
    key.T = has_texture ? m_T.Array() : nullptr;
    key.C = has_colors ? m_C.Array() : nullptr;
    key.K = has_curvatures ? m_K.Array() : nullptr;
  }

  std::vector<int> order(static_cast<size_t>(vertex_count));
  for (int k = 0; k < vertex_count; k++)
    order[static_cast<size_t>(k)] = k;
  std::stable_sort(order.begin(), order.end(),
                   [&key](int a, int b) { return key.Compare(a, b) < 0; });

  std::vector<int> remap(static_cast<size_t>(vertex_count), -1);
  int new_count = 0;
  for (size_t i0 = 0, i1 = 0; i0 < order.size(); i0 = i1, new_count++) {
    for (i1 = i0 + 1; i1 < order.size() && key.Compare(order[i0], order[i1]) == 0; i1++) {
    }
    for (size_t i = i0; i < i1; i++)
      remap[static_cast<size_t>(order[i])] = new_count;
  }
  if (new_count >= vertex_count) return false;

  RemapInPlace(m_V, remap, new_count);
  if (m_dV.Count() == vertex_count) {
    RemapInPlace(m_dV, remap, new_count);
  } else {
    m_dV.Destroy();
  }

  if (has_normals && bIgnoreVertexNormals) {
    // Normals of merged vertices are averaged; a zero sum stays zero.
    std::vector<ON_3fVector> sums(static_cast<size_t>(new_count), ON_3fVector::ZeroVector);
    for (int k = 0; k < vertex_count; k++)
      sums[static_cast<size_t>(remap[k])] += m_N[k];
    for (int k = 0; k < new_count; k++) {
      sums[static_cast<size_t>(k)].Unitize();
      m_N[k] = sums[static_cast<size_t>(k)];
    }
    m_N.SetCount(new_count);
  } else if (has_normals) {
    RemapInPlace(m_N, remap, new_count);
  } else {
    m_N.SetCount(0);
  }

  // Texture coordinates, colours and curvatures survive only when they were part of the key.
  if (key.T != nullptr) {
    RemapInPlace(m_T, remap, new_count);
  } else {
    m_T.SetCount(0);
  }
  if (key.C != nullptr) {
    RemapInPlace(m_C, remap, new_count);
  } else {
    m_C.SetCount(0);
  }
  if (key.K != nullptr) {
    RemapInPlace(m_K, remap, new_count);
  } else {
    m_K.SetCount(0);
  }

  for (int fi = 0; fi < m_F.Count(); fi++) {
    int* vi = m_F[fi].vi;
    for (int k = 0; k < 4; k++) {
      if (vi[k] >= 0 && vi[k] < vertex_count) vi[k] = remap[static_cast<size_t>(vi[k])];
    }
  }
  m_S.Destroy();

  // The merge never shrinks the buffers; release them when most of the space is unused.
  if (m_V.Capacity() > 4 * m_V.Count() && m_V.Capacity() > 50) Compact();
  return true;
}
