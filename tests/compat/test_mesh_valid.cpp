// ON_Mesh::IsValid: the order of the checks, their messages, and what is not checked.

#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "compat/mesh_support.h"

namespace {

using compat_test::AddFloatVertices;
using compat_test::AddVertices;
using compat_test::Face;
using compat_test::MakeTwoTriangles;

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

  ON_Mesh two_vertices;
  AddFloatVertices(two_vertices, {{0, 0, 0}, {1, 0, 0}});
  two_vertices.m_F.Append(Face(0, 1, 1, 1));
  EXPECT_EQ(ValidityMessage(two_vertices), L"ON_Mesh.m_V.Count() < 3 (should be at least 3).\n");
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
