#include "validation.h"

#include <chrono>
#include <cmath>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>

#include "report.h"
#include "study_engine.h"
#include "study_file.h"

namespace brindle::study {
namespace {

using nlohmann::json;

double SecondsSince(std::chrono::steady_clock::time_point start) {
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// The standard's rule: doubling the subdivisions changes each heat flow by less than 1 %.
std::vector<CheckRow> ConvergenceRows(const ValidationCase& c, const LevelResult& coarse,
                                      const LevelResult& fine) {
  std::vector<CheckRow> rows;
  for (const auto& [name, environment] : fine.summary["environments"].items()) {
    const double before = coarse.summary["environments"][name]["heat_flow"].get<double>();
    const double after = environment["heat_flow"].get<double>();
    CheckRow row{"flow change " + name + ", level " + std::to_string(coarse.level) + " to " +
                     std::to_string(fine.level),
                 before != 0.0 ? 100.0 * (after - before) / std::abs(before) : 0.0,
                 0.0,
                 1.0,
                 false,
                 "%"};
    // A temperature jump along the boundary makes the flow grow with every refinement, so
    // such a case shows the change without judging it.
    row.informative = !c.flowConverges;
    rows.push_back(row);
  }
  return rows;
}

// Error against the exact solution at every level, and whether it fell with each refinement.
std::vector<CheckRow> ExactSolutionRows(const ValidationCase& c,
                                        const std::vector<LevelResult>& levels) {
  std::vector<CheckRow> rows;
  int rises = 0;
  double previous = INFINITY;
  for (const LevelResult& level : levels) {
    const double error = c.exactError(level.summary);
    rows.push_back({"max |T - exact|, level " + std::to_string(level.level) + " (" +
                        std::to_string(level.elements) + " el.)",
                    error, 0.0, 0.1, false, "C"});
    if (error >= previous) ++rises;
    previous = error;
  }
  rows.push_back({"refinements where the error did not fall", static_cast<double>(rises), 0.0, 0.0,
                  false, ""});
  return rows;
}

std::size_t ElementCount(const StudyMesh& mesh) {
  return mesh.dimension == 3 ? mesh.tetrahedra.size() : mesh.triangles.size();
}

std::string Number(double value) {
  const double magnitude = std::abs(value);
  if (magnitude != 0.0 && (magnitude >= 1e5 || magnitude < 1e-3)) return Format("%.4g", value);
  return Format("%.4f", value);
}

json RowJson(const CheckRow& row) {
  return {{"quantity", row.quantity},
          {"computed", row.computed},
          {"reference", row.reference},
          {"difference", row.Difference()},
          {"tolerance", row.tolerance},
          {"tolerance_relative", row.relative},
          {"unit", row.unit},
          {"result", row.informative ? "INFO"
                     : row.Passes()  ? "PASS"
                                     : "FAIL"}};
}

// The engine as a user's study runs it: quiet and without files for the coarser levels, with
// its report and files for the finest.
json RunThroughEngine(const CaseStudy& c, const std::string& folder) {
  if (folder.empty()) return SolveStudy(ParseStudy(c.study, "validation"), c.mesh).summary;
  return RunStudy(c.study, &c.mesh, ".", folder, folder);
}

}  // namespace

bool CaseResult::Passed() const {
  for (const CheckRow& row : rows)
    if (!row.Passes()) return false;
  return true;
}

CaseResult ValidateCase(const ValidationCase& c, const StudyRunner& run,
                        const std::string& outputFolder) {
  const auto start = std::chrono::steady_clock::now();
  CaseResult result{c.id, c.title, 3, {}, {}, 0.0};
  const int finest = c.coarseLevel + 1;
  for (int level = c.exactError ? 0 : c.coarseLevel; level <= finest; ++level) {
    const auto levelStart = std::chrono::steady_clock::now();
    const CaseStudy study = c.build(level);
    LevelResult r;
    r.level = level;
    r.elements = ElementCount(study.mesh);
    r.vertices = study.mesh.vertices.size();
    result.dimension = study.mesh.dimension;
    r.summary = run(study, level == finest && !outputFolder.empty()
                               ? (std::filesystem::path(outputFolder) / c.id).string()
                               : std::string());
    r.seconds = SecondsSince(levelStart);
    result.levels.push_back(std::move(r));
  }
  result.rows = c.checks(result.levels.back().summary);
  const auto convergence =
      ConvergenceRows(c, result.levels[result.levels.size() - 2], result.levels.back());
  result.rows.insert(result.rows.end(), convergence.begin(), convergence.end());
  if (c.exactError) {
    const auto exact = ExactSolutionRows(c, result.levels);
    result.rows.insert(result.rows.end(), exact.begin(), exact.end());
  }
  result.seconds = SecondsSince(start);
  return result;
}

std::string CaseTable(const CaseResult& result) {
  const LevelResult& fine = result.levels.back();
  std::string text = result.title + "\n";
  text += Format("  mesh level %d: %zu %s, %zu vertices, %.1f s; all levels %.1f s\n", fine.level,
                 fine.elements, result.dimension == 3 ? "tetrahedra" : "triangles", fine.vertices,
                 fine.seconds, result.seconds);
  text += Format("  %-44s %11s %11s %11s %11s  %s\n", "quantity", "computed", "reference",
                 "difference", "tolerance", "result");
  for (const CheckRow& row : result.rows) {
    const std::string tolerance =
        row.relative ? Format("%g %%", 100.0 * row.tolerance)
                     : Number(row.tolerance) + (row.unit.empty() ? "" : " " + row.unit);
    const std::string quantity = row.quantity + (row.unit.empty() ? "" : " (" + row.unit + ")");
    text +=
        Format("  %-44s %11s %11s %11s %11s  %s\n", quantity.c_str(), Number(row.computed).c_str(),
               Number(row.reference).c_str(), Number(row.Difference()).c_str(), tolerance.c_str(),
               row.informative ? "INFO"
               : row.Passes()  ? "PASS"
                               : "FAIL");
  }
  return text;
}

json ValidationJson(const std::vector<CaseResult>& results) {
  json cases = json::array();
  bool passed = true;
  for (const CaseResult& r : results) {
    json levels = json::array();
    for (const LevelResult& l : r.levels)
      levels.push_back({{"level", l.level},
                        {"elements", l.elements},
                        {"vertices", l.vertices},
                        {"seconds", l.seconds},
                        {"study", l.summary}});
    json rows = json::array();
    for (const CheckRow& row : r.rows)
      rows.push_back(RowJson(row));
    cases.push_back({{"id", r.id},
                     {"title", r.title},
                     {"passed", r.Passed()},
                     {"seconds", r.seconds},
                     {"checks", rows},
                     {"levels", levels}});
    passed = passed && r.Passed();
  }
  return {{"passed", passed}, {"cases", cases}};
}

int RunValidation(const std::string& outputFolder) {
  try {
    std::filesystem::create_directories(outputFolder);
    std::vector<CaseResult> results;
    for (const ValidationCase& c : ValidationCases()) {
      results.push_back(ValidateCase(c, RunThroughEngine, outputFolder));
      std::printf("%s\n", CaseTable(results.back()).c_str());
      std::fflush(stdout);
    }
    const json report = ValidationJson(results);
    const std::string path = (std::filesystem::path(outputFolder) / "validation.json").string();
    std::ofstream out(path);
    out << report.dump(2) << '\n';
    if (!out) throw std::runtime_error("cannot write " + path);
    double seconds = 0.0;
    int failed = 0;
    for (const CaseResult& r : results) {
      seconds += r.seconds;
      failed += r.Passed() ? 0 : 1;
    }
    std::printf("%s: %zu cases in %.1f s, wrote %s\n", failed ? "FAILED" : "ALL PASSED",
                results.size(), seconds, path.c_str());
    return failed ? 1 : 0;
  } catch (const std::exception& e) {
    std::fprintf(stderr, "brindle-study: validation: %s\n", e.what());
    return 1;
  }
}

}  // namespace brindle::study
