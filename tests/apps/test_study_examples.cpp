// The built-in thermal-bridge examples: the 2-D slab through the surface solver and the 3-D
// steel bar through the volume solver, their figures against hand calculations, energy balance
// and mesh convergence, and the study file each writes run again.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <memory>

#include "detail_study.h"
#include "example_study.h"
#include "examples.h"
#include "section_study.h"

namespace brindle::study {
namespace {

const double kWallU = SeriesUValue(SlabSection(false).wall);

// The slab example on the two finest levels the tool uses, solved once for all tests below.
class StudySlab : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    fine_ = std::make_unique<SectionRun>();
    coarse_ = std::make_unique<SlabFigures>(SolveSlabExample(1, 9));
    figures_ = std::make_unique<SlabFigures>(SolveSlabExample(2, 9, fine_.get()));
  }
  static void TearDownTestSuite() {
    fine_.reset();
    coarse_.reset();
    figures_.reset();
  }
  static std::unique_ptr<SectionRun> fine_;
  static std::unique_ptr<SlabFigures> coarse_, figures_;
};
std::unique_ptr<SectionRun> StudySlab::fine_;
std::unique_ptr<SlabFigures> StudySlab::coarse_, StudySlab::figures_;

TEST_F(StudySlab, FlowsAcrossAllIsothermsAgree) {
  const auto& flows = fine_->solution.levelFlow;
  ASSERT_EQ(flows.size(), 9u);
  const auto [low, high] = std::minmax_element(flows.begin(), flows.end());
  EXPECT_LT((*high - *low) / figures_->l2d, 0.005);
  // ... and with the heat entering at the warm edge and leaving at the cold one.
  EXPECT_NEAR(fine_->solution.warmFlow / figures_->l2d, 1.0, 0.005);
  EXPECT_NEAR(fine_->solution.coldFlow / fine_->solution.warmFlow, 1.0, 1e-9);
}

TEST_F(StudySlab, PsiConvergesAndIsAStrongThermalBridge) {
  EXPECT_LT(std::abs(figures_->psi / coarse_->psi - 1.0), 0.01);
  EXPECT_NEAR(figures_->wallFlow, kWallU * SlabSection(true).wallLength, 1e-3 * figures_->wallFlow);
  // A bare slab through the insulation loses several times what the wall around it loses.
  EXPECT_GT(figures_->psi, 0.7);
  EXPECT_LT(figures_->psi, 1.0);
  // The coldest interior point is the inner corner where slab and wall meet.
  EXPECT_LT(figures_->fRsi, 1.0 - kWallU * kInteriorSurfaceResistance - 0.1);
  EXPECT_EQ(fine_->coldest[0], 0.0);
  EXPECT_TRUE(fine_->coldest[1] == 0.0 || fine_->coldest[1] == 0.2);
}

// Coarse enough for the sanitizer build, fine enough to resolve the bar.
const MeshSizes kCoarse{0.02, 0.25, 1.6};

TEST(StudySteelBar, IsAPointThermalBridgeAndItsWrittenStudyRunsAgain) {
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

  // The model written as a MEDIT file with its study gives the same flow as the user's own.
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
