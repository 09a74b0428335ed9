#include "levelset_s.h"

namespace mmgcompat {

int DiscretizeLevelSetSurface(MMG5_Mesh&, MMG5_Sol*, MMG5_Sol*) {
  return MMG5_STRONGFAILURE;
}

}  // namespace mmgcompat
