// Command-line parsing of brindle-study.
#include <gtest/gtest.h>

#include "options.h"

namespace brindle::study {
namespace {

TEST(StudyOptions, BadArgumentsAreUsageErrors) {
  const std::vector<std::vector<std::string>> bad = {
      {"--frobnicate"},
      {"--inside"},
      {"--inside", "warm"},
      {"--inside", "5", "--outside", "5"},
      {"--refine", "9"},
      {"--levels", "0"},
      {"--only", "4d"},
      {"--conductivity", "3=1"},  // needs --mesh
      {"--mesh", "m.mesh", "--low", "1"},
      {"--mesh", "m.mesh", "--low", "1", "--high", "2", "--conductivity", "3"},
      {"--mesh", "m.mesh", "--low", "1", "--high", "2", "--conductivity", "3=-1"},
      {"--mesh", "m.mesh", "--low", "x", "--high", "2"},
      {"--section", "w=1"},
      {"--section", "x="},
      {"--section", "x=abc"},
  };
  for (const auto& args : bad)
    EXPECT_THROW(ParseOptions(args), UsageError) << args[0] << " " << args.back();
}

}  // namespace
}  // namespace brindle::study
