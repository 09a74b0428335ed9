#include "section_study.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "block_mesher.h"
#include "brindle.h"
#include "example_study.h"
#include "flat_picture.h"
#include "geometry.h"
#include "medit.h"
#include "report_page.h"
#include "terminal.h"
#include "vtk_writer.h"

namespace brindle::study {

MeshSizes SectionSizes() {
  return {0.004, 0.05, 1.3};
}

std::vector<double> EvenLevels(int count) {
  std::vector<double> levels;
  for (int i = 1; i <= count; ++i)
    levels.push_back(double(i) / (count + 1));
  return levels;
}

SectionRun SolveSection(const Detail& detail, const MeshSizes& sizes, int levels) {
  const SolvedStudy solved = SolveDetailStudy(detail, sizes, 2, {1.0, 0.0});
  const nlohmann::json& inside = solved.summary["environments"]["inside"];
  SectionRun run;
  run.mesh = OutcomeTriMesh(solved.outcome);
  // The same field again from the surface solver, which also traces the isotherms.
  run.solution = SolveSurface(run.mesh, EvenLevels(levels));
  run.flow = solved.summary["coupling_coefficients"]["inside"]["outside"].get<double>();
  const auto& flows = run.solution.levelFlow;
  const auto [low, high] = std::minmax_element(flows.begin(), flows.end());
  run.flowSpread = (*high - *low) / run.flow;
  run.minFactor = inside["temperature_factor_min"].get<double>();
  run.coldest = solved.outcome.coldest[0];
  return run;
}

SlabFigures CompareWithWall(const SectionRun& slab, const SectionRun& wall, const Detail& detail) {
  SlabFigures figures;
  figures.l2d = slab.flow;
  figures.wallFlow = wall.flow;
  figures.uHand = SeriesUValue(detail.wall);
  figures.psi = slab.flow - wall.flow;
  figures.fRsi = slab.minFactor;
  return figures;
}

SlabFigures SolveSlabExample(int refine, int levels, SectionRun* slabOut, SectionRun* wallOut) {
  const MeshSizes sizes = SectionSizes().Refined(refine);
  const Detail slabDetail = SlabSection(true);
  const Detail wallDetail = SlabSection(false);
  SectionRun slab = SolveSection(slabDetail, sizes, levels);
  SectionRun wall = SolveSection(wallDetail, sizes, levels);
  const SlabFigures figures = CompareWithWall(slab, wall, slabDetail);
  if (slabOut) *slabOut = std::move(slab);
  if (wallOut) *wallOut = std::move(wall);
  return figures;
}

std::vector<double> SectionCelsius(const SectionRun& run, const TemperaturePair& pair) {
  std::vector<double> celsius;
  for (double t : run.solution.temperature)
    celsius.push_back(pair.Celsius(t));
  return celsius;
}

std::vector<double> SectionFluxDensity(const SectionRun& run, const TemperaturePair& pair) {
  std::vector<double> density;
  for (const Point& q : run.solution.flux)
    density.push_back(Norm(q) * std::abs(pair.Difference()));
  return density;
}

namespace {

void MarkColdest(SvgPicture& picture, const SectionRun& run, const TemperaturePair& pair) {
  if (std::isnan(run.minFactor)) return;
  picture.markers.push_back({run.coldest, Format("coldest %.1f °C, f = %.3f",
                                                 pair.Celsius(run.minFactor), run.minFactor)});
}

}  // namespace

SvgPicture SectionPicture(const SectionRun& run, const TemperaturePair& pair,
                          const std::vector<std::string>& title, int isotherms) {
  SvgPicture picture =
      TemperaturePicture(run.mesh, SectionCelsius(run, pair),
                         TemperatureScale({pair.inside, pair.outside}), isotherms, title);
  MarkColdest(picture, run, pair);
  return picture;
}

SvgPicture SectionFluxPicture(const SectionRun& run, const TemperaturePair& pair,
                              const ColorScale& scale, const std::vector<std::string>& title,
                              int isotherms) {
  SvgPicture picture = FluxPicture(run.mesh, SectionFluxDensity(run, pair),
                                   SectionCelsius(run, pair), scale, isotherms, title);
  MarkColdest(picture, run, pair);
  return picture;
}

void WriteSectionVtk(const std::string& path, const SectionRun& run, const TemperaturePair& pair) {
  WriteVtk(path, "brindle-study 2-D section", run.mesh,
           TemperatureFields(run.solution.temperature, run.solution.flux, run.mesh.region,
                             run.mesh.materials, pair));
}

namespace {

nlohmann::json FiguresJson(const SlabFigures& f, const SectionRun& slab, const SectionRun& wall,
                           const Detail& detail, const TemperaturePair& pair) {
  return {{"materials", MaterialsJson(detail.materials)},
          {"L2D_W_per_mK", f.l2d},
          {"isotherm_flows_W_per_mK", slab.solution.levelFlow},
          {"isotherm_levels", slab.solution.levels},
          {"isotherm_flow_spread", slab.flowSpread},
          {"reaction_flow_W_per_mK", slab.solution.warmFlow},
          {"wall_length_m", detail.wallLength},
          {"U_by_hand_W_per_m2K", f.uHand},
          {"U_from_model_W_per_m2K", wall.flow / detail.wallLength},
          {"undisturbed_wall_flow_W_per_mK", f.wallFlow},
          {"psi_W_per_mK", f.psi},
          {"fRsi", f.fRsi},
          {"coldest_surface_point_m", {slab.coldest[0], slab.coldest[1]}},
          {"min_interior_surface_temperature_C", pair.Celsius(f.fRsi)},
          {"heat_loss_W_per_m", f.l2d * pair.Difference()},
          {"triangles", slab.mesh.triangles.size()},
          {"vertices", slab.mesh.points.size()}};
}

}  // namespace

nlohmann::json RunSlabExample(const Options& options, const Progress& progress) {
  const TemperaturePair pair{options.inside, options.outside};
  const Detail detail = SlabSection(true);
  progress.Line(
      "2-D example: concrete floor slab through the insulation of a "
      "masonry wall");
  SectionRun slab, wall;
  const std::string log = LibraryLogPath(options);
  const SlabFigures f = [&] {
    const LibraryOutputToLog quiet(log);
    return SolveSlabExample(options.refine, options.levels, &slab, &wall);
  }();
  progress.Line(
      Format("  solved the section (%zu triangles, %zu vertices) and the undisturbed "
             "wall (%zu triangles)",
             slab.mesh.triangles.size(), slab.mesh.points.size(), wall.mesh.triangles.size()));
  const double uModel = wall.flow / detail.wallLength;
  std::printf(
      "\n  Undisturbed wall: U = %.4f W/(m2 K) from the series "
      "resistances, %.4f W/(m2 K) from "
      "the model (%+.3f %%)\n",
      f.uHand, uModel, 100.0 * (uModel / f.uHand - 1.0));
  std::printf(
      "  Heat flow through the section per metre of slab edge and per kelvin:\n"
      "    L2D = %.4f W/(m K)   (mean over %zu isotherms, which agree within "
      "%.3f %%;\n"
      "                          the flow into the warm edge is %.4f W/(m "
      "K))\n",
      f.l2d, slab.solution.levels.size(), 100.0 * slab.flowSpread, slab.solution.warmFlow);
  std::printf(
      "  Linear thermal transmittance (external dimensions, wall "
      "length %.2f m):\n"
      "    psi = L2D - U l = %.4f - %.4f = %.4f W/(m K)\n",
      detail.wallLength, f.l2d, f.wallFlow, f.psi);
  std::printf(
      "  Lowest interior surface temperature factor: f_Rsi = %.3f at x "
      "= %.3f m, y = %.3f m\n",
      f.fRsi, slab.coldest[0], slab.coldest[1]);
  std::printf(
      "  At %.1f C inside and %.1f C outside: lowest interior surface "
      "temperature %.1f C,\n"
      "    heat loss %.2f W per metre of slab edge, of which %.2f W is "
      "due to the slab.\n\n",
      pair.inside, pair.outside, pair.Celsius(f.fRsi), f.l2d * pair.Difference(),
      f.psi * pair.Difference());
  std::fflush(stdout);

  nlohmann::json json = FiguresJson(f, slab, wall, detail, pair);
  if (options.convergence) {
    std::vector<double> refineLevels, psis;
    for (int level = std::max(0, options.refine - 2); level <= options.refine; ++level) {
      const double psi = level == options.refine ? f.psi : [&] {
        const LibraryOutputToLog quiet(log);
        return SolveSlabExample(level, options.levels).psi;
      }();
      refineLevels.push_back(level);
      psis.push_back(psi);
      progress.Line(Format("  mesh check: level %d gives psi = %.4f W/(m K)", level, psi));
    }
    const double change = std::abs(psis.back() / psis[psis.size() - 2] - 1.0);
    progress.Line(Format("  psi changes by %.3f %% between the two finest levels", 100 * change));
    if (change > 0.01)
      progress.Line(
          Format("  warning: more than 1 %%: the section is not converged; run a finer level"
                 " (--refine %d)",
                 options.refine + 1));
    json["mesh_check"] = {
        {"levels", refineLevels}, {"psi_W_per_mK", psis}, {"finest_change", change}};
  }

  // One flux scale for both pictures, so that the undisturbed wall compares with the slab.
  std::vector<double> densities = SectionFluxDensity(slab, pair);
  const std::vector<double> wallDensities = SectionFluxDensity(wall, pair);
  densities.insert(densities.end(), wallDensities.begin(), wallDensities.end());
  std::vector<double> areas = TriangleAreas(slab.mesh);
  const std::vector<double> wallAreas = TriangleAreas(wall.mesh);
  areas.insert(areas.end(), wallAreas.begin(), wallAreas.end());
  const ColorScale fluxScale =
      FluxScale(densities, areas, Format("W/m² at ΔT = %.0f K", std::abs(pair.Difference())));
  const std::vector<std::string> slabTitle = {
      "Concrete floor slab through the insulation of a masonry wall",
      Format("L2D = %.3f W/(m K), psi = %.3f W/(m K), f_Rsi = %.3f; %.0f °C inside, %.0f °C "
             "outside",
             f.l2d, f.psi, f.fRsi, pair.inside, pair.outside)};
  const std::vector<std::string> wallTitle = {
      "Undisturbed wall (no slab)",
      Format("L = %.3f W/(m K), U = %.4f W/(m2 K)", wall.flow, uModel)};
  const std::string svg = options.output + "/slab-2d.svg";
  WriteSvg(svg, slab.mesh, SectionPicture(slab, pair, slabTitle, options.levels));
  WriteSvg(options.output + "/slab-2d-flux.svg", slab.mesh,
           SectionFluxPicture(slab, pair, fluxScale, slabTitle, options.levels));
  WriteSvg(options.output + "/wall-2d.svg", wall.mesh,
           SectionPicture(wall, pair, wallTitle, options.levels));
  WriteSvg(options.output + "/wall-2d-flux.svg", wall.mesh,
           SectionFluxPicture(wall, pair, fluxScale, wallTitle, options.levels));
  WriteSectionVtk(options.output + "/slab-2d.vtk", slab, pair);
  WriteSectionVtk(options.output + "/wall-2d.vtk", wall, pair);
  const std::string study = WriteExampleStudy(options.output, "slab-2d", detail,
                                              SectionSizes().Refined(options.refine), 2, pair);
  PrintOwnStudyCommand(
      progress, options.program,
      svg + ", slab-2d-flux.svg, wall-2d.svg, wall-2d-flux.svg, slab-2d.vtk, wall-2d.vtk", study);
  return json;
}

}  // namespace brindle::study
