// The reference cases as the validation builds them (geometry, materials, boundary tags) and
// the verdicts it draws from a study's figures.
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <map>

#include "geometry.h"
#include "study_file.h"
#include "validation.h"

namespace brindle::study {
namespace {

using nlohmann::json;

// Measure (area or volume) of a case's elements per material name and of its boundary
// elements per environment name, in the case's length unit.
struct Measures {
  std::map<std::string, double> materials;
  std::map<std::string, double> environments;
};

Measures Measure(const StudyMesh& mesh) {
  Measures m;
  const auto& v = mesh.vertices;
  const int d = mesh.dimension;
  if (d == 3) {
    for (std::size_t t = 0; t < mesh.tetrahedra.size(); ++t) {
      const auto& e = mesh.tetrahedra[t];
      const double volume =
          Dot(v[e[1]] - v[e[0]], Cross(v[e[2]] - v[e[0]], v[e[3]] - v[e[0]])) / 6.0;
      EXPECT_GT(volume, 0.0);
      m.materials[mesh.names.at({3, mesh.tetrahedronRef[t]})] += volume;
    }
    for (std::size_t f = 0; f < mesh.triangles.size(); ++f) {
      const auto& e = mesh.triangles[f];
      m.environments[mesh.names.at({2, mesh.triangleRef[f]})] +=
          0.5 * Norm(Cross(v[e[1]] - v[e[0]], v[e[2]] - v[e[0]]));
    }
  } else {
    for (std::size_t t = 0; t < mesh.triangles.size(); ++t) {
      const auto& e = mesh.triangles[t];
      m.materials[mesh.names.at({2, mesh.triangleRef[t]})] +=
          0.5 * std::abs(Cross(v[e[1]] - v[e[0]], v[e[2]] - v[e[0]])[2]);
    }
    for (std::size_t s = 0; s < mesh.edges.size(); ++s)
      m.environments[mesh.names.at({1, mesh.edgeRef[s]})] +=
          Norm(v[mesh.edges[s][1]] - v[mesh.edges[s][0]]);
  }
  return m;
}

void ExpectMeasures(const std::map<std::string, double>& got,
                    const std::map<std::string, double>& expected, const std::string& what) {
  ASSERT_EQ(got.size(), expected.size()) << what;
  for (const auto& [name, value] : expected)
    EXPECT_NEAR(got.at(name), value, 1e-9 * value) << what << " " << name;
}

TEST(ValidationCases, BuildTheirMaterialsAndTagTheirEnvironments) {
  struct Expected {
    std::map<std::string, double> materials, environments;
  };
  const double aluminium = 500 * 1.5 + 1.5 * 33.5 + 15 * 1.5;
  const double roomWalls = 2 * 1000.0 * 1000.0;
  const double slabThrough = 1150.0 * 150.0;
  const Expected expected[] = {
      {{{"solid", 0.5}}, {{"warm edge", 0.5}, {"cold edges", 1.5}}},
      {{{"concrete", 3000.0},
        {"wood", 75.0},
        {"aluminium", aluminium},
        {"insulation", 500 * 47.5 - 3000 - 75 - aluminium}},
       {{"inside", 500.0}, {"outside", 500.0}}},
      {{{"outer leaf", 2 * 1300.0 * 100 * 2150 - 100.0 * 100 * 2150 - slabThrough * 100},
        {"insulation", 2 * 1200.0 * 50 * 2150 - 50.0 * 50 * 2150 - slabThrough * 50},
        {"inner leaf", (2 * 1150.0 * 150 - 150.0 * 150) * 2000},
        {"slab", 1150.0 * 1900 * 150},
        {"floor finish", 1000.0 * 1000 * 50}},
       {{"alpha", roomWalls + 1e6},
        {"beta", 0.95 * roomWalls + 1e6},
        {"gamma", 1300.0 * 2150 * 2 - slabThrough + 2 * 1150.0 * 600 + slabThrough + 600.0 * 150}}},
      {{{"insulation", 0.5 * 0.2 * 0.5 - 0.05 * 0.2 * 0.025}, {"iron", 0.05 * 0.6 * 0.025}},
       {{"warm", 0.25 + 0.4 * (0.025 + 0.05)}, {"cold", 0.25}}}};
  const std::vector<ValidationCase> cases = ValidationCases();
  ASSERT_EQ(cases.size(), 4u);
  for (std::size_t i = 0; i < cases.size(); ++i) {
    const Measures m = Measure(cases[i].build(0).mesh);
    ExpectMeasures(m.materials, expected[i].materials, cases[i].id + " materials");
    ExpectMeasures(m.environments, expected[i].environments, cases[i].id + " boundaries");
  }
}

// A stand-in engine whose flow grows by `growth` per level, to test the convergence rule.
StudyRunner FakeEngine(double growth, std::vector<std::string>* folders) {
  return [growth, folders](const CaseStudy& study, const std::string& folder) {
    folders->push_back(folder);
    const double flow = 10.0 * std::pow(1.0 + growth, study.study["level"].get<int>());
    return json{{"environments", {{"in", {{"heat_flow", flow}}}, {"out", {{"heat_flow", -flow}}}}},
                {"probes", {{"P", {{"temperature_C", flow}}}}}};
  };
}

ValidationCase FakeCase(bool flowConverges) {
  ValidationCase c;
  c.id = "fake";
  c.title = "fake case";
  c.coarseLevel = 1;
  c.flowConverges = flowConverges;
  c.build = [](int level) {
    CaseStudy s;
    s.mesh.dimension = 2;
    s.mesh.triangles.resize(static_cast<std::size_t>(2) << (2 * level));
    s.study["level"] = level;
    return s;
  };
  c.checks = [](const json& s) {
    return std::vector<CheckRow>{
        {"flow", s["environments"]["in"]["heat_flow"].get<double>(), 10.0, 0.05, true, "W"}};
  };
  return c;
}

TEST(ValidateCase, AppliesTheOnePercentRuleBetweenTheTwoFinestLevels) {
  std::vector<std::string> folders;
  const CaseResult converged = ValidateCase(FakeCase(true), FakeEngine(0.005, &folders), "out");
  ASSERT_EQ(converged.levels.size(), 2u);
  EXPECT_EQ(converged.levels[1].level, 2);
  EXPECT_EQ(converged.levels[1].elements, 32u);
  // Only the finest run writes files, into the case's folder.
  EXPECT_EQ(folders,
            (std::vector<std::string>{"", (std::filesystem::path("out") / "fake").string()}));
  EXPECT_TRUE(converged.Passed());
  ASSERT_EQ(converged.rows.size(), 3u);
  EXPECT_NEAR(converged.rows[1].computed, 0.5, 1e-9);

  const CaseResult drifting = ValidateCase(FakeCase(true), FakeEngine(0.02, &folders), "");
  EXPECT_FALSE(drifting.Passed());
  EXPECT_NE(CaseTable(drifting).find("FAIL"), std::string::npos);
  EXPECT_FALSE(ValidationJson({converged, drifting})["passed"].get<bool>());

  // A flow that diverges by nature is shown, not judged.
  const CaseResult diverging = ValidateCase(FakeCase(false), FakeEngine(0.02, &folders), "");
  EXPECT_TRUE(diverging.Passed());
  EXPECT_NE(CaseTable(diverging).find("INFO"), std::string::npos);
}

TEST(ValidateCase, FollowsTheExactSolutionFromTheCoarsestLevel) {
  ValidationCase c = FakeCase(false);
  c.checks = [](const json&) { return std::vector<CheckRow>{}; };
  std::vector<double> errors{0.08, 0.03, 0.04};
  c.exactError = [&errors](const json& s) {
    return errors[static_cast<std::size_t>(
        std::log2(s["probes"]["P"]["temperature_C"].get<double>() / 10.0) + 0.5)];
  };
  std::vector<std::string> folders;
  const CaseResult result = ValidateCase(c, FakeEngine(1.0, &folders), "");
  ASSERT_EQ(result.levels.size(), 3u);
  EXPECT_EQ(result.levels[0].level, 0);
  EXPECT_FALSE(result.Passed());  // the error rose from level 1 to 2
  EXPECT_EQ(result.rows.back().computed, 1.0);
  errors[2] = 0.01;
  EXPECT_TRUE(ValidateCase(c, FakeEngine(1.0, &folders), "").Passed());
}

}  // namespace
}  // namespace brindle::study
