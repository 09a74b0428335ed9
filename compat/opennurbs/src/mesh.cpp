#include <cmath>

#include "opennurbs.h"

// Construction, copying, counts, vertex access and validation of ON_Mesh. The editing
// algorithms live in mesh_*.cpp files of their own.

ON_Mesh::ON_Mesh() = default;

ON_Mesh::ON_Mesh(int initial_face_array_capacity, int initial_vertex_array_capacity,
                 bool has_vertex_normals, bool has_texture_coordinates)
    : m_V(initial_vertex_array_capacity),
      m_F(initial_face_array_capacity > 0 ? static_cast<size_t>(initial_face_array_capacity) : 0),
      m_N(has_vertex_normals ? initial_vertex_array_capacity : 0),
      m_T(has_texture_coordinates ? initial_vertex_array_capacity : 0) {}

ON_Mesh::ON_Mesh(const ON_Mesh& src) : ON_Geometry() {
  *this = src;
}

// A deep copy that also carries the user strings and the cached face counts and box.
ON_Mesh& ON_Mesh::operator=(const ON_Mesh& src) {
  if (this == &src) return *this;
  Destroy();
  ON_Geometry::operator=(src);
  m_dV = src.m_dV;
  m_V = src.m_V;
  m_F = src.m_F;
  m_N = src.m_N;
  m_FN = src.m_FN;
  m_T = src.m_T;
  m_S = src.m_S;
  m_K = src.m_K;
  m_C = src.m_C;
  m_H = src.m_H;
  m_hidden_count = src.m_hidden_count;
  m_invalid_count = src.m_invalid_count;
  m_quad_count = src.m_quad_count;
  m_triangle_count = src.m_triangle_count;
  m_vertex_bbox = src.m_vertex_bbox;
  return *this;
}

ON_Mesh::~ON_Mesh() {
  Destroy();
}

ON_Mesh* ON_Mesh::Duplicate() const {
  return new ON_Mesh(*this);
}

// Frees everything but the hidden-vertex flags, user strings included. The cached face
// counts stay; they no longer add up to the face count and are recomputed when asked for.
void ON_Mesh::Destroy() {
  PurgeUserData();
  InvalidateBoundingBoxes();
  m_dV.Destroy();
  m_V.Destroy();
  m_F.Destroy();
  m_N.Destroy();
  m_FN.Destroy();
  m_T.Destroy();
  m_S.Destroy();
  m_K.Destroy();
  m_C.Destroy();
}

bool ON_Mesh::IsEmpty() const {
  return VertexUnsignedCount() == 0 && FaceUnsignedCount() == 0;
}

bool ON_Mesh::IsNotEmpty() const {
  return VertexUnsignedCount() > 0 && FaceUnsignedCount() > 0;
}

// ---------------------------------------------------------------------------------------
// Counts and presence tests; all per-vertex data is measured against m_V.

int ON_Mesh::VertexCount() const {
  return m_V.Count();
}
unsigned int ON_Mesh::VertexUnsignedCount() const {
  return m_V.UnsignedCount();
}
int ON_Mesh::FaceCount() const {
  return m_F.Count();
}
unsigned int ON_Mesh::FaceUnsignedCount() const {
  return m_F.UnsignedCount();
}

int ON_Mesh::QuadCount() const {
  if (m_quad_count < 0 || m_triangle_count < 0 || m_invalid_count < 0 ||
      m_quad_count + m_triangle_count + m_invalid_count != FaceCount()) {
    const_cast<ON_Mesh*>(this)->CountQuads();
  }
  return m_quad_count;
}

int ON_Mesh::TriangleCount() const {
  QuadCount();
  return m_triangle_count;
}

int ON_Mesh::InvalidFaceCount() const {
  QuadCount();
  return m_invalid_count;
}

bool ON_Mesh::CountQuads() {
  const int vertex_count = VertexCount();
  m_quad_count = 0;
  m_triangle_count = 0;
  m_invalid_count = 0;
  for (int fi = 0; fi < FaceCount(); fi++) {
    const ON_MeshFace& f = m_F[fi];
    if (!f.IsValid(vertex_count)) {
      m_invalid_count++;
    } else if (f.IsTriangle()) {
      m_triangle_count++;
    } else {
      m_quad_count++;
    }
  }
  return true;
}

// Zero counts no longer add up for a mesh with faces, and are right for one without.
void ON_Mesh::ResetFaceCounts() {
  m_quad_count = 0;
  m_triangle_count = 0;
  m_invalid_count = 0;
}

