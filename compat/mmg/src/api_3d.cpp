// MMG3D front end: mesh and solution setters, getters, data check and element quality.
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "api_common.h"
#include "levelset_3d.h"
#include "mesh_data.h"
#include "mmg/mmg3d/libmmg3d.h"
#include "parameters.h"
#include "quality.h"

namespace mmgcompat {
namespace {

bool ValidVertexNumber(const MMG5_Mesh& mesh, MMG5_int v) {
  return v >= 1 && v <= mesh.np;
}

// Reports a tetrahedron of null volume the way MMG does: the hint depends on whether the
// vertices were set at all (all four at the origin) or the element is a sliver.
void ReportNullVolume(const MMG5_Mesh& mesh, const Tetra& t, MMG5_int position) {
  std::fprintf(stderr, "\n  ## Error: MMG3D_Set_tetrahedra: tetrahedron %d has volume null.\n",
               static_cast<int>(position));
  for (MMG5_int v : t.v) {
    const double* c = mesh.point[v].c;
    if (std::fabs(c[0]) > 0.0 || std::fabs(c[1]) > 0.0 || std::fabs(c[2]) > 0.0) {
      std::fprintf(stderr, " Check that you don't have a sliver tetrahedron.\n");
      return;
    }
  }
  std::fprintf(stderr,
               "  All vertices have zero coordinates. Check that you have set the vertices"
               " before the tetrahedra.\n");
}

int SetTetrahedra(MMG5_Mesh& mesh, const MMG5_int* tetra, const MMG5_int* refs) {
  if (mesh.tetra.size() != static_cast<std::size_t>(mesh.ne) + 1 || !HasPointTable(mesh) ||
      (tetra == nullptr && mesh.ne > 0)) {
    std::fprintf(stderr, "\n  ## Error: MMG3D_Set_tetrahedra: mesh not sized or no array.\n");
    return 0;
  }
  for (MMG5_int i = 1; i <= mesh.ne; ++i) {
    Tetra& t = mesh.tetra[i];
    const MMG5_int* v = tetra + 4 * static_cast<std::size_t>(i - 1);
    for (int j = 0; j < 4; ++j) {
      if (!ValidVertexNumber(mesh, v[j])) {
        std::fprintf(stderr,
                     "\n  ## Error: MMG3D_Set_tetrahedra: tetrahedron %d has vertex number %d"
                     " outside 1..%d.\n",
                     static_cast<int>(i), static_cast<int>(v[j]), static_cast<int>(mesh.np));
        return 0;
      }
      t.v[j] = v[j];
      mesh.point[v[j]].used = true;
    }
    t.ref = refs != nullptr ? std::abs(refs[i - 1]) : 0;
    const double volume = SixVolume(mesh.point[t.v[0]].c, mesh.point[t.v[1]].c,
                                    mesh.point[t.v[2]].c, mesh.point[t.v[3]].c);
    if (std::fabs(volume) <= kNullMeasure) {
      ReportNullVolume(mesh, t, i);
      return 0;
    }
    if (volume < 0.0) std::swap(t.v[2], t.v[3]);
  }
  return 1;
}

int SetMeshSize(MMG5_Mesh& mesh, MMG5_int np, MMG5_int ne, MMG5_int nprism, MMG5_int nt,
                MMG5_int nquad, MMG5_int na) {
  if (np == 0) {
    std::fprintf(stderr, "  ** MISSING DATA:\n     Your mesh must contains at least points.\n");
    return 0;
  }
  if (np < 0 || ne < 0 || nt < 0 || na < 0 || nprism != 0 || nquad != 0) {
    std::fprintf(stderr,
                 "\n  ## Error: MMG3D_Set_meshSize: negative counts, prisms and"
                 " quadrilaterals are not supported.\n");
    return 0;
  }
  mesh.point.assign(static_cast<std::size_t>(np) + 1, Point());
  mesh.tetra.assign(static_cast<std::size_t>(ne) + 1, Tetra());
  mesh.tria.assign(static_cast<std::size_t>(nt) + 1, Tria());
  mesh.np = mesh.npi = np;
  mesh.ne = mesh.nei = ne;
  mesh.nt = mesh.nti = nt;
  mesh.na = mesh.nai = na;
  return 1;
}

double TetrahedronQuality(const MMG5_Mesh& mesh, MMG5_int k) {
  if (k < 1 || k > mesh.ne || static_cast<std::size_t>(k) >= mesh.tetra.size()) {
    std::fprintf(stderr,
                 "\n  ## Error: MMG3D_Get_tetrahedronQuality: unable to access to tetra %d.\n"
                 "     Tetra numbering goes from 1 to %d\n",
                 static_cast<int>(k), static_cast<int>(mesh.ne));
    return 0.0;
  }
  const Tetra& t = mesh.tetra[k];
  return kTetQualityScale * UnscaledTetQuality(mesh.point[t.v[0]].c, mesh.point[t.v[1]].c,
                                               mesh.point[t.v[2]].c, mesh.point[t.v[3]].c);
}

}  // namespace
}  // namespace mmgcompat

