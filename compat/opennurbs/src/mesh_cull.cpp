#include <algorithm>
#include <vector>

#include "opennurbs.h"

// Removal of degenerate faces and unused vertices, and the Compact/Cleanup passes built on
// them. Both removals share one pass over the faces; whatever is left without faces (or
// without vertices) is destroyed completely, user strings included.

namespace {

constexpr unsigned int kNoId = ON_UNSET_UINT_INDEX;

// Areas and diagonals at or below this are zero: a hair above the smallest normal float.
constexpr double kAreaTolerance = 1.0e-36;

// Location ids: equal ids exactly when the points are equal; invalid points (NaN, infinite,
// unset) get kNoId. Returns the number of distinct groups, the invalid ones counted as one.
template <class Point>
unsigned int LocationIds(const Point* V, unsigned int count, std::vector<unsigned int>& ids) {
  auto less = [V](unsigned int a, unsigned int b) {
    const bool a_valid = V[a].IsValid();
    const bool b_valid = V[b].IsValid();
    if (a_valid != b_valid) return a_valid;  // invalid points sort last
    if (!a_valid) return false;
    const Point& p = V[a];
    const Point& q = V[b];
    if (p.x != q.x) return p.x < q.x;
    if (p.y != q.y) return p.y < q.y;
    return p.z < q.z;
  };
  std::vector<unsigned int> order(count);
  for (unsigned int i = 0; i < count; i++)
    order[i] = i;
  std::sort(order.begin(), order.end(), less);
  ids.assign(count, kNoId);
  unsigned int group_count = 0;
  for (unsigned int i0 = 0, i1 = 0; i0 < count; i0 = i1, group_count++) {
    for (i1 = i0 + 1; i1 < count && !less(order[i0], order[i1]); i1++) {
    }
    const bool valid = V[order[i0]].IsValid();
    for (unsigned int i = i0; i < i1; i++)
      ids[order[i]] = valid ? group_count : kNoId;
  }
  return group_count;
}

// Outcome of the area test of one face.
enum class AreaCheck { kDegenerate, kGood, kRepaired };

template <class Point>
bool RepairWith(ON_MeshFace& f, int vertex_count, const Point* V) {
  return f.Repair(vertex_count, V);
}

// Triangles need a non-zero area. Quads need two comparable non-zero diagonals; when one of
// the two triangles on the shorter diagonal has zero area, its lone corner is dropped.
template <class Point>
AreaCheck CheckArea(ON_MeshFace& f, int vertex_count, const Point* V) {
  ON_3dPoint P[4];
  for (int k = 0; k < 4; k++)
    P[k] = V[f.vi[k]];
  if (f.IsTriangle()) {
    const double area = ON_CrossProduct(P[1] - P[0], P[2] - P[0]).Length();
    return area > kAreaTolerance ? AreaCheck::kGood : AreaCheck::kDegenerate;
  }
  double a0 = P[0].DistanceTo(P[2]);
  double a1 = P[1].DistanceTo(P[3]);
  if (!(a0 > kAreaTolerance && a1 > kAreaTolerance)) return AreaCheck::kDegenerate;
  if (a0 <= a1 * 1e-8 || a1 <= a0 * 1e-8) return AreaCheck::kDegenerate;  // L-shaped
  if (a0 <= a1) {
    const double t0 = ON_CrossProduct(P[1] - P[0], P[2] - P[0]).Length();
    const double t1 = ON_CrossProduct(P[2] - P[0], P[3] - P[0]).Length();
    if (t0 > kAreaTolerance) {
      if (t1 > kAreaTolerance) return AreaCheck::kGood;
      f.vi[3] = -1;
    } else if (t1 > kAreaTolerance) {
      f.vi[1] = -1;
    }
  } else if (a1 < a0) {
    const double t0 = ON_CrossProduct(P[2] - P[1], P[3] - P[1]).Length();
    const double t1 = ON_CrossProduct(P[3] - P[1], P[0] - P[1]).Length();
    if (t0 > kAreaTolerance) {
      if (t1 > kAreaTolerance) return AreaCheck::kGood;
      f.vi[0] = -1;
    } else if (t1 > kAreaTolerance) {
      f.vi[2] = -1;
    }
  } else {
    return AreaCheck::kDegenerate;
  }
  // Both corner triangles flat (four collinear points) leaves the face as it was.
  return RepairWith(f, vertex_count, V) ? AreaCheck::kRepaired : AreaCheck::kDegenerate;
}

// The id test and area test of one face; false means the face goes.
template <class Point>
bool KeepFace(ON_MeshFace& f, int vertex_count, const Point* V,
              const std::vector<unsigned int>& ids, unsigned int id_count, bool& modified) {
  ON_MeshFace by_id;
  for (int k = 0; k < 4; k++)
    by_id.vi[k] = static_cast<int>(ids[static_cast<size_t>(f.vi[k])]);
  if (!by_id.IsValid(id_count)) {
    // Quads folded onto a diagonal cannot be repaired.
    if (f.IsQuad() && (by_id.vi[0] == by_id.vi[2] || by_id.vi[1] == by_id.vi[3])) return false;
    if (!RepairWith(f, vertex_count, V)) return false;
    modified = true;
  }
  switch (CheckArea(f, vertex_count, V)) {
    case AreaCheck::kDegenerate:
      return false;
    case AreaCheck::kRepaired:
      modified = true;
      return true;
    case AreaCheck::kGood:
      return true;
  }
  return true;
}

template <class T>
void CompactArray(ON_SimpleArray<T>& values, const std::vector<unsigned int>& new_index,
                  unsigned int new_count) {
  for (size_t i = 0; i < new_index.size(); i++) {
    if (new_index[i] != kNoId) values[new_index[i]] = values[static_cast<unsigned int>(i)];
  }
  values.SetCount(static_cast<int>(new_count));
  values.Shrink();
}

// Returns true when faces were removed or rewritten or vertices were removed, i.e. when the
// cached face counts must be recomputed. The mesh may have been destroyed.
bool CullComponents(ON_Mesh& mesh, bool remove_degenerate_faces, bool remove_unused_vertices) {
  const unsigned int vertex_count0 = mesh.m_V.UnsignedCount();
  const unsigned int face_count0 = mesh.m_F.UnsignedCount();
  if (vertex_count0 == 0) return false;
  const int vertex_count = static_cast<int>(vertex_count0);

  const bool use_doubles = mesh.HasDoublePrecisionVertices();
  std::vector<unsigned int> ids;
  unsigned int id_count = 0;
  if (remove_degenerate_faces) {
    if (use_doubles) {
      // Invalid double vertices are parked at DBL_MAX; they stay invalid.
      for (int i = 0; i < vertex_count; i++) {
        if (!mesh.m_dV[i].IsValid()) mesh.m_dV[i] = ON_3dPoint(ON_DBL_MAX, ON_DBL_MAX, ON_DBL_MAX);
      }
      id_count = LocationIds(mesh.m_dV.Array(), vertex_count0, ids);
    } else {
      id_count = LocationIds(mesh.m_V.Array(), vertex_count0, ids);
    }
  }

  std::vector<char> vertex_used(vertex_count0, 0);
  std::vector<unsigned int> face_new_index(face_count0, kNoId);
  unsigned int face_count1 = 0;
  bool modified_faces = false;
  for (unsigned int fi = 0; fi < face_count0; fi++) {
    ON_MeshFace& f = mesh.m_F[fi];
    bool in_range = true;
    for (int k = 0; k < 4; k++)
      in_range = in_range && static_cast<unsigned int>(f.vi[k]) < vertex_count0;
    if (!in_range) continue;
    if (id_count > 0) {
      const bool keep =
          use_doubles ? KeepFace(f, vertex_count, mesh.m_dV.Array(), ids, id_count, modified_faces)
                      : KeepFace(f, vertex_count, mesh.m_V.Array(), ids, id_count, modified_faces);
      if (!keep) continue;
    }
    face_new_index[fi] = face_count1++;
    for (int k = 0; k < 4; k++)
      vertex_used[static_cast<size_t>(f.vi[k])] = 1;
  }

  std::vector<unsigned int> vertex_new_index(vertex_count0, kNoId);
  unsigned int vertex_count1 = 0;
  for (unsigned int vi = 0; vi < vertex_count0; vi++) {
    if (!remove_unused_vertices || vertex_used[vi]) vertex_new_index[vi] = vertex_count1++;
  }

  if (vertex_count1 == 0 || face_count1 == 0) {
    mesh.Destroy();
    return true;
  }
  if (vertex_count1 == vertex_count0 && face_count1 == face_count0) return modified_faces;

  const bool has_face_normals = mesh.HasFaceNormals();
  for (unsigned int fi = 0; fi < face_count0; fi++) {
    const unsigned int target = face_new_index[fi];
    if (target == kNoId) continue;
    ON_MeshFace f = mesh.m_F[fi];
    for (int k = 0; k < 4; k++)
      f.vi[k] = static_cast<int>(vertex_new_index[static_cast<size_t>(f.vi[k])]);
    mesh.m_F[target] = f;
    if (has_face_normals) mesh.m_FN[target] = mesh.m_FN[fi];
  }
  if (face_count1 < face_count0) {
    mesh.m_F.SetCount(static_cast<int>(face_count1));
    mesh.m_F.Shrink();
    if (has_face_normals) {
      mesh.m_FN.SetCount(static_cast<int>(face_count1));
      mesh.m_FN.Shrink();
    }
  }

  if (vertex_count1 < vertex_count0) {
    // Optional arrays follow only when they are in step with m_V; m_H is left alone.
    const bool with_doubles = mesh.m_dV.UnsignedCount() == vertex_count0;
    const bool with_parameters = mesh.HasSurfaceParameters();
    const bool with_normals = mesh.HasVertexNormals();
    const bool with_texture = mesh.HasTextureCoordinates();
    const bool with_curvatures = mesh.HasPrincipalCurvatures();
    const bool with_colors = mesh.HasVertexColors();
    CompactArray(mesh.m_V, vertex_new_index, vertex_count1);
    if (with_doubles) CompactArray(mesh.m_dV, vertex_new_index, vertex_count1);
    if (with_parameters) CompactArray(mesh.m_S, vertex_new_index, vertex_count1);
    if (with_normals) CompactArray(mesh.m_N, vertex_new_index, vertex_count1);
    if (with_texture) CompactArray(mesh.m_T, vertex_new_index, vertex_count1);
    if (with_curvatures) CompactArray(mesh.m_K, vertex_new_index, vertex_count1);
    if (with_colors) CompactArray(mesh.m_C, vertex_new_index, vertex_count1);
    mesh.InvalidateBoundingBoxes();
  }
  return true;
}

}  // namespace

