#include "api_common.h"

#include <cstdio>
#include <cstdlib>

namespace mmgcompat {

bool HasPointTable(const MMG5_Mesh& mesh) {
  return mesh.np > 0 && mesh.point.size() == static_cast<std::size_t>(mesh.np) + 1;
}

int SetVertices(MMG5_Mesh& mesh, const double* vertices, const MMG5_int* refs, const char* name) {
  if (!HasPointTable(mesh) || vertices == nullptr) {
    std::fprintf(stderr, "\n  ## Error: %s: mesh not sized or no vertex array.\n", name);
    return 0;
  }
  for (MMG5_int i = 1; i <= mesh.np; ++i) {
    Point& p = mesh.point[i];
    const double* c = vertices + 3 * static_cast<std::size_t>(i - 1);
    p.c[0] = c[0];
    p.c[1] = c[1];
    p.c[2] = c[2];
    p.ref = refs != nullptr ? refs[i - 1] : 0;
    p.used = false;  // the element setters mark the vertices they reference
  }
  return 1;
}

int SetSolSize(const MMG5_Mesh& mesh, MMG5_Sol& sol, int entity, MMG5_int np, int type,
               const char* name) {
  if (entity != MMG5_Vertex) {
    std::fprintf(stderr, "\n  ## Error: %s: mmg need a solution imposed on vertices.\n", name);
    return 0;
  }
  int size = 0;
  if (type == MMG5_Scalar) size = 1;
  if (type == MMG5_Vector) size = 3;
  if (type == MMG5_Tensor) size = 6;
  if (size == 0) {
    std::fprintf(stderr, "\n  ## Error: %s: type of solution not yet implemented.\n", name);
    return 0;
  }
  if (np < 0) {
    std::fprintf(stderr, "\n  ## Error: %s: negative number of solutions.\n", name);
    return 0;
  }
  sol.type = type;
  sol.size = size;
  sol.dim = 3;
  if (np == 0) return 1;  // stays unsized, as in MMG
  sol.np = np;
  sol.npi = np;
  // Room for the larger of the two counts: a mismatch with the mesh is reported by the ls
  // drivers, never turned into an overflow here.
  const std::size_t slots = static_cast<std::size_t>(np > mesh.np ? np : mesh.np) + 1;
  sol.m.assign(slots * size, 0.0);
  return 1;
}

int SetScalarSols(MMG5_Sol& sol, const double* values, const char* name, const char* size_setter) {
  if (sol.np == 0 || sol.m.empty()) {
    std::fprintf(stderr,
                 "\n  ## Error: %s: You must set the number of solution with the %s function"
                 " before setting values in solution structure \n",
                 name, size_setter);
    return 0;
  }
  if (values == nullptr) {
    std::fprintf(stderr, "\n  ## Error: %s: no value array.\n", name);
    return 0;
  }
  for (MMG5_int k = 0; k < sol.np; ++k)
    sol.m[k + 1] = values[k];
  return 1;
}

int GetVertices(const MMG5_Mesh& mesh, double* vertices, MMG5_int* refs, int* corners,
                int* required) {
  if (mesh.point.size() < static_cast<std::size_t>(mesh.np) + 1) return 0;
  for (MMG5_int i = 1; i <= mesh.np; ++i) {
    const Point& p = mesh.point[i];
    const std::size_t k = static_cast<std::size_t>(i - 1);
    if (vertices != nullptr) {
      vertices[3 * k] = p.c[0];
      vertices[3 * k + 1] = p.c[1];
      vertices[3 * k + 2] = p.c[2];
    }
    if (refs != nullptr) refs[k] = p.ref;
    // No vertex is tagged as corner or required: the subset has no geometry analysis.
    if (corners != nullptr) corners[k] = 0;
    if (required != nullptr) required[k] = 0;
  }
  return 1;
}

int NextTriangle(MMG5_Mesh& mesh, MMG5_int* v0, MMG5_int* v1, MMG5_int* v2, MMG5_int* ref,
                 int* required, const char* name) {
  // The cursor restarts after the last triangle, so a second sweep starts at triangle 1.
  if (mesh.nti == mesh.nt) mesh.nti = 0;
  ++mesh.nti;
  if (mesh.nti > mesh.nt || static_cast<std::size_t>(mesh.nti) >= mesh.tria.size()) {
    std::fprintf(stderr,
                 "\n  ## Error: %s: unable to get triangle.\n    The number of call of %s"
                 " function can not exceed the number of triangles: %d\n ",
                 name, name, static_cast<int>(mesh.nt));
    return 0;
  }
  const Tria& t = mesh.tria[mesh.nti];
  if (v0 != nullptr) *v0 = t.v[0];
  if (v1 != nullptr) *v1 = t.v[1];
  if (v2 != nullptr) *v2 = t.v[2];
  if (ref != nullptr) *ref = t.ref;
  if (required != nullptr) *required = 0;
  return 1;
}

int CheckSolution(const MMG5_Sol* sol, const char* name) {
  if (sol == nullptr) {
    std::fprintf(stderr, "\n  ## Error: %s: no solution structure.\n", name);
    return 0;
  }
  if (sol->npi != sol->np) {
    std::fprintf(stderr,
                 "  ** MISSING DATA\n  ## Error: %s: if you don't use the loadSol function,"
                 " you must call the Set_solSize function to have a valid solution size.\n",
                 name);
    return 0;
  }
  if (sol->dim != 3) {
    std::fprintf(stderr, "  ** 3 DIMENSIONAL SOLUTION INCOMPATIBLE.\n");
    return 0;
  }
  return 1;
}

int CheckMeshData(const MMG5_Mesh& mesh, const MMG5_Sol* met, const char* library,
                  bool countersMatch) {
  if (!countersMatch) {
    std::fprintf(stderr,
                 "  ** MISSING DATA.\n  ## Error: %s_Chk_meshData: if you don't use the"
                 " %s_loadMesh function, you must call the %s_Set_meshSize function to"
                 " have a valid mesh.\n  Missing datas.\n",
                 library, library, library);
    return 0;
  }
  char name[32];
  std::snprintf(name, sizeof name, "%s_Chk_meshData", library);
  if (!CheckSolution(met, name)) return 0;
  if (mesh.dim != 3) {
    std::fprintf(stderr, "  ** 3 DIMENSIONAL MESH NEEDED. Exit program.\n");
    return 0;
  }
  return 1;
}

}  // namespace mmgcompat
