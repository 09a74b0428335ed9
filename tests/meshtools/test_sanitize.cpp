#include <memory>

#include <gtest/gtest.h>

#include "brindle.h"
#include "opennurbs.h"
#include "support/buffer_limit.h"

namespace {

// Two triangles over four vertices in both precisions.
ON_Mesh Square() {
  ON_Mesh mesh;
  for (int i = 0; i < 4; ++i)
    mesh.SetVertex(i, ON_3dPoint(i % 3 ? 1.1 : 0, i / 2, 0));
  mesh.SetTriangle(0, 0, 1, 2);
  mesh.SetTriangle(1, 0, 2, 3);
  return mesh;
}

TEST(TrySanitize, CopiesConsistentMeshesAndRefusesOthersUntouched) {
  const char* const unsynchronized =
      "Vertices not synchronized between single and double precision";
  const struct {
    void (*spoil)(ON_Mesh&);
    int status, code;
    const char* message;
  } cases[] = {
      {[](ON_Mesh&) {}, 0, 42, ""},
      // Mixed faces are found first, although the vertex lists disagree as well.
      {[](ON_Mesh& m) { m.SetQuad(2, 0, 1, 2, 3), m.m_dV.Remove(); }, 2, -1,
       "Mesh has both triangles and quads"},
      {[](ON_Mesh& m) { m.m_dV.Remove(); }, 3, -2,
       "Single and double precision vertex counts differ"},
      {[](ON_Mesh& m) { m.m_dV[2].y += 1e-3; }, 3, -2, unsynchronized},
      // With one list empty the two are not synchronised, so nothing gets completed.
      {[](ON_Mesh& m) { m.DestroyDoublePrecisionVertices(); }, 3, -2, unsynchronized},
      {[](ON_Mesh& m) { m.m_V.Destroy(); }, 3, -2, unsynchronized},
  };
  for (const auto& c : cases) {
    ON_Mesh mesh = Square();
    c.spoil(mesh);
    const ON_Mesh before(mesh);
    ON_Mesh* result = reinterpret_cast<ON_Mesh*>(0x1);
    int code = 42;
    char error[1024] = "stale";
    EXPECT_EQ(TrySanitize(&mesh, &code, &result, error), c.status) << c.message;
    const std::unique_ptr<ON_Mesh> copy(c.status == 0 ? result : nullptr);
    EXPECT_EQ(code, c.code);
    EXPECT_STREQ(error, c.message);
    EXPECT_EQ(mesh.m_V.Count() + mesh.m_dV.Count(), before.m_V.Count() + before.m_dV.Count());
    EXPECT_EQ(mesh.FaceCount(), before.FaceCount());
    if (c.status != 0) {
      EXPECT_EQ(result, nullptr);
    } else {
      ASSERT_TRUE(copy != nullptr && copy.get() != &mesh);
      EXPECT_TRUE(copy->HasSynchronizedDoubleAndSinglePrecisionVertices());
      EXPECT_EQ(copy->FaceCount(), 2);
      EXPECT_EQ(copy->m_dV[2], mesh.m_dV[2]);
      EXPECT_EQ(TrySanitize(&mesh, &code, nullptr, error), 4);
      EXPECT_STREQ(error, "Null result pointer");
      EXPECT_EQ(TrySanitize(&mesh, nullptr, &result, error), 1);
      EXPECT_STREQ(error, "Null mesh or error code pointer");
      EXPECT_EQ(result, nullptr);
    }
  }
}

TEST(TrySanitize, CopyThatCannotGetItsMemoryIsOutOfMemory) {
  if (!brindle::testing::BufferLimit::Available()) GTEST_SKIP() << brindle::testing::kNoBufferLimit;
  const ON_Mesh mesh = Square();
  ON_Mesh* result = reinterpret_cast<ON_Mesh*>(0x1);
  int code = 42;
  char error[1024] = "stale";
  int status;
  {
    brindle::testing::BufferLimit cap(0);
    status = TrySanitize(&mesh, &code, &result, error);
  }
  EXPECT_EQ(status, 5);
  EXPECT_STREQ(error, "Out of memory");
  EXPECT_EQ(result, nullptr);
  EXPECT_EQ(code, 42);
}

}  // namespace
