// Level-set discretisation of a tetrahedral mesh (the work of MMG3D_mmg3dls).
#ifndef BRINDLE_COMPAT_MMG_LEVELSET_3D_H
#define BRINDLE_COMPAT_MMG_LEVELSET_3D_H

#include "mesh_data.h"

namespace mmgcompat {

// Returns MMG5_SUCCESS, MMG5_LOWFAILURE or MMG5_STRONGFAILURE with MMG's meaning.
int DiscretizeLevelSet3d(MMG5_Mesh& mesh, MMG5_Sol* ls, MMG5_Sol* met);

}  // namespace mmgcompat

#endif
