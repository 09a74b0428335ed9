#ifndef BRINDLE_COMPAT_OPENNURBS_MESH_H
#define BRINDLE_COMPAT_OPENNURBS_MESH_H

// Polygon meshes of triangles and quads. The single precision vertex list m_V is the
// authoritative one; m_dV is an optional double precision copy that is used only while it
// has the same length as m_V.

#include "opennurbs_array.h"
#include "opennurbs_color.h"
#include "opennurbs_object.h"
#include "opennurbs_point_array.h"

// Four vertex indices; a triangle repeats its third index (vi[2] == vi[3]).
class ON_CLASS ON_MeshFace {
 public:
  int vi[4];

  static const ON_MeshFace UnsetMeshFace;

  bool IsTriangle() const;
  bool IsQuad() const;

  bool IsValid(int mesh_vertex_count) const;
  bool IsValid(unsigned int mesh_vertex_count) const;
  bool IsValid(int mesh_vertex_count, const ON_3fPoint* V) const;
  bool IsValid(int mesh_vertex_count, const ON_3dPoint* V) const;

  bool Repair(int mesh_vertex_count);
  bool Repair(int mesh_vertex_count, const ON_3fPoint* V);
  bool Repair(int mesh_vertex_count, const ON_3dPoint* V);

  bool ComputeFaceNormal(const ON_3dPoint* dV, ON_3dVector& FN) const;
  bool ComputeFaceNormal(const ON_3fPoint* fV, ON_3dVector& FN) const;

  void Flip();
};

class ON_CLASS ON_SurfaceCurvature {
 public:
  double k1, k2;
};

class ON_CLASS ON_Mesh : public ON_Geometry {
 public:
  ON_Mesh();
  ON_Mesh(int initial_face_array_capacity, int initial_vertex_array_capacity,
          bool has_vertex_normals, bool has_texture_coordinates);
  ON_Mesh(const ON_Mesh& src);
  ON_Mesh& operator=(const ON_Mesh& src);
  ~ON_Mesh() override;

  ON_Mesh* Duplicate() const;

  void Destroy();
  bool IsEmpty() const;
  bool IsNotEmpty() const;
  bool IsValid(ON_TextLog* text_log = nullptr) const override;
  bool GetBBox(double* boxmin, double* boxmax, bool bGrowBox = false) const override;

  int VertexCount() const;
  unsigned int VertexUnsignedCount() const;
  int FaceCount() const;
  unsigned int FaceUnsignedCount() const;
  // Cached face classification; recounted only when the cached numbers no longer add up
  // to the face count.
  int QuadCount() const;
  int TriangleCount() const;
  int InvalidFaceCount() const;
  bool CountQuads();

  bool HasVertexNormals() const;
  bool HasFaceNormals() const;
  bool HasTextureCoordinates() const;
  bool HasSurfaceParameters() const;
  bool HasPrincipalCurvatures() const;
  bool HasVertexColors() const;
  bool HasDoublePrecisionVertices() const;
  bool HasSinglePrecisionVertices() const;
  bool HasSynchronizedDoubleAndSinglePrecisionVertices() const;

  ON_3dPointArray& DoublePrecisionVertices();
  const ON_3dPointArray& DoublePrecisionVertices() const;
  void UpdateSinglePrecisionVertices();
  void UpdateDoublePrecisionVertices();
  void DestroyDoublePrecisionVertices();

  ON_3dPoint Vertex(int vertex_index) const;
  bool SetVertex(int vertex_index, const ON_3dPoint& vertex_location);
  bool SetVertex(int vertex_index, const ON_3fPoint& vertex_location);
  bool SetTriangle(int face_index, int vi0, int vi1, int vi2);
  bool SetQuad(int face_index, int vi0, int vi1, int vi2, int vi3);
  bool ReserveVertexCapacity(size_t new_vertex_capacity);

  void ClearVertexColors();
  void InvalidateVertexBoundingBox();
  void InvalidateBoundingBoxes();

  bool ComputeFaceNormals();
  bool ComputeVertexNormals();
  bool ConvertQuadsToTriangles();
  bool CombineIdenticalVertices(bool bIgnoreVertexNormals = false,
                                bool bIgnoreTextureCoordinates = false);
  unsigned int CullDegenerateFaces();
  int CullUnusedVertices();
  bool Compact();
  void Cleanup(bool bRemoveNgons, bool bRemoveDegenerateFaces, bool bCompact);
  void Cleanup(bool bRemoveNgons);

  ON_3dPointArray m_dV;
  ON_3fPointArray m_V;
  ON_SimpleArray<ON_MeshFace> m_F;
  ON_3fVectorArray m_N;
  ON_3fVectorArray m_FN;
  ON_2fPointArray m_T;
  ON_2dPointArray m_S;
  ON_SimpleArray<ON_SurfaceCurvature> m_K;
  ON_SimpleArray<ON_Color> m_C;
  ON_SimpleArray<bool> m_H;
  int m_hidden_count = 0;

 protected:
  int m_invalid_count = 0;
  int m_quad_count = 0;
  int m_triangle_count = 0;

 private:
  // Forces a recount on the next QuadCount() call.
  void ResetFaceCounts();

  mutable ON_BoundingBox m_vertex_bbox = ON_BoundingBox::UnsetBoundingBox;
};

#endif
