// The structured section and block meshers of brindle-study.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>

#include "block_mesher.h"
#include "example_study.h"
#include "examples.h"
#include "geometry.h"

namespace brindle::study {
namespace {

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
