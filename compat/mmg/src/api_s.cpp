// MMGS front end: mesh and solution setters, getters, data check and element quality.
#include <cstdio>
#include <cstdlib>

#include "api_common.h"
#include "levelset_s.h"
#include "mesh_data.h"
#include "mmg/mmgs/libmmgs.h"
#include "parameters.h"
#include "quality.h"

namespace mmgcompat {
namespace {

int SetMeshSize(MMG5_Mesh& mesh, MMG5_int np, MMG5_int nt, MMG5_int na) {
  // MMGS records the counts before it validates them.
  mesh.point.clear();
  mesh.tria.clear();
  mesh.tetra.clear();
  mesh.np = mesh.npi = np;
  mesh.nt = mesh.nti = nt;
  mesh.na = mesh.nai = na;
  mesh.ne = mesh.nei = 0;
  if (np == 0 || nt == 0) {
    std::fprintf(stderr,
                 "  ** MISSING DATA:\n     Your mesh must contains at least points and"
                 " triangles.\n");
    return 0;
  }
  if (np < 0 || nt < 0 || na < 0) {
    std::fprintf(stderr, "\n  ## Error: MMGS_Set_meshSize: negative counts.\n");
    return 0;
  }
  mesh.point.assign(static_cast<std::size_t>(np) + 1, Point());
  mesh.tria.assign(static_cast<std::size_t>(nt) + 1, Tria());
  return 1;
}

int SetTriangles(MMG5_Mesh& mesh, const MMG5_int* tria, const MMG5_int* refs) {
  if (mesh.tria.size() != static_cast<std::size_t>(mesh.nt) + 1 || !HasPointTable(mesh) ||
      tria == nullptr) {
    std::fprintf(stderr, "\n  ## Error: MMGS_Set_triangles: mesh not sized or no array.\n");
    return 0;
  }
  for (MMG5_int i = 1; i <= mesh.nt; ++i) {
    const MMG5_int* v = tria + 3 * static_cast<std::size_t>(i - 1);
    for (int j = 0; j < 3; ++j) {
      if (v[j] < 1 || v[j] > mesh.np) {
        std::fprintf(stderr,
                     "\n  ## Error: MMGS_Set_triangles: triangle %d has vertex number %d"
                     " outside 1..%d.\n",
                     static_cast<int>(i), static_cast<int>(v[j]), static_cast<int>(mesh.np));
        return 0;
      }
    }
    // The array setter stores the 2nd and 3rd vertex swapped, as MMG's does.
    Tria& t = mesh.tria[i];
    t.v[0] = v[0];
    t.v[1] = v[2];
    t.v[2] = v[1];
    for (MMG5_int k : t.v)
      mesh.point[k].used = true;
    t.ref = refs != nullptr ? refs[i - 1] : 0;
  }
  return 1;
}

double TriangleQuality(const MMG5_Mesh& mesh, MMG5_int k) {
  if (k < 1 || k > mesh.nt || static_cast<std::size_t>(k) >= mesh.tria.size()) {
    std::fprintf(stderr,
                 "\n  ## Error: MMGS_Get_triangleQuality: unable to access to triangle %d.\n"
                 "     Tria numbering goes from 1 to %d\n",
                 static_cast<int>(k), static_cast<int>(mesh.nt));
    return 0.0;
  }
  const Tria& t = mesh.tria[k];
  return kTriQualityScale *
         UnscaledTriQuality(mesh.point[t.v[0]].c, mesh.point[t.v[1]].c, mesh.point[t.v[2]].c);
}

}  // namespace
}  // namespace mmgcompat

using mmgcompat::Guarded;

extern "C" {

int MMGS_Set_iparameter(MMG5_pMesh mesh, MMG5_pSol, int iparam, MMG5_int val) {
  return mmgcompat::SetIntegerParameter(*mesh, iparam, val);
}

int MMGS_Set_dparameter(MMG5_pMesh mesh, MMG5_pSol, int dparam, double val) {
  return mmgcompat::SetRealParameter(*mesh, dparam, val);
}

int MMGS_Set_meshSize(MMG5_pMesh mesh, MMG5_int np, MMG5_int nt, MMG5_int na) {
  return Guarded("MMGS_Set_meshSize", 0, [&] { return mmgcompat::SetMeshSize(*mesh, np, nt, na); });
}

int MMGS_Set_vertices(MMG5_pMesh mesh, double* vertices, MMG5_int* refs) {
  return mmgcompat::SetVertices(*mesh, vertices, refs, "MMGS_Set_vertices");
}

int MMGS_Set_triangles(MMG5_pMesh mesh, MMG5_int* tria, MMG5_int* refs) {
  return mmgcompat::SetTriangles(*mesh, tria, refs);
}

int MMGS_Set_solSize(MMG5_pMesh mesh, MMG5_pSol sol, int typEntity, MMG5_int np, int typSol) {
  return Guarded("MMGS_Set_solSize", 0, [&] {
    return mmgcompat::SetSolSize(*mesh, *sol, typEntity, np, typSol, "MMGS_Set_solSize");
  });
}

int MMGS_Set_scalarSols(MMG5_pSol met, double* s) {
  return mmgcompat::SetScalarSols(*met, s, "MMGS_Set_scalarSols", "MMGS_Set_solSize");
}

int MMGS_Chk_meshData(MMG5_pMesh mesh, MMG5_pSol met) {
  return mmgcompat::CheckMeshData(*mesh, met, "MMGS",
                                  mesh->npi == mesh->np && mesh->nti == mesh->nt);
}

int MMGS_mmgsls(MMG5_pMesh mesh, MMG5_pSol sol, MMG5_pSol met) {
  return Guarded("MMGS_mmgsls", static_cast<int>(MMG5_STRONGFAILURE),
                 [&] { return mmgcompat::DiscretizeLevelSetSurface(*mesh, sol, met); });
}

int MMGS_Get_meshSize(MMG5_pMesh mesh, MMG5_int* np, MMG5_int* nt, MMG5_int* na) {
  if (np != nullptr) *np = mesh->np;
  if (nt != nullptr) *nt = mesh->nt;
  if (na != nullptr) *na = mesh->na;
  return 1;
}

int MMGS_Get_vertices(MMG5_pMesh mesh, double* vertices, MMG5_int* refs, int* areCorners,
                      int* areRequired) {
  return mmgcompat::GetVertices(*mesh, vertices, refs, areCorners, areRequired);
}

int MMGS_Get_triangle(MMG5_pMesh mesh, MMG5_int* v0, MMG5_int* v1, MMG5_int* v2, MMG5_int* ref,
                      int* isRequired) {
  return mmgcompat::NextTriangle(*mesh, v0, v1, v2, ref, isRequired, "MMGS_Get_triangle");
}

double MMGS_Get_triangleQuality(MMG5_pMesh mesh, MMG5_pSol, MMG5_int k) {
  return mmgcompat::TriangleQuality(*mesh, k);
}

}  // extern "C"
