// MMG's volume (MMG3D) and surface (MMGS) libraries behind one set of names, so that code
// driving either is written once and instantiated with Mmg3dApi or MmgsApi. Each static
// function forwards to the library's own call with the arguments the library leaves unused
// here (prisms, quadrilaterals, edges) fixed to none.
#ifndef BRINDLE_MMGLINK_MMG_API_H
#define BRINDLE_MMGLINK_MMG_API_H

#include "mmg/mmg3d/libmmg3d.h"
#include "mmg/mmgs/libmmgs.h"

namespace brindle {

// Tetrahedra.
struct Mmg3dApi {
  static constexpr int kCornerCount = 4;
  static constexpr int kIsoKey = MMG3D_IPARAM_iso;
  static constexpr int kNregKey = MMG3D_IPARAM_nreg;
  static constexpr int kNoinsertKey = MMG3D_IPARAM_noinsert;
  static constexpr int kAngleKey = MMG3D_IPARAM_angle;
  static constexpr int kHausdKey = MMG3D_DPARAM_hausd;
  static constexpr int kHgradKey = MMG3D_DPARAM_hgrad;
  static constexpr int kHmaxKey = MMG3D_DPARAM_hmax;

  static int InitMesh(MMG5_pMesh* mesh, int solutionKey, MMG5_pSol* solution) {
    return MMG3D_Init_mesh(MMG5_ARG_start, MMG5_ARG_ppMesh, mesh, solutionKey, solution,
                           MMG5_ARG_end);
  }
  static int FreeAll(MMG5_pMesh* mesh, MMG5_pSol* metric) {
    return MMG3D_Free_all(MMG5_ARG_start, MMG5_ARG_ppMesh, mesh, MMG5_ARG_ppMet, metric,
                          MMG5_ARG_end);
  }
  static int FreeAll(MMG5_pMesh* mesh, MMG5_pSol* metric, MMG5_pSol* levelSet) {
    return MMG3D_Free_all(MMG5_ARG_start, MMG5_ARG_ppMesh, mesh, MMG5_ARG_ppMet, metric,
                          MMG5_ARG_ppLs, levelSet, MMG5_ARG_end);
  }
  static int SetIparameter(MMG5_pMesh mesh, MMG5_pSol sol, int key, MMG5_int value) {
    return MMG3D_Set_iparameter(mesh, sol, key, value);
  }
  static int SetDparameter(MMG5_pMesh mesh, MMG5_pSol sol, int key, double value) {
    return MMG3D_Set_dparameter(mesh, sol, key, value);
  }
  static int SetMeshSize(MMG5_pMesh mesh, MMG5_int vertexCount, MMG5_int elementCount) {
    return MMG3D_Set_meshSize(mesh, vertexCount, elementCount, 0, 0, 0, 0);
  }
  static int SetVertices(MMG5_pMesh mesh, double* vertices, MMG5_int* references) {
    return MMG3D_Set_vertices(mesh, vertices, references);
  }
  static int SetElements(MMG5_pMesh mesh, MMG5_int* corners, MMG5_int* references) {
    return MMG3D_Set_tetrahedra(mesh, corners, references);
  }
  static int SetSolSize(MMG5_pMesh mesh, MMG5_pSol sol, MMG5_int vertexCount) {
    return MMG3D_Set_solSize(mesh, sol, MMG5_Vertex, vertexCount, MMG5_Scalar);
  }
  static int SetScalarSols(MMG5_pSol sol, double* values) {
    return MMG3D_Set_scalarSols(sol, values);
  }
  static int ChkMeshData(MMG5_pMesh mesh, MMG5_pSol sol) { return MMG3D_Chk_meshData(mesh, sol); }
  static int LevelSet(MMG5_pMesh mesh, MMG5_pSol levelSet) {
    return MMG3D_mmg3dls(mesh, levelSet, nullptr);
  }
  static int GetVertices(MMG5_pMesh mesh, double* vertices, MMG5_int* references) {
    return MMG3D_Get_vertices(mesh, vertices, references, nullptr, nullptr);
  }
  static double ElementQuality(MMG5_pMesh mesh, MMG5_pSol metric, MMG5_int k) {
    return MMG3D_Get_tetrahedronQuality(mesh, metric, k);
  }
};

// Triangles.
struct MmgsApi {
  static constexpr int kCornerCount = 3;
  static constexpr int kIsoKey = MMGS_IPARAM_iso;
  static constexpr int kNregKey = MMGS_IPARAM_nreg;
  static constexpr int kNoinsertKey = MMGS_IPARAM_noinsert;
  static constexpr int kAngleKey = MMGS_IPARAM_angle;
  static constexpr int kHausdKey = MMGS_DPARAM_hausd;
  static constexpr int kHgradKey = MMGS_DPARAM_hgrad;
  static constexpr int kHmaxKey = MMGS_DPARAM_hmax;

