#include <climits>
#include <cmath>
#include <limits>
#include <memory>
#include <vector>

#include <gtest/gtest.h>

#include "brindle.h"
#include "common/boundary_status.h"
#include "opennurbs.h"

namespace {

constexpr unsigned int kLowColour = 0x96F7A827;   // status 1: held at 0
constexpr unsigned int kHighColour = 0x968181FF;  // status 3: held at 1
constexpr unsigned int kFreeColour = 0x96323232;  // status 5: free

struct Generated {
  int status = -9;
  std::string message;
  std::unique_ptr<ON_Mesh> mesh;
  bool result_written_null = false;
};

Generated Make(const ON_Plane& plane, double width, double height, int nx, int ny) {
  Generated g;
  ON_Mesh* result = reinterpret_cast<ON_Mesh*>(0x1);
  char error[1024] = "stale";
  g.status = MakeRectMesh(&plane, width, height, nx, ny, &result, error);
  g.message = error;
  g.result_written_null = result == nullptr;
  if (g.status == 0) g.mesh.reset(result);
  return g;
}

TEST(MakeRectMesh, SmallGridOnTheWorldPlane) {
  const Generated g = Make(ON_Plane::World_xy, 2.0, 1.0, 2, 1);
  ASSERT_EQ(g.status, 0);
  EXPECT_EQ(g.message, "");
  const ON_Mesh& mesh = *g.mesh;
  EXPECT_TRUE(mesh.IsValid());
  ASSERT_EQ(mesh.VertexCount(), 6);
  EXPECT_TRUE(mesh.HasSynchronizedDoubleAndSinglePrecisionVertices());
  EXPECT_EQ(mesh.FaceCount(), 4);
  EXPECT_EQ(mesh.TriangleCount(), 4);
  EXPECT_TRUE(mesh.HasVertexNormals());
  EXPECT_TRUE(mesh.HasFaceNormals());
  ASSERT_TRUE(mesh.HasVertexColors());
  // No vertex coincides, so the grid keeps its row-major numbering.
  for (int j = 0; j <= 1; ++j) {
    for (int i = 0; i <= 2; ++i) {
      const int k = j * 3 + i;
      EXPECT_EQ(mesh.m_dV[k], ON_3dPoint(i - 1.0, j - 0.5, 0.0)) << k;
      EXPECT_EQ(static_cast<unsigned int>(mesh.m_C[k]), j == 0 ? kLowColour : kHighColour) << k;
      EXPECT_EQ(mesh.m_N[k].z, 1.0f);
    }
  }
}

TEST(MakeRectMesh, RowsArePaintedLowFreeHigh) {
  Generated g = Make(ON_Plane::World_xy, 1.0, 1.0, 1, 1);
  ASSERT_EQ(g.status, 0);
  ASSERT_EQ(g.mesh->VertexCount(), 4);
  for (int k = 0; k < 4; ++k) {
    EXPECT_EQ(brindle::DecodeBoundaryStatus(g.mesh->m_C[k]), k < 2 ? 1 : 3) << k;
  }

  g = Make(ON_Plane::World_xy, 3.0, 2.0, 3, 4);
  ASSERT_EQ(g.status, 0);
  ASSERT_EQ(g.mesh->VertexCount(), 20);
  for (int k = 0; k < 20; ++k) {
    const double y = g.mesh->m_dV[k].y;
    const unsigned int expected = y == -1.0 ? kLowColour : y == 1.0 ? kHighColour : kFreeColour;
    EXPECT_EQ(static_cast<unsigned int>(g.mesh->m_C[k]), expected) << k;
  }
}

TEST(MakeRectMesh, FollowsATiltedPlaneCounterClockwise) {
  const ON_Plane plane(ON_3dPoint(1, 2, 3), ON_3dPoint(2, 3, 3), ON_3dPoint(1, 2, 5));
  ASSERT_TRUE(plane.IsValid());
  const int nx = 4, ny = 3;
  const double width = 2.5, height = 1.5;
  const Generated g = Make(plane, width, height, nx, ny);
  ASSERT_EQ(g.status, 0);
  const ON_Mesh& mesh = *g.mesh;
  ASSERT_EQ(mesh.VertexCount(), (nx + 1) * (ny + 1));
  ASSERT_EQ(mesh.FaceCount(), 2 * nx * ny);
  for (int j = 0; j <= ny; ++j) {
    for (int i = 0; i <= nx; ++i) {
      const ON_3dPoint expected =
          plane.PointAt(i * (width / nx) + width * -0.5, j * (height / ny) + height * -0.5);
      EXPECT_EQ(mesh.m_dV[j * (nx + 1) + i], expected);
    }
  }
  for (int f = 0; f < mesh.FaceCount(); ++f) {
    const int* vi = mesh.m_F[f].vi;
    ASSERT_EQ(vi[2], vi[3]);
    const ON_3dVector normal =
        ON_CrossProduct(mesh.m_dV[vi[1]] - mesh.m_dV[vi[0]], mesh.m_dV[vi[2]] - mesh.m_dV[vi[0]]);
    EXPECT_GT(normal * plane.zaxis, 0.0) << f;
  }
}

TEST(MakeRectMesh, RefusesBadSizesAndCounts) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const struct {
    double width, height;
    int nx, ny;
  } bad[] = {
      {0.0, 1.0, 1, 1},        {1.0, -1.0, 1, 1}, {nan, 1.0, 1, 1},         {1.0, nan, 1, 1},
      {1.0, 1.0, 0, 1},        {1.0, 1.0, 1, -3}, {1.0, 1.0, 65536, 65536},  // (nx + 1)(ny + 1)
                                                                             // vertices overflow an
                                                                             // int
      {1.0, 1.0, INT_MAX, 1},     // nx + 1 itself overflows
      {1.0, 1.0, 46000, 46000}};  // vertices fit, 2 nx ny triangles do not
  for (const auto& b : bad) {
    const Generated g = Make(ON_Plane::World_xy, b.width, b.height, b.nx, b.ny);
    EXPECT_EQ(g.status, 1) << b.width << " " << b.height << " " << b.nx << " " << b.ny;
    EXPECT_EQ(g.message, "Invalid dimensions or subdivisions");
    EXPECT_TRUE(g.result_written_null);
  }
}

