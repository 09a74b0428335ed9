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
