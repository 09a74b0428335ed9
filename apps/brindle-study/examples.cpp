#include "examples.h"

namespace brindle::study {
namespace {

Material SurfaceLayer(const char* name, double resistance, Role role) {
  return {name, kSurfaceLayerThickness / resistance, role};
}

}  // namespace

double SeriesUValue(const std::vector<Layer>& wall) {
  double resistance = kInteriorSurfaceResistance + kExteriorSurfaceResistance;
  for (const Layer& layer : wall)
    resistance += layer.thickness / layer.conductivity;
  return 1.0 / resistance;
}

Detail SlabSection(bool withSlab) {
  enum { kMasonry, kInsulation, kConcrete, kInside, kOutside };
  Detail detail;
  detail.wall = {{"masonry", 0.24, 0.80}, {"insulation", 0.16, 0.035}};
  detail.materials = {
      {"masonry", 0.80, Role::Solid},
      {"insulation", 0.035, Role::Solid},
      {"concrete", 2.30, Role::Solid},
      SurfaceLayer("interior surface resistance", kInteriorSurfaceResistance, Role::WarmLayer),
      SurfaceLayer("exterior surface resistance", kExteriorSurfaceResistance, Role::ColdLayer)};
  // x runs from the room (negative) to the outside; the slab lies between y = 0 and 0.2.
  const double s = kSurfaceLayerThickness;
  const double bottom = -1.0, top = 1.2, slabTop = 0.2, roomDepth = -1.0;
  const double masonry = 0.24, outer = 0.40;
  detail.blocks = {
      {{-s, bottom, 0}, {0, top, 0}, kInside},
      {{0, bottom, 0}, {masonry, top, 0}, kMasonry},
      {{masonry, bottom, 0}, {outer, top, 0}, kInsulation},
      {{outer, bottom, 0}, {outer + s, top, 0}, kOutside},
  };
  if (withSlab) {
    detail.blocks.push_back({{roomDepth, slabTop, 0}, {0, slabTop + s, 0}, kInside});
    detail.blocks.push_back({{roomDepth, -s, 0}, {0, 0, 0}, kInside});
    detail.blocks.push_back({{roomDepth, 0, 0}, {outer, slabTop, 0}, kConcrete});
  }
  detail.wallLength = top - bottom;
  return detail;
}

Detail SteelBarDetail() {
  enum { kConcrete, kInsulation, kSteel, kInside, kOutside };
  Detail detail;
  detail.wall = {{"concrete", 0.18, 2.30}, {"insulation", 0.20, 0.035}};
  detail.materials = {
      {"concrete", 2.30, Role::Solid},
      {"insulation", 0.035, Role::Solid},
      {"steel", 50.0, Role::Solid},
      SurfaceLayer("interior surface resistance", kInteriorSurfaceResistance, Role::WarmLayer),
      SurfaceLayer("exterior surface resistance", kExteriorSurfaceResistance, Role::ColdLayer)};
  // x through the wall from the room; the bar's axis is the x axis, so y >= 0, z >= 0 is a
  // quarter of the detail with adiabatic symmetry planes.
  const double s = kSurfaceLayerThickness;
  const double edge = 0.5, concrete = 0.18, outer = 0.38, bar = 0.02, anchor = 0.08;
  detail.blocks = {
      {{-s, 0, 0}, {0, edge, edge}, kInside},
      {{0, 0, 0}, {concrete, edge, edge}, kConcrete},
      {{concrete, 0, 0}, {outer, edge, edge}, kInsulation},
      {{outer, 0, 0}, {outer + s, edge, edge}, kOutside},
      {{anchor, 0, 0}, {outer, bar, bar}, kSteel},
  };
  detail.wallArea = edge * edge;
  detail.symmetryCopies = 4;
  return detail;
}

}  // namespace brindle::study
