#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "cutting/base64.h"
#include "cutting/mesh_archive.h"
#include "opennurbs.h"
#include "support/user_strings.h"

namespace brindle {
namespace {

using testing::HasUserString;
using testing::UserString;

TEST(ElementReferences, EncodeAsLittleEndianInt32) {
  const int three[] = {3};
  const int twoThree[] = {2, 3};
  const int zeros[] = {0, 0, 0};
  const int minusOne[] = {-1};
  const int large[] = {0x01020304};
  EXPECT_EQ(EncodeElementReferences(three, 1), L"AwAAAA==");
  EXPECT_EQ(EncodeElementReferences(twoThree, 2), L"AgAAAAMAAAA=");
  EXPECT_EQ(EncodeElementReferences(zeros, 3), L"AAAAAAAAAAAAAAAA");
  EXPECT_EQ(EncodeElementReferences(minusOne, 1), L"/////w==");  // FF FF FF FF
  EXPECT_EQ(EncodeElementReferences(large, 1), L"BAMCAQ==");     // 04 03 02 01
  EXPECT_EQ(EncodeElementReferences(nullptr, 0), L"");
  // The last two symbols of the alphabet.
  const std::string high = "\xfb\xef\xbe\xff\xff\xff";
  EXPECT_EQ(EncodeBase64(reinterpret_cast<const unsigned char*>(high.data()), high.size()),
            L"++++////");
}

TEST(MeshArchive, WritesVersionAndReferencesAndClearsReservedKeys) {
  ON_Mesh mesh;
  for (const wchar_t* key : {L"KSmesh_v", L"KSmesh_t", L"KSmesh_hi", L"KSmesh_ci", L"KSmesh_mi"})
    mesh.SetUserString(key, L"left by the host");
  mesh.SetUserString(L"Other", L"kept");

  const int references[] = {2, 3};
  WriteMeshArchive(mesh, references, 2);

  EXPECT_EQ(UserString(mesh, L"Kestra_version"), L"0.2.9181.2064");
  EXPECT_EQ(UserString(mesh, L"KSmesh_mi"), L"AgAAAAMAAAA=");
  // An empty text removes the key from the user-string list.
  for (const wchar_t* key : {L"KSmesh_v", L"KSmesh_t", L"KSmesh_hi", L"KSmesh_ci"})
    EXPECT_FALSE(HasUserString(mesh, key)) << "key still present";
  EXPECT_EQ(UserString(mesh, L"Other"), L"kept");
  EXPECT_EQ(mesh.UserStringCount(), 3);
}

}  // namespace
}  // namespace brindle
