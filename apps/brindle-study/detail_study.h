// The 3-D thermal-bridge study: a steel bar through an insulated wall.
#ifndef BRINDLE_STUDY_DETAIL_STUDY_H
#define BRINDLE_STUDY_DETAIL_STUDY_H

#include <nlohmann/json.hpp>
#include "examples.h"
#include "grading.h"
#include "model.h"
#include "options.h"
#include "report.h"
#include "solve.h"

namespace brindle::study {

// Element sizes of the 3-D example at level 0.
MeshSizes DetailSizes();

struct DetailRun {
  TetMesh mesh;
  VolumeSolution solution;
  double flow = 0.0;       // W/K through the modelled part, mean of warm and cold side
  double minFactor = 0.0;  // lowest temperature factor on the interior surface
  Point coldest{0, 0, 0};
};

DetailRun SolveDetail(const Detail& detail, const MeshSizes& sizes);

// VTK fields of a solved tetrahedral model: temperatures, heat flux density and material.
void WriteDetailVtk(const std::string& path, const DetailRun& run, const TemperaturePair& pair);

// Runs the built-in 3-D example with its report, VTK file and summary entry.
nlohmann::json RunSteelExample(const Options& options, const Progress& progress);

}  // namespace brindle::study

#endif
