// SVG picture of a flat result (a 2-D section, or a cut through a 3-D model): coloured
// triangles, material outlines, isotherms labelled on their own line, marked points, guide lines
// (symmetry planes) and a colour legend with round ticks.
#ifndef BRINDLE_STUDY_SVG_WRITER_H
#define BRINDLE_STUDY_SVG_WRITER_H

#include <array>
#include <functional>
#include <string>
#include <vector>

#include "colour_scale.h"
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
  Rgb colour;
  std::vector<Point> corners;
  int triangle = -1;  // the mesh triangle it covers whole, if it does
};

struct SvgPicture {
  std::vector<std::string> title;  // lines above the picture
  std::vector<Rgb> faceColour;     // per triangle, unless `fills` are given
  std::vector<SvgPolygon> fills;   // drawn instead of the coloured triangles when not empty
  std::vector<char> hidden;        // per triangle, non-zero: not drawn; empty: all drawn
  ColourScale scale;
  std::vector<SvgIsotherm> isotherms;
  std::vector<SvgMarker> markers;
  std::vector<SvgGuide> guides;
  std::string isothermColour = "#1a1a1a";        // light on the dark flux colours
  std::array<std::string, 2> axes = {"x", "y"};  // names of the picture's horizontal/vertical
};

// Picture coordinates of a label box: centre and size in px.
struct LabelBox {
  double x, y, width, height;
  bool Overlaps(const LabelBox& other, double gap = 2.0) const;
  bool Inside(const LabelBox& area) const;
};

// Picks one candidate centre per label (or -1 when none fits): boxes stay inside `area` and
// overlap neither one another nor `occupied`; among those, candidates whose box crosses fewer
// `obstacles` segments and that lie nearer the label's target are preferred.
std::vector<int> PlaceLabels(const std::vector<std::vector<std::array<double, 2>>>& candidates,
                             const std::vector<std::array<double, 2>>& targets,
                             const std::vector<std::array<double, 2>>& sizes, const LabelBox& area,
                             std::vector<LabelBox> occupied,
                             const std::vector<std::vector<std::array<double, 4>>>& obstacles);

// The picture as SVG text, the mesh drawn in its xy plane (y up).
std::string SvgText(const TriMesh& mesh, const SvgPicture& picture);

// Writes SvgText to a file; throws std::runtime_error when the file cannot be written.
void WriteSvg(const std::string& path, const TriMesh& mesh, const SvgPicture& picture);

// Edges to outline: boundary edges of the drawn triangles and edges between different materials.
std::vector<std::array<int, 2>> OutlineEdges(const TriMesh& mesh,
                                             const std::vector<char>& hidden = {});

// Path data of the region the triangles cover: their outer boundary as closed loops (holes run
// the other way round), so that a region of many triangles costs only its outline.
std::string RegionPath(const TriMesh& mesh, const std::vector<int>& triangles,
                       const std::function<std::string(const Point&)>& xy);

// Shared SVG text helpers.
std::string SvgNumber(double value, int decimals = 1);
std::string SvgColour(const Rgb& c);
std::string XmlEscape(const std::string& text);
// The legend of a colour scale at (x, y): title lines, ramp and round ticks; returns its height.
double SvgLegend(std::string& out, const ColourScale& scale, double x, double y);

}  // namespace brindle::study

#endif
