// Pictures of flat results in the two colour modes: temperature (the default) and heat-flux
// density, with isotherms at round temperatures. Surface-resistance layers stand for air films,
// not construction, so they are left out of the drawing and of the isotherms.
#ifndef BRINDLE_STUDY_FLAT_PICTURE_H
#define BRINDLE_STUDY_FLAT_PICTURE_H

#include <string>
#include <vector>

#include "color_scale.h"
#include "model.h"
#include "solve.h"
#include "svg_writer.h"

namespace brindle::study {

// Per triangle: non-zero when its material is a surface-resistance layer.
std::vector<char> SurfaceLayerTriangles(const TriMesh& mesh);

// Isotherm segments per level of a per-vertex field over the triangles not hidden. A vertex at
// exactly a level counts as above it, so that every crossing is traced once.
std::vector<std::vector<Segment>> TraceIsotherms(const TriMesh& mesh,
                                                 const std::vector<double>& values,
                                                 const std::vector<char>& hidden,
                                                 const std::vector<double>& levels);

// The part of a triangle (corners `p`, linear field with corner values `v`) where
// low <= value <= high, as a convex polygon (empty when there is none).
std::vector<Point> ClipToBand(const std::array<Point, 3>& p, const std::array<double, 3>& v,
                              double low, double high);

// Round temperatures strictly between the lowest and the highest drawn value, about `wanted`.
std::vector<double> RoundLevels(const TriMesh& mesh, const std::vector<double>& values,
                                const std::vector<char>& hidden, int wanted);

// Triangles coloured by their mean vertex temperature (°C) on `scale`, with labelled isotherms.
SvgPicture TemperaturePicture(const TriMesh& mesh, const std::vector<double>& temperature,
                              const ColorScale& scale, int isotherms,
                              const std::vector<std::string>& title);

// Triangles coloured by their heat-flux density, with the same isotherms.
SvgPicture FluxPicture(const TriMesh& mesh, const std::vector<double>& fluxDensity,
                       const std::vector<double>& temperature, const ColorScale& scale,
                       int isotherms, const std::vector<std::string>& title);

// Boundary edges of the drawn triangles that lie on the line coordinate[axis] = value (axis 0
// or 1 of the picture), for marking symmetry planes.
std::vector<Segment> EdgesOnLine(const TriMesh& mesh, const std::vector<char>& hidden, int axis,
                                 double value);

}  // namespace brindle::study

#endif
