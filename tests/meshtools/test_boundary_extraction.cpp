#include <array>
#include <map>
#include <tuple>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "brindle.h"
#include "meshtools/boundary_extraction.h"
#include "meshtools/face_table.h"
#include "tet_mesh_builders.h"

namespace {

using brindle::FaceKey;
using brindle::FaceTable;
using brindle::testing::MakeStructuredCube;
using brindle::testing::MakeTetMesh;

using Faces = std::vector<std::array<int, 4>>;

std::vector<ON_3dPoint> Points(int count) {
  std::vector<ON_3dPoint> points;
  for (int i = 0; i < count; ++i)
    points.emplace_back(i, i * i % 7, i * i * i % 5);
  return points;
}

Faces FacesOf(const ON_Mesh& mesh) {
  Faces faces;
  for (int f = 0; f < mesh.FaceCount(); ++f) {
    const int* vi = mesh.m_F[f].vi;
    faces.push_back({vi[0], vi[1], vi[2], vi[3]});
  }
  return faces;
}

struct Extraction {
  int status = -1;
  int boundary = -7, interior = -7, over_shared = -7;
  std::unique_ptr<ON_Mesh> mesh;
};

Extraction Extract(const ON_Mesh* tets, char* error = nullptr) {
  Extraction e;
  ON_Mesh* result = nullptr;
  e.status =
      ExtractBoundaryMeshWithStats(tets, &e.boundary, &e.interior, &e.over_shared, &result, error);
  e.mesh.reset(result);
  return e;
}

TEST(FaceTable, KeepsTetrahedraInInsertionOrderAndKeysAscending) {
  FaceTable table(4);
  const FaceKey shared = FaceKey::Sorted(7, 3, 5);
  EXPECT_EQ(shared, (FaceKey{{3, 5, 7}}));
  for (int t : {5, 3, 9, 1, 4})
    table.Add(shared, t);
  table.Add(FaceKey::Sorted(2, -1, 0), 8);
  table.Add(FaceKey::Sorted(3, 5, 6), 2);
  EXPECT_EQ(table.Tetrahedra(shared), (std::vector<int>{5, 3, 9, 1, 4}));
  EXPECT_TRUE(table.Tetrahedra(FaceKey{{0, 1, 2}}).empty());

  std::vector<std::pair<std::array<int, 3>, int>> walked;
  table.ForEach([&](const FaceKey& k, int n) { walked.push_back({{k.v[0], k.v[1], k.v[2]}, n}); });
  const std::vector<std::pair<std::array<int, 3>, int>> expected = {
      {{-1, 0, 2}, 1}, {{3, 5, 6}, 1}, {{3, 5, 7}, 5}};
  EXPECT_EQ(walked, expected);
}

TEST(FaceTable, RepeatedCornerListsTheTetrahedronTwice) {
  FaceTable table(4);
  const int corners[4] = {0, 0, 1, 2};
  table.AddTetrahedron(corners, 6);
  EXPECT_EQ(table.TriangleCount(), 3u);
  EXPECT_EQ(table.Tetrahedra(FaceKey{{0, 1, 2}}), (std::vector<int>{6, 6}));
}

TEST(ExtractBoundaryMeshWithStats, OneTwoAndThreeTetrahedraAroundAFace) {
  const auto one = MakeTetMesh(Points(4), {{0, 1, 2, 3}});
  char error[1024] = "stale";
  Extraction e = Extract(one.get(), error);
  ASSERT_EQ(e.status, 0);
  EXPECT_STREQ(error, "");
  EXPECT_EQ(std::make_tuple(e.boundary, e.interior, e.over_shared), std::make_tuple(4, 0, 0));
  EXPECT_EQ(FacesOf(*e.mesh), (Faces{{0, 1, 2, 2}, {0, 1, 3, 3}, {0, 2, 3, 3}, {1, 2, 3, 3}}));

  // Corner order and winding of the tetrahedra do not matter, only the sorted keys.
  const auto two = MakeTetMesh(Points(5), {{3, 1, 0, 2}, {4, 2, 3, 1}});
  e = Extract(two.get());
  ASSERT_EQ(e.status, 0);
  EXPECT_EQ(std::make_tuple(e.boundary, e.interior, e.over_shared), std::make_tuple(6, 1, 0));
  EXPECT_EQ(
      FacesOf(*e.mesh),
      (Faces{{0, 1, 2, 2}, {0, 1, 3, 3}, {0, 2, 3, 3}, {1, 2, 4, 4}, {1, 3, 4, 4}, {2, 3, 4, 4}}));

  const auto three = MakeTetMesh(Points(6), {{0, 1, 2, 3}, {1, 2, 3, 4}, {1, 2, 3, 5}});
  e = Extract(three.get());
  ASSERT_EQ(e.status, 0);
  EXPECT_EQ(std::make_tuple(e.boundary, e.interior, e.over_shared), std::make_tuple(9, 0, 1));
  for (const auto& f : FacesOf(*e.mesh))
    EXPECT_NE((std::array<int, 3>{f[0], f[1], f[2]}), (std::array<int, 3>{1, 2, 3}));
  EXPECT_EQ(e.mesh->FaceCount(), 9);
}

TEST(ExtractBoundaryMeshWithStats, StructuredCubeHasAClosedCompactedBoundary) {
  const int n = 3;
  auto cube = MakeStructuredCube(n);
  // Colours carry the input vertex index, so the compaction can be followed.
  for (int i = 0; i < cube->VertexCount(); ++i)
    cube->m_C.Append(ON_Color(static_cast<unsigned int>(i)));
  const Extraction e = Extract(cube.get());
  ASSERT_EQ(e.status, 0);
  EXPECT_EQ(e.boundary, 12 * n * n);
  EXPECT_EQ(e.interior, (4 * 6 * n * n * n - 12 * n * n) / 2);
  EXPECT_EQ(e.over_shared, 0);

  const ON_Mesh& surface = *e.mesh;
  EXPECT_EQ(surface.FaceCount(), e.boundary);
  EXPECT_EQ(surface.VertexCount(), (n + 1) * (n + 1) * (n + 1) - (n - 1) * (n - 1) * (n - 1));
  ASSERT_EQ(surface.m_dV.Count(), surface.VertexCount());
  ASSERT_EQ(surface.m_C.Count(), surface.VertexCount());
  unsigned int previous_original = 0;
  for (int i = 0; i < surface.VertexCount(); ++i) {
    const unsigned int original = surface.m_C[i];
    if (i > 0) {
      EXPECT_GT(original, previous_original);  // survivors keep their order
    }
    previous_original = original;
    const ON_3dPoint p = surface.m_dV[i];
    EXPECT_EQ(p, cube->m_dV[static_cast<int>(original)]);
    const bool on_surface = p.x == 0 || p.x == 1 || p.y == 0 || p.y == 1 || p.z == 0 || p.z == 1;
    EXPECT_TRUE(on_surface) << i;
  }

  std::map<std::pair<int, int>, int> edge_uses;
  for (const auto& f : FacesOf(surface)) {
    EXPECT_EQ(f[2], f[3]);
    EXPECT_TRUE(f[0] < f[1] && f[1] < f[2]);
    ++edge_uses[{f[0], f[1]}];
    ++edge_uses[{f[0], f[2]}];
    ++edge_uses[{f[1], f[2]}];
  }
  for (const auto& [edge, uses] : edge_uses)
    EXPECT_EQ(uses, 2) << edge.first << "-" << edge.second;
}

TEST(ExtractBoundaryMeshWithStats, CopiesOnlyVerticesAndColours) {
  auto tets = MakeTetMesh(Points(5), {{0, 1, 2, 3}});
  tets->SetUserString(L"key", L"value");
  const Extraction e = Extract(tets.get());
  ASSERT_EQ(e.status, 0);
  EXPECT_EQ(e.mesh->VertexCount(), 4);  // vertex 4 is unused
  EXPECT_EQ(e.mesh->m_C.Count(), 0);
  EXPECT_EQ(e.mesh->UserStringCount(), 0);
  EXPECT_EQ(tets->FaceCount(), 1);
  EXPECT_EQ(tets->VertexCount(), 5);
}

TEST(ExtractBoundaryMeshWithStats, BadInput) {
  char error[1024] = "stale";
  ON_Mesh* result = reinterpret_cast<ON_Mesh*>(0x1);
  int count = -7;
  EXPECT_EQ(ExtractBoundaryMeshWithStats(nullptr, &count, &count, &count, &result, error), 1);
  EXPECT_STREQ(error, "Null or empty tet mesh");
  EXPECT_EQ(result, nullptr);
  EXPECT_EQ(count, -7);

  auto faceless = MakeTetMesh(Points(4), {});
  result = reinterpret_cast<ON_Mesh*>(0x1);
  EXPECT_EQ(ExtractBoundaryMeshWithStats(faceless.get(), &count, nullptr, nullptr, &result, error),
            1);
  EXPECT_STREQ(error, "Null or empty tet mesh");
  EXPECT_EQ(result, nullptr);
  EXPECT_EQ(count, -7);
  EXPECT_EQ(ExtractBoundaryMeshWithStats(faceless.get(), nullptr, nullptr, nullptr, nullptr, error),
            1);

  const auto tet = MakeTetMesh(Points(4), {{0, 1, 2, 3}});
  EXPECT_EQ(ExtractBoundaryMeshWithStats(tet.get(), &count, nullptr, nullptr, nullptr, error), 2);
  EXPECT_STREQ(error, "Null result pointer");
  EXPECT_EQ(count, -7);

  // Null count pointers are skipped.
  int interior = -7;
  ASSERT_EQ(ExtractBoundaryMeshWithStats(tet.get(), nullptr, &interior, nullptr, &result, error),
            0);
  EXPECT_EQ(interior, 0);
  delete result;

  // Corners outside the vertex list are counted but their triangles cannot survive.
  const auto broken = MakeTetMesh(Points(4), {{0, 1, 2, 99}, {0, 1, 2, -3}});
  const Extraction e = Extract(broken.get());
  ASSERT_EQ(e.status, 0);
  EXPECT_EQ(std::make_tuple(e.boundary, e.interior, e.over_shared), std::make_tuple(6, 1, 0));
  EXPECT_EQ(FacesOf(*e.mesh), Faces{});
}

}  // namespace
