// The 2-D thermal-bridge study: solve a section and its undisturbed wall, derive L2D, psi and the
// temperature factor, and write the pictures.
#ifndef BRINDLE_STUDY_SECTION_STUDY_H
#define BRINDLE_STUDY_SECTION_STUDY_H

#include <vector>

#include <nlohmann/json.hpp>
#include "color_scale.h"
#include "examples.h"
#include "grading.h"
#include "model.h"
#include "options.h"
#include "report.h"
#include "solve.h"
#include "svg_writer.h"

namespace brindle::study {

// Element sizes of the 2-D example at level 0.
MeshSizes SectionSizes();

// Isotherm levels i/(n+1), i = 1..n, between the cold (0) and the warm (1) edge.
std::vector<double> EvenLevels(int count);

struct SectionRun {
  TriMesh mesh;
  SurfaceSolution solution;
  double flow = 0.0;        // mean heat flow across the isotherms, W/(m K)
  double flowSpread = 0.0;  // (largest - smallest) / mean of the isotherm flows
  double minFactor = 0.0;   // lowest temperature factor on the interior surface
  Point coldest{0, 0, 0};   // where it occurs
};

// Solves a section through the study engine and traces the isotherms of its field.
SectionRun SolveSection(const Detail& detail, const MeshSizes& sizes, int levels);

// psi against the undisturbed wall from the same model, with the wall length of the detail.
struct SlabFigures {
  double l2d = 0.0;       // W/(m K)
  double wallFlow = 0.0;  // W/(m K), undisturbed wall over the same length
  double uHand = 0.0;     // W/(m2 K), series resistances
  double psi = 0.0;       // W/(m K), external dimensions
  double fRsi = 0.0;
};
SlabFigures CompareWithWall(const SectionRun& slab, const SectionRun& wall, const Detail& detail);

// Solves the slab example and its undisturbed wall at one mesh level.
SlabFigures SolveSlabExample(int refine, int levels, SectionRun* slab = nullptr,
                             SectionRun* wall = nullptr);

// Temperatures in °C and heat-flux densities in W/m² of a solved section.
std::vector<double> SectionCelsius(const SectionRun& run, const TemperaturePair& pair);
std::vector<double> SectionFluxDensity(const SectionRun& run, const TemperaturePair& pair);

// A solved section coloured by temperature on the study's scale (from the outside to the inside
// temperature), with about `isotherms` labelled isotherms at round temperatures and the coldest
// interior point marked.
SvgPicture SectionPicture(const SectionRun& run, const TemperaturePair& pair,
                          const std::vector<std::string>& title, int isotherms = 9);

// The same section coloured by heat-flux density on a scale shared by the study's pictures.
SvgPicture SectionFluxPicture(const SectionRun& run, const TemperaturePair& pair,
                              const ColorScale& scale, const std::vector<std::string>& title,
                              int isotherms = 9);

// VTK fields of a solved section: temperatures, heat flux density and material.
void WriteSectionVtk(const std::string& path, const SectionRun& run, const TemperaturePair& pair);

// Runs the built-in 2-D example with its report, pictures and summary entry.
nlohmann::json RunSlabExample(const Options& options, const Progress& progress);

}  // namespace brindle::study

#endif
