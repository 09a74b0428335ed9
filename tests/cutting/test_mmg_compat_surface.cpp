// Level-set discretisation of triangle surfaces through MMGS_mmgsls, driven with the call
// sequence brindle uses: the plate cases (plane across triangles, plane through a vertex
// column, isolated zeros), references, orientation and areas, a closed cube surface, and the
// failure returns.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <map>
#include <vector>

#include "mmg/mmgs/libmmgs.h"

namespace {

using Vec3 = std::array<double, 3>;

struct Surface {
  std::vector<Vec3> points;
  std::vector<std::array<MMG5_int, 3>> tris;  // 0-based
};

struct CutSurface {
  int status = -1;
  MMG5_int na = 0;
  std::vector<Vec3> points;
  std::vector<MMG5_int> point_refs;
  std::vector<std::array<MMG5_int, 3>> tris;
  std::vector<MMG5_int> tri_refs;

  Vec3 Normal(std::size_t i) const {
    const Vec3 &a = points[tris[i][0]], &b = points[tris[i][1]], &c = points[tris[i][2]];
    const Vec3 u{b[0] - a[0], b[1] - a[1], b[2] - a[2]}, v{c[0] - a[0], c[1] - a[1], c[2] - a[2]};
    return {u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2], u[0] * v[1] - u[1] * v[0]};
  }
  double AreaOf(MMG5_int ref) const {
    double sum = 0.0;
    for (std::size_t i = 0; i < tris.size(); ++i) {
      if (tri_refs[i] != ref) continue;
      const Vec3 n = Normal(i);
      sum += std::sqrt(n[0] * n[0] + n[1] * n[1] + n[2] * n[2]) / 2;
    }
    return sum;
  }
  int Count(MMG5_int ref) const {
    return static_cast<int>(std::count(tri_refs.begin(), tri_refs.end(), ref));
  }
};

CutSurface CutWithMmgs(const Surface& in, std::vector<double> values,
                       std::vector<MMG5_int> point_refs = {}) {
  MMG5_pMesh mesh = nullptr;
  MMG5_pSol ls = nullptr;
  EXPECT_EQ(
      1, MMGS_Init_mesh(MMG5_ARG_start, MMG5_ARG_ppMesh, &mesh, MMG5_ARG_ppLs, &ls, MMG5_ARG_end));
  MMGS_Set_iparameter(mesh, ls, MMGS_IPARAM_iso, 1);
  MMGS_Set_iparameter(mesh, ls, MMGS_IPARAM_nreg, 0);
  MMGS_Set_iparameter(mesh, ls, MMGS_IPARAM_noinsert, 1);
  MMGS_Set_iparameter(mesh, ls, MMGS_DPARAM_hausd, 0);
  MMGS_Set_dparameter(mesh, ls, MMGS_DPARAM_hgrad, 20.0);
  MMGS_Set_dparameter(mesh, ls, MMGS_DPARAM_hmax, 0.01);
  MMGS_Set_dparameter(mesh, ls, MMGS_DPARAM_hmax, 1.0);
  MMGS_Set_iparameter(mesh, ls, MMGS_IPARAM_angle, 0);

  const MMG5_int np = static_cast<MMG5_int>(in.points.size());
  const MMG5_int nt = static_cast<MMG5_int>(in.tris.size());
  std::vector<double> xyz;
  for (const Vec3& p : in.points)
    xyz.insert(xyz.end(), p.begin(), p.end());
  std::vector<MMG5_int> tris;
  for (const auto& t : in.tris) {
    for (MMG5_int v : t)
      tris.push_back(v + 1);
  }
  point_refs.resize(np, 0);
  std::vector<MMG5_int> tri_refs(nt, 0);
  EXPECT_EQ(1, MMGS_Set_meshSize(mesh, np, nt, 0));
  EXPECT_EQ(1, MMGS_Set_vertices(mesh, xyz.data(), point_refs.data()));
  EXPECT_EQ(1, MMGS_Set_triangles(mesh, tris.data(), tri_refs.data()));
  EXPECT_EQ(1, MMGS_Set_solSize(mesh, ls, MMG5_Vertex, np, MMG5_Scalar));
  EXPECT_EQ(1, MMGS_Set_scalarSols(ls, values.data()));
  EXPECT_EQ(1, MMGS_Chk_meshData(mesh, ls));

  CutSurface out;
  out.status = MMGS_mmgsls(mesh, ls, nullptr);
  MMG5_int onp = 0, ont = 0;
  MMGS_Get_meshSize(mesh, &onp, &ont, &out.na);
  std::vector<double> oxyz(3 * onp);
  out.point_refs.resize(onp);
  MMGS_Get_vertices(mesh, oxyz.data(), out.point_refs.data(), nullptr, nullptr);
  for (MMG5_int i = 0; i < onp; ++i)
    out.points.push_back({oxyz[3 * i], oxyz[3 * i + 1], oxyz[3 * i + 2]});
  for (MMG5_int i = 0; i < ont; ++i) {
    MMG5_int a = 0, b = 0, c = 0, ref = 0;
    int required = 0;
    MMGS_Get_triangle(mesh, &a, &b, &c, &ref, &required);
    out.tris.push_back({a - 1, b - 1, c - 1});
    out.tri_refs.push_back(ref);
  }
  MMGS_Free_all(MMG5_ARG_start, MMG5_ARG_ppMesh, &mesh, MMG5_ARG_ppLs, &ls, MMG5_ARG_end);
  return out;
}

