#include "study.h"

#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>

#include "detail_study.h"
#include "json_writer.h"
#include "mesh_study.h"
#include "report.h"
#include "section_study.h"

namespace brindle::study {

int RunStudy(const Options& options) {
  const Progress progress;
  try {
    std::filesystem::create_directories(options.output);
    JsonObject summary;
    summary.Add("inside_C", options.inside).Add("outside_C", options.outside);
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
    return 0;
  } catch (const std::exception& e) {
    std::fprintf(stderr, "brindle-study: %s\n", e.what());
    return 1;
  }
}

}  // namespace brindle::study
