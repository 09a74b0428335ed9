// The 3-D study through the volume solver: its flows against hand calculations.
#include <gtest/gtest.h>

#include <filesystem>

#include "detail_study.h"
#include "example_study.h"
#include "examples.h"
#include "medit.h"

namespace brindle::study {
namespace {

// Coarse enough for the sanitizer build, fine enough to resolve the bar.
const MeshSizes kCoarse{0.02, 0.25, 1.6};

TEST(StudyVolume, SteelBarIsAPointThermalBridge) {
  const Detail detail = SteelBarDetail();
  const DetailRun run = SolveDetail(detail, kCoarse);
  EXPECT_NEAR(run.solution.warmFlow / run.solution.coldFlow, 1.0, 1e-3);
  const double u = SeriesUValue(detail.wall);
  const double chi = detail.symmetryCopies * (run.flow - u * detail.wallArea);
  EXPECT_GT(chi, 0.005);  // W/K: steel through insulation is a serious bridge
  EXPECT_LT(chi, 0.5);
  EXPECT_LT(run.minFactor, 1.0 - u * kInteriorSurfaceResistance);
  EXPECT_GT(run.minFactor, 0.5);
  EXPECT_EQ(run.coldest[1], 0.0);  // on the bar's axis, by symmetry
  EXPECT_EQ(run.coldest[2], 0.0);
}

TEST(StudyVolume, WrittenStudyRunsAgainWithTheSameFlows) {
  const Detail detail = SteelBarDetail();
  const DetailRun run = SolveDetail(detail, kCoarse);
  const auto folder = std::filesystem::temp_directory_path() / "brindle-volume-again";
  std::filesystem::create_directories(folder);
  const std::string study =
      WriteExampleStudy(folder.string(), "steel", detail, kCoarse, 3, {1.0, 0.0});
  const auto again = RunStudy(ReadStudyFile(study), nullptr, folder.string(), "", study);
  EXPECT_NEAR(again["coupling_coefficients"]["inside"]["outside"].get<double>(),
              detail.symmetryCopies * run.flow, 1e-9 * run.flow);
  std::filesystem::remove_all(folder);
}

}  // namespace
}  // namespace brindle::study
