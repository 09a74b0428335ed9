#include "volume/solve_threads.h"

#ifdef _OPENMP
#include <omp.h>
#endif

namespace brindle {

#ifdef _OPENMP
SolveThreadScope::SolveThreadScope(std::int64_t /*nonZeros*/)
    : savedThreads_(omp_get_max_threads()), savedDynamic_(omp_get_dynamic()) {
  omp_set_dynamic(1);
  omp_set_num_threads(omp_get_num_procs());
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
