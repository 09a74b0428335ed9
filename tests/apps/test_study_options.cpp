// Command-line parsing of brindle-study.
#include <gtest/gtest.h>

#include <filesystem>

#include "options.h"
#include "terminal.h"

namespace brindle::study {
namespace {

TEST(StudyOptions, UserStudyCollectsReferences) {
  const Options options = ParseOptions({"--mesh",         "wall.mesh", "--conductivity", "3=0.035",
                                        "--conductivity", "7=2.3e0",   "--low",          "20",
                                        "--high",         "10",        "--high",         "11",
                                        "--inside",       "21.5",      "--outside",      "-10",
                                        "--output",       "out",       "--only",         "2d"});
  EXPECT_EQ(options.mesh, "wall.mesh");
  EXPECT_EQ(options.assignment.conductivity.at(3), 0.035);
  EXPECT_EQ(options.assignment.conductivity.at(7), 2.3);
  EXPECT_EQ(options.assignment.low, std::vector<int>{20});
  EXPECT_EQ(options.assignment.high, (std::vector<int>{10, 11}));
  EXPECT_EQ(options.inside, 21.5);
  EXPECT_EQ(options.outside, -10.0);
  EXPECT_EQ(options.output, "out");
  EXPECT_TRUE(options.run2d);
  EXPECT_FALSE(options.run3d);
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
  };
  for (const auto& args : bad)
    EXPECT_THROW(ParseOptions(args), UsageError) << args[0];
}

TEST(StudyOptions, VersionSectionAndPaths) {
  EXPECT_TRUE(ParseOptions({"--version"}).version);
  EXPECT_STRNE(StudyVersion(), "");
  const Options options = ParseOptions({"--section", "z=0.125"});
  EXPECT_TRUE(options.sectionGiven);
  EXPECT_EQ(options.sectionAxis, 2);
  EXPECT_EQ(options.sectionOffset, 0.125);
  for (const char* bad : {"w=1", "x", "x=", "x=abc", "=1"})
    EXPECT_THROW(ParseOptions({"--section", bad}), UsageError) << bad;
  EXPECT_EQ(LibraryLogPath(ParseOptions({"--output", "out"})), "out/library.log");
  EXPECT_EQ(ProgramPath("brindle-study"), "brindle-study");
  EXPECT_TRUE(std::filesystem::path(ProgramPath("./bin/brindle-study")).is_absolute());
}

}  // namespace
}  // namespace brindle::study