// Unit square of n x n cells, each split along the same diagonal, normals +z.
Surface Plate(int n) {
  Surface s;
  for (int j = 0; j <= n; ++j)
    for (int i = 0; i <= n; ++i)
      s.points.push_back({double(i) / n, double(j) / n, 0.0});
  auto id = [n](int i, int j) { return static_cast<MMG5_int>(j * (n + 1) + i); };
  for (int j = 0; j < n; ++j)
    for (int i = 0; i < n; ++i) {
      s.tris.push_back({id(i, j), id(i + 1, j), id(i + 1, j + 1)});
      s.tris.push_back({id(i, j), id(i + 1, j + 1), id(i, j + 1)});
    }
  return s;
}

// Surface of the unit cube, 2 x 2 cells per face, outward normals, shared vertices merged.
Surface CubeSurface() {
  Surface s;
  std::map<std::array<int, 3>, MMG5_int> ids;
  auto id = [&](std::array<int, 3> g) {
    auto it = ids.find(g);
    if (it != ids.end()) return it->second;
    s.points.push_back({g[0] / 2.0, g[1] / 2.0, g[2] / 2.0});
    return ids[g] = static_cast<MMG5_int>(s.points.size() - 1);
  };
  for (int axis = 0; axis < 3; ++axis) {
    for (int side = 0; side <= 1; ++side) {
      const int u = (axis + 1) % 3, v = (axis + 2) % 3;
      for (int a = 0; a < 2; ++a)
        for (int b = 0; b < 2; ++b) {
          std::array<int, 3> g[4];
          const int du[4] = {0, 1, 1, 0}, dv[4] = {0, 0, 1, 1};
          for (int c = 0; c < 4; ++c) {
            g[c][axis] = 2 * side;
            g[c][u] = a + du[c];
            g[c][v] = b + dv[c];
          }
          // (u, v, axis) is right-handed, so u-v order faces +axis.
          MMG5_int q[4];
          for (int c = 0; c < 4; ++c)
            q[c] = id(g[c]);
          if (side == 1) {
            s.tris.push_back({q[0], q[1], q[2]});
            s.tris.push_back({q[0], q[2], q[3]});
          } else {
            s.tris.push_back({q[0], q[2], q[1]});
            s.tris.push_back({q[0], q[3], q[2]});
          }
        }
    }
  }
  return s;
}

std::vector<double> Sample(const Surface& s, const std::function<double(const Vec3&)>& f) {
  std::vector<double> v;
  for (const Vec3& p : s.points)
    v.push_back(f(p));
  return v;
}

TEST(MmgCompatLevelSetSurface, PlateCutAcrossTriangles) {
  const Surface plate = Plate(4);
  const CutSurface cut =
      CutWithMmgs(plate, Sample(plate, [](const Vec3& p) { return p[0] - 0.37; }));
  ASSERT_EQ(MMG5_SUCCESS, cut.status);
  EXPECT_EQ(34u, cut.points.size());
  EXPECT_EQ(48u, cut.tris.size());
  EXPECT_EQ(26, cut.na);  // 18 boundary edges + 8 interface edges
  EXPECT_NEAR(0.63, cut.AreaOf(MG_PLUS), 1e-12);
  EXPECT_NEAR(0.37, cut.AreaOf(MG_MINUS), 1e-12);
  // New vertices lie on the line and carry the interface reference.
  for (std::size_t i = 25; i < cut.points.size(); ++i) {
    EXPECT_NEAR(0.37, cut.points[i][0], 1e-15);
    EXPECT_EQ(MG_ISO, cut.point_refs[i]);
  }
  for (std::size_t i = 0; i < 25; ++i)
    EXPECT_EQ(0, cut.point_refs[i]);
  // The array setter flips the input, and the cut keeps the stored orientation.
  for (std::size_t i = 0; i < cut.tris.size(); ++i)
    EXPECT_LT(cut.Normal(i)[2], 0.0);
}

