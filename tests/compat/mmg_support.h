// MMG meshes with their metric and level-set solutions, released on scope exit. Written
// against the MMG headers only, so the tests run against the bundled subset and a real MMG.
#ifndef BRINDLE_TESTS_COMPAT_MMG_SUPPORT_H
#define BRINDLE_TESTS_COMPAT_MMG_SUPPORT_H

#include <gtest/gtest.h>

#include <vector>

#include "mmg/mmg3d/libmmg3d.h"
#include "mmg/mmgs/libmmgs.h"

namespace brindle::mmg_test {

struct Mesh3d {
  MMG5_pMesh mesh = nullptr;
  MMG5_pSol met = nullptr;
  MMG5_pSol ls = nullptr;
  Mesh3d() {
    EXPECT_EQ(1, MMG3D_Init_mesh(MMG5_ARG_start, MMG5_ARG_ppMesh, &mesh, MMG5_ARG_ppMet, &met,
                                 MMG5_ARG_ppLs, &ls, MMG5_ARG_end));
  }
  ~Mesh3d() {
    MMG3D_Free_all(MMG5_ARG_start, MMG5_ARG_ppMesh, &mesh, MMG5_ARG_ppMet, &met, MMG5_ARG_ppLs, &ls,
                   MMG5_ARG_end);
  }
  // Sets vertices and tetrahedra (0-based corners) with optional references; returns
  // Set_tetrahedra's result (1 when there are none).
  int Load(std::vector<double> xyz, std::vector<MMG5_int> tets, MMG5_int* vertexRefs = nullptr,
           MMG5_int* tetRefs = nullptr) {
    const MMG5_int np = static_cast<MMG5_int>(xyz.size() / 3);
    const MMG5_int ne = static_cast<MMG5_int>(tets.size() / 4);
    EXPECT_EQ(1, MMG3D_Set_meshSize(mesh, np, ne, 0, 0, 0, 0));
    EXPECT_EQ(1, MMG3D_Set_vertices(mesh, xyz.data(), vertexRefs));
    for (MMG5_int& v : tets)
      ++v;
    return ne == 0 ? 1 : MMG3D_Set_tetrahedra(mesh, tets.data(), tetRefs);
  }
};

struct MeshS {
  MMG5_pMesh mesh = nullptr;
  MMG5_pSol met = nullptr;
  MMG5_pSol ls = nullptr;
  MeshS() {
    EXPECT_EQ(1, MMGS_Init_mesh(MMG5_ARG_start, MMG5_ARG_ppMesh, &mesh, MMG5_ARG_ppMet, &met,
                                MMG5_ARG_ppLs, &ls, MMG5_ARG_end));
  }
  ~MeshS() {
    MMGS_Free_all(MMG5_ARG_start, MMG5_ARG_ppMesh, &mesh, MMG5_ARG_ppMet, &met, MMG5_ARG_ppLs, &ls,
                  MMG5_ARG_end);
  }
  int Load(std::vector<double> xyz, std::vector<MMG5_int> tris, MMG5_int* vertexRefs = nullptr,
           MMG5_int* triRefs = nullptr) {
    const MMG5_int np = static_cast<MMG5_int>(xyz.size() / 3);
    const MMG5_int nt = static_cast<MMG5_int>(tris.size() / 3);
    EXPECT_EQ(1, MMGS_Set_meshSize(mesh, np, nt, 0));
    EXPECT_EQ(1, MMGS_Set_vertices(mesh, xyz.data(), vertexRefs));
    for (MMG5_int& v : tris)
      ++v;
    return MMGS_Set_triangles(mesh, tris.data(), triRefs);
  }
};

}  // namespace brindle::mmg_test

#endif
