// Reading the user strings the library writes on the meshes it returns.
#ifndef BRINDLE_TESTS_SUPPORT_USER_STRINGS_H
#define BRINDLE_TESTS_SUPPORT_USER_STRINGS_H

#include <cstddef>
#include <string>
#include <vector>

#include "opennurbs.h"

namespace brindle::testing {

inline std::wstring UserString(const ON_Mesh& mesh, const wchar_t* key) {
  ON_wString value;
  mesh.GetUserString(key, value);
  return value.IsEmpty() ? std::wstring() : std::wstring(value.Array());
}

inline bool HasUserString(const ON_Mesh& mesh, const wchar_t* key) {
  ON_wString value;
  return mesh.GetUserString(key, value);
}

// Element references back from the KSmesh_mi text (Base64 of little-endian 32-bit integers).
inline std::vector<int> DecodeElementReferences(const std::wstring& text) {
  static const std::string kAlphabet =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::vector<unsigned char> bytes;
  unsigned int buffer = 0;
  int bits = 0;
  for (wchar_t symbol : text) {
    if (symbol == L'=') break;
    buffer = (buffer << 6) | static_cast<unsigned int>(kAlphabet.find(static_cast<char>(symbol)));
    bits += 6;
    if (bits >= 8) bytes.push_back(static_cast<unsigned char>((buffer >> (bits -= 8)) & 0xff));
  }
  std::vector<int> references(bytes.size() / 4);
  for (std::size_t i = 0; i < references.size(); ++i)
    references[i] = static_cast<int>(bytes[4 * i] | bytes[4 * i + 1] << 8 | bytes[4 * i + 2] << 16 |
                                     static_cast<unsigned int>(bytes[4 * i + 3]) << 24);
  return references;
}

}  // namespace brindle::testing

#endif
