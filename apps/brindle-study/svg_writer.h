// SVG picture of a 2-D result: coloured triangles, material outline, labelled isotherms and a
// colour legend.
#ifndef BRINDLE_STUDY_SVG_WRITER_H
#define BRINDLE_STUDY_SVG_WRITER_H

#include <array>
#include <string>
#include <vector>

#include "model.h"
#include "solve.h"

namespace brindle::study {

using Rgb = std::array<int, 3>;

struct SvgIsotherm {
  std::string label;  // e.g. "12.5 °C"
  std::vector<Segment> segments;
};

struct SvgPicture {
  std::vector<std::string> title;        // lines above the picture
  std::vector<Rgb> faceColour;           // per triangle
  std::vector<Rgb> legendColour;         // colour ramp from the lowest to the highest value
  std::vector<std::string> legendTitle;  // lines above the ramp
  double legendMax = 1.0;                // value at the top of the ramp
  bool legendOpenEnded = false;          // the top value is a clip ("≥")
  std::vector<SvgIsotherm> isotherms;
};

// Draws the mesh in its xy plane (y up). Throws std::runtime_error when the file cannot be
// written.
void WriteSvg(const std::string& path, const TriMesh& mesh, const SvgPicture& picture);

// Edges to outline: mesh boundary edges and edges between different materials.
std::vector<std::array<int, 2>> OutlineEdges(const TriMesh& mesh);

}  // namespace brindle::study

#endif
