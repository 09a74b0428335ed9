// Level-set discretisation through the MMG API (MMG3D_mmg3dls, MMGS_mmgsls) driven with the
// call sequence brindle uses. Only the MMG headers describe the calls, so the tests run
// against the bundled subset and a real MMG alike.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <utility>
#include <vector>

#include "compat/mmg_support.h"
#include "support/tet_meshes.h"
#include "support/triangle_meshes.h"

namespace {

using namespace brindle::testing;
using namespace brindle::mmg_test;
using Level = std::function<double(const ON_3dPoint&)>;

// A cut mesh read back from MMG, indices 0-based. `elements` are tetrahedra or triangles.
template <int Corners>
struct CutMesh {
  int status = -1;
  MMG5_int na = 0;
  std::vector<ON_3dPoint> points;
  std::vector<MMG5_int> pointRefs;
  std::vector<std::array<MMG5_int, Corners>> elements;
  std::vector<MMG5_int> elementRefs;
  std::vector<std::array<MMG5_int, 3>> tris;  // the volume's boundary and interface triangles
  std::vector<MMG5_int> triRefs;

  const ON_3dPoint& At(std::size_t e, int i) const { return points[elements[e][i]]; }
  double SignedVolume(std::size_t k) const {
    return SixVolume(At(k, 0), At(k, 1), At(k, 2), At(k, 3)) / 6.0;
  }
  // Total signed volume (tetrahedra) or area (triangles) of the elements with reference `ref`.
  double MeasureOf(MMG5_int ref) const {
    double sum = 0.0;
    for (std::size_t k = 0; k < elements.size(); ++k) {
      if (elementRefs[k] != ref) continue;
      if constexpr (Corners == 4)
        sum += SignedVolume(k);
      else
        sum += TriangleArea(At(k, 0), At(k, 1), At(k, 2));
    }
    return sum;
  }
  ON_3dVector Normal(const std::array<MMG5_int, 3>& t) const {
    return ON_CrossProduct(points[t[1]] - points[t[0]], points[t[2]] - points[t[0]]);
  }
};
using CutVolume = CutMesh<4>;
using CutSurface = CutMesh<3>;

int Count(const std::vector<MMG5_int>& refs, MMG5_int ref) {
  return static_cast<int>(std::count(refs.begin(), refs.end(), ref));
}

std::vector<double> Coordinates(const ON_Mesh& in) {
  std::vector<double> xyz;
  for (int i = 0; i < in.m_dV.Count(); ++i)
    xyz.insert(xyz.end(), {in.m_dV[i].x, in.m_dV[i].y, in.m_dV[i].z});
  return xyz;
}

// The first `corners` vertices of every face.
std::vector<MMG5_int> Corners(const ON_Mesh& in, int corners) {
  std::vector<MMG5_int> out;
  for (int f = 0; f < in.FaceCount(); ++f)
    for (int i = 0; i < corners; ++i)
      out.push_back(in.m_F[f].vi[i]);
  return out;
}

template <int N>
void StorePoints(const std::vector<double>& xyz, CutMesh<N>& out) {
  for (std::size_t i = 0; i + 2 < xyz.size(); i += 3)
    out.points.emplace_back(xyz[i], xyz[i + 1], xyz[i + 2]);
}

// Loads `in` with the level set `values` into `handles` and cuts it as brindle does.
template <const Api& Library>
int LoadAndCut(Handles<Library>& handles, const ON_Mesh& in, std::vector<double> values,
               std::vector<MMG5_int> pointRefs, std::vector<MMG5_int> elementRefs) {
  handles.SetCutOptions();
  pointRefs.resize(in.m_dV.Count(), 0);
  elementRefs.resize(in.FaceCount(), 0);
  EXPECT_EQ(1, handles.Load(Coordinates(in), Corners(in, Library.corners), pointRefs.data(),
                            elementRefs.data()));
  handles.SetLevelSet(std::move(values));
  EXPECT_EQ(1, Library.check(handles.mesh, handles.ls));
  return handles.Cut();
}

CutVolume CutWithMmg3d(const ON_Mesh& in, std::vector<double> values,
                       std::vector<MMG5_int> pointRefs = {}, std::vector<MMG5_int> tetRefs = {}) {
  Mesh3d handles;
  MMG5_pMesh mesh = handles.mesh;
  CutVolume out;
  out.status = LoadAndCut(handles, in, std::move(values), std::move(pointRefs), std::move(tetRefs));
  MMG5_int onp = 0, one = 0, onprism = 0, ont = 0, onquad = 0;
  MMG3D_Get_meshSize(mesh, &onp, &one, &onprism, &ont, &onquad, &out.na);
  std::vector<double> oxyz(3 * onp);
  out.pointRefs.resize(onp);
  MMG3D_Get_vertices(mesh, oxyz.data(), out.pointRefs.data(), nullptr, nullptr);
  StorePoints(oxyz, out);
  std::vector<MMG5_int> otets(4 * one);
  out.elementRefs.resize(one);
  MMG3D_Get_tetrahedra(mesh, otets.data(), out.elementRefs.data(), nullptr);
  for (MMG5_int k = 0; k < one; ++k)
    out.elements.push_back(
        {otets[4 * k] - 1, otets[4 * k + 1] - 1, otets[4 * k + 2] - 1, otets[4 * k + 3] - 1});
  for (MMG5_int i = 0; i < ont; ++i) {
    MMG5_int a = 0, b = 0, c = 0, ref = 0;
    MMG3D_Get_triangle(mesh, &a, &b, &c, &ref, nullptr);
    out.tris.push_back({a - 1, b - 1, c - 1});
    out.triRefs.push_back(ref);
  }
  return out;
}

CutSurface CutWithMmgs(const ON_Mesh& in, std::vector<double> values,
                       std::vector<MMG5_int> pointRefs = {}) {
  MeshS handles;
  MMG5_pMesh mesh = handles.mesh;
  CutSurface out;
  out.status = LoadAndCut(handles, in, std::move(values), std::move(pointRefs), {});
  MMG5_int onp = 0, ont = 0;
  MMGS_Get_meshSize(mesh, &onp, &ont, &out.na);
  std::vector<double> oxyz(3 * onp);
  out.pointRefs.resize(onp);
  MMGS_Get_vertices(mesh, oxyz.data(), out.pointRefs.data(), nullptr, nullptr);
  StorePoints(oxyz, out);
  for (MMG5_int i = 0; i < ont; ++i) {
    MMG5_int a = 0, b = 0, c = 0, ref = 0;
    int required = 0;
    MMGS_Get_triangle(mesh, &a, &b, &c, &ref, &required);
    out.elements.push_back({a - 1, b - 1, c - 1});
    out.elementRefs.push_back(ref);
  }
  return out;
}

// Status of a level-set call on raw arrays; the solution is sized to `values`, or left unset
// when there are none.
template <const Api& Library>
int LevelSetStatus(std::vector<double> xyz, std::vector<MMG5_int> elements,
                   std::vector<double> values) {
  Handles<Library> m;
  m.Load(std::move(xyz), std::move(elements));
  if (!values.empty()) {
    Library.setSolSize(m.mesh, m.ls, MMG5_Vertex, static_cast<MMG5_int>(values.size()),
                       MMG5_Scalar);
    Library.setScalars(m.ls, values.data());
  }
  return m.Cut();
}

// Faces and their owners, the outer boundary and the interface as the tetrahedra define them.
struct FaceCensus {
  int overused = 0;   // faces in more than two tetrahedra
  int outer = 0;      // faces in one tetrahedron
  int interface = 0;  // faces between a ref-2 and a ref-3 tetrahedron
};

FaceCensus CensusOf(const CutVolume& cut) {
  FaceCensus census;
  for (const auto& [key, list] :
       TriangleOwners(cut.elements, static_cast<int>(cut.elements.size()))) {
    if (list.size() > 2) ++census.overused;
    if (list.size() == 1) ++census.outer;
    if (list.size() == 2 && cut.elementRefs[list[0]] != cut.elementRefs[list[1]])
      ++census.interface;
  }
  return census;
}

TEST(MmgCompatLevelSet3d, SingleTetrahedronPatterns) {
  struct Case {
    std::array<double, 4> values;
    int np, ne, outer, interface, plus, minus;
  };
  const Case cases[] = {
      {{1, 1, 1, -1}, 7, 4, 10, 1, 3, 1},   // three cut edges: corner + prism
      {{1, 1, -1, -1}, 8, 6, 12, 2, 3, 3},  // four cut edges: two prisms
      {{0, 1, 1, -1}, 6, 3, 8, 1, 2, 1},    // two cut edges through a zero vertex
      {{0, 0, 1, -1}, 5, 2, 6, 1, 1, 1},    // one cut edge through a zero edge
      {{0, 0, 0, -1}, 4, 1, 4, 0, 0, 1},    // zeros with one sign only: pushed negative
      {{0, 0, 0, 1}, 5, 2, 6, 1, 1, 1},     // first zero pushed, the others then valid
      {{0, 1, 1, 1}, 7, 4, 10, 1, 3, 1},    // isolated zero: tiny negative bubble
      {{1, 1, 1, 1}, 4, 1, 4, 0, 1, 0},     // no sign change
      {{-1, -1, -1, -1}, 4, 1, 4, 0, 0, 1},
      {{5e-7, 1, 1, -1}, 6, 3, 8, 1, 2, 1},  // snapped to zero
      {{0.9, 0.9, 0.9, -0.1}, 7, 4, 10, 1, 3, 1},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(testing::Message()
                 << c.values[0] << " " << c.values[1] << " " << c.values[2] << " " << c.values[3]);
    const CutVolume cut =
        CutWithMmg3d(CornerTetrahedron(), std::vector<double>(c.values.begin(), c.values.end()));
    EXPECT_EQ(MMG5_SUCCESS, cut.status);
    EXPECT_EQ(c.np, static_cast<int>(cut.points.size()));
    EXPECT_EQ(c.ne, static_cast<int>(cut.elements.size()));
    EXPECT_EQ(c.outer, Count(cut.triRefs, 0));
    EXPECT_EQ(c.interface, Count(cut.triRefs, MG_ISO));
    EXPECT_EQ(c.plus, Count(cut.elementRefs, MG_PLUS));
    EXPECT_EQ(c.minus, Count(cut.elementRefs, MG_MINUS));
    for (std::size_t k = 0; k < cut.elements.size(); ++k)
      EXPECT_GT(cut.SignedVolume(k), 0.0);
  }
  // A zero pushed off the level becomes -1e-4 (scaled by the unit extent), so the cut lands
  // next to the origin.
  const CutVolume pushed = CutWithMmg3d(CornerTetrahedron(), {0, 0, 0, 1});
  ASSERT_EQ(5u, pushed.points.size());
  EXPECT_NEAR(1e-4 / (1 + 1e-4), pushed.points[4].z, 1e-12);
}

TEST(MmgCompatLevelSet3d, ReferencesAndNumberingOfVertices) {
  const CutVolume cut = CutWithMmg3d(CornerTetrahedron(), {1, 1, 1, -1}, {7, 8, 9, 10}, {5});
  ASSERT_EQ(MMG5_SUCCESS, cut.status);
  EXPECT_EQ((std::vector<MMG5_int>{7, 8, 9, 0, 0, 0, 0}), cut.pointRefs);
  EXPECT_EQ(10, Count(cut.triRefs, 5));  // outer faces keep the element's reference
  EXPECT_EQ(1, Count(cut.triRefs, MG_ISO));

  // A vertex used by no element is replaced by the last one.
  const ON_Mesh holed = TetMesh({ON_3dPoint(0, 0, 0), ON_3dPoint(9, 9, 9), ON_3dPoint(1, 0, 0),
                                 ON_3dPoint(0, 1, 0), ON_3dPoint(0, 0, 1)},
                                {{0, 2, 3, 4}});
  const CutVolume filled = CutWithMmg3d(holed, {1, 100, 1, 1, -1});
  ASSERT_EQ(MMG5_SUCCESS, filled.status);
  ASSERT_EQ(7u, filled.points.size());
  EXPECT_NEAR(0.5, filled.points[1].z, 1e-12);  // a cut point fills the hole
  for (std::size_t k = 0; k < filled.elements.size(); ++k)
    EXPECT_GT(filled.SignedVolume(k), 0.0);
}

TEST(MmgCompatLevelSet, FailureReturns) {
  const std::vector<double> corner = {0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1};
  std::vector<double> fifth = corner;
  fifth.insert(fifth.end(), {1, 1, 1});
  EXPECT_EQ(MMG5_STRONGFAILURE, LevelSetStatus<kVolume>(corner, {0, 1, 2, 3}, {}));  // no values
  EXPECT_EQ(MMG5_STRONGFAILURE, LevelSetStatus<kVolume>(fifth, {0, 1, 2, 3}, {1, 1, 1, -1}));
  EXPECT_EQ(MMG5_STRONGFAILURE, LevelSetStatus<kVolume>({0, 0, 0, 1, 0, 0}, {}, {1, -1}));
  // A flat element stops the setter, and the cut then fails on the input quality.
  EXPECT_EQ(MMG5_LOWFAILURE, LevelSetStatus<kVolume>({0, 0, 0, 1, 0, 0, 0, 1, 0, 1, 1, 0},
                                                     {1, 2, 3, 4}, {1, 1, 1, -1}));

  const std::vector<double> square = {0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0};
  EXPECT_EQ(MMG5_STRONGFAILURE, LevelSetStatus<kSurface>(square, {0, 1, 2, 0, 2, 3}, {1, -1, 1}));
  EXPECT_EQ(MMG5_STRONGFAILURE,
            LevelSetStatus<kSurface>({0, 0, 0, 1, 0, 0, 1, 1, 0}, {0, 1, 2}, {}));
  // A degenerate triangle fails the input quality test but leaves a usable mesh.
  ON_Mesh flat = SquarePlate(1);
  AddVertex(flat, 2, 0, 0);
  flat.SetTriangle(2, 0, 1, 4);
  const CutSurface cut = CutWithMmgs(flat, {1, -1, 1, 1, 1});
  EXPECT_EQ(MMG5_LOWFAILURE, cut.status);
  EXPECT_EQ(5u, cut.points.size());
  EXPECT_EQ(3u, cut.elements.size());
}

TEST(MmgCompatLevelSet3d, FaceOfThreeElementsIsPairedUp) {
  // Three elements on one face (not a manifold mesh): two of them pair up across the face,
  // the third sees it as boundary; the cut still succeeds.
  ON_Mesh fan = CornerTetrahedron();
  AddVertex(fan, 0, 0, -1);
  AddVertex(fan, 0.2, 0.2, 2);
  AddTetrahedron(fan, 0, 2, 1, 4);
  AddTetrahedron(fan, 0, 1, 2, 5);
  const CutVolume cut = CutWithMmg3d(fan, {1, 1, 1, -1, -1, -1});
  EXPECT_EQ(MMG5_SUCCESS, cut.status);
  EXPECT_EQ(15u, cut.points.size());
  EXPECT_EQ(12u, cut.elements.size());
  EXPECT_EQ(31u, cut.tris.size());
}

TEST(MmgCompatLevelSet3d, ZerosOnVerticesMakeNoNewElements) {
  const CutVolume zero = CutWithMmg3d(StructuredCube(1), std::vector<double>(8, 0.0));
  EXPECT_EQ(6, Count(zero.elementRefs, MG_MINUS));  // all zero goes negative
  EXPECT_EQ(0, Count(zero.triRefs, MG_ISO));

  const ON_Mesh cube = StructuredCube(2, 2.0);
  // A plane through a vertex layer cuts nothing: the zeros become interface vertices.
  const CutVolume layer = CutWithMmg3d(cube, SampleField(cube, [](auto& p) { return p.x - 1; }));
  EXPECT_EQ(27u, layer.points.size());
  EXPECT_EQ(48u, layer.elements.size());
  EXPECT_EQ(8, Count(layer.triRefs, MG_ISO));
  EXPECT_EQ(24, Count(layer.elementRefs, MG_PLUS));
  EXPECT_EQ(8, layer.na);
}

// The bundled subset only discretises the level set, so a cut keeps the cube's volume and
// surface exactly and puts interface vertices on the level. A real MMG then moves vertices,
// boundary ones included since ridge detection is off: on these cubes the total volume changes
// by up to 0.13 %, the outer surface by up to 0.7 %, and interface vertices leave a plane by up
// to 3e-5.
#ifdef BRINDLE_REAL_MMG
constexpr double kTotalVolumeTolerance = 2e-2;
constexpr double kOuterAreaTolerance = 0.25;
constexpr double kInterfaceDrift = 1e-4;
#else
constexpr double kTotalVolumeTolerance = 1e-12;
constexpr double kOuterAreaTolerance = 1e-12;
constexpr double kInterfaceDrift = 0.0;
#endif

// Conformity, orientation and volumes of a cut cube [0, 2]^3, and the interface on the zero
// level oriented from the negative side into the positive one.
void CheckCutCube(const CutVolume& cut, const Level& level, double interfaceTolerance) {
  ASSERT_EQ(MMG5_SUCCESS, cut.status);
  for (std::size_t k = 0; k < cut.elements.size(); ++k)
    ASSERT_GT(cut.SignedVolume(k), 0.0);
  EXPECT_NEAR(8.0, cut.MeasureOf(MG_PLUS) + cut.MeasureOf(MG_MINUS), kTotalVolumeTolerance);

  const FaceCensus census = CensusOf(cut);
  EXPECT_EQ(0, census.overused);
  EXPECT_EQ(census.outer, Count(cut.triRefs, 0));
  EXPECT_EQ(census.interface, Count(cut.triRefs, MG_ISO));

  double outerArea = 0.0;
  for (std::size_t i = 0; i < cut.tris.size(); ++i) {
    const ON_3dVector n = cut.Normal(cut.tris[i]);
    const ON_3dPoint& a = cut.points[cut.tris[i][0]];
    if (cut.triRefs[i] == 0) {
      outerArea += n.Length() / 2;
      EXPECT_LT(ON_DotProduct(n, ON_3dPoint(1, 1, 1) - a), 0.0);  // outward
      continue;
    }
    ON_3dPoint centre(0, 0, 0);
    for (MMG5_int v : cut.tris[i]) {
      EXPECT_NEAR(0.0, level(cut.points[v]), interfaceTolerance + kInterfaceDrift);
      centre += ON_3dVector(cut.points[v]) / 3;
    }
    EXPECT_GT(level(centre + (1e-3 / n.Length()) * n), level(centre));
  }
  EXPECT_NEAR(24.0, outerArea, kOuterAreaTolerance);
}

TEST(MmgCompatLevelSet3d, CubeCutByPlaneOrSphereIsConforming) {
  // An oblique plane exercises every split pattern and both diagonal choices.
  const Level oblique = [](const ON_3dPoint& p) {
    return 0.3 * p.x + 0.5 * p.y - 0.7 * p.z + 0.11;
  };
  const ON_Mesh cube4 = StructuredCube(4, 2.0);
  CheckCutCube(CutWithMmg3d(cube4, SampleField(cube4, oblique)), oblique, 1e-14);

  const Level sphere = [](const ON_3dPoint& p) { return p.DistanceTo(ON_3dPoint(1, 1, 1)) - 0.7; };
  const ON_Mesh cube8 = StructuredCube(8, 2.0);
  const CutVolume cut = CutWithMmg3d(cube8, SampleField(cube8, sphere));
  // Cut points interpolate the level set linearly along edges of length L <= h*sqrt(3), so
  // they sit within L^2 / (8 r) = 0.034 of the sphere.
  CheckCutCube(cut, sphere, 0.034);
  EXPECT_NEAR(4.0 / 3.0 * 3.141592653589793 * 0.343, cut.MeasureOf(MG_MINUS), 0.1);
}

TEST(MmgCompatLevelSetSurface, PlateCutAcrossTriangles) {
  const ON_Mesh plate = SquarePlate(4);
  const CutSurface cut = CutWithMmgs(plate, SampleField(plate, [](auto& p) { return p.x - 0.37; }));
  ASSERT_EQ(MMG5_SUCCESS, cut.status);
  EXPECT_EQ(34u, cut.points.size());
  EXPECT_EQ(48u, cut.elements.size());
  EXPECT_EQ(26, cut.na);  // 18 boundary edges + 8 interface edges
  EXPECT_NEAR(0.63, cut.MeasureOf(MG_PLUS), 1e-12);
  EXPECT_NEAR(0.37, cut.MeasureOf(MG_MINUS), 1e-12);
  for (std::size_t i = 25; i < cut.points.size(); ++i) {  // new vertices: on the line, interface
    EXPECT_EQ(MG_ISO, cut.pointRefs[i]);
    EXPECT_NEAR(0.37, cut.points[i].x, 1e-15);
  }
  // The array setter flips the input, and the cut keeps the stored orientation.
  for (const auto& t : cut.elements)
    EXPECT_LT(cut.Normal(t).z, 0.0);
}

TEST(MmgCompatLevelSetSurface, ZerosOnVerticesAndIsolatedZeros) {
  const ON_Mesh plate = SquarePlate(4);
  // Zeros on the vertex column x = 0.5: no new vertex, the column becomes the interface.
  const CutSurface column = CutWithMmgs(
      plate, SampleField(plate, [](auto& p) { return p.x - 0.5; }), std::vector<MMG5_int>(25, 10));
  ASSERT_EQ(MMG5_SUCCESS, column.status);
  EXPECT_EQ(25u, column.points.size());
  EXPECT_EQ(16, Count(column.elementRefs, MG_PLUS));
  EXPECT_EQ(16, Count(column.elementRefs, MG_MINUS));
  EXPECT_EQ(20, column.na);
  for (std::size_t i = 0; i < 25; ++i) {
    // Input references 10 are cleared; the interface vertices get 10 again.
    EXPECT_EQ(column.points[i].x == 0.5 ? MG_ISO : 0, column.pointRefs[i]) << i;
  }

  // An isolated zero among positive values is lifted: no interface at all.
  std::vector<double> bump(25, 1.0);
  bump[12] = 0.0;
  const CutSurface lifted = CutWithMmgs(plate, bump);
  EXPECT_EQ(25u, lifted.points.size());
  EXPECT_EQ(32, Count(lifted.elementRefs, MG_PLUS));
}

}  // namespace
