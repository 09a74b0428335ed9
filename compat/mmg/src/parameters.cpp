#include "parameters.h"

#include <cmath>
#include <cstdio>

#include "mmg/mmg3d/libmmg3d.h"
#include "mmg/mmgs/libmmgs.h"

namespace mmgcompat {
namespace {

// Key layout of one module: integer keys are [0, first_real), real keys [first_real, size).
struct KeyLayout {
  int first_real;
  int size;
  int verbose, angle, isoref, hmin, hmax, hausd, hgrad, hgradreq, ls, angle_detection;
};

constexpr KeyLayout k3dKeys{
    MMG3D_DPARAM_angleDetection, MMG3D_PARAM_size,    MMG3D_IPARAM_verbose,
    MMG3D_IPARAM_angle,          MMG3D_IPARAM_isoref, MMG3D_DPARAM_hmin,
    MMG3D_DPARAM_hmax,           MMG3D_DPARAM_hausd,  MMG3D_DPARAM_hgrad,
    MMG3D_DPARAM_hgradreq,       MMG3D_DPARAM_ls,     MMG3D_DPARAM_angleDetection};
constexpr KeyLayout kSurfaceKeys{
    MMGS_DPARAM_angleDetection, MMGS_PARAM_size,    MMGS_IPARAM_verbose,
    MMGS_IPARAM_angle,          MMGS_IPARAM_isoref, MMGS_DPARAM_hmin,
    MMGS_DPARAM_hmax,           MMGS_DPARAM_hausd,  MMGS_DPARAM_hgrad,
    MMGS_DPARAM_hgradreq,       MMGS_DPARAM_ls,     MMGS_DPARAM_angleDetection};

const KeyLayout& Keys(const MMG5_Mesh& mesh) {
  return mesh.module == Module::k3d ? k3dKeys : kSurfaceKeys;
}

const char* Prefix(const MMG5_Mesh& mesh) {
  return mesh.module == Module::k3d ? "MMG3D" : "MMGS";
}

void ReportUnknownKey(const MMG5_Mesh& mesh, const char* setter) {
  std::fprintf(stderr, "\n  ## Error: %s_%s: unknown type of parameter\n", Prefix(mesh), setter);
}

// Gradations are kept as logarithms; a non-positive value switches the gradation off.
double StoredGradation(double value) {
  return value > 0.0 ? std::log(value) : -1.0;
}

}  // namespace

void SetDefaultParameters(MMG5_Mesh& mesh) {
  const KeyLayout& keys = Keys(mesh);
  mesh.iparam.fill(0);
  mesh.dparam.fill(0.0);
  mesh.iparam[keys.verbose] = 1;
  mesh.iparam[keys.angle] = 1;
  mesh.iparam[keys.isoref] = MG_ISO;
  mesh.dparam[keys.angle_detection] = 45.0;
  mesh.dparam[keys.hmin] = -1.0;
  mesh.dparam[keys.hmax] = -1.0;
  mesh.dparam[keys.hausd] = 0.01;
  mesh.dparam[keys.hgrad] = std::log(1.3);
  mesh.dparam[keys.hgradreq] = std::log(2.3);
  mesh.dparam[keys.ls] = 0.0;
}

int SetIntegerParameter(MMG5_Mesh& mesh, int key, MMG5_int value) {
  const KeyLayout& keys = Keys(mesh);
  if (key < 0 || key >= keys.first_real) {
    ReportUnknownKey(mesh, "Set_iparameter");
    return 0;
  }
  mesh.iparam[key] = value;
  return 1;
}

int SetRealParameter(MMG5_Mesh& mesh, int key, double value) {
  const KeyLayout& keys = Keys(mesh);
  if (key < keys.first_real || key >= keys.size) {
    ReportUnknownKey(mesh, "Set_dparameter");
    return 0;
  }
  const bool gradation = key == keys.hgrad || key == keys.hgradreq;
  mesh.dparam[key] = gradation ? StoredGradation(value) : value;
  return 1;
}

double LevelValue(const MMG5_Mesh& mesh) {
  return mesh.dparam[Keys(mesh).ls];
}

MMG5_int IsoReference(const MMG5_Mesh& mesh) {
  return mesh.iparam[Keys(mesh).isoref];
}

}  // namespace mmgcompat
