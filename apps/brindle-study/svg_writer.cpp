#include "svg_writer.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <map>
#include <stdexcept>

#include "geometry.h"

namespace brindle::study {
namespace {

constexpr double kMargin = 20.0;
constexpr double kTitleLine = 18.0;
constexpr double kLegendWidth = 150.0;

std::string Fixed(double value, int decimals = 1) {
  char text[32];
  std::snprintf(text, sizeof text, "%.*f", decimals, value);
  return text;
}

std::string Colour(const Rgb& c) {
  char text[16];
  std::snprintf(text, sizeof text, "#%02x%02x%02x", std::clamp(c[0], 0, 255),
                std::clamp(c[1], 0, 255), std::clamp(c[2], 0, 255));
  return text;
}

std::string Escape(const std::string& text) {
  std::string out;
  for (char c : text) {
    if (c == '<')
      out += "&lt;";
    else if (c == '>')
      out += "&gt;";
    else if (c == '&')
      out += "&amp;";
    else
      out += c;
  }
  return out;
}

// Maps model coordinates (m, y up) to picture coordinates (px, y down).
struct View {
  double xmin, ymax, scale, left, top;
  std::string X(double x) const { return Fixed(left + (x - xmin) * scale); }
  std::string Y(double y) const { return Fixed(top + (ymax - y) * scale); }
};

}  // namespace

std::vector<std::array<int, 2>> OutlineEdges(const TriMesh& mesh) {
  struct Sides {
    int count = 0;
    int region[2] = {-1, -1};
  };
  std::map<std::pair<int, int>, Sides> edges;
  for (std::size_t f = 0; f < mesh.triangles.size(); ++f)
    for (int e = 0; e < 3; ++e) {
      int a = mesh.triangles[f][e], b = mesh.triangles[f][(e + 1) % 3];
      if (a > b) std::swap(a, b);
      Sides& sides = edges[{a, b}];
      if (sides.count < 2) sides.region[sides.count] = mesh.region[f];
      ++sides.count;
    }
  std::vector<std::array<int, 2>> outline;
  for (const auto& [edge, sides] : edges)
    if (sides.count == 1 || sides.region[0] != sides.region[1])
      outline.push_back({edge.first, edge.second});
  return outline;
}

void WriteSvg(const std::string& path, const TriMesh& mesh, const SvgPicture& picture) {
  if (mesh.points.empty()) throw std::runtime_error("nothing to draw");
  double xmin = mesh.points[0][0], xmax = xmin, ymin = mesh.points[0][1], ymax = ymin;
  for (const Point& p : mesh.points) {
    xmin = std::min(xmin, p[0]);
    xmax = std::max(xmax, p[0]);
    ymin = std::min(ymin, p[1]);
    ymax = std::max(ymax, p[1]);
  }
  const double width = std::max(xmax - xmin, 1e-12), height = std::max(ymax - ymin, 1e-12);
  const double scale = std::min(800.0 / height, 900.0 / width);
  const double titleHeight = kTitleLine * (picture.title.size() + 1);
  const View view{xmin, ymax, scale, kMargin, kMargin + titleHeight};
  const double pictureWidth = width * scale, pictureHeight = height * scale;
  const double totalWidth = 2 * kMargin + pictureWidth + kLegendWidth;
  const double totalHeight = 2 * kMargin + titleHeight + std::max(pictureHeight, 300.0);

  std::ofstream out(path);
  if (!out) throw std::runtime_error("cannot write " + path);
  out << "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" << Fixed(totalWidth, 0)
      << "\" height=\"" << Fixed(totalHeight, 0) << "\" font-family=\"sans-serif\">\n";
  out << "<rect width=\"100%\" height=\"100%\" fill=\"white\"/>\n";
  for (std::size_t i = 0; i < picture.title.size(); ++i)
    out << "<text x=\"" << kMargin << "\" y=\"" << Fixed(kMargin + kTitleLine * (i + 0.8))
        << "\" font-size=\"" << (i == 0 ? 15 : 12) << "\">" << Escape(picture.title[i])
        << "</text>\n";

  // One path per colour keeps the file small; a stroke of the fill colour hides the seams.
  std::map<std::string, std::string> byColour;
  for (std::size_t f = 0; f < mesh.triangles.size(); ++f) {
    std::string& d = byColour[Colour(picture.faceColour.at(f))];
    const auto& t = mesh.triangles[f];
    for (int i = 0; i < 3; ++i) {
      const Point& p = mesh.points[t[i]];
      d += (i == 0 ? "M" : "L") + view.X(p[0]) + " " + view.Y(p[1]);
    }
    d += "Z";
  }
  for (const auto& [colour, d] : byColour)
    out << "<path fill=\"" << colour << "\" stroke=\"" << colour << "\" stroke-width=\"0.4\" d=\""
        << d << "\"/>\n";

  std::string outline;
  for (const auto& edge : OutlineEdges(mesh)) {
    const Point& a = mesh.points[edge[0]];
    const Point& b = mesh.points[edge[1]];
    outline += "M" + view.X(a[0]) + " " + view.Y(a[1]) + "L" + view.X(b[0]) + " " + view.Y(b[1]);
  }
  out << "<path fill=\"none\" stroke=\"black\" stroke-width=\"1.2\" stroke-linecap=\"round\" d=\""
      << outline << "\"/>\n";

  // Isotherms, each labelled at its own height so that neighbouring labels do not collide;
  // the labels go on top of all lines.
  const std::size_t levels = picture.isotherms.size();
  std::string labels;
  for (std::size_t i = 0; i < levels; ++i) {
    const SvgIsotherm& iso = picture.isotherms[i];
    if (iso.segments.empty()) continue;
    std::string d;
    const double target = ymin + height * (levels - i - 0.5) / levels;
    auto middle = [](const Segment& s) { return 0.5 * (s[0] + s[1]); };
    Point labelAt = middle(iso.segments.front());
    for (const Segment& s : iso.segments) {
      d += "M" + view.X(s[0][0]) + " " + view.Y(s[0][1]) + "L" + view.X(s[1][0]) + " " +
           view.Y(s[1][1]);
      if (std::abs(middle(s)[1] - target) < std::abs(labelAt[1] - target)) labelAt = middle(s);
    }
    out << "<path fill=\"none\" stroke=\"#1a1a1a\" stroke-width=\"1\" d=\"" << d << "\"/>\n";
    // A white box under the label hides the lines it sits on.
    const double boxWidth = 6.5 * iso.label.size() + 4;
    labels += "<rect x=\"" + Fixed(view.left + (labelAt[0] - view.xmin) * scale - boxWidth / 2) +
              "\" y=\"" + Fixed(view.top + (view.ymax - labelAt[1]) * scale - 7) + "\" width=\"" +
              Fixed(boxWidth) +
              "\" height=\"14\" rx=\"3\" fill=\"white\" fill-opacity=\"0.85\"/>\n";
    labels += "<text x=\"" + view.X(labelAt[0]) + "\" y=\"" + view.Y(labelAt[1]) +
              "\" font-size=\"11\" text-anchor=\"middle\" dominant-baseline=\"central\">" +
              Escape(iso.label) + "</text>\n";
  }
  out << labels;

  // Legend: the colour ramp bottom (0) to top (legendMax), with five labelled ticks.
  const double lx = 2 * kMargin + pictureWidth, barHeight = 240, barWidth = 24;
  const double ly = view.top + 14.0 * picture.legendTitle.size() + 6;
  for (std::size_t i = 0; i < picture.legendTitle.size(); ++i)
    out << "<text x=\"" << Fixed(lx) << "\" y=\"" << Fixed(view.top + 14.0 * i + 10)
        << "\" font-size=\"12\">" << Escape(picture.legendTitle[i]) << "</text>\n";
  const std::size_t steps = picture.legendColour.size();
  for (std::size_t s = 0; s < steps; ++s) {
    const double y = ly + barHeight * (1.0 - double(s + 1) / steps);
    out << "<rect x=\"" << Fixed(lx) << "\" y=\"" << Fixed(y, 2) << "\" width=\"" << barWidth
        << "\" height=\"" << Fixed(barHeight / steps + 0.5, 2) << "\" fill=\""
        << Colour(picture.legendColour[s]) << "\"/>\n";
  }
  out << "<rect x=\"" << Fixed(lx) << "\" y=\"" << Fixed(ly) << "\" width=\"" << barWidth
      << "\" height=\"" << barHeight << "\" fill=\"none\" stroke=\"black\"/>\n";
  for (int tick = 0; tick <= 4; ++tick) {
    const double value = picture.legendMax * tick / 4.0;
    const std::string prefix = (tick == 4 && picture.legendOpenEnded) ? "≥ " : "";
    out << "<text x=\"" << Fixed(lx + barWidth + 6) << "\" y=\""
        << Fixed(ly + barHeight * (1.0 - tick / 4.0) + 4) << "\" font-size=\"11\">" << prefix
        << Fixed(value, value < 10 ? 2 : 1) << "</text>\n";
  }
  out << "<path stroke=\"#1a1a1a\" d=\"M" << Fixed(lx) << " " << Fixed(ly + barHeight + 24)
      << "h24\"/><text x=\"" << Fixed(lx + barWidth + 6) << "\" y=\"" << Fixed(ly + barHeight + 28)
      << "\" font-size=\"11\">isotherm</text>\n";
  out << "</svg>\n";
  if (!out) throw std::runtime_error("error while writing " + path);
}

}  // namespace brindle::study
