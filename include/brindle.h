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

/* ---- Information window ------------------------------------------------------------------ */

#ifdef __cplusplus
} /* extern "C" */
#endif

#endif /* BRINDLE_H */
