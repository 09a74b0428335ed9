#include "examples.h"

namespace brindle::study {
double SeriesUValue(const std::vector<Layer>& wall) {
  double resistance = kInteriorSurfaceResistance + kExteriorSurfaceResistance;
  for (const Layer& layer : wall)
    resistance += layer.thickness / layer.conductivity;
  return 1.0 / resistance;
}

Detail SlabSection(bool withSlab) {
  enum { kMasonry, kInsulation, kConcrete };
  Detail detail;
  detail.wall = {{"masonry", 0.24, 0.80}, {"insulation", 0.16, 0.035}};
  detail.materials = {{"masonry", 0.80, Role::kSolid},
                      {"insulation", 0.035, Role::kSolid},
                      {"concrete", 2.30, Role::kSolid}};
  // x runs from the room (negative) to the outside; the slab lies between y = 0 and 0.2.
  const double bottom = -1.0, top = 1.2, slabTop = 0.2, roomDepth = -1.0;
  const double masonry = 0.24, outer = 0.40;
  detail.blocks = {
      {{0, bottom, 0}, {masonry, top, 0}, kMasonry},
      {{masonry, bottom, 0}, {outer, top, 0}, kInsulation},
  };
  if (withSlab) detail.blocks.push_back({{roomDepth, 0, 0}, {outer, slabTop, 0}, kConcrete});
  detail.wallLength = top - bottom;
  detail.outsideFace = outer;
  return detail;
}

Detail SteelBarDetail() {
  enum { kConcrete, kInsulation, kSteel };
  Detail detail;
  detail.wall = {{"concrete", 0.18, 2.30}, {"insulation", 0.20, 0.035}};
  detail.materials = {{"concrete", 2.30, Role::kSolid},
                      {"insulation", 0.035, Role::kSolid},
                      {"steel", 50.0, Role::kSolid}};
  // x through the wall from the room; the bar's axis is the x axis, so y >= 0, z >= 0 is a
  // quarter of the detail with adiabatic symmetry planes.
  const double edge = 0.5, concrete = 0.18, outer = 0.38, bar = 0.02, anchor = 0.08;
  detail.blocks = {
      {{0, 0, 0}, {concrete, edge, edge}, kConcrete},
      {{concrete, 0, 0}, {outer, edge, edge}, kInsulation},
      {{anchor, 0, 0}, {outer, bar, bar}, kSteel},
  };
  // The flow crowds along the bar's edges, where steel meets insulation: the mesh is finest at
  // the bar's faces and ends and at the insulation's faces, 20 times coarser at the room face,
  // the symmetry planes and the cut edges.
  detail.focus = {{{{anchor, concrete, outer}, {bar}, {bar}}}, 20.0};
  detail.wallArea = edge * edge;
  detail.symmetryCopies = 4;
  detail.outsideFace = outer;
  return detail;
}

}  // namespace brindle::study
