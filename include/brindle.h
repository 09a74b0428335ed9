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

/* Steady conduction on a triangle mesh whose vertex colours carry the boundary conditions
 * (red 39: 0.0, red 245: 0.5, red 255: 1.0, any other red: free) and whose faces belong to
 * conductivity regions.
 *
 * sldmMalloc: checks the mesh, builds the solver with element formulation `method` (0-3) and
 * factorises it. `faceRegions` holds one region number (>= 0) per face; when it is null every
 * face is region 0 with conductivity 1.0. Every region starts with conductivity 1.0.
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
 * Method 0 writes "Conductivity<k>" to standard output for every face. Method 1 may throw
 * std::runtime_error ("Mesh contains non-tri faces") through this function. */
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
 * Method 0 writes its "Conductivity" lines; method 1 may throw as in sldmMalloc. */
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
                          double* levels, int levelCount, ON_SimpleArray<ON_Line>* isotherms,
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

/* ---- Element quality, boundary extraction, generation and sanitising ---------------------- */

/* ---- Information window ------------------------------------------------------------------ */

#ifdef __cplusplus
} /* extern "C" */
#endif

#endif /* BRINDLE_H */
