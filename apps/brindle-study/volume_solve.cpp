// Drives the volume solver exports and derives element fluxes from its temperatures.
#include <algorithm>
#include <cctype>
#include <string>

#include "brindle.h"
#include "geometry.h"
#include "solve.h"

namespace brindle::study {
namespace {

// The volume solver holds its low side at -13.1 and its high side at 20.0.
constexpr double kLowTemperature = -13.1;
constexpr double kHighTemperature = 20.0;

struct SolverHandle {
  void* handle = nullptr;
  ~SolverHandle() { poissonfree(handle); }
};

// Sliver tolerance: a millionth of the model size, well below any element a mesher makes.
double SliverTolerance(const std::vector<Point>& points) {
  Point low = points.front(), high = points.front();
  for (const Point& p : points)
    for (int a = 0; a < 3; ++a) {
      low[a] = std::min(low[a], p[a]);
      high[a] = std::max(high[a], p[a]);
    }
  return 1e-6 * Norm(high - low);
}

}  // namespace

VolumeSolution SolveVolume(const TetMesh& mesh) {
  if (mesh.points.empty() || mesh.tetrahedra.empty()) throw SolveError("the volume mesh is empty");
  std::vector<double> coordinates;
  for (const Point& p : mesh.points)
    coordinates.insert(coordinates.end(), p.begin(), p.end());
  std::vector<int> tetrahedra;
  for (const auto& t : mesh.tetrahedra)
    tetrahedra.insert(tetrahedra.end(), t.begin(), t.end());
  std::vector<double> conductivity;
  for (const Material& m : mesh.materials)
    conductivity.push_back(m.conductivity);
  std::vector<int> high, low;
  for (std::size_t v = 0; v < mesh.kind.size(); ++v) {
    if (mesh.kind[v] == VertexKind::Warm) high.push_back(static_cast<int>(v));
    if (mesh.kind[v] == VertexKind::Cold) low.push_back(static_cast<int>(v));
  }
  std::vector<int> region = mesh.region;

  SolverHandle solver;
  int reserved = 0;
  char detail[2000] = "";
  char error[1024] = "";
  const void* handle = nullptr;
  const int status =
      poissonmallocvol(static_cast<int>(mesh.points.size()), coordinates.data(),
                       static_cast<int>(mesh.tetrahedra.size()), tetrahedra.data(), region.data(),
                       static_cast<int>(conductivity.size()), conductivity.data(),
                       static_cast<int>(high.size()), high.data(), static_cast<int>(low.size()),
                       low.data(), SliverTolerance(mesh.points), &reserved, detail, &handle, error);
  solver.handle = const_cast<void*>(handle);
  if (status != 0) {
    std::string sentence = detail;  // the failed mesh check's sentence, ending in a line break
    while (!sentence.empty() && std::isspace(static_cast<unsigned char>(sentence.back())))
      sentence.pop_back();
    throw SolveError("poissonmallocvol returned " + std::to_string(status) + ": " + error +
                     (sentence.empty() ? std::string() : " (" + sentence + ")"));
  }

  VolumeSolution solution;
  std::vector<double> temperature(mesh.points.size());
  if (poissonsolve(solver.handle, temperature.data(), error) != 0)
    throw SolveError(std::string("poissonsolve failed: ") + error);
  poissonresid(solver.handle, &solution.residual, error);
  solution.converged = poissoninfo(solver.handle, error) == 0;

  solution.temperature.resize(temperature.size());
  for (std::size_t v = 0; v < temperature.size(); ++v)
    solution.temperature[v] =
        (temperature[v] - kLowTemperature) / (kHighTemperature - kLowTemperature);
  solution.flux.resize(mesh.tetrahedra.size());
  for (std::size_t e = 0; e < mesh.tetrahedra.size(); ++e) {
    const auto& t = mesh.tetrahedra[e];
    double volume = 0.0;
    const auto gradients = ShapeGradients(mesh.points[t[0]], mesh.points[t[1]], mesh.points[t[2]],
                                          mesh.points[t[3]], &volume);
    Point gradient{0.0, 0.0, 0.0};
    for (int i = 0; i < 4; ++i)
      gradient = gradient + solution.temperature[t[i]] * gradients[i];
    solution.flux[e] = mesh.materials[mesh.region[e]].conductivity * gradient;
  }
  solution.warmFlow = BoundaryFlow(mesh, solution.flux, VertexKind::Warm);
  solution.coldFlow = -BoundaryFlow(mesh, solution.flux, VertexKind::Cold);
  return solution;
}

}  // namespace brindle::study
