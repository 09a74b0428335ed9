// Boundary heat flows that brindle-study derives from element fluxes.
#include <gtest/gtest.h>

#include "block_mesher.h"
#include "geometry.h"
#include "solve.h"

namespace brindle::study {
namespace {

// A strip 0 <= x <= L held at 1 on the left and 0 on the right conducts k / L per metre of
// its height; the boundary reaction of the exact linear field must give exactly that.
TEST(StudyFlow, BoundaryFlowOfALinearFieldEqualsTheConductance) {
  const std::vector<Material> materials{{"warm", 0.5, Role::kWarmLayer},
                                        {"solid", 2.0, Role::kSolid},
                                        {"cold", 0.5, Role::kColdLayer}};
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
  EXPECT_NEAR(BoundaryFlow(mesh, flux, VertexKind::kWarm), 1.5 / 0.7, 1e-10);
  EXPECT_NEAR(BoundaryFlow(mesh, flux, VertexKind::kCold), -1.5 / 0.7, 1e-10);
}

}  // namespace
}  // namespace brindle::study
