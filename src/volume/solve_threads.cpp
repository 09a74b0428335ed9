// Threading of the conjugate-gradient solve.
//
// Eigen runs the solver's row-by-row sparse product on OpenMP threads; everything else in an
// iteration (dot products, vector updates, the preconditioner) stays on the calling thread.
// Two things make threads risky inside a CAD host:
//  - between parallel regions the runtime's idle workers busy-spin for milliseconds before
//    they sleep, and the wait policy can only be chosen through the environment before the
//    runtime starts, which a library loaded into a host cannot do;
//  - a fork-join product whose team shares a core with another busy thread waits at every
//    barrier for that thread's next time slice (on two cores with one kept busy, a two-thread
//    solve measured several times slower than a one-thread one).
// So the team only gets cores that nobody else is running on at the moment of the solve, and
// small products (where a parallel region costs more than it saves) stay on one thread. Spinning
// workers then only ever occupy cores that would otherwise be idle. Where the system offers no
// instantaneous run-queue figure, the OpenMP runtime's own load-based adjustment decides.
#include "volume/solve_threads.h"

#include <algorithm>
#include <cstdio>

#ifdef _OPENMP
#include <omp.h>
#endif

namespace brindle {
namespace {

// Below this many stored entries a parallel product does not pay for its fork and join.
constexpr std::int64_t kParallelProductEntries = 200000;

// Other runnable threads system-wide right now, or -1 when unknown. On Linux the fourth field
// of /proc/loadavg is "runnable/total" and counts the calling thread too.
int OtherRunnableThreads() {
#ifdef __linux__
  std::FILE* file = std::fopen("/proc/loadavg", "r");
  if (!file) return -1;
  double ignored[3];
  int runnable = 0, total = 0;
  const int fields = std::fscanf(file, "%lf %lf %lf %d/%d", &ignored[0], &ignored[1], &ignored[2],
                                 &runnable, &total);
  std::fclose(file);
  return fields == 5 && runnable >= 1 ? runnable - 1 : -1;
#else
  return -1;
#endif
}

}  // namespace

int SolveTeamSize(std::int64_t nonZeros, int processors, int othersRunning) {
  if (nonZeros < kParallelProductEntries || processors <= 1) return 1;
  return std::max(1, std::min(processors, processors - othersRunning));
}

#ifdef _OPENMP
SolveThreadScope::SolveThreadScope(std::int64_t nonZeros)
    : savedThreads_(omp_get_max_threads()), savedDynamic_(omp_get_dynamic()) {
  const int others = nonZeros < kParallelProductEntries ? 0 : OtherRunnableThreads();
  if (others < 0) {
    omp_set_dynamic(1);
    omp_set_num_threads(omp_get_num_procs());
  } else {
    omp_set_dynamic(0);
    omp_set_num_threads(SolveTeamSize(nonZeros, omp_get_num_procs(), others));
  }
}

SolveThreadScope::~SolveThreadScope() {
  omp_set_num_threads(savedThreads_);
  omp_set_dynamic(savedDynamic_);
}
#else
SolveThreadScope::SolveThreadScope(std::int64_t) {}
SolveThreadScope::~SolveThreadScope() = default;
#endif

}  // namespace brindle
