#include <vector>

#include "opennurbs.h"

namespace {

bool FaceIndicesInRange(const ON_MeshFace& f, int vertex_count) {
  for (int k = 0; k < 4; k++) {
    if (f.vi[k] < 0 || f.vi[k] >= vertex_count) return false;
  }
  return true;
}

}  // namespace

// One unit normal per face from the cross product of its diagonals (for a triangle that is
// the right-hand normal of its corner order). Degenerate faces get the zero vector, and so do
// faces with out-of-range indices instead of reading outside the vertex list.
bool ON_Mesh::ComputeFaceNormals() {
  const int face_count = FaceCount();
  if (face_count <= 0) {
    m_FN.Destroy();
    return false;
  }
  if (m_FN.Capacity() < face_count) m_FN.SetCapacity(static_cast<size_t>(face_count));
  m_FN.SetCount(0);
  const int vertex_count = VertexCount();
  const bool use_doubles = HasSynchronizedDoubleAndSinglePrecisionVertices();
  for (int fi = 0; fi < face_count; fi++) {
    const ON_MeshFace& f = m_F[fi];
    ON_3dVector n = ON_3dVector::ZeroVector;
    if (FaceIndicesInRange(f, vertex_count)) {
      if (use_doubles) {
        n = ON_CrossProduct(m_dV[f.vi[2]] - m_dV[f.vi[0]], m_dV[f.vi[3]] - m_dV[f.vi[1]]);
      } else {
        // The differences are taken in single precision, the product in double.
        const ON_3dVector a = m_V[f.vi[2]] - m_V[f.vi[0]];
        const ON_3dVector b = m_V[f.vi[3]] - m_V[f.vi[1]];
        n = ON_CrossProduct(a, b);
      }
      n.Unitize();
    }
    m_FN.AppendNew() = ON_3fVector(n);
  }
  return true;
}

// Unweighted sum of the normals of the valid faces around each vertex, added from the
// highest face index down. Existing face normals are trusted as they are. A vertex without
// a usable sum gets (0,0,1).
bool ON_Mesh::ComputeVertexNormals() {
  const int face_count = FaceCount();
  const int vertex_count = VertexCount();
  if (face_count <= 0 || vertex_count <= 0) return false;
  if (!HasFaceNormals() && !ComputeFaceNormals()) return false;

  std::vector<int> first(static_cast<size_t>(vertex_count) + 1, 0);
  for (int fi = 0; fi < face_count; fi++) {
    const ON_MeshFace& f = m_F[fi];
    if (!f.IsValid(vertex_count)) continue;
    const int corners = f.IsQuad() ? 4 : 3;
    for (int k = 0; k < corners; k++)
      first[static_cast<size_t>(f.vi[k]) + 1]++;
  }
  for (int v = 0; v < vertex_count; v++)
    first[v + 1] += first[v];
  std::vector<int> faces_of_vertex(static_cast<size_t>(first[vertex_count]));
  std::vector<int> fill(first.begin(), first.end() - 1);
  for (int fi = 0; fi < face_count; fi++) {
    const ON_MeshFace& f = m_F[fi];
    if (!f.IsValid(vertex_count)) continue;
    const int corners = f.IsQuad() ? 4 : 3;
    for (int k = 0; k < corners; k++)
      faces_of_vertex[fill[f.vi[k]]++] = fi;
  }

  m_N.SetCapacity(static_cast<size_t>(vertex_count));
  m_N.SetCount(0);
  for (int v = 0; v < vertex_count; v++) {
    ON_3fVector n = ON_3fVector::ZeroVector;
    for (int j = first[v + 1] - 1; j >= first[v]; j--)
      n += m_FN[faces_of_vertex[j]];
    if (!n.Unitize()) n.Set(0.0f, 0.0f, 1.0f);
    m_N.Append(n);
  }
  return true;
}
