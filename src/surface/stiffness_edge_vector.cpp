// Method 3: K_ij = (k / area) * (e_i . e_j), e_i being the edge opposite corner i. This is
// four times the gradient form; without a source term the temperatures are the same.
#include "surface/stiffness.h"

namespace brindle {

int AssembleEdgeVectorForm(const SurfaceModel& model, Triplets& triplets) {
  const int faceCount = model.FaceCount();
  const ON_3dPoint* points = model.mesh.m_dV.Array();
  triplets.reserve(9 * static_cast<std::size_t>(faceCount));

  for (int f = 0; f < faceCount; ++f) {
    const ON_MeshFace& face = model.mesh.m_F[f];
    const int a = face.vi[0], b = face.vi[1], c = face.vi[2];
    const ON_3dPoint &pa = points[a], &pb = points[b], &pc = points[c];
    const ON_3dVector ea = pc - pb, eb = pa - pc, ec = pb - pa;
    const double area = ON_TriangleArea3d(pa, pb, pc);
    if (!(area >= kMinimumArea)) return kDegenerateTriangle;

    const double s = model.FaceConductivity(f) / area;
    triplets.emplace_back(a, a, s * (ea * ea));
    triplets.emplace_back(b, b, s * (eb * eb));
    triplets.emplace_back(c, c, s * (ec * ec));
    const double kab = s * (ea * eb), kac = s * (ea * ec), kbc = s * (eb * ec);
    triplets.emplace_back(a, b, kab);
    triplets.emplace_back(b, a, kab);
    triplets.emplace_back(a, c, kac);
    triplets.emplace_back(c, a, kac);
    triplets.emplace_back(b, c, kbc);
    triplets.emplace_back(c, b, kbc);
  }
  return kSurfaceSucceeded;
}

}  // namespace brindle
