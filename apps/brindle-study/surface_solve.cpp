// Drives the surface solver exports: coloured ON_Mesh in, temperatures, fluxes and isotherms out.
#include <cmath>
#include <memory>
#include <string>

#include "brindle.h"
#include "opennurbs.h"
#include "solve.h"

namespace brindle::study {
namespace {

// Vertex colours the surface solver reads as boundary conditions (red 39 -> 0, 255 -> 1, 50 ->
// unknown), packed red-green-blue-alpha from the low byte.
constexpr unsigned int kColdColor = 0x96F7A827u;
constexpr unsigned int kWarmColor = 0x968181FFu;
constexpr unsigned int kFreeColor = 0x96323232u;

ON_Mesh BuildColoredMesh(const TriMesh& mesh) {
  ON_Mesh on;
  for (std::size_t v = 0; v < mesh.points.size(); ++v) {
    const Point& p = mesh.points[v];
    on.SetVertex(static_cast<int>(v), ON_3dPoint(p[0], p[1], p[2]));
    const VertexKind kind = mesh.kind[v];
    on.m_C.Append(ON_Color(kind == VertexKind::kWarm   ? kWarmColor
                           : kind == VertexKind::kCold ? kColdColor
                                                       : kFreeColor));
  }
  for (std::size_t f = 0; f < mesh.triangles.size(); ++f) {
    const auto& t = mesh.triangles[f];
    on.SetTriangle(static_cast<int>(f), t[0], t[1], t[2]);
  }
  return on;
}

struct SolverHandle {
  void* handle = nullptr;
  ~SolverHandle() { sldmfree(handle); }
};

// One call of sldmsolve; the flux outputs are always requested because the isotherm flows are
// computed from them.
struct SolveCall {
  std::vector<double> temperature;
  std::vector<double> faceFlux;
  ON_Mesh fluxMesh;
  ON_SimpleArray<ON_Line> segments;
  double flow = 0.0;
};

void Solve(const void* handle, std::size_t vertices, std::size_t faces, double* level,
           SolveCall& call) {
  call.temperature.assign(vertices, 0.0);
  call.faceFlux.assign(3 * faces, 0.0);
  char error[1024] = "";
  int status = 0;
  try {
    status = sldmsolve(handle, call.temperature.data(), static_cast<int>(vertices), level,
                       level ? 1 : 0, &call.segments, call.faceFlux.data(),
                       static_cast<int>(3 * faces), &call.flow, &call.fluxMesh, error);
  } catch (const std::exception& e) {
    throw SolveError(std::string("sldmsolve failed: ") + e.what());
  }
  if (status != 0) throw SolveError("sldmsolve returned " + std::to_string(status) + ": " + error);
}

// Moves a level off any vertex temperature: a level through a vertex draws nothing in the faces
// around it and would under-count the flow.
double ClearOfVertices(double level, const std::vector<double>& temperature) {
  for (double t : temperature)
    if (std::abs(t - level) < 1e-12) return ClearOfVertices(level + 1e-9, temperature);
  return level;
}

}  // namespace

SurfaceSolution SolveSurface(const TriMesh& mesh, const std::vector<double>& levels) {
  const std::size_t faces = mesh.triangles.size();
  ON_Mesh on = BuildColoredMesh(mesh);
  SolverHandle solver;
  char error[1024] = "";
  // Method 2 gives every face its own conductivity (method 1 would average it across material
  // interfaces) and, unlike method 0, writes no trace line per face.
  int status = sldmMalloc(&on, mesh.region.data(), 2, &solver.handle, error);
  if (status != 0) throw SolveError("sldmMalloc returned " + std::to_string(status) + ": " + error);
  std::vector<double> conductivity;
  for (const Material& m : mesh.materials)
    conductivity.push_back(m.conductivity);
  status =
      sldmupdate(solver.handle, conductivity.data(), static_cast<int>(conductivity.size()), error);
  if (status != 0) throw SolveError("sldmupdate returned " + std::to_string(status) + ": " + error);

  SolveCall field;
  Solve(solver.handle, mesh.points.size(), faces, nullptr, field);
  SurfaceSolution solution;
  solution.temperature = field.temperature;
  solution.flux.resize(faces);
  for (std::size_t f = 0; f < faces; ++f)
    solution.flux[f] = {field.faceFlux[3 * f], field.faceFlux[3 * f + 1],
                        field.faceFlux[3 * f + 2]};

  // One level per call so that every segment is known to belong to its level.
  for (double requested : levels) {
    double level = ClearOfVertices(requested, solution.temperature);
    SolveCall call;
    Solve(solver.handle, mesh.points.size(), faces, &level, call);
    std::vector<Segment> segments;
    for (int i = 0; i < call.segments.Count(); ++i) {
      const ON_Line& line = call.segments[i];
      segments.push_back(
          {Point{line.from.x, line.from.y, line.from.z}, Point{line.to.x, line.to.y, line.to.z}});
    }
    solution.levels.push_back(level);
    solution.isotherms.push_back(std::move(segments));
    solution.levelFlow.push_back(call.flow);
  }
  solution.warmFlow = BoundaryFlow(mesh, solution.flux, VertexKind::kWarm);
  solution.coldFlow = -BoundaryFlow(mesh, solution.flux, VertexKind::kCold);
  return solution;
}

}  // namespace brindle::study
