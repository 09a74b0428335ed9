#include "svg_writer.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <limits>
#include <map>
#include <stdexcept>

#include "geometry.h"

namespace brindle::study {
namespace {

constexpr double kMargin = 20.0;
constexpr double kTitleLine = 18.0;
constexpr double kLegendWidth = 160.0;
constexpr double kLabelHeight = 15.0;
constexpr std::size_t kCandidatesPerLabel = 80;

// Maps model coordinates (m, y up) to picture coordinates (px, y down).
struct View {
  double xmin, ymax, scale, left, top;
  double Px(double x) const { return left + (x - xmin) * scale; }
  double Py(double y) const { return top + (ymax - y) * scale; }
  std::string X(double x) const { return SvgNumber(Px(x)); }
  std::string Y(double y) const { return SvgNumber(Py(y)); }
};

double LabelWidth(const std::string& text) {
  return 6.4 * GlyphCount(text) + 8.0;
}

// A length as written in the pictures' markup: as short as it goes (4, 4.5).
std::string SvgLength(double value) {
  char text[32];
  std::snprintf(text, sizeof text, "%g", value);
  return text;
}

// Does segment (x0,y0)-(x1,y1) meet the box? Liang-Barsky clipping.
bool Crosses(const LabelBox& box, const std::array<double, 4>& s) {
  double t0 = 0.0, t1 = 1.0;
  const double dx = s[2] - s[0], dy = s[3] - s[1];
  const double p[4] = {-dx, dx, -dy, dy};
  const double q[4] = {s[0] - (box.x - box.width / 2), (box.x + box.width / 2) - s[0],
                       s[1] - (box.y - box.height / 2), (box.y + box.height / 2) - s[1]};
  for (int i = 0; i < 4; ++i) {
    if (p[i] == 0.0) {
      if (q[i] < 0.0) return false;
      continue;
    }
    const double r = q[i] / p[i];
    if (p[i] < 0.0)
      t0 = std::max(t0, r);
    else
      t1 = std::min(t1, r);
    if (t0 > t1) return false;
  }
  return true;
}

std::string SegmentPath(const View& view, const std::vector<Segment>& segments) {
  std::string d;
  for (const Segment& s : segments)
    d += "M" + view.X(s[0][0]) + " " + view.Y(s[0][1]) + "L" + view.X(s[1][0]) + " " +
         view.Y(s[1][1]);
  return d;
}

std::string LabelSvg(const LabelBox& box, const std::string& text, const std::string& stroke) {
  return "<rect x=\"" + SvgNumber(box.x - box.width / 2) + "\" y=\"" +
         SvgNumber(box.y - box.height / 2) + "\" width=\"" + SvgNumber(box.width) + "\" height=\"" +
         SvgNumber(box.height) + "\" rx=\"3\" fill=\"white\" fill-opacity=\"0.9\" stroke=\"" +
         stroke + "\" stroke-width=\"0.6\"/>\n<text x=\"" + SvgNumber(box.x) + "\" y=\"" +
         SvgNumber(box.y + 4) + "\" font-size=\"11\" text-anchor=\"middle\">" + XmlEscape(text) +
         "</text>\n";
}

}  // namespace

std::string SvgNumber(double value, int decimals) {
  char text[32];
  std::snprintf(text, sizeof text, "%.*f", decimals, value);
  return text;
}

std::string SvgColor(const Rgb& c) {
  char text[16];
  std::snprintf(text, sizeof text, "#%02x%02x%02x", std::clamp(c[0], 0, 255),
                std::clamp(c[1], 0, 255), std::clamp(c[2], 0, 255));
  return text;
}

std::string XmlEscape(const std::string& text) {
  std::string out;
  for (char c : text) {
    if (c == '<')
      out += "&lt;";
    else if (c == '>')
      out += "&gt;";
    else if (c == '&')
      out += "&amp;";
    else if (c == '"')
      out += "&quot;";
    else
      out += c;
  }
  return out;
}

std::size_t GlyphCount(const std::string& text) {
  std::size_t glyphs = 0;
  for (unsigned char c : text)
    glyphs += (c & 0xC0) != 0x80;
  return glyphs;
}

std::string SvgOpening(double width, double height, const std::vector<std::string>& title) {
  std::string out = "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + SvgNumber(width, 0) +
                    "\" height=\"" + SvgNumber(height, 0) + "\" viewBox=\"0 0 " +
                    SvgNumber(width, 0) + " " + SvgNumber(height, 0) +
                    "\" font-family=\"sans-serif\">\n";
  out += "<rect width=\"100%\" height=\"100%\" fill=\"white\"/>\n";
  for (std::size_t i = 0; i < title.size(); ++i)
    out += "<text x=\"" + SvgNumber(kMargin) + "\" y=\"" +
           SvgNumber(kMargin + kTitleLine * (i + 0.8)) + "\" font-size=\"" +
           (i == 0 ? "15" : "12") + "\">" + XmlEscape(title[i]) + "</text>\n";
  return out;
}

std::string SymmetryLegendSvg(double x, double y) {
  return "<path stroke=\"#0050b4\" stroke-width=\"2\" stroke-dasharray=\"12 4 2 4\" d=\"M" +
         SvgNumber(x) + " " + SvgNumber(y) + "h24\"/><text x=\"" + SvgNumber(x + 30) + "\" y=\"" +
         SvgNumber(y + 4) + "\" font-size=\"11\">symmetry plane</text>\n";
}

std::vector<std::optional<LabelBox>> DrawMarkerRings(
    std::string& out, const std::vector<std::array<double, 2>>& at,
    const std::vector<std::array<double, 2>>& sizes, const MarkerStyle& style, const LabelBox& area,
    std::vector<LabelBox>& occupied) {
  const std::string ring = "\" r=\"" + SvgLength(style.radius) + "\" fill=\"none\" stroke=\"";
  for (const auto& [x, y] : at) {
    const std::string centre = "<circle cx=\"" + SvgNumber(x) + "\" cy=\"" + SvgNumber(y);
    out += centre + ring + "white\" stroke-width=\"" + SvgLength(style.halo) + "\"/>" + centre +
           ring + "black\" stroke-width=\"2\"/>\n";
    occupied.push_back({x, y, style.clearance, style.clearance});
  }
  std::vector<std::optional<LabelBox>> labels;
  for (std::size_t m = 0; m < at.size(); ++m) {
    const auto& [x, y] = at[m];
    const auto& [w, h] = sizes[m];
    std::vector<std::array<double, 2>> around;
    for (double r : style.distances)
      for (int k = 0; k < 16; ++k) {
        const double angle = 2 * 3.14159265358979 * k / 16;
        around.push_back({x + (r + w / 2) * std::cos(angle), y - (r + h / 2) * std::sin(angle)});
      }
    const std::array<double, 2> target{x + style.preferred[0] + w / 2, y - style.preferred[1]};
    const int chosen = PlaceLabels({around}, {target}, {{w, h}}, area, occupied, {{}})[0];
    if (chosen < 0) {
      labels.emplace_back();
      continue;
    }
    labels.emplace_back(LabelBox{around[chosen][0], around[chosen][1], w, h});
    occupied.push_back(*labels.back());
  }
  return labels;
}

std::string LeaderSvg(const std::array<double, 2>& from, const LabelBox& label, double width) {
  return "<path stroke=\"black\" stroke-width=\"" + SvgLength(width) + "\" d=\"M" +
         SvgNumber(from[0]) + " " + SvgNumber(from[1]) + "L" + SvgNumber(label.x) + " " +
         SvgNumber(label.y) + "\"/>\n";
}

bool LabelBox::Overlaps(const LabelBox& o, double gap) const {
  return std::abs(x - o.x) * 2 < width + o.width + 2 * gap &&
         std::abs(y - o.y) * 2 < height + o.height + 2 * gap;
}

bool LabelBox::Inside(const LabelBox& area) const {
  return x - width / 2 >= area.x - area.width / 2 && x + width / 2 <= area.x + area.width / 2 &&
         y - height / 2 >= area.y - area.height / 2 && y + height / 2 <= area.y + area.height / 2;
}

std::vector<int> PlaceLabels(const std::vector<std::vector<std::array<double, 2>>>& candidates,
                             const std::vector<std::array<double, 2>>& targets,
                             const std::vector<std::array<double, 2>>& sizes, const LabelBox& area,
                             std::vector<LabelBox> occupied,
                             const std::vector<std::vector<std::array<double, 4>>>& obstacles) {
  std::vector<int> chosen(candidates.size(), -1);
  for (std::size_t i = 0; i < candidates.size(); ++i) {
    double best = std::numeric_limits<double>::infinity();
    for (std::size_t c = 0; c < candidates[i].size(); ++c) {
      const LabelBox box{candidates[i][c][0], candidates[i][c][1], sizes[i][0], sizes[i][1]};
      if (!box.Inside(area)) continue;
      if (std::any_of(occupied.begin(), occupied.end(),
                      [&](const LabelBox& o) { return box.Overlaps(o); }))
        continue;
      int crossings = 0;
      for (std::size_t other = 0; other < obstacles.size(); ++other)
        if (other != i)
          for (const auto& s : obstacles[other])
            crossings += Crosses(box, s);
      const double cost =
          std::hypot(box.x - targets[i][0], box.y - targets[i][1]) + 60.0 * std::min(crossings, 20);
      if (cost < best) {
        best = cost;
        chosen[i] = int(c);
      }
    }
    if (chosen[i] >= 0)
      occupied.push_back(
          {candidates[i][chosen[i]][0], candidates[i][chosen[i]][1], sizes[i][0], sizes[i][1]});
  }
  return chosen;
}

std::vector<std::array<int, 2>> OutlineEdges(const TriMesh& mesh, const std::vector<char>& hidden) {
  struct Sides {
    int count = 0;
    int region[2] = {-1, -1};
  };
  std::map<std::pair<int, int>, Sides> edges;
  for (std::size_t f = 0; f < mesh.triangles.size(); ++f) {
    if (!hidden.empty() && hidden[f]) continue;
    for (int e = 0; e < 3; ++e) {
      int a = mesh.triangles[f][e], b = mesh.triangles[f][(e + 1) % 3];
      if (a > b) std::swap(a, b);
      Sides& sides = edges[{a, b}];
      if (sides.count < 2) sides.region[sides.count] = mesh.region[f];
      ++sides.count;
    }
  }
  std::vector<std::array<int, 2>> outline;
  for (const auto& [edge, sides] : edges)
    if (sides.count == 1 || sides.region[0] != sides.region[1])
      outline.push_back({edge.first, edge.second});
  return outline;
}

std::string RegionPath(const TriMesh& mesh, const std::vector<int>& triangles,
                       const std::function<std::string(const Point&)>& xy) {
  // Directed edges of the triangles turned counter-clockwise; an edge whose reverse is absent
  // is on the boundary, and the boundary edges chain into closed loops.
  std::map<std::pair<int, int>, int> edges;
  for (int f : triangles) {
    std::array<int, 3> t = mesh.triangles[f];
    const Point e1 = mesh.points[t[1]] - mesh.points[t[0]];
    const Point e2 = mesh.points[t[2]] - mesh.points[t[0]];
    if (e1[0] * e2[1] - e1[1] * e2[0] < 0.0) std::swap(t[1], t[2]);
    for (int e = 0; e < 3; ++e)
      ++edges[{t[e], t[(e + 1) % 3]}];
  }
  std::multimap<int, int> next;
  for (const auto& [edge, count] : edges)
    if (!edges.count({edge.second, edge.first}))
      for (int k = 0; k < count; ++k)
        next.emplace(edge.first, edge.second);
  std::string d;
  while (!next.empty()) {
    auto at = next.begin();
    const int start = at->first;
    d += "M" + xy(mesh.points[start]);
    for (int current = at->second;;) {
      next.erase(at);
      if (current == start) break;
      d += "L" + xy(mesh.points[current]);
      at = next.find(current);
      if (at == next.end()) break;  // cannot happen for a closed boundary
      current = at->second;
    }
    d += "Z";
  }
  return d;
}

double SvgLegend(std::string& out, const ColorScale& scale, double lx, double top) {
  const double barHeight = 240, barWidth = 24;
  for (std::size_t i = 0; i < scale.title.size(); ++i)
    out += "<text x=\"" + SvgNumber(lx) + "\" y=\"" + SvgNumber(top + 14.0 * i + 10) +
           "\" font-size=\"12\">" + XmlEscape(scale.title[i]) + "</text>\n";
  const double ly = top + 14.0 * scale.title.size() + 10;
  constexpr int kSteps = 64;
  for (int s = 0; s < kSteps; ++s) {
    const double value = scale.low + (scale.high - scale.low) * (s + 0.5) / kSteps;
    const double y = ly + barHeight * (1.0 - double(s + 1) / kSteps);
    out += "<rect x=\"" + SvgNumber(lx) + "\" y=\"" + SvgNumber(y, 2) + "\" width=\"" +
           SvgNumber(barWidth, 0) + "\" height=\"" + SvgNumber(barHeight / kSteps + 0.5, 2) +
           "\" fill=\"" + SvgColor(scale.Color(value)) + "\"/>\n";
  }
  out += "<rect x=\"" + SvgNumber(lx) + "\" y=\"" + SvgNumber(ly) + "\" width=\"" +
         SvgNumber(barWidth, 0) + "\" height=\"" + SvgNumber(barHeight, 0) +
         "\" fill=\"none\" stroke=\"black\"/>\n";
  const std::vector<double> ticks = scale.Ticks();
  const double step = ticks.size() > 1 ? ticks[1] - ticks[0] : 1.0;
  for (double value : ticks) {
    const double y = ly + barHeight * (1.0 - (value - scale.low) / (scale.high - scale.low));
    const bool top = scale.clippedHigh && std::abs(value - scale.high) < 1e-9 * step;
    out += "<path stroke=\"black\" d=\"M" + SvgNumber(lx + barWidth) + " " + SvgNumber(y) +
           "h5\"/><text x=\"" + SvgNumber(lx + barWidth + 8) + "\" y=\"" + SvgNumber(y + 4) +
           "\" font-size=\"11\">" + (top ? "≥ " : "") + TickText(value, step) + "</text>\n";
  }
  return ly + barHeight - top;
}

std::string SvgText(const TriMesh& mesh, const SvgPicture& picture) {
  auto drawn = [&](std::size_t f) { return picture.hidden.empty() || !picture.hidden[f]; };
  double xmin = std::numeric_limits<double>::infinity(), xmax = -xmin, ymin = xmin, ymax = -xmin;
  for (std::size_t f = 0; f < mesh.triangles.size(); ++f)
    if (drawn(f))
      for (int v : mesh.triangles[f]) {
        xmin = std::min(xmin, mesh.points[v][0]);
        xmax = std::max(xmax, mesh.points[v][0]);
        ymin = std::min(ymin, mesh.points[v][1]);
        ymax = std::max(ymax, mesh.points[v][1]);
      }
  if (!(xmax >= xmin)) throw std::runtime_error("nothing to draw");
  const double width = std::max(xmax - xmin, 1e-12), height = std::max(ymax - ymin, 1e-12);
  const double scale = std::min(760.0 / height, 860.0 / width);
  const double titleHeight = kTitleLine * (picture.title.size() + 1);
  // A band around the drawing keeps labels of points at its edge inside the picture.
  const double pad = 24.0;
  const View view{xmin, ymax, scale, kMargin + pad, kMargin + titleHeight + pad};
  const double pictureWidth = width * scale + 2 * pad, pictureHeight = height * scale + 2 * pad;
  const double totalWidth = 2 * kMargin + pictureWidth + kLegendWidth;
  const double totalHeight = 2 * kMargin + titleHeight + std::max(pictureHeight, 380.0);

  std::string out = SvgOpening(totalWidth, totalHeight, picture.title);

  // One path per colour, whole triangles merged into their outline, keeps the file small; a
  // stroke of the fill colour hides the seams.
  std::map<std::string, std::string> byColor;
  std::map<std::string, std::vector<int>> wholeByColor;
  for (const SvgPolygon& polygon : picture.fills) {
    if (polygon.triangle >= 0) {
      wholeByColor[SvgColor(polygon.color)].push_back(polygon.triangle);
      continue;
    }
    std::string& d = byColor[SvgColor(polygon.color)];
    for (std::size_t i = 0; i < polygon.corners.size(); ++i)
      d += (i == 0 ? "M" : "L") + view.X(polygon.corners[i][0]) + " " +
           view.Y(polygon.corners[i][1]);
    d += "Z";
  }
  for (std::size_t f = 0; f < mesh.triangles.size() && picture.fills.empty(); ++f)
    if (drawn(f)) wholeByColor[SvgColor(picture.faceColor.at(f))].push_back(int(f));
  const auto xy = [&](const Point& p) { return view.X(p[0]) + " " + view.Y(p[1]); };
  for (const auto& [color, triangles] : wholeByColor)
    byColor[color] += RegionPath(mesh, triangles, xy);
  for (const auto& [color, d] : byColor)
    out += "<path fill=\"" + color + "\" stroke=\"" + color + "\" stroke-width=\"0.4\" d=\"" + d +
           "\"/>\n";

  for (const SvgIsotherm& iso : picture.isotherms)
    out += "<path fill=\"none\" stroke=\"" + picture.isothermColor +
           "\" stroke-width=\"0.9\" d=\"" + SegmentPath(view, iso.segments) + "\"/>\n";

  std::string outline;
  for (const auto& edge : OutlineEdges(mesh, picture.hidden)) {
    const Point& a = mesh.points[edge[0]];
    const Point& b = mesh.points[edge[1]];
    outline += "M" + view.X(a[0]) + " " + view.Y(a[1]) + "L" + view.X(b[0]) + " " + view.Y(b[1]);
  }
  out += "<path fill=\"none\" stroke=\"black\" stroke-width=\"1.4\" stroke-linecap=\"round\" d=\"" +
         outline + "\"/>\n";

  const LabelBox area{kMargin + pictureWidth / 2, view.top - pad + pictureHeight / 2, pictureWidth,
                      pictureHeight};
  std::vector<LabelBox> occupied;
  std::string labels;

  // Guides (symmetry planes) with their label at the middle of their longest segment.
  for (const SvgGuide& guide : picture.guides) {
    if (guide.segments.empty()) continue;
    out +=
        "<path fill=\"none\" stroke=\"#0050b4\" stroke-width=\"2\" "
        "stroke-dasharray=\"12 4 2 4\" d=\"" +
        SegmentPath(view, guide.segments) + "\"/>\n";
  }

  // Marked points: a ring, and the label beside it where it fits.
  std::vector<std::array<double, 2>> markedAt, markSizes;
  for (const SvgMarker& marker : picture.markers) {
    markedAt.push_back({view.Px(marker.at[0]), view.Py(marker.at[1])});
    markSizes.push_back({LabelWidth(marker.label) + 4, kLabelHeight + 4});
  }
  const MarkerStyle markerStyle{6, 4, 16, {30.0, 60.0, 100.0, 160.0}, {40, 30}};
  const auto markLabels = DrawMarkerRings(out, markedAt, markSizes, markerStyle, area, occupied);
  for (std::size_t m = 0; m < markLabels.size(); ++m) {
    if (!markLabels[m]) continue;
    out += LeaderSvg(markedAt[m], *markLabels[m], 1.2);
    labels += LabelSvg(*markLabels[m], picture.markers[m].label, "black");
  }

  // Isotherm labels sit on their own line; the targets spread them along the diagonal so that
  // neighbouring levels do not stack.
  const std::size_t levels = picture.isotherms.size();
  std::vector<std::vector<std::array<double, 2>>> candidates(levels);
  std::vector<std::array<double, 2>> targets(levels), sizes(levels);
  std::vector<std::vector<std::array<double, 4>>> lines(levels);
  for (std::size_t i = 0; i < levels; ++i) {
    const auto& segments = picture.isotherms[i].segments;
    const std::size_t stride = std::max<std::size_t>(1, segments.size() / kCandidatesPerLabel);
    for (std::size_t s = 0; s < segments.size(); ++s) {
      const Point& a = segments[s][0];
      const Point& b = segments[s][1];
      lines[i].push_back({view.Px(a[0]), view.Py(a[1]), view.Px(b[0]), view.Py(b[1])});
      if (s % stride == stride / 2)
        candidates[i].push_back({view.Px(0.5 * (a[0] + b[0])), view.Py(0.5 * (a[1] + b[1]))});
    }
    const double share = (i + 0.5) / std::max<std::size_t>(levels, 1);
    targets[i] = {view.Px(xmin + width * share), view.Py(ymin + height * share)};
    sizes[i] = {LabelWidth(picture.isotherms[i].label), kLabelHeight};
  }
  const std::vector<int> chosen = PlaceLabels(candidates, targets, sizes, area, occupied, lines);
  for (std::size_t i = 0; i < levels; ++i)
    if (chosen[i] >= 0)
      labels += LabelSvg(
          {candidates[i][chosen[i]][0], candidates[i][chosen[i]][1], sizes[i][0], sizes[i][1]},
          picture.isotherms[i].label, "#1a1a1a");
  out += labels;

  for (const SvgGuide& guide : picture.guides) {
    if (guide.segments.empty() || guide.label.empty()) continue;
    const Segment* longest = &guide.segments.front();
    for (const Segment& s : guide.segments)
      if (Norm(s[1] - s[0]) > Norm((*longest)[1] - (*longest)[0])) longest = &s;
    const Point mid = 0.5 * ((*longest)[0] + (*longest)[1]);
    out += "<text x=\"" + view.X(mid[0]) + "\" y=\"" + SvgNumber(view.Py(mid[1]) - 6) +
           "\" font-size=\"11\" fill=\"#0050b4\" text-anchor=\"middle\">" + XmlEscape(guide.label) +
           "</text>\n";
  }

  // Axes: which model directions the picture shows.
  const double ax = kMargin + 6, ay = totalHeight - kMargin - 6;
  out += "<path stroke=\"#444\" fill=\"none\" d=\"M" + SvgNumber(ax) + " " + SvgNumber(ay) +
         "h30M" + SvgNumber(ax) + " " + SvgNumber(ay) + "v-30\"/><text x=\"" + SvgNumber(ax + 34) +
         "\" y=\"" + SvgNumber(ay + 4) + "\" font-size=\"11\">" + XmlEscape(picture.axes[0]) +
         "</text><text x=\"" + SvgNumber(ax - 3) + "\" y=\"" + SvgNumber(ay - 34) +
         "\" font-size=\"11\">" + XmlEscape(picture.axes[1]) + "</text>\n";

  const double lx = 2 * kMargin + pictureWidth;
  const double legendBottom = view.top - pad + SvgLegend(out, picture.scale, lx, view.top - pad);
  double y = legendBottom + 30;
  if (!picture.isotherms.empty()) {
    // A light isotherm colour needs a dark ground to show in the legend.
    if (picture.isothermColor != "#1a1a1a")
      out += "<rect x=\"" + SvgNumber(lx - 2) + "\" y=\"" + SvgNumber(y - 4) +
             "\" width=\"28\" height=\"8\" fill=\"#777\"/>";
    out += "<path stroke=\"" + picture.isothermColor + "\" d=\"M" + SvgNumber(lx) + " " +
           SvgNumber(y) + "h24\"/><text x=\"" + SvgNumber(lx + 30) + "\" y=\"" + SvgNumber(y + 4) +
           "\" font-size=\"11\">isotherm</text>\n";
    y += 18;
  }
  if (std::any_of(picture.guides.begin(), picture.guides.end(),
                  [](const SvgGuide& g) { return !g.segments.empty(); })) {
    out += SymmetryLegendSvg(lx, y);
    y += 18;
  }
  if (std::any_of(picture.hidden.begin(), picture.hidden.end(), [](char h) { return h != 0; }))
    out += "<text x=\"" + SvgNumber(lx) + "\" y=\"" + SvgNumber(y + 4) +
           "\" font-size=\"10\" fill=\"#444\">surface-resistance layers</text><text x=\"" +
           SvgNumber(lx) + "\" y=\"" + SvgNumber(y + 17) +
           "\" font-size=\"10\" fill=\"#444\">are not drawn</text>\n";
  out += "</svg>\n";
  return out;
}

void WriteSvg(const std::string& path, const TriMesh& mesh, const SvgPicture& picture) {
  WriteTextFile(path, SvgText(mesh, picture));
}

void WriteTextFile(const std::string& path, const std::string& text) {
  std::ofstream out(path, std::ios::binary);
  if (!out) throw std::runtime_error("cannot write " + path);
  out << text;
  if (!out) throw std::runtime_error("error while writing " + path);
}

}  // namespace brindle::study
