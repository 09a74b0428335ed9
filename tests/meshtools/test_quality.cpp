#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "brindle.h"
#include "opennurbs.h"
#include "support/tet_meshes.h"
#include "support/triangle_meshes.h"

namespace brindle {
namespace {

using namespace testing;

TEST(QualityMmg, TetrahedraAndTrianglesOnMmgsScale) {
  // The regular tetrahedron, then the corner one once as given and once inverted: MMG
  // reorients elements on input.
  ON_Mesh mesh = TetMesh(
      {ON_3dPoint(1, 1, 1), ON_3dPoint(1, -1, -1), ON_3dPoint(-1, 1, -1), ON_3dPoint(-1, -1, 1),
       ON_3dPoint(0, 0, 0), ON_3dPoint(1, 0, 0), ON_3dPoint(0, 1, 0), ON_3dPoint(0, 0, 1)},
      {{0, 1, 2, 3}, {4, 5, 6, 7}, {4, 6, 5, 7}});
  // Colours become MMG vertex references and must not change the measure.
  for (int i = 0; i < mesh.VertexCount(); ++i)
    mesh.m_C.Append(ON_Color(200, 10, 10));

  std::vector<double> quality(3, -1);
  char error[1024] = "stale";
  ASSERT_EQ(qual(&mesh, quality.data(), error), 0);
  EXPECT_STREQ(error, "");
  EXPECT_NEAR(quality[0], 1.0, 1e-14);
  EXPECT_NEAR(quality[1], 4 * std::sqrt(3.0) / 9, 1e-14);  // 0.7698003589195
  EXPECT_NEAR(quality[2], quality[1], 1e-15);

  // Equilateral, right isosceles, and a quad whose corner 3 is ignored: the right isosceles again.
  ON_Mesh triangles = TriangleMesh({ON_3dPoint(0, 0, 0), ON_3dPoint(1, 0, 0),
                                    ON_3dPoint(0.5, std::sqrt(3.0) / 2, 0), ON_3dPoint(0, 1, 0)},
                                   {{0, 1, 2}, {0, 1, 3}});
  triangles.SetQuad(2, 0, 1, 3, 2);
  quality.assign(3, -1);
  ASSERT_EQ(qualS(&triangles, quality.data(), nullptr), 0);
  EXPECT_NEAR(quality[0], 1.0, 1e-14);
  EXPECT_NEAR(quality[1], std::sqrt(3.0) / 2, 1e-14);
  EXPECT_NEAR(quality[2], quality[1], 1e-15);
}

TEST(QualityMmg, RefusalsNameTheMmgStepAndLeaveTheOutputAlone) {
  const UnacceptedTetrahedra refused;
  const struct {
    const ON_Mesh& mesh;
    int tetraStatus;
    std::string tetraMessage;
  } cases[] = {{refused.floatOnly, 1, "MMG3D_Set_meshSize failed"},
               {refused.flat, 3, "MMG3D_Set_tetrahedra failed"},
               {refused.outsideIndex, 3, "MMG3D_Set_tetrahedra failed"}};
  for (const auto& c : cases) {
    double quality[1] = {-7};
    char error[1024] = "stale";
    EXPECT_EQ(qual(&c.mesh, quality, error), c.tetraStatus);
    EXPECT_EQ(std::string(error), c.tetraMessage);
    EXPECT_EQ(quality[0], -7);
  }

  double quality[1] = {-7};
  char error[1024] = "stale";
  ON_Mesh noTriangles = CornerTetrahedron();
  noTriangles.m_F.SetCount(0);  // MMGS wants points and triangles
  EXPECT_EQ(qualS(&noTriangles, quality, error), 1);
  EXPECT_STREQ(error, "MMGS_Set_meshSize failed");

  EXPECT_EQ(qual(nullptr, quality, error), 5);
  EXPECT_STREQ(error, "Null mesh or quality array");
  EXPECT_EQ(qualS(&noTriangles, nullptr, error), 5);
  EXPECT_EQ(quality[0], -7);
}

}  // namespace
}  // namespace brindle
