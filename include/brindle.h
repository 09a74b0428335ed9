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
 *  - Exceptions: a function reports what goes wrong inside it by its status, except for these
 *    C++ exceptions, which leave it and are for the caller to catch:
 *      sldmMalloc, sldmupdate (method 1): std::runtime_error "Mesh contains non-tri faces" or
 *        "r_per_face size must equal face count" (guards: a mesh that passed sldmMalloc's
 *        checks never trips them);
 *      sldmsolve: std::runtime_error "Large reduced residual";
 *      CutTetrahedralMesh, CutTetrahedralMesh2, ExtractBoundaryMeshWithStats, qual, qualS:
 *        std::bad_alloc when memory runs out.
 *    Every other function catches everything it can raise (running out of memory included)
 *    and returns a status.
 */
#ifndef BRINDLE_H
#define BRINDLE_H

/* On Windows, code that may be linked either against brindle.dll or directly against the
 * library's objects (a test program) defines BRINDLE_NO_IMPORT: its calls then go through the
 * import library's thunks instead of __declspec(dllimport). */
#if defined(_WIN32)
#  if defined(BRINDLE_BUILDING)
#    define BRINDLE_API __declspec(dllexport)
#  elif defined(BRINDLE_NO_IMPORT)
#    define BRINDLE_API
#  else
#    define BRINDLE_API __declspec(dllimport)
#  endif
#elif defined(__GNUC__)
#  define BRINDLE_API __attribute__((visibility("default")))
#else
#  define BRINDLE_API
#endif

/* openNURBS types travel by pointer only, so the header needs no openNURBS include. C callers
 * see them as opaque structures; an array of lines, ON_SimpleArray<ON_Line> in C++, is
 * brindle_line_array there. */
#ifdef __cplusplus
class ON_Mesh;
class ON_Plane;
class ON_Line;
template <class T>
class ON_SimpleArray;
typedef ON_SimpleArray<ON_Line> brindle_line_array;
extern "C" {
#else
typedef struct ON_Mesh ON_Mesh;
typedef struct ON_Plane ON_Plane;
typedef struct ON_Line ON_Line;
typedef struct brindle_line_array brindle_line_array;
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
 * they were; a guard only, since these checks passed when the solver was built and do not
 * depend on conductivities); 1 "Null solver handle"; 1 "Null conductivity array"; 30 "Out of
 * memory, too much mesh for your RAM" (the solver stays as it was). */
BRINDLE_API int poissonresetconductivities(void* handle, double* conductivities, int count,
                                           char* error);

/* Destroys a solver; a null handle is ignored. */
BRINDLE_API void poissonfree(void* handle);


/* ---- Surface conduction solver ----------------------------------------------------------- */

/* Steady conduction on a triangle mesh whose vertex colours carry the boundary conditions
 * (red 39: 0.0, red 245: 0.5, red 255: 1.0, any other red: free) and whose faces belong to
 * conductivity regions.
 *
 * sldmMalloc: checks the mesh, builds the solver with element formulation `method` (0-3) and
 * factorises it. `faceRegions` holds one region number (>= 0) per face; when it is null every
 * face is region 0 with conductivity 1.0. Every region starts with conductivity 1.0. Region
 * numbers are labels: any non-negative int is accepted and the solver keeps one conductivity
 * per region in use, so large or sparse numbers cost nothing extra (a face in region INT_MAX
 * can never be given another conductivity, since sldmupdate's count cannot exceed it).
 * *handle is null on every failure. Statuses and messages, in the order they are checked:
 *   0    success
 *   41   "Null handle pointer"                           (handle itself is null)
 *   24   "Invalid method %d, must be 0-3"
 *   25   "Null mesh"
 *   26   "Double and single precision vertex counts differ"
 *   27   "Mesh contains quads, only triangles supported"
 *   28   "Mesh has no vertex colors for boundary conditions"
 *   29   "Mesh has no vertices"
 *   30   "Mesh has no faces"
 *   42   "Face %d has a vertex index out of range"
 *   43   "Face %d has negative region number %d"
 *   127  "Ordered mesh is invalid"                       (the mesh fails ON_Mesh::IsValid)
 *   1    "Unexpected boundary status at vertex %d"       (internal guard)
 *   22, 23, 24, 128, 2025  "Stiffness assembly failed with error %d":
 *        method 0: 22 repeated face vertex, 23 face area below 1e-10, 24 vertex in no face;
 *        method 2: 128 degenerate corner; method 3: 2025 face area below 1e-10
 *   33   "Eigen solver factorization failed"             (e.g. no fixed vertex)
 *   44   "Out of memory"
 * Method 0 writes "Conductivity<k>" to standard output for every face. Method 1's guards may
 * throw (see the conventions at the top). */
BRINDLE_API int sldmMalloc(const ON_Mesh* mesh, const int* faceRegions, int method, void** handle,
                           char* error);

/* sldmupdate: replaces the region conductivities (conductivities[r] for region r) and
 * refactorises.
 *   0      success (the factorisation's own status is not examined)
 *   -1001  "Null solver handle"
 *   -3003  no message: count is not greater than the largest region number (negative counts
 *          included); every region is reset to conductivity 1.0, the factorisation is kept
 *   -3004  "Null conductivity array"; nothing changes
 *   -3005  "Out of memory"
 *   22, 23, 24, 128, 2025  no message: assembly failed; the new conductivities are kept but
 *          the previous factorisation stays in use
 * Method 0 writes its "Conductivity" lines; method 1's guards may throw as in sldmMalloc. */
BRINDLE_API int sldmupdate(void* handle, const double* conductivities, int count, char* error);