  static int InitMesh(MMG5_pMesh* mesh, int solutionKey, MMG5_pSol* solution) {
    return MMGS_Init_mesh(MMG5_ARG_start, MMG5_ARG_ppMesh, mesh, solutionKey, solution,
                          MMG5_ARG_end);
  }
  static int FreeAll(MMG5_pMesh* mesh, MMG5_pSol* metric) {
    return MMGS_Free_all(MMG5_ARG_start, MMG5_ARG_ppMesh, mesh, MMG5_ARG_ppMet, metric,
                         MMG5_ARG_end);
  }
  static int FreeAll(MMG5_pMesh* mesh, MMG5_pSol* metric, MMG5_pSol* levelSet) {
    return MMGS_Free_all(MMG5_ARG_start, MMG5_ARG_ppMesh, mesh, MMG5_ARG_ppMet, metric,
                         MMG5_ARG_ppLs, levelSet, MMG5_ARG_end);
  }
  static int SetIparameter(MMG5_pMesh mesh, MMG5_pSol sol, int key, MMG5_int value) {
    return MMGS_Set_iparameter(mesh, sol, key, value);
  }
  static int SetDparameter(MMG5_pMesh mesh, MMG5_pSol sol, int key, double value) {
    return MMGS_Set_dparameter(mesh, sol, key, value);
  }
  static int SetMeshSize(MMG5_pMesh mesh, MMG5_int vertexCount, MMG5_int elementCount) {
    return MMGS_Set_meshSize(mesh, vertexCount, elementCount, 0);
  }
  static int SetVertices(MMG5_pMesh mesh, double* vertices, MMG5_int* references) {
    return MMGS_Set_vertices(mesh, vertices, references);
  }
  static int SetElements(MMG5_pMesh mesh, MMG5_int* corners, MMG5_int* references) {
    return MMGS_Set_triangles(mesh, corners, references);
  }
  static int SetSolSize(MMG5_pMesh mesh, MMG5_pSol sol, MMG5_int vertexCount) {
    return MMGS_Set_solSize(mesh, sol, MMG5_Vertex, vertexCount, MMG5_Scalar);
  }
  static int SetScalarSols(MMG5_pSol sol, double* values) {
    return MMGS_Set_scalarSols(sol, values);
  }
  static int ChkMeshData(MMG5_pMesh mesh, MMG5_pSol sol) { return MMGS_Chk_meshData(mesh, sol); }
  static int LevelSet(MMG5_pMesh mesh, MMG5_pSol levelSet) {
    return MMGS_mmgsls(mesh, levelSet, nullptr);
  }
  static int GetVertices(MMG5_pMesh mesh, double* vertices, MMG5_int* references) {
    return MMGS_Get_vertices(mesh, vertices, references, nullptr, nullptr);
  }
  static double ElementQuality(MMG5_pMesh mesh, MMG5_pSol metric, MMG5_int k) {
    return MMGS_Get_triangleQuality(mesh, metric, k);
  }
};

}  // namespace brindle

#endif