bool ON_Mesh::HasVertexNormals() const {
  return VertexCount() > 0 && m_N.Count() == VertexCount();
}
bool ON_Mesh::HasFaceNormals() const {
  return FaceCount() > 0 && m_FN.Count() == FaceCount();
}
bool ON_Mesh::HasTextureCoordinates() const {
  return VertexCount() > 0 && m_T.Count() == VertexCount();
}
bool ON_Mesh::HasSurfaceParameters() const {
  return VertexCount() > 0 && m_S.Count() == VertexCount();
}
bool ON_Mesh::HasPrincipalCurvatures() const {
  return VertexCount() > 0 && m_K.Count() == VertexCount();
}
bool ON_Mesh::HasVertexColors() const {
  return VertexCount() > 0 && m_C.Count() == VertexCount();
}
bool ON_Mesh::HasDoublePrecisionVertices() const {
  return VertexCount() > 0 && m_dV.Count() == VertexCount();
}
bool ON_Mesh::HasSinglePrecisionVertices() const {
  return VertexCount() > 0;
}

// Every double vertex must round to exactly its float twin; NaN never does.
bool ON_Mesh::HasSynchronizedDoubleAndSinglePrecisionVertices() const {
  const int vertex_count = VertexCount();
  if (vertex_count <= 0 || m_dV.Count() != vertex_count) return false;
  for (int i = 0; i < vertex_count; i++) {
    const ON_3dPoint& d = m_dV[i];
    const ON_3fPoint& f = m_V[i];
    if (!(static_cast<float>(d.x) == f.x && static_cast<float>(d.y) == f.y &&
          static_cast<float>(d.z) == f.z))
      return false;
  }
  return true;
}

// ---------------------------------------------------------------------------------------
// Single and double precision vertex lists

// Rebuilds m_dV from m_V when the lengths differ, which also empties m_dV when m_V is empty.
ON_3dPointArray& ON_Mesh::DoublePrecisionVertices() {
  if (m_dV.Count() != m_V.Count()) UpdateDoublePrecisionVertices();
  return m_dV;
}

const ON_3dPointArray& ON_Mesh::DoublePrecisionVertices() const {
  return const_cast<ON_Mesh*>(this)->DoublePrecisionVertices();
}

// Sizes m_V to m_dV, so an empty m_dV empties m_V (its capacity is kept).
void ON_Mesh::UpdateSinglePrecisionVertices() {
  const int vertex_count = m_dV.Count();
  m_V.Reserve(static_cast<size_t>(vertex_count));
  m_V.SetCount(vertex_count);
  for (int i = 0; i < vertex_count; i++)
    m_V[i] = ON_3fPoint(m_dV[i]);
}

// When both lists already have the same length only the double vertices that no longer
// round to their float twin are replaced, so precision beyond float survives elsewhere.
void ON_Mesh::UpdateDoublePrecisionVertices() {
  const int vertex_count = m_V.Count();
  const bool selective = (vertex_count == m_dV.Count());
  m_dV.Reserve(static_cast<size_t>(vertex_count));
  m_dV.SetCount(vertex_count);
  for (int i = 0; i < vertex_count; i++) {
    ON_3dPoint& d = m_dV[i];
    const ON_3fPoint& f = m_V[i];
    if (selective && static_cast<float>(d.x) == f.x && static_cast<float>(d.y) == f.y &&
        static_cast<float>(d.z) == f.z)
      continue;
    d = ON_3dPoint(f);
  }
}

void ON_Mesh::DestroyDoublePrecisionVertices() {
  m_dV.Destroy();
}

// The double vertex where it still agrees with the float one, otherwise the float vertex.
ON_3dPoint ON_Mesh::Vertex(int vertex_index) const {
  if (vertex_index < 0 || vertex_index >= m_V.Count()) return ON_3dPoint::UnsetPoint;
  const ON_3fPoint& f = m_V[vertex_index];
  if (m_dV.Count() == m_V.Count()) {
    const ON_3dPoint& d = m_dV[vertex_index];
    if (static_cast<float>(d.x) == f.x && static_cast<float>(d.y) == f.y &&
        static_cast<float>(d.z) == f.z)
      return d;
  }
  return ON_3dPoint(f);
}

// Index == VertexCount() appends. m_dV is written too whenever it has m_V's length, which
// includes a fresh mesh, so building a mesh this way keeps both lists in step.
bool ON_Mesh::SetVertex(int vertex_index, const ON_3dPoint& vertex_location) {
  const int vertex_count = VertexCount();
  if (vertex_index < 0 || vertex_index > vertex_count) return false;
  if (m_dV.Count() == vertex_count) {
    if (vertex_index < vertex_count) {
      m_dV[vertex_index] = vertex_location;
    } else {
      m_dV.Append(vertex_location);
    }
  }
  if (vertex_index < vertex_count) {
    m_V[vertex_index] = vertex_location;
  } else {
    m_V.AppendNew() = ON_3fPoint(vertex_location);
  }
  return true;
}

