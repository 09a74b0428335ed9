// Entry point of brindle-study: runs the built-in examples or the user's mesh.
#ifndef BRINDLE_STUDY_STUDY_H
#define BRINDLE_STUDY_STUDY_H

#include "options.h"

namespace brindle::study {

// Runs the study the options describe, writes summary.json in the output folder and returns the
// process exit code (0 success, 1 a failed study).
int RunStudy(const Options& options);

}  // namespace brindle::study

#endif
