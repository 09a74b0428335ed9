// Wide strings, the text log that appends to one, and user strings on objects.

#include <gtest/gtest.h>

#include "opennurbs.h"

namespace {

TEST(OpenNurbsString, EmptyIsNullArrayAndUtf8IsDecoded) {
  const ON_wString empty;
  EXPECT_EQ(empty.Array(), nullptr);
  const wchar_t* asText = empty;
  ASSERT_NE(asText, nullptr);
  EXPECT_EQ(asText[0], L'\0');
  const ON_wString s("K\xC3\xA4se \xE2\x82\xAC");  // "Käse €"
  EXPECT_EQ(s.Length(), 6);
  EXPECT_EQ(s.Array()[5], static_cast<wchar_t>(0x20AC));
  EXPECT_FALSE(ON_wString(L"abc") == L"ABC");
}

TEST(OpenNurbsTextLog, AppendsToTheGivenStringAndIndentsFollowingLines) {
  ON_wString text(L"start:");
  {
    ON_TextLog log(text);
    log.Print("%d-%s", 42, "abc");
    log.PrintNewLine();
    log.Print(L"%ls", L"wide");
    log.Print("a\nb");
    log.PushIndent();
    log.Print("c\nd\n");
    log.PopIndent();
    log.Print("e\n");
  }
  EXPECT_TRUE(text == L"start:42-abc\nwidea\nbc\n\td\ne\n") << static_cast<const wchar_t*>(text);
}

TEST(OpenNurbsUserStrings, KeysMatchIgnoringCaseAndEmptyValuesRemove) {
  ON_Mesh object;
  EXPECT_TRUE(object.SetUserString(L"a", L"1"));
  EXPECT_TRUE(object.SetUserString(L"A", L"2"));
  EXPECT_EQ(object.UserStringCount(), 1);
  ON_wString value;
  EXPECT_TRUE(object.GetUserString(L"a", value));
  EXPECT_TRUE(value == L"2");

  EXPECT_FALSE(object.SetUserString(L"k", L""));
  EXPECT_FALSE(object.SetUserString(L"k", nullptr));
  EXPECT_FALSE(object.SetUserString(L"", L"x"));
  EXPECT_FALSE(object.SetUserString(nullptr, L"x"));
  EXPECT_EQ(object.UserStringCount(), 1);
  EXPECT_TRUE(object.SetUserString(L"A", L""));  // removes
  EXPECT_EQ(object.UserStringCount(), 0);

  value = L"stale";
  EXPECT_FALSE(object.GetUserString(L"a", value));
  EXPECT_TRUE(value.IsEmpty());
  value = L"stale";
  EXPECT_FALSE(object.GetUserString(nullptr, value));
  EXPECT_TRUE(value.IsEmpty());
}

TEST(OpenNurbsUserStrings, CopiedWithTheMeshAndPurgedByDestroy) {
  ON_Mesh mesh;
  mesh.SetUserString(L"name", L"value");
  ON_Mesh assigned;
  assigned.SetUserString(L"other", L"x");
  assigned = mesh;
  EXPECT_EQ(assigned.UserStringCount(), 1);
  ON_Mesh* duplicate = mesh.Duplicate();
  ON_wString value;
  EXPECT_TRUE(duplicate->GetUserString(L"NAME", value));
  EXPECT_TRUE(value == L"value");
  delete duplicate;
  mesh.Destroy();
  EXPECT_EQ(mesh.UserStringCount(), 0);
}

}  // namespace
