#include "surface/flux_mesh.h"

#include <algorithm>
#include <new>

#include "meshtools/heat_color.h"

namespace brindle {

void BuildFluxMesh(const SurfaceModel& model, const std::vector<double>& magnitude, ON_Mesh& out) {
  const int faceCount = model.FaceCount();
  const double largest =
      magnitude.empty() ? 0.0 : *std::max_element(magnitude.begin(), magnitude.end());
  // With no flux anywhere the scale would be infinite; colour everything as zero flux.
  const double scale = largest > 0.0 ? 1.0 / largest : 0.0;

  const std::size_t cornerCount = 3 * static_cast<std::size_t>(faceCount);
  out.m_dV.Reserve(cornerCount);
  out.m_F.Reserve(static_cast<std::size_t>(faceCount));
  out.m_C.Reserve(cornerCount);
  out.m_N.Reserve(cornerCount);
  // A failed reservation shows only in the capacity; the appends below must not grow.
  if (static_cast<std::size_t>(out.m_dV.Capacity()) < cornerCount ||
      static_cast<std::size_t>(out.m_C.Capacity()) < cornerCount ||
      static_cast<std::size_t>(out.m_N.Capacity()) < cornerCount ||
      out.m_F.Capacity() < faceCount) {
    throw std::bad_alloc();
  }

  const ON_Mesh& mesh = model.mesh;
  for (int f = 0; f < faceCount; ++f) {
    const RgbChannels rgb = HeatColorChannels(magnitude[f] * scale);
    const ON_Color color(rgb.red, rgb.green, rgb.blue);
    const ON_MeshFace& face = mesh.m_F[f];
    const ON_3dPoint corners[3] = {mesh.Vertex(face.vi[0]), mesh.Vertex(face.vi[1]),
                                   mesh.Vertex(face.vi[2])};
    ON_3fVector normal(ON_CrossProduct(corners[1] - corners[0], corners[2] - corners[0]));
    normal.Unitize();
    for (const ON_3dPoint& corner : corners) {
      out.m_dV.Append(corner);
      out.m_C.Append(color);
      out.m_N.Append(normal);
    }
    ON_MeshFace flat;
    flat.vi[0] = 3 * f;
    flat.vi[1] = 3 * f + 1;
    flat.vi[2] = flat.vi[3] = 3 * f + 2;
    out.m_F.Append(flat);
  }
  out.UpdateSinglePrecisionVertices();
}

}  // namespace brindle
