// How many threads the solver's sparse products may use during one solve.
#ifndef BRINDLE_VOLUME_SOLVE_THREADS_H
#define BRINDLE_VOLUME_SOLVE_THREADS_H

#include <cstdint>

namespace brindle {

// Team size for a product with `nonZeros` stored entries on a machine with `processors`
// cores of which `othersRunning` are taken by other runnable threads right now: one thread for
// small products, otherwise one per core nobody else is using, at least one.
int SolveTeamSize(std::int64_t nonZeros, int processors, int othersRunning);

// Sets the calling thread's OpenMP team size for one solve and restores the caller's settings
// afterwards, so a host that uses OpenMP itself finds them as it left them.
class SolveThreadScope {
 public:
  explicit SolveThreadScope(std::int64_t nonZeros);
  ~SolveThreadScope();
  SolveThreadScope(const SolveThreadScope&) = delete;
  SolveThreadScope& operator=(const SolveThreadScope&) = delete;

 private:
  int savedThreads_ = 1;
  int savedDynamic_ = 0;
};

}  // namespace brindle

#endif