bool ON_Mesh::SetVertex(int vertex_index, const ON_3fPoint& vertex_location) {
  const int vertex_count = VertexCount();
  if (vertex_index < 0 || vertex_index > vertex_count) return false;
  if (m_dV.Count() == vertex_count) {
    if (vertex_index < vertex_count) {
      m_dV[vertex_index] = vertex_location;
    } else {
      m_dV.Append(ON_3dPoint(vertex_location));
    }
  }
  if (vertex_index < vertex_count) {
    m_V[vertex_index] = vertex_location;
  } else {
    m_V.Append(vertex_location);
  }
  return true;
}

bool ON_Mesh::SetTriangle(int face_index, int vi0, int vi1, int vi2) {
  return SetQuad(face_index, vi0, vi1, vi2, vi2);
}

// The face is stored even when it is invalid; the return value says whether it is valid.
bool ON_Mesh::SetQuad(int face_index, int vi0, int vi1, int vi2, int vi3) {
  if (face_index < 0 || face_index > m_F.Count()) return false;
  ON_MeshFace& f = (face_index < m_F.Count()) ? m_F[face_index] : m_F.AppendNew();
  f.vi[0] = vi0;
  f.vi[1] = vi1;
  f.vi[2] = vi2;
  f.vi[3] = vi3;
  return f.IsValid(VertexCount());
}

// Reserves every per-vertex array that is currently in step with m_V.
bool ON_Mesh::ReserveVertexCapacity(size_t new_vertex_capacity) {
  const int vertex_count = VertexCount();
  if (new_vertex_capacity <= static_cast<size_t>(vertex_count)) return true;
  if (m_dV.Count() == vertex_count) m_dV.Reserve(new_vertex_capacity);
  m_V.Reserve(new_vertex_capacity);
  if (m_N.Count() == vertex_count) m_N.Reserve(new_vertex_capacity);
  if (m_T.Count() == vertex_count) m_T.Reserve(new_vertex_capacity);
  if (m_S.Count() == vertex_count) m_S.Reserve(new_vertex_capacity);
  if (m_K.Count() == vertex_count) m_K.Reserve(new_vertex_capacity);
  if (m_C.Count() == vertex_count) m_C.Reserve(new_vertex_capacity);
  if (m_H.Count() == vertex_count) m_H.Reserve(new_vertex_capacity);
  return true;
}

void ON_Mesh::ClearVertexColors() {
  m_C.SetCount(0);
}

// ---------------------------------------------------------------------------------------
// Bounding box, cached until invalidated explicitly

void ON_Mesh::InvalidateVertexBoundingBox() {
  m_vertex_bbox = ON_BoundingBox::UnsetBoundingBox;
}

void ON_Mesh::InvalidateBoundingBoxes() {
  InvalidateVertexBoundingBox();
}

namespace {

template <class Point>
ON_BoundingBox BoxOfPoints(const ON_SimpleArray<Point>& points) {
  const ON_3dPoint first{points[0]};
  ON_BoundingBox box(first, first);
  // NaN coordinates after the first point never win a comparison and are skipped.
  for (int i = 1; i < points.Count(); i++) {
    const ON_3dPoint p(points[i]);
    for (int k = 0; k < 3; k++) {
      if (p[k] < box.m_min[k]) box.m_min[k] = p[k];
      if (p[k] > box.m_max[k]) box.m_max[k] = p[k];
    }
  }
  // A box with NaN, infinite or unset coordinates is no box at all.
  return box.IsValid() ? box : ON_BoundingBox::EmptyBoundingBox;
}

}  // namespace

// Needs at least one face and three vertices; covers every vertex, used or not. When the
// vertices give no valid box the result is the empty box, and it is not cached.
bool ON_Mesh::GetBBox(double* boxmin, double* boxmax, bool bGrowBox) const {
  if (FaceCount() < 1 || VertexCount() < 3) return false;
  if (!m_vertex_bbox.IsNotEmpty()) {
    m_vertex_bbox = HasDoublePrecisionVertices() ? BoxOfPoints(m_dV) : BoxOfPoints(m_V);
  }
  ON_BoundingBox box = m_vertex_bbox;
  if (bGrowBox) {
    // Union with the caller's box; an invalid box on either side contributes nothing.
    const ON_BoundingBox given{ON_3dPoint{boxmin}, ON_3dPoint{boxmax}};
    if (!box.IsValid()) {
      box = given.IsValid() ? given : ON_BoundingBox::EmptyBoundingBox;
    } else if (given.IsValid()) {
      for (int k = 0; k < 3; k++) {
        if (given.m_min[k] < box.m_min[k]) box.m_min[k] = given.m_min[k];
        if (given.m_max[k] > box.m_max[k]) box.m_max[k] = given.m_max[k];
      }
    }
  }
  for (int k = 0; k < 3; k++) {
    boxmin[k] = box.m_min[k];
    boxmax[k] = box.m_max[k];
  }
  return true;
}

