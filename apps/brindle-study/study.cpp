#include "study.h"

#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>

#include "detail_study.h"
#include "json_writer.h"
#include "mesh_study.h"
#include "report.h"
#include "report_page.h"
#include "section_cut.h"
#include "section_study.h"
#include "terminal.h"

namespace brindle::study {
namespace {

// What the study was asked: the options as given, and the materials and boundaries of a mesh.
JsonObject InputsJson(const Options& options) {
  JsonObject inputs;
  inputs.Add("inside_C", options.inside)
      .Add("outside_C", options.outside)
      .Add("output", AbsolutePath(options.output))
      .Add("isotherm_levels", options.levels);
  if (options.mesh.empty()) {
    inputs
        .Add("examples", std::string(options.run2d ? "2d" : "") +
                             (options.run2d && options.run3d ? " " : "") +
                             (options.run3d ? "3d" : ""))
        .Add("refine", options.refine)
        .Add("refine3d", options.refine3d)
        .Add("mesh_check", options.convergence);
  } else {
    JsonObject conductivities;
    for (const auto& [ref, k] : options.assignment.conductivity)
      conductivities.Add(std::to_string(ref), k);
    auto refs = [](const std::vector<int>& values) {
      return std::vector<double>(values.begin(), values.end());
    };
    inputs.Add("mesh", AbsolutePath(options.mesh))
        .Add("conductivity_W_per_mK", conductivities)
        .Add("low_references", refs(options.assignment.low))
        .Add("high_references", refs(options.assignment.high))
        .Add("surface_references", refs(options.assignment.surface));
  }
  if (options.sectionGiven)
    inputs.Add("section", PlaneName({options.sectionAxis, options.sectionOffset}));
  return inputs;
}

}  // namespace

int RunStudy(const Options& options) {
  const Progress progress;
  try {
    std::filesystem::create_directories(options.output);
    JsonObject summary;
    summary.Add("version", StudyVersion())
        .Add("inputs", InputsJson(options))
        .Add("inside_C", options.inside)
        .Add("outside_C", options.outside);
    if (!options.mesh.empty()) {
      summary.Add("study", RunMeshStudy(options, progress));
    } else {
      if (options.run2d) summary.Add("slab_2d", RunSlabExample(options, progress));
      if (options.run3d) summary.Add("steel_3d", RunSteelExample(options, progress));
    }
    const std::string path = options.output + "/summary.json";
    std::ofstream out(path);
    out << summary.Render() << '\n';
    if (!out) throw std::runtime_error("cannot write " + path);
    progress.Line("wrote " + path);

    std::vector<ReportStudy> studies;
    if (!options.mesh.empty()) {
      studies.push_back({"study", "Study of " + options.mesh, FiguresIn(options.output, "mesh-")});
    } else {
      if (options.run2d) {
        std::vector<ReportFigure> figures = FiguresIn(options.output, "slab-2d");
        for (const ReportFigure& wall : FiguresIn(options.output, "wall-2d"))
          figures.push_back(wall);
        studies.push_back(
            {"slab_2d", "2-D example: concrete floor slab through the insulation", figures});
      }
      if (options.run3d)
        studies.push_back({"steel_3d", "3-D example: steel bar through an insulated wall",
                           FiguresIn(options.output, "steel-3d")});
    }
    const std::string page = options.output + "/report.html";
    WriteReportPage(page, nlohmann::ordered_json::parse(summary.Render()), studies);
    progress.Line("wrote " + page);
    return 0;
  } catch (const std::exception& e) {
    std::fprintf(stderr, "brindle-study: %s\n", e.what());
    return 1;
  }
}

}  // namespace brindle::study
