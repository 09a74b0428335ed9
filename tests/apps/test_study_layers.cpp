// The surface-resistance layers: thickness d normal to every face, mitred at edges and corners,
// flush with adiabatic faces, and made of positive tetrahedra.
#include <gtest/gtest.h>

#include <cmath>

#include "block_mesher.h"
#include "block_study_mesh.h"
#include "geometry.h"
#include "layered_model.h"

namespace brindle::study {
namespace {

// A cube with one environment on its three faces x = 1, y = 1, z = 1 (meeting at a convex
// corner) and another on x = 0; the faces y = 0 and z = 0 are adiabatic.
struct CubeCase {
  SolidModel solid;
  std::vector<EnvironmentFaces> faces;
};

CubeCase Cube() {
  const TetMesh tets =
      MeshBlocks({{{0, 0, 0}, {1, 1, 1}, 0}}, {{"a", 1.0, Role::kSolid}}, {0.25, 0.25, 1.5});
  const StudyMesh mesh = BlockStudyMesh(tets, [](const Point& c, const Point& n) {
    if (Dot(n, {1, 0, 0}) > 0.5 || Dot(n, {0, 1, 0}) > 0.5 || Dot(n, {0, 0, 1}) > 0.5) return 1;
    if (n[0] < -0.5 && c[0] < 1e-9) return 2;
    return 0;
  });
  CubeCase c;
  c.solid.dimension = 3;
  c.solid.points = mesh.vertices;
  for (const auto& t : mesh.tetrahedra)
    c.solid.elements.push_back(t);
  c.solid.material.assign(mesh.tetrahedra.size(), 0);
  c.solid.conductivity = {1.0};
  c.faces = {{"out", 0.04, {}}, {"in", 0.0, {}}};
  for (std::size_t f = 0; f < mesh.triangles.size(); ++f)
    c.faces[mesh.triangleRef[f] - 1].faces.push_back(mesh.triangles[f]);
  return c;
}

TEST(StudyLayers, OffsetsAreMitredAtEdgesAndCornersAndFlushWithAdiabaticFaces) {
  const CubeCase c = Cube();
  const LayeredModel m = BuildLayeredModel(c.solid, c.faces);
  const double d = m.layerThickness;
  EXPECT_DOUBLE_EQ(d, std::min(1e-3, 0.1 * 0.25));
  ASSERT_GT(m.points.size(), m.solidVertices);
  // Each layer vertex sits at its solid vertex moved d out of every face of the environment it
  // touches and not at all out of the adiabatic faces y = 0 and z = 0.
  std::size_t checked = 0;
  for (const auto& e : m.elements) {
    for (int a : e)
      for (int b : e) {
        if (a >= static_cast<int>(m.solidVertices) || b < static_cast<int>(m.solidVertices))
          continue;
        const Point& p = m.points[a];
        const Point offset = m.points[b] - p;
        if (Norm(offset) > 2 * d) continue;  // an edge of the layer that is not an offset
        for (int axis = 0; axis < 3; ++axis) {
          const double expected = std::abs(p[axis] - 1.0) < 1e-12 ? d : 0.0;
          EXPECT_NEAR(offset[axis], expected, 1e-12 * d) << p[0] << " " << p[1] << " " << p[2];
        }
        ++checked;
      }
  }
  EXPECT_GT(checked, 100u);
  // Every layer tetrahedron is positive, and together they fill the shell between the cube and
  // the cube grown by d out of its three faces, without gaps or overlaps.
  double volume = 0.0;
  for (std::size_t e = m.solidElements; e < m.elements.size(); ++e) {
    const auto& t = m.elements[e];
    const double six = Dot(Cross(m.points[t[1]] - m.points[t[0]], m.points[t[2]] - m.points[t[0]]),
                           m.points[t[3]] - m.points[t[0]]);
    EXPECT_GT(six, 0.0);
    volume += six / 6.0;
  }
  EXPECT_NEAR(volume, std::pow(1.0 + d, 3) - 1.0, 1e-9 * d);
  // Outer vertices are held by the layer's environment, the x = 0 face by its own.
  for (std::size_t v = m.solidVertices; v < m.points.size(); ++v)
    EXPECT_EQ(m.fixedBy[v], 0);
  for (std::size_t v = 0; v < m.solidVertices; ++v)
    EXPECT_EQ(m.fixedBy[v], m.points[v][0] == 0.0 ? 1 : -1);
  EXPECT_DOUBLE_EQ(m.conductivity.back(), d / 0.04);
}

}  // namespace
}  // namespace brindle::study