TEST(MmgCompatLevelSetSurface, ZerosOnVerticesAndIsolatedZeros) {
  const Surface plate = Plate(4);
  // Zeros on the vertex column x = 0.5: no new vertex, the column becomes the interface.
  const CutSurface column =
      CutWithMmgs(plate, Sample(plate, [](const Vec3& p) { return p[0] - 0.5; }),
                  std::vector<MMG5_int>(25, 10));
  ASSERT_EQ(MMG5_SUCCESS, column.status);
  EXPECT_EQ(25u, column.points.size());
  EXPECT_EQ(32u, column.tris.size());
  EXPECT_EQ(16, column.Count(MG_PLUS));
  EXPECT_EQ(16, column.Count(MG_MINUS));
  EXPECT_EQ(20, column.na);
  for (std::size_t i = 0; i < 25; ++i) {
    // Input references 10 are cleared; the interface vertices get 10 again.
    EXPECT_EQ(column.points[i][0] == 0.5 ? MG_ISO : 0, column.point_refs[i]) << i;
  }

  // An isolated zero among positive values is lifted: no interface at all.
  std::vector<double> bump(25, 1.0);
  bump[12] = 0.0;
  const CutSurface lifted = CutWithMmgs(plate, bump);
  EXPECT_EQ(25u, lifted.points.size());
  EXPECT_EQ(32, lifted.Count(MG_PLUS));
  EXPECT_EQ(16, lifted.na);

  // Zeros along the boundary column x = 0 only touch the level: no interface either.
  const CutSurface edge = CutWithMmgs(plate, Sample(plate, [](const Vec3& p) { return p[0]; }));
  EXPECT_EQ(32, edge.Count(MG_PLUS));
  EXPECT_EQ(25u, edge.points.size());
}

TEST(MmgCompatLevelSetSurface, ClosedCubeKeepsItsShape) {
  const Surface cube = CubeSurface();
  ASSERT_EQ(26u, cube.points.size());
  ASSERT_EQ(48u, cube.tris.size());
  const CutSurface cut = CutWithMmgs(cube, Sample(cube, [](const Vec3& p) { return p[0] - 0.37; }));
  ASSERT_EQ(MMG5_SUCCESS, cut.status);
  EXPECT_EQ(42u, cut.points.size());
  EXPECT_EQ(80u, cut.tris.size());
  EXPECT_EQ(48, cut.Count(MG_PLUS));
  EXPECT_EQ(32, cut.Count(MG_MINUS));
  EXPECT_EQ(16, cut.na);
  EXPECT_NEAR(6.0, cut.AreaOf(MG_PLUS) + cut.AreaOf(MG_MINUS), 1e-12);
  EXPECT_NEAR(1.0 + 4 * 0.37, cut.AreaOf(MG_MINUS), 1e-12);
}

TEST(MmgCompatLevelSetSurface, FailureReturns) {
  const Surface plate = Plate(1);
  // Wrong number of values.
  {
    MMG5_pMesh mesh = nullptr;
    MMG5_pSol ls = nullptr;
    MMGS_Init_mesh(MMG5_ARG_start, MMG5_ARG_ppMesh, &mesh, MMG5_ARG_ppLs, &ls, MMG5_ARG_end);
    double xyz[] = {0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0};
    MMG5_int tris[] = {1, 2, 3, 1, 3, 4};
    double values[] = {1, -1, 1};
    MMGS_Set_meshSize(mesh, 4, 2, 0);
    MMGS_Set_vertices(mesh, xyz, nullptr);
    MMGS_Set_triangles(mesh, tris, nullptr);
    MMGS_Set_solSize(mesh, ls, MMG5_Vertex, 3, MMG5_Scalar);
    MMGS_Set_scalarSols(ls, values);
    EXPECT_EQ(MMG5_STRONGFAILURE, MMGS_mmgsls(mesh, ls, nullptr));
    MMGS_Free_all(MMG5_ARG_start, MMG5_ARG_ppMesh, &mesh, MMG5_ARG_ppLs, &ls, MMG5_ARG_end);
  }
  // Values never given.
  {
    MMG5_pMesh mesh = nullptr;
    MMG5_pSol ls = nullptr;
    MMGS_Init_mesh(MMG5_ARG_start, MMG5_ARG_ppMesh, &mesh, MMG5_ARG_ppLs, &ls, MMG5_ARG_end);
    double xyz[] = {0, 0, 0, 1, 0, 0, 1, 1, 0};
    MMG5_int tri[] = {1, 2, 3};
    MMGS_Set_meshSize(mesh, 3, 1, 0);
    MMGS_Set_vertices(mesh, xyz, nullptr);
    MMGS_Set_triangles(mesh, tri, nullptr);
    EXPECT_EQ(MMG5_STRONGFAILURE, MMGS_mmgsls(mesh, ls, nullptr));
    MMGS_Free_all(MMG5_ARG_start, MMG5_ARG_ppMesh, &mesh, MMG5_ARG_ppLs, &ls, MMG5_ARG_end);
  }
  // A degenerate triangle fails the input quality test but leaves a usable mesh.
  {
    Surface flat = plate;
    flat.points.push_back({2, 0, 0});
    flat.tris.push_back({0, 1, 4});
    const CutSurface cut = CutWithMmgs(flat, {1, -1, 1, 1, 1});
    EXPECT_EQ(MMG5_LOWFAILURE, cut.status);
    EXPECT_EQ(5u, cut.points.size());
    EXPECT_EQ(3u, cut.tris.size());
  }
}

}  // namespace
