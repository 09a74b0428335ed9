// Parameter storage of both modules: MMG's key numbering, its defaults, and the integer /
// real setter split (a real key given to the integer setter is refused).
#ifndef BRINDLE_COMPAT_MMG_PARAMETERS_H
#define BRINDLE_COMPAT_MMG_PARAMETERS_H

#include "mesh_data.h"

namespace mmgcompat {

void SetDefaultParameters(MMG5_Mesh& mesh);

// Return 1 when the key belongs to the setter's kind, else print MMG's stderr line and 0.
int SetIntegerParameter(MMG5_Mesh& mesh, int key, MMG5_int value);
int SetRealParameter(MMG5_Mesh& mesh, int key, double value);

// The level value cut by the ls drivers (DPARAM_ls, default 0) and the reference of the
// interface (IPARAM_isoref, default 10).
double LevelValue(const MMG5_Mesh& mesh);
MMG5_int IsoReference(const MMG5_Mesh& mesh);

}  // namespace mmgcompat

#endif
