// The archive of named texts that every cut mesh carries as openNURBS user strings. The host
// reads these keys, so their names and the encoding of their values are a fixed format.
#ifndef BRINDLE_CUTTING_MESH_ARCHIVE_H
#define BRINDLE_CUTTING_MESH_ARCHIVE_H

#include <cstddef>
#include <string>

class ON_Mesh;

namespace brindle {

// Version of the plug-in whose archive layout this library writes.
extern const wchar_t* const kArchiveVersion;

// Element references laid out as little-endian signed 32-bit integers, Base64 encoded.
// No references give the empty text.
std::wstring EncodeElementReferences(const int* references, std::size_t count);

// Writes the archive keys in their fixed order: Kestra_version, then KSmesh_v, KSmesh_t,
// KSmesh_hi and KSmesh_ci (always emptied: this library never fills them), then KSmesh_mi with
// the encoded element references (`references` may be null when `count` is 0). An empty value
// removes the key from the user-string list, which is how openNURBS stores an empty text.
void WriteMeshArchive(ON_Mesh& mesh, const int* references, std::size_t count);

}  // namespace brindle

#endif
