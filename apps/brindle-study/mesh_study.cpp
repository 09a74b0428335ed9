#include "mesh_study.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>

#include "detail_study.h"
#include "medit.h"
#include "section_study.h"
#include "solve.h"
#include "terminal.h"
#include "user_model.h"
#include "volume_pictures.h"

namespace brindle::study {
namespace {

// Lowest temperature factor over the vertices of the --surface group (NaN without one).
template <class Mesh>
double LowestOnSurface(const Mesh& mesh, const std::vector<double>& temperature) {
  double lowest = std::numeric_limits<double>::quiet_NaN();
  for (std::size_t v = 0; v < mesh.points.size(); ++v)
    if (mesh.onSurface[v] && !(temperature[v] >= lowest)) lowest = temperature[v];
  return lowest;
}

void PrintTemperatures(double lowest, const TemperaturePair& pair) {
  if (std::isnan(lowest)) return;
  std::printf("  Lowest temperature on the --surface group: factor %.3f, %.1f C\n", lowest,
              pair.Celsius(lowest));
}

// The boundary triangles with one of the references, pointing out of the solid.
std::vector<std::array<int, 3>> BoundaryFaces(const TetMesh& mesh, const MeditMesh& medit,
                                              const std::vector<int>& refs) {
  std::vector<std::array<int, 3>> faces;
  for (std::size_t f = 0; f < medit.triangles.size(); ++f)
    if (std::find(refs.begin(), refs.end(), medit.triangleRef[f]) != refs.end())
      faces.push_back(medit.triangles[f]);
  return OrientOutOfSolid(mesh, faces);
}

// The element references in the order the model numbers its materials (ascending).
std::vector<int> SortedReferences(std::vector<int> refs) {
  std::sort(refs.begin(), refs.end());
  refs.erase(std::unique(refs.begin(), refs.end()), refs.end());
  return refs;
}

bool IsFlat(const TriMesh& mesh) {
  return std::all_of(mesh.points.begin(), mesh.points.end(),
                     [&](const Point& p) { return p[2] == mesh.points.front()[2]; });
}

}  // namespace

JsonObject RunMeshStudy(const Options& options, const Progress& progress) {
  const TemperaturePair pair{options.inside, options.outside};
  const MeditMesh medit = ReadMedit(options.mesh);
  progress.Line(Format("read %s: %zu vertices, %zu triangles, %zu tetrahedra", options.mesh.c_str(),
                       medit.vertices.size(), medit.triangles.size(), medit.tetrahedra.size()));
  JsonObject json;
  json.Add("mesh", options.mesh);
  if (IsVolumeMesh(medit)) {
    DetailRun run;
    run.mesh = BuildVolumeModel(medit, options.assignment);
    {
      const LibraryOutputToLog quiet(LibraryLogPath(options));
      run.solution = SolveVolume(run.mesh);
    }
    run.flow = 0.5 * (run.solution.warmFlow + run.solution.coldFlow);
    progress.Line(Format("solved the volume model (%s)",
                         run.solution.converged ? "converged" : "iteration limit reached"));
    const double lowest = LowestOnSurface(run.mesh, run.solution.temperature);
    std::printf(
        "\n  Heat flow from the --high to the --low side: %.6g W/K "
        "(warm side %.6g, cold "
        "side %.6g), %.6g W at %.1f C / %.1f C\n",
        run.flow, run.solution.warmFlow, run.solution.coldFlow, run.flow * pair.Difference(),
        pair.inside, pair.outside);
    PrintTemperatures(lowest, pair);
    std::printf("\n");
    const std::string vtk = options.output + "/mesh-3d.vtk";
    WriteDetailVtk(vtk, run, pair, SortedReferences(medit.tetrahedronRef));
    progress.Line("wrote " + vtk);
    VolumeOutcome outcome;
    outcome.caption = options.mesh;
    outcome.mesh = &run.mesh;
    for (double t : run.solution.temperature)
      outcome.temperature.push_back(pair.Celsius(t));
    outcome.environments = {
        {"high side", pair.inside, false, BoundaryFaces(run.mesh, medit, options.assignment.high)},
        {"low side", pair.outside, true, BoundaryFaces(run.mesh, medit, options.assignment.low)}};
    outcome.sectionGiven = options.sectionGiven;
    outcome.section = {options.sectionAxis, options.sectionOffset};
    const VolumePictureFiles pictures = WriteVolumePictures(options.output, "mesh-3d", outcome);
    for (const std::string& file : pictures.files)
      progress.Line("wrote " + file);
    json.Add("surface_extremes", ExtremesJson(pictures.extremes))
        .Add("section_plane", PlaneName(pictures.section));
    json.Add("kind", "volume")
        .Add("heat_flow_W_per_K", run.flow)
        .Add("warm_side_flow_W_per_K", run.solution.warmFlow)
        .Add("cold_side_flow_W_per_K", run.solution.coldFlow)
        .Add("lowest_surface_factor", lowest)
        .Add("solver_converged", run.solution.converged);
    return json;
  }

  SectionRun run;
  run.mesh = BuildSurfaceModel(medit, options.assignment);
  {
    const LibraryOutputToLog quiet(LibraryLogPath(options));
    run.solution = SolveSurface(run.mesh, EvenLevels(options.levels));
  }
  double sum = 0.0;
  for (double f : run.solution.levelFlow)
    sum += f;
  run.flow = sum / run.solution.levelFlow.size();
  progress.Line("solved the surface model");
  const double lowest = LowestOnSurface(run.mesh, run.solution.temperature);
  std::printf(
      "\n  Heat flow per metre of depth from the --high to the --low side:\n"
      "    %.6g W/(m K) across the isotherms, %.6g W/(m K) into the warm "
      "side\n",
      run.flow, run.solution.warmFlow);
  PrintTemperatures(lowest, pair);
  std::printf("\n");
  const std::string vtk = options.output + "/mesh-2d.vtk";
  WriteSectionVtk(vtk, run, pair, SortedReferences(medit.triangleRef));
  progress.Line("wrote " + vtk);
  if (IsFlat(run.mesh)) {
    const std::string svg = options.output + "/mesh-2d.svg";
    WriteSvg(svg, run.mesh,
             SectionPicture(run, pair, {options.mesh, Format("%.4g W/(m K)", run.flow)}));
    progress.Line("wrote " + svg);
  }
  json.Add("kind", "surface")
      .Add("heat_flow_W_per_mK", run.flow)
      .Add("isotherm_flows_W_per_mK", run.solution.levelFlow)
      .Add("warm_side_flow_W_per_mK", run.solution.warmFlow)
      .Add("lowest_surface_factor", lowest);
  return json;
}

}  // namespace brindle::study
