// How many threads the solver's sparse products may use during one solve.
#ifndef BRINDLE_VOLUME_SOLVE_THREADS_H
#define BRINDLE_VOLUME_SOLVE_THREADS_H

#include <cstdint>

namespace brindle {

// Sets the calling thread's OpenMP team size for the duration of one solve and restores the
// caller's settings afterwards, so the host's own OpenMP use is left as it was.
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
