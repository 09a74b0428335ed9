#include "opennurbs.h"

namespace {

// Corner positions in double: from m_dV when it has m_V's length (no sync check), else m_V.
ON_3dPoint CornerPoint(const ON_Mesh& mesh, bool use_doubles, int vertex_index) {
  return use_doubles ? mesh.m_dV[vertex_index] : ON_3dPoint(mesh.m_V[vertex_index]);
}

ON_3dVector FaceNormalInDouble(const ON_Mesh& mesh, bool use_doubles, const ON_MeshFace& f) {
  const ON_3dVector a =
      CornerPoint(mesh, use_doubles, f.vi[2]) - CornerPoint(mesh, use_doubles, f.vi[0]);
  const ON_3dVector b =
      CornerPoint(mesh, use_doubles, f.vi[3]) - CornerPoint(mesh, use_doubles, f.vi[1]);
  ON_3dVector n = ON_CrossProduct(a, b);
  n.Unitize();
  return n;
}

}  // namespace

// Splits every valid quad along its shorter diagonal (ties along 0-2): the quad keeps the
// first half and the second half is appended after all existing faces. A quad with a
// (nearly) zero-length edge instead becomes the triangle without that edge's first corner.
// Relies on the cached quad count, so a stale count of zero leaves the quads alone.
bool ON_Mesh::ConvertQuadsToTriangles() {
  const int face_count0 = FaceCount();
  const int vertex_count = VertexCount();
  const int quad_count0 = (face_count0 > 0 && vertex_count > 0) ? QuadCount() : 0;
  if (quad_count0 > 0) {
    const bool has_face_normals = HasFaceNormals();
    const bool use_doubles = HasDoublePrecisionVertices();
    const size_t needed = static_cast<size_t>(face_count0) + static_cast<size_t>(quad_count0);
    if (static_cast<size_t>(m_F.Capacity()) < needed) m_F.SetCapacity(needed);
    if (has_face_normals && static_cast<size_t>(m_FN.Capacity()) < needed) m_FN.SetCapacity(needed);
    const double rel_tol = 8.0 * (use_doubles ? ON_EPSILON : ON_FLOAT_EPSILON);

    for (int fi = 0; fi < face_count0; fi++) {
      ON_MeshFace f0 = m_F[fi];
      if (!f0.IsValid(vertex_count) || !f0.IsQuad()) continue;
      ON_3dPoint P[4];
      for (int k = 0; k < 4; k++)
        P[k] = CornerPoint(*this, use_doubles, f0.vi[k]);
      double d0 = P[0].DistanceTo(P[2]);
      double d1 = P[1].DistanceTo(P[3]);

      int shortest_edge = -1;
      double dmin = ((d0 <= d1) ? d0 : d1) * rel_tol;
      if (dmin > ON_ZERO_TOLERANCE) dmin = ON_ZERO_TOLERANCE;
      for (int e = 0; e < 4; e++) {
        const double d = P[e].DistanceTo(P[(e + 1) % 4]);
        if (d < dmin) {
          shortest_edge = e;
          dmin = d;
        }
      }
      // A zero or NaN diagonal forces the split along the other one.
      if (!(d0 > 0.0)) {
        if (!(d1 > 0.0)) continue;
        shortest_edge = -1;
        d0 = 1.0;
        d1 = 0.0;
      } else if (!(d1 > 0.0)) {
        shortest_edge = -1;
        d1 = 1.0;
        d0 = 0.0;
      }

      m_quad_count--;
      m_triangle_count++;
      const int v0 = f0.vi[0], v1 = f0.vi[1], v2 = f0.vi[2], v3 = f0.vi[3];
      ON_MeshFace& f = m_F[fi];
      switch (shortest_edge) {
        case 0:
          f = ON_MeshFace{{v1, v2, v3, v3}};
          break;
        case 1:
          f = ON_MeshFace{{v2, v3, v0, v0}};
          break;
        case 2:
          f = ON_MeshFace{{v3, v0, v1, v1}};
          break;
        case 3:
          f = ON_MeshFace{{v0, v1, v2, v2}};
          break;
        default: {
          const bool along_02 = !(d1 < d0);
          ON_MeshFace second;
          if (along_02) {
            f = ON_MeshFace{{v0, v1, v2, v2}};
            second = ON_MeshFace{{v0, v2, v3, v3}};
          } else {
            f = ON_MeshFace{{v0, v1, v3, v3}};
            second = ON_MeshFace{{v1, v2, v3, v3}};
          }
          m_F.Append(second);
          if (has_face_normals) {
            m_FN[fi] = FaceNormalInDouble(*this, use_doubles, m_F[fi]);
            m_FN.AppendNew() = FaceNormalInDouble(*this, use_doubles, second);
          }
          break;
        }
      }
    }
  }
  return QuadCount() == 0 && TriangleCount() == FaceCount();
}
