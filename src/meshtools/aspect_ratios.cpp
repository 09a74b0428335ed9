#include "meshtools/aspect_ratios.h"

#include <cmath>
#include <limits>

namespace brindle {
namespace {

// Cmax * Lmax / (6 V) of the tetrahedron (p0, p1, p2, p3); +infinity when its volume is zero
// (or not a positive number, e.g. for unset corners).
double TetrahedronAspectRatio(const ON_3dPoint& p0, const ON_3dPoint& p1, const ON_3dPoint& p2,
                              const ON_3dPoint& p3) {
  const ON_3dVector e01 = p1 - p0;
  const ON_3dVector e02 = p2 - p0;
  const ON_3dVector e03 = p3 - p0;
  const ON_3dVector e12 = p2 - p1;
  const ON_3dVector e13 = p3 - p1;
  const ON_3dVector e23 = p3 - p2;
  const double longestEdge =
      ON_Max(ON_Max(ON_Max(e01.Length(), e02.Length()), ON_Max(e03.Length(), e12.Length())),
             ON_Max(e13.Length(), e23.Length()));

  const ON_3dVector n012 = ON_CrossProduct(e01, e02);
  const double area012 = n012.Length();
  const double area013 = ON_CrossProduct(e01, e03).Length();
  const double area023 = ON_CrossProduct(e02, e03).Length();
  const double area123 = ON_CrossProduct(e12, e13).Length();
  const double largestArea = ON_Max(ON_Max(area012, area013), ON_Max(area023, area123));

  const double volume = std::fabs((n012 * e03) * (1.0 / 6.0));
  if (volume > 0.0) return (largestArea * longestEdge) * ((1.0 / 6.0) / volume);
  return std::numeric_limits<double>::infinity();
}

}  // namespace

void ComputeAspectRatios(const ON_Mesh& mesh, double* ratios) {
  for (int i = 0; i < mesh.FaceCount(); ++i) {
    const int* corner = mesh.m_F[i].vi;
    ratios[i] = TetrahedronAspectRatio(mesh.Vertex(corner[0]), mesh.Vertex(corner[1]),
                                       mesh.Vertex(corner[2]), mesh.Vertex(corner[3]));
  }
}

}  // namespace brindle