unsigned int ON_Mesh::CullDegenerateFaces() {
  const unsigned int face_count0 = m_F.UnsignedCount();
  if (CullComponents(*this, true, false)) ResetFaceCounts();
  const unsigned int face_count1 = m_F.UnsignedCount();
  return face_count0 > face_count1 ? face_count0 - face_count1 : 0;
}

int ON_Mesh::CullUnusedVertices() {
  const unsigned int vertex_count0 = m_V.UnsignedCount();
  if (CullComponents(*this, false, true)) ResetFaceCounts();
  if (m_V.UnsignedCount() == 0) Destroy();
  return static_cast<int>(vertex_count0 - m_V.UnsignedCount());
}

// Drops optional arrays that are out of step with the vertices or faces, removes unused
// vertices and releases spare capacity. Degenerate faces are not its business.
bool ON_Mesh::Compact() {
  const int vertex_count = m_V.Count();
  if (m_FN.Count() != m_F.Count()) m_FN.Destroy();
  if (m_N.Count() != vertex_count) m_N.Destroy();
  if (m_T.Count() != vertex_count) m_T.Destroy();
  if (m_S.Count() != vertex_count) m_S.Destroy();
  if (m_K.Count() != vertex_count) m_K.Destroy();
  if (m_C.Count() != vertex_count) m_C.Destroy();
  if (m_H.Count() != vertex_count) m_H.Destroy();
  CullUnusedVertices();
  m_V.Shrink();
  m_F.Shrink();
  m_N.Shrink();
  m_FN.Shrink();
  m_K.Shrink();
  m_C.Shrink();
  m_S.Shrink();
  m_T.Shrink();
  return true;
}

// This mesh type keeps no n-gons, so bRemoveNgons has nothing to remove.
void ON_Mesh::Cleanup(bool /*bRemoveNgons*/, bool bRemoveDegenerateFaces, bool bCompact) {
  if (bRemoveDegenerateFaces) CullDegenerateFaces();
  InvalidateBoundingBoxes();
  if (bCompact) Compact();
}

void ON_Mesh::Cleanup(bool bRemoveNgons) {
  Cleanup(bRemoveNgons, true, true);
}
