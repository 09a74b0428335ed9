// Internal layout of the MMG-compatible mesh and solution structures. Entities are stored
// 1-based (slot 0 unused) as in MMG, so API numbers index the tables directly.
#ifndef BRINDLE_COMPAT_MMG_MESH_DATA_H
#define BRINDLE_COMPAT_MMG_MESH_DATA_H

#include <array>
#include <vector>

#include "mmg/common/libmmgtypes.h"

namespace mmgcompat {

struct Point {
  double c[3] = {0.0, 0.0, 0.0};
  MMG5_int ref = 0;
  bool used = false;  // referenced by an element; unused points are dropped by the ls drivers
};

struct Tetra {
  MMG5_int v[4] = {0, 0, 0, 0};
  MMG5_int ref = 0;
};

struct Tria {
  MMG5_int v[3] = {0, 0, 0};
  MMG5_int ref = 0;
};

// Room for the parameter keys of both modules (MMG3D has 35, MMGS 30).
constexpr int kParamSlots = 40;

// Which module created the structure; decides the parameter numbering and the messages.
enum class Module { k3d, kSurface };

}  // namespace mmgcompat

struct MMG5_Mesh {
  mmgcompat::Module module = mmgcompat::Module::k3d;
  int dim = 3;
  MMG5_int np = 0, ne = 0, nt = 0, na = 0;
  // Call-by-call getter cursors; Set_meshSize makes them equal to the counts.
  MMG5_int npi = 0, nei = 0, nti = 0, nai = 0;
  std::vector<mmgcompat::Point> point;
  std::vector<mmgcompat::Tetra> tetra;
  std::vector<mmgcompat::Tria> tria;
  std::array<MMG5_int, mmgcompat::kParamSlots> iparam{};
  std::array<double, mmgcompat::kParamSlots> dparam{};
  // Solutions created by the same Init_mesh call. Free_all releases those it is not given
  // too, so a caller that lists only the mesh (as MMG allows) leaks nothing.
  std::vector<MMG5_Sol*> companions;
};

struct MMG5_Sol {
  int dim = 3;
  int size = 1;
  int type = MMG5_Scalar;
  MMG5_int np = 0, npi = 0;
  std::vector<double> m;  // 1-based; empty means "no values" (MMG's null array)
};

#endif
