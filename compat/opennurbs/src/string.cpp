#include <cstdarg>
#include <cwchar>

#include "opennurbs.h"

namespace {

// Decodes UTF-8; malformed sequences become U+FFFD. On platforms with a 16-bit wchar_t,
// code points above the BMP are written as surrogate pairs.
std::wstring DecodeUtf8(const char* s) {
  std::wstring out;
  if (s == nullptr) return out;
  const unsigned char* p = reinterpret_cast<const unsigned char*>(s);
  while (*p != 0) {
    unsigned int cp = *p;
    int extra = 0;
    if (cp < 0x80) {
      extra = 0;
    } else if ((cp & 0xE0) == 0xC0) {
      cp &= 0x1F;
      extra = 1;
    } else if ((cp & 0xF0) == 0xE0) {
      cp &= 0x0F;
      extra = 2;
    } else if ((cp & 0xF8) == 0xF0) {
      cp &= 0x07;
      extra = 3;
    } else {
      out.push_back(static_cast<wchar_t>(0xFFFD));
      p++;
      continue;
    }
    p++;
    bool ok = true;
    for (int i = 0; i < extra; i++) {
      if ((*p & 0xC0) != 0x80) {
        ok = false;
        break;
      }
      cp = (cp << 6) | (*p & 0x3F);
      p++;
    }
    if (!ok || cp > 0x10FFFF) cp = 0xFFFD;
    if (sizeof(wchar_t) == 2 && cp > 0xFFFF) {
      cp -= 0x10000;
      out.push_back(static_cast<wchar_t>(0xD800 + (cp >> 10)));
      out.push_back(static_cast<wchar_t>(0xDC00 + (cp & 0x3FF)));
    } else {
      out.push_back(static_cast<wchar_t>(cp));
    }
  }
  return out;
}

wchar_t FoldAsciiCase(wchar_t c) {
  return (c >= L'A' && c <= L'Z') ? c - L'A' + L'a' : c;
}

int CompareOrdinalStrings(const wchar_t* a, size_t a_length, const wchar_t* b, size_t b_length,
                          bool ignore_case) {
  const size_t n = a_length < b_length ? a_length : b_length;
  for (size_t i = 0; i < n; i++) {
    const wchar_t ca = ignore_case ? FoldAsciiCase(a[i]) : a[i];
    const wchar_t cb = ignore_case ? FoldAsciiCase(b[i]) : b[i];
    if (ca != cb) return ca < cb ? -1 : 1;
  }
  if (a_length == b_length) return 0;
  return a_length < b_length ? -1 : 1;
}

size_t SafeLength(const wchar_t* s) {
  return s != nullptr ? std::wcslen(s) : 0;
}

int Compare(const ON_wString& a, const wchar_t* b) {
  return a.CompareOrdinal(b, false);
}

}  // namespace

// ---------------------------------------------------------------------------------------
// ON_wString

const ON_wString ON_wString::EmptyString;

ON_wString::ON_wString() = default;
ON_wString::ON_wString(const ON_wString& src) = default;
ON_wString::ON_wString(const wchar_t* src) {
  if (src != nullptr) m_s = src;
}
ON_wString::ON_wString(const wchar_t* src, int length) {
  if (src != nullptr && length > 0) m_s.assign(src, static_cast<size_t>(length));
}
ON_wString::ON_wString(const char* utf8) : m_s(DecodeUtf8(utf8)) {}
ON_wString::ON_wString(wchar_t c, int repeat_count) {
  if (repeat_count > 0) m_s.assign(static_cast<size_t>(repeat_count), c);
}
ON_wString::~ON_wString() = default;

const ON_wString& ON_wString::operator=(const ON_wString& src) {
  m_s = src.m_s;
  return *this;
}
const ON_wString& ON_wString::operator=(const wchar_t* src) {
  if (src == nullptr) {
    m_s.clear();
  } else {
    m_s = std::wstring(src);
  }
  return *this;
}
const ON_wString& ON_wString::operator=(const char* utf8) {
  m_s = DecodeUtf8(utf8);
  return *this;
}

int ON_wString::Length() const {
  return static_cast<int>(m_s.size());
}
bool ON_wString::IsEmpty() const {
  return m_s.empty();
}
bool ON_wString::IsNotEmpty() const {
  return !m_s.empty();
}
void ON_wString::Empty() {
  m_s.clear();
}
void ON_wString::Destroy() {
  std::wstring().swap(m_s);
}

wchar_t* ON_wString::Array() {
  return m_s.empty() ? nullptr : &m_s[0];
}
const wchar_t* ON_wString::Array() const {
  return m_s.empty() ? nullptr : m_s.c_str();
}
ON_wString::operator const wchar_t*() const {
  return m_s.c_str();
}

const ON_wString& ON_wString::operator+=(const ON_wString& s) {
  m_s += s.m_s;
  return *this;
}
const ON_wString& ON_wString::operator+=(const wchar_t* s) {
  if (s != nullptr) m_s += s;
  return *this;
}
const ON_wString& ON_wString::operator+=(wchar_t c) {
  m_s.push_back(c);
  return *this;
}

int ON_wString::CompareOrdinal(const wchar_t* other, bool bOrdinalIgnoreCase) const {
  return CompareOrdinalStrings(m_s.data(), m_s.size(), other, SafeLength(other),
                               bOrdinalIgnoreCase);
}

