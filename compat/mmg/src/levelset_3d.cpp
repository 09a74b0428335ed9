#include "levelset_3d.h"

namespace mmgcompat {

int DiscretizeLevelSet3d(MMG5_Mesh&, MMG5_Sol*, MMG5_Sol*) {
  return MMG5_STRONGFAILURE;
}

}  // namespace mmgcompat
