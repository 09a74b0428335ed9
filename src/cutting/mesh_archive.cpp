#include "cutting/mesh_archive.h"

#include <vector>

#include "cutting/base64.h"
#include "opennurbs.h"

namespace brindle {

const wchar_t* const kArchiveVersion = L"0.2.9181.2064";

std::wstring EncodeElementReferences(const int* references, std::size_t count) {
  std::vector<unsigned char> bytes(4 * count);
  for (std::size_t i = 0; i < count; ++i) {
    // Byte order is fixed by the format, whatever the machine's own order is.
    const auto value = static_cast<unsigned int>(references[i]);
    for (int b = 0; b < 4; ++b)
      bytes[4 * i + b] = static_cast<unsigned char>(value >> (8 * b));
  }
  return EncodeBase64(bytes.data(), bytes.size());
}

void WriteMeshArchive(ON_Mesh& mesh, const int* references, std::size_t count) {
  const std::wstring elementReferences = EncodeElementReferences(references, count);
  // The results of SetUserString are deliberately not checked: removing an absent key
  // reports false and is not a failure.
  mesh.SetUserString(L"Kestra_version", kArchiveVersion);
  mesh.SetUserString(L"KSmesh_v", L"");
  mesh.SetUserString(L"KSmesh_t", L"");
  mesh.SetUserString(L"KSmesh_hi", L"");
  mesh.SetUserString(L"KSmesh_ci", L"");
  mesh.SetUserString(L"KSmesh_mi", elementReferences.c_str());
}

}  // namespace brindle
