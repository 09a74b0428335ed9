#include <cstdlib>

#include "opennurbs.h"

// Thin wrappers so that every buffer handed across library boundaries comes from, and goes
// back to, one allocator. Zero sizes give null instead of an implementation-defined pointer.

extern "C" {

void* onmalloc(size_t sz) {
  return sz > 0 ? std::malloc(sz) : nullptr;
}

void* oncalloc(size_t num, size_t sz) {
  return (num > 0 && sz > 0) ? std::calloc(num, sz) : nullptr;
}

void onfree(void* memblock) {
  if (memblock != nullptr) std::free(memblock);
}

void* onrealloc(void* memblock, size_t sz) {
  if (memblock == nullptr) return onmalloc(sz);
  if (sz == 0) {
    onfree(memblock);
    return nullptr;
  }
  return std::realloc(memblock, sz);
}
}
