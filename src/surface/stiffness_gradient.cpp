// Method 0: K_ij = k * area * (grad phi_i . grad phi_j) with the gradients built from the
// altitudes of the triangle.
#include <vector>

#include "common/trace.h"
#include "surface/stiffness.h"

namespace brindle {
namespace {

// Gradient of the barycentric function of `corner`: it points from the foot of the altitude
// towards the corner with length 1/h, h being the altitude's length.
ON_3dVector BarycentricGradient(const ON_3dPoint& corner, const ON_3dPoint& edgeStart,
                                const ON_3dPoint& edgeEnd, double area) {
  const ON_3dVector edge = edgeEnd - edgeStart;
  const double t = ((corner - edgeStart) * edge) / edge.LengthSquared();
  const ON_3dPoint foot = edgeStart + t * edge;
  const double altitude = 2.0 * area / edge.Length();
  return (corner - foot) / (altitude * altitude);
}

}  // namespace

int AssembleGradientForm(const SurfaceModel& model, Triplets& triplets) {
  const int faceCount = model.FaceCount();
  const ON_3dPoint* points = model.mesh.m_dV.Array();
  triplets.reserve(9 * static_cast<std::size_t>(faceCount));
  std::vector<bool> used(static_cast<std::size_t>(model.VertexCount()), false);

  for (int f = 0; f < faceCount; ++f) {
    const ON_MeshFace& face = model.mesh.m_F[f];
    const int a = face.vi[0], b = face.vi[1], c = face.vi[2];
    if (a == b || b == c || a == c) return kRepeatedFaceVertex;
    const ON_3dPoint &pa = points[a], &pb = points[b], &pc = points[c];
    const double area = ON_CrossProduct(pb - pa, pc - pa).Length() / 2.0;
    if (!(area >= kMinimumArea)) return kDegenerateFace;
    used[a] = used[b] = used[c] = true;

    const ON_3dVector ga = BarycentricGradient(pa, pb, pc, area);
    const ON_3dVector gb = BarycentricGradient(pb, pc, pa, area);
    const ON_3dVector gc = BarycentricGradient(pc, pa, pb, area);
    const double k = model.FaceConductivity(f);
    // %g is the default stream formatting of a double.
    TraceOut("Conductivity%g\n", k);

    const double scale = k * area;
    const double kab = scale * (ga * gb), kac = scale * (ga * gc), kbc = scale * (gb * gc);
    triplets.emplace_back(a, b, kab);
    triplets.emplace_back(b, a, kab);
    triplets.emplace_back(a, c, kac);
    triplets.emplace_back(c, a, kac);
    triplets.emplace_back(b, c, kbc);
    triplets.emplace_back(c, b, kbc);
    triplets.emplace_back(a, a, scale * (ga * ga));
    triplets.emplace_back(b, b, scale * (gb * gb));
    triplets.emplace_back(c, c, scale * (gc * gc));
  }
  for (bool isUsed : used) {
    if (!isUsed) return kUnusedVertex;
  }
  return kSurfaceSucceeded;
}

}  // namespace brindle
