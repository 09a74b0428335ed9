// ON_Mesh editing: quad splitting, vertex merging, culling, compacting and normals.

#include <gtest/gtest.h>

#include <limits>

#include "compat/mesh_support.h"

namespace {

using compat_test::AddFloatVertices;
using compat_test::AddVertices;
using compat_test::Face;
using compat_test::MakeTwoTriangles;
using compat_test::SameFace;

TEST(OpenNurbsMeshQuads, SplitAlongTheShorterDiagonalAndAppendTheSecondHalf) {
  ON_Mesh mesh;
  // Quad 0: diagonal 1-3 shorter; quad 1: a square, tie goes to 0-2.
  AddVertices(mesh, {{0, 0, 0},
                     {2, -1, 0},
                     {4, 0, 0},
                     {2, 1, 0},
                     {10, 0, 0},
                     {11, 0, 0},
                     {11, 1, 0},
                     {10, 1, 0}});
  mesh.SetQuad(0, 0, 1, 2, 3);
  mesh.SetQuad(1, 4, 5, 6, 7);
  mesh.ComputeFaceNormals();
  EXPECT_TRUE(mesh.ConvertQuadsToTriangles());
  ASSERT_EQ(mesh.FaceCount(), 4);
  EXPECT_TRUE(SameFace(mesh.m_F[0], 0, 1, 3, 3));
  EXPECT_TRUE(SameFace(mesh.m_F[1], 4, 5, 6, 6));
  EXPECT_TRUE(SameFace(mesh.m_F[2], 1, 2, 3, 3));
  EXPECT_TRUE(SameFace(mesh.m_F[3], 4, 6, 7, 7));
  EXPECT_EQ(mesh.QuadCount(), 0);
  ASSERT_EQ(mesh.m_FN.Count(), 4);
  EXPECT_EQ(mesh.m_FN[3], ON_3fVector(0, 0, 1));
}

TEST(OpenNurbsMeshQuads, ACollapsedEdgeGivesATriangleInPlaceAndZeroDiagonalsFail) {
  ON_Mesh mesh;
  AddVertices(mesh, {{0, 0, 0}, {1, 0, 0}, {1, 0, 0}, {0, 1, 0}});
  mesh.SetQuad(0, 0, 1, 2, 3);
  EXPECT_TRUE(mesh.ConvertQuadsToTriangles());
  ASSERT_EQ(mesh.FaceCount(), 1);
  EXPECT_TRUE(SameFace(mesh.m_F[0], 2, 3, 0, 0));

  ON_Mesh flat;
  AddVertices(flat, {{0, 0, 0}, {1, 0, 0}, {0, 0, 0}, {1, 0, 0}});
  flat.SetQuad(0, 0, 1, 2, 3);  // both diagonals zero
  EXPECT_FALSE(flat.ConvertQuadsToTriangles());
  EXPECT_TRUE(SameFace(flat.m_F[0], 0, 1, 2, 3));
}

TEST(OpenNurbsMeshCombine, SurvivorsAreSortedDescending) {
  ON_Mesh mesh;
  AddFloatVertices(mesh,
                   {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 0, 0}, {2, 5, 0}, {0, 1, 0}, {-3, 2, 1}});
  mesh.SetTriangle(0, 0, 1, 2);
  mesh.SetTriangle(1, 3, 4, 5);
  mesh.SetTriangle(2, 6, 0, 1);
  EXPECT_TRUE(mesh.CombineIdenticalVertices());
  ASSERT_EQ(mesh.VertexCount(), 5);
  EXPECT_EQ(mesh.m_V[0], ON_3fPoint(2, 5, 0));
  EXPECT_EQ(mesh.m_V[1], ON_3fPoint(1, 0, 0));
  EXPECT_EQ(mesh.m_V[2], ON_3fPoint(0, 1, 0));
  EXPECT_EQ(mesh.m_V[3], ON_3fPoint(0, 0, 0));
  EXPECT_EQ(mesh.m_V[4], ON_3fPoint(-3, 2, 1));
  EXPECT_TRUE(SameFace(mesh.m_F[0], 3, 1, 2, 2));
  EXPECT_TRUE(SameFace(mesh.m_F[1], 1, 0, 2, 2));
  EXPECT_TRUE(SameFace(mesh.m_F[2], 4, 3, 1, 1));
  EXPECT_FALSE(mesh.CombineIdenticalVertices());  // nothing left to merge
}

TEST(OpenNurbsMeshCombine, ComparesFloatsOnlyAndKeepsTheLastDoubleValue) {
  ON_Mesh mesh;
  AddVertices(mesh, {{1.0, 0, 0}, {1.0 + 1e-12, 0, 0}, {0, 1, 0}, {-0.0, 0, 0}, {0.0, 0, 0}});
  mesh.SetTriangle(0, 0, 2, 3);
  mesh.SetTriangle(1, 1, 2, 4);
  EXPECT_TRUE(mesh.CombineIdenticalVertices());
  ASSERT_EQ(mesh.VertexCount(), 3);  // +0 and -0 merge too
  ASSERT_EQ(mesh.m_dV.Count(), 3);
  EXPECT_EQ(mesh.m_dV[0].x, 1.0 + 1e-12);
  // Faces are renumbered, never removed, even when they collapse.
  ON_Mesh collapsing;
  AddFloatVertices(collapsing, {{0, 0, 0}, {0, 0, 0}, {1, 0, 0}, {1, 0, 0}});
  collapsing.SetQuad(0, 0, 1, 2, 3);
  EXPECT_TRUE(collapsing.CombineIdenticalVertices());
  EXPECT_EQ(collapsing.FaceCount(), 1);
  EXPECT_TRUE(SameFace(collapsing.m_F[0], 1, 1, 0, 0));
}

