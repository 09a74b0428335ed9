// Wide strings, the text log that appends to one, and user strings on objects.

#include <gtest/gtest.h>

#include <cwchar>

#include "opennurbs.h"

namespace {

TEST(OpenNurbsString, EmptyStringsHaveNoArrayButConvertToEmptyText) {
  const ON_wString empty;
  EXPECT_TRUE(empty.IsEmpty());
  EXPECT_EQ(empty.Array(), nullptr);
  const wchar_t* as_text = empty;
  ASSERT_NE(as_text, nullptr);
  EXPECT_EQ(as_text[0], L'\0');
  const ON_wString from_null(static_cast<const wchar_t*>(nullptr));
  EXPECT_TRUE(from_null.IsEmpty());
}

TEST(OpenNurbsString, Utf8IsDecodedAndComparisonIsOrdinal) {
  const ON_wString s("K\xC3\xA4se \xE2\x82\xAC");  // "Käse €"
  EXPECT_EQ(s.Length(), 6);
  EXPECT_EQ(s.Array()[1], static_cast<wchar_t>(0xE4));
  EXPECT_EQ(s.Array()[5], static_cast<wchar_t>(0x20AC));

  const ON_wString abc(L"abc");
  EXPECT_TRUE(abc == L"abc");
  EXPECT_FALSE(abc == L"ABC");
  EXPECT_TRUE(abc != ON_wString(L"ab"));
  EXPECT_TRUE(ON_wString(L"ab") < abc);
  EXPECT_EQ(abc.CompareOrdinal(L"ABC", true), 0);
  EXPECT_NE(abc.CompareOrdinal(L"ABC", false), 0);

  ON_wString grown(L"x");
  grown += L"yz";
  grown += ON_wString(L"!");
  EXPECT_TRUE(grown == L"xyz!");
}

TEST(OpenNurbsTextLog, AppendsToTheGivenString) {
  ON_wString text(L"start:");
  {
    ON_TextLog log(text);
    log.Print("%d-%s", 42, "abc");
    log.PrintNewLine();
    log.Print(L"%ls", L"wide");
    log.PrintString("\n");
  }
  EXPECT_TRUE(text == L"start:42-abc\nwide\n") << static_cast<const wchar_t*>(text);

  // Each indent level puts a tab at the start of the following lines.
  ON_wString indented;
  {
    ON_TextLog log(indented);
    log.Print("a\nb");
    log.PushIndent();
    log.Print("c\nd\n");
    log.PopIndent();
    log.Print("e\n");
  }
  EXPECT_TRUE(indented == L"a\nbc\n\td\ne\n") << static_cast<const wchar_t*>(indented);
}

TEST(OpenNurbsUserStrings, KeysMatchIgnoringCaseAndKeepTheirFirstSpelling) {
  ON_Mesh object;
  EXPECT_EQ(object.UserStringCount(), 0);
  EXPECT_TRUE(object.SetUserString(L"a", L"1"));
  EXPECT_TRUE(object.SetUserString(L"A", L"2"));
  EXPECT_EQ(object.UserStringCount(), 1);
  ON_wString value;
  EXPECT_TRUE(object.GetUserString(L"a", value));
  EXPECT_TRUE(value == L"2");
  EXPECT_TRUE(object.GetUserString(L"A", value));
  EXPECT_TRUE(value == L"2");
  EXPECT_TRUE(object.SetUserString(L"Key2", L"v"));
  EXPECT_EQ(object.UserStringCount(), 2);
}

TEST(OpenNurbsUserStrings, EmptyValueRemovesAndIsNeverStored) {
  ON_Mesh object;
  EXPECT_FALSE(object.SetUserString(L"k", L""));
  EXPECT_FALSE(object.SetUserString(L"k", nullptr));
  EXPECT_EQ(object.UserStringCount(), 0);
  EXPECT_FALSE(object.SetUserString(L"", L"x"));
  EXPECT_FALSE(object.SetUserString(nullptr, L"x"));
  EXPECT_EQ(object.UserStringCount(), 0);

  ASSERT_TRUE(object.SetUserString(L"k", L"x"));
  EXPECT_TRUE(object.SetUserString(L"K", L""));
  EXPECT_EQ(object.UserStringCount(), 0);

  ON_wString value(L"stale");
  EXPECT_FALSE(object.GetUserString(L"k", value));
  EXPECT_TRUE(value.IsEmpty());
  value = L"stale";
  EXPECT_FALSE(object.GetUserString(nullptr, value));
  EXPECT_TRUE(value.IsEmpty());
}

TEST(OpenNurbsUserStrings, CopiedWithTheMeshAndPurgedByDestroy) {
  ON_Mesh mesh;
  mesh.SetUserString(L"name", L"value");
  const ON_Mesh copy(mesh);
  EXPECT_EQ(copy.UserStringCount(), 1);
  ON_Mesh assigned;
  assigned.SetUserString(L"other", L"x");
  assigned = mesh;
  EXPECT_EQ(assigned.UserStringCount(), 1);
  ON_wString value;
  EXPECT_FALSE(assigned.GetUserString(L"other", value));
  ON_Mesh* duplicate = mesh.Duplicate();
  EXPECT_TRUE(duplicate->GetUserString(L"NAME", value));
  EXPECT_TRUE(value == L"value");
  delete duplicate;
  mesh.Destroy();
  EXPECT_EQ(mesh.UserStringCount(), 0);
}

}  // namespace
