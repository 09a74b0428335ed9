#include "meshtools/dihedral_angles.h"

#include <algorithm>
#include <cmath>

#include "brindle.h"
#include "common/error_text.h"

namespace brindle {
namespace {

constexpr double kPi = 3.141592653589793;

// Edge j joins corners kEdge[j][0] and kEdge[j][1]; kEdge[j][2] and kEdge[j][3] are the other
// two corners, in ascending order.
constexpr int kEdge[6][4] = {{0, 1, 2, 3}, {0, 2, 1, 3}, {0, 3, 1, 2},
                             {1, 2, 0, 3}, {1, 3, 0, 2}, {2, 3, 0, 1}};

}  // namespace

ON_3dVector NormalAwayFrom(const ON_3dPoint& a, const ON_3dPoint& b, const ON_3dPoint& c,
                           const ON_3dPoint& d) {
  ON_3dVector n = ON_CrossProduct(b - a, c - a);
  if (!n.Unitize()) return ON_3dVector::ZeroVector;  // Unitize has zeroed n already
  if (n * (d - a) > 0.0) n = -n;
  return n;
}

void TetrahedronDihedralAngles(const ON_3dPoint p[4], double angles[6]) {
  for (int j = 0; j < 6; ++j) {
    const ON_3dPoint& a = p[kEdge[j][0]];
    const ON_3dPoint& b = p[kEdge[j][1]];
    const ON_3dPoint& c = p[kEdge[j][2]];
    const ON_3dPoint& d = p[kEdge[j][3]];
    const ON_3dVector n1 = NormalAwayFrom(a, b, c, d);
    const ON_3dVector n2 = NormalAwayFrom(a, b, d, c);
    if (n1.IsZero() || n2.IsZero()) {
      angles[j] = 0.0;
    } else {
      const double cosine = n1 * n2;
      angles[j] = kPi - std::acos(std::max(std::min(cosine, 1.0), -1.0));
    }
  }
}

void ComputeDihedralAngles(const ON_Mesh& mesh, double* angles) {
  for (int i = 0; i < mesh.FaceCount(); ++i) {
    const int* corner = mesh.m_F[i].vi;
    const ON_3dPoint p[4] = {mesh.Vertex(corner[0]), mesh.Vertex(corner[1]), mesh.Vertex(corner[2]),
                             mesh.Vertex(corner[3])};
    TetrahedronDihedralAngles(p, angles + 6 * static_cast<std::size_t>(i));
  }
}

}  // namespace brindle

extern "C" BRINDLE_API int DihedralAngles(const ON_Mesh* mesh, double* angles, char* error) {
  brindle::ClearErrorText(error);
  if (mesh == nullptr) {
    brindle::SetErrorText(error, "Null mesh");
    return 1;
  }
  if (angles == nullptr && mesh->FaceCount() > 0) {
    brindle::SetErrorText(error, "Null output array");
    return 2;
  }
  brindle::ComputeDihedralAngles(*mesh, angles);
  return 0;
}
