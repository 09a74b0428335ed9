// Owners of the MMG structures created for one call, so that every way out of the call,
// failures and exceptions included, releases them exactly once.
#ifndef BRINDLE_MMGLINK_MMG_HANDLES_H
#define BRINDLE_MMGLINK_MMG_HANDLES_H

#include "mmg/mmg3d/libmmg3d.h"
#include "mmg/mmgs/libmmgs.h"

namespace brindle {

// The library hands MMG its int arrays (connectivity, references, the faces and colours of
// openNURBS meshes) without conversion.
static_assert(sizeof(MMG5_int) == sizeof(int), "MMG must be built with 32-bit indices");

class Mmg3dHandles {
 public:
  Mmg3dHandles() = default;
  ~Mmg3dHandles() { Release(); }
  Mmg3dHandles(const Mmg3dHandles&) = delete;
  Mmg3dHandles& operator=(const Mmg3dHandles&) = delete;

  // Creates the mesh and a level-set solution; the metric is left uncreated.
  void CreateWithLevelSet();
  // Creates the mesh and a metric.
  void CreateWithMetric();
  // Frees whatever was created and nulls the handles; safe to call again.
  void Release();

  MMG5_pMesh mesh = nullptr;
  MMG5_pSol levelSet = nullptr;
  MMG5_pSol metric = nullptr;
};

class MmgsHandles {
 public:
  MmgsHandles() = default;
  ~MmgsHandles() { Release(); }
  MmgsHandles(const MmgsHandles&) = delete;
  MmgsHandles& operator=(const MmgsHandles&) = delete;

  void CreateWithLevelSet();
  void CreateWithMetric();
  void Release();

  MMG5_pMesh mesh = nullptr;
  MMG5_pSol levelSet = nullptr;
  MMG5_pSol metric = nullptr;
};

}  // namespace brindle

#endif
