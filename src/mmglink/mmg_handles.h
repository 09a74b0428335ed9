// Owners of the MMG structures created for one call, so that every way out of the call,
// failures and exceptions included, releases them exactly once.
#ifndef BRINDLE_MMGLINK_MMG_HANDLES_H
#define BRINDLE_MMGLINK_MMG_HANDLES_H

#include <new>

#include "mmglink/mmg_api.h"

namespace brindle {

// The library hands MMG its int arrays (connectivity, references, the faces and colors of
// openNURBS meshes) without conversion.
static_assert(sizeof(MMG5_int) == sizeof(int), "MMG must be built with 32-bit indices");

// `Api` is Mmg3dApi or MmgsApi.
template <class Api>
class MmgHandles {
 public:
  MmgHandles() = default;
  ~MmgHandles() { Release(); }
  MmgHandles(const MmgHandles&) = delete;
  MmgHandles& operator=(const MmgHandles&) = delete;

  // Creates the mesh and a level-set solution; the metric is left uncreated.
  void CreateWithLevelSet() { Create(MMG5_ARG_ppLs, &levelSet); }
  // Creates the mesh and a metric.
  void CreateWithMetric() { Create(MMG5_ARG_ppMet, &metric); }

  // Frees whatever was created and nulls the handles; safe to call again.
  void Release() {
    if (!mesh) return;
    // The metric handle is passed even when it was never created, as MMG accepts a null one.
    // The level set is freed as well: MMG has already released its values, not the structure.
    if (levelSet) {
      Api::FreeAll(&mesh, &metric, &levelSet);
    } else {
      Api::FreeAll(&mesh, &metric);
    }
    mesh = nullptr;
    levelSet = nullptr;
    metric = nullptr;
  }

  MMG5_pMesh mesh = nullptr;
  MMG5_pSol levelSet = nullptr;
  MMG5_pSol metric = nullptr;

 private:
  // MMG exits the process itself when it runs out of memory during creation; a refusal can
  // only come from a bad argument list, which would be a programming error here. Either way no
  // structure exists to work on, which is reported like any other allocation failure.
  void Create(int solutionKey, MMG5_pSol* solution) {
    if (Api::InitMesh(&mesh, solutionKey, solution) != 1 || !mesh || !*solution) {
      Release();
      throw std::bad_alloc();
    }
  }
};

}  // namespace brindle

#endif
