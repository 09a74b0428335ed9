// User strings cross the boundary between the shared library and its caller. Both modules use
// the one shared openNURBS of the process, so a key written on one side is read on the other,
// on meshes created by either side. This program links libbrindle itself, not its objects.
#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "brindle.h"
#include "support/tet_meshes.h"
#include "support/user_strings.h"

using namespace brindle::testing;

namespace {

// x - level at every vertex.
std::vector<double> PlaneValues(const ON_Mesh& mesh, double level) {
  std::vector<double> values;
  for (int i = 0; i < mesh.VertexCount(); ++i)
    values.push_back(mesh.Vertex(i).x - level);
  return values;
}

}  // namespace

TEST(UserStringsAcrossModules, CutResultCarriesTheLibrarysArchiveToTheCaller) {
  const ON_Mesh cube = StructuredCube(2);
  const std::vector<double> values = PlaneValues(cube, 0.3);
  ON_Mesh* result = nullptr;
  char error[1024];
  ASSERT_EQ(CutTetrahedralMesh(&cube, values.data(), 0, 0, 0, nullptr, &result, error), 0) << error;
  ASSERT_NE(result, nullptr);
  std::unique_ptr<ON_Mesh> owned(result);  // deleted here, allocated in the library

  EXPECT_EQ(UserString(*result, L"Kestra_version"), L"0.2.9181.2064");
  const std::vector<int> references = DecodeElementReferences(UserString(*result, L"KSmesh_mi"));
  ASSERT_EQ(static_cast<int>(references.size()), result->FaceCount());
  for (int reference : references)
    EXPECT_TRUE(reference == 2 || reference == 3) << reference;
  for (const wchar_t* key : {L"KSmesh_v", L"KSmesh_t", L"KSmesh_hi", L"KSmesh_ci"})
    EXPECT_FALSE(HasUserString(*result, key)) << key;

  // The caller's own keys on a mesh the library made stay readable and removable.
  EXPECT_TRUE(result->SetUserString(L"Caller_note", L"written by the caller"));
  EXPECT_EQ(UserString(*result, L"Caller_note"), L"written by the caller");
  EXPECT_TRUE(result->SetUserString(L"KSmesh_mi", L""));
  EXPECT_FALSE(HasUserString(*result, L"KSmesh_mi"));
}

TEST(UserStringsAcrossModules, LibraryOverwritesTheCallersArchiveKeysOnItsCopy) {
  ON_Mesh mesh = CornerTetrahedron();
  AddVertex(mesh, 1, 1, 1);
  AddTetrahedron(mesh, 1, 2, 3, 4);
  ASSERT_TRUE(mesh.SetUserString(L"Kestra_version", L"0.0.1"));
  for (const wchar_t* key : {L"KSmesh_v", L"KSmesh_t", L"KSmesh_hi", L"KSmesh_ci", L"KSmesh_mi"})
    ASSERT_TRUE(mesh.SetUserString(key, L"stale"));
  ASSERT_TRUE(mesh.SetUserString(L"Caller_note", L"kept"));

  const std::vector<double> values = PlaneValues(mesh, 0.25);
  ON_Mesh* result = nullptr;
  ASSERT_EQ(CutTetrahedralMesh2(&mesh, values.data(), 0, 0, 0, nullptr, &result, nullptr), 0);
  ASSERT_NE(result, nullptr);
  std::unique_ptr<ON_Mesh> owned(result);

  EXPECT_EQ(UserString(*result, L"Kestra_version"), L"0.2.9181.2064");
  for (const wchar_t* key : {L"KSmesh_v", L"KSmesh_t", L"KSmesh_hi", L"KSmesh_ci", L"KSmesh_mi"})
    EXPECT_FALSE(HasUserString(*result, key)) << key;
  // The copy the library made keeps what the caller wrote and the library does not own.
  EXPECT_EQ(UserString(*result, L"Caller_note"), L"kept");
  // The caller's mesh itself is untouched.
  EXPECT_EQ(UserString(mesh, L"KSmesh_mi"), L"stale");
}
