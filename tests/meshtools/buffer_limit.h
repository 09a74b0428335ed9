// A cap on the size of the openNURBS buffers the test program hands out, to make array
// reservations fail the way they do when memory runs out.
#ifndef BRINDLE_TESTS_MESHTOOLS_BUFFER_LIMIT_H
#define BRINDLE_TESTS_MESHTOOLS_BUFFER_LIMIT_H

#include <cstddef>

namespace meshtools_test {

// While an object lives, onmalloc, oncalloc and onrealloc refuse (return null for) any buffer
// larger than `max_bytes`.
class BufferLimit {
 public:
  explicit BufferLimit(std::size_t max_bytes);
  ~BufferLimit();
  BufferLimit(const BufferLimit&) = delete;
  BufferLimit& operator=(const BufferLimit&) = delete;
};

}  // namespace meshtools_test

#endif
