// Shape gradients and boundary heat flows that brindle-study derives from element fluxes.
#include <gtest/gtest.h>

#include "block_mesher.h"
#include "geometry.h"
#include "solve.h"

namespace brindle::study {
namespace {

TEST(StudyFlow, ShapeGradientsReproduceLinearFields) {
  const Point a{0.1, 0.2, 0.3}, b{1.3, 0.1, 0.5}, c{0.4, 1.1, 0.2}, d{0.2, 0.3, 1.4};
  auto field = [](const Point& p) { return 2.0 * p[0] - 3.0 * p[1] + 0.5 * p[2] + 7.0; };
  double volume = 0.0;
  const auto g = ShapeGradients(a, b, c, d, &volume);
  Point gradient{0, 0, 0}, sum{0, 0, 0};
  const Point corners[4] = {a, b, c, d};
  for (int i = 0; i < 4; ++i) {
    gradient = gradient + field(corners[i]) * g[i];
    sum = sum + g[i];
  }
  EXPECT_NEAR(gradient[0], 2.0, 1e-12);
  EXPECT_NEAR(gradient[1], -3.0, 1e-12);
  EXPECT_NEAR(gradient[2], 0.5, 1e-12);
  EXPECT_NEAR(Norm(sum), 0.0, 1e-12);
  EXPECT_NEAR(volume, std::abs(Dot(b - a, Cross(c - a, d - a))) / 6, 1e-15);

  // A tilted triangle: the in-plane part of the gradient is reproduced.
  double area = 0.0;
  const auto t = ShapeGradients(a, b, c, &area);
  const Point normal = Cross(b - a, c - a);
  Point planar{0, 0, 0};
  for (int i = 0; i < 3; ++i)
    planar = planar + field(corners[i]) * t[i];
  const Point full{2.0, -3.0, 0.5};
  const Point expected = full - (Dot(full, normal) / Dot(normal, normal)) * normal;
  for (int k = 0; k < 3; ++k)
    EXPECT_NEAR(planar[k], expected[k], 1e-12);
  EXPECT_NEAR(area, 0.5 * Norm(normal), 1e-15);
}

// A strip 0 <= x <= L held at 1 on the left and 0 on the right conducts k / L per metre of
// its height; the boundary reaction of the exact linear field must give exactly that.
TEST(StudyFlow, BoundaryFlowOfALinearFieldEqualsTheConductance) {
  const std::vector<Material> materials{
      {"warm", 0.5, Role::WarmLayer}, {"solid", 2.0, Role::Solid}, {"cold", 0.5, Role::ColdLayer}};
  const std::vector<Block> blocks{{{-0.1, 0, 0}, {0, 1.5, 0}, 0},
                                  {{0, 0, 0}, {0.6, 1.5, 0}, 1},
                                  {{0.6, 0, 0}, {0.7, 1.5, 0}, 2}};
  const TriMesh mesh = MeshSection(blocks, materials, {0.05, 0.2, 1.5});
  // Series resistance 0.1/0.5 + 0.6/2 + 0.1/0.5 = 0.7 m2K/W; temperature falls linearly in
  // each layer.
  auto temperature = [](double x) {
    const double q = 1.0 / 0.7;
    if (x <= 0.0) return 1.0 - q * (x + 0.1) / 0.5;
    if (x <= 0.6) return 1.0 - q * 0.2 - q * x / 2.0;
    return q * (0.7 - x) / 0.5;
  };
  std::vector<double> field;
  for (const Point& p : mesh.points)
    field.push_back(temperature(p[0]));
  const std::vector<Point> gradients = TriangleGradients(mesh, field);
  std::vector<Point> flux;
  for (std::size_t f = 0; f < mesh.triangles.size(); ++f)
    flux.push_back(materials[mesh.region[f]].conductivity * gradients[f]);
  EXPECT_NEAR(BoundaryFlow(mesh, flux, VertexKind::Warm), 1.5 / 0.7, 1e-10);
  EXPECT_NEAR(BoundaryFlow(mesh, flux, VertexKind::Cold), -1.5 / 0.7, 1e-10);
}

}  // namespace
}  // namespace brindle::study
