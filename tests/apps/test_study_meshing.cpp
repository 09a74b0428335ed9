// Graded grids and the structured section and block meshers of brindle-study.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>

#include "block_mesher.h"
#include "example_study.h"
#include "examples.h"
#include "geometry.h"
#include "grading.h"
#include "solve.h"

namespace brindle::study {
namespace {

TEST(StudyGrading, DivisionSpansTheIntervalWithBoundedGradedSizes) {
  const MeshSizes sizes{0.01, 0.1, 1.3};
  for (double length : {0.005, 0.03, 0.2, 1.0, 3.7}) {
    const auto points = GradedDivision(1.0, 1.0 + length, sizes);
    ASSERT_GE(points.size(), 2u);
    EXPECT_EQ(points.front(), 1.0);
    EXPECT_EQ(points.back(), 1.0 + length);
    for (std::size_t i = 1; i < points.size(); ++i) {
      const double step = points[i] - points[i - 1];
      EXPECT_GT(step, 0.0);
      EXPECT_LE(step, 1.0001 * sizes.largest);
      if (i > 1 && length > 4 * sizes.smallest) {
        const double ratio = step / (points[i - 1] - points[i - 2]);
        EXPECT_LE(ratio, 1.3 * 1.0001);
        EXPECT_GE(ratio, 1 / (1.3 * 1.0001));
      }
    }
    if (length > 4 * sizes.smallest) {  // small steps at both ends of graded intervals
      EXPECT_LT(points[1] - points[0], 2.5 * sizes.smallest);
      EXPECT_LT(points.back() - points[points.size() - 2], 2.5 * sizes.smallest);
    }
  }
  EXPECT_THROW(GradedDivision(1.0, 1.0, sizes), std::invalid_argument);
}

TEST(StudyGrading, FocusLinesGetTheSmallestElementsOtherBreaksCoarserOnes) {
  const MeshSizes sizes{0.01, 0.1, 1.5};
  const auto lines = GradedLines({0.0, 0.2, 1.0}, sizes, {0.2}, 4.0);
  ASSERT_TRUE(std::is_sorted(lines.begin(), lines.end()));
  EXPECT_EQ(lines.front(), 0.0);
  EXPECT_EQ(lines.back(), 1.0);
  const auto at = std::find(lines.begin(), lines.end(), 0.2);
  ASSERT_NE(at, lines.end());
  // Next to the focus line the elements are near `smallest` (shrunk a little to fit), next to
  // the other breaks near four times that, and neighbours never differ by more than the growth.
  EXPECT_NEAR(*at - *(at - 1), 0.01, 0.003);
  EXPECT_NEAR(*(at + 1) - *at, 0.01, 0.003);
  EXPECT_NEAR(lines[1] - lines[0], 0.04, 0.012);
  EXPECT_NEAR(lines.back() - lines[lines.size() - 2], 0.04, 0.012);
  for (std::size_t i = 2; i < lines.size(); ++i) {
    const double ratio = (lines[i] - lines[i - 1]) / (lines[i - 1] - lines[i - 2]);
    EXPECT_LT(std::max(ratio, 1.0 / ratio), 1.5 * 1.0001) << i;
  }
  // Without focus lines the axis grades towards every break as before; lines pass through every
  // break given in any order, and a finer level has about twice the lines.
  EXPECT_EQ(GradedLines({0.0, 0.2, 1.0}, sizes, {}, 4.0), GradedLines({0.0, 0.2, 1.0}, sizes));
  const auto unordered = GradedLines({0.3, -0.01, 0.0, 0.3, 0.24}, sizes);
  EXPECT_TRUE(std::is_sorted(unordered.begin(), unordered.end()));
  for (double b : {-0.01, 0.0, 0.24, 0.3})
    EXPECT_NE(std::find(unordered.begin(), unordered.end(), b), unordered.end()) << b;
  EXPECT_GT(GradedLines({0.0, 1.0}, sizes.Refined(1)).size(),
            1.8 * GradedLines({0.0, 1.0}, sizes).size());
}

TEST(StudySectionMesher, SlabSectionCoversEachMaterialWithPositiveTriangles) {
  const Detail detail = SlabSection(true);
  const TriMesh mesh = MeshSection(detail.blocks, detail.materials, {0.01, 0.1, 1.4});
  std::map<int, double> area;
  for (std::size_t f = 0; f < mesh.triangles.size(); ++f) {
    const auto& t = mesh.triangles[f];
    const Point& p = mesh.points[t[0]];
    const double a = 0.5 * Cross(mesh.points[t[1]] - p, mesh.points[t[2]] - p)[2];
    ASSERT_GT(a, 0.0) << "triangle " << f;
    area[mesh.region[f]] += a;
  }
  EXPECT_NEAR(area[0], 0.24 * 2.2 - 0.24 * 0.2, 1e-12);  // masonry
  EXPECT_NEAR(area[1], 0.16 * 2.2 - 0.16 * 0.2, 1e-12);  // insulation
  EXPECT_NEAR(area[2], 1.40 * 0.2, 1e-12);               // concrete
  // Every vertex is used by a triangle.
  std::vector<int> uses(mesh.points.size());
  for (const auto& t : mesh.triangles)
    for (int v : t)
      ++uses[v];
  EXPECT_EQ(std::count(uses.begin(), uses.end(), 0), 0);
}

// The room's surfaces are the wall face and both faces of the slab in the room; the slab's cut
// end and the wall's cut-offs are adiabatic.
TEST(StudySectionMesher, DetailFacesAreTaggedInsideAndOutside) {
  const StudyMesh mesh = DetailStudyMesh(SlabSection(true), {0.01, 0.1, 1.4}, 2);
  std::map<int, double> length;
  for (std::size_t e = 0; e < mesh.edges.size(); ++e) {
    const Point& a = mesh.vertices[mesh.edges[e][0]];
    const Point& b = mesh.vertices[mesh.edges[e][1]];
    length[mesh.edgeRef[e]] += Norm(b - a);
    if (mesh.edgeRef[e] == 2) {
      EXPECT_DOUBLE_EQ(a[0], 0.40);
    }
  }
  EXPECT_EQ(length.size(), 2u);
  EXPECT_NEAR(length[1], 2.2 - 0.2 + 2 * 1.0, 1e-12);
  EXPECT_NEAR(length[2], 2.2, 1e-12);
  EXPECT_EQ(mesh.names.at({1, 1}), "room side");
  EXPECT_EQ(mesh.names.at({2, 3}), "concrete");
}

TEST(StudyBlockMesher, TetrahedraFillTheBlocksConformingly) {
  const Detail detail = SteelBarDetail();
  const TetMesh mesh = MeshBlocks(detail.blocks, detail.materials, {0.02, 0.2, 1.6});
  std::map<int, double> volume;
  std::map<std::array<int, 3>, int> faces;
  for (std::size_t e = 0; e < mesh.tetrahedra.size(); ++e) {
    const auto& t = mesh.tetrahedra[e];
    const Point& a = mesh.points[t[0]];
    const double six =
        Dot(mesh.points[t[1]] - a, Cross(mesh.points[t[2]] - a, mesh.points[t[3]] - a));
    ASSERT_GT(six, 0.0) << "tetrahedron " << e;
    volume[mesh.region[e]] += six / 6.0;
    for (int skip = 0; skip < 4; ++skip) {
      std::array<int, 3> face;
      for (int i = 0, n = 0; i < 4; ++i)
        if (i != skip) face[n++] = t[i];
      std::sort(face.begin(), face.end());
      ++faces[face];
    }
  }
  EXPECT_NEAR(volume[2], 0.02 * 0.02 * 0.30, 1e-12);                // steel
  EXPECT_NEAR(volume[1], 0.25 * 0.20 - 0.02 * 0.02 * 0.20, 1e-12);  // insulation
  // Conforming: every face is shared by two tetrahedra or lies on the box surface.
  double boundaryArea = 0.0;
  for (const auto& [face, count] : faces) {
    ASSERT_LE(count, 2);
    if (count == 1)
      boundaryArea += 0.5 * Norm(Cross(mesh.points[face[1]] - mesh.points[face[0]],
                                       mesh.points[face[2]] - mesh.points[face[0]]));
  }
  const double lx = 0.38, ly = 0.5, lz = 0.5;
  EXPECT_NEAR(boundaryArea, 2 * (lx * ly + ly * lz + lz * lx), 1e-9);
}

}  // namespace
}  // namespace brindle::study