// ---------------------------------------------------------------------------------------
// Validation: the first failed check is reported and ends the test.

namespace {

template <class Point>
bool CheckFaces(const ON_SimpleArray<ON_MeshFace>& faces, int vertex_count, const Point* V,
                const char* precision, ON_TextLog* text_log) {
  for (int fi = 0; fi < faces.Count(); fi++) {
    const ON_MeshFace& f = faces[fi];
    if (!f.IsValid(vertex_count)) {
      if (text_log) text_log->Print("ON_Mesh.m_F[%u].vi[] has invalid vertex indices.\n", fi);
      return false;
    }
    if (!f.IsValid(vertex_count, V)) {
      if (text_log) {
        text_log->Print("ON_Mesh.m_F[%u] has degenerate %s precision vertex locations.\n", fi,
                        precision);
      }
      return false;
    }
  }
  return true;
}

bool CheckOptionalCount(int count, int vertex_count, const char* name, ON_TextLog* text_log) {
  if (count == 0 || count == vertex_count) return true;
  if (text_log) {
    text_log->Print("ON_Mesh.%s.Count() = %u (should be 0 or %u=vertex_count).\n", name, count,
                    vertex_count);
  }
  return false;
}

}  // namespace

bool ON_Mesh::IsValid(ON_TextLog* text_log) const {
  const int vertex_count = VertexCount();
  const int face_count = FaceCount();

  for (int fi = 0; fi < face_count; fi++) {
    const ON_MeshFace& f = m_F[fi];
    for (int k = 0; k < 4; k++) {
      if (static_cast<unsigned int>(f.vi[k]) >= static_cast<unsigned int>(vertex_count)) {
        if (text_log) text_log->Print("ON_Mesh.m_F[] has out of range vertex indices.\n");
        return false;
      }
    }
  }
  if (m_dV.Count() > 0 && m_dV.Count() != vertex_count) {
    if (text_log) text_log->Print("ON_Mesh.m_dV[] has wrong size.\n");
    return false;
  }
  if (face_count < 1) {
    if (text_log) text_log->Print("ON_Mesh.m_F.Count() < 1 (should be at least 1).\n");
    return false;
  }
  if (vertex_count < 3) {
    if (text_log) text_log->Print("ON_Mesh.m_V.Count() < 3 (should be at least 3).\n");
    return false;
  }
  if (m_dV.Count() > 0 && !HasSynchronizedDoubleAndSinglePrecisionVertices()) {
    if (text_log) text_log->Print("ON_Mesh.m_dV[] and m_V[] are not synchronized.\n");
    return false;
  }
  if (!CheckOptionalCount(m_N.Count(), vertex_count, "m_N", text_log)) return false;
  if (!CheckOptionalCount(m_T.Count(), vertex_count, "m_T", text_log)) return false;
  if (!CheckOptionalCount(m_S.Count(), vertex_count, "m_S", text_log)) return false;

  if (HasVertexNormals()) {
    // NaN fails neither comparison and so passes.
    for (int i = 0; i < vertex_count; i++) {
      const ON_3fVector& n = m_N[i];
      const float length_squared = n.x * n.x + n.y * n.y + n.z * n.z;
      if (length_squared < 0.985 || length_squared > 1.015) {
        if (text_log) {
          text_log->Print("ON_Mesh.m_N[%u] is not a unit vector (length = %g).\n", i,
                          static_cast<double>(std::sqrt(length_squared)));
        }
        return false;
      }
    }
  }

  if (m_vertex_bbox.IsNotEmpty()) {
    for (int k = 0; k < 3; k++) {
      if (!(std::fabs(m_vertex_bbox.m_min[k]) <= ON_FLT_MAX) ||
          !(std::fabs(m_vertex_bbox.m_max[k]) <= ON_FLT_MAX)) {
        if (text_log) {
          text_log->Print("ON_Mesh.m_fvertex_bbox is not finite.  Check for invalid vertices\n");
        }
        return false;
      }
    }
  }

  if (HasDoublePrecisionVertices()) {
    return CheckFaces(m_F, vertex_count, m_dV.Array(), "double", text_log);
  }
  return CheckFaces(m_F, vertex_count, m_V.Array(), "float", text_log);
}
