// The flat pictures: round legend ticks, the study's colour scales, isotherm tracing and banded
// fills, and labels that stay inside the picture and apart.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <sstream>

#include "block_mesher.h"
#include "color_scale.h"
#include "flat_picture.h"
#include "geometry.h"
#include "svg_writer.h"

namespace brindle::study {
namespace {

TEST(StudyPictures, TicksAreRoundStepsInsideTheRange) {
  struct Case {
    double low, high;
    int wanted;
    std::vector<double> ticks;
  };
  const Case cases[] = {
      {-5, 20, 6, {-5, 0, 5, 10, 15, 20}},
      {89.9, 119.9, 6, {90, 95, 100, 105, 110, 115}},
      {0, 0.037, 6, {0, 0.005, 0.01, 0.015, 0.02, 0.025, 0.03, 0.035}},
      {-12.5, -3.2, 4, {-12, -10, -8, -6, -4}},
      // A field held at one temperature, up to rounding, has no steps (and must not loop on them).
      {19.0, 19.0 + 1e-13, 8, {19.0}},
  };
  for (const Case& c : cases) {
    const std::vector<double> ticks = RoundTicks(c.low, c.high, c.wanted);
    ASSERT_EQ(ticks.size(), c.ticks.size()) << c.low << " " << c.high;
    for (std::size_t i = 0; i < ticks.size(); ++i)
      EXPECT_NEAR(ticks[i], c.ticks[i], 1e-12) << c.low << " " << c.high;
  }
}

TEST(StudyPictures, FluxScaleKeepsAUniformFieldMidScaleAndClipsHotSpots) {
  const ColorScale uniform = FluxScale(std::vector<double>(100, 7.3), {}, "W/m²");
  EXPECT_EQ(uniform.low, 0.0);
  EXPECT_EQ(uniform.high, 20.0);  // twice the median, rounded up
  EXPECT_FALSE(uniform.clippedHigh);
  EXPECT_NE(uniform.Color(7.3), uniform.Color(uniform.high));

  std::vector<double> spotted(1000, 10.0);
  for (int i = 0; i < 100; ++i)
    spotted[i] = 40.0 + i;
  spotted[0] = 5000.0;  // a re-entrant corner
  const ColorScale clipped = FluxScale(spotted, {}, "W/m²");
  EXPECT_EQ(clipped.high, 200.0);  // the 98th percentile (138) rounded up
  EXPECT_TRUE(clipped.clippedHigh);

  // The many small elements of a mesh refined at a bridge do not set the scale of the section.
  std::vector<double> refined(1000, 10.0), areas(1000, 1.0);
  for (int i = 0; i < 500; ++i) {
    refined[i] = 1000.0;
    areas[i] = 1e-4;
  }
  EXPECT_EQ(FluxScale(refined, areas, "W/m²").high, 20.0);
}

// A 1 x 0.5 strip of solid with a surface layer on its left, meshed by the section mesher.
TriMesh StripWithLayer() {
  const std::vector<Material> materials{{"solid", 1.0, Role::kSolid},
                                        {"film", 0.1, Role::kWarmLayer}};
  return MeshSection({{{-0.05, 0, 0}, {0, 0.5, 0}, 1}, {{0, 0, 0}, {1.0, 0.5, 0}, 0}}, materials,
                     {0.02, 0.05, 1.3});
}

// Signed area of a polygon in the xy plane, positive when counter-clockwise.
double Area(const std::vector<Point>& polygon) {
  double twice = 0.0;
  for (std::size_t i = 0, n = polygon.size(); i < n; ++i)
    twice += Cross(polygon[i], polygon[(i + 1) % n])[2];
  return 0.5 * twice;
}

std::vector<double> LinearField(const TriMesh& mesh, double a, double b) {
  std::vector<double> values;
  for (const Point& p : mesh.points)
    values.push_back(a * p[0] + b * p[1]);
  return values;
}

TEST(StudyPictures, IsothermsAndBandsFollowTheFieldAndSkipSurfaceLayers) {
  const TriMesh mesh = StripWithLayer();
  const std::vector<char> hidden = SurfaceLayerTriangles(mesh);
  const std::vector<double> values = LinearField(mesh, 10.0, 0.0);  // 10 per metre along x
  const auto lines = TraceIsotherms(mesh, values, hidden, {-0.2, 2.5, 7.0});
  EXPECT_TRUE(lines[0].empty());  // only inside the hidden layer
  for (std::size_t l = 1; l < 3; ++l) {
    double length = 0.0;
    for (const Segment& s : lines[l]) {
      EXPECT_NEAR(s[0][0], l == 1 ? 0.25 : 0.7, 1e-12);
      length += Norm(s[1] - s[0]);
    }
    EXPECT_NEAR(length, 0.5, 1e-12);
  }
  EXPECT_EQ(RoundLevels(mesh, values, hidden, 9), (std::vector<double>{1, 2, 3, 4, 5, 6, 7, 8, 9}));

  // The bands of a triangle cover it exactly.
  const std::array<Point, 3> p{Point{0, 0, 0}, Point{2, 0, 0}, Point{0, 1, 0}};
  const std::array<double, 3> v{0.0, 4.0, 1.0};
  double covered = 0.0;
  for (double low = -1.0; low < 5.0; low += 0.75)
    covered += Area(ClipToBand(p, v, low, low + 0.75));
  EXPECT_NEAR(covered, 1.0, 1e-12);
  EXPECT_TRUE(ClipToBand(p, v, 5.0, 6.0).empty());
}

struct Box {
  double x, y, width, height;
};

// The number in attribute `name` of the tag that starts at `from`.
double Attribute(const std::string& svg, std::size_t from, const std::string& name) {
  const std::size_t at = svg.find(" " + name + "=\"", from);
  return std::stod(svg.substr(at + name.size() + 3));
}

// The label boxes of an SVG picture: a rounded rect followed by its text.
std::vector<std::pair<Box, std::string>> Labels(const std::string& svg) {
  std::vector<std::pair<Box, std::string>> found;
  for (std::size_t at = svg.find(" rx=\"3\""); at != std::string::npos;
       at = svg.find(" rx=\"3\"", at + 1)) {
    const std::size_t rect = svg.rfind("<rect", at);
    const std::size_t text = svg.find('>', svg.find("<text", at)) + 1;
    found.push_back({{Attribute(svg, rect, "x"), Attribute(svg, rect, "y"),
                      Attribute(svg, rect, "width"), Attribute(svg, rect, "height")},
                     svg.substr(text, svg.find("</text>", text) - text)});
  }
  return found;
}

TEST(StudyPictures, IsothermLabelsStayInsideThePictureAndApart) {
  const TriMesh mesh = StripWithLayer();
  // A steep field: 21 isotherms 4.5 cm apart, far closer than their labels are wide.
  const std::vector<double> values = LinearField(mesh, 20.0, 1.0);
  SvgPicture picture =
      TemperaturePicture(mesh, values, TemperatureScale({0.0, 20.5}), 19, {"strip"});
  ASSERT_GE(picture.isotherms.size(), 15u);
  picture.markers.push_back({Point{0.0, 0.25, 0}, "coldest 1.0 °C, f = 0.100"});
  const std::string svg = SvgText(mesh, picture);
  const double width = Attribute(svg, 0, "width"), height = Attribute(svg, 0, "height");
  const auto labels = Labels(svg);
  ASSERT_GE(labels.size(), picture.isotherms.size() / 2);
  for (std::size_t i = 0; i < labels.size(); ++i) {
    const Box& a = labels[i].first;
    EXPECT_GE(a.x, 0.0);
    EXPECT_GE(a.y, 0.0);
    EXPECT_LE(a.x + a.width, width);
    EXPECT_LE(a.y + a.height, height);
    for (std::size_t j = i + 1; j < labels.size(); ++j) {
      const Box& b = labels[j].first;
      const bool apart = a.x + a.width <= b.x || b.x + b.width <= a.x || a.y + a.height <= b.y ||
                         b.y + b.height <= a.y;
      EXPECT_TRUE(apart) << labels[i].second << " and " << labels[j].second;
    }
  }
  EXPECT_NE(svg.find("surface-resistance layers"), std::string::npos);
}

// Signed areas of the loops of path data made of "M x y", "L x y" and "Z".
std::vector<double> LoopAreas(const std::string& d) {
  std::istringstream in(d);
  std::vector<double> areas;
  std::vector<Point> loop;
  for (char command; in >> command;) {
    if (command == 'Z') {
      areas.push_back(Area(loop));
      loop.clear();
      continue;
    }
    Point p{0, 0, 0};
    in >> p[0] >> p[1];
    loop.push_back(p);
  }
  return areas;
}

TEST(StudyPictures, RegionOutlineCoversItsTrianglesHolesIncluded) {
  // A 4 x 4 block of cells with its middle 2 x 2 left out: one outer loop and one hole.
  const std::vector<Material> materials{{"a", 1.0, Role::kSolid}};
  const TriMesh mesh = MeshSection({{{0, 0, 0}, {4, 4, 0}, 0}}, materials, {1.0, 1.0, 1.0});
  std::vector<int> ring;
  for (std::size_t f = 0; f < mesh.triangles.size(); ++f) {
    Point centre{0, 0, 0};
    for (int v : mesh.triangles[f])
      centre = centre + (1.0 / 3.0) * mesh.points[v];
    if (!(centre[0] > 1 && centre[0] < 3 && centre[1] > 1 && centre[1] < 3)) ring.push_back(int(f));
  }
  const auto xy = [](const Point& p) { return SvgNumber(p[0], 3) + " " + SvgNumber(p[1], 3); };
  const std::vector<double> areas = LoopAreas(RegionPath(mesh, ring, xy));
  ASSERT_EQ(areas.size(), 2u);
  EXPECT_NEAR(areas[0] + areas[1], 12.0, 1e-9);  // outer 16 counter-clockwise, hole -4
  EXPECT_NEAR(std::max(areas[0], areas[1]), 16.0, 1e-9);
  EXPECT_TRUE(RegionPath(mesh, {}, xy).empty());
}

}  // namespace
}  // namespace brindle::study