TEST(OpenNurbsMeshCombine, ColorsAndNormalsSplitVerticesUnlessIgnored) {
  ON_Mesh mesh;
  AddFloatVertices(mesh, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 0}});
  mesh.SetTriangle(0, 0, 1, 2);
  mesh.SetTriangle(1, 3, 2, 1);
  ON_Mesh normals(mesh);
  for (unsigned int c : {0x10u, 0x20u, 0x30u, 0x40u})
    mesh.m_C.Append(ON_Color(c));
  ON_Mesh ignoring(mesh);
  EXPECT_FALSE(mesh.CombineIdenticalVertices());
  EXPECT_TRUE(ignoring.CombineIdenticalVertices(false, true));
  EXPECT_EQ(ignoring.VertexCount(), 3);
  EXPECT_EQ(ignoring.m_C.Count(), 0);  // colours are lost

  for (ON_3fVector n :
       {ON_3fVector(1, 0, 0), ON_3fVector(0, 0, 1), ON_3fVector(0, 0, 1), ON_3fVector(0, 1, 0)})
    normals.m_N.Append(n);
  ON_Mesh keyed(normals);
  EXPECT_FALSE(keyed.CombineIdenticalVertices());
  EXPECT_TRUE(normals.CombineIdenticalVertices(true, false));
  ASSERT_EQ(normals.m_N.Count(), 3);
  const ON_3fVector merged = normals.m_N[2];  // (0,0,0) sorts last; its normals are averaged
  EXPECT_FLOAT_EQ(merged.x, 0.70710677f);
  EXPECT_FLOAT_EQ(merged.y, 0.70710677f);
}

TEST(OpenNurbsMeshCull, DegenerateFacesAreRemovedOrRepaired) {
  ON_Mesh mesh;
  AddFloatVertices(mesh, {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {2, 0, 0}, {1, 0, 0}});
  mesh.m_F.Append(Face(0, 1, 2, 3));   // good quad: kept
  mesh.m_F.Append(Face(0, 1, 2, 0));   // repaired to (0,1,2,2)
  mesh.m_F.Append(Face(0, 1, 4, 4));   // collinear triangle: removed
  mesh.m_F.Append(Face(0, 1, 5, 5));   // two corners at one location: removed
  mesh.m_F.Append(Face(0, 1, 0, 2));   // bow-tie: removed
  mesh.m_F.Append(Face(-1, 1, 2, 2));  // negative index: removed
  mesh.m_F.Append(Face(0, 0, 1, 2));   // repaired to (0,1,2,2)
  mesh.m_F.Append(Face(0, 1, 4, 2));   // three collinear corners, both halves have area: kept
  const unsigned int removed = mesh.CullDegenerateFaces();
  EXPECT_EQ(removed, 4u);
  ASSERT_EQ(mesh.FaceCount(), 4);
  EXPECT_TRUE(SameFace(mesh.m_F[0], 0, 1, 2, 3));
  EXPECT_TRUE(SameFace(mesh.m_F[1], 0, 1, 2, 2));
  EXPECT_TRUE(SameFace(mesh.m_F[2], 0, 1, 2, 2));
  EXPECT_TRUE(SameFace(mesh.m_F[3], 0, 1, 4, 2));
  EXPECT_EQ(mesh.VertexCount(), 6);  // vertices stay
  EXPECT_EQ(mesh.QuadCount() + mesh.TriangleCount(), 4);
}

TEST(OpenNurbsMeshCull, CollinearAndNonPlanarQuadsAreKept) {
  ON_Mesh collinear;
  AddFloatVertices(collinear, {{0, 0, 0}, {1, 0, 0}, {3, 0, 0}, {2, 0, 0}});
  collinear.SetQuad(0, 0, 1, 2, 3);
  EXPECT_EQ(collinear.CullDegenerateFaces(), 0u);

  ON_Mesh mesh;
  AddVertices(mesh, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}});
  mesh.SetQuad(0, 0, 1, 2, 3);  // a tetrahedron stored as one quad
  EXPECT_TRUE(mesh.IsValid());
  mesh.Cleanup(false);
  ASSERT_EQ(mesh.FaceCount(), 1);
  EXPECT_TRUE(SameFace(mesh.m_F[0], 0, 1, 2, 3));
  EXPECT_EQ(mesh.VertexCount(), 4);
}

