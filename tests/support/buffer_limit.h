// A cap on the size of the openNURBS buffers the test program hands out, to make array
// reservations fail the way they do when memory runs out.
#ifndef BRINDLE_TESTS_SUPPORT_BUFFER_LIMIT_H
#define BRINDLE_TESTS_SUPPORT_BUFFER_LIMIT_H

#include <cstddef>

namespace brindle::testing {

// While an object lives, onmalloc, oncalloc and onrealloc refuse (return null for) any buffer
// larger than `maxBytes`.
class BufferLimit {
 public:
  explicit BufferLimit(std::size_t maxBytes);
  ~BufferLimit();
  BufferLimit(const BufferLimit&) = delete;
  BufferLimit& operator=(const BufferLimit&) = delete;

  // Whether the test program's allocator functions replace the openNURBS library's. They do on
  // ELF platforms, where the program exports them and the shared library's calls bind to them; a
  // Windows DLL always calls its own, so there the limit cannot be imposed.
  static bool Available();
};

inline constexpr const char* kNoBufferLimit =
    "the openNURBS DLL's allocator cannot be replaced by the test program";

}  // namespace brindle::testing

#endif
