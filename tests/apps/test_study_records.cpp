// What the tool leaves behind for people: a terminal free of library traces, commands that paste
// into a shell, and the report page.
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>

#include "report_page.h"
#include "study_test_files.h"
#include "terminal.h"

namespace brindle::study {
namespace {

namespace fs = std::filesystem;

#if !defined(_WIN32)
// Commands the tool prints paste into a shell: the shell gives every word back unchanged.
TEST(StudyRecords, ShellWordsSurviveAShell) {
  const std::vector<std::string> words{"a b", "it's", "$x;rm", "*", "\"q\"", "back\\slash", ""};
  FILE* shell = popen(("printf '%s|' " + ShellCommand(words)).c_str(), "r");
  ASSERT_NE(shell, nullptr);
  char buffer[256] = {};
  const std::size_t n = std::fread(buffer, 1, sizeof buffer - 1, shell);
  pclose(shell);
  EXPECT_EQ(std::string(buffer, n), "a b|it's|$x;rm|*|\"q\"|back\\slash||");
}
#endif

TEST(StudyRecords, LibraryOutputGoesToTheLogAndTheTerminalComesBack) {
  const fs::path folder = ScratchFolder("brindle-study-log");
  const std::string log = (folder / "library.log").string();
  testing::internal::CaptureStdout();
  std::printf("before\n");
  {
    const LibraryOutputToLog quiet(log);
    std::printf("trace one\n");
  }
  std::printf("between\n");
  {
    const LibraryOutputToLog quiet(log);
    std::printf("trace two\n");
  }
  {
    const LibraryOutputToLog unwritable((folder / "missing" / "x.log").string());
    std::printf("after\n");  // no log: the terminal keeps it
  }
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "before\nbetween\nafter\n");
  EXPECT_EQ(ReadFile(log), "trace one\ntrace two\n");
  fs::remove_all(folder);
}

TEST(StudyRecords, ReportPageHoldsInputsResultsChecksAndPicturesInline) {
  const fs::path folder = ScratchFolder("brindle-study-report");
  std::ofstream(folder / "d-flux.svg") << "<svg xmlns=\"http://www.w3.org/2000/svg\">flux</svg>\n";
  std::ofstream(folder / "d.svg") << "<?xml version=\"1.0\"?>\n<svg>temperature</svg>\n";
  std::ofstream(folder / "e.svg") << "<svg>other study</svg>\n";
  const auto figures = FiguresIn(folder.string(), "d");
  ASSERT_EQ(figures.size(), 2u);
  EXPECT_EQ(figures[0].caption, "d.svg");  // temperature before flux
  const auto summary = nlohmann::ordered_json::parse(R"({
    "version": "9.8.7",
    "inputs": {"inside_C": 20, "mesh": "a <b>.msh"},
    "d": {"materials": {"brick": {"conductivity_W_per_mK": 0.8}}, "psi_W_per_mK": 0.123456789,
          "mesh_check": {"finest_change": 0.001}, "at_m": [0.5, 0.25, 0]}})");
  const std::string html = ReportHtml(summary, {{"d", "Detail d", figures}});
  for (const char* expected :
       {"<!DOCTYPE html>", "brindle-study 9.8.7", "<th>inside_C</th><td>20</td>", "a &lt;b&gt;.msh",
        "<h3>Materials</h3>", "brick / conductivity_W_per_mK",
        "<th>psi_W_per_mK</th><td>0.123457</td>", "<h3>Mesh and convergence checks</h3>",
        "mesh_check / finest_change", "[0.5, 0.25, 0]", "<svg>temperature</svg>", ">flux</svg>"})
    EXPECT_NE(html.find(expected), std::string::npos) << expected;
  EXPECT_EQ(html.find("<?xml"), std::string::npos);  // declarations cannot sit inside HTML
  EXPECT_EQ(html.find("other study"), std::string::npos);
  EXPECT_LT(html.find("temperature</svg>"), html.find("flux</svg>"));
  EXPECT_THROW(ReportHtml(summary, {{"d", "d", {{"gone", (folder / "gone.svg").string()}}}}),
               std::runtime_error);
  fs::remove_all(folder);
}

}  // namespace
}  // namespace brindle::study
