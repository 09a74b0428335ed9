// Command-line parsing of brindle-study.
#include <gtest/gtest.h>

#include "options.h"

namespace brindle::study {
namespace {

TEST(StudyOptions, UserStudyCollectsReferencesAndSection) {
  const Options options = ParseOptions({"--mesh", "wall.mesh", "--conductivity", "7=2.3e0", "--low",
                                        "20", "--high", "10", "--high", "11", "--outside", "-10",
                                        "--only", "2d", "--section", "z=0.125"});
  EXPECT_EQ(options.assignment.conductivity.at(7), 2.3);
  EXPECT_EQ(options.assignment.low, std::vector<int>{20});
  EXPECT_EQ(options.assignment.high, (std::vector<int>{10, 11}));
  EXPECT_EQ(options.outside, -10.0);
  EXPECT_TRUE(options.run2d && !options.run3d);
  EXPECT_EQ(options.sectionAxis, 2);
  EXPECT_EQ(options.sectionOffset, 0.125);
}

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
