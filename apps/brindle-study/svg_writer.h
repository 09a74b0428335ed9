// SVG picture of a flat result (a 2-D section, or a cut through a 3-D model): coloured
// triangles, material outlines, isotherms labelled on their own line, marked points, guide lines
// (symmetry planes) and a colour legend with round ticks.
#ifndef BRINDLE_STUDY_SVG_WRITER_H
#define BRINDLE_STUDY_SVG_WRITER_H

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "color_scale.h"
#include "model.h"
#include "solve.h"

namespace brindle::study {

struct SvgIsotherm {
  std::string label;  // e.g. "12 °C"
  std::vector<Segment> segments;
};

// A point worth pointing at, e.g. the coldest point of a surface.
struct SvgMarker {
  Point at;
  std::string label;
};

// A dash-dotted line, e.g. where a symmetry plane cuts the picture.
struct SvgGuide {
  std::vector<Segment> segments;
  std::string label;
};

// A filled polygon, e.g. the part of a triangle between two temperatures.
struct SvgPolygon {
  Rgb color;
  std::vector<Point> corners;
  int triangle = -1;  // the mesh triangle it covers whole, if it does
};

struct SvgPicture {
  std::vector<std::string> title;  // lines above the picture
  std::vector<Rgb> faceColor;      // per triangle, unless `fills` are given
  std::vector<SvgPolygon> fills;   // drawn instead of the coloured triangles when not empty
  std::vector<char> hidden;        // per triangle, non-zero: not drawn; empty: all drawn
  ColorScale scale;
  std::vector<SvgIsotherm> isotherms;
  std::vector<SvgMarker> markers;
  std::vector<SvgGuide> guides;
  std::string isothermColor = "#1a1a1a";         // light on the dark flux colours
  std::array<std::string, 2> axes = {"x", "y"};  // names of the picture's horizontal/vertical
};

// Picture coordinates of a label box: centre and size in px.
struct LabelBox {
  double x, y, width, height;
  bool Overlaps(const LabelBox& other, double gap = 2.0) const;
  bool Inside(const LabelBox& area) const;
};

// How marked points are drawn: a black ring over a white one, and the distances from the point
// to the edge of its label at which the label is tried.
struct MarkerStyle {
  double radius;                    // of the rings, px
  double halo;                      // width of the white ring
  double clearance;                 // side of the square a ring keeps free of labels
  std::array<double, 4> distances;  // tried in turn, each in 16 directions
  std::array<double, 2> preferred;  // the best label centre: right (+ half its width), up
};

// Picks one candidate centre per label (or -1 when none fits): boxes stay inside `area` and
// overlap neither one another nor `occupied`; among those, candidates whose box crosses fewer
// `obstacles` segments and that lie nearer the label's target are preferred.
std::vector<int> PlaceLabels(const std::vector<std::vector<std::array<double, 2>>>& candidates,
                             const std::vector<std::array<double, 2>>& targets,
                             const std::vector<std::array<double, 2>>& sizes, const LabelBox& area,
                             std::vector<LabelBox> occupied,
                             const std::vector<std::vector<std::array<double, 4>>>& obstacles);

// Appends the rings of marked points (picture coordinates) to `out` and places their labels of
// the given sizes around them; a label that fits nowhere gets no box. Rings and placed labels
// join `occupied`.
std::vector<std::optional<LabelBox>> DrawMarkerRings(
    std::string& out, const std::vector<std::array<double, 2>>& at,
    const std::vector<std::array<double, 2>>& sizes, const MarkerStyle& style, const LabelBox& area,
    std::vector<LabelBox>& occupied);

// A black line from a marked point to its label.
std::string LeaderSvg(const std::array<double, 2>& from, const LabelBox& label, double width);

// The picture as SVG text, the mesh drawn in its xy plane (y up).
std::string SvgText(const TriMesh& mesh, const SvgPicture& picture);

// Writes SvgText to a file; throws std::runtime_error when the file cannot be written.
void WriteSvg(const std::string& path, const TriMesh& mesh, const SvgPicture& picture);

// Writes text to a file as it stands; throws std::runtime_error when it cannot.
void WriteTextFile(const std::string& path, const std::string& text);

// Edges to outline: boundary edges of the drawn triangles and edges between different materials.
std::vector<std::array<int, 2>> OutlineEdges(const TriMesh& mesh,
                                             const std::vector<char>& hidden = {});

// Path data of the region the triangles cover: their outer boundary as closed loops (holes run
// the other way round), so that a region of many triangles costs only its outline.
std::string RegionPath(const TriMesh& mesh, const std::vector<int>& triangles,
                       const std::function<std::string(const Point&)>& xy);

// Shared SVG text helpers.
std::string SvgNumber(double value, int decimals = 1);
// The start of a picture of the given size in px: the svg element, a white ground and the title
// lines (the first one larger).
std::string SvgOpening(double width, double height, const std::vector<std::string>& title);
// The legend entry of the symmetry planes' dash-dotted line, at (x, y).
std::string SymmetryLegendSvg(double x, double y);
// Glyphs of UTF-8 text (continuation bytes do not start one).
std::size_t GlyphCount(const std::string& text);
std::string SvgColor(const Rgb& c);
std::string XmlEscape(const std::string& text);
// The legend of a colour scale at (x, y): title lines, ramp and round ticks; returns its height.
double SvgLegend(std::string& out, const ColorScale& scale, double x, double y);

}  // namespace brindle::study

#endif
