// Entry-point bodies shared by the MMG3D and MMGS front ends. `name` is the public function
// name used in stderr messages, as MMG prints it.
#ifndef BRINDLE_COMPAT_MMG_API_COMMON_H
#define BRINDLE_COMPAT_MMG_API_COMMON_H

#include <cstdio>
#include <exception>

#include "mesh_data.h"

namespace mmgcompat {

// Runs an entry point body and turns an escaping exception (allocation failure) into
// `failure`, so nothing propagates through the C interface.
template <class Result, class Body>
Result Guarded(const char* name, Result failure, Body body) noexcept {
  try {
    return body();
  } catch (const std::exception& e) {
    std::fprintf(stderr, "\n  ## Error: %s: %s\n", name, e.what());
  } catch (...) {
    std::fprintf(stderr, "\n  ## Error: %s: unexpected failure\n", name);
  }
  return failure;
}

bool HasPointTable(const MMG5_Mesh& mesh);
int SetVertices(MMG5_Mesh& mesh, const double* vertices, const MMG5_int* refs, const char* name);
int SetSolSize(const MMG5_Mesh& mesh, MMG5_Sol& sol, int entity, MMG5_int np, int type,
               const char* name);
int SetScalarSols(MMG5_Sol& sol, const double* values, const char* name, const char* size_setter);
int GetVertices(const MMG5_Mesh& mesh, double* vertices, MMG5_int* refs, int* corners,
                int* required);
int NextTriangle(MMG5_Mesh& mesh, MMG5_int* v0, MMG5_int* v1, MMG5_int* v2, MMG5_int* ref,
                 int* required, const char* name);
// The sol-side part of Chk_meshData (counts and dimension).
int CheckSolution(const MMG5_Sol* sol, const char* name);
// Chk_meshData of either front end: `library` is "MMG3D" or "MMGS", `countersMatch` whether
// the counters the front end sizes (vertices and its kind of element) match the sizes.
int CheckMeshData(const MMG5_Mesh& mesh, const MMG5_Sol* met, const char* library,
                  bool countersMatch);

}  // namespace mmgcompat

#endif
