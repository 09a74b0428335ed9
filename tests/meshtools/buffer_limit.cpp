// The test program's own openNURBS allocator functions. They replace the library's (the linker
// then takes nothing else from that object) and behave the same outside a BufferLimit.
#include "meshtools/buffer_limit.h"

#include <atomic>
#include <cstdlib>

namespace {

constexpr std::size_t kNoLimit = static_cast<std::size_t>(-1);
std::atomic<std::size_t> limit{kNoLimit};

bool Refused(std::size_t bytes) {
  return bytes > limit.load();
}

}  // namespace

extern "C" {

void* onmalloc(size_t sz) {
  if (sz == 0 || Refused(sz)) return nullptr;
  return std::malloc(sz);
}

void* oncalloc(size_t num, size_t sz) {
  if (num == 0 || sz == 0 || Refused(num * sz)) return nullptr;
  return std::calloc(num, sz);
}

void onfree(void* memblock) {
  std::free(memblock);
}

void* onrealloc(void* memblock, size_t sz) {
  if (memblock == nullptr) return onmalloc(sz);
  if (sz == 0) {
    onfree(memblock);
    return nullptr;
  }
  if (Refused(sz)) return nullptr;
  return std::realloc(memblock, sz);
}
}

namespace meshtools_test {

BufferLimit::BufferLimit(std::size_t max_bytes) {
  limit = max_bytes;
}

BufferLimit::~BufferLimit() {
  limit = kNoLimit;
}

}  // namespace meshtools_test
