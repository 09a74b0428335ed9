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
