#include "detail_study.h"

#include <cmath>
#include <cstdio>
#include <limits>

#include "block_mesher.h"
#include "example_study.h"
#include "geometry.h"
#include "medit.h"
#include "report_page.h"
#include "terminal.h"
#include "volume_pictures.h"
#include "vtk_writer.h"

namespace brindle::study {

MeshSizes DetailSizes() {
  // 0.4 mm at the bar's edges at level 0, 0.2 mm at level 1 (the default): chi then changes by
  // less than 1 % between the two levels.
  return {0.0004, 0.2, 1.6};
}

DetailRun SolveDetail(const Detail& detail, const MeshSizes& sizes) {
  const SolvedStudy solved = SolveDetailStudy(detail, sizes, 3, {1.0, 0.0});
  const nlohmann::json& s = solved.summary;
  const double copies = detail.symmetryCopies;
  DetailRun run;
  run.mesh = OutcomeTetMesh(solved.outcome);
  run.solution.temperature = OutcomeFactor(solved.outcome, {1.0, 0.0});
  run.solution.flux = FactorFlux(solved.outcome, run.solution.temperature);
  run.solution.warmFlow = s["environments"]["inside"]["heat_flow"].get<double>() / copies;
  run.solution.coldFlow = -s["environments"]["outside"]["heat_flow"].get<double>() / copies;
  run.solution.residual = s["solver"]["worst_squared_residual"].get<double>();
  run.solution.converged = s["solver"]["converged"].get<bool>();
  run.flow = s["coupling_coefficients"]["inside"]["outside"].get<double>() / copies;
  run.minFactor = s["environments"]["inside"]["temperature_factor_min"].get<double>();
  run.coldest = solved.outcome.coldest[0];
  return run;
}

void WriteDetailVtk(const std::string& path, const DetailRun& run, const TemperaturePair& pair) {
  WriteVtk(path, "brindle-study 3-D detail", run.mesh,
           TemperatureFields(run.solution.temperature, run.solution.flux, run.mesh.region,
                             run.mesh.materials, pair));
}

nlohmann::json RunSteelExample(const Options& options, const Progress& progress) {
  const TemperaturePair pair{options.inside, options.outside};
  const Detail detail = SteelBarDetail();
  progress.Line("3-D example: 40 mm square steel bar through an insulated concrete wall");
  const std::string log = LibraryLogPath(options);
  const DetailRun run = [&] {
    const LibraryOutputToLog quiet(log);
    return SolveDetail(detail, DetailSizes().Refined(options.refine3d));
  }();
  progress.Line(
      Format("  solved %zu tetrahedra, %zu vertices (a quarter of the detail; the "
             "solver %s, squared residual %.3g)",
             run.mesh.tetrahedra.size(), run.mesh.points.size(),
             run.solution.converged ? "converged" : "stopped at its iteration limit",
             run.solution.residual));
  const double copies = detail.symmetryCopies;
  const double flow = copies * run.flow;
  const double area = copies * detail.wallArea;
  const double u = SeriesUValue(detail.wall);
  const double chi = flow - u * area;
  std::printf(
      "\n  Heat flow through %.2f m2 of wall with the bar: %.4f W/K (warm side %.4f, cold side "
      "%.4f W/K)\n",
      area, flow, copies * run.solution.warmFlow, copies * run.solution.coldFlow);
  std::printf(
      "  Undisturbed wall: U = %.4f W/(m2 K); point thermal transmittance of the bar:\n"
      "    chi = Q - U A = %.4f - %.4f = %.4f W/K\n",
      u, flow, u * area, chi);
  std::printf(
      "  Lowest interior surface temperature factor: f_Rsi = %.3f at (%.3f, %.3f, %.3f) m\n",
      run.minFactor, run.coldest[0], run.coldest[1], run.coldest[2]);
  std::printf(
      "  At %.1f C inside and %.1f C outside: lowest interior surface temperature %.1f C,"
      " heat loss %.2f W.\n\n",
      pair.inside, pair.outside, pair.Celsius(run.minFactor), flow * pair.Difference());
  std::fflush(stdout);

  nlohmann::json check;  // filled by the mesh check
  if (options.convergence && options.refine3d > 0) {
    const DetailRun coarse = [&] {
      const LibraryOutputToLog quiet(log);
      return SolveDetail(detail, DetailSizes().Refined(options.refine3d - 1));
    }();
    const double coarseChi = copies * coarse.flow - u * area;
    const double change = std::abs(chi / coarseChi - 1.0);
    progress.Line(
        Format("  mesh check: level %d gives chi = %.4f W/K, level %d %.4f W/K "
               "(change %.1f %%)",
               options.refine3d - 1, coarseChi, options.refine3d, chi, 100 * change));
    if (change > 0.01)
      progress.Line(
          Format("  warning: chi changes by %.1f %% (more than 1 %%) between the two finest levels;"
                 " run a finer one (--refine3d %d)",
                 100 * change, options.refine3d + 1));
    check = {{"levels", {options.refine3d - 1, options.refine3d}},
             {"chi_W_per_K", {coarseChi, chi}},
             {"finest_change", change}};
  }

  const std::string vtk = options.output + "/steel-3d.vtk";
  WriteDetailVtk(vtk, run, pair);
  VolumeOutcome outcome;
  outcome.sectionGiven = options.sectionGiven;
  outcome.section = {options.sectionAxis, options.sectionOffset};
  outcome.caption = "Steel bar through an insulated concrete wall (a quarter of the detail)";
  outcome.mesh = &run.mesh;
  for (double t : run.solution.temperature)
    outcome.temperature.push_back(pair.Celsius(t));
  outcome.environments = {
      {"inside", pair.inside, false, SolidFacesTowards(run.mesh, Role::kWarmLayer)},
      {"outside", pair.outside, true, SolidFacesTowards(run.mesh, Role::kColdLayer)}};
  outcome.symmetry = {{1, 0.0}, {2, 0.0}};  // the bar's axis is the x axis
  const VolumePictureFiles pictures = WriteVolumePictures(options.output, "steel-3d", outcome);
  for (const std::string& file : pictures.files)
    progress.Line("  wrote " + file);
  const std::string study = WriteExampleStudy(options.output, "steel-3d", detail,
                                              DetailSizes().Refined(options.refine3d), 3, pair);
  PrintOwnStudyCommand(progress, options.program, vtk, study);
  nlohmann::json json = {
      {"materials", MaterialsJson(detail.materials)},
      {"heat_flow_W_per_K", flow},
      {"wall_area_m2", area},
      {"U_by_hand_W_per_m2K", u},
      {"chi_W_per_K", chi},
      {"fRsi", run.minFactor},
      {"coldest_surface_point_m", {run.coldest[0], run.coldest[1], run.coldest[2]}},
      {"min_interior_surface_temperature_C", pair.Celsius(run.minFactor)},
      {"heat_loss_W", flow * pair.Difference()},
      {"solver_converged", run.solution.converged},
      {"tetrahedra", run.mesh.tetrahedra.size()},
      {"vertices", run.mesh.points.size()},
      {"surface_extremes", ExtremesJson(pictures.extremes)},
      {"section_plane", PlaneName(pictures.section)}};
  if (options.convergence && options.refine3d > 0) json["mesh_check"] = check;
  return json;
}

}  // namespace brindle::study
