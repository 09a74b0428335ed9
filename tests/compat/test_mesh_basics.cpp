// ON_Mesh vertex lists, face counts and their caches, copies and the bounding box.

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
static_assert(!HasSetVertexColor<ON_Mesh>::value && !HasEmptyMethod<ON_Mesh>::value, "");

using compat_test::AddFloatVertices;
using compat_test::AddVertices;
using compat_test::MakeTwoTriangles;

TEST(OpenNurbsMeshVertices, TheFloatListCountsAndAMismatchedDoubleListIsErased) {
  ON_Mesh mesh;
  mesh.m_dV.Append(ON_3dPoint(1, 2, 3));
  EXPECT_EQ(mesh.VertexCount(), 0);
  EXPECT_FALSE(mesh.HasDoublePrecisionVertices());
  EXPECT_EQ(mesh.Vertex(0), ON_3dPoint::UnsetPoint);
  EXPECT_EQ(mesh.DoublePrecisionVertices().Count(), 0);  // asking erases it
  EXPECT_EQ(mesh.m_dV.Count(), 0);

  // Updating the float list from no doubles empties it; from doubles it rounds them.
  ON_Mesh floats;
  AddFloatVertices(floats, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}});
  floats.UpdateSinglePrecisionVertices();
  EXPECT_EQ(floats.m_V.Count(), 0);
  ON_Mesh doubles;
  doubles.m_dV.Append(ON_3dPoint(0.1, 0.2, 0.3));
  doubles.UpdateSinglePrecisionVertices();
  ASSERT_EQ(doubles.VertexCount(), 1);
  EXPECT_TRUE(doubles.HasSynchronizedDoubleAndSinglePrecisionVertices());
  EXPECT_EQ(doubles.Vertex(0), ON_3dPoint(0.1, 0.2, 0.3));
}

TEST(OpenNurbsMeshVertices, SetVertexFillsBothListsOnlyWhileTheyAreInStep) {
  ON_Mesh mesh;
  EXPECT_TRUE(mesh.SetVertex(0, ON_3dPoint(0.1, 0.2, 0.3)));
  EXPECT_TRUE(mesh.SetVertex(1, ON_3fPoint(1, 2, 3)));
  EXPECT_FALSE(mesh.SetVertex(3, ON_3dPoint(0, 0, 0)));
  EXPECT_FALSE(mesh.SetVertex(-1, ON_3dPoint(0, 0, 0)));
  EXPECT_EQ(mesh.m_dV.Count(), 2);
  EXPECT_EQ(mesh.Vertex(0), ON_3dPoint(0.1, 0.2, 0.3));  // full double precision

  ON_Mesh floatOnly;
  AddFloatVertices(floatOnly, {{0, 0, 0}});
  EXPECT_TRUE(floatOnly.SetVertex(1, ON_3dPoint(0.1, 0, 0)));
  EXPECT_EQ(floatOnly.m_dV.Count(), 0);
  EXPECT_EQ(floatOnly.Vertex(1), ON_3dPoint(static_cast<double>(0.1f), 0, 0));
}

TEST(OpenNurbsMeshVertices, DoubleListSurvivesOnlyWhereItStillMatches) {
  ON_Mesh mesh;
  AddVertices(mesh, {{0.1, 0, 0}, {0.2, 0, 0}});
  mesh.m_V[1] = ON_3fPoint(5, 0, 0);
  EXPECT_FALSE(mesh.HasSynchronizedDoubleAndSinglePrecisionVertices());
  EXPECT_EQ(mesh.Vertex(1), ON_3dPoint(5, 0, 0));
  mesh.UpdateDoublePrecisionVertices();
  EXPECT_EQ(mesh.m_dV[0].x, 0.1);  // kept
  EXPECT_EQ(mesh.m_dV[1].x, 5.0);  // replaced
  EXPECT_TRUE(mesh.HasSynchronizedDoubleAndSinglePrecisionVertices());
}

TEST(OpenNurbsMeshFaces, SetQuadStoresInvalidFacesButOnlyAppendsAtTheEnd) {
  ON_Mesh mesh;
  EXPECT_FALSE(mesh.SetQuad(0, 0, 1, 2, 3));  // no vertices yet: stored, reported invalid
  EXPECT_FALSE(mesh.SetTriangle(5, 0, 1, 2));
  EXPECT_EQ(mesh.FaceCount(), 1);
  AddVertices(mesh, {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}});
  EXPECT_TRUE(mesh.SetTriangle(1, 0, 1, 2));
  EXPECT_EQ(mesh.m_F[1].vi[3], 2);
  // Colours count only when every vertex has one.
  mesh.m_C.Append(ON_Color(255, 0, 0));
  EXPECT_FALSE(mesh.HasVertexColors());
}

TEST(OpenNurbsMeshFaces, QuadAndTriangleCountsAreCachedUntilTheFaceCountChanges) {
  ON_Mesh mesh;
  MakeTwoTriangles(mesh);
  EXPECT_EQ(mesh.TriangleCount(), 2);
  // Overwriting an existing face keeps the old classification.
  mesh.SetQuad(1, 0, 1, 2, 3);
  EXPECT_EQ(mesh.QuadCount(), 0);
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

  // Copies inherit the cached numbers.
  mesh.m_F[0] = compat_test::Face(0, 1, 2, 3);
  const ON_Mesh copy(mesh);
  EXPECT_EQ(copy.QuadCount(), 1);
}

TEST(OpenNurbsMeshBox, NeedsAFaceIsCachedAndSkipsNanUnlessItComesFirst) {
  ON_Mesh mesh;
  AddVertices(mesh, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {5, 5, 5}});
  EXPECT_FALSE(mesh.BoundingBox().IsValid());
  mesh.SetTriangle(0, 0, 1, 2);
  EXPECT_EQ(mesh.BoundingBox().m_max, ON_3dPoint(5, 5, 5));  // unused vertices count
  mesh.SetVertex(3, ON_3dPoint(9, 9, 9));
  EXPECT_EQ(mesh.BoundingBox().m_max, ON_3dPoint(5, 5, 5));  // stale
  mesh.InvalidateVertexBoundingBox();
  EXPECT_EQ(mesh.BoundingBox().m_max, ON_3dPoint(9, 9, 9));

  const float nan = std::numeric_limits<float>::quiet_NaN();
  ON_Mesh floats;
  AddFloatVertices(floats, {{0, 0, 0}, {1, 0, 0}, {0.1, 1, 0}});
  floats.m_V.Append(ON_3fPoint(nan, 7, 0));
  floats.SetTriangle(0, 0, 1, 2);
  EXPECT_EQ(floats.BoundingBox().m_max, ON_3dPoint(1, 7, 0));
  floats.m_V[0].x = nan;
  floats.InvalidateVertexBoundingBox();
  EXPECT_FALSE(floats.BoundingBox().IsValid());

  // Double vertices are used when present.
  ON_Mesh precise;
  AddVertices(precise, {{0, 0, 0}, {0.1, 0, 0}, {0, 1, 0}});
  precise.SetTriangle(0, 0, 1, 2);
  EXPECT_EQ(precise.BoundingBox().m_max.x, 0.1);
}

}  // namespace