TEST(MakeRectMesh, DeletesAnInvalidMeshAndChecksPointers) {
  // A plane without a y axis puts every row on the same line: degenerate triangles.
  ON_Plane flat = ON_Plane::World_xy;
  flat.yaxis = ON_3dVector::ZeroVector;
  Generated g = Make(flat, 1.0, 1.0, 2, 3);
  EXPECT_EQ(g.status, 2);
  EXPECT_EQ(g.message, "Generated mesh is invalid");
  EXPECT_TRUE(g.result_written_null);

  ON_Mesh* result = reinterpret_cast<ON_Mesh*>(0x1);
  char error[1024];
  EXPECT_EQ(MakeRectMesh(nullptr, 1.0, 1.0, 1, 1, &result, error), 3);
  EXPECT_STREQ(error, "Null plane or result pointer");
  EXPECT_EQ(result, nullptr);
  EXPECT_EQ(MakeRectMesh(&ON_Plane::World_xy, 1.0, 1.0, 1, 1, nullptr, error), 3);
  EXPECT_EQ(MakeRectMesh(&ON_Plane::World_xy, -1.0, 1.0, 1, 1, nullptr, error), 1);
}

TEST(MakeRectMesh, GoesStraightIntoTheSurfaceSolver) {
  const double height = 2.0;
  const Generated g = Make(ON_Plane::World_xy, 3.0, height, 5, 4);
  ASSERT_EQ(g.status, 0);
  void* handle = nullptr;
  char error[1024] = "stale";
  ASSERT_EQ(sldmMalloc(g.mesh.get(), nullptr, 2, &handle, error), 0) << error;
  std::vector<double> temperature(g.mesh->VertexCount());
  const int status = sldmsolve(handle, temperature.data(), static_cast<int>(temperature.size()),
                               nullptr, 0, nullptr, nullptr, 0, nullptr, nullptr, error);
  sldmfree(handle);
  ASSERT_EQ(status, 0) << error;
  // Held at 0 along the bottom and 1 along the top: a linear field in y.
  for (int k = 0; k < g.mesh->VertexCount(); ++k) {
    EXPECT_NEAR(temperature[k], g.mesh->m_dV[k].y / height + 0.5, 1e-9) << k;
  }
}

}  // namespace
