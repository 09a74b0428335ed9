// Counts and fails operator-new allocations on request, to show that an export allocates
// nothing before refusing bad input and that running out of memory is reported, not thrown.
#ifndef BRINDLE_TESTS_VOLUME_ALLOCATION_GUARD_H
#define BRINDLE_TESTS_VOLUME_ALLOCATION_GUARD_H

#include <cstdint>

namespace volume_test {

// While alive, counts allocations; the allocation with index `failAt` (0-based) and every one
// after it throw std::bad_alloc. A negative failAt only counts.
class AllocationGuard {
 public:
  explicit AllocationGuard(std::int64_t failAt = -1);
  ~AllocationGuard();
  std::int64_t Count() const;
};

}  // namespace volume_test

#endif