using mmgcompat::Guarded;

extern "C" {

int MMG3D_Set_iparameter(MMG5_pMesh mesh, MMG5_pSol, int iparam, MMG5_int val) {
  return mmgcompat::SetIntegerParameter(*mesh, iparam, val);
}

int MMG3D_Set_dparameter(MMG5_pMesh mesh, MMG5_pSol, int dparam, double val) {
  return mmgcompat::SetRealParameter(*mesh, dparam, val);
}

int MMG3D_Set_meshSize(MMG5_pMesh mesh, MMG5_int np, MMG5_int ne, MMG5_int nprism, MMG5_int nt,
                       MMG5_int nquad, MMG5_int na) {
  return Guarded("MMG3D_Set_meshSize", 0,
                 [&] { return mmgcompat::SetMeshSize(*mesh, np, ne, nprism, nt, nquad, na); });
}

int MMG3D_Set_vertices(MMG5_pMesh mesh, double* vertices, MMG5_int* refs) {
  return mmgcompat::SetVertices(*mesh, vertices, refs, "MMG3D_Set_vertices");
}

int MMG3D_Set_tetrahedra(MMG5_pMesh mesh, MMG5_int* tetra, MMG5_int* refs) {
  return mmgcompat::SetTetrahedra(*mesh, tetra, refs);
}

int MMG3D_Set_solSize(MMG5_pMesh mesh, MMG5_pSol sol, int typEntity, MMG5_int np, int typSol) {
  return Guarded("MMG3D_Set_solSize", 0, [&] {
    return mmgcompat::SetSolSize(*mesh, *sol, typEntity, np, typSol, "MMG3D_Set_solSize");
  });
}

int MMG3D_Set_scalarSols(MMG5_pSol met, double* s) {
  return mmgcompat::SetScalarSols(*met, s, "MMG3D_Set_scalarSols", "MMG3D_Set_solSize");
}

int MMG3D_Chk_meshData(MMG5_pMesh mesh, MMG5_pSol met) {
  return mmgcompat::CheckMeshData(*mesh, met, "MMG3D",
                                  mesh->npi == mesh->np && mesh->nei == mesh->ne);
}

int MMG3D_mmg3dls(MMG5_pMesh mesh, MMG5_pSol sol, MMG5_pSol met) {
  return Guarded("MMG3D_mmg3dls", static_cast<int>(MMG5_STRONGFAILURE),
                 [&] { return mmgcompat::DiscretizeLevelSet3d(*mesh, sol, met); });
}

int MMG3D_Get_meshSize(MMG5_pMesh mesh, MMG5_int* np, MMG5_int* ne, MMG5_int* nprism, MMG5_int* nt,
                       MMG5_int* nquad, MMG5_int* na) {
  if (np != nullptr) *np = mesh->np;
  if (ne != nullptr) *ne = mesh->ne;
  if (nprism != nullptr) *nprism = 0;
  if (nt != nullptr) *nt = mesh->nt;
  if (nquad != nullptr) *nquad = 0;
  if (na != nullptr) *na = mesh->na;
  return 1;
}

int MMG3D_Get_vertices(MMG5_pMesh mesh, double* vertices, MMG5_int* refs, int* areCorners,
                       int* areRequired) {
  return mmgcompat::GetVertices(*mesh, vertices, refs, areCorners, areRequired);
}

int MMG3D_Get_tetrahedra(MMG5_pMesh mesh, MMG5_int* tetra, MMG5_int* refs, int* areRequired) {
  if (mesh->tetra.size() < static_cast<std::size_t>(mesh->ne) + 1) return 0;
  for (MMG5_int i = 1; i <= mesh->ne; ++i) {
    const mmgcompat::Tetra& t = mesh->tetra[i];
    const std::size_t k = static_cast<std::size_t>(i - 1);
    if (tetra != nullptr) {
      for (int j = 0; j < 4; ++j)
        tetra[4 * k + j] = t.v[j];
    }
    if (refs != nullptr) refs[k] = t.ref;
    if (areRequired != nullptr) areRequired[k] = 0;
  }
  return 1;
}

int MMG3D_Get_triangle(MMG5_pMesh mesh, MMG5_int* v0, MMG5_int* v1, MMG5_int* v2, MMG5_int* ref,
                       int* isRequired) {
  return mmgcompat::NextTriangle(*mesh, v0, v1, v2, ref, isRequired, "MMG3D_Get_triangle");
}

double MMG3D_Get_tetrahedronQuality(MMG5_pMesh mesh, MMG5_pSol, MMG5_int k) {
  return mmgcompat::TetrahedronQuality(*mesh, k);
}

}  // extern "C"
