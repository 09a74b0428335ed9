// ON_MeshFace and ON_Mesh validity: face indices and locations, repair and normals; the order
// of the mesh checks, their messages, and what is not checked.

#include <gtest/gtest.h>

#include <cstddef>
#include <limits>
#include <string>
#include <type_traits>
#include <utility>

#include "compat/mesh_support.h"

namespace {

using compat_test::AddFloatVertices;
using compat_test::Face;
using compat_test::MakeTwoTriangles;
using compat_test::SameFace;

// IsValid has int and unsigned overloads only, so a size_t count is ambiguous.
template <class Count, class = void>
struct IsValidCompiles : std::false_type {};
template <class Count>
struct IsValidCompiles<Count, decltype(void(ON_MeshFace().IsValid(std::declval<Count>())))>
    : std::true_type {};
static_assert(IsValidCompiles<int>::value && IsValidCompiles<unsigned int>::value, "");
static_assert(!IsValidCompiles<size_t>::value, "IsValid(size_t) must be ambiguous");

TEST(OpenNurbsMeshFace, IndexValidity) {
  static_assert(sizeof(ON_MeshFace) == 16, "");
  EXPECT_TRUE(Face(0, 1, 2, 3).IsValid(4));
  EXPECT_TRUE(Face(0, 1, 2, 2).IsValid(3u));
  for (const ON_MeshFace& bad : {Face(0, 1, 2, 0), Face(0, 0, 1, 2), Face(-1, 1, 2, 2)})
    EXPECT_FALSE(bad.IsValid(4) || bad.IsValid(4u)) << bad.vi[0] << bad.vi[1] << bad.vi[2];
  EXPECT_FALSE(Face(0, 1, 2, 3).IsValid(3));
  EXPECT_FALSE(ON_MeshFace::UnsetMeshFace.IsValid(10));
  EXPECT_TRUE(Face(-1, -1, -1, -1).IsTriangle());
}

TEST(OpenNurbsMeshFace, LocationValidityIsExactDistinctness) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const ON_3dPoint vertices[] = {ON_3dPoint(0, 0, 0), ON_3dPoint(1, 0, 0), ON_3dPoint(2, 0, 0),
                                 ON_3dPoint(0, 0, 0), ON_3dPoint(nan, 0, 0)};
  EXPECT_TRUE(Face(0, 1, 2, 2).IsValid(5, vertices));  // collinear is fine
  EXPECT_FALSE(Face(0, 1, 3, 3).IsValid(5, vertices));
  EXPECT_FALSE(Face(0, 1, 2, 3).IsValid(5, vertices));
  EXPECT_TRUE(Face(0, 1, 4, 4).IsValid(5, vertices));  // NaN counts as distinct
}

TEST(OpenNurbsMeshFace, RepairKeepsDistinctCornersInOrder) {
  ON_MeshFace f = Face(0, 1, 2, 0);
  EXPECT_TRUE(f.Repair(3));
  EXPECT_TRUE(SameFace(f, 0, 1, 2, 2));
  f = Face(0, 0, 1, 2);
  EXPECT_TRUE(f.Repair(3));
  EXPECT_TRUE(SameFace(f, 0, 1, 2, 2));
  f = Face(0, 0, 1, 1);
  EXPECT_FALSE(f.Repair(3));
  EXPECT_TRUE(SameFace(f, 0, 0, 1, 1));  // untouched on failure

  const double nan = std::numeric_limits<double>::quiet_NaN();
  const ON_3dPoint vertices[] = {ON_3dPoint(nan, 0, 0), ON_3dPoint(1, 0, 0), ON_3dPoint(1, 1, 0),
                                 ON_3dPoint(0, 1, 0), ON_3dPoint(1, 0, 0)};
  f = Face(0, 1, 2, 3);
  EXPECT_TRUE(f.Repair(5, vertices));
  EXPECT_TRUE(SameFace(f, 1, 2, 3, 3));
  f = Face(1, 4, 2, 3);
  EXPECT_TRUE(f.Repair(5, vertices));
  EXPECT_TRUE(SameFace(f, 1, 2, 3, 3));
}

TEST(OpenNurbsMeshFace, NormalFromTheDiagonals) {
  const ON_3dPoint vertices[] = {ON_3dPoint(0, 0, 0), ON_3dPoint(1, 0, 0), ON_3dPoint(1, 1, 0),
                                 ON_3dPoint(0, 1, 0)};
  ON_3dVector n;
  EXPECT_TRUE(Face(0, 1, 2, 2).ComputeFaceNormal(vertices, n));
  EXPECT_EQ(n, ON_3dVector(0, 0, 1));
  EXPECT_TRUE(Face(0, 3, 2, 1).ComputeFaceNormal(vertices, n));
  EXPECT_EQ(n, ON_3dVector(0, 0, -1));
  n = ON_3dVector(1, 1, 1);
  EXPECT_FALSE(Face(0, 1, 1, 1).ComputeFaceNormal(vertices, n));
  EXPECT_EQ(n, ON_3dVector(0, 0, 0));
}

