#include <climits>
#include <cmath>
#include <memory>

#include <gtest/gtest.h>

#include "brindle.h"
#include "opennurbs.h"
#include "support/buffer_limit.h"

namespace {

TEST(MakeRectMesh, GridOnATiltedPlanePaintedLowFreeHigh) {
  const ON_Plane plane(ON_3dPoint(1, 2, 3), ON_3dPoint(2, 3, 3), ON_3dPoint(1, 2, 5));
  const int nx = 4, ny = 3;
  ON_Mesh* result = nullptr;
  char error[1024] = "stale";
  ASSERT_EQ(MakeRectMesh(&plane, 2.5, 1.5, nx, ny, &result, error), 0);
  const std::unique_ptr<ON_Mesh> mesh(result);
  EXPECT_STREQ(error, "");
  EXPECT_TRUE(mesh->IsValid());
  ASSERT_EQ(mesh->VertexCount(), (nx + 1) * (ny + 1));
  ASSERT_EQ(mesh->TriangleCount(), 2 * nx * ny);
  ASSERT_TRUE(mesh->HasVertexColors());
  // No vertex coincides, so the grid keeps its row-major numbering.
  for (int k = 0; k < mesh->VertexCount(); ++k) {
    const int i = k % (nx + 1), j = k / (nx + 1);
    EXPECT_EQ(mesh->m_dV[k],
              plane.PointAt(i * (2.5 / nx) + 2.5 * -0.5, j * (1.5 / ny) + 1.5 * -0.5));
    const unsigned int color = j == 0 ? 0x96F7A827 : j == ny ? 0x968181FF : 0x96323232;
    EXPECT_EQ(static_cast<unsigned int>(mesh->m_C[k]), color) << k;
  }
  for (int f = 0; f < mesh->FaceCount(); ++f) {  // counter-clockwise seen from the normal side
    const ON_3dPoint* v = mesh->m_dV.Array();
    const int* vi = mesh->m_F[f].vi;
    EXPECT_GT(ON_CrossProduct(v[vi[1]] - v[vi[0]], v[vi[2]] - v[vi[0]]) * plane.zaxis, 0.0);
  }
}

TEST(MakeRectMesh, RefusesBadInput) {
  const double nan = std::nan("");
  ON_Plane noY = ON_Plane::World_xy;  // every row on one line: an invalid mesh
  noY.yaxis = ON_3dVector::ZeroVector;
  const struct {
    double width, height;
    int nx, ny, status;
    const ON_Plane* plane;
  } bad[] = {{0.0, 1.0, 1, 1, 1, &ON_Plane::World_xy},
             {1.0, -1.0, 1, 1, 1, &ON_Plane::World_xy},
             {nan, 1.0, 1, 1, 1, &ON_Plane::World_xy},
             {1.0, nan, 1, 1, 1, &ON_Plane::World_xy},
             {1.0, 1.0, 0, 1, 1, &ON_Plane::World_xy},
             {1.0, 1.0, 1, -3, 1, &ON_Plane::World_xy},
             {1.0, 1.0, 65536, 65536, 1, &ON_Plane::World_xy},  // vertex count overflows an int
             {1.0, 1.0, INT_MAX, 1, 1, &ON_Plane::World_xy},    // so does nx + 1
             {1.0, 1.0, 46000, 46000, 1, &ON_Plane::World_xy},  // vertices fit, triangles do not
             {1.0, 1.0, 2, 3, 2, &noY},
             {1.0, 1.0, 1, 1, 3, nullptr}};
  const char* const message[] = {"", "Invalid dimensions or subdivisions",
                                 "Generated mesh is invalid", "Null plane or result pointer"};
  for (const auto& b : bad) {
    ON_Mesh* result = reinterpret_cast<ON_Mesh*>(0x1);
    char error[1024] = "stale";
    EXPECT_EQ(MakeRectMesh(b.plane, b.width, b.height, b.nx, b.ny, &result, error), b.status)
        << b.width << " " << b.height << " " << b.nx << " " << b.ny;
    EXPECT_STREQ(error, message[b.status]);
    EXPECT_EQ(result, nullptr);
  }
}

// A grid whose arrays cannot get their memory ends in status 4, never in a write through the
// null buffer of a failed reservation; the limit sits between the sizes of the mesh's arrays,
// so some reservations succeed and later ones fail.
TEST(MakeRectMesh, ArraysThatCannotBeReservedGiveOutOfMemory) {
  if (!brindle::testing::BufferLimit::Available()) GTEST_SKIP() << brindle::testing::kNoBufferLimit;
  for (std::size_t limit : {std::size_t{0}, std::size_t{31000}}) {
    SCOPED_TRACE(limit);
    ON_Mesh* result = reinterpret_cast<ON_Mesh*>(0x1);
    char error[1024] = "stale";
    int status;
    {
      brindle::testing::BufferLimit cap(limit);
      status = MakeRectMesh(&ON_Plane::World_xy, 2.0, 1.0, 40, 30, &result, error);
    }
    EXPECT_EQ(status, 4);
    EXPECT_STREQ(error, "Out of memory");
    EXPECT_EQ(result, nullptr);
  }
}

}  // namespace
