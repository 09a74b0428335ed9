#include "surface/face_flux.h"

#include <cmath>

namespace brindle {
namespace {

constexpr double kMinimumPlaneDeterminant = 1e-8;

// Flux of one face, or false when the face cannot carry a gradient.
bool FaceFluxVector(const ON_Mesh& mesh, const ON_MeshFace& face, double k,
                    const Eigen::VectorXd& temperature, ON_3dVector& flux) {
  if (!face.IsTriangle()) return false;
  const int corner[3] = {face.vi[0], face.vi[1], face.vi[2]};
  const ON_3dPoint p[3] = {mesh.Vertex(corner[0]), mesh.Vertex(corner[1]), mesh.Vertex(corner[2])};
  const ON_Plane plane(p[0], p[1], p[2]);
  double x[3], y[3];
  for (int i = 0; i < 3; ++i) {
    if (!plane.ClosestPointTo(p[i], &x[i], &y[i])) return false;
  }
  const double det = x[0] * (y[1] - y[2]) + x[1] * (y[2] - y[0]) + x[2] * (y[0] - y[1]);
  if (!(std::fabs(det) >= kMinimumPlaneDeterminant)) return false;

  const double t0 = temperature[corner[0]], t1 = temperature[corner[1]],
               t2 = temperature[corner[2]];
  if (!ON_IsValid(t0) || !ON_IsValid(t1) || !ON_IsValid(t2)) return false;

  const double gx = (t0 * (y[1] - y[2]) + t1 * (y[2] - y[0]) + t2 * (y[0] - y[1])) / det;
  const double gy = (t0 * (x[2] - x[1]) + t1 * (x[0] - x[2]) + t2 * (x[1] - x[0])) / det;
  const ON_3dVector gradient = gx * plane.xaxis + gy * plane.yaxis;
  flux = k * gradient;
  return true;
}

}  // namespace

std::vector<double> ComputeFaceFlux(const SurfaceModel& model, const Eigen::VectorXd& temperature,
                                    double* fluxOut) {
  const int faceCount = model.FaceCount();
  std::vector<double> magnitude(static_cast<std::size_t>(faceCount), 0.0);
  for (int f = 0; f < faceCount; ++f) {
    ON_3dVector flux;
    if (!FaceFluxVector(model.mesh, model.mesh.m_F[f], model.FaceConductivity(f), temperature,
                        flux))
      continue;
    fluxOut[3 * f] = flux.x;
    fluxOut[3 * f + 1] = flux.y;
    fluxOut[3 * f + 2] = flux.z;
    magnitude[f] = flux.Length();
  }
  return magnitude;
}

}  // namespace brindle
