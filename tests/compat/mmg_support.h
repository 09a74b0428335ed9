// MMG meshes with their metric and level-set solutions, released on scope exit. Written
// against the MMG headers only, so the tests run against the bundled subset and a real MMG.
#ifndef BRINDLE_TESTS_COMPAT_MMG_SUPPORT_H
#define BRINDLE_TESTS_COMPAT_MMG_SUPPORT_H

#include <gtest/gtest.h>

#include <vector>

#include "mmg/mmg3d/libmmg3d.h"
#include "mmg/mmgs/libmmgs.h"

namespace brindle::mmg_test {

// The volume and the surface library differ only in their function and parameter names.
struct Api {
  int (*init)(const int, ...);
  int (*freeAll)(const int, ...);
  int (*setSize)(MMG5_pMesh, MMG5_int, MMG5_int);
  int (*setVertices)(MMG5_pMesh, double*, MMG5_int*);
  int (*setElements)(MMG5_pMesh, MMG5_int*, MMG5_int*);
  int (*setI)(MMG5_pMesh, MMG5_pSol, int, MMG5_int);
  int (*setD)(MMG5_pMesh, MMG5_pSol, int, double);
  int (*setSolSize)(MMG5_pMesh, MMG5_pSol, int, MMG5_int, int);
  int (*setScalars)(MMG5_pSol, double*);
  int (*check)(MMG5_pMesh, MMG5_pSol);
  int (*cut)(MMG5_pMesh, MMG5_pSol, MMG5_pSol);
  int corners, iso, nreg, noinsert, angle, hausd, hgrad, hmax;
};

inline constexpr Api kVolume = {MMG3D_Init_mesh,
                                MMG3D_Free_all,
                                [](MMG5_pMesh mesh, MMG5_int np, MMG5_int ne) {
                                  return MMG3D_Set_meshSize(mesh, np, ne, 0, 0, 0, 0);
                                },
                                MMG3D_Set_vertices,
                                MMG3D_Set_tetrahedra,
                                MMG3D_Set_iparameter,
                                MMG3D_Set_dparameter,
                                MMG3D_Set_solSize,
                                MMG3D_Set_scalarSols,
                                MMG3D_Chk_meshData,
                                MMG3D_mmg3dls,
                                4,
                                MMG3D_IPARAM_iso,
                                MMG3D_IPARAM_nreg,
                                MMG3D_IPARAM_noinsert,
                                MMG3D_IPARAM_angle,
                                MMG3D_DPARAM_hausd,
                                MMG3D_DPARAM_hgrad,
                                MMG3D_DPARAM_hmax};

inline constexpr Api kSurface = {
    MMGS_Init_mesh,
    MMGS_Free_all,
    [](MMG5_pMesh mesh, MMG5_int np, MMG5_int nt) { return MMGS_Set_meshSize(mesh, np, nt, 0); },
    MMGS_Set_vertices,
    MMGS_Set_triangles,
    MMGS_Set_iparameter,
    MMGS_Set_dparameter,
    MMGS_Set_solSize,
    MMGS_Set_scalarSols,
    MMGS_Chk_meshData,
    MMGS_mmgsls,
    3,
    MMGS_IPARAM_iso,
    MMGS_IPARAM_nreg,
    MMGS_IPARAM_noinsert,
    MMGS_IPARAM_angle,
    MMGS_DPARAM_hausd,
    MMGS_DPARAM_hgrad,
    MMGS_DPARAM_hmax};

template <const Api& Library>
struct Handles {
  MMG5_pMesh mesh = nullptr;
  MMG5_pSol met = nullptr;
  MMG5_pSol ls = nullptr;
  Handles() {
    EXPECT_EQ(1, Library.init(MMG5_ARG_start, MMG5_ARG_ppMesh, &mesh, MMG5_ARG_ppMet, &met,
                              MMG5_ARG_ppLs, &ls, MMG5_ARG_end));
  }
  ~Handles() {
    Library.freeAll(MMG5_ARG_start, MMG5_ARG_ppMesh, &mesh, MMG5_ARG_ppMet, &met, MMG5_ARG_ppLs,
                    &ls, MMG5_ARG_end);
  }
  Handles(const Handles&) = delete;
  Handles& operator=(const Handles&) = delete;

  // Sets vertices and elements (0-based corners) with optional references; returns the element
  // setter's result (1 when there are none).
  int Load(std::vector<double> xyz, std::vector<MMG5_int> elements, MMG5_int* vertexRefs = nullptr,
           MMG5_int* elementRefs = nullptr) {
    const auto np = static_cast<MMG5_int>(xyz.size() / 3);
    const auto ne = static_cast<MMG5_int>(elements.size() / Library.corners);
    EXPECT_EQ(1, Library.setSize(mesh, np, ne));
    EXPECT_EQ(1, Library.setVertices(mesh, xyz.data(), vertexRefs));
    for (MMG5_int& v : elements)
      ++v;
    return ne == 0 ? 1 : Library.setElements(mesh, elements.data(), elementRefs);
  }
  // Sizes the level-set solution to `values` and fills it.
  void SetLevelSet(std::vector<double> values) {
    EXPECT_EQ(1, Library.setSolSize(mesh, ls, MMG5_Vertex, static_cast<MMG5_int>(values.size()),
                                    MMG5_Scalar));
    EXPECT_EQ(1, Library.setScalars(ls, values.data()));
  }
  // The options brindle's level-set cut sets, in its order.
  void SetCutOptions() {
    Library.setI(mesh, ls, Library.iso, 1);
    Library.setI(mesh, ls, Library.nreg, 0);
    Library.setI(mesh, ls, Library.noinsert, 1);
    Library.setI(mesh, ls, Library.hausd, 0);
    Library.setD(mesh, ls, Library.hgrad, 20.0);
    Library.setD(mesh, ls, Library.hmax, 0.01);
    Library.setD(mesh, ls, Library.hmax, 1.0);
    Library.setI(mesh, ls, Library.angle, 0);
  }
  int Cut() { return Library.cut(mesh, ls, nullptr); }
};

using Mesh3d = Handles<kVolume>;
using MeshS = Handles<kSurface>;

}  // namespace brindle::mmg_test

#endif
