// 3-D picture of the surfaces an environment touches, coloured by temperature: an axonometric
// view from the environment's side, faces drawn back to front (painter's algorithm), the extreme
// point marked and the symmetry planes of a partial model traced along the surface's edges.
#ifndef BRINDLE_STUDY_SURFACE_PICTURE_H
#define BRINDLE_STUDY_SURFACE_PICTURE_H

#include <array>
#include <string>
#include <vector>

#include "color_scale.h"
#include "model.h"
#include "section_cut.h"
#include "svg_writer.h"

namespace brindle::study {

struct SurfaceScene {
  std::vector<std::string> title;
  std::vector<Point> points;                  // m
  std::vector<std::array<int, 3>> triangles;  // normals point out of the solid
  std::vector<double> temperature;            // per point, °C
  ColorScale scale;
  std::vector<SvgMarker> markers;  // at model points
  std::vector<AxisPlane> symmetry;
};

// Direction the viewer looks from (unit, pointing from the model towards the viewer): the
// surfaces' mean outward normal, turned a little sideways and up so that depth shows.
Point ViewDirection(const SurfaceScene& scene);

// Screen axes (right, up) for a view direction; model z stays up unless it is the direction.
std::array<Point, 2> ScreenAxes(const Point& view);

// Order in which the faces are painted: farthest from the viewer first.
std::vector<int> PaintOrder(const SurfaceScene& scene, const Point& view);

std::string SurfaceSvgText(const SurfaceScene& scene);
void WriteSurfaceSvg(const std::string& path, const SurfaceScene& scene);

}  // namespace brindle::study

#endif
