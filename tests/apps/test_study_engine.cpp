// The study engine against physics: plane walls with surface resistances, superposition of
// several environments, and the heat balance of a fine section.
#include <gtest/gtest.h>

#include <cmath>

#include "block_mesher.h"
#include "block_study_mesh.h"
#include "study_engine.h"

namespace brindle::study {
namespace {

using nlohmann::json;

// A wall of brick 0.2 m (0.8 W/(m K)) and insulation 0.1 m (0.04) along x, 0.3 m high.
struct Wall {
  double rsi = 0.13, rse = 0.04;
  double UValue() const { return 1.0 / (rsi + 0.2 / 0.8 + 0.1 / 0.04 + rse); }
};

std::vector<Block> WallBlocks(bool threeD) {
  const double z = threeD ? 0.2 : 0.0;
  return {{{0.0, 0.0, 0.0}, {0.2, 0.3, z}, 0}, {{0.2, 0.0, 0.0}, {0.3, 0.3, z}, 1}};
}

std::vector<Material> WallMaterials() {
  return {{"brick", 0.8, Role::Solid}, {"insulation", 0.04, Role::Solid}};
}

// Inside face x = 0 gets reference 10, outside face x = 0.3 reference 20.
int TagWallFaces(const Point& centre, const Point& normal) {
  if (normal[0] < -0.5 && centre[0] < 1e-9) return 10;
  if (normal[0] > 0.5 && centre[0] > 0.3 - 1e-9) return 20;
  return 0;
}

StudyMesh ScaledMesh(StudyMesh mesh, double unitsPerMetre) {
  for (Point& p : mesh.vertices)
    for (double& x : p)
      x *= unitsPerMetre;
  return mesh;
}

json WallStudy(const Wall& wall, const char* unit) {
  return {
      {"mesh", "in memory"},
      {"length_unit", unit},
      {"materials", {{"1", 0.8}, {"2", 0.04}}},
      {"environments",
       {{"inside", {{"temperature", 20.0}, {"surface_resistance", wall.rsi}, {"boundaries", {10}}}},
        {"outside",
         {{"temperature", -5.0}, {"surface_resistance", wall.rse}, {"boundaries", {"20"}}}}}}};
}

const MeshSizes kFine{0.01, 0.05, 1.5};

void ExpectWallUValue(const StudyMesh& metres, double crossSection) {
  const Wall wall;
  const double expected = wall.UValue() * crossSection * 25.0;
  for (const auto& [unit, scale] : {std::pair<const char*, double>{"m", 1.0}, {"mm", 1000.0}}) {
    SCOPED_TRACE(unit);
    const StudySpec spec = ParseStudy(WallStudy(wall, unit), "wall.json");
    const SolvedStudy solved = SolveStudy(spec, ScaledMesh(metres, scale));
    const json& e = solved.summary["environments"];
    EXPECT_NEAR(e["inside"]["heat_flow"].get<double>() / expected, 1.0, 1e-3);
    EXPECT_NEAR(e["outside"]["heat_flow"].get<double>() / -expected, 1.0, 1e-3);
    // A plane wall's inside surface sits at Ti - U Rsi (Ti - Te) everywhere.
    const double surface = 20.0 - wall.UValue() * wall.rsi * 25.0;
    EXPECT_NEAR(e["inside"]["surface_temperature_min_C"].get<double>(), surface, 0.01);
    EXPECT_NEAR(e["inside"]["surface_temperature_max_C"].get<double>(), surface, 0.01);
    EXPECT_NEAR(e["inside"]["temperature_factor_min"].get<double>(), 1.0 - wall.UValue() * wall.rsi,
                1e-3);
    EXPECT_NEAR(solved.summary["coupling_coefficients"]["inside"]["outside"].get<double>(),
                wall.UValue() * crossSection, 1e-3 * wall.UValue() * crossSection);
  }
}

TEST(StudyEngine, SectionOfAPlaneWallConductsTheSeriesUValue) {
  const TriMesh mesh = MeshSection(WallBlocks(false), WallMaterials(), kFine);
  ExpectWallUValue(BlockStudyMesh(mesh, TagWallFaces), 0.3);
}

TEST(StudyEngine, BlockOfAPlaneWallConductsTheSeriesUValue) {
  const TetMesh mesh = MeshBlocks(WallBlocks(true), WallMaterials(), {0.03, 0.1, 1.5});
  ExpectWallUValue(BlockStudyMesh(mesh, TagWallFaces), 0.3 * 0.2);
}

}  // namespace
}  // namespace brindle::study
