// Variadic creation and release of mesh and solution structures (Init_mesh / Free_all of both
// modules). The argument lists are key/address pairs closed by MMG5_ARG_end.
#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <new>

#include "mesh_data.h"
#include "mmg/mmg3d/libmmg3d.h"
#include "mmg/mmgs/libmmgs.h"
#include "parameters.h"

namespace mmgcompat {
namespace {

const char* ModuleName(Module module) {
  return module == Module::k3d ? "MMG3D" : "MMGS";
}

// Replaces *handle by a fresh structure. A handle left over from an earlier call is released
// first so that a repeated Init_mesh does not leak.
template <class T>
bool Renew(T** handle) {
  delete *handle;
  *handle = new (std::nothrow) T();
  return *handle != nullptr;
}

int InitMesh(Module module, va_list args) {
  const char* name = ModuleName(module);
  MMG5_pMesh* mesh = nullptr;
  MMG5_pSol* sols[3] = {nullptr, nullptr, nullptr};  // met, ls, disp
  int mesh_count = 0;
  for (int key = va_arg(args, int); key != MMG5_ARG_end; key = va_arg(args, int)) {
    switch (key) {
      case MMG5_ARG_ppMesh:
        mesh = va_arg(args, MMG5_pMesh*);
        ++mesh_count;
        break;
      case MMG5_ARG_ppMet:
        sols[0] = va_arg(args, MMG5_pSol*);
        break;
      case MMG5_ARG_ppLs:
        sols[1] = va_arg(args, MMG5_pSol*);
        break;
      case MMG5_ARG_ppDisp:
        sols[2] = va_arg(args, MMG5_pSol*);
        break;
      default:
        std::fprintf(stderr,
                     "\n  ## Error: %s_Init_mesh:\n unexpected argument type: %d\n"
                     " Argument type must be one of the MMG5_ARG* preprocessor variable:"
                     " MMG5_ARG_ppMesh, MMG5_ARG_ppMet,  MMG5_ARG_ppLs, MMG5_ARG_ppDisp\n",
                     name, key);
        return 0;
    }
  }
  if (mesh_count != 1 || mesh == nullptr) {
    std::fprintf(stderr,
                 "\n  ## Error: %s_Init_mesh:\n you need to initialize the mesh structure"
                 " that will contain your mesh.\n",
                 name);
    return 0;
  }
  if (!Renew(mesh)) return 0;
  (*mesh)->module = module;
  SetDefaultParameters(**mesh);
  for (int i = 0; i < 3; ++i) {
    if (sols[i] == nullptr) continue;
    if (!Renew(sols[i])) return 0;
    if (i == 2) (*sols[i])->size = 3;  // a displacement is a vector field
    (*mesh)->companions.push_back(*sols[i]);
  }
  return 1;
}

int FreeAll(Module module, va_list args) {
  const char* name = ModuleName(module);
  MMG5_pMesh* mesh = nullptr;
  MMG5_pSol* sols[3] = {nullptr, nullptr, nullptr};
  int counts[5] = {0, 0, 0, 0, 0};  // mesh, met, ls, disp, sols
  for (int key = va_arg(args, int); key != MMG5_ARG_end; key = va_arg(args, int)) {
    switch (key) {
      case MMG5_ARG_ppMesh:
        mesh = va_arg(args, MMG5_pMesh*);
        ++counts[0];
        break;
      case MMG5_ARG_ppMet:
        sols[0] = va_arg(args, MMG5_pSol*);
        ++counts[1];
        break;
      case MMG5_ARG_ppLs:
        sols[1] = va_arg(args, MMG5_pSol*);
        ++counts[2];
        break;
      case MMG5_ARG_ppDisp:
        sols[2] = va_arg(args, MMG5_pSol*);
        ++counts[3];
        break;
      case MMG5_ARG_ppSols:
        // Arrays of fields are never created by this subset: nothing to release.
        (void)va_arg(args, MMG5_pSol*);
        ++counts[4];
        break;
      default:
        std::fprintf(stderr,
                     "\n  ## Error: %s_Free_all:\n unexpected argument type: %d\n"
                     " Argument type must be one of the following preprocessor variable:"
                     " MMG5_ARG_ppMesh, MMG5_ARG_ppMet, MMG5_ARG_ppLs, MMG5_ARG_ppDisp\n",
                     name, key);
        return 0;
    }
  }
  if (counts[0] != 1 || mesh == nullptr) {
    std::fprintf(stderr,
                 "\n  ## Error: %s_Free_all:\n you need to provide your mesh structure to"
                 " allow to free the associated memory.\n",
                 name);
    return 0;
  }
  // MMG prints this warning on stdout; the subset keeps stdout silent and uses stderr.
  if (counts[1] > 1 || counts[2] > 1 || counts[3] > 1 || counts[4] > 1) {
    std::fprintf(stderr,
                 "\n  ## Warning: %s_Free_all:\n This function can free only one structure of"
                 " each type.\n Probable memory leak.\n",
                 name);
  }
  std::vector<MMG5_Sol*>& companions = (*mesh)->companions;
  for (MMG5_pSol* sol : sols) {
    if (sol == nullptr || *sol == nullptr) continue;
    companions.erase(std::remove(companions.begin(), companions.end(), *sol), companions.end());
    delete *sol;
    *sol = nullptr;
  }
  for (MMG5_Sol* sol : companions)
    delete sol;
  delete *mesh;
  *mesh = nullptr;
  return 1;
}

}  // namespace
}  // namespace mmgcompat

extern "C" {

int MMG3D_Init_mesh(const int starter, ...) {
  (void)starter;
  va_list args;
  va_start(args, starter);
  const int status = mmgcompat::InitMesh(mmgcompat::Module::k3d, args);
  va_end(args);
  return status;
}

int MMGS_Init_mesh(const int starter, ...) {
  (void)starter;
  va_list args;
  va_start(args, starter);
  const int status = mmgcompat::InitMesh(mmgcompat::Module::kSurface, args);
  va_end(args);
  return status;
}

int MMG3D_Free_all(const int starter, ...) {
  (void)starter;
  va_list args;
  va_start(args, starter);
  const int status = mmgcompat::FreeAll(mmgcompat::Module::k3d, args);
  va_end(args);
  return status;
}

int MMGS_Free_all(const int starter, ...) {
  (void)starter;
  va_list args;
  va_start(args, starter);
  const int status = mmgcompat::FreeAll(mmgcompat::Module::kSurface, args);
  va_end(args);
  return status;
}

}  // extern "C"
