// Running a study end to end: mesh, solve, convergence check, report and files.
#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>

#include "geometry.h"
#include "mesh_intake.h"
#include "mesh_source.h"
#include "report.h"
#include "study_engine.h"
#include "terminal.h"
#include "vtk_writer.h"

namespace brindle::study {
namespace {

using nlohmann::json;

std::string Cell(const json& value, const char* format) {
  if (!value.is_number()) return "-";
  return Format(format, value.get<double>());
}

void PrintReport(const json& s) {
  const bool threeD = s["dimension"].get<int>() == 3;
  const std::string flowUnit = threeD ? "W" : "W/m";
  std::printf(
      "\n  %s study, %s elements%s\n", threeD ? "3-D" : "2-D", s["mesh"]["elements"].dump().c_str(),
      s["symmetry_factor"].get<double>() != 1.0
          ? Format(", results x %g for symmetry", s["symmetry_factor"].get<double>()).c_str()
          : "");
  std::printf("\n  %-16s %8s %10s %12s %10s %10s %8s\n", "environment", "T (C)", "R (m2K/W)",
              ("flow (" + flowUnit + ")").c_str(), "surf. min", "surf. max", "f min");
  for (const auto& [name, e] : s["environments"].items())
    std::printf("  %-16s %8.2f %10.3f %12.6g %10.3f %10.3f %8s\n", name.c_str(),
                e["temperature_C"].get<double>(), e["surface_resistance"].get<double>(),
                e["heat_flow"].get<double>(), e["surface_temperature_min_C"].get<double>(),
                e["surface_temperature_max_C"].get<double>(),
                Cell(e["temperature_factor_min"], "%.4f").c_str());
  std::printf("\n  Coldest surface points (m) and the weighting factors there:\n");
  for (const auto& [name, e] : s["environments"].items()) {
    const json& at = e["surface_temperature_min_at"];
    std::string factors;
    for (const auto& [other, g] : s["weighting_factors"][name].items())
      factors += Format("  g %s %.3f", other.c_str(), g.get<double>());
    std::printf("    %-16s (%.4f, %.4f, %.4f)%s\n", name.c_str(), at[0].get<double>(),
                at[1].get<double>(), at[2].get<double>(), factors.c_str());
  }
  std::printf("\n  Coupling coefficients L (%s):\n", s["coupling_unit"].get<std::string>().c_str());
  for (const auto& [a, row] : s["coupling_coefficients"].items())
    for (const auto& [b, l] : row.items())
      if (a < b) std::printf("    %-16s - %-16s %.6g\n", a.c_str(), b.c_str(), l.get<double>());
  for (const char* key : {"psi", "chi"})
    if (s.contains(key)) {
      const json& r = s[key];
      std::printf("\n  %s between %s and %s: %.6g %s (L %.6g minus reference %.6g)\n", key,
                  r["between"][0].get<std::string>().c_str(),
                  r["between"][1].get<std::string>().c_str(), r["value"].get<double>(),
                  r["unit"].get<std::string>().c_str(), r["coupling_coefficient"].get<double>(),
                  r["reference_coupling"].get<double>());
    }
  if (!s["probes"].empty()) {
    std::printf("\n  Probes:\n");
    for (const auto& [label, p] : s["probes"].items())
      std::printf("    %-12s %8.3f C\n", label.c_str(), p["temperature_C"].get<double>());
  }
  if (s.contains("convergence")) {
    const json& c = s["convergence"];
    std::printf("\n  Convergence: the mesh refined once (%s elements) changes the results by\n",
                c["refined_elements"].dump().c_str());
    for (const auto& [what, change] : c["changes"].items())
      std::printf("    %-44s %+7.3f %%%s\n", what.c_str(), 100.0 * change.get<double>(),
                  std::abs(change.get<double>()) > 0.01 ? "  above 1 %" : "");
    if (!c["converged"].get<bool>())
      std::printf(
          "  warning: a change above 1 %%: refine the mesh until one more refinement\n"
          "  changes the results by less than 1 %%\n");
  }
  std::printf("\n");
}

// Relative change of every heat flow and surface-temperature extreme between two runs
// (temperatures relative to the largest difference between environments).
json Changes(const json& coarse, const json& fine) {
  double spread = 0.0;
  for (const auto& [a, ea] : coarse["environments"].items())
    for (const auto& [b, eb] : coarse["environments"].items())
      spread =
          std::max(spread, ea["temperature_C"].get<double>() - eb["temperature_C"].get<double>());
  json changes = json::object();
  for (const auto& [name, c] : coarse["environments"].items()) {
    const json& f = fine["environments"][name];
    const double q = c["heat_flow"].get<double>();
    changes[name + " heat_flow"] = q != 0.0 ? (f["heat_flow"].get<double>() - q) / q : 0.0;
    for (const char* key : {"surface_temperature_min_C", "surface_temperature_max_C"})
      changes[name + " " + key] =
          spread > 0.0 ? (f[key].get<double>() - c[key].get<double>()) / spread : 0.0;
  }
  return changes;
}

void WriteOutcomeVtk(const std::string& path, const StudyOutcome& o) {
  VtkFields fields;
  fields.pointScalars.push_back({"temperature_C", o.temperature});
  fields.cellIntegers.push_back({"material", o.material});
  if (o.dimension == 3) {
    TetMesh mesh;
    mesh.points = o.points;
    for (const auto& e : o.elements)
      mesh.tetrahedra.push_back(e);
    WriteVtk(path, "brindle-study", mesh, fields);
  } else {
    TriMesh mesh;
    mesh.points = o.points;
    for (const auto& e : o.elements)
      mesh.triangles.push_back({e[0], e[1], e[2]});
    WriteVtk(path, "brindle-study", mesh, fields);
  }
}

}  // namespace

SolvedStudy RunStudyWithOutcome(const json& study, const StudyMesh* mesh,
                                const std::string& baseDir, const std::string& outputDir,
                                const std::string& source) {
  const StudyDefinition definition = ParseStudy(study, source);
  StudyMesh loaded;
  double readSeconds = 0.0;
  if (!mesh) {
    const auto start = std::chrono::steady_clock::now();
    loaded = LoadStudyMesh(definition, baseDir);
    readSeconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    mesh = &loaded;
  }
  // The library's own progress lines go to the output folder's log, not into the report.
  const std::string log = outputDir.empty() ? std::string() : outputDir + "/library.log";
  SolvedStudy solved = [&] {
    const LibraryOutputToLog quiet(log);
    return SolveStudy(definition, *mesh);
  }();
  solved.summary["solver"]["read_seconds"] = readSeconds;
  if (definition.checkConvergence) {
    const SolvedStudy fine = [&] {
      const LibraryOutputToLog quiet(log);
      return SolveStudy(definition, RefineUniformly(*mesh));
    }();
    const json changes = Changes(solved.summary, fine.summary);
    double largest = 0.0;
    for (const auto& [what, change] : changes.items())
      largest = std::max(largest, std::abs(change.get<double>()));
    solved.summary["convergence"] = {{"refined_elements", fine.summary["mesh"]["elements"]},
                                     {"changes", changes},
                                     {"largest_change", largest},
                                     {"converged", largest <= 0.01},
                                     {"refined", fine.summary["environments"]}};
  }
  PrintReport(solved.summary);
  if (!outputDir.empty()) {
    std::filesystem::create_directories(outputDir);
    const auto start = std::chrono::steady_clock::now();
    WriteOutcomeVtk(outputDir + "/study.vtk", solved.outcome);
    solved.summary["solver"]["write_seconds"] =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  }
  return solved;
}

json RunStudy(const json& study, const StudyMesh* mesh, const std::string& baseDir,
              const std::string& outputDir, const std::string& source) {
  return RunStudyWithOutcome(study, mesh, baseDir, outputDir, source).summary;
}

}  // namespace brindle::study
