#include "mesh_study.h"

namespace brindle::study {

nlohmann::json MeshShorthandStudy(const Options& options) {
  nlohmann::json materials = nlohmann::json::object();
  for (const auto& [ref, k] : options.assignment.conductivity)
    materials[std::to_string(ref)] = k;
  return {{"mesh", options.mesh},
          {"materials", materials},
          {"environments",
           {{"inside",
             {{"temperature", options.inside},
              {"surface_resistance", 0.0},
              {"boundaries", options.assignment.high}}},
            {"outside",
             {{"temperature", options.outside},
              {"surface_resistance", 0.0},
              {"boundaries", options.assignment.low}}}}}};
}

}  // namespace brindle::study
