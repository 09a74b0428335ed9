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

/* Steady conduction on linear tetrahedra. Vertices in the low list are held at -13.1, those in
 * the high list at 20.0, a vertex named in both lists (or twice in the high list) at 3.45; all
 * others are solved for. Every function except poissonfree takes the common `error` buffer.
 * Progress traces go to standard output. */

/* Builds, checks and prepares a solver; *handle receives it, or null on any failure.
 * Arrays: coordinates 3*vertexCount (x, y, z per vertex), tetrahedra 4*tetrahedronCount vertex
 * indices, tetrahedronMaterials tetrahedronCount material indices, conductivities materialCount
 * values, highVertices highCount and lowVertices lowCount vertex indices; all 0-based, all
 * copied. `tolerance` is the document tolerance of the sliver test. `reserved` is never read
 * or written. `detail` (2000 characters, may be null) receives the sentence of a failed mesh
 * check and is left untouched otherwise.
 * Statuses:
 *   0  success.
 *   21 "Error with input data": a zero vertex, tetrahedron or material count, both boundary
 *      lists empty, a negative count, a null array behind a non-zero count, a vertex,
 *      material or list index out of range, or a null `handle`. Checked before anything is
 *      allocated.
 *   22 to 25 "Error constructing solver, code N" (N the status), with in `detail`:
 *   22 "Error: The tetrahedral mesh is disconnected. Vertex V is not connected to vertex
 *      zero.\n" (V the lowest input index not reachable from vertex 0);
 *   23 "Error: Tetrahedron number T is degenerate, consisting of vertex indices a, b, c, d.
 *      Please use a quality tet mesher.\n";
 *   24 "Error: There is a sliver (thin) tetrahedron. Vertex number a is, up to your document
 *      tolerance 0.001000, on the same plane as the other tetrahedral vertices b, c, d of
 *      tetrahedron number T.\n" (b, c, d: the other three corners in tetrahedron order);
 *   25 "Error: there is a solo vertex, not connected to a tetrahedron.\n".
 *      The vertex numbers in 23 and 24 are positions in the solver's order, in which the
 *      fixed vertices come first; they can differ from the caller's indices.
 *   30 "Out of memory, too much mesh for your RAM": memory ran out; nothing is leaked. */
BRINDLE_API int poissonmallocvol(int vertexCount, double* coordinates, int tetrahedronCount,
                                 int* tetrahedra, int* tetrahedronMaterials, int materialCount,
                                 double* conductivities, int highCount, int* highVertices,
                                 int lowCount, int* lowVertices, double tolerance, int* reserved,
                                 char* detail, void const** handle, char* error);

/* Solves and writes temperatures[v] for every input vertex v (vertexCount values). Free
 * vertices of a system with NaN or infinite matrix or right-hand-side entries get NaN, and
 * the solver reports no convergence. The solver's sparse products run on OpenMP threads, one
 * per core that no other thread is running on at the moment of the call (one thread for small
 * meshes); the caller's OpenMP settings are restored afterwards.
 * Statuses: 0 success (also without convergence, see poissoninfo); 1 "Null solver handle";
 * 1 "Null temperature array"; 30 "Out of memory, too much mesh for your RAM". */
BRINDLE_API int poissonsolve(void* handle, double* temperatures, char* error);

/* Writes the squared norm of the free rows' imbalance after the last solve (0.0 when every
 * vertex is fixed). Statuses: 0; 1 "Null solver handle"; 1 "Null residual pointer";
 * 30 "Out of memory, too much mesh for your RAM". */
BRINDLE_API int poissonresid(void* handle, double* residual, char* error);

/* Returns the solver's status: 0 after creation, an update or a converged solve, 2 after a
 * solve that did not converge; 7 "Null solver handle". */
BRINDLE_API int poissoninfo(void* handle, char* error);

/* Reads one conductivity per material (as many as the solver was built with; `count` is not
 * read) and re-assembles. Traces "Updating conductivities to %f %f\n" with the first two
 * values when there are at least two materials. Temperatures change at the next solve.
 * Statuses: 0; 23 or 24 with the check's sentence as the error text (the matrices stay as
 * they were); 1 "Null solver handle"; 1 "Null conductivity array"; 30 "Out of memory, too
 * much mesh for your RAM" (the solver stays as it was). */
BRINDLE_API int poissonresetconductivities(void* handle, double* conductivities, int count,
                                           char* error);

/* Destroys a solver; a null handle is ignored. */
BRINDLE_API void poissonfree(void* handle);


/* ---- Surface conduction solver ----------------------------------------------------------- */

/* ---- Colour map and integer encodings ---------------------------------------------------- */

/* ---- Level-set cutting ------------------------------------------------------------------- */

/* ---- Element quality, boundary extraction, generation and sanitising ---------------------- */

/* ---- Information window ------------------------------------------------------------------ */

#ifdef __cplusplus
} /* extern "C" */
#endif

#endif /* BRINDLE_H */
