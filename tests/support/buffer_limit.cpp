// The test program's own openNURBS allocator functions. Exported by the program, they replace the
// shared openNURBS library's for the whole process, and behave the same outside a BufferLimit.
#include "support/buffer_limit.h"

#include <atomic>
#include <cstdlib>

#ifndef _WIN32

namespace {

constexpr std::size_t kNoLimit = static_cast<std::size_t>(-1);
std::atomic<std::size_t> limit{kNoLimit};

bool Refused(std::size_t bytes) {
  return bytes > limit.load();
}

}  // namespace

// Visible outside the program, so that the shared library's calls bind to them.
#define BRINDLE_TEST_VISIBLE __attribute__((visibility("default")))

// The functions carry openNURBS's names, which they replace.
// NOLINTBEGIN(readability-identifier-naming)
extern "C" {

BRINDLE_TEST_VISIBLE void* onmalloc(size_t sz) {
  if (sz == 0 || Refused(sz)) return nullptr;
  return std::malloc(sz);
}

BRINDLE_TEST_VISIBLE void* oncalloc(size_t num, size_t sz) {
  if (num == 0 || sz == 0 || Refused(num * sz)) return nullptr;
  return std::calloc(num, sz);
}

BRINDLE_TEST_VISIBLE void onfree(void* memblock) {
  std::free(memblock);
}

BRINDLE_TEST_VISIBLE void* onrealloc(void* memblock, size_t sz) {
  if (memblock == nullptr) return onmalloc(sz);
  if (sz == 0) {
    onfree(memblock);
    return nullptr;
  }
  if (Refused(sz)) return nullptr;
  return std::realloc(memblock, sz);
}

}  // extern "C"
// NOLINTEND(readability-identifier-naming)

namespace brindle::testing {

bool BufferLimit::Available() {
  return true;
}

BufferLimit::BufferLimit(std::size_t maxBytes) {
  limit = maxBytes;
}

BufferLimit::~BufferLimit() {
  limit = kNoLimit;
}

}  // namespace brindle::testing

#else

namespace brindle::testing {

bool BufferLimit::Available() {
  return false;
}

BufferLimit::BufferLimit(std::size_t) {}

BufferLimit::~BufferLimit() = default;

}  // namespace brindle::testing

#endif
