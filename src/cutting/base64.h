// Standard Base64 (RFC 4648, section 4) into a wide string, as stored in openNURBS user strings.
#ifndef BRINDLE_CUTTING_BASE64_H
#define BRINDLE_CUTTING_BASE64_H

#include <cstddef>
#include <string>

namespace brindle {

// Encodes `count` bytes with the standard alphabet and "=" padding, no line breaks. The text
// length is always a multiple of 4; zero bytes give the empty text. An allocation failure
// leaves as std::bad_alloc.
std::wstring EncodeBase64(const unsigned char* bytes, std::size_t count);

}  // namespace brindle

#endif
