#include "study.h"

#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>

#include "detail_study.h"
#include "mesh_study.h"
#include "report.h"
#include "section_study.h"
#include "study_engine.h"

namespace brindle::study {

int RunStudy(const Options& options) {
  const Progress progress;
  try {
    std::filesystem::create_directories(options.output);
    nlohmann::json summary;
    if (!options.study.empty()) {
      nlohmann::json study = ReadStudyFile(options.study);
      if (options.checkConvergence && study.is_object()) study["check_convergence"] = true;
      const std::string baseDir = std::filesystem::path(options.study).parent_path().string();
      summary["study"] =
          RunStudy(study, nullptr, baseDir.empty() ? "." : baseDir, options.output, options.study);
    } else if (!options.mesh.empty()) {
      nlohmann::json study = MeshShorthandStudy(options);
      if (options.checkConvergence) study["check_convergence"] = true;
      summary["study"] = RunStudy(study, nullptr, ".", options.output, "--mesh");
    } else {
      summary["inside_C"] = options.inside;
      summary["outside_C"] = options.outside;
      if (options.run2d) summary["slab_2d"] = RunSlabExample(options, progress);
      if (options.run3d) summary["steel_3d"] = RunSteelExample(options, progress);
    }
    const std::string path = options.output + "/summary.json";
    std::ofstream out(path);
    out << summary.dump(2) << '\n';
    if (!out) throw std::runtime_error("cannot write " + path);
    progress.Line("wrote " + path);
    return 0;
  } catch (const std::exception& e) {
    std::fprintf(stderr, "brindle-study: %s\n", e.what());
    return 1;
  }
}

}  // namespace brindle::study
