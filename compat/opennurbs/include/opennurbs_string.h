#ifndef BRINDLE_COMPAT_OPENNURBS_STRING_H
#define BRINDLE_COMPAT_OPENNURBS_STRING_H

#include "opennurbs_defines.h"

// Wide-character strings and the text log that appends to one.

#include <cstdio>
#include <string>

class ON_CLASS ON_wString {
 public:
  static const ON_wString EmptyString;

  ON_wString();
  ON_wString(const ON_wString& src);
  ON_wString(const wchar_t* src);
  ON_wString(const wchar_t* src, int length);
  ON_wString(const char* utf8);
  ON_wString(wchar_t c, int repeat_count = 1);
  ~ON_wString();
  const ON_wString& operator=(const ON_wString& src);
  const ON_wString& operator=(const wchar_t* src);
  const ON_wString& operator=(const char* utf8);

  int Length() const;
  bool IsEmpty() const;
  bool IsNotEmpty() const;
  void Empty();
  void Destroy();

  // Null for an empty string; the conversion operator gives L"" instead.
  wchar_t* Array();
  const wchar_t* Array() const;
  operator const wchar_t*() const;

  const ON_wString& operator+=(const ON_wString& s);
  const ON_wString& operator+=(const wchar_t* s);
  const ON_wString& operator+=(wchar_t c);

  // Case folding for the ignore-case comparisons covers ASCII letters only.
  int CompareOrdinal(const wchar_t* other, bool bOrdinalIgnoreCase) const;
  bool EqualOrdinal(const wchar_t* other, bool bOrdinalIgnoreCase) const;

 private:
  std::wstring m_s;
};

ON_DECL bool operator==(const ON_wString& lhs, const ON_wString& rhs);
ON_DECL bool operator!=(const ON_wString& lhs, const ON_wString& rhs);
ON_DECL bool operator<(const ON_wString& lhs, const ON_wString& rhs);
ON_DECL bool operator>(const ON_wString& lhs, const ON_wString& rhs);
ON_DECL bool operator<=(const ON_wString& lhs, const ON_wString& rhs);
ON_DECL bool operator>=(const ON_wString& lhs, const ON_wString& rhs);
ON_DECL bool operator==(const ON_wString& lhs, const wchar_t* rhs);
ON_DECL bool operator!=(const ON_wString& lhs, const wchar_t* rhs);
ON_DECL bool operator<(const ON_wString& lhs, const wchar_t* rhs);
ON_DECL bool operator>(const ON_wString& lhs, const wchar_t* rhs);
ON_DECL bool operator<=(const ON_wString& lhs, const wchar_t* rhs);
ON_DECL bool operator>=(const ON_wString& lhs, const wchar_t* rhs);
ON_DECL bool operator==(const wchar_t* lhs, const ON_wString& rhs);
ON_DECL bool operator!=(const wchar_t* lhs, const ON_wString& rhs);
ON_DECL bool operator<(const wchar_t* lhs, const ON_wString& rhs);
ON_DECL bool operator>(const wchar_t* lhs, const ON_wString& rhs);
ON_DECL bool operator<=(const wchar_t* lhs, const ON_wString& rhs);
ON_DECL bool operator>=(const wchar_t* lhs, const ON_wString& rhs);

// Formatted text output: to stdout by default, to a FILE, or appended to a caller's string.
class ON_CLASS ON_TextLog {
 public:
  ON_TextLog();
  ON_TextLog(FILE* fp);
  ON_TextLog(ON_wString& s);
  virtual ~ON_TextLog();
  ON_TextLog(const ON_TextLog&) = delete;
  ON_TextLog& operator=(const ON_TextLog&) = delete;

  void Print(const char* format, ...);
  void Print(const wchar_t* format, ...);
  void PrintString(const char* s);
  void PrintString(const wchar_t* s);
  void PrintNewLine();
  void PushIndent();
  void PopIndent();

 protected:
  // Every printed piece ends up here, already converted to wide characters.
  virtual void AppendText(const wchar_t* s);

 private:
  void AppendIndented(const wchar_t* s);

  FILE* m_pFile = nullptr;
  ON_wString* m_pString = nullptr;
  int m_indent_count = 0;
  bool m_at_line_start = true;
};

#endif
