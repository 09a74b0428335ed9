#include "flat_picture.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>

#include "geometry.h"

namespace brindle::study {

std::vector<char> SurfaceLayerTriangles(const TriMesh& mesh) {
  std::vector<char> hidden(mesh.triangles.size(), 0);
  for (std::size_t f = 0; f < mesh.triangles.size(); ++f) {
    const int m = mesh.region[f];
    hidden[f] = m >= 0 && m < int(mesh.materials.size()) && mesh.materials[m].role != Role::kSolid;
  }
  return hidden;
}

std::vector<std::vector<Segment>> TraceIsotherms(const TriMesh& mesh,
                                                 const std::vector<double>& values,
                                                 const std::vector<char>& hidden,
                                                 const std::vector<double>& levels) {
  std::vector<std::vector<Segment>> lines(levels.size());
  for (std::size_t f = 0; f < mesh.triangles.size(); ++f) {
    if (!hidden.empty() && hidden[f]) continue;
    const auto& t = mesh.triangles[f];
    const double lo = std::min({values[t[0]], values[t[1]], values[t[2]]});
    const double hi = std::max({values[t[0]], values[t[1]], values[t[2]]});
    for (std::size_t l = 0; l < levels.size(); ++l) {
      const double level = levels[l];
      if (level < lo || level > hi) continue;
      Point ends[2];
      int found = 0;
      for (int e = 0; e < 3 && found < 2; ++e) {
        const int a = t[e], b = t[(e + 1) % 3];
        if ((values[a] < level) == (values[b] < level)) continue;
        const double w = (level - values[a]) / (values[b] - values[a]);
        ends[found++] = mesh.points[a] + w * (mesh.points[b] - mesh.points[a]);
      }
      if (found == 2) lines[l].push_back({ends[0], ends[1]});
    }
  }
  return lines;
}

std::vector<double> RoundLevels(const TriMesh& mesh, const std::vector<double>& values,
                                const std::vector<char>& hidden, int wanted) {
  double lo = std::numeric_limits<double>::infinity(), hi = -lo;
  for (std::size_t f = 0; f < mesh.triangles.size(); ++f)
    if (hidden.empty() || !hidden[f])
      for (int v : mesh.triangles[f]) {
        lo = std::min(lo, values[v]);
        hi = std::max(hi, values[v]);
      }
  std::vector<double> levels;
  if (!(hi - lo > 1e-9 * std::max({1.0, std::abs(lo), std::abs(hi)}))) return levels;
  for (double level : RoundTicks(lo, hi, wanted + 2))
    if (level > lo && level < hi) levels.push_back(level);
  return levels;
}

std::vector<Point> ClipToBand(const std::array<Point, 3>& p, const std::array<double, 3>& v,
                              double low, double high) {
  struct Corner {
    Point at;
    double value;
  };
  std::vector<Corner> polygon = {{p[0], v[0]}, {p[1], v[1]}, {p[2], v[2]}};
  // Sutherland-Hodgman against value >= low, then value <= high (as -value >= -high).
  for (int side = 0; side < 2 && !polygon.empty(); ++side) {
    auto inside = [&](double value) { return side == 0 ? value >= low : value <= high; };
    const double bound = side == 0 ? low : high;
    std::vector<Corner> kept;
    for (std::size_t i = 0; i < polygon.size(); ++i) {
      const Corner& a = polygon[i];
      const Corner& b = polygon[(i + 1) % polygon.size()];
      if (inside(a.value)) kept.push_back(a);
      if (inside(a.value) != inside(b.value)) {
        const double w = (bound - a.value) / (b.value - a.value);
        kept.push_back({a.at + w * (b.at - a.at), bound});
      }
    }
    polygon = std::move(kept);
  }
  std::vector<Point> corners;
  for (const Corner& c : polygon)
    corners.push_back(c.at);
  return corners.size() >= 3 ? corners : std::vector<Point>{};
}

namespace {

// Fills in bands half the isotherm step wide, each in the colour of its middle: smooth
// to the eye, and exact where the isotherms run.
void AddBands(SvgPicture& picture, const TriMesh& mesh, const std::vector<double>& temperature,
              const std::vector<double>& levels, const ColorScale& scale) {
  const double step =
      (levels.size() > 1 ? levels[1] - levels[0] : (scale.high - scale.low) / 8) / 2;
  for (std::size_t f = 0; f < mesh.triangles.size(); ++f) {
    if (picture.hidden[f]) continue;
    const auto& t = mesh.triangles[f];
    const std::array<Point, 3> p{mesh.points[t[0]], mesh.points[t[1]], mesh.points[t[2]]};
    const std::array<double, 3> v{temperature[t[0]], temperature[t[1]], temperature[t[2]]};
    const double lo = std::min({v[0], v[1], v[2]}), hi = std::max({v[0], v[1], v[2]});
    const double first = std::floor(lo / step), last = std::floor(hi / step);
    for (double k = first; k <= last; k += 1.0) {
      const double bandLow = k * step, bandHigh = (k + 1) * step;
      if (lo >= bandLow && hi <= bandHigh) {  // the whole triangle lies in one band
        picture.fills.push_back({scale.Color(bandLow + step / 2), {}, int(f)});
        break;
      }
      std::vector<Point> part = ClipToBand(p, v, bandLow, bandHigh);
      if (!part.empty()) picture.fills.push_back({scale.Color(bandLow + step / 2), part});
    }
  }
}

void AddIsotherms(SvgPicture& picture, const TriMesh& mesh, const std::vector<double>& temperature,
                  int wanted) {
  const std::vector<double> levels = RoundLevels(mesh, temperature, picture.hidden, wanted);
  const auto lines = TraceIsotherms(mesh, temperature, picture.hidden, levels);
  const double step = levels.size() > 1 ? levels[1] - levels[0] : 1.0;
  for (std::size_t l = 0; l < levels.size(); ++l)
    picture.isotherms.push_back({TickText(levels[l], step) + " °C", lines[l]});
}

}  // namespace

SvgPicture TemperaturePicture(const TriMesh& mesh, const std::vector<double>& temperature,
                              const ColorScale& scale, int isotherms,
                              const std::vector<std::string>& title) {
  SvgPicture picture;
  picture.title = title;
  picture.scale = scale;
  picture.hidden = SurfaceLayerTriangles(mesh);
  AddIsotherms(picture, mesh, temperature, isotherms);
  AddBands(picture, mesh, temperature, RoundLevels(mesh, temperature, picture.hidden, isotherms),
           scale);
  return picture;
}

SvgPicture FluxPicture(const TriMesh& mesh, const std::vector<double>& fluxDensity,
                       const std::vector<double>& temperature, const ColorScale& scale,
                       int isotherms, const std::vector<std::string>& title) {
  SvgPicture picture;
  picture.title = title;
  picture.scale = scale;
  picture.hidden = SurfaceLayerTriangles(mesh);
  picture.isothermColor = "#f4f4f4";
  // 64 steps of colour: the eye tells no more apart, and equal colours merge into one outline.
  const double step = (scale.high - scale.low) / 64;
  for (double q : fluxDensity) {
    const double band = std::clamp(std::floor((q - scale.low) / step), 0.0, 63.0);
    picture.faceColor.push_back(scale.Color(scale.low + (band + 0.5) * step));
  }
  AddIsotherms(picture, mesh, temperature, isotherms);
  return picture;
}

std::vector<Segment> EdgesOnLine(const TriMesh& mesh, const std::vector<char>& hidden, int axis,
                                 double value) {
  double extent = 0.0;
  for (const Point& p : mesh.points)
    extent = std::max({extent, std::abs(p[0]), std::abs(p[1])});
  const double tolerance = 1e-9 * std::max(extent, 1e-3);
  std::map<std::pair<int, int>, int> uses;
  for (std::size_t f = 0; f < mesh.triangles.size(); ++f) {
    if (!hidden.empty() && hidden[f]) continue;
    for (int e = 0; e < 3; ++e) {
      const int a = mesh.triangles[f][e], b = mesh.triangles[f][(e + 1) % 3];
      ++uses[{std::min(a, b), std::max(a, b)}];
    }
  }
  std::vector<Segment> segments;
  for (const auto& [edge, count] : uses) {
    const Point& a = mesh.points[edge.first];
    const Point& b = mesh.points[edge.second];
    if (count == 1 && std::abs(a[axis] - value) <= tolerance &&
        std::abs(b[axis] - value) <= tolerance)
      segments.push_back({a, b});
  }
  return segments;
}

}  // namespace brindle::study
