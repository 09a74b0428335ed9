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

/* ---- Element quality, boundary extraction, generation and sanitising ---------------------- */

/* Aspect ratio of every face of `mesh`, read as a tetrahedron (corners vi[0..3], vertices through
 * ON_Mesh::Vertex): largest doubled face area times longest edge over six times the volume, so
 * a regular tetrahedron gives sqrt(6)/2 = 1.2247449; +infinity for a flat element. `ratios`
 * holds FaceCount() doubles. A face index outside the vertex list reads an unset point.
 *   0 success (also for a mesh without faces, when nothing is written)
 *   1 "Null mesh"
 *   2 "Null output array" (`ratios` null while the mesh has faces; nothing is written) */
BRINDLE_API int AspectRatios(const ON_Mesh* mesh, double* ratios, char* error);

/* The six interior dihedral angles in radians of every face of `mesh`, read as a tetrahedron, in
 * the edge order (0,1), (0,2), (0,3), (1,2), (1,3), (2,3); angles[6i + j] is edge j of face i.
 * Each face normal is turned away from the opposite corner, so the angles do not depend on the
 * corner order; an angle beside a face without a normal (flat element) is 0. `angles` holds
 * 6 * FaceCount() doubles.
 *   0 success (also for a mesh without faces, when nothing is written)
 *   1 "Null mesh"
 *   2 "Null output array" (`angles` null while the mesh has faces; nothing is written) */
BRINDLE_API int DihedralAngles(const ON_Mesh* mesh, double* angles, char* error);

/* The boundary surface of the tetrahedral mesh `tetrahedra` (each face's four indices are one
 * tetrahedron): every triangle that belongs to exactly one tetrahedron, stored as (k0, k1, k2, k2)
 * with k0 <= k1 <= k2 and listed in ascending (k0, k1, k2) order, so the triangles are not
 * consistently oriented. The new mesh carries copies of the input's single- and double-precision
 * vertices and vertex colours, compacted to the vertices the triangles use. Each non-null count
 * pointer receives the number of boundary triangles (one tetrahedron), interior triangles (two)
 * and over-shared triangles (three or more). Faces with repeated or out-of-range indices are
 * counted like any other; triangles with out-of-range indices are dropped by the compaction.
 * Running out of memory leaves by std::bad_alloc.
 *   0 success, *result = the new mesh
 *   1 "Null or empty tet mesh" (null mesh or no faces; *result = null when `result` is not null,
 *     the counts are not written)
 *   2 "Null result pointer" (nothing is written) */
BRINDLE_API int ExtractBoundaryMeshWithStats(const ON_Mesh* tetrahedra, int* boundary_count,
                                             int* interior_count, int* over_shared_count,
                                             ON_Mesh** result, char* error);

/* Checks that `mesh` has one face type and agreeing single- and double-precision vertex lists and
 * returns a copy in which both lists are filled. `mesh` is never changed. On success
 * *error_code is left as the caller set it.
 *   0 success, *result = the copy
 *   1 "Null mesh or error code pointer"; *result = null when `result` is not null
 *   2 "Mesh has both triangles and quads"; *error_code = -1, *result = null
 *   3 "Single and double precision vertex counts differ"; *error_code = -2, *result = null
 *   3 "Vertices not synchronized between single and double precision" (also when either list is
 *     empty); *error_code = -2, *result = null
 *   4 "Null result pointer" (a mesh that passed every check; *error_code not written)
 * For statuses 2 and 3 a null `result` is simply not written. */
BRINDLE_API int TrySanitize(const ON_Mesh* mesh, int* error_code, ON_Mesh** result, char* error);

/* ---- Information window ------------------------------------------------------------------ */

#ifdef __cplusplus
} /* extern "C" */
#endif

#endif /* BRINDLE_H */
