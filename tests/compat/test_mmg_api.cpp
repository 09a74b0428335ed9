// Behaviour of the MMG library API as brindle relies on it: element quality, the parameter
// setters, the mesh and solution setters and the call-by-call triangle cursor. Written
// against the MMG headers only, so it runs against the bundled subset and a real MMG alike.
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "compat/mmg_support.h"

namespace {

using brindle::mmg_test::Mesh3d;
using brindle::mmg_test::MeshS;

// The regular, corner and right isosceles values through the exports are checked with the
// quality exports; here the rounding of the regular value, a long path, the independence of
// size and orientation, and the out-of-range answers.
TEST(MmgCompatQuality, TetrahedraAndTriangles) {
  const double h = std::sqrt(2.0 / 3.0), r = 1.0 / std::sqrt(3.0), s3 = std::sqrt(3.0);
  Mesh3d m;
  ASSERT_EQ(
      1, m.Load({0, 0, 0, 1, 0,    0, 0.5,  s3 / 2, 0, 0.5, r / 2, h,      // regular
                 0, 0, 0, 1, 0,    0, 1,    1,      0, 1,   1,     1,      // path
                 0, 0, 0, 0, 1e-3, 0, 1e-3, 0,      0, 0,   0,     1e-3},  // small reversed corner
                {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11}));
  ASSERT_EQ(1, MMG3D_Chk_meshData(m.mesh, m.met));
  EXPECT_NEAR(0.999999999999999, MMG3D_Get_tetrahedronQuality(m.mesh, m.met, 1), 2e-15);
  EXPECT_LT(MMG3D_Get_tetrahedronQuality(m.mesh, m.met, 1), 1.0);
  EXPECT_NEAR(0.657267, MMG3D_Get_tetrahedronQuality(m.mesh, m.met, 2), 1e-6);
  EXPECT_NEAR(4.0 * s3 / 9.0, MMG3D_Get_tetrahedronQuality(m.mesh, m.met, 3), 1e-14);
  EXPECT_EQ(0.0, MMG3D_Get_tetrahedronQuality(m.mesh, m.met, 0));
  EXPECT_EQ(0.0, MMG3D_Get_tetrahedronQuality(m.mesh, m.met, 4));

  MeshS t;
  ASSERT_EQ(1, t.Load({0, 0, 0, 1, 1, 1, 2, 2, 2,   // collinear
                       0, 0, 0, 0, 1, 0, 1, 0, 0},  // clockwise right isosceles
                      {0, 1, 2, 3, 4, 5}));
  ASSERT_EQ(1, MMGS_Chk_meshData(t.mesh, t.met));
  EXPECT_EQ(0.0, MMGS_Get_triangleQuality(t.mesh, t.met, 1));
  EXPECT_NEAR(s3 / 2, MMGS_Get_triangleQuality(t.mesh, t.met, 2), 1e-15);
  EXPECT_EQ(0.0, MMGS_Get_triangleQuality(t.mesh, t.met, 0));
  EXPECT_EQ(0.0, MMGS_Get_triangleQuality(t.mesh, t.met, 3));
}

TEST(MmgCompatSetters, ParameterKindsAndValues) {
  Mesh3d m;
  EXPECT_EQ(1, MMG3D_Set_iparameter(m.mesh, m.ls, MMG3D_IPARAM_iso, 1));
  // A real parameter through the integer setter is refused.
  EXPECT_EQ(0, MMG3D_Set_iparameter(m.mesh, m.ls, MMG3D_DPARAM_hausd, 0));
  EXPECT_EQ(1, MMG3D_Set_dparameter(m.mesh, m.ls, MMG3D_DPARAM_hmax, 0.5));
  EXPECT_EQ(0, MMG3D_Set_dparameter(m.mesh, m.ls, MMG3D_IPARAM_angle, 0.0));

  MeshS s;
  EXPECT_EQ(1, MMGS_Set_iparameter(s.mesh, s.met, MMGS_IPARAM_iso, 1));
  EXPECT_EQ(0, MMGS_Set_iparameter(s.mesh, s.met, MMGS_DPARAM_hausd, 0));
  EXPECT_EQ(1, MMGS_Set_dparameter(s.mesh, s.met, MMGS_DPARAM_hgrad, 20.0));
}

TEST(MmgCompatSetters, SizesAndSolutions) {
  Mesh3d m;
  EXPECT_EQ(0, MMG3D_Set_meshSize(m.mesh, 0, 1, 0, 0, 0, 0));  // no points
  EXPECT_EQ(1, MMG3D_Set_meshSize(m.mesh, 4, 0, 0, 0, 0, 0));  // no tetrahedra is fine
  // An unsized solution refuses values; a sized one takes them.
  std::vector<double> values = {1, 2, 3, 4};
  EXPECT_EQ(0, MMG3D_Set_scalarSols(m.ls, values.data()));
  EXPECT_EQ(0, MMG3D_Set_solSize(m.mesh, m.ls, MMG5_Triangle, 4, MMG5_Scalar));
  EXPECT_EQ(1, MMG3D_Set_solSize(m.mesh, m.ls, MMG5_Vertex, 0, MMG5_Scalar));
  EXPECT_EQ(0, MMG3D_Set_scalarSols(m.ls, values.data()));
  EXPECT_EQ(1, MMG3D_Set_solSize(m.mesh, m.ls, MMG5_Vertex, 4, MMG5_Scalar));
  EXPECT_EQ(1, MMG3D_Set_scalarSols(m.ls, values.data()));
  EXPECT_EQ(1, MMG3D_Chk_meshData(m.mesh, m.ls));

  MeshS s;
  EXPECT_EQ(0, MMGS_Set_meshSize(s.mesh, 3, 0, 0));  // no triangles
  EXPECT_EQ(0, MMGS_Set_meshSize(s.mesh, 0, 1, 0));  // no points
}

TEST(MmgCompatSetters, TetrahedraOrientationAndNullVolume) {
  Mesh3d m;
  // Second tetrahedron is given negatively, third is flat: the copy stops at the third.
  ASSERT_EQ(0, m.Load({0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1, 1, 1, 0},
                      {0, 1, 2, 3, 0, 2, 1, 3, 0, 1, 2, 4}));
  std::vector<MMG5_int> tets(12, -7);
  ASSERT_EQ(1, MMG3D_Get_tetrahedra(m.mesh, tets.data(), nullptr, nullptr));
  EXPECT_EQ((std::vector<MMG5_int>{1, 2, 3, 4, 1, 3, 4, 2}),
            std::vector<MMG5_int>(tets.begin(), tets.begin() + 8));
  // A check of the data still passes: MMG leaves that to the quality test of mmg3dls.
  EXPECT_EQ(1, MMG3D_Chk_meshData(m.mesh, m.met));
}

TEST(MmgCompatGetters, TriangleCursor) {
  MeshS s;
  ASSERT_EQ(1, s.Load({0, 0, 0, 1, 0, 0, 0, 1, 0, 1, 1, 0}, {0, 1, 2, 1, 3, 2}));
  // Surface triangles are stored flipped; the cursor walks them one call at a time.
  MMG5_int v[3] = {0, 0, 0}, ref = -1;
  int required = -1;
  ASSERT_EQ(1, MMGS_Get_triangle(s.mesh, &v[0], &v[1], &v[2], &ref, &required));
  EXPECT_EQ((std::vector<MMG5_int>{1, 3, 2, 0}), (std::vector<MMG5_int>{v[0], v[1], v[2], ref}));
  EXPECT_EQ(0, required);
  // Half way through, the counters no longer match the sizes.
  EXPECT_EQ(0, MMGS_Chk_meshData(s.mesh, s.met));
  ASSERT_EQ(1, MMGS_Get_triangle(s.mesh, &v[0], &v[1], &v[2], nullptr, nullptr));
  EXPECT_EQ(2, v[0]);
  ASSERT_EQ(1, MMGS_Get_triangle(s.mesh, &v[0], &v[1], &v[2], nullptr, nullptr));  // wraps to 1
  EXPECT_EQ(1, v[0]);

  // A volume mesh without boundary triangles has nothing to walk.
  Mesh3d m;
  ASSERT_EQ(1, m.Load({0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1}, {0, 1, 2, 3}));
  EXPECT_EQ(0, MMG3D_Get_triangle(m.mesh, &v[0], &v[1], &v[2], nullptr, nullptr));
  EXPECT_EQ(0, MMG3D_Get_triangle(m.mesh, &v[0], &v[1], &v[2], nullptr, nullptr));
}

TEST(MmgCompatLifecycle, InitAndFreeArguments) {
  MMG5_pMesh mesh = nullptr;
  MMG5_pSol met = nullptr;
  EXPECT_EQ(0, MMG3D_Init_mesh(MMG5_ARG_start, MMG5_ARG_ppMet, &met, MMG5_ARG_end));  // no mesh
  ASSERT_EQ(1, MMG3D_Init_mesh(MMG5_ARG_start, MMG5_ARG_ppMesh, &mesh, MMG5_ARG_ppMet, &met,
                               MMG5_ARG_end));
  EXPECT_EQ(0, MMG3D_Free_all(MMG5_ARG_start, MMG5_ARG_ppMet, &met, MMG5_ARG_end));
  EXPECT_NE(nullptr, met);
  // A never-created handle next to the live ones is accepted.
  MMG5_pSol never = nullptr;
  EXPECT_EQ(1, MMG3D_Free_all(MMG5_ARG_start, MMG5_ARG_ppMesh, &mesh, MMG5_ARG_ppMet, &met,
                              MMG5_ARG_ppLs, &never, MMG5_ARG_end));
  EXPECT_EQ(nullptr, mesh);
  EXPECT_EQ(nullptr, met);
}

#ifndef BRINDLE_REAL_MMG
// The bundled subset also releases solutions created with the mesh but not listed when it is
// freed (MMG leaks them); the sanitizer build checks that nothing is left.
TEST(MmgCompatLifecycle, FreeingTheMeshReleasesItsSolutions) {
  MMG5_pMesh mesh = nullptr;
  MMG5_pSol ls = nullptr, never = nullptr;
  ASSERT_EQ(
      1, MMG3D_Init_mesh(MMG5_ARG_start, MMG5_ARG_ppMesh, &mesh, MMG5_ARG_ppLs, &ls, MMG5_ARG_end));
  double xyz[] = {0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1};
  ASSERT_EQ(1, MMG3D_Set_meshSize(mesh, 4, 0, 0, 0, 0, 0));
  ASSERT_EQ(1, MMG3D_Set_vertices(mesh, xyz, nullptr));
  ASSERT_EQ(1, MMG3D_Set_solSize(mesh, ls, MMG5_Vertex, 4, MMG5_Scalar));
  EXPECT_EQ(1, MMG3D_Free_all(MMG5_ARG_start, MMG5_ARG_ppMesh, &mesh, MMG5_ARG_ppMet, &never,
                              MMG5_ARG_end));
  EXPECT_EQ(nullptr, mesh);
  // `ls` is stale now; creating new structures through it must not release it again.
  ASSERT_EQ(
      1, MMG3D_Init_mesh(MMG5_ARG_start, MMG5_ARG_ppMesh, &mesh, MMG5_ARG_ppLs, &ls, MMG5_ARG_end));
  EXPECT_EQ(
      1, MMG3D_Free_all(MMG5_ARG_start, MMG5_ARG_ppMesh, &mesh, MMG5_ARG_ppLs, &ls, MMG5_ARG_end));
}
#endif

}  // namespace
