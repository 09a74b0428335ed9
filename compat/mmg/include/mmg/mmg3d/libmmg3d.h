/*
 * MMG3D entry points of brindle's MMG-compatible subset: exactly the functions brindle calls,
 * with the names, signatures, parameter numbers and observable behaviour of MMG 5.7.
 *
 * What the subset does NOT do: MMG's mesh improvement phase. MMG3D_mmg3dls discretises the
 * level set (snapping, zero repair, edge cutting, split patterns, sub-domain and boundary
 * references) and stops there: no edge swaps, no vertex relocation, no size map. Input
 * vertices therefore keep their coordinates bit for bit and volumes are conserved exactly,
 * where MMG itself moves vertices and swaps edges after the cut.
 * Nothing is printed on stdout (MMG's verbose progress lines are left out whatever the
 * verbosity); errors go to stderr with MMG's wording.
 */
#ifndef MMG3D_LIBMMG3D_H
#define MMG3D_LIBMMG3D_H

#include "mmg/common/libmmgtypes.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Parameter keys, numbered as in MMG 5.7. Integer keys go through MMG3D_Set_iparameter, real
 * keys (DPARAM) through MMG3D_Set_dparameter; the integer setter refuses a real key with
 * "## Error: MMG3D_Set_iparameter: unknown type of parameter" on stderr and returns 0. */
enum MMG3D_Param {
  MMG3D_IPARAM_verbose,
  MMG3D_IPARAM_mem,
  MMG3D_IPARAM_debug,
  MMG3D_IPARAM_angle,
  MMG3D_IPARAM_iso,
  MMG3D_IPARAM_isosurf,
  MMG3D_IPARAM_nofem,
  MMG3D_IPARAM_opnbdy,
  MMG3D_IPARAM_lag,
  MMG3D_IPARAM_optim,
  MMG3D_IPARAM_optimLES,
  MMG3D_IPARAM_noinsert,
  MMG3D_IPARAM_noswap,
  MMG3D_IPARAM_nomove,
  MMG3D_IPARAM_nosurf,
  MMG3D_IPARAM_nreg,
  MMG3D_IPARAM_xreg,
  MMG3D_IPARAM_numberOfLocalParam,
  MMG3D_IPARAM_numberOfLSBaseReferences,
  MMG3D_IPARAM_numberOfMat,
  MMG3D_IPARAM_numsubdomain,
  MMG3D_IPARAM_renum,
  MMG3D_IPARAM_anisosize,
  MMG3D_IPARAM_octree,
  MMG3D_IPARAM_nosizreq,
  MMG3D_IPARAM_isoref,
  MMG3D_DPARAM_angleDetection,
  MMG3D_DPARAM_hmin,
  MMG3D_DPARAM_hmax,
  MMG3D_DPARAM_hsiz,
  MMG3D_DPARAM_hausd,
  MMG3D_DPARAM_hgrad,
  MMG3D_DPARAM_hgradreq,
  MMG3D_DPARAM_ls,
  MMG3D_DPARAM_rmc,
  MMG3D_PARAM_size
};

/* Variadic creation: MMG3D_Init_mesh(MMG5_ARG_start, MMG5_ARG_ppMesh, &mesh
 * [, MMG5_ARG_ppMet, &met][, MMG5_ARG_ppLs, &ls][, MMG5_ARG_ppDisp, &disp], MMG5_ARG_end).
 * Handles should be null on entry (a non-null one is released first). Returns 1, or 0 for a
 * missing ppMesh or an unknown key (MMG5_ARG_ppSols is not part of the subset). */
int MMG3D_Init_mesh(const int starter, ...);
/* Variadic release with the same keys; sets the caller's handles to null. Exactly one ppMesh
 * is required (else 0); an unknown key gives 0; a key given twice prints a warning. */
int MMG3D_Free_all(const int starter, ...);

int MMG3D_Set_iparameter(MMG5_pMesh mesh, MMG5_pSol sol, int iparam, MMG5_int val);
int MMG3D_Set_dparameter(MMG5_pMesh mesh, MMG5_pSol sol, int dparam, double val);

/* Sizes the mesh. np = 0 is refused ("** MISSING DATA"), ne = 0 is accepted. Prisms and
 * quadrilaterals are not supported by the subset (non-zero counts are refused); nt and na
 * size triangle and edge tables that the subset does not use as input. */
int MMG3D_Set_meshSize(MMG5_pMesh mesh, MMG5_int np, MMG5_int ne, MMG5_int nprism, MMG5_int nt,
                       MMG5_int nquad, MMG5_int na);
/* Copies np coordinate triples and, when refs is not null, np references. */
int MMG3D_Set_vertices(MMG5_pMesh mesh, double* vertices, MMG5_int* refs);
/* Copies ne tetrahedra (1-based vertex numbers) and the absolute values of refs (null: 0).
 * A negatively oriented tetrahedron is silently reoriented by swapping its 3rd and 4th
 * vertices; a tetrahedron of volume 0 stops the copy with a stderr error and returns 0.
 * Unlike MMG, a vertex number outside 1..np is refused (stderr error, 0) instead of reading
 * outside the vertex table. */
int MMG3D_Set_tetrahedra(MMG5_pMesh mesh, MMG5_int* tetra, MMG5_int* refs);
int MMG3D_Set_solSize(MMG5_pMesh mesh, MMG5_pSol sol, int typEntity, MMG5_int np, int typSol);
int MMG3D_Set_scalarSols(MMG5_pSol met, double* s);
int MMG3D_Chk_meshData(MMG5_pMesh mesh, MMG5_pSol met);

/* Level-set discretisation of `sol` (one value per vertex) at the level 0 (DPARAM_ls).
 * Returns MMG5_SUCCESS, MMG5_LOWFAILURE (worst input quality below 1e-30) or
 * MMG5_STRONGFAILURE (no values, value count != np, degenerate bounding box, non-manifold
 * result). `met` may be null; it is not filled. */
int MMG3D_mmg3dls(MMG5_pMesh mesh, MMG5_pSol sol, MMG5_pSol met);

int MMG3D_Get_meshSize(MMG5_pMesh mesh, MMG5_int* np, MMG5_int* ne, MMG5_int* nprism, MMG5_int* nt,
                       MMG5_int* nquad, MMG5_int* na);
/* Array getters; the optional flag arrays are filled with 0 (the subset tags no vertex, element
 * or triangle as corner or required). */
int MMG3D_Get_vertices(MMG5_pMesh mesh, double* vertices, MMG5_int* refs, int* areCorners,
                       int* areRequired);
int MMG3D_Get_tetrahedra(MMG5_pMesh mesh, MMG5_int* tetra, MMG5_int* refs, int* areRequired);
/* One boundary triangle per call, from a hidden cursor that wraps around after the last. */
int MMG3D_Get_triangle(MMG5_pMesh mesh, MMG5_int* v0, MMG5_int* v1, MMG5_int* v2, MMG5_int* ref,
                       int* isRequired);

/* 12*sqrt(3) * 6V / (sum of squared edge lengths)^(3/2); 0 for a flat or inverted tetrahedron
 * and, with a stderr message, for k outside 1..ne. */
double MMG3D_Get_tetrahedronQuality(MMG5_pMesh mesh, MMG5_pSol met, MMG5_int k);

#ifdef __cplusplus
}
#endif

#endif