TEST(OpenNurbsMeshCull, NoFaceLeftDestroysTheMeshAndItsUserStrings) {
  ON_Mesh mesh;
  AddVertices(mesh, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}});
  mesh.m_C.Append(ON_Color(1, 1, 1));
  mesh.SetUserString(L"k", L"v");
  ON_Mesh verticesOnly(mesh);
  mesh.m_F.Append(Face(-1, -1, -1, -1));
  mesh.m_F.Append(Face(0, 1, 1, 1));
  EXPECT_EQ(mesh.CullDegenerateFaces(), 2u);
  EXPECT_EQ(mesh.VertexCount(), 0);
  EXPECT_EQ(mesh.m_C.Count(), 0);
  EXPECT_EQ(mesh.UserStringCount(), 0);
  EXPECT_TRUE(verticesOnly.Compact());
  EXPECT_EQ(verticesOnly.VertexCount(), 0);
  EXPECT_EQ(verticesOnly.UserStringCount(), 0);
}

TEST(OpenNurbsMeshCull, InvalidDoubleVerticesAreParkedAtDoubleMax) {
  ON_Mesh mesh;
  AddVertices(mesh, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 0}});
  mesh.m_dV[3] = ON_3dPoint(std::numeric_limits<double>::quiet_NaN(), 1, 0);
  mesh.SetTriangle(0, 0, 1, 2);
  mesh.SetTriangle(1, 1, 3, 2);
  EXPECT_EQ(mesh.CullDegenerateFaces(), 1u);
  EXPECT_EQ(mesh.m_dV[3], ON_3dPoint(ON_DBL_MAX, ON_DBL_MAX, ON_DBL_MAX));
}

TEST(OpenNurbsMeshCompact, DropsMismatchedArraysAndUnusedVerticesInOrder) {
  ON_Mesh mesh;
  AddVertices(mesh, {{0, 0, 0}, {9, 9, 9}, {1, 0, 0}, {1, 1, 1}, {0, 1, 0}});
  mesh.SetTriangle(0, 0, 2, 4);
  mesh.SetQuad(1, 2, 2, 4, 4);         // degenerate, but Compact does not care
  mesh.m_C.Append(ON_Color(1, 2, 3));  // one colour for five vertices
  for (int i = 0; i < 5; i++)
    mesh.m_N.Append(ON_3fVector(0, 0, 1));
  EXPECT_TRUE(mesh.Compact());
  EXPECT_EQ(mesh.m_C.Count(), 0);
  ASSERT_EQ(mesh.VertexCount(), 3);
  EXPECT_EQ(mesh.m_V[1], ON_3fPoint(1, 0, 0));
  EXPECT_EQ(mesh.m_N.Count(), 3);
  EXPECT_TRUE(SameFace(mesh.m_F[0], 0, 1, 2, 2));
  EXPECT_TRUE(SameFace(mesh.m_F[1], 1, 1, 2, 2));
  EXPECT_EQ(mesh.m_V.Capacity(), 3);
}

TEST(OpenNurbsMeshCompact, FacesWithOutOfRangeIndicesAreDropped) {
  ON_Mesh mesh;
  AddVertices(mesh, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {5, 5, 5}});
  mesh.SetTriangle(0, 0, 1, 2);
  mesh.m_F.Append(Face(0, 1, 7, 7));
  EXPECT_EQ(mesh.CullUnusedVertices(), 1);
  EXPECT_EQ(mesh.FaceCount(), 1);
}

TEST(OpenNurbsMeshNormals, FaceAndVertexNormals) {
  ON_Mesh mesh;
  MakeTwoTriangles(mesh);
  AddVertices(mesh, {{5, 5, 5}});  // unused
  EXPECT_TRUE(mesh.ComputeVertexNormals());
  ASSERT_EQ(mesh.m_FN.Count(), 2);
  EXPECT_EQ(mesh.m_FN[0], ON_3fVector(0, 0, 1));
  ASSERT_EQ(mesh.m_N.Count(), 5);
  EXPECT_EQ(mesh.m_N[0], ON_3fVector(0, 0, 1));
  EXPECT_EQ(mesh.m_N[4], ON_3fVector(0, 0, 1));  // unused vertex gets +Z

  // Existing face normals are trusted even when stale.
  mesh.m_FN[0] = ON_3fVector(1, 0, 0);
  mesh.m_FN[1] = ON_3fVector(1, 0, 0);
  EXPECT_TRUE(mesh.ComputeVertexNormals());
  EXPECT_EQ(mesh.m_N[0], ON_3fVector(1, 0, 0));

  ON_Mesh degenerate;
  AddVertices(degenerate, {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}});
  degenerate.SetTriangle(0, 0, 1, 2);
  EXPECT_TRUE(degenerate.ComputeFaceNormals());
  EXPECT_EQ(degenerate.m_FN[0], ON_3fVector(0, 0, 0));

  ON_Mesh noFaces;
  noFaces.m_FN.Append(ON_3fVector(0, 0, 1));
  EXPECT_FALSE(noFaces.ComputeFaceNormals());
  EXPECT_EQ(noFaces.m_FN.Count(), 0);
  EXPECT_FALSE(noFaces.ComputeVertexNormals());
}

}  // namespace
