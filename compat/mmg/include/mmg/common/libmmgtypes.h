/*
 * Types and constants shared by the MMG3D and MMGS entry points of brindle's MMG-compatible
 * subset. The names and values are those of MMG 5.7, so code written against this header
 * builds unchanged against a real MMG installation.
 *
 * The mesh and solution structures are opaque here: callers only ever hold pointers to them
 * and go through the functions of libmmg3d.h / libmmgs.h.
 */
#ifndef _LIBMMGTYPES_H
#define _LIBMMGTYPES_H

#include <stdarg.h>
#include <stddef.h>
#include <stdint.h>

/* Index and count type of the API (a 32-bit build of MMG). */
typedef int32_t MMG5_int;

/* Return codes of the remeshing drivers. */
#define MMG5_SUCCESS 0
#define MMG5_LOWFAILURE 1
#define MMG5_STRONGFAILURE 2

/* Reference numbers written by the level-set discretisation. */
#define MG_ISO 10
#define MG_PLUS 2
#define MG_MINUS 3

/* Keys of the variadic Init_mesh / Free_all argument lists. */
#define MMG5_ARG_start 1
#define MMG5_ARG_ppMesh 2
#define MMG5_ARG_ppLs 3
#define MMG5_ARG_ppMet 4
#define MMG5_ARG_ppDisp 5
#define MMG5_ARG_ppSols 6
#define MMG5_ARG_pMesh 7
#define MMG5_ARG_pMet 8
#define MMG5_ARG_pDisp 9
#define MMG5_ARG_end 10

enum MMG5_type { MMG5_Notype, MMG5_Scalar, MMG5_Vector, MMG5_Tensor };

enum MMG5_entities {
  MMG5_Noentity,
  MMG5_Vertex,
  MMG5_Edg,
  MMG5_Triangle,
  MMG5_Tetrahedron,
  MMG5_Prism,
  MMG5_Quadrilateral
};

typedef struct MMG5_Mesh MMG5_Mesh;
typedef MMG5_Mesh* MMG5_pMesh;
typedef struct MMG5_Sol MMG5_Sol;
typedef MMG5_Sol* MMG5_pSol;

#endif
