// ON_Mesh vertex lists, counts and their caches, and copies.

#include <gtest/gtest.h>

#include <limits>
#include <type_traits>
#include <utility>

// The public header forward-declares some of these types; both must agree.
#include "brindle.h"
#include "compat/mesh_support.h"

namespace {

// Colours are written through m_C directly, and emptiness is asked with IsEmpty(): the SDK has
// neither a SetVertexColor method nor an Empty() method on meshes.
template <class Mesh, class = void>
struct HasSetVertexColor : std::false_type {};
template <class Mesh>
struct HasSetVertexColor<Mesh, decltype(void(&Mesh::SetVertexColor))> : std::true_type {};
template <class Mesh, class = void>
struct HasEmptyMethod : std::false_type {};
template <class Mesh>
struct HasEmptyMethod<Mesh, decltype(void(std::declval<Mesh&>().Empty()))> : std::true_type {};
static_assert(!HasSetVertexColor<ON_Mesh>::value, "");
static_assert(!HasEmptyMethod<ON_Mesh>::value, "");

using compat_test::AddFloatVertices;
using compat_test::AddVertices;
using compat_test::MakeTwoTriangles;

TEST(OpenNurbsMeshVertices, VertexCountComesFromTheFloatListOnly) {
  ON_Mesh mesh;
  mesh.m_dV.Append(ON_3dPoint(1, 2, 3));
  mesh.m_dV.Append(ON_3dPoint(4, 5, 6));
  EXPECT_EQ(mesh.VertexCount(), 0);
  EXPECT_FALSE(mesh.HasDoublePrecisionVertices());
  EXPECT_EQ(mesh.Vertex(0), ON_3dPoint::UnsetPoint);
  // Asking for the double list of such a mesh erases it.
  EXPECT_EQ(mesh.DoublePrecisionVertices().Count(), 0);
  EXPECT_EQ(mesh.m_dV.Count(), 0);

  ON_Mesh both;
  AddFloatVertices(both, {{0, 0, 0}, {1, 0, 0}});
  both.m_dV.Append(ON_3dPoint(9, 9, 9));
  EXPECT_EQ(both.VertexCount(), 2);
}

TEST(OpenNurbsMeshVertices, UpdateSinglePrecisionEmptiesTheFloatListWithoutDoubles) {
  ON_Mesh mesh;
  AddFloatVertices(mesh, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}});
  const int capacity = mesh.m_V.Capacity();
  mesh.UpdateSinglePrecisionVertices();
  EXPECT_EQ(mesh.m_V.Count(), 0);
  EXPECT_EQ(mesh.m_V.Capacity(), capacity);

  ON_Mesh doubles;
  doubles.m_dV.Append(ON_3dPoint(0.1, 0.2, 0.3));
  doubles.UpdateSinglePrecisionVertices();
  ASSERT_EQ(doubles.VertexCount(), 1);
  EXPECT_EQ(doubles.m_V[0], ON_3fPoint(0.1f, 0.2f, 0.3f));
  EXPECT_TRUE(doubles.HasSynchronizedDoubleAndSinglePrecisionVertices());
  EXPECT_EQ(doubles.Vertex(0), ON_3dPoint(0.1, 0.2, 0.3));
}

TEST(OpenNurbsMeshVertices, SetVertexOnAFreshMeshFillsBothLists) {
  ON_Mesh mesh;
  EXPECT_TRUE(mesh.SetVertex(0, ON_3dPoint(0.1, 0.2, 0.3)));
  EXPECT_TRUE(mesh.SetVertex(1, ON_3fPoint(1, 2, 3)));
  EXPECT_FALSE(mesh.SetVertex(3, ON_3dPoint(0, 0, 0)));
  EXPECT_FALSE(mesh.SetVertex(-1, ON_3dPoint(0, 0, 0)));
  EXPECT_EQ(mesh.m_V.Count(), 2);
  EXPECT_EQ(mesh.m_dV.Count(), 2);
  EXPECT_TRUE(mesh.HasSynchronizedDoubleAndSinglePrecisionVertices());
  EXPECT_EQ(mesh.Vertex(0), ON_3dPoint(0.1, 0.2, 0.3));  // full double precision

  // With the lists out of step only the float list changes.
  ON_Mesh float_only;
  AddFloatVertices(float_only, {{0, 0, 0}});
  EXPECT_TRUE(float_only.SetVertex(1, ON_3dPoint(0.1, 0, 0)));
  EXPECT_EQ(float_only.m_dV.Count(), 0);
  EXPECT_EQ(float_only.Vertex(1), ON_3dPoint(static_cast<double>(0.1f), 0, 0));
}

