// Replaces the global operator new/delete of the test program. Outside an AllocationGuard it
// behaves like the standard one.
#include "volume/volume_support.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<bool> guarding{false};
std::atomic<std::int64_t> allocations{0};
std::atomic<std::int64_t> failAtAllocation{-1};

void* Allocate(std::size_t size) {
  if (guarding.load()) {
    const std::int64_t index = allocations.fetch_add(1);
    const std::int64_t failAt = failAtAllocation.load();
    if (failAt >= 0 && index >= failAt) throw std::bad_alloc();
  }
  if (void* memory = std::malloc(size ? size : 1)) return memory;
  throw std::bad_alloc();
}

}  // namespace

void* operator new(std::size_t size) {
  return Allocate(size);
}
void* operator new[](std::size_t size) {
  return Allocate(size);
}
void operator delete(void* memory) noexcept {
  std::free(memory);
}
void operator delete[](void* memory) noexcept {
  std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
  std::free(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
  std::free(memory);
}

namespace volume_test {

AllocationGuard::AllocationGuard(std::int64_t failAt) {
  allocations = 0;
  failAtAllocation = failAt;
  guarding = true;
}

AllocationGuard::~AllocationGuard() {
  guarding = false;
}

std::int64_t AllocationGuard::Count() const {
  return allocations.load();
}

}  // namespace volume_test
