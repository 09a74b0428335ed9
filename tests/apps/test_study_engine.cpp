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
  return {{"brick", 0.8, Role::kSolid}, {"insulation", 0.04, Role::kSolid}};
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

const MeshSizes kFine{0.01, 0.05, 1.5};

json Env(double temperature, double resistance, const json& boundaries) {
  return {
      {"temperature", temperature}, {"surface_resistance", resistance}, {"boundaries", boundaries}};
}

// An in-memory study of conductivities by reference and environments by name.
json Study(const json& materials, const json& environments) {
  return {{"mesh", "in memory"}, {"materials", materials}, {"environments", environments}};
}

json WallStudy(const Wall& wall, const char* unit) {
  json study = Study({{"1", 0.8}, {"2", 0.04}}, {{"inside", Env(20.0, wall.rsi, {10})},
                                                 {"outside", Env(-5.0, wall.rse, {"20"})}});
  study["length_unit"] = unit;
  return study;
}

void ExpectWallUValue(const StudyMesh& metres, double crossSection) {
  const Wall wall;
  const double expected = wall.UValue() * crossSection * 25.0;
  for (const auto& [unit, scale] : {std::pair<const char*, double>{"m", 1.0}, {"mm", 1000.0}}) {
    SCOPED_TRACE(unit);
    const StudyDefinition definition = ParseStudy(WallStudy(wall, unit), "wall.json");
    const SolvedStudy solved = SolveStudy(definition, ScaledMesh(metres, scale));
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

TEST(StudyEngine, PlaneWallConductsTheSeriesUValueIn2DAnd3D) {
  const TriMesh section = MeshSection(WallBlocks(false), WallMaterials(), kFine);
  ExpectWallUValue(BlockStudyMesh(section, TagWallFaces), 0.3);
  const TetMesh block = MeshBlocks(WallBlocks(true), WallMaterials(), {0.03, 0.1, 1.5});
  ExpectWallUValue(BlockStudyMesh(block, TagWallFaces), 0.3 * 0.2);

  // psi of the section against its own U value is zero.
  const Wall wall;
  json study = WallStudy(wall, "m");
  study["psi"] = {{"U", {wall.UValue()}}, {"lengths", {0.3}}};
  const json s =
      SolveStudy(ParseStudy(study, "wall.json"), BlockStudyMesh(section, TagWallFaces)).summary;
  EXPECT_NEAR(s["psi"]["value"].get<double>(), 0.0, 1e-9);
  EXPECT_EQ(s["psi"]["between"], json({"inside", "outside"}));
}

// Concrete block with an insulated top, three environments: inside on x = 0 and y = 0 (meeting
// at a convex edge), a second room on the top face, outside on x = 0.4.
TEST(StudyEngine, ThreeEnvironmentsSuperpose) {
  const std::vector<Block> blocks{{{0.0, 0.0, 0.0}, {0.4, 0.4, 0.3}, 0},
                                  {{0.0, 0.0, 0.25}, {0.3, 0.4, 0.3}, 1}};
  const std::vector<Material> materials{{"concrete", 2.3, Role::kSolid},
                                        {"insulation", 0.04, Role::kSolid}};
  const TetMesh tets = MeshBlocks(blocks, materials, {0.05, 0.1, 1.5});
  const StudyMesh mesh = BlockStudyMesh(tets, [](const Point& c, const Point& n) {
    if ((n[0] < -0.5 && c[0] < 1e-9) || (n[1] < -0.5 && c[1] < 1e-9)) return 1;
    if (n[2] > 0.5) return 2;
    if (n[0] > 0.5) return 3;
    return 0;
  });
  json study = Study({{"1", 2.3}, {"2", 0.04}}, {{"room", Env(20.0, 0.13, {1})},
                                                 {"upstairs", Env(15.0, 0.1, {2})},
                                                 {"outside", Env(-5.0, 0.04, {3})}});
  study["symmetry_factor"] = 2;
  const SolvedStudy solved = SolveStudy(ParseStudy(study, "three.json"), mesh);
  const json& s = solved.summary;
  const json& e = s["environments"];
  double sum = 0.0, largest = 0.0;
  for (const auto& [name, env] : e.items()) {
    sum += env["heat_flow"].get<double>();
    largest = std::max(largest, std::abs(env["heat_flow"].get<double>()));
  }
  EXPECT_LT(std::abs(sum), 1e-9 * largest);
  EXPECT_LT(s["solver"]["coupling_asymmetry"].get<double>(), 1e-9);
  const json& l = s["coupling_coefficients"];
  EXPECT_DOUBLE_EQ(l["room"]["outside"].get<double>(), l["outside"]["room"].get<double>());
  // Each flow is its environment's couplings times the temperature differences.
  const double room =
      l["room"]["outside"].get<double>() * 25.0 + l["room"]["upstairs"].get<double>() * 5.0;
  EXPECT_NEAR(e["room"]["heat_flow"].get<double>(), room, 1e-9 * largest);
  for (const auto& [name, g] : s["weighting_factors"].items()) {
    double total = 0.0;
    for (const auto& [other, value] : g.items())
      total += value.get<double>();
    EXPECT_NEAR(total, 1.0, 1e-12) << name;
  }
  // Room surfaces lie between the outside and the room air.
  EXPECT_GT(e["room"]["surface_temperature_min_C"].get<double>(), -5.0);
  EXPECT_LT(e["room"]["surface_temperature_max_C"].get<double>(), 20.0);
}

// An aluminium profile through insulation, in metres with 0.5 mm elements next to the metal:
// no flux is lost on small elements.
TEST(StudyEngine, FineSectionInMetresKeepsItsHeatBalance) {
  const std::vector<Block> blocks{
      {{0.0, 0.0, 0.0}, {0.5, 0.0475, 0.0}, 0},      {{0.0, 0.0415, 0.0}, {0.5, 0.0475, 0.0}, 1},
      {{0.0, 0.0365, 0.0}, {0.015, 0.0415, 0.0}, 2}, {{0.0, 0.0, 0.0}, {0.5, 0.0015, 0.0}, 3},
      {{0.0, 0.0, 0.0}, {0.0015, 0.0365, 0.0}, 3},   {{0.0, 0.035, 0.0}, {0.015, 0.0365, 0.0}, 3}};
  const std::vector<Material> materials{{"insulation", 0.029, Role::kSolid},
                                        {"concrete", 1.15, Role::kSolid},
                                        {"wood", 0.12, Role::kSolid},
                                        {"aluminium", 230.0, Role::kSolid}};
  const TriMesh tris = MeshSection(blocks, materials, {0.0005, 0.01, 1.3});
  const StudyMesh mesh = BlockStudyMesh(tris, [](const Point& c, const Point& n) {
    if (n[1] < -0.5 && c[1] < 1e-9) return 1;
    if (n[1] > 0.5) return 2;
    return 0;
  });
  const json study = Study({{"1", 0.029}, {"2", 1.15}, {"3", 0.12}, {"4", 230.0}},
                           {{"inside", Env(20.0, 0.11, {1})}, {"outside", Env(0.0, 0.06, {2})}});
  const json s = SolveStudy(ParseStudy(study, "section.json"), mesh).summary;
  const double in = s["environments"]["inside"]["heat_flow"].get<double>();
  const double out = s["environments"]["outside"]["heat_flow"].get<double>();
  EXPECT_NEAR(in / -out, 1.0, 1e-9);
  EXPECT_NEAR(in, 9.5, 0.3);  // W/m, the known result of this section
}

// An external wall corner: the layers meet at a concave edge inside and a convex edge outside,
// and end flush at the adiabatic cut planes. Extruded, it must conduct what the section does.
TEST(StudyEngine, CornerLayersJoinLikeTheSection) {
  const auto corner = [](double depth) {
    return std::vector<Block>{{{0.0, 0.0, 0.0}, {0.8, 0.3, depth}, 0},
                              {{0.0, 0.0, 0.0}, {0.3, 0.8, depth}, 0}};
  };
  const std::vector<Material> materials{{"masonry", 0.8, Role::kSolid}};
  // Outside: the faces x = 0 and y = 0; inside: the faces x = 0.3 (y > 0.3) and y = 0.3
  // (x > 0.3), which meet at the concave corner.
  const FaceTagger tag = [](const Point& c, const Point& n) {
    if ((n[0] < -0.5 && c[0] < 1e-9) || (n[1] < -0.5 && c[1] < 1e-9)) return 2;
    if ((n[0] > 0.5 && std::abs(c[0] - 0.3) < 1e-9) || (n[1] > 0.5 && std::abs(c[1] - 0.3) < 1e-9))
      return 1;
    return 0;
  };
  const json study =
      Study({{"1", 0.8}}, {{"inside", Env(20.0, 0.13, {1})}, {"outside", Env(0.0, 0.04, {2})}});
  const StudyDefinition definition = ParseStudy(study, "corner.json");
  const MeshSizes sizes{0.01, 0.04, 1.4};
  const json section =
      SolveStudy(definition, BlockStudyMesh(MeshSection(corner(0.0), materials, sizes), tag))
          .summary;
  const json block =
      SolveStudy(definition, BlockStudyMesh(MeshBlocks(corner(0.1), materials, sizes), tag))
          .summary;
  const double perMetre = section["environments"]["inside"]["heat_flow"].get<double>();
  const double extruded = block["environments"]["inside"]["heat_flow"].get<double>() / 0.1;
  EXPECT_NEAR(extruded / perMetre, 1.0, 2e-3);
  // The inner corner is the coldest point of the inside surface in both.
  const auto& at = block["environments"]["inside"]["surface_temperature_min_at"];
  EXPECT_NEAR(at[0].get<double>(), 0.3, 1e-9);
  EXPECT_NEAR(at[1].get<double>(), 0.3, 1e-9);
  EXPECT_NEAR(block["environments"]["inside"]["surface_temperature_min_C"].get<double>(),
              section["environments"]["inside"]["surface_temperature_min_C"].get<double>(), 0.05);
}

#if defined(BRINDLE_STUDY_HAVE_GMSH)
// A study of a gmsh geometry by physical names, meshed by the tool, with chi against the plane
// wall it is: chi = 0.
TEST(StudyEngine, GeometryStudiedByPhysicalNames) {
  json study = Study({{"concrete", 2.3}, {"insulation", 0.04}},
                     {{"inside", Env(20, 0.13, {"warm"})}, {"outside", Env(-5, 0.04, {"cold"})}});
  study.erase("mesh");
  study["geometry"] = "two_layers.geo";
  study["mesh_size"] = 0.1;
  study["chi"] = {{"U", {1.0 / (0.13 + 0.2 / 2.3 + 0.1 / 0.04 + 0.04)}}, {"areas", {1.0}}};
  const json s = RunStudy(study, nullptr, BRINDLE_STUDY_TEST_DATA, "", "two_layers.json");
  EXPECT_EQ(s["dimension"], 3);
  EXPECT_NEAR(s["chi"]["value"].get<double>(), 0.0, 1e-6);
  EXPECT_GT(s["mesh"]["elements"].get<int>(), 100);
}
#endif

}  // namespace
}  // namespace brindle::study