TEST(OpenNurbsMeshVertices, DoubleListSurvivesOnlyWhereItStillMatches) {
  ON_Mesh mesh;
  AddVertices(mesh, {{0.1, 0, 0}, {0.2, 0, 0}});
  mesh.m_V[1] = ON_3fPoint(5, 0, 0);
  EXPECT_FALSE(mesh.HasSynchronizedDoubleAndSinglePrecisionVertices());
  EXPECT_TRUE(mesh.HasDoublePrecisionVertices());
  EXPECT_EQ(mesh.Vertex(1), ON_3dPoint(5, 0, 0));
  mesh.UpdateDoublePrecisionVertices();
  EXPECT_EQ(mesh.m_dV[0].x, 0.1);  // kept
  EXPECT_EQ(mesh.m_dV[1].x, 5.0);  // replaced
  EXPECT_TRUE(mesh.HasSynchronizedDoubleAndSinglePrecisionVertices());

  // Created from scratch when missing.
  ON_Mesh float_only;
  AddFloatVertices(float_only, {{0.1, 0, 0}});
  EXPECT_EQ(float_only.DoublePrecisionVertices().Count(), 1);
  EXPECT_EQ(float_only.m_dV[0].x, static_cast<double>(0.1f));
}

TEST(OpenNurbsMeshVertices, ReserveGrowsEveryListInStep) {
  ON_Mesh mesh;
  EXPECT_TRUE(mesh.ReserveVertexCapacity(10));
  EXPECT_EQ(mesh.m_V.Capacity(), 10);
  EXPECT_EQ(mesh.m_dV.Capacity(), 10);
  EXPECT_EQ(mesh.m_C.Capacity(), 10);
  EXPECT_EQ(mesh.m_N.Capacity(), 10);
  AddFloatVertices(mesh, {{0, 0, 0}});
  mesh.m_C.Append(ON_Color(1, 2, 3));
  EXPECT_TRUE(mesh.ReserveVertexCapacity(20));
  EXPECT_EQ(mesh.m_V.Capacity(), 20);
  EXPECT_EQ(mesh.m_C.Capacity(), 20);
  EXPECT_EQ(mesh.m_dV.Capacity(), 10);  // out of step: left alone
  EXPECT_TRUE(mesh.ReserveVertexCapacity(5));
}

TEST(OpenNurbsMeshVertices, ColorsArePresentOnlyForEveryVertex) {
  ON_Mesh mesh;
  EXPECT_FALSE(mesh.HasVertexColors());
  MakeTwoTriangles(mesh);
  mesh.m_C.Append(ON_Color(255, 0, 0));
  EXPECT_FALSE(mesh.HasVertexColors());
  for (int i = 1; i < 4; i++)
    mesh.m_C.Append(ON_Color(0, 0, 255));
  EXPECT_TRUE(mesh.HasVertexColors());
  mesh.ClearVertexColors();
  EXPECT_FALSE(mesh.HasVertexColors());
}

TEST(OpenNurbsMeshFaces, SetQuadStoresInvalidFacesButOnlyAppendsAtTheEnd) {
  ON_Mesh mesh;
  EXPECT_FALSE(mesh.SetQuad(0, 0, 1, 2, 3));  // no vertices yet: stored, reported invalid
  EXPECT_EQ(mesh.FaceCount(), 1);
  EXPECT_FALSE(mesh.SetTriangle(5, 0, 1, 2));
  EXPECT_FALSE(mesh.SetTriangle(-1, 0, 1, 2));
  EXPECT_EQ(mesh.FaceCount(), 1);
  AddVertices(mesh, {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}});
  EXPECT_TRUE(mesh.SetTriangle(1, 0, 1, 2));
  EXPECT_EQ(mesh.m_F[1].vi[3], 2);
}

