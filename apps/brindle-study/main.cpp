// brindle-study: thermal-bridge studies with the brindle library, driven through its exports.
#include <cstdio>
#include <string>
#include <vector>

#include "options.h"
#include "study.h"
#include "validation.h"
#include "terminal.h"

int main(int argc, char** argv) {
  using namespace brindle::study;
  try {
    Options options = ParseOptions(std::vector<std::string>(argv + 1, argv + argc));
    if (options.help) {
      std::fputs(UsageText(), stdout);
      return 0;
    }
    if (options.version) {
      std::printf("brindle-study %s\n", StudyVersion());
      return 0;
    }
    if (argc > 0) options.program = ProgramPath(argv[0]);
    if (options.validate) return RunValidation(options.output);
    return RunStudy(options);
  } catch (const UsageError& e) {
    std::fprintf(stderr, "brindle-study: %s\n", e.what());
    return 2;
  }
}
