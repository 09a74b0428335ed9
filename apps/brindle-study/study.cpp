#include "study.h"

#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>

#include "detail_study.h"
#include "mesh_source.h"
#include "mesh_study.h"
#include "report.h"
#include "report_page.h"
#include "section_cut.h"
#include "section_study.h"
#include "study_engine.h"
#include "study_pictures.h"
#include "terminal.h"

namespace brindle::study {
namespace {

// What the study was asked: the options as given (a study file's own content is added by the
// caller).
nlohmann::json InputsJson(const Options& options) {
  nlohmann::json inputs = {{"inside_C", options.inside},
                           {"outside_C", options.outside},
                           {"output", AbsolutePath(options.output)},
                           {"isotherm_levels", options.levels}};
  if (!options.study.empty()) {
    inputs["study_file"] = AbsolutePath(options.study);
    inputs["check_convergence"] = options.checkConvergence;
  } else if (options.mesh.empty()) {
    inputs["examples"] = std::string(options.run2d ? "2d" : "") +
                         (options.run2d && options.run3d ? " " : "") + (options.run3d ? "3d" : "");
    inputs["refine"] = options.refine;
    inputs["refine3d"] = options.refine3d;
    inputs["mesh_check"] = options.convergence;
  } else {
    inputs["mesh"] = AbsolutePath(options.mesh);
  }
  if (options.sectionGiven)
    inputs["section"] = PlaneName({options.sectionAxis, options.sectionOffset});
  return inputs;
}

// Runs a study file (or the --mesh shorthand) and draws it: the engine's summary with the
// pictures and files added under "pictures".
nlohmann::json RunUserStudy(const nlohmann::json& study, const std::string& baseDir,
                            const std::string& source, const Options& options,
                            const Progress& progress) {
  const StudyDefinition definition = ParseStudy(study, source);
  StudyMesh mesh;
  {
    const LibraryOutputToLog quiet(LibraryLogPath(options));  // meshing may talk too
    mesh = LoadStudyMesh(definition, baseDir);
  }
  const SolvedStudy solved = RunStudyWithOutcome(study, &mesh, baseDir, options.output, source);
  StudyPictureRequest request;
  request.folder = options.output;
  request.caption = source;
  for (const auto& material : definition.materials)
    request.conductivity.push_back(material.second);
  request.symmetryFactor = definition.symmetryFactor;
  request.isotherms = options.levels;
  request.sectionGiven = options.sectionGiven;
  request.section = {options.sectionAxis, options.sectionOffset};
  nlohmann::json summary = solved.summary;
  summary["pictures"] = WriteStudyPictures(solved.outcome, mesh, request);
  for (const auto& file : summary["pictures"]["files"])
    progress.Line("wrote " + file.get<std::string>());
  return summary;
}

}  // namespace

int RunStudy(const Options& options) {
  const Progress progress;
  try {
    std::filesystem::create_directories(options.output);
    nlohmann::json summary;
    summary["version"] = StudyVersion();
    summary["inputs"] = InputsJson(options);
    std::vector<ReportStudy> studies;
    if (!options.study.empty()) {
      nlohmann::json study = ReadStudyFile(options.study);
      if (options.checkConvergence && study.is_object()) study["check_convergence"] = true;
      summary["inputs"]["study"] = study;
      const std::string baseDir = std::filesystem::path(options.study).parent_path().string();
      summary["study"] =
          RunUserStudy(study, baseDir.empty() ? "." : baseDir, options.study, options, progress);
      studies.push_back({"study", "Study " + options.study, FiguresIn(options.output, "study")});
    } else if (!options.mesh.empty()) {
      nlohmann::json study = MeshShorthandStudy(options);
      if (options.checkConvergence) study["check_convergence"] = true;
      summary["inputs"]["study"] = study;
      summary["study"] = RunUserStudy(study, ".", "--mesh", options, progress);
      studies.push_back({"study", "Study of " + options.mesh, FiguresIn(options.output, "study")});
    } else {
      summary["inside_C"] = options.inside;
      summary["outside_C"] = options.outside;
      if (options.run2d) {
        summary["slab_2d"] = RunSlabExample(options, progress);
        std::vector<ReportFigure> figures = FiguresIn(options.output, "slab-2d");
        for (const ReportFigure& wall : FiguresIn(options.output, "wall-2d"))
          figures.push_back(wall);
        studies.push_back(
            {"slab_2d", "2-D example: concrete floor slab through the insulation", figures});
      }
      if (options.run3d) {
        summary["steel_3d"] = RunSteelExample(options, progress);
        studies.push_back({"steel_3d", "3-D example: steel bar through an insulated wall",
                           FiguresIn(options.output, "steel-3d")});
      }
    }
    const std::string path = options.output + "/summary.json";
    std::ofstream out(path);
    out << summary.dump(2) << '\n';
    if (!out) throw std::runtime_error("cannot write " + path);
    progress.Line("wrote " + path);

    const std::string page = options.output + "/report.html";
    WriteReportPage(page, nlohmann::ordered_json::parse(summary.dump()), studies);
    progress.Line("wrote " + page);
    return 0;
  } catch (const std::exception& e) {
    std::fprintf(stderr, "brindle-study: %s\n", e.what());
    return 1;
  }
}

}  // namespace brindle::study
