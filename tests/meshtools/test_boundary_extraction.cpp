#include <array>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "brindle.h"
#include "support/buffer_limit.h"
#include "support/tet_meshes.h"

namespace {

using Faces = std::vector<std::array<int, 4>>;
using Counts = std::array<int, 3>;  // boundary, interior, over-shared

// Extracts the boundary of the tetrahedra over six distinct points; returns the faces.
Faces Extract(const std::vector<std::array<int, 4>>& tets, Counts* counts) {
  const ON_Mesh mesh =
      brindle::testing::TetMesh({ON_3dPoint(0, 0, 0), ON_3dPoint(1, 0, 0), ON_3dPoint(0, 1, 0),
                                 ON_3dPoint(0, 0, 1), ON_3dPoint(1, 1, 1), ON_3dPoint(2, 2, 2)},
                                tets);
  ON_Mesh* result = nullptr;
  EXPECT_EQ(ExtractBoundaryMeshWithStats(&mesh, &(*counts)[0], &(*counts)[1], &(*counts)[2],
                                         &result, nullptr),
            0);
  Faces faces;
  for (int f = 0; f < result->FaceCount(); ++f) {
    faces.push_back(
        {result->m_F[f].vi[0], result->m_F[f].vi[1], result->m_F[f].vi[2], result->m_F[f].vi[3]});
  }
  delete result;
  return faces;
}

TEST(ExtractBoundaryMeshWithStats, OneTwoAndThreeTetrahedraAroundAFace) {
  Counts counts;
  EXPECT_EQ(Extract({{0, 1, 2, 3}}, &counts),
            (Faces{{0, 1, 2, 2}, {0, 1, 3, 3}, {0, 2, 3, 3}, {1, 2, 3, 3}}));
  EXPECT_EQ(counts, (Counts{4, 0, 0}));
  // Only the sorted keys matter, not the corner order of the tetrahedra.
  EXPECT_EQ(
      Extract({{3, 1, 0, 2}, {4, 2, 3, 1}}, &counts),
      (Faces{{0, 1, 2, 2}, {0, 1, 3, 3}, {0, 2, 3, 3}, {1, 2, 4, 4}, {1, 3, 4, 4}, {2, 3, 4, 4}}));
  EXPECT_EQ(counts, (Counts{6, 1, 0}));
  const Faces three = Extract({{0, 1, 2, 3}, {1, 2, 3, 4}, {1, 2, 3, 5}}, &counts);
  EXPECT_EQ(counts, (Counts{9, 0, 1}));
  EXPECT_EQ(three.size(), 9u);
  for (const auto& f : three)
    EXPECT_FALSE(f[0] == 1 && f[1] == 2 && f[2] == 3);
  // A repeated corner lists its tetrahedron twice under one key.
  Extract({{0, 0, 1, 2}}, &counts);
  EXPECT_EQ(counts, (Counts{2, 1, 0}));
  // Corners outside the vertex list are counted, but their triangles cannot survive.
  EXPECT_EQ(Extract({{0, 1, 2, 99}, {0, 1, 2, -3}}, &counts), Faces{});
  EXPECT_EQ(counts, (Counts{6, 1, 0}));
}

TEST(ExtractBoundaryMeshWithStats, StructuredCubeHasAClosedCompactedBoundary) {
  const int n = 3;
  ON_Mesh cube = brindle::testing::StructuredCube(n);
  // Each colour carries its vertex's input index, to follow the compaction.
  for (unsigned int i = 0; i < cube.m_V.UnsignedCount(); ++i)
    cube.m_C.Append(ON_Color(i));
  Counts counts;
  ON_Mesh* result = nullptr;
  ASSERT_EQ(
      ExtractBoundaryMeshWithStats(&cube, &counts[0], &counts[1], &counts[2], &result, nullptr), 0);
  const std::unique_ptr<ON_Mesh> surface(result);
  EXPECT_EQ(counts, (Counts{12 * n * n, (24 * n * n * n - 12 * n * n) / 2, 0}));
  ASSERT_EQ(surface->VertexCount(), 64 - 8);  // the 8 inner grid points are gone
  ASSERT_EQ(surface->m_dV.Count(), 56);
  ASSERT_EQ(surface->m_C.Count(), 56);
  for (int i = 0; i < 56; ++i) {  // survivors keep their order
    const unsigned int original = surface->m_C[i];
    EXPECT_TRUE(i == 0 || original > static_cast<unsigned int>(surface->m_C[i - 1]));
    EXPECT_EQ(surface->m_dV[i], cube.m_dV[static_cast<int>(original)]);
  }
  std::map<std::pair<int, int>, int> edgeUses;
  for (int f = 0; f < surface->FaceCount(); ++f) {
    const int* v = surface->m_F[f].vi;
    EXPECT_TRUE(v[0] < v[1] && v[1] < v[2] && v[2] == v[3]);
    ++edgeUses[{v[0], v[1]}], ++edgeUses[{v[0], v[2]}], ++edgeUses[{v[1], v[2]}];
  }
  for (const auto& [edge, uses] : edgeUses)
    EXPECT_EQ(uses, 2) << edge.first << "-" << edge.second;
}

TEST(ExtractBoundaryMeshWithStats, BadPointers) {
  char error[1024] = "stale";
  ON_Mesh* result = reinterpret_cast<ON_Mesh*>(0x1);
  int count = -7;
  EXPECT_EQ(ExtractBoundaryMeshWithStats(nullptr, &count, &count, &count, &result, error), 1);
  EXPECT_STREQ(error, "Null or empty tet mesh");
  EXPECT_EQ(result, nullptr);
  const ON_Mesh faceless;
  EXPECT_EQ(ExtractBoundaryMeshWithStats(&faceless, &count, &count, &count, &result, error), 1);
  const ON_Mesh tet = brindle::testing::TetMesh({}, {{0, 1, 2, 3}});
  ASSERT_EQ(ExtractBoundaryMeshWithStats(&tet, nullptr, nullptr, nullptr, &result, error), 0);
  delete result;
  EXPECT_EQ(ExtractBoundaryMeshWithStats(&tet, &count, nullptr, nullptr, nullptr, error), 2);
  EXPECT_STREQ(error, "Null result pointer");
  EXPECT_EQ(count, -7);
}

// Running out of memory leaves as std::bad_alloc, whether copying the vertices fails (limit 0)
// or reserving the six boundary triangles of two tetrahedra (96 bytes, while the 60 bytes of
// single-precision vertices fit under 80), never as a write through a null buffer or a leak.
TEST(ExtractBoundaryMeshWithStats, ArraysThatCannotGrowLeaveAsBadAlloc) {
  if (!brindle::testing::BufferLimit::Available()) GTEST_SKIP() << brindle::testing::kNoBufferLimit;
  auto pair =
      brindle::testing::TetMesh({ON_3dPoint(0, 0, 0), ON_3dPoint(1, 0, 0), ON_3dPoint(0, 1, 0),
                                 ON_3dPoint(0, 0, 1), ON_3dPoint(1, 1, 1)},
                                {{0, 1, 2, 3}, {1, 2, 3, 4}});
  pair.DestroyDoublePrecisionVertices();
  for (std::size_t limit : {std::size_t{0}, std::size_t{80}}) {
    SCOPED_TRACE(limit);
    ON_Mesh* result = nullptr;
    brindle::testing::BufferLimit cap(limit);
    EXPECT_THROW(ExtractBoundaryMeshWithStats(&pair, nullptr, nullptr, nullptr, &result, nullptr),
                 std::bad_alloc);
    EXPECT_EQ(result, nullptr);
  }
}

}  // namespace
