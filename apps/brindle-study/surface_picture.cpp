#include "surface_picture.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <numeric>
#include <stdexcept>

#include "flat_picture.h"
#include "geometry.h"

namespace brindle::study {
namespace {

constexpr double kMargin = 20.0;
constexpr double kTitleLine = 18.0;
constexpr double kLegendWidth = 170.0;

Point Unit(const Point& p) {
  const double n = Norm(p);
  return n > 0.0 ? (1.0 / n) * p : p;
}

Point FaceNormal(const SurfaceScene& scene, const std::array<int, 3>& t) {
  return Cross(scene.points[t[1]] - scene.points[t[0]], scene.points[t[2]] - scene.points[t[0]]);
}

Point Centroid(const SurfaceScene& scene, const std::array<int, 3>& t) {
  return (1.0 / 3.0) * (scene.points[t[0]] + scene.points[t[1]] + scene.points[t[2]]);
}

Rgb Shade(const Rgb& c, double factor) {
  return {int(c[0] * factor), int(c[1] * factor), int(c[2] * factor)};
}

}  // namespace

Point ViewDirection(const SurfaceScene& scene) {
  Point mean{0, 0, 0};
  for (const auto& t : scene.triangles)
    mean = mean + FaceNormal(scene, t);  // area-weighted: the cross product is twice the area
  Point facing = Unit(mean);
  if (Norm(facing) == 0.0) facing = Unit(Point{1, -1, 1});  // closed surface: any oblique view
  const auto [right, up] = ScreenAxes(facing);
  return Unit(facing + 0.5 * right + 0.35 * up);
}

std::array<Point, 2> ScreenAxes(const Point& view) {
  Point worldUp{0, 0, 1};
  if (std::abs(view[2]) > 0.95) worldUp = {0, 1, 0};
  const Point right = Unit(Cross(worldUp, view));
  return {right, Cross(view, right)};
}

std::vector<int> PaintOrder(const SurfaceScene& scene, const Point& view) {
  std::vector<double> depth;
  for (const auto& t : scene.triangles)
    depth.push_back(Dot(Centroid(scene, t), view));
  std::vector<int> order(scene.triangles.size());
  std::iota(order.begin(), order.end(), 0);
  std::stable_sort(order.begin(), order.end(), [&](int a, int b) { return depth[a] < depth[b]; });
  return order;
}

std::string SurfaceSvgText(const SurfaceScene& scene) {
  if (scene.triangles.empty()) throw std::runtime_error("no surface to draw");
  const Point view = ViewDirection(scene);
  // Named references rather than a structured binding: the lambdas below use them, which
  // clang rejects before C++20.
  const std::array<Point, 2> axes = ScreenAxes(view);
  const Point& right = axes[0];
  const Point& up = axes[1];
  std::vector<std::array<double, 2>> screen;
  double xmin = std::numeric_limits<double>::infinity(), xmax = -xmin, ymin = xmin, ymax = -xmin;
  for (const Point& p : scene.points) {
    screen.push_back({Dot(p, right), Dot(p, up)});
    xmin = std::min(xmin, screen.back()[0]);
    xmax = std::max(xmax, screen.back()[0]);
    ymin = std::min(ymin, screen.back()[1]);
    ymax = std::max(ymax, screen.back()[1]);
  }
  const double width = std::max(xmax - xmin, 1e-12), height = std::max(ymax - ymin, 1e-12);
  const double scale = std::min(700.0 / height, 820.0 / width);
  const double titleHeight = kTitleLine * (scene.title.size() + 1);
  const double pad = 30.0;
  const double left = kMargin + pad, top = kMargin + titleHeight + pad;
  auto px = [&](int v) { return left + (screen[v][0] - xmin) * scale; };
  auto py = [&](int v) { return top + (ymax - screen[v][1]) * scale; };
  auto pxOf = [&](const Point& p) { return left + (Dot(p, right) - xmin) * scale; };
  auto pyOf = [&](const Point& p) { return top + (ymax - Dot(p, up)) * scale; };
  const double pictureWidth = width * scale + 2 * pad, pictureHeight = height * scale + 2 * pad;
  const double totalWidth = 2 * kMargin + pictureWidth + kLegendWidth;
  const double totalHeight = 2 * kMargin + titleHeight + std::max(pictureHeight, 420.0);

  std::string out = SvgOpening(totalWidth, totalHeight, scene.title);

  // Contours at round temperatures of this surface's own range show the shape of a cold or warm
  // spot that the study's colour scale can only hint at.
  TriMesh surface;
  surface.points = scene.points;
  surface.triangles = scene.triangles;
  std::vector<double> levels;
  {
    double lo = std::numeric_limits<double>::infinity(), hi = -lo;
    for (const auto& t : scene.triangles)
      for (int v : t) {
        lo = std::min(lo, scene.temperature[v]);
        hi = std::max(hi, scene.temperature[v]);
      }
    if (hi - lo > 1e-9 * std::max({1.0, std::abs(lo), std::abs(hi)}))
      for (double level : RoundTicks(lo, hi, 8))
        if (level > lo && level < hi) levels.push_back(level);
  }
  const double step = levels.size() > 1 ? levels[1] - levels[0] : 1.0;
  const double band = levels.size() > 1 ? step / 2 : (scene.scale.high - scene.scale.low) / 64;

  // Faces back to front, each cut into bands of temperature painted in the colour of the band's
  // middle. Faces turned away from the viewer are darkened; runs of one colour share a path,
  // which keeps the painting order and the file small.
  std::string run, runColor;
  auto flush = [&]() {
    if (!run.empty())
      out += "<path fill=\"" + runColor + "\" stroke=\"" + runColor +
             "\" stroke-width=\"0.6\" stroke-linejoin=\"round\" d=\"" + run + "\"/>\n";
    run.clear();
  };
  auto paint = [&](const std::vector<Point>& corners, double value, double shade) {
    const std::string color = SvgColor(Shade(scene.scale.Color(value), shade));
    if (color != runColor) {
      flush();
      runColor = color;
    }
    for (std::size_t i = 0; i < corners.size(); ++i)
      run += (i == 0 ? "M" : "L") + SvgNumber(pxOf(corners[i])) + " " + SvgNumber(pyOf(corners[i]));
    run += "Z";
  };
  for (int f : PaintOrder(scene, view)) {
    const auto& t = scene.triangles[f];
    const std::array<Point, 3> p{scene.points[t[0]], scene.points[t[1]], scene.points[t[2]]};
    const std::array<double, 3> v{scene.temperature[t[0]], scene.temperature[t[1]],
                                  scene.temperature[t[2]]};
    const double facing = Dot(Unit(FaceNormal(scene, t)), view);
    const double shade = facing >= 0.0 ? 0.82 + 0.18 * facing : 0.55;
    const double lo = std::min({v[0], v[1], v[2]}), hi = std::max({v[0], v[1], v[2]});
    const double first = std::floor(lo / band), last = std::floor(hi / band);
    for (double k = first; k <= last; k += 1.0) {
      if (lo >= k * band && hi <= (k + 1) * band) {
        paint({p[0], p[1], p[2]}, (k + 0.5) * band, shade);
        break;
      }
      const std::vector<Point> part = ClipToBand(p, v, k * band, (k + 1) * band);
      if (!part.empty()) paint(part, (k + 0.5) * band, shade);
    }
  }
  flush();

  const auto contours = TraceIsotherms(surface, scene.temperature, {}, levels);
  std::vector<std::vector<std::array<double, 2>>> candidates(levels.size());
  std::vector<std::array<double, 2>> targets(levels.size()), sizes(levels.size());
  std::vector<std::vector<std::array<double, 4>>> lines(levels.size());
  for (std::size_t l = 0; l < levels.size(); ++l) {
    std::string d;
    const std::size_t stride = std::max<std::size_t>(1, contours[l].size() / 60);
    for (std::size_t k = 0; k < contours[l].size(); ++k) {
      const Segment& s = contours[l][k];
      const std::array<double, 4> line{pxOf(s[0]), pyOf(s[0]), pxOf(s[1]), pyOf(s[1])};
      d += "M" + SvgNumber(line[0]) + " " + SvgNumber(line[1]) + "L" + SvgNumber(line[2]) + " " +
           SvgNumber(line[3]);
      lines[l].push_back(line);
      if (k % stride == stride / 2)
        candidates[l].push_back({0.5 * (line[0] + line[2]), 0.5 * (line[1] + line[3])});
    }
    out += "<path fill=\"none\" stroke=\"#1a1a1a\" stroke-width=\"0.8\" d=\"" + d + "\"/>\n";
    const double share = (l + 0.5) / levels.size();
    targets[l] = {kMargin + pad + width * scale * share, top + height * scale * (1 - share)};
    sizes[l] = {6.4 * (TickText(levels[l], step).size() + 3) + 8, 15};
  }
  // Edges of the surface (used by one face) and creases between faces at a sharp angle.
  std::map<std::pair<int, int>, std::vector<int>> edgeFaces;
  for (std::size_t f = 0; f < scene.triangles.size(); ++f)
    for (int e = 0; e < 3; ++e) {
      const int a = scene.triangles[f][e], b = scene.triangles[f][(e + 1) % 3];
      edgeFaces[{std::min(a, b), std::max(a, b)}].push_back(int(f));
    }
  std::string edges;
  double extent = 0.0;
  for (const Point& p : scene.points)
    extent = std::max({extent, std::abs(p[0]), std::abs(p[1]), std::abs(p[2])});
  const double tolerance = 1e-9 * std::max(extent, 1e-3);
  std::vector<std::string> symmetryPaths(scene.symmetry.size());
  for (const auto& [edge, faces] : edgeFaces) {
    const Point& a = scene.points[edge.first];
    const Point& b = scene.points[edge.second];
    bool crease = faces.size() != 2;
    if (faces.size() == 2) {
      const Point n0 = Unit(FaceNormal(scene, scene.triangles[faces[0]]));
      const Point n1 = Unit(FaceNormal(scene, scene.triangles[faces[1]]));
      crease = Dot(n0, n1) < 0.85;
    }
    if (!crease) continue;
    const std::string d = "M" + SvgNumber(px(edge.first)) + " " + SvgNumber(py(edge.first)) + "L" +
                          SvgNumber(px(edge.second)) + " " + SvgNumber(py(edge.second));
    bool onSymmetry = false;
    for (std::size_t s = 0; s < scene.symmetry.size(); ++s) {
      const AxisPlane& plane = scene.symmetry[s];
      if (faces.size() == 1 && std::abs(a[plane.axis] - plane.offset) <= tolerance &&
          std::abs(b[plane.axis] - plane.offset) <= tolerance) {
        symmetryPaths[s] += d;
        onSymmetry = true;
      }
    }
    if (!onSymmetry) edges += d;
  }
  out += "<path fill=\"none\" stroke=\"#222\" stroke-width=\"0.9\" stroke-linecap=\"round\" d=\"" +
         edges + "\"/>\n";
  bool anySymmetry = false;
  for (std::size_t s = 0; s < scene.symmetry.size(); ++s) {
    if (symmetryPaths[s].empty()) continue;
    anySymmetry = true;
    out +=
        "<path fill=\"none\" stroke=\"#0050b4\" stroke-width=\"2.2\" "
        "stroke-dasharray=\"12 4 2 4\" d=\"" +
        symmetryPaths[s] + "\"/>\n";
  }

  // Marked points: a ring, a leader line and a label placed where it fits.
  const LabelBox area{kMargin + pictureWidth / 2, top - pad + pictureHeight / 2, pictureWidth,
                      pictureHeight};
  std::vector<LabelBox> occupied;
  std::vector<std::array<double, 2>> markedAt, markSizes;
  for (const SvgMarker& marker : scene.markers) {
    markedAt.push_back({pxOf(marker.at), pyOf(marker.at)});
    markSizes.push_back({6.6 * double(GlyphCount(marker.label)) + 12, 20});
  }
  const MarkerStyle markerStyle{7, 4.5, 18, {40.0, 80.0, 130.0, 200.0}, {60, 50}};
  const auto markLabels = DrawMarkerRings(out, markedAt, markSizes, markerStyle, area, occupied);
  for (std::size_t m = 0; m < markLabels.size(); ++m) {
    if (!markLabels[m]) continue;
    const LabelBox& box = *markLabels[m];
    const double w = box.width, h = box.height;
    out += LeaderSvg(markedAt[m], box, 1.3);
    out += "<rect x=\"" + SvgNumber(box.x - w / 2) + "\" y=\"" + SvgNumber(box.y - h / 2) +
           "\" width=\"" + SvgNumber(w) + "\" height=\"" + SvgNumber(h) +
           "\" rx=\"3\" fill=\"white\" stroke=\"black\" stroke-width=\"0.8\"/><text x=\"" +
           SvgNumber(box.x) + "\" y=\"" + SvgNumber(box.y + 4.5) +
           "\" font-size=\"12\" text-anchor=\"middle\">" + XmlEscape(scene.markers[m].label) +
           "</text>\n";
  }

  const std::vector<int> chosen = PlaceLabels(candidates, targets, sizes, area, occupied, lines);
  for (std::size_t l = 0; l < levels.size(); ++l) {
    if (chosen[l] < 0) continue;
    const auto& c = candidates[l][chosen[l]];
    out += "<rect x=\"" + SvgNumber(c[0] - sizes[l][0] / 2) + "\" y=\"" + SvgNumber(c[1] - 7.5) +
           "\" width=\"" + SvgNumber(sizes[l][0]) +
           "\" height=\"15\" rx=\"3\" fill=\"white\" fill-opacity=\"0.9\" stroke=\"#1a1a1a\" "
           "stroke-width=\"0.6\"/><text x=\"" +
           SvgNumber(c[0]) + "\" y=\"" + SvgNumber(c[1] + 4) +
           "\" font-size=\"11\" text-anchor=\"middle\">" + TickText(levels[l], step) +
           " °C</text>\n";
  }

  // Axis cross in the lower left corner: the model's x, y and z as seen.
  const double cx = kMargin + 30, cy = totalHeight - kMargin - 30;
  const char* names[3] = {"x", "y", "z"};
  for (int a = 0; a < 3; ++a) {
    Point e{0, 0, 0};
    e[a] = 1.0;
    const double dx = 26 * Dot(e, right), dy = -26 * Dot(e, up);
    out += "<path stroke=\"#444\" stroke-width=\"1.3\" d=\"M" + SvgNumber(cx) + " " +
           SvgNumber(cy) + "l" + SvgNumber(dx) + " " + SvgNumber(dy) + "\"/><text x=\"" +
           SvgNumber(cx + 1.35 * dx - 3) + "\" y=\"" + SvgNumber(cy + 1.35 * dy + 4) +
           "\" font-size=\"11\" fill=\"#444\">" + names[a] + "</text>\n";
  }

  const double lx = 2 * kMargin + pictureWidth;
  const double legendBottom = top - pad + SvgLegend(out, scene.scale, lx, top - pad);
  if (anySymmetry) out += SymmetryLegendSvg(lx, legendBottom + 30);
  out += "</svg>\n";
  return out;
}

void WriteSurfaceSvg(const std::string& path, const SurfaceScene& scene) {
  WriteTextFile(path, SurfaceSvgText(scene));
}

}  // namespace brindle::study