bool ON_wString::EqualOrdinal(const wchar_t* other, bool bOrdinalIgnoreCase) const {
  return CompareOrdinal(other, bOrdinalIgnoreCase) == 0;
}

// Comparisons are by length and elements, so an embedded zero in an ON_wString is significant.
bool operator==(const ON_wString& lhs, const ON_wString& rhs) {
  return lhs.Length() == rhs.Length() &&
         CompareOrdinalStrings(lhs, static_cast<size_t>(lhs.Length()), rhs,
                               static_cast<size_t>(rhs.Length()), false) == 0;
}
bool operator!=(const ON_wString& lhs, const ON_wString& rhs) {
  return !(lhs == rhs);
}
bool operator<(const ON_wString& lhs, const ON_wString& rhs) {
  return CompareOrdinalStrings(lhs, static_cast<size_t>(lhs.Length()), rhs,
                               static_cast<size_t>(rhs.Length()), false) < 0;
}
bool operator>(const ON_wString& lhs, const ON_wString& rhs) {
  return rhs < lhs;
}
bool operator<=(const ON_wString& lhs, const ON_wString& rhs) {
  return !(rhs < lhs);
}
bool operator>=(const ON_wString& lhs, const ON_wString& rhs) {
  return !(lhs < rhs);
}

bool operator==(const ON_wString& lhs, const wchar_t* rhs) {
  return Compare(lhs, rhs) == 0;
}
bool operator!=(const ON_wString& lhs, const wchar_t* rhs) {
  return Compare(lhs, rhs) != 0;
}
bool operator<(const ON_wString& lhs, const wchar_t* rhs) {
  return Compare(lhs, rhs) < 0;
}
bool operator>(const ON_wString& lhs, const wchar_t* rhs) {
  return Compare(lhs, rhs) > 0;
}
bool operator<=(const ON_wString& lhs, const wchar_t* rhs) {
  return Compare(lhs, rhs) <= 0;
}
bool operator>=(const ON_wString& lhs, const wchar_t* rhs) {
  return Compare(lhs, rhs) >= 0;
}
bool operator==(const wchar_t* lhs, const ON_wString& rhs) {
  return Compare(rhs, lhs) == 0;
}
bool operator!=(const wchar_t* lhs, const ON_wString& rhs) {
  return Compare(rhs, lhs) != 0;
}
bool operator<(const wchar_t* lhs, const ON_wString& rhs) {
  return Compare(rhs, lhs) > 0;
}
bool operator>(const wchar_t* lhs, const ON_wString& rhs) {
  return Compare(rhs, lhs) < 0;
}
bool operator<=(const wchar_t* lhs, const ON_wString& rhs) {
  return Compare(rhs, lhs) >= 0;
}
bool operator>=(const wchar_t* lhs, const ON_wString& rhs) {
  return Compare(rhs, lhs) <= 0;
}

// ---------------------------------------------------------------------------------------
// ON_TextLog

namespace {
// Long enough for any message the library prints; longer output is truncated.
constexpr size_t kTextLogBufferSize = 2048;
}  // namespace

ON_TextLog::ON_TextLog() : m_pFile(stdout) {}
ON_TextLog::ON_TextLog(FILE* fp) : m_pFile(fp) {}
ON_TextLog::ON_TextLog(ON_wString& s) : m_pString(&s) {}
ON_TextLog::~ON_TextLog() = default;

void ON_TextLog::Print(const char* format, ...) {
  if (format == nullptr) return;
  char buffer[kTextLogBufferSize];
  va_list args;
  va_start(args, format);
  std::vsnprintf(buffer, sizeof(buffer), format, args);
  va_end(args);
  PrintString(buffer);
}

void ON_TextLog::Print(const wchar_t* format, ...) {
  if (format == nullptr) return;
  wchar_t buffer[kTextLogBufferSize];
  va_list args;
  va_start(args, format);
  const int n = std::vswprintf(buffer, kTextLogBufferSize, format, args);
  va_end(args);
  if (n < 0) buffer[kTextLogBufferSize - 1] = 0;
  PrintString(buffer);
}

void ON_TextLog::PrintString(const char* s) {
  if (s == nullptr || s[0] == 0) return;
  const ON_wString wide(s);
  AppendIndented(wide);
}

void ON_TextLog::PrintString(const wchar_t* s) {
  if (s == nullptr || s[0] == 0) return;
  AppendIndented(s);
}

void ON_TextLog::PrintNewLine() {
  PrintString(L"\n");
}

// One tab per indent level.
void ON_TextLog::PushIndent() {
  m_indent_count++;
}

void ON_TextLog::PopIndent() {
  if (m_indent_count > 0) m_indent_count--;
}

// Inserts the current indent at the start of every line.
void ON_TextLog::AppendIndented(const wchar_t* s) {
  std::wstring piece;
  for (const wchar_t* p = s; *p != 0; p++) {
    if (m_at_line_start && *p != L'\n' && m_indent_count > 0) {
      piece.append(static_cast<size_t>(m_indent_count), L'\t');
    }
    m_at_line_start = false;
    piece.push_back(*p);
    if (*p == L'\n') m_at_line_start = true;
  }
  AppendText(piece.c_str());
}

void ON_TextLog::AppendText(const wchar_t* s) {
  if (m_pString != nullptr) {
    *m_pString += s;
  } else if (m_pFile != nullptr) {
    std::fprintf(m_pFile, "%ls", s);
    std::fflush(m_pFile);
  }
}
