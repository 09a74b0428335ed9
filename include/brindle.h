/*
 * brindle: numerical core for steady heat-conduction studies of building details.
 *
 * Every function here has C linkage and is exported from the brindle shared library.
 * Conventions shared by all functions:
 *  - Statuses are ints; 0 is success, every other value is listed next to the function.
 *  - `error` (char*) is a caller buffer of at least 1024 bytes. When it is not null its first
 *    byte is cleared on entry, and a failure writes a message of at most 1023 characters plus
 *    the terminating zero. A null `error` suppresses the message.
 *  - Meshes returned through ON_Mesh** are allocated with `new` and owned by the caller, who
 *    deletes them with the openNURBS it links (the library has no export to release them).
 *  - Solver handles are owned by the caller from creation until their free function.
 */
#ifndef BRINDLE_H
#define BRINDLE_H

#if defined(_WIN32)
#  if defined(BRINDLE_BUILDING)
#    define BRINDLE_API __declspec(dllexport)
#  else
#    define BRINDLE_API __declspec(dllimport)
#  endif
#elif defined(__GNUC__)
#  define BRINDLE_API __attribute__((visibility("default")))
#else
#  define BRINDLE_API
#endif

#ifdef __cplusplus
/* openNURBS types travel by pointer only, so the header needs no openNURBS include. */
class ON_Mesh;
class ON_Plane;
class ON_Line;
template <class T>
class ON_SimpleArray;
extern "C" {
#endif

/* ---- Volume conduction solver ------------------------------------------------------------ */

/* ---- Surface conduction solver ----------------------------------------------------------- */

/* ---- Colour map and integer encodings ---------------------------------------------------- */

/* ---- Level-set cutting ------------------------------------------------------------------- */

/* Splits `mesh` along the zero level of `vertexValues` with MMG's level-set discretisation.
 * `mesh`: tetrahedra stored as quad faces (vi[0..3] are the four corners) or triangles only;
 * its double-precision vertices are the vertices (a mesh without them has none), its packed
 * vertex colours go to MMG as vertex references and come back the same way.
 * `vertexValues`: one value per double-precision vertex (not checked).
 * Elements of the result get reference 2 on the positive side and 3 on the negative side;
 * `keepRef` != 0 keeps only the elements with that reference (0 keeps both sides). `hmin` is
 * handed to MMG as its maximal size and then overridden by `hmax`, so it has no effect.
 * `interfaceMesh` (optional, volume meshes only): an empty caller mesh that receives the
 * triangles between the two sides, from the full cut before `keepRef` applies.
 * `result`: receives a new mesh owned by the caller, null on every failure. The mesh carries
 * the user strings Kestra_version ("0.2.9181.2064") and KSmesh_mi (the element references as
 * little-endian int32, Base64); KSmesh_v, KSmesh_t, KSmesh_hi and KSmesh_ci are emptied, and an
 * empty text removes the key.
 * Statuses and messages:
 *   0 success (also when MMG reports a low failure and still returns a mesh)
 *   1 "Null input mesh"                 2 "Null vertex values"
 *   3 "Mesh has both triangles and quads"
 *   volume meshes (MMG3D):
 *   4 "MMG3D_Set_iparameter iso failed" 5 "MMG3D_Set_meshSize failed"
 *   6 "MMG3D_Set_vertices failed"       7 "MMG3D_Set_tetrahedra failed"
 *   8 "MMG3D_Set_solSize failed"        9 "MMG3D_Set_scalarSols failed"
 *  10 "MMG3D_Chk_meshData failed"      11 "MMG3D_mmg3dls failed with status %d"
 *   surface meshes (MMGS):
 *  12 "MMGS_Set_iparameter iso failed" 13 "MMGS_Set_meshSize failed"
 *  14 "MMGS_Set_vertices failed"       15 "MMGS_Set_triangles failed"
 *  16 "MMGS_Set_solSize failed"        17 "MMGS_Set_scalarSols failed"
 *  18 "MMGS_Chk_meshData failed"       19 "MMGS_mmgsls failed with status %d"
 * Library choices: a face index outside the vertex list is refused with 7 (15 for surfaces)
 * before MMG sees it, since MMG does not range-check indices; the MMG structures are released
 * on every path; the caller's handlers of SIGABRT, SIGFPE, SIGILL, SIGSEGV, SIGTERM and SIGINT
 * are restored after MMG's level-set call, which resets them; a null `result` slot gets
 * nothing (the mesh is discarded). An allocation failure leaves as std::bad_alloc. */
BRINDLE_API int CutTetrahedralMesh(const ON_Mesh* mesh, const double* vertexValues, int keepRef,
                                   double hmin, double hmax, ON_Mesh* interfaceMesh,
                                   ON_Mesh** result, char* errorText);

/* Clips the tetrahedra of `mesh` (quad faces, single-precision vertices) to the side where
 * `vertexValues` (one per single-precision vertex, rounded to float; not checked) is at most 0.
 * Kept tetrahedra are the input's, whole or cut into pieces with the input's orientation; each
 * cut edge gets one new vertex at the linear zero crossing, shared by all pieces. The result is
 * a copy of `mesh` with unused vertices removed, every vertex coloured (50, 50, 50, alpha 0),
 * and the archive of CutTetrahedralMesh with every KSmesh_ key empty. `keepRef`, `hmin`,
 * `hmax` and `interfaceMesh` are ignored. A tetrahedron with a non-finite value at a corner is
 * kept unchanged when it straddles the level.
 * Statuses: 0 success; 1 "Null input mesh or vertex values" (`result` set to null).
 * An allocation failure leaves as std::bad_alloc with `result` null.
 * Library choice: a face with an index outside the vertex list is dropped. */
BRINDLE_API int CutTetrahedralMesh2(const ON_Mesh* mesh, const double* vertexValues,
                                    int keepRef, double hmin, double hmax,
                                    ON_Mesh* interfaceMesh, ON_Mesh** result, char* errorText);

/* ---- Element quality, boundary extraction, generation and sanitising ---------------------- */

/* MMG3D quality of every face of `mesh` read as the tetrahedron vi[0..3] (1 for the regular
 * tetrahedron, 0 for a flat one) into quality[0 .. FaceCount() - 1]. Vertices are the
 * double-precision list; packed vertex colours go to MMG as vertex references.
 * Statuses and messages (nothing is written on failure):
 *   0 success
 *   1 "MMG3D_Set_meshSize failed" (e.g. no double-precision vertices)
 *   2 "MMG3D_Set_vertices failed"
 *   3 "MMG3D_Set_tetrahedra failed" (also, by library choice, a face index outside the
 *     vertex list, which MMG would not check)
 *   4 "MMG3D_Chk_meshData failed"
 *   5 "Null mesh or quality array" (library choice: bad pointers are refused, not used) */
BRINDLE_API int qual(const ON_Mesh* mesh, double* quality, char* errorText);

/* MMGS quality of the triangle vi[0..2] of every face (vi[3] of a quad is ignored) into
 * quality[0 .. FaceCount() - 1]; 1 for the equilateral triangle. Statuses as for qual, with the
 * messages "MMGS_Set_meshSize failed", "MMGS_Set_vertices failed", "MMGS_Set_triangles
 * failed", "MMGS_Chk_meshData failed" and "Null mesh or quality array". */
BRINDLE_API int qualS(const ON_Mesh* mesh, double* quality, char* errorText);

/* ---- Information window ------------------------------------------------------------------ */

#ifdef __cplusplus
} /* extern "C" */
#endif

#endif /* BRINDLE_H */