TEST(OpenNurbsMeshFaces, QuadAndTriangleCountsAreCachedUntilTheFaceCountChanges) {
  ON_Mesh mesh;
  MakeTwoTriangles(mesh);
  EXPECT_EQ(mesh.TriangleCount(), 2);
  EXPECT_EQ(mesh.QuadCount(), 0);
  // Overwriting an existing face keeps the old classification.
  mesh.SetQuad(1, 0, 1, 2, 3);
  EXPECT_EQ(mesh.QuadCount(), 0);
  EXPECT_EQ(mesh.TriangleCount(), 2);
  // A stale cache makes ConvertQuadsToTriangles skip the quad and still report success.
  EXPECT_TRUE(mesh.ConvertQuadsToTriangles());
  EXPECT_TRUE(mesh.m_F[1].IsQuad());
  EXPECT_EQ(mesh.FaceCount(), 2);
  // Adding a face forces a recount.
  mesh.SetTriangle(2, 1, 2, 3);
  EXPECT_EQ(mesh.QuadCount(), 1);
  EXPECT_EQ(mesh.TriangleCount(), 2);
  mesh.m_F.Append(compat_test::Face(0, 0, 0, 0));
  EXPECT_EQ(mesh.InvalidFaceCount(), 1);
  EXPECT_TRUE(mesh.CountQuads());

  // Copies inherit the cached numbers.
  mesh.m_F[0] = compat_test::Face(0, 1, 2, 3);
  const ON_Mesh copy(mesh);
  EXPECT_EQ(copy.QuadCount(), 1);
}

TEST(OpenNurbsMeshCopies, DuplicateIsDeepAndSizedToCounts) {
  ON_Mesh mesh(10, 10, false, false);
  EXPECT_EQ(mesh.m_F.Capacity(), 10);
  EXPECT_EQ(mesh.m_V.Capacity(), 10);
  MakeTwoTriangles(mesh);
  for (int i = 0; i < 4; i++)
    mesh.m_C.Append(ON_Color(i, 0, 0));
  ON_Mesh* copy = mesh.Duplicate();
  ASSERT_NE(copy, nullptr);
  EXPECT_EQ(copy->VertexCount(), 4);
  EXPECT_EQ(copy->m_V.Capacity(), 4);
  EXPECT_EQ(copy->m_dV.Count(), 4);
  EXPECT_TRUE(copy->HasVertexColors());
  mesh.m_V[0] = ON_3fPoint(7, 7, 7);
  EXPECT_EQ(copy->m_V[0], ON_3fPoint(0, 0, 0));
  delete copy;
}

TEST(OpenNurbsMeshCopies, DestroyKeepsHiddenFlags) {
  ON_Mesh mesh;
  MakeTwoTriangles(mesh);
  mesh.m_H.Append(true);
  mesh.Destroy();
  EXPECT_TRUE(mesh.IsEmpty());
  EXPECT_EQ(mesh.m_dV.Count(), 0);
  EXPECT_EQ(mesh.m_H.Count(), 1);
}

TEST(OpenNurbsMeshBox, NeedsAFaceAndThreeVerticesAndIsCached) {
  ON_Mesh mesh;
  AddVertices(mesh, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {5, 5, 5}});
  ON_BoundingBox box = mesh.BoundingBox();
  EXPECT_FALSE(box.IsValid());
  EXPECT_EQ(box.m_min, ON_3dPoint(1, 0, 0));
  mesh.SetTriangle(0, 0, 1, 2);
  box = mesh.BoundingBox();
  EXPECT_EQ(box.m_max, ON_3dPoint(5, 5, 5));  // unused vertices count
  mesh.SetVertex(3, ON_3dPoint(9, 9, 9));
  EXPECT_EQ(mesh.BoundingBox().m_max, ON_3dPoint(5, 5, 5));  // stale
  mesh.InvalidateVertexBoundingBox();
  EXPECT_EQ(mesh.BoundingBox().m_max, ON_3dPoint(9, 9, 9));

  // Double vertices are used when present.
  ON_Mesh precise;
  AddVertices(precise, {{0, 0, 0}, {0.1, 0, 0}, {0, 1, 0}});
  precise.SetTriangle(0, 0, 1, 2);
  EXPECT_EQ(precise.BoundingBox().m_max.x, 0.1);
}

TEST(OpenNurbsMeshBox, NanVerticesAreSkippedUnlessTheyComeFirst) {
  const float nan = std::numeric_limits<float>::quiet_NaN();
  ON_Mesh mesh;
  AddFloatVertices(mesh, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}});
  mesh.m_V.Append(ON_3fPoint(nan, 7, 0));
  mesh.SetTriangle(0, 0, 1, 2);
  const ON_BoundingBox box = mesh.BoundingBox();
  EXPECT_TRUE(box.IsValid());
  EXPECT_EQ(box.m_max, ON_3dPoint(1, 7, 0));

  mesh.m_V[0].x = nan;
  mesh.InvalidateVertexBoundingBox();
  EXPECT_FALSE(mesh.BoundingBox().IsValid());
  EXPECT_EQ(mesh.BoundingBox().m_min, ON_3dPoint(1, 0, 0));
}

}  // namespace
