#include "mmglink/mmg_handles.h"

#include <new>

namespace brindle {

// MMG exits the process itself when it runs out of memory during creation; a refusal can
// only come from a bad argument list, which would be a programming error here. Either way no
// structure exists to work on, which is reported like any other allocation failure.

void Mmg3dHandles::CreateWithLevelSet() {
  if (MMG3D_Init_mesh(MMG5_ARG_start, MMG5_ARG_ppMesh, &mesh, MMG5_ARG_ppLs, &levelSet,
                      MMG5_ARG_end) != 1 ||
      !mesh || !levelSet) {
    Release();
    throw std::bad_alloc();
  }
}

void Mmg3dHandles::CreateWithMetric() {
  if (MMG3D_Init_mesh(MMG5_ARG_start, MMG5_ARG_ppMesh, &mesh, MMG5_ARG_ppMet, &metric,
                      MMG5_ARG_end) != 1 ||
      !mesh || !metric) {
    Release();
    throw std::bad_alloc();
  }
}

void Mmg3dHandles::Release() {
  if (!mesh) return;
  // The metric handle is passed even when it was never created, as MMG accepts a null one.
  // The level set is freed as well: MMG has already released its values, not the structure.
  if (levelSet) {
    MMG3D_Free_all(MMG5_ARG_start, MMG5_ARG_ppMesh, &mesh, MMG5_ARG_ppMet, &metric, MMG5_ARG_ppLs,
                   &levelSet, MMG5_ARG_end);
  } else {
    MMG3D_Free_all(MMG5_ARG_start, MMG5_ARG_ppMesh, &mesh, MMG5_ARG_ppMet, &metric, MMG5_ARG_end);
  }
  mesh = nullptr;
  levelSet = nullptr;
  metric = nullptr;
}

void MmgsHandles::CreateWithLevelSet() {
  if (MMGS_Init_mesh(MMG5_ARG_start, MMG5_ARG_ppMesh, &mesh, MMG5_ARG_ppLs, &levelSet,
                     MMG5_ARG_end) != 1 ||
      !mesh || !levelSet) {
    Release();
    throw std::bad_alloc();
  }
}

void MmgsHandles::CreateWithMetric() {
  if (MMGS_Init_mesh(MMG5_ARG_start, MMG5_ARG_ppMesh, &mesh, MMG5_ARG_ppMet, &metric,
                     MMG5_ARG_end) != 1 ||
      !mesh || !metric) {
    Release();
    throw std::bad_alloc();
  }
}

void MmgsHandles::Release() {
  if (!mesh) return;
  if (levelSet) {
    MMGS_Free_all(MMG5_ARG_start, MMG5_ARG_ppMesh, &mesh, MMG5_ARG_ppMet, &metric, MMG5_ARG_ppLs,
                  &levelSet, MMG5_ARG_end);
  } else {
    MMGS_Free_all(MMG5_ARG_start, MMG5_ARG_ppMesh, &mesh, MMG5_ARG_ppMet, &metric, MMG5_ARG_end);
  }
  mesh = nullptr;
  levelSet = nullptr;
  metric = nullptr;
}

}  // namespace brindle
