// Pictures and files of 3-D models: plane cuts, the surfaces an environment touches, the view
// onto them.
#include <gtest/gtest.h>

#include "block_mesher.h"
#include "geometry.h"
#include "section_cut.h"
#include "surface_picture.h"
#include "svg_writer.h"
#include "volume_pictures.h"

namespace brindle::study {
namespace {

// A 0.3 x 0.2 x 0.1 box of two solids (split at x = 0.1) with a warm layer on its x = 0 face
// and a cold layer on its x = 0.3 face.
TetMesh LayeredBox() {
  const std::vector<Material> materials{{"a", 1.0, Role::kSolid},
                                        {"b", 2.0, Role::kSolid},
                                        {"warm film", 0.1, Role::kWarmLayer},
                                        {"cold film", 0.25, Role::kColdLayer}};
  return MeshBlocks({{{-0.01, 0, 0}, {0, 0.2, 0.1}, 2},
                     {{0, 0, 0}, {0.1, 0.2, 0.1}, 0},
                     {{0.1, 0, 0}, {0.3, 0.2, 0.1}, 1},
                     {{0.3, 0, 0}, {0.31, 0.2, 0.1}, 3}},
                    materials, {0.02, 0.05, 1.5});
}

std::vector<double> Linear(const TetMesh& mesh) {
  std::vector<double> values;
  for (const Point& p : mesh.points)
    values.push_back(1.0 + 2.0 * p[0] + 3.0 * p[1] + 4.0 * p[2]);
  return values;
}

double Area(const TriMesh& mesh) {
  double area = 0.0;
  for (const auto& t : mesh.triangles) {
    const Point n =
        Cross(mesh.points[t[1]] - mesh.points[t[0]], mesh.points[t[2]] - mesh.points[t[0]]);
    EXPECT_GT(n[2], 0.0);  // counter-clockwise in the picture
    area += 0.5 * n[2];
  }
  return area;
}

TEST(StudyVolumePictures, CutsAreWholeConformingAndInterpolateExactly) {
  const TetMesh mesh = LayeredBox();
  const std::vector<double> values = Linear(mesh);
  struct Case {
    AxisPlane plane;
    double area;
  };
  // Planes between grid lines, on grid lines and on the model's boundary (where the faces in
  // the plane are cut once, by the tetrahedra below).
  for (const Case& c :
       {Case{{2, 0.0437}, 0.32 * 0.2}, Case{{1, 0.1}, 0.32 * 0.1}, Case{{0, 0.1}, 0.2 * 0.1},
        Case{{0, 0.2}, 0.2 * 0.1}, Case{{2, 0.1}, 0.32 * 0.2}}) {
    const SectionCut cut = CutTetMesh(mesh, values, c.plane);
    EXPECT_NEAR(Area(cut.mesh), c.area, 1e-12) << PlaneName(c.plane);
    for (std::size_t v = 0; v < cut.mesh.points.size(); ++v) {
      Point p{0, 0, 0};
      p[c.plane.axis] = c.plane.offset;
      p[cut.axes[0]] = cut.mesh.points[v][0];
      p[cut.axes[1]] = cut.mesh.points[v][1];
      EXPECT_NEAR(cut.values[v], 1.0 + 2.0 * p[0] + 3.0 * p[1] + 4.0 * p[2], 1e-12);
    }
    // Conforming: the outline is the section's rectangle and the material breaks, nothing more.
    double outline = 0.0;
    for (const auto& e : OutlineEdges(cut.mesh))
      outline += Norm(cut.mesh.points[e[1]] - cut.mesh.points[e[0]]);
    const double w = c.plane.axis == 0 ? 0.2 : 0.32, h = c.plane.axis == 2 ? 0.2 : 0.1;
    const double breaks = c.plane.axis == 0 ? 0.0 : 3 * h;  // x = 0, 0.1 and 0.3
    EXPECT_NEAR(outline, 2 * (w + h) + breaks, 1e-9) << PlaneName(c.plane);
  }
  EXPECT_TRUE(CutTetMesh(mesh, values, {0, 0.5}).mesh.triangles.empty());
}

TEST(StudyVolumePictures, ChosenSectionCrossesTheSurfaceEvenAtTheModelsEdge) {
  const TetMesh mesh = LayeredBox();
  const std::vector<double> values = Linear(mesh);
  // At a corner of the warm face, on the model's boundary: the x plane is parallel to the
  // surface; over the solid, the z plane spans 2 * 0.3 + 3 * 0.2 = 1.2, the y plane only
  // 2 * 0.3 + 4 * 0.1 = 1.0.
  const SectionCut cut = ChooseSection(mesh, values, {0, 0, 0}, {-1, 0, 0});
  ASSERT_FALSE(cut.mesh.triangles.empty());
  EXPECT_EQ(cut.plane.axis, 2);
  EXPECT_NEAR(cut.plane.offset, 0.0, 1e-6);
  EXPECT_EQ(cut.axes, (std::array<int, 2>{0, 1}));
}

TEST(StudyVolumePictures, EnvironmentFacesPointOutOfTheSolidAndFaceTheViewer) {
  const TetMesh mesh = LayeredBox();
  for (const auto& [role, outward] : {std::pair{Role::kWarmLayer, Point{-1, 0, 0}},
                                      std::pair{Role::kColdLayer, Point{1, 0, 0}}}) {
    const auto faces = SolidFacesTowards(mesh, role);
    double area = 0.0;
    for (const auto& f : faces) {
      const Point n =
          Cross(mesh.points[f[1]] - mesh.points[f[0]], mesh.points[f[2]] - mesh.points[f[0]]);
      EXPECT_NEAR(Dot(n, outward), Norm(n), 1e-15);
      area += 0.5 * Norm(n);
    }
    EXPECT_NEAR(area, 0.2 * 0.1, 1e-12);

    SurfaceScene scene;
    scene.points = mesh.points;
    scene.triangles = faces;
    const Point view = ViewDirection(scene);
    EXPECT_GT(Dot(view, outward), 0.7);      // from the environment's side, a little oblique
    EXPECT_GT(ScreenAxes(view)[1][2], 0.0);  // z stays up
    const std::vector<int> order = PaintOrder(scene, view);
    ASSERT_EQ(order.size(), faces.size());
    auto depth = [&](int f) {
      return Dot(mesh.points[faces[f][0]] + mesh.points[faces[f][1]] + mesh.points[faces[f][2]],
                 view);
    };
    for (std::size_t i = 1; i < order.size(); ++i)
      EXPECT_LE(depth(order[i - 1]), depth(order[i]) + 1e-12);

    // A surface at one temperature (up to rounding) is drawn plain, without contours.
    for (const Point& p : mesh.points)
      scene.temperature.push_back(19.0 + 1e-14 * p[1]);
    scene.scale = TemperatureScale({-5.0, 20.0});
    const std::string svg = SurfaceSvgText(scene);
    EXPECT_EQ(svg.find(" °C</text>"), std::string::npos);
  }
}

}  // namespace
}  // namespace brindle::study
