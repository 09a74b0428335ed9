// The command line, whole runs of a user study and the convergence check.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include <filesystem>
#include <fstream>

#include "block_mesher.h"
#include "block_study_mesh.h"
#include "medit.h"
#include "mesh_source.h"
#include "options.h"
#include "study.h"
#include "study_engine.h"
#include "study_test_files.h"

namespace brindle::study {
namespace {

namespace fs = std::filesystem;

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

// A brick wall 0.2 m thick, 0.3 x 0.2 m, in millimetres beside its study file; then the same
// mesh by --mesh without surface resistances: the whole user-study path reports the series flows.
TEST(StudyOutput, UserStudiesRunAMeshBesideThem) {
  const fs::path folder = ScratchFolder("brindle-study-file");
  const TetMesh tets = MeshBlocks({{{0.0, 0.0, 0.0}, {200.0, 300.0, 200.0}, 0}},
                                  {{"brick", 0.8, Role::kSolid}}, {50.0, 100.0, 1.5});
  const StudyMesh mesh = BlockStudyMesh(tets, [](const Point& c, const Point& n) {
    return n[0] < -0.5 && c[0] < 1e-9 ? 10 : n[0] > 0.5 ? 20 : 0;
  });
  std::ofstream(folder / "wall.mesh") << MeditText(mesh);
  std::ofstream(folder / "wall.json") << R"({
    "mesh": "wall.mesh", "length_unit": "mm", "materials": {"1": 0.8},
    "environments": {
      "inside": {"temperature": 20, "surface_resistance": 0.13, "boundaries": [10]},
      "outside": {"temperature": -5, "surface_resistance": 0.04, "boundaries": ["20"]}},
    "probes": {"middle": [100, 150, 100]}})";
  const std::string out = (folder / "out").string();
  ASSERT_EQ(RunStudy(ParseOptions({"--study", (folder / "wall.json").string(), "--output", out})),
            0);
  auto summary = nlohmann::json::parse(ReadFile(folder / "out" / "summary.json"));
  const double u = 1.0 / (0.13 + 0.2 / 0.8 + 0.04);
  EXPECT_NEAR(summary["study"]["environments"]["inside"]["heat_flow"].get<double>(),
              u * 0.3 * 0.2 * 25.0, 1e-6);
  // The middle of the brick lies halfway between the two surface temperatures.
  EXPECT_NEAR(summary["study"]["probes"]["middle"]["temperature_C"].get<double>(),
              20.0 - u * 25.0 * (0.13 + 0.1 / 0.8), 1e-6);
  EXPECT_TRUE(fs::exists(folder / "out" / "study.vtk"));

  // The quick study of the mesh in metres: 0.8 W/(m K) over 200 m conducts 0.8 * 300 * 200 / 200.
  Options options = ParseOptions({"--mesh", (folder / "wall.mesh").string(), "--output", out,
                                  "--conductivity", "1=0.8", "--high", "10", "--low", "20"});
  ASSERT_EQ(RunStudy(options), 0);
  summary = nlohmann::json::parse(ReadFile(folder / "out" / "summary.json"));
  EXPECT_EQ(summary["study"]["dimension"], 3);
  EXPECT_NEAR(summary["study"]["coupling_coefficients"]["inside"]["outside"].get<double>(), 240.0,
              1e-6);

  // A study that names a reference the mesh does not have fails with the file's references.
  std::ofstream(folder / "bad.json") << R"({"mesh": "wall.mesh", "materials": {"7": 1},
    "environments": {"a": {"temperature": 1, "boundaries": [10]},
                     "b": {"temperature": 0, "boundaries": [20]}}})";
  testing::internal::CaptureStderr();
  EXPECT_EQ(RunStudy(ParseOptions({"--study", (folder / "bad.json").string(), "--output", out})),
            1);
  const std::string message = testing::internal::GetCapturedStderr();
  EXPECT_NE(message.find("bad.json: materials: 7: unknown material \"7\""), std::string::npos)
      << message;
  EXPECT_NE(message.find("1: " + std::to_string(mesh.tetrahedra.size()) + " tetrahedra"),
            std::string::npos)
      << message;
  fs::remove_all(folder);
}

// A plane wall is exact on any mesh: refining it changes nothing; a corner is not.
TEST(StudyOutput, ConvergenceCheckReportsTheChanges) {
  const TetMesh tets = MeshBlocks({{{0.0, 0.0, 0.0}, {0.3, 0.2, 0.2}, 0}},
                                  {{"brick", 0.8, Role::kSolid}}, {0.1, 0.1, 1.5});
  const StudyMesh mesh = BlockStudyMesh(tets, [](const Point& c, const Point& n) {
    if (n[0] < -0.5 && c[0] < 1e-9) return 1;
    if (n[0] > 0.5 || (n[1] < -0.5 && c[1] < 1e-9)) return 2;
    return 0;
  });
  const nlohmann::json study = {
      {"mesh", "in memory"},
      {"materials", {{"1", 0.8}}},
      {"check_convergence", true},
      {"environments",
       {{"in", {{"temperature", 20}, {"surface_resistance", 0.13}, {"boundaries", {1}}}},
        {"out", {{"temperature", 0}, {"surface_resistance", 0.04}, {"boundaries", {2}}}}}}};
  const auto s = RunStudy(study, &mesh, ".", "", "corner.json");
  const auto& c = s["convergence"];
  EXPECT_EQ(c["refined_elements"].get<std::size_t>(), 8 * tets.tetrahedra.size());
  ASSERT_TRUE(c["changes"].contains("in heat_flow"));
  EXPECT_GT(std::abs(c["changes"]["in heat_flow"].get<double>()), 1e-4);
  EXPECT_EQ(c["converged"].get<bool>(), c["largest_change"].get<double>() <= 0.01);
}

}  // namespace
}  // namespace brindle::study