/* sldmsolve: solves and writes the temperature of every vertex in the caller's order
 * (temperatureCount must equal the vertex count).
 * Face flux (q = k grad T, pointing towards higher temperature) and the flux mesh are made
 * when faceFlux, fluxMesh and levelFlow are non-null and faceFluxCount is non-zero; the
 * three components of face f go to faceFlux[3f..3f+2] only when faceFluxCount is exactly
 * 3 x face count (faces that cannot carry a gradient are left untouched). fluxMesh must be
 * empty and receives 3 vertices and one flat heat-ramp colour per face; when no face has any
 * flux every face gets the colour of zero.
 * Isotherms are traced when levels, isotherms and levelFlow are non-null and levelCount is
 * non-zero: segments are appended to *isotherms in level order and levelFlow[i] receives the
 * heat flow across level i (zero unless the face flux was requested as well).
 *   0      success
 *   -1001  "Null solver handle"
 *   -17    no message; "length = %i, n() = %i" (count, vertex count) is written to standard
 *          output: temperatureCount differs from the vertex count
 *   -18    "Null temperature array"
 *   -19    "Negative level count %d"
 *   -20    "Negative face flux count %d"
 *   -21    "Flux mesh must be empty"
 *   -22    "Out of memory"
 * Throws std::runtime_error("Large reduced residual") when the solution's residual exceeds
 * 1e-8; nothing is written then. */
BRINDLE_API int sldmsolve(const void* handle, double* temperatures, int temperatureCount,
                          double* levels, int levelCount, brindle_line_array* isotherms,
                          double* faceFlux, int faceFluxCount, double* levelFlow,
                          ON_Mesh* fluxMesh, char* error);

/* sldmfree: destroys a solver; a null handle is ignored. */
BRINDLE_API void sldmfree(void* handle);

/* ---- Colour map and integer encodings ---------------------------------------------------- */

/* HeatColor: maps t in [0, 1] (values outside are clamped, NaN counts as 0) to a
 * blue-cyan-green-yellow-red ramp with channels 0..255: t = 0 gives (0, 0, 146), t = 0.5
 * (146, 255, 146), t = 1 (146, 0, 0). A null channel pointer is skipped. */
BRINDLE_API void HeatColor(double t, int* red, int* green, int* blue);

/* encode_integer_to_sphere: stores value (0..65534, or -1) as a unit vector on the upper cap
 * of the unit sphere. Returns 0; -1 when a pointer is null (nothing written) or the value is
 * out of range (all three set to 0). */
BRINDLE_API int encode_integer_to_sphere(int value, float* x, float* y, float* z);

/* decode_integer_from_sphere: the integer stored in (x, y, z) or in its negation; -1 for the
 * marker. Every input gives some value in -1..65534. */
BRINDLE_API int decode_integer_from_sphere(float x, float y, float z);

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
 *   0 success (also when MMG reports a low failure and still returns a mesh; when it stopped
 *     on the input check and handed the mesh back uncut, the result has the caller's
 *     coordinates, not MMG's unit working frame)
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

/* A flat rectangle width x height centred on the origin of `plane` (u along its x axis, v along
 * its y axis), split into nx x ny cells, each cell two triangles, with vertex colours for the
 * surface solver: the first row (v = -height/2) held at 0, the last row held at 1, the rows
 * between free. The mesh can be handed straight to sldmMalloc. Vertices at one place with one
 * colour are merged, which renumbers the vertices (only on degenerate planes or sizes).
 *   0 success, *result = the new mesh
 *   1 "Invalid dimensions or subdivisions": width or height not a positive number (NaN
 *     included), nx or ny below 1, or a grid whose (nx+1)(ny+1) vertices or 2 nx ny triangles
 *     do not fit in an int; *result = null when `result` is not null
 *   2 "Generated mesh is invalid" (e.g. a plane without axes); *result = null
 *   3 "Null plane or result pointer"; *result = null when `result` is not null
 *   4 "Out of memory"; *result = null */
BRINDLE_API int MakeRectMesh(const ON_Plane* plane, double width, double height, int nx, int ny,
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
 *   5 "Out of memory" (the copy could not be made); *result = null
 * For statuses 2 and 3 a null `result` is simply not written. */
BRINDLE_API int TrySanitize(const ON_Mesh* mesh, int* error_code, ON_Mesh** result, char* error);

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

/*
 * doPoshModal: shows the plug-in's information window (picture, name, description, version and
 * two link buttons that open the product and documentation pages in the default browser).
 * The window is modal to `ownerWindow` (an HWND; null for an unowned window): the owner is
 * disabled while the window is open and enabled again when it closes. The window runs on a
 * thread of its own with its own message loop, so the call returns as soon as the window is
 * shown; the user closes it with its Close button, Escape or the title bar. A call while the
 * window is open brings that window to the front and opens no other. Call it on the thread that
 * owns `ownerWindow` (the host's user-interface thread), which keeps serving the window's
 * messages to the owner while it waits.
 * Statuses:
 *   0  the window is open (newly opened, or the open one brought to the front).
 *   1  "The information window is not available on this platform" (every platform but Windows).
 *   2  "The owner window handle is not a window" (`ownerWindow` is neither null nor a window).
 *   3  "Could not open the information window (system error %lu)" with the Windows error code.
 */
BRINDLE_API int doPoshModal(void* ownerWindow, char* error);

/*
 * getPoshHandle: the HWND of the open information window, or null when it is not open (always
 * null on platforms other than Windows). The handle is valid only while the window is open.
 */
BRINDLE_API void* getPoshHandle(void);

#ifdef __cplusplus
} /* extern "C" */
#endif

#endif /* BRINDLE_H */
