// The built-in details: a concrete floor slab crossing the insulation of a masonry wall (2-D)
// and a steel bar through an insulated concrete wall (3-D).
#ifndef BRINDLE_STUDY_EXAMPLES_H
#define BRINDLE_STUDY_EXAMPLES_H

#include <vector>

#include "model.h"

namespace brindle::study {

constexpr double kInteriorSurfaceResistance = 0.13;  // m2K/W, heat flow horizontal
constexpr double kExteriorSurfaceResistance = 0.04;  // m2K/W

// One homogeneous layer of a plane wall.
struct Layer {
  const char* name;
  double thickness;     // m
  double conductivity;  // W/(m K)
};

// A detail as blocks and materials, with the plane wall it is compared against. x runs from the
// room to the outside: the room's surfaces are the face x = 0 and the faces inside the room
// (x < 0), the outside is the face x = outsideFace; every other face is a cut (adiabatic).
struct Detail {
  std::vector<Material> materials;
  std::vector<Block> blocks;
  std::vector<Layer> wall;   // layers of the undisturbed wall, inside to outside
  double wallLength = 0.0;   // 2-D: height of the section on its exterior face, m
  double wallArea = 0.0;     // 3-D: area of the modelled wall on its exterior face, m2
  int symmetryCopies = 1;    // the model is this fraction of the whole detail
  double outsideFace = 0.0;  // m
};

// Thermal transmittance of a plane wall with both surface resistances, W/(m2 K).
double SeriesUValue(const std::vector<Layer>& wall);

// Masonry wall with exterior insulation and an intermediate floor slab that runs through the
// insulation to the outer face; cut off 1 m above and below the slab and 1 m into the room.
// Without the slab the same section is the undisturbed wall.
Detail SlabSection(bool withSlab);

// A quarter (by symmetry) of 1 m2 of insulated concrete wall pierced by a 40 mm square steel
// bar that runs from inside the concrete to the outer face of the insulation.
Detail SteelBarDetail();

}  // namespace brindle::study

#endif
