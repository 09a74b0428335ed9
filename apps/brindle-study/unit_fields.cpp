#include "unit_fields.h"

#include <algorithm>
#include <cctype>
#include <chrono>
#include <cmath>
#include <limits>
#include <string>

#include "brindle.h"
#include "geometry.h"
#include "opennurbs.h"
#include "solve.h"

namespace brindle::study {
namespace {

// The volume solver holds its low side at -13.1 and its high side at 20.0.
constexpr double kLowTemperature = -13.1;
constexpr double kHighTemperature = 20.0;

// Vertex colours the surface solver reads as 0, 1 and unknown (red 39, 255, 50).
constexpr unsigned int kLowColor = 0x96F7A827u;
constexpr unsigned int kHighColor = 0x968181FFu;
constexpr unsigned int kFreeColor = 0x96323232u;

int Corners(const LayeredModel& m) {
  return m.dimension == 2 ? 3 : 4;
}

// Shortest element edge: the solvers' absolute thresholds are kept far below it by scaling
// the coordinates so that it becomes 1.
double ShortestEdge(const LayeredModel& m) {
  double shortest = std::numeric_limits<double>::infinity();
  const int n = Corners(m);
  for (const auto& e : m.elements)
    for (int i = 0; i < n; ++i)
      for (int j = i + 1; j < n; ++j) {
        const double length = Norm(m.points[e[j]] - m.points[e[i]]);
        if (length > 0.0) shortest = std::min(shortest, length);
      }
  return std::isfinite(shortest) ? shortest : 1.0;
}

std::string Trimmed(std::string text) {
  while (!text.empty() && std::isspace(static_cast<unsigned char>(text.back())))
    text.pop_back();
  return text;
}

struct VolumeHandle {
  void* handle = nullptr;
  ~VolumeHandle() { poissonfree(handle); }
};

struct SurfaceHandle {
  void* handle = nullptr;
  ~SurfaceHandle() { sldmfree(handle); }
};

std::vector<double> SolveVolumeField(const LayeredModel& m, int environment, double scale,
                                     double tolerance, UnitFields& out) {
  std::vector<double> coordinates;
  coordinates.reserve(3 * m.points.size());
  for (const Point& p : m.points)
    for (double x : p)
      coordinates.push_back(scale * x);
  std::vector<int> tetrahedra;
  tetrahedra.reserve(4 * m.elements.size());
  for (const auto& t : m.elements)
    tetrahedra.insert(tetrahedra.end(), t.begin(), t.end());
  std::vector<int> region = m.material;
  std::vector<double> conductivity = m.conductivity;
  std::vector<int> high, low;
  for (std::size_t v = 0; v < m.fixedBy.size(); ++v) {
    if (m.fixedBy[v] == environment)
      high.push_back(static_cast<int>(v));
    else if (m.fixedBy[v] >= 0)
      low.push_back(static_cast<int>(v));
  }
  VolumeHandle solver;
  int reserved = 0;
  char detail[2000] = "";
  char error[1024] = "";
  const void* handle = nullptr;
  const int status = poissonmallocvol(
      static_cast<int>(m.points.size()), coordinates.data(), static_cast<int>(m.elements.size()),
      tetrahedra.data(), region.data(), static_cast<int>(conductivity.size()), conductivity.data(),
      static_cast<int>(high.size()), high.data(), static_cast<int>(low.size()), low.data(),
      tolerance, &reserved, detail, &handle, error);
  solver.handle = const_cast<void*>(handle);
  if (status != 0) {
    const std::string sentence = Trimmed(detail);
    throw SolveError("poissonmallocvol returned " + std::to_string(status) + ": " + error +
                     (sentence.empty() ? std::string() : " (" + sentence + ")"));
  }
  // The solver's copies are made; the caller's arrays are not needed during the solve.
  std::vector<double>().swap(coordinates);
  std::vector<int>().swap(tetrahedra);
  std::vector<double> temperature(m.points.size());
  if (poissonsolve(solver.handle, temperature.data(), error) != 0)
    throw SolveError(std::string("poissonsolve failed: ") + error);
  double residual = 0.0;
  poissonresid(solver.handle, &residual, error);
  out.worstResidual = std::max(out.worstResidual, residual);
  out.converged = out.converged && poissoninfo(solver.handle, error) == 0;
  for (double& t : temperature)
    t = (t - kLowTemperature) / (kHighTemperature - kLowTemperature);
  return temperature;
}

std::vector<double> SolveSurfaceField(const LayeredModel& m, int environment, double scale) {
  ON_Mesh on;
  for (std::size_t v = 0; v < m.points.size(); ++v) {
    const Point& p = m.points[v];
    on.SetVertex(static_cast<int>(v), ON_3dPoint(scale * p[0], scale * p[1], scale * p[2]));
    const int holder = m.fixedBy[v];
    on.m_C.Append(ON_Color(holder == environment ? kHighColor
                           : holder >= 0         ? kLowColor
                                                 : kFreeColor));
  }
  for (std::size_t f = 0; f < m.elements.size(); ++f) {
    const auto& t = m.elements[f];
    on.SetTriangle(static_cast<int>(f), t[0], t[1], t[2]);
  }
  SurfaceHandle solver;
  char error[1024] = "";
  // Method 2 gives every face its own conductivity, as materials require.
  int status = sldmMalloc(&on, m.material.data(), 2, &solver.handle, error);
  if (status != 0) throw SolveError("sldmMalloc returned " + std::to_string(status) + ": " + error);
  status = sldmupdate(solver.handle, m.conductivity.data(), static_cast<int>(m.conductivity.size()),
                      error);
  if (status != 0) throw SolveError("sldmupdate returned " + std::to_string(status) + ": " + error);
  std::vector<double> temperature(m.points.size(), 0.0);
  try {
    status = sldmsolve(solver.handle, temperature.data(), static_cast<int>(temperature.size()),
                       nullptr, 0, nullptr, nullptr, 0, nullptr, nullptr, error);
  } catch (const std::exception& e) {
    throw SolveError(std::string("sldmsolve failed: ") + e.what());
  }
  if (status != 0) throw SolveError("sldmsolve returned " + std::to_string(status) + ": " + error);
  return temperature;
}

}  // namespace

UnitFields SolveUnitFields(const LayeredModel& m) {
  const int environments = static_cast<int>(m.surfaceVertices.size());
  if (environments < 2) throw SolveError("a study needs at least two environments");

  UnitFields out;
  out.solverScale = 1.0 / ShortestEdge(m);
  out.sliverTolerance = 1e-3;
  const auto start = std::chrono::steady_clock::now();
  out.field.resize(environments);
  std::vector<double> rest(m.points.size(), 1.0);
  for (int e = 0; e + 1 < environments; ++e) {
    out.field[e] = m.dimension == 2
                       ? SolveSurfaceField(m, e, out.solverScale)
                       : SolveVolumeField(m, e, out.solverScale, out.sliverTolerance, out);
    ++out.solverRuns;
    for (std::size_t v = 0; v < rest.size(); ++v)
      rest[v] -= out.field[e][v];
  }
  // Every fixed vertex belongs to exactly one environment, so the unit fields add up to 1.
  out.field.back() = std::move(rest);
  out.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  return out;
}

std::vector<std::vector<double>> Reactions(const LayeredModel& m, const UnitFields& fields) {
  const std::size_t environments = fields.field.size();
  std::vector<std::vector<double>> reaction(environments, std::vector<double>(environments, 0.0));
  const int n = Corners(m);
  for (std::size_t e = 0; e < m.elements.size(); ++e) {
    const auto& t = m.elements[e];
    bool fixed = false;
    for (int i = 0; i < n; ++i)
      fixed = fixed || m.fixedBy[t[i]] >= 0;
    if (!fixed) continue;
    double measure = 0.0;
    std::array<Point, 4> gradient{};
    if (n == 3) {
      const auto g = ShapeGradients(m.points[t[0]], m.points[t[1]], m.points[t[2]], &measure);
      std::copy(g.begin(), g.end(), gradient.begin());
    } else {
      gradient =
          ShapeGradients(m.points[t[0]], m.points[t[1]], m.points[t[2]], m.points[t[3]], &measure);
    }
    const double k = m.conductivity[m.material[e]] * measure;
    for (std::size_t f = 0; f < environments; ++f) {
      Point grad{0.0, 0.0, 0.0};
      for (int i = 0; i < n; ++i)
        grad = grad + fields.field[f][t[i]] * gradient[i];
      for (int i = 0; i < n; ++i) {
        const int holder = m.fixedBy[t[i]];
        if (holder >= 0) reaction[holder][f] += k * Dot(gradient[i], grad);
      }
    }
  }
  return reaction;
}

std::vector<double> Superpose(const UnitFields& fields, const std::vector<double>& temperature) {
  std::vector<double> sum(fields.field.front().size(), 0.0);
  for (std::size_t e = 0; e < fields.field.size(); ++e)
    for (std::size_t v = 0; v < sum.size(); ++v)
      sum[v] += temperature[e] * fields.field[e][v];
  return sum;
}

}  // namespace brindle::study
