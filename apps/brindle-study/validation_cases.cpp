#include "validation_cases.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "block_mesher.h"
#include "block_study_mesh.h"
#include "grading.h"

namespace brindle::study {
namespace {

using nlohmann::json;

constexpr double kPi = 3.14159265358979323846;

// Materials and environments of a case; references are list positions + 1, as the block
// study mesh numbers them, and the mesh names them so that the study can use the names.
struct CaseParts {
  std::vector<std::pair<std::string, double>> materials;  // name, W/(m K)
  struct Environment {
    std::string name;
    double temperature;
    double resistance;
  };
  std::vector<Environment> environments;
};

// Index + 1 of an environment by name; the taggers return it.
int Ref(const CaseParts& parts, const std::string& name) {
  for (std::size_t i = 0; i < parts.environments.size(); ++i)
    if (parts.environments[i].name == name) return static_cast<int>(i) + 1;
  return 0;
}

std::vector<Material> Materials(const CaseParts& parts) {
  std::vector<Material> materials;
  for (const auto& [name, k] : parts.materials)
    materials.push_back({name, k, Role::kSolid});
  return materials;
}

void NameReferences(StudyMesh& mesh, const CaseParts& parts) {
  const int elements = mesh.dimension;
  for (std::size_t i = 0; i < parts.materials.size(); ++i)
    mesh.names[{elements, static_cast<int>(i) + 1}] = parts.materials[i].first;
  for (std::size_t i = 0; i < parts.environments.size(); ++i)
    mesh.names[{elements - 1, static_cast<int>(i) + 1}] = parts.environments[i].name;
}

json StudyJson(const CaseParts& parts, const std::string& lengthUnit) {
  json study;
  // The mesh is handed to the engine directly; the key only says where it comes from.
  study["mesh"] = "built-in block mesh";
  study["length_unit"] = lengthUnit;
  study["materials"] = json::object();
  for (const auto& [name, k] : parts.materials)
    study["materials"][name] = k;
  study["environments"] = json::object();
  for (const auto& e : parts.environments)
    study["environments"][e.name] = {{"temperature", e.temperature},
                                     {"surface_resistance", e.resistance},
                                     {"boundaries", json::array({e.name})}};
  return study;
}

// A case's study from its blocks: a section (`dimension` 2) or a volume.
CaseStudy BlockCase(int dimension, const CaseParts& parts, const std::vector<Block>& blocks,
                    const MeshSizes& sizes, const GradingFocus& focus, const FaceTagger& tag,
                    const std::string& unit) {
  const std::vector<Material> materials = Materials(parts);
  CaseStudy c{dimension == 2 ? BlockStudyMesh(MeshSection(blocks, materials, sizes, focus), tag)
                             : BlockStudyMesh(MeshBlocks(blocks, materials, sizes, focus), tag),
              StudyJson(parts, unit)};
  NameReferences(c.mesh, parts);
  return c;
}

bool Near(double a, double b, double tolerance) {
  return std::abs(a - b) <= tolerance;
}

double Flow(const json& s, const std::string& environment) {
  return s["environments"][environment]["heat_flow"].get<double>();
}

double Probe(const json& s, const std::string& label) {
  return s["probes"][label]["temperature_C"].get<double>();
}

// ---- Case 1: half of a square column with fixed surface temperatures (2-D) -----------------

const CaseParts kColumnParts{{{"solid", 1.0}},
                             {{"warm edge", 20.0, 0.0}, {"cold edges", 0.0, 0.0}}};

CaseStudy SquareColumnStudy(int level) {
  const MeshSizes sizes = MeshSizes{0.02, 0.0625, 1.3}.Refined(level);
  // Fine towards corner B, where 20 C meets 0 C.
  const GradingFocus focus{{{{0.0}, {1.0}, {}}}, 3.0};
  const std::vector<Block> blocks{{{0.0, 0.0, 0.0}, {0.5, 1.0, 0.0}, 0}};
  const double eps = 1e-9;
  // The symmetry line x = 0.5 stays adiabatic.
  CaseStudy c = BlockCase(
      2, kColumnParts, blocks, sizes, focus,
      [&](const Point& centre, const Point&) {
        if (Near(centre[1], 1.0, eps)) return Ref(kColumnParts, "warm edge");
        if (Near(centre[0], 0.0, eps) || Near(centre[1], 0.0, eps))
          return Ref(kColumnParts, "cold edges");
        return 0;
      },
      "m");
  for (const GridPoint& p : SquareColumnGrid())
    c.study["probes"][p.label] = {p.x, p.y, 0.0};
  return c;
}

std::vector<CheckRow> SquareColumnChecks(const json& s) {
  std::vector<CheckRow> rows;
  for (const GridPoint& p : SquareColumnGrid())
    rows.push_back({"T " + p.label, Probe(s, p.label), p.table, 0.1, false, "C"});
  return rows;
}

double SquareColumnSeriesError(const json& s) {
  double worst = 0.0;
  for (const GridPoint& p : SquareColumnGrid())
    worst = std::max(worst, std::abs(Probe(s, p.label) - SquareColumnTemperature(p.x, p.y)));
  return worst;
}

// ---- Case 2: composite section with an aluminium profile and surface resistances (2-D, mm) -

const CaseParts kProfileParts{
    {{"concrete", 1.15}, {"wood", 0.12}, {"insulation", 0.029}, {"aluminium", 230.0}},
    {{"inside", 20.0, 0.11}, {"outside", 0.0, 0.06}}};

struct NamedPoint {
  const char* label;
  double x, y;  // mm
  double reference;
};
const NamedPoint kProfilePoints[] = {
    {"A", 0.0, 47.5, 7.1},   {"B", 500.0, 47.5, 0.8}, {"C", 0.0, 41.5, 7.9},
    {"D", 15.0, 41.5, 6.3},  {"E", 500.0, 41.5, 0.8}, {"F", 0.0, 36.5, 16.4},
    {"G", 15.0, 36.5, 16.3}, {"H", 0.0, 0.0, 16.8},   {"I", 500.0, 0.0, 18.3}};

CaseStudy ProfileStudy(int level) {
  const MeshSizes sizes = MeshSizes{0.5, 8.0, 1.3}.Refined(level);
  const double z = 0.0;
  // Later blocks override earlier ones: the insulation fills what the others leave.
  const std::vector<Block> blocks{
      {{0.0, 0.0, z}, {500.0, 47.5, z}, 2}, {{0.0, 41.5, z}, {500.0, 47.5, z}, 0},
      {{0.0, 36.5, z}, {15.0, 41.5, z}, 1}, {{0.0, 0.0, z}, {500.0, 1.5, z}, 3},
      {{0.0, 0.0, z}, {1.5, 36.5, z}, 3},   {{0.0, 35.0, z}, {15.0, 36.5, z}, 3}};
  const double eps = 1e-6;
  CaseStudy c = BlockCase(
      2, kProfileParts, blocks, sizes, {},
      [&](const Point& centre, const Point&) {
        if (Near(centre[1], 0.0, eps)) return Ref(kProfileParts, "inside");
        if (Near(centre[1], 47.5, eps)) return Ref(kProfileParts, "outside");
        return 0;
      },
      "mm");
  for (const NamedPoint& p : kProfilePoints)
    c.study["probes"][p.label] = {p.x, p.y, 0.0};
  return c;
}

std::vector<CheckRow> ProfileChecks(const json& s) {
  std::vector<CheckRow> rows;
  for (const NamedPoint& p : kProfilePoints)
    rows.push_back({std::string("T ") + p.label, Probe(s, p.label), p.reference, 0.1, false, "C"});
  rows.push_back({"heat flow", Flow(s, "inside"), 9.5, 0.1, false, "W/m"});
  return rows;
}

// ---- Case 3: wall, floor slab and balcony between two rooms and the exterior (3-D, mm) -----

const CaseParts kBalconyParts{{{"outer leaf", 1.0},
                               {"insulation", 0.04},
                               {"inner leaf", 0.7},
                               {"slab", 2.5},
                               {"floor finish", 1.0}},
                              {{"alpha", 20.0, 0.20}, {"beta", 15.0, 0.20}, {"gamma", 0.0, 0.05}}};

std::vector<Block> BalconyBlocks() {
  const double top = 2150.0, far = 1200.0;
  return {
      {{-100.0, -100.0, 0.0}, {0.0, far, top}, 0},   // outer leaf, x side
      {{-100.0, -100.0, 0.0}, {far, 0.0, top}, 0},   // outer leaf, y side
      {{0.0, 0.0, 0.0}, {50.0, far, top}, 1},        // insulation, x side
      {{0.0, 0.0, 0.0}, {far, 50.0, top}, 1},        // insulation, y side
      {{50.0, 50.0, 0.0}, {200.0, far, 1000.0}, 2},  // inner leaves below the slab
      {{50.0, 50.0, 0.0}, {far, 200.0, 1000.0}, 2},
      {{50.0, 50.0, 1150.0}, {200.0, far, top}, 2},  // and above it
      {{50.0, 50.0, 1150.0}, {far, 200.0, top}, 2},
      {{50.0, -700.0, 1000.0}, {far, far, 1150.0}, 3},  // slab and balcony
      {{200.0, 200.0, 1150.0}, {far, far, 1200.0}, 4},  // floor finish
  };
}

int TagBalconyFace(const Point& c, const Point& n) {
  const double eps = 1e-6;
  const CaseParts& p = kBalconyParts;
  // Exterior: the outer leaf's faces, and every face of the balcony outside the wall.
  if (n[0] < -0.5 || n[1] < -0.5) return Ref(p, "gamma");
  if (c[1] < -100.0 + eps && std::abs(n[2]) > 0.5) return Ref(p, "gamma");
  const bool room = c[0] > 200.0 - eps && c[1] > 200.0 - eps;
  if (!room || Near(c[0], 1200.0, eps) || Near(c[1], 1200.0, eps)) return 0;  // cut planes
  if (n[2] < -0.5 && Near(c[2], 1000.0, eps)) return Ref(p, "alpha");         // slab soffit
  if (n[2] > 0.5 && Near(c[2], 1200.0, eps)) return Ref(p, "beta");           // floor top
  if (std::abs(n[2]) < 0.5) return Ref(p, c[2] < 1000.0 ? "alpha" : "beta");  // room walls
  return 0;
}

CaseStudy BalconyStudy(int level) {
  const MeshSizes sizes = MeshSizes{15.0, 200.0, 1.5}.Refined(level);
  // Fine where the slab crosses the insulation and at the rooms' inner corners; the cut
  // planes and the far faces of the model start six times coarser.
  const GradingFocus focus{{{{50.0, 200.0}, {-100.0, 0.0, 50.0, 200.0}, {1000.0, 1150.0, 1200.0}}},
                           6.0};
  return BlockCase(3, kBalconyParts, BalconyBlocks(), sizes, focus, TagBalconyFace, "mm");
}

std::vector<CheckRow> BalconyChecks(const json& s) {
  std::vector<CheckRow> rows{{"heat flow into alpha", Flow(s, "alpha"), 46.09, 0.01, true, "W"},
                             {"heat flow into beta", Flow(s, "beta"), 13.89, 0.01, true, "W"},
                             {"heat flow out of gamma", -Flow(s, "gamma"), 59.98, 0.01, true, "W"}};
  const json& e = s["environments"];
  rows.push_back({"lowest surface T alpha", e["alpha"]["surface_temperature_min_C"].get<double>(),
                  11.32, 0.1, false, "C"});
  rows.push_back({"lowest surface T beta", e["beta"]["surface_temperature_min_C"].get<double>(),
                  11.11, 0.1, false, "C"});
  const json& g = s["weighting_factors"];
  const char* order[] = {"gamma", "alpha", "beta"};
  const double alpha[] = {0.378, 0.399, 0.223};
  const double beta[] = {0.331, 0.214, 0.455};
  for (int i = 0; i < 3; ++i)
    rows.push_back({std::string("g ") + order[i] + " at alpha's coldest point",
                    g["alpha"][order[i]].get<double>(), alpha[i], 0.005, false, ""});
  for (int i = 0; i < 3; ++i)
    rows.push_back({std::string("g ") + order[i] + " at beta's coldest point",
                    g["beta"][order[i]].get<double>(), beta[i], 0.005, false, ""});
  return rows;
}

// ---- Case 4: iron bar through an insulation layer, a quarter by symmetry (3-D, m) ----------

const CaseParts kBarParts{{{"insulation", 0.1}, {"iron", 50.0}},
                          {{"warm", 1.0, 0.1}, {"cold", 0.0, 0.1}}};

int TagBarFace(const Point& c, const Point& n) {
  const double eps = 1e-9;
  if (n[1] < -0.5) return Ref(kBarParts, "cold");  // y = 0, the bar's end included
  if (c[1] > 0.2 - eps) {
    // Everything on the warm side of the insulation except the symmetry planes x = 0, z = 0.
    if (n[0] < -0.5 || n[2] < -0.5) return 0;
    return Ref(kBarParts, "warm");
  }
  return 0;
}

CaseStudy BarStudy(int level) {
  const MeshSizes sizes = MeshSizes{0.005, 0.08, 1.5}.Refined(level);
  // Fine along the bar's faces and both faces of the insulation; the symmetry planes, the
  // outer sides and the bar's end start four times coarser.
  const GradingFocus focus{{{{0.05}, {0.0, 0.2}, {0.025}}}, 4.0};
  const std::vector<Block> blocks{{{0.0, 0.0, 0.0}, {0.5, 0.2, 0.5}, 0},
                                  {{0.0, 0.0, 0.0}, {0.05, 0.6, 0.025}, 1}};
  CaseStudy c = BlockCase(3, kBarParts, blocks, sizes, focus, TagBarFace, "m");
  c.study["symmetry_factor"] = 4;
  return c;
}

std::vector<CheckRow> BarChecks(const json& s) {
  return {{"heat flow", Flow(s, "warm"), 0.540, 0.01, true, "W"},
          {"highest cold-surface T",
           s["environments"]["cold"]["surface_temperature_max_C"].get<double>(), 0.805, 0.005,
           false, "C"}};
}

}  // namespace

bool CheckRow::Passes() const {
  if (informative) return true;
  const double allowed = relative ? tolerance * std::abs(reference) : tolerance;
  return std::abs(Difference()) <= allowed * (1.0 + 1e-12);
}

double SquareColumnTemperature(double x, double y, double top) {
  double sum = 0.0;
  for (int n = 1; n < 2001; n += 2) {
    // sinh(n pi y) / sinh(n pi) without overflow: exp(n pi (y - 1)) (1 - e^{-2 n pi y}) / (...)
    const double a = n * kPi;
    const double ratio =
        std::exp(a * (y - 1.0)) * (1.0 - std::exp(-2.0 * a * y)) / (1.0 - std::exp(-2.0 * a));
    const double term = std::sin(a * x) * ratio / n;
    sum += term;
    if (std::abs(ratio) < 1e-17) break;
  }
  return 4.0 * top / kPi * sum;
}

std::vector<GridPoint> SquareColumnGrid() {
  static const double kTable[7][4] = {
      {9.7, 13.4, 14.7, 15.1}, {5.3, 8.6, 10.3, 10.8}, {3.2, 5.6, 7.0, 7.5}, {2.0, 3.6, 4.7, 5.0},
      {1.3, 2.3, 3.0, 3.2},    {0.7, 1.4, 1.8, 1.9},   {0.3, 0.6, 0.8, 0.9}};
  std::vector<GridPoint> grid;
  for (int row = 0; row < 7; ++row)
    for (int col = 0; col < 4; ++col) {
      const int eighths = 7 - row;
      grid.push_back({"r" + std::to_string(eighths) + "c" + std::to_string(col + 1),
                      0.125 * (col + 1), eighths / 8.0, kTable[row][col]});
    }
  return grid;
}

std::vector<ValidationCase> ValidationCases() {
  std::vector<ValidationCase> cases;
  cases.push_back({"case1", "Case 1: half square column, fixed surface temperatures (2-D)",
                   SquareColumnStudy, 2, SquareColumnChecks, false, SquareColumnSeriesError});
  cases.push_back({"case2",
                   "Case 2: section with an aluminium profile (2-D)",
                   ProfileStudy,
                   0,
                   ProfileChecks,
                   true,
                   {}});
  cases.push_back({"case3",
                   "Case 3: wall, slab and balcony between two rooms (3-D)",
                   BalconyStudy,
                   0,
                   BalconyChecks,
                   true,
                   {}});
  cases.push_back({"case4",
                   "Case 4: iron bar through insulation, quarter model (3-D)",
                   BarStudy,
                   1,
                   BarChecks,
                   true,
                   {}});
  return cases;
}

}  // namespace brindle::study
