// Level-set discretisation of a triangle surface mesh (the work of MMGS_mmgsls).
#ifndef BRINDLE_COMPAT_MMG_LEVELSET_S_H
#define BRINDLE_COMPAT_MMG_LEVELSET_S_H

#include "mesh_data.h"

namespace mmgcompat {

// Returns MMG5_SUCCESS, MMG5_LOWFAILURE or MMG5_STRONGFAILURE with MMG's meaning.
int DiscretizeLevelSetSurface(MMG5_Mesh& mesh, MMG5_Sol* ls, MMG5_Sol* met);

}  // namespace mmgcompat

#endif
