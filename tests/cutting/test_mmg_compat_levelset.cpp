// Level-set discretisation through the MMG API (MMG3D_mmg3dls, MMGS_mmgsls) driven with the
// call sequence brindle uses: element counts and references of the single-tetrahedron cases,
// conformity and volume of structured cubes cut by a plane and a sphere, interface triangles
// on the zero level, vertex references and numbering, the failure returns, and the surface
// driver on a plate and a closed cube.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <map>
#include <vector>

#include "mmg/mmg3d/libmmg3d.h"
#include "mmg/mmgs/libmmgs.h"

namespace {

using Vec3 = std::array<double, 3>;

Vec3 Sub(const Vec3& a, const Vec3& b) {
  return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}
Vec3 Cross(const Vec3& a, const Vec3& b) {
  return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}
double Dot(const Vec3& a, const Vec3& b) {
  return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

struct VolumeMesh {
  std::vector<Vec3> points;
  std::vector<std::array<MMG5_int, 4>> tets;  // 0-based
};

struct CutVolume {
  int status = -1;
  MMG5_int na = 0;
  std::vector<Vec3> points;
  std::vector<MMG5_int> point_refs;
  std::vector<std::array<MMG5_int, 4>> tets;  // 0-based
  std::vector<MMG5_int> tet_refs;
  std::vector<std::array<MMG5_int, 3>> tris;  // 0-based
  std::vector<MMG5_int> tri_refs;

  int Count(const std::vector<MMG5_int>& refs, MMG5_int ref) const {
    return static_cast<int>(std::count(refs.begin(), refs.end(), ref));
  }
  double SignedVolume(std::size_t k) const {
    const auto& t = tets[k];
    return Dot(Sub(points[t[1]], points[t[0]]),
               Cross(Sub(points[t[2]], points[t[0]]), Sub(points[t[3]], points[t[0]]))) /
           6.0;
  }
  double VolumeOf(MMG5_int ref) const {
    double sum = 0.0;
    for (std::size_t k = 0; k < tets.size(); ++k) {
      if (tet_refs[k] == ref) sum += SignedVolume(k);
    }
    return sum;
  }
  Vec3 Normal(std::size_t i) const {
    const auto& t = tris[i];
    return Cross(Sub(points[t[1]], points[t[0]]), Sub(points[t[2]], points[t[0]]));
  }
};

// Runs the parameter sequence and the calls of the library's volume cut.
CutVolume CutWithMmg3d(const VolumeMesh& in, const std::vector<double>& values,
                       std::vector<MMG5_int> point_refs = {}, std::vector<MMG5_int> tet_refs = {}) {
  MMG5_pMesh mesh = nullptr;
  MMG5_pSol ls = nullptr;
  EXPECT_EQ(
      1, MMG3D_Init_mesh(MMG5_ARG_start, MMG5_ARG_ppMesh, &mesh, MMG5_ARG_ppLs, &ls, MMG5_ARG_end));
  MMG3D_Set_iparameter(mesh, ls, MMG3D_IPARAM_iso, 1);
  MMG3D_Set_iparameter(mesh, ls, MMG3D_IPARAM_nreg, 0);
  MMG3D_Set_iparameter(mesh, ls, MMG3D_IPARAM_noinsert, 1);
  MMG3D_Set_iparameter(mesh, ls, MMG3D_DPARAM_hausd, 0);
  MMG3D_Set_dparameter(mesh, ls, MMG3D_DPARAM_hgrad, 20.0);
  MMG3D_Set_dparameter(mesh, ls, MMG3D_DPARAM_hmax, 0.01);
  MMG3D_Set_dparameter(mesh, ls, MMG3D_DPARAM_hmax, 1.0);
  MMG3D_Set_iparameter(mesh, ls, MMG3D_IPARAM_angle, 0);

  const MMG5_int np = static_cast<MMG5_int>(in.points.size());
  const MMG5_int ne = static_cast<MMG5_int>(in.tets.size());
  std::vector<double> xyz;
  for (const Vec3& p : in.points)
    xyz.insert(xyz.end(), p.begin(), p.end());
  std::vector<MMG5_int> tets;
  for (const auto& t : in.tets) {
    for (MMG5_int v : t)
      tets.push_back(v + 1);
  }
  point_refs.resize(np, 0);
  tet_refs.resize(ne, 0);
  std::vector<double> level = values;
  EXPECT_EQ(1, MMG3D_Set_meshSize(mesh, np, ne, 0, 0, 0, 0));
  EXPECT_EQ(1, MMG3D_Set_vertices(mesh, xyz.data(), point_refs.data()));
  EXPECT_EQ(1, MMG3D_Set_tetrahedra(mesh, tets.data(), tet_refs.data()));
  EXPECT_EQ(1, MMG3D_Set_solSize(mesh, ls, MMG5_Vertex, np, MMG5_Scalar));
  EXPECT_EQ(1, MMG3D_Set_scalarSols(ls, level.data()));
  EXPECT_EQ(1, MMG3D_Chk_meshData(mesh, ls));

  CutVolume out;
  out.status = MMG3D_mmg3dls(mesh, ls, nullptr);
  MMG5_int onp = 0, one = 0, onprism = 0, ont = 0, onquad = 0;
  MMG3D_Get_meshSize(mesh, &onp, &one, &onprism, &ont, &onquad, &out.na);
  std::vector<double> oxyz(3 * onp);
  out.point_refs.resize(onp);
  MMG3D_Get_vertices(mesh, oxyz.data(), out.point_refs.data(), nullptr, nullptr);
  for (MMG5_int i = 0; i < onp; ++i)
    out.points.push_back({oxyz[3 * i], oxyz[3 * i + 1], oxyz[3 * i + 2]});
  std::vector<MMG5_int> otets(4 * one);
  out.tet_refs.resize(one);
  MMG3D_Get_tetrahedra(mesh, otets.data(), out.tet_refs.data(), nullptr);
  for (MMG5_int k = 0; k < one; ++k) {
    out.tets.push_back(
        {otets[4 * k] - 1, otets[4 * k + 1] - 1, otets[4 * k + 2] - 1, otets[4 * k + 3] - 1});
  }
  for (MMG5_int i = 0; i < ont; ++i) {
    MMG5_int a = 0, b = 0, c = 0, ref = 0;
    MMG3D_Get_triangle(mesh, &a, &b, &c, &ref, nullptr);
    out.tris.push_back({a - 1, b - 1, c - 1});
    out.tri_refs.push_back(ref);
  }
  MMG5_pSol never = nullptr;
  MMG3D_Free_all(MMG5_ARG_start, MMG5_ARG_ppMesh, &mesh, MMG5_ARG_ppMet, &never, MMG5_ARG_ppLs, &ls,
                 MMG5_ARG_end);
  return out;
}

const VolumeMesh kCornerTet = {{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}}, {{0, 1, 2, 3}}};

// Cube [0, size]^3 of n^3 cells, each split into the six tetrahedra of its main diagonal.
VolumeMesh StructuredCube(int n, double size) {
  VolumeMesh m;
  const double h = size / n;
  auto index = [n](int i, int j, int k) {
    return static_cast<MMG5_int>((k * (n + 1) + j) * (n + 1) + i);
  };
  for (int k = 0; k <= n; ++k)
    for (int j = 0; j <= n; ++j)
      for (int i = 0; i <= n; ++i)
        m.points.push_back({i * h, j * h, k * h});
  const int perms[6][3] = {{0, 1, 2}, {0, 2, 1}, {1, 0, 2}, {1, 2, 0}, {2, 0, 1}, {2, 1, 0}};
  for (int k = 0; k < n; ++k)
    for (int j = 0; j < n; ++j)
      for (int i = 0; i < n; ++i)
        for (const auto& p : perms) {
          int c[3] = {i, j, k};
          std::array<MMG5_int, 4> t;
          t[0] = index(c[0], c[1], c[2]);
          for (int s = 0; s < 3; ++s) {
            ++c[p[s]];
            t[s + 1] = index(c[0], c[1], c[2]);
          }
          m.tets.push_back(t);
        }
  return m;
}

std::vector<double> Sample(const VolumeMesh& m, const std::function<double(const Vec3&)>& f) {
  std::vector<double> v;
  for (const Vec3& p : m.points)
    v.push_back(f(p));
  return v;
}

// Faces and their owners, the outer boundary and the interface as the tetrahedra define them.
struct FaceCensus {
  int overused = 0;   // faces in more than two tetrahedra
  int outer = 0;      // faces in one tetrahedron
  int interface = 0;  // faces between a ref-2 and a ref-3 tetrahedron
};

FaceCensus CensusOf(const CutVolume& cut) {
  std::map<std::array<MMG5_int, 3>, std::vector<std::size_t>> owners;
  const int faces[4][3] = {{1, 2, 3}, {0, 2, 3}, {0, 1, 3}, {0, 1, 2}};
  for (std::size_t k = 0; k < cut.tets.size(); ++k) {
    for (const auto& f : faces) {
      std::array<MMG5_int, 3> key = {cut.tets[k][f[0]], cut.tets[k][f[1]], cut.tets[k][f[2]]};
      std::sort(key.begin(), key.end());
      owners[key].push_back(k);
    }
  }
  FaceCensus census;
  for (const auto& [key, list] : owners) {
    if (list.size() > 2) ++census.overused;
    if (list.size() == 1) ++census.outer;
    if (list.size() == 2 && cut.tet_refs[list[0]] != cut.tet_refs[list[1]]) ++census.interface;
  }
  return census;
}

struct SingleTetCase {
  std::array<double, 4> values;
  int np, ne, outer, interface, plus, minus;
};

TEST(MmgCompatLevelSet3d, SingleTetrahedronPatterns) {
  const SingleTetCase cases[] = {
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
  for (const SingleTetCase& c : cases) {
    SCOPED_TRACE(testing::Message()
                 << c.values[0] << " " << c.values[1] << " " << c.values[2] << " " << c.values[3]);
    const CutVolume cut =
        CutWithMmg3d(kCornerTet, std::vector<double>(c.values.begin(), c.values.end()));
    EXPECT_EQ(MMG5_SUCCESS, cut.status);
    EXPECT_EQ(c.np, static_cast<int>(cut.points.size()));
    EXPECT_EQ(c.ne, static_cast<int>(cut.tets.size()));
    EXPECT_EQ(c.outer, cut.Count(cut.tri_refs, 0));
    EXPECT_EQ(c.interface, cut.Count(cut.tri_refs, MG_ISO));
    EXPECT_EQ(c.plus, cut.Count(cut.tet_refs, MG_PLUS));
    EXPECT_EQ(c.minus, cut.Count(cut.tet_refs, MG_MINUS));
    for (std::size_t k = 0; k < cut.tets.size(); ++k)
      EXPECT_GT(cut.SignedVolume(k), 0.0);
  }
}

TEST(MmgCompatLevelSet3d, CutPointsInterpolateTheLevelSet) {
  // Cut points sit where the linear level set vanishes: midpoints for 1 / -1, z = 0.9 for
  // 0.9 / -0.1; the new vertices follow the input vertices.
  const CutVolume halves = CutWithMmg3d(kCornerTet, {1, 1, 1, -1});
  ASSERT_EQ(7u, halves.points.size());
  std::vector<Vec3> cut_points(halves.points.begin() + 4, halves.points.end());
  std::sort(cut_points.begin(), cut_points.end());
  const std::vector<Vec3> midpoints = {{0, 0, 0.5}, {0, 0.5, 0.5}, {0.5, 0, 0.5}};
  for (int i = 0; i < 3; ++i) {
    for (int d = 0; d < 3; ++d)
      EXPECT_NEAR(midpoints[i][d], cut_points[i][d], 1e-12);
  }
  const CutVolume high = CutWithMmg3d(kCornerTet, {0.9, 0.9, 0.9, -0.1});
  for (std::size_t i = 4; i < high.points.size(); ++i)
    EXPECT_NEAR(0.9, high.points[i][2], 1e-12);
  // A zero pushed to -1e-4 (scaled by the unit extent) moves the cut next to the origin.
  const CutVolume pushed = CutWithMmg3d(kCornerTet, {0, 0, 0, 1});
  ASSERT_EQ(5u, pushed.points.size());
  EXPECT_NEAR(1e-4 / (1 + 1e-4), pushed.points[4][2], 1e-12);
}

TEST(MmgCompatLevelSet3d, ReferencesOfVerticesAndTriangles) {
  const CutVolume cut = CutWithMmg3d(kCornerTet, {1, 1, 1, -1}, {7, 8, 9, 10}, {5});
  ASSERT_EQ(MMG5_SUCCESS, cut.status);
  ASSERT_EQ(7u, cut.point_refs.size());
  EXPECT_EQ((std::vector<MMG5_int>{7, 8, 9, 0, 0, 0, 0}), cut.point_refs);
  EXPECT_EQ(10, cut.Count(cut.tri_refs, 5));  // outer faces keep the element's reference
  EXPECT_EQ(1, cut.Count(cut.tri_refs, MG_ISO));
}

TEST(MmgCompatLevelSet3d, UnusedVertexIsReplacedByTheLastOne) {
  VolumeMesh m = kCornerTet;
  m.points.insert(m.points.begin() + 1, Vec3{9, 9, 9});  // vertex 2 belongs to no element
  m.tets = {{0, 2, 3, 4}};
  const CutVolume cut = CutWithMmg3d(m, {1, 100, 1, 1, -1});
  ASSERT_EQ(MMG5_SUCCESS, cut.status);
  ASSERT_EQ(7u, cut.points.size());
  EXPECT_NEAR(0.5, cut.points[1][2], 1e-12);  // a cut point fills the hole
  for (std::size_t k = 0; k < cut.tets.size(); ++k)
    EXPECT_GT(cut.SignedVolume(k), 0.0);
}

TEST(MmgCompatLevelSet3d, FailureReturns) {
  // No level-set values at all.
  {
    MMG5_pMesh mesh = nullptr;
    MMG5_pSol ls = nullptr;
    MMG3D_Init_mesh(MMG5_ARG_start, MMG5_ARG_ppMesh, &mesh, MMG5_ARG_ppLs, &ls, MMG5_ARG_end);
    double xyz[] = {0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1};
    MMG5_int tet[] = {1, 2, 3, 4};
    MMG3D_Set_meshSize(mesh, 4, 1, 0, 0, 0, 0);
    MMG3D_Set_vertices(mesh, xyz, nullptr);
    MMG3D_Set_tetrahedra(mesh, tet, nullptr);
    EXPECT_EQ(MMG5_STRONGFAILURE, MMG3D_mmg3dls(mesh, ls, nullptr));
    MMG3D_Free_all(MMG5_ARG_start, MMG5_ARG_ppMesh, &mesh, MMG5_ARG_ppLs, &ls, MMG5_ARG_end);
  }
  // Four values for five vertices.
  {
    MMG5_pMesh mesh = nullptr;
    MMG5_pSol ls = nullptr;
    MMG3D_Init_mesh(MMG5_ARG_start, MMG5_ARG_ppMesh, &mesh, MMG5_ARG_ppLs, &ls, MMG5_ARG_end);
    double xyz[] = {0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1, 1, 1, 1};
    MMG5_int tet[] = {1, 2, 3, 4};
    double values[] = {1, 1, 1, -1};
    MMG3D_Set_meshSize(mesh, 5, 1, 0, 0, 0, 0);
    MMG3D_Set_vertices(mesh, xyz, nullptr);
    MMG3D_Set_tetrahedra(mesh, tet, nullptr);
    MMG3D_Set_solSize(mesh, ls, MMG5_Vertex, 4, MMG5_Scalar);
    MMG3D_Set_scalarSols(ls, values);
    EXPECT_EQ(MMG5_STRONGFAILURE, MMG3D_mmg3dls(mesh, ls, nullptr));
    MMG3D_Free_all(MMG5_ARG_start, MMG5_ARG_ppMesh, &mesh, MMG5_ARG_ppLs, &ls, MMG5_ARG_end);
  }
  // No elements: nothing to scale.
  {
    MMG5_pMesh mesh = nullptr;
    MMG5_pSol ls = nullptr;
    MMG3D_Init_mesh(MMG5_ARG_start, MMG5_ARG_ppMesh, &mesh, MMG5_ARG_ppLs, &ls, MMG5_ARG_end);
    double xyz[] = {0, 0, 0, 1, 0, 0};
    double values[] = {1, -1};
    MMG3D_Set_meshSize(mesh, 2, 0, 0, 0, 0, 0);
    MMG3D_Set_vertices(mesh, xyz, nullptr);
    MMG3D_Set_solSize(mesh, ls, MMG5_Vertex, 2, MMG5_Scalar);
    MMG3D_Set_scalarSols(ls, values);
    EXPECT_EQ(1, MMG3D_Chk_meshData(mesh, ls));
    EXPECT_EQ(MMG5_STRONGFAILURE, MMG3D_mmg3dls(mesh, ls, nullptr));
    MMG3D_Free_all(MMG5_ARG_start, MMG5_ARG_ppMesh, &mesh, MMG5_ARG_ppLs, &ls, MMG5_ARG_end);
  }
  // A flat element stops the setter, and the cut then fails on the input quality.
  {
    MMG5_pMesh mesh = nullptr;
    MMG5_pSol ls = nullptr;
    MMG3D_Init_mesh(MMG5_ARG_start, MMG5_ARG_ppMesh, &mesh, MMG5_ARG_ppLs, &ls, MMG5_ARG_end);
    double xyz[] = {0, 0, 0, 1, 0, 0, 0, 1, 0, 1, 1, 0};
    MMG5_int tet[] = {1, 2, 3, 4};
    double values[] = {1, 1, 1, -1};
    MMG3D_Set_meshSize(mesh, 4, 1, 0, 0, 0, 0);
    MMG3D_Set_vertices(mesh, xyz, nullptr);
    EXPECT_EQ(0, MMG3D_Set_tetrahedra(mesh, tet, nullptr));
    MMG3D_Set_solSize(mesh, ls, MMG5_Vertex, 4, MMG5_Scalar);
    MMG3D_Set_scalarSols(ls, values);
    EXPECT_EQ(MMG5_LOWFAILURE, MMG3D_mmg3dls(mesh, ls, nullptr));
    MMG3D_Free_all(MMG5_ARG_start, MMG5_ARG_ppMesh, &mesh, MMG5_ARG_ppLs, &ls, MMG5_ARG_end);
  }
}

TEST(MmgCompatLevelSet3d, FaceOfThreeElementsIsPairedUp) {
  // Three elements on one face (not a manifold mesh): two of them pair up across the face,
  // the third sees it as boundary; the cut still succeeds.
  const VolumeMesh fan = {{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {0, 0, -1}, {0.2, 0.2, 2}},
                          {{0, 1, 2, 3}, {0, 2, 1, 4}, {0, 1, 2, 5}}};
  const CutVolume cut = CutWithMmg3d(fan, {1, 1, 1, -1, -1, -1});
  EXPECT_EQ(MMG5_SUCCESS, cut.status);
  EXPECT_EQ(15u, cut.points.size());
  EXPECT_EQ(12u, cut.tets.size());
  EXPECT_EQ(31u, cut.tris.size());
}

TEST(MmgCompatLevelSet3d, AllZeroLevelSetGoesNegative) {
  const CutVolume cut = CutWithMmg3d(StructuredCube(1, 1.0), std::vector<double>(8, 0.0));
  EXPECT_EQ(MMG5_SUCCESS, cut.status);
  EXPECT_EQ(6, cut.Count(cut.tet_refs, MG_MINUS));
  EXPECT_EQ(0, cut.Count(cut.tri_refs, MG_ISO));
}

TEST(MmgCompatLevelSet3d, CubeCutByPlaneCounts) {
  const VolumeMesh cube = StructuredCube(2, 2.0);
  const CutVolume cut = CutWithMmg3d(cube, Sample(cube, [](const Vec3& p) { return p[0] - 0.37; }));
  ASSERT_EQ(MMG5_SUCCESS, cut.status);
  EXPECT_EQ(52u, cut.points.size());
  EXPECT_EQ(136u, cut.tets.size());
  EXPECT_EQ(80, cut.Count(cut.tri_refs, 0));
  EXPECT_EQ(32, cut.Count(cut.tri_refs, MG_ISO));
  EXPECT_EQ(80, cut.Count(cut.tet_refs, MG_PLUS));
  EXPECT_EQ(56, cut.Count(cut.tet_refs, MG_MINUS));
  EXPECT_EQ(16, cut.na);

  // A plane through a vertex layer cuts nothing: the zeros become interface vertices.
  const CutVolume layer = CutWithMmg3d(cube, Sample(cube, [](const Vec3& p) { return p[0] - 1; }));
  EXPECT_EQ(27u, layer.points.size());
  EXPECT_EQ(48u, layer.tets.size());
  EXPECT_EQ(8, layer.Count(layer.tri_refs, MG_ISO));
  EXPECT_EQ(24, layer.Count(layer.tet_refs, MG_PLUS));
  EXPECT_EQ(8, layer.na);

  const CutVolume none = CutWithMmg3d(cube, Sample(cube, [](const Vec3& p) { return p[0] + 1; }));
  EXPECT_EQ(48, none.Count(none.tet_refs, MG_PLUS));
  EXPECT_EQ(48u, none.tris.size());
}

// Conformity, orientation and volumes of a cut cube, and the interface on the zero level.
void CheckCutCube(const CutVolume& cut, const std::function<double(const Vec3&)>& level,
                  double interface_tolerance) {
  ASSERT_EQ(MMG5_SUCCESS, cut.status);
  for (std::size_t k = 0; k < cut.tets.size(); ++k)
    ASSERT_GT(cut.SignedVolume(k), 0.0);
  EXPECT_NEAR(8.0, cut.VolumeOf(MG_PLUS) + cut.VolumeOf(MG_MINUS), 1e-12);

  const FaceCensus census = CensusOf(cut);
  EXPECT_EQ(0, census.overused);
  EXPECT_EQ(census.outer, cut.Count(cut.tri_refs, 0));
  EXPECT_EQ(census.interface, cut.Count(cut.tri_refs, MG_ISO));

  double outer_area = 0.0;
  for (std::size_t i = 0; i < cut.tris.size(); ++i) {
    const Vec3 n = cut.Normal(i);
    if (cut.tri_refs[i] == 0) {
      outer_area += std::sqrt(Dot(n, n)) / 2;
      // Outward: the cube's centre is behind every outer face.
      EXPECT_LT(Dot(n, Sub(Vec3{1, 1, 1}, cut.points[cut.tris[i][0]])), 0.0);
    } else {
      for (MMG5_int v : cut.tris[i])
        EXPECT_NEAR(0.0, level(cut.points[v]), interface_tolerance);
      // From the negative side into the positive one.
      Vec3 centre{0, 0, 0};
      for (MMG5_int v : cut.tris[i])
        for (int d = 0; d < 3; ++d)
          centre[d] += cut.points[v][d] / 3;
      const double step = 1e-3 / std::sqrt(Dot(n, n));
      const Vec3 ahead{centre[0] + step * n[0], centre[1] + step * n[1], centre[2] + step * n[2]};
      EXPECT_GT(level(ahead), level(centre));
    }
  }
  EXPECT_NEAR(24.0, outer_area, 1e-12);
}

TEST(MmgCompatLevelSet3d, CubeCutByPlaneIsConformingAndExact) {
  const auto plane = [](const Vec3& p) { return p[0] - 0.37; };
  for (int n : {2, 5}) {
    SCOPED_TRACE(n);
    const VolumeMesh cube = StructuredCube(n, 2.0);
    const CutVolume cut = CutWithMmg3d(cube, Sample(cube, plane));
    CheckCutCube(cut, plane, 1e-14);
    EXPECT_NEAR(0.37 * 4, cut.VolumeOf(MG_MINUS), 1e-12);
  }
  // An oblique plane exercises every split pattern and both diagonal choices.
  const auto oblique = [](const Vec3& p) { return 0.3 * p[0] + 0.5 * p[1] - 0.7 * p[2] + 0.11; };
  const VolumeMesh cube = StructuredCube(4, 2.0);
  CheckCutCube(CutWithMmg3d(cube, Sample(cube, oblique)), oblique, 1e-14);
}

TEST(MmgCompatLevelSet3d, CubeCutBySphereIsConforming) {
  const auto sphere = [](const Vec3& p) {
    return std::sqrt(Dot(Sub(p, Vec3{1, 1, 1}), Sub(p, Vec3{1, 1, 1}))) - 0.7;
  };
  const VolumeMesh cube = StructuredCube(8, 2.0);
  const CutVolume cut = CutWithMmg3d(cube, Sample(cube, sphere));
  // Cut points interpolate the level set linearly along edges of length L <= h*sqrt(3), so
  // they sit within L^2 / (8 r) = 0.034 of the sphere.
  CheckCutCube(cut, sphere, 0.034);
  EXPECT_NEAR(4.0 / 3.0 * M_PI * 0.343, cut.VolumeOf(MG_MINUS), 0.1);
}

}  // namespace