// The message IsValid prints, or "" when the mesh is valid.
std::wstring ValidityMessage(const ON_Mesh& mesh) {
  ON_wString text;
  ON_TextLog log(text);
  const bool valid = mesh.IsValid(&log);
  const std::wstring message = static_cast<const wchar_t*>(text);
  EXPECT_EQ(valid, message.empty());
  return message;
}

TEST(OpenNurbsMeshIsValid, StructuralChecksComeFirst) {
  ON_Mesh mesh;
  EXPECT_EQ(ValidityMessage(mesh), L"ON_Mesh.m_F.Count() < 1 (should be at least 1).\n");
  mesh.m_F.Append(Face(0, 1, 2, 2));
  EXPECT_EQ(ValidityMessage(mesh), L"ON_Mesh.m_F[] has out of range vertex indices.\n");
  AddFloatVertices(mesh, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}});
  EXPECT_EQ(ValidityMessage(mesh), L"");
  mesh.m_dV.Append(ON_3dPoint(0, 0, 0));
  EXPECT_EQ(ValidityMessage(mesh), L"ON_Mesh.m_dV[] has wrong size.\n");
  mesh.m_dV.SetCount(0);

  ON_Mesh twoVertices;
  AddFloatVertices(twoVertices, {{0, 0, 0}, {1, 0, 0}});
  twoVertices.m_F.Append(Face(0, 1, 1, 1));
  EXPECT_EQ(ValidityMessage(twoVertices), L"ON_Mesh.m_V.Count() < 3 (should be at least 3).\n");
}

TEST(OpenNurbsMeshIsValid, DoubleListMustMatchAndOptionalArraysMustFit) {
  ON_Mesh mesh;
  MakeTwoTriangles(mesh);
  mesh.m_dV[2].x += 1e-3;
  EXPECT_EQ(ValidityMessage(mesh), L"ON_Mesh.m_dV[] and m_V[] are not synchronized.\n");
  mesh.UpdateDoublePrecisionVertices();
  EXPECT_EQ(ValidityMessage(mesh), L"");

  mesh.m_N.Append(ON_3fVector(0, 0, 1));
  EXPECT_EQ(ValidityMessage(mesh), L"ON_Mesh.m_N.Count() = 1 (should be 0 or 4=vertex_count).\n");
  for (int i = 1; i < 4; i++)
    mesh.m_N.Append(ON_3fVector(0, 0, 1));
  EXPECT_EQ(ValidityMessage(mesh), L"");
  mesh.m_N[3] = ON_3fVector(0, 0, 2);
  EXPECT_EQ(ValidityMessage(mesh), L"ON_Mesh.m_N[3] is not a unit vector (length = 2).\n");
  mesh.m_N.SetCount(0);

  mesh.m_T.Append(ON_2fPoint(0, 0));
  EXPECT_EQ(ValidityMessage(mesh), L"ON_Mesh.m_T.Count() = 1 (should be 0 or 4=vertex_count).\n");
}

TEST(OpenNurbsMeshIsValid, FacesAreCheckedForRepeatsAndCoincidentCorners) {
  ON_Mesh mesh;
  MakeTwoTriangles(mesh);
  mesh.m_F[1] = Face(0, 2, 0, 3);
  EXPECT_EQ(ValidityMessage(mesh), L"ON_Mesh.m_F[1].vi[] has invalid vertex indices.\n");
  mesh.m_F[1] = Face(0, 2, 3, 3);
  mesh.m_V[3] = mesh.m_V[2];
  mesh.UpdateDoublePrecisionVertices();
  EXPECT_EQ(ValidityMessage(mesh),
            L"ON_Mesh.m_F[1] has degenerate double precision vertex locations.\n");
  mesh.DestroyDoublePrecisionVertices();
  EXPECT_EQ(ValidityMessage(mesh),
            L"ON_Mesh.m_F[1] has degenerate float precision vertex locations.\n");
}

TEST(OpenNurbsMeshIsValid, IgnoresColorsFinitenessAndShape) {
  ON_Mesh mesh;
  AddFloatVertices(mesh, {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {0, 1, 0}});
  mesh.SetTriangle(0, 0, 1, 2);        // zero area, distinct locations
  mesh.m_C.Append(ON_Color(1, 2, 3));  // wrong length
  mesh.m_V[3] = ON_3fPoint(std::numeric_limits<float>::quiet_NaN(), 0, 0);  // unused NaN vertex
  EXPECT_EQ(ValidityMessage(mesh), L"");
  EXPECT_TRUE(mesh.IsValid());
}

}  // namespace
