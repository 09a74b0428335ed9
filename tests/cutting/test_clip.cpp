#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>
#include <memory>
#include <utility>
#include <vector>

#include "brindle.h"
#include "cutting/zero_level_clip.h"
#include "opennurbs.h"
#include "support/tet_meshes.h"
#include "support/user_strings.h"

namespace brindle {
namespace {

using namespace testing;

std::unique_ptr<ON_Mesh> Clip(const ON_Mesh& mesh, const std::vector<double>& values) {
  ON_Mesh* result = nullptr;
  char error[1024] = "stale";
  EXPECT_EQ(CutTetrahedralMesh2(&mesh, values.data(), 0, 0, 0, nullptr, &result, error), 0);
  EXPECT_STREQ(error, "");
  return std::unique_ptr<ON_Mesh>(result);
}

bool HasVertexAt(const ON_Mesh& mesh, const ON_3dPoint& p) {
  for (int i = 0; i < mesh.VertexCount(); ++i)
    if (ON_3dPoint(mesh.m_V[i]).DistanceTo(p) < 1e-7) return true;
  return false;
}

// Pieces of the corner tetrahedron (volume 1/6): kept where the values are <= 0, with new
// vertices where the linear interpolation of the values vanishes along the cut edges.
TEST(ZeroLevelClip, SingleTetrahedronPieces) {
  struct Case {
    std::vector<double> values;
    int faces, vertices;
    double volume;
    std::vector<std::array<double, 3>> newVertices;
  };
  const double v = 1.0 / 6;
  const Case cases[] = {
      {{1, 1, 1, -1}, 1, 4, v / 8, {{0, 0, 1}, {0.5, 0, 0.5}, {0, 0.5, 0.5}, {0, 0, 0.5}}},
      {{0.3, 0.7, 0.9, -0.1}, 1, 4, v * 0.25 * 0.125 * 0.1, {{0, 0, 0.75}, {0, 0.1, 0.9}}},
      {{0, 0, 0, 0}, 1, 4, v, {}},                    // zero values stay on the kept side
      {{0, 0, 0, 1}, 0, 0, 0, {}},                    // nothing left, the mesh is emptied
      {{0, 0, 1, -1}, 1, 4, v / 2, {{0, 0.5, 0.5}}},  // (E23, p0, p1, p3)
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(::testing::Message()
                 << c.values[0] << " " << c.values[1] << " " << c.values[2] << " " << c.values[3]);
    const auto result = Clip(CornerTetrahedron(), c.values);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->FaceCount(), c.faces);
    EXPECT_EQ(result->VertexCount(), c.vertices);
    EXPECT_NEAR(TotalVolume(*result), c.volume, 1e-7);
    for (const auto& p : c.newVertices)
      EXPECT_TRUE(HasVertexAt(*result, ON_3dPoint(p[0], p[1], p[2])))
          << p[0] << " " << p[1] << " " << p[2];
  }
}

TEST(ZeroLevelClip, SharedCutEdgeGetsOneVertexNumberedInCreationOrder) {
  // Two tetrahedra on the face (0, 1, 2); only vertex 0 is negative.
  ON_Mesh mesh = CornerTetrahedron();
  AddVertex(mesh, 0, 0, -1);
  AddTetrahedron(mesh, 0, 2, 1, 4);
  const auto result = Clip(mesh, {-1, 1, 1, 1, 1});
  ASSERT_TRUE(result);
  ASSERT_EQ(result->FaceCount(), 2);
  // Vertex 0 survives; the cut vertices follow in the order they were made: the first
  // tetrahedron asks for the edges from 3, 2 and 1 (largest index first among equal values),
  // the second adds only the edge from 4.
  ASSERT_EQ(result->VertexCount(), 5);
  EXPECT_EQ(ON_3dPoint(result->m_V[0]), mesh.Vertex(0));
  const int farEnds[4] = {3, 2, 1, 4};
  for (int i = 0; i < 4; ++i)
    EXPECT_EQ(ON_3dPoint(result->m_V[i + 1]), 0.5 * (mesh.Vertex(farEnds[i]) + mesh.Vertex(0)));
  const auto owners = TriangleOwners(*result);
  EXPECT_EQ(owners.size(), 7u);  // the shared face is one triangle used by both pieces
  EXPECT_EQ(std::count_if(owners.begin(), owners.end(),
                          [](const auto& o) { return o.second.size() == 2; }),
            1);
}

// Every corner order of the input tetrahedron, against value patterns that reach each case
// of the clip: pieces keep the input's orientation and the two sides add up to the whole.
TEST(ZeroLevelClip, EveryCaseAndCornerOrderKeepsOrientationAndVolume) {
  const std::vector<std::vector<double>> patterns = {
      {3, 1, 2, -0.5},  {3, -1, -2, -0.5}, {3, 1, -2, -0.5}, {1, 0, 0, -2},
      {1, 0, -2, -0.5}, {2, 1, 0, -3},     {1, 1, 1, -1},    {1, 1, -1, -1}};
  const ON_Mesh base = CornerTetrahedron();
  const double whole = TotalVolume(base);
  int perm[4] = {0, 1, 2, 3};
  do {
    const ON_3dPoint p[4] = {base.Vertex(perm[0]), base.Vertex(perm[1]), base.Vertex(perm[2]),
                             base.Vertex(perm[3])};
    // Corners in stored order 0..3 but swapped when the permutation flipped the orientation.
    const bool flipped = SixVolume(p[0], p[1], p[2], p[3]) < 0;
    const ON_Mesh mesh =
        TetMesh({p[0], p[1], p[2], p[3]},
                {flipped ? std::array<int, 4>{1, 0, 2, 3} : std::array<int, 4>{0, 1, 2, 3}});
    for (const auto& pattern : patterns) {
      std::vector<double> values(4), negated(4);
      for (int i = 0; i < 4; ++i) {
        values[i] = pattern[perm[i]];
        negated[i] = -values[i];
      }
      const auto below = Clip(mesh, values);
      const auto above = Clip(mesh, negated);
      for (const auto* part : {below.get(), above.get()}) {
        for (int f = 0; f < part->FaceCount(); ++f)
          EXPECT_GT(SignedTetraVolume(*part, f), 0) << "inverted piece";
      }
      EXPECT_NEAR(TotalVolume(*below) + TotalVolume(*above), whole, 1e-7);
    }
  } while (std::next_permutation(perm, perm + 4));
}

TEST(ZeroLevelClip, ColorsEveryVertexAsFreeAndEmptiesTheArchive) {
  ON_Mesh mesh = CornerTetrahedron();
  for (int i = 0; i < 4; ++i)
    mesh.m_C.Append(ON_Color(255, 0, 0));
  mesh.SetUserString(L"KSmesh_v", L"host data");
  mesh.SetUserString(L"KSmesh_mi", L"AwAAAA==");
  const auto result = Clip(mesh, {1, 1, -1, -1});
  ASSERT_EQ(result->m_C.Count(), result->VertexCount());
  for (int i = 0; i < result->m_C.Count(); ++i)
    EXPECT_EQ(static_cast<unsigned int>(result->m_C[i]), 0x00323232u);
  EXPECT_EQ(UserString(*result, L"Kestra_version"), L"0.2.9181.2064");
  EXPECT_FALSE(HasUserString(*result, L"KSmesh_v"));
  EXPECT_FALSE(HasUserString(*result, L"KSmesh_mi"));
  // The caller's mesh is only read.
  EXPECT_EQ(UserString(mesh, L"KSmesh_v"), L"host data");
  EXPECT_EQ(mesh.FaceCount(), 1);
  EXPECT_EQ(mesh.VertexCount(), 4);
}

TEST(ZeroLevelClip, IgnoresKeepRefSizesAndInterfaceMesh) {
  const ON_Mesh cube = StructuredCube(2);
  const auto values = SampleField(cube, [](const ON_3dPoint& p) { return p.x + p.y - 0.8; });
  const auto plain = Clip(cube, values);
  ON_Mesh interfaceMesh;
  ON_Mesh* other = nullptr;
  ASSERT_EQ(
      CutTetrahedralMesh2(&cube, values.data(), 3, 5.0, 0.01, &interfaceMesh, &other, nullptr), 0);
  std::unique_ptr<ON_Mesh> owned(other);
  ASSERT_EQ(other->FaceCount(), plain->FaceCount());
  ASSERT_EQ(other->VertexCount(), plain->VertexCount());
  for (int f = 0; f < plain->FaceCount(); ++f)
    EXPECT_EQ(0, std::memcmp(other->m_F[f].vi, plain->m_F[f].vi, sizeof(other->m_F[f].vi)));
  EXPECT_EQ(interfaceMesh.FaceCount() + interfaceMesh.VertexCount(), 0);
}

TEST(ZeroLevelClip, CubeCutByAPlaneKeepsTheAnalyticVolumeAndStaysConforming) {
  const ON_Mesh cube = StructuredCube(4);
  const double a = 0.37;
  const auto below = Clip(cube, SampleField(cube, [a](const ON_3dPoint& p) { return p.x - a; }));
  const auto above = Clip(cube, SampleField(cube, [a](const ON_3dPoint& p) { return a - p.x; }));
  EXPECT_NEAR(TotalVolume(*below), a, 1e-6);
  EXPECT_NEAR(TotalVolume(*below) + TotalVolume(*above), 1.0, 1e-6);
  EXPECT_TRUE(IsConforming(*below, 2 * (a + a + 1), 1e-5));
  EXPECT_TRUE(IsConforming(*above, 2 * ((1 - a) + (1 - a) + 1), 1e-5));
}

// Null inputs are refused; a face with a corner outside the vertex list is dropped, and a
// non-finite value leaves a mixed tetrahedron as it is.
TEST(ZeroLevelClip, UnusableInputs) {
  const ON_Mesh mesh = CornerTetrahedron();
  const double values[4] = {1, 1, 1, -1};
  ON_Mesh sentinel;
  for (const auto& [input, inputValues] :
       {std::pair<const ON_Mesh*, const double*>{nullptr, values}, {&mesh, nullptr}}) {
    ON_Mesh* result = &sentinel;
    char error[1024] = "stale";
    EXPECT_EQ(CutTetrahedralMesh2(input, inputValues, 0, 0, 0, nullptr, &result, error), 1);
    EXPECT_EQ(result, nullptr);
    EXPECT_STREQ(error, "Null input mesh or vertex values");
  }
  EXPECT_EQ(CutTetrahedralMesh2(nullptr, nullptr, 0, 0, 0, nullptr, nullptr, nullptr), 1);

  ON_Mesh outside = CornerTetrahedron();
  AddTetrahedron(outside, 0, 1, 2, 7);
  EXPECT_EQ(Clip(outside, {1, 1, 1, -1})->FaceCount(), 1);

  const double nan = std::numeric_limits<double>::quiet_NaN();
  for (const auto& mixed : {std::vector<double>{1, nan, -1, 1}, std::vector<double>{nan, 1, 1, 1},
                            std::vector<double>{1e300, 1, -1, 1}}) {
    const auto result = Clip(mesh, mixed);
    ASSERT_EQ(result->FaceCount(), 1);
    EXPECT_EQ(result->VertexCount(), 4);
    for (int j = 0; j < 4; ++j)
      EXPECT_EQ(result->m_F[0].vi[j], mesh.m_F[0].vi[j]);
  }
}

}  // namespace
}  // namespace brindle
