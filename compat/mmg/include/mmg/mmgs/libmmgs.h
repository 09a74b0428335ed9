/*
 * MMGS entry points of brindle's MMG-compatible subset: exactly the functions brindle calls,
 * with the names, signatures, parameter numbers and observable behaviour of MMG 5.7.
 *
 * As for MMG3D, MMGS_mmgsls only discretises the level set: MMG's improvement phase (edge
 * swaps, vertex relocation) is not reproduced, so input vertices keep their coordinates.
 * Nothing is printed on stdout; errors go to stderr with MMG's wording.
 */
#ifndef MMGS_LIBMMGS_H
#define MMGS_LIBMMGS_H

#include "mmg/common/libmmgtypes.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Parameter keys, numbered as in MMG 5.7. */
enum MMGS_Param {
  MMGS_IPARAM_verbose,
  MMGS_IPARAM_mem,
  MMGS_IPARAM_debug,
  MMGS_IPARAM_angle,
  MMGS_IPARAM_iso,
  MMGS_IPARAM_isosurf,
  MMGS_IPARAM_isoref,
  MMGS_IPARAM_keepRef,
  MMGS_IPARAM_optim,
  MMGS_IPARAM_noinsert,
  MMGS_IPARAM_noswap,
  MMGS_IPARAM_nomove,
  MMGS_IPARAM_nreg,
  MMGS_IPARAM_xreg,
  MMGS_IPARAM_numberOfLocalParam,
  MMGS_IPARAM_numberOfLSBaseReferences,
  MMGS_IPARAM_numberOfMat,
  MMGS_IPARAM_numsubdomain,
  MMGS_IPARAM_renum,
  MMGS_IPARAM_anisosize,
  MMGS_IPARAM_nosizreq,
  MMGS_DPARAM_angleDetection,
  MMGS_DPARAM_hmin,
  MMGS_DPARAM_hmax,
  MMGS_DPARAM_hsiz,
  MMGS_DPARAM_hausd,
  MMGS_DPARAM_hgrad,
  MMGS_DPARAM_hgradreq,
  MMGS_DPARAM_ls,
  MMGS_DPARAM_rmc,
  MMGS_PARAM_size
};

/* Same variadic conventions as MMG3D_Init_mesh / MMG3D_Free_all. */
int MMGS_Init_mesh(const int starter, ...);
int MMGS_Free_all(const int starter, ...);

int MMGS_Set_iparameter(MMG5_pMesh mesh, MMG5_pSol sol, int iparam, MMG5_int val);
int MMGS_Set_dparameter(MMG5_pMesh mesh, MMG5_pSol sol, int dparam, double val);

/* Stores the counts, then refuses np = 0 or nt = 0 ("** MISSING DATA"). */
int MMGS_Set_meshSize(MMG5_pMesh mesh, MMG5_int np, MMG5_int nt, MMG5_int na);
int MMGS_Set_vertices(MMG5_pMesh mesh, double* vertices, MMG5_int* refs);
/* Stores triangle (t0, t1, t2) as (t0, t2, t1), as MMG's array setter does, so the result of
 * MMGS_mmgsls comes back with reversed orientation. Vertex numbers outside 1..np are refused. */
int MMGS_Set_triangles(MMG5_pMesh mesh, MMG5_int* tria, MMG5_int* refs);
int MMGS_Set_solSize(MMG5_pMesh mesh, MMG5_pSol sol, int typEntity, MMG5_int np, int typSol);
int MMGS_Set_scalarSols(MMG5_pSol met, double* s);
int MMGS_Chk_meshData(MMG5_pMesh mesh, MMG5_pSol met);

/* Level-set discretisation of a triangle surface; same return codes as MMG3D_mmg3dls. */
int MMGS_mmgsls(MMG5_pMesh mesh, MMG5_pSol sol, MMG5_pSol met);

int MMGS_Get_meshSize(MMG5_pMesh mesh, MMG5_int* np, MMG5_int* nt, MMG5_int* na);
/* The optional flag arrays are filled with 0: no vertex is tagged corner or required. */
int MMGS_Get_vertices(MMG5_pMesh mesh, double* vertices, MMG5_int* refs, int* areCorners,
                      int* areRequired);
/* One triangle per call, from a hidden cursor that wraps around after the last. */
int MMGS_Get_triangle(MMG5_pMesh mesh, MMG5_int* v0, MMG5_int* v1, MMG5_int* v2, MMG5_int* ref,
                      int* isRequired);

/* 2*sqrt(3) * |AB x AC| / (sum of squared edge lengths); 0 for a degenerate triangle and,
 * with a stderr message, for k outside 1..nt. */
double MMGS_Get_triangleQuality(MMG5_pMesh mesh, MMG5_pSol met, MMG5_int k);

#ifdef __cplusplus
}
#endif

#endif
