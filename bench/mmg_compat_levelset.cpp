// Throughput of the level-set discretisation behind the MMG API (the bundled subset, or a real
// MMG when the build links one): structured cubes of up to 10^6 tetrahedra cut by a plane and
// by a sphere, timed from Set_meshSize to the last getter, as the library's cut calls them.
// Prints the median of several runs. Target for the bundled subset: >= 3e5 tetrahedra/s at 1e6.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <utility>
#include <vector>

#include "bench_support.h"
#include "mmg/mmg3d/libmmg3d.h"

namespace {

// The bench cube with MMG's 1-based corners.
struct Cube {
  std::vector<double> xyz;
  std::vector<MMG5_int> tets;
};

Cube StructuredCube(int n) {
  brindle::bench::CubeArrays arrays = brindle::bench::StructuredCubeArrays(n);
  Cube cube{std::move(arrays.coordinates), {}};
  cube.tets.reserve(arrays.tetrahedra.size());
  for (int v : arrays.tetrahedra)
    cube.tets.push_back(static_cast<MMG5_int>(v) + 1);
  return cube;
}

// One cut as the library performs it; returns the output element count.
MMG5_int CutOnce(const Cube& cube, std::vector<double> values) {
  MMG5_pMesh mesh = nullptr;
  MMG5_pSol ls = nullptr, met = nullptr;
  MMG3D_Init_mesh(MMG5_ARG_start, MMG5_ARG_ppMesh, &mesh, MMG5_ARG_ppLs, &ls, MMG5_ARG_end);
  MMG3D_Set_iparameter(mesh, ls, MMG3D_IPARAM_verbose, -1);
  MMG3D_Set_iparameter(mesh, ls, MMG3D_IPARAM_iso, 1);
  MMG3D_Set_iparameter(mesh, ls, MMG3D_IPARAM_noinsert, 1);
  MMG3D_Set_iparameter(mesh, ls, MMG3D_IPARAM_angle, 0);
  const MMG5_int np = static_cast<MMG5_int>(cube.xyz.size() / 3);
  const MMG5_int ne = static_cast<MMG5_int>(cube.tets.size() / 4);
  std::vector<MMG5_int> refs(std::max(np, ne), 0);
  std::vector<double> xyz = cube.xyz;
  std::vector<MMG5_int> tets = cube.tets;
  MMG3D_Set_meshSize(mesh, np, ne, 0, 0, 0, 0);
  MMG3D_Set_vertices(mesh, xyz.data(), refs.data());
  MMG3D_Set_tetrahedra(mesh, tets.data(), refs.data());
  MMG3D_Set_solSize(mesh, ls, MMG5_Vertex, np, MMG5_Scalar);
  MMG3D_Set_scalarSols(ls, values.data());
  MMG3D_Chk_meshData(mesh, ls);
  if (MMG3D_mmg3dls(mesh, ls, nullptr) > 1) std::abort();
  MMG5_int onp = 0, one = 0, ont = 0;
  MMG3D_Get_meshSize(mesh, &onp, &one, nullptr, &ont, nullptr, nullptr);
  std::vector<double> oxyz(3 * static_cast<std::size_t>(onp));
  std::vector<MMG5_int> orefs(std::max(onp, one)), otets(4 * static_cast<std::size_t>(one));
  MMG3D_Get_vertices(mesh, oxyz.data(), orefs.data(), nullptr, nullptr);
  MMG3D_Get_tetrahedra(mesh, otets.data(), orefs.data(), nullptr);
  for (MMG5_int i = 0; i < ont; ++i) {
    MMG5_int a, b, c, r;
    MMG3D_Get_triangle(mesh, &a, &b, &c, &r, nullptr);
  }
  MMG3D_Free_all(MMG5_ARG_start, MMG5_ARG_ppMesh, &mesh, MMG5_ARG_ppMet, &met, MMG5_ARG_ppLs, &ls,
                 MMG5_ARG_end);
  return one;
}

void Run(const char* name, int n, const std::function<double(double, double, double)>& f,
         int repeats) {
  const Cube cube = StructuredCube(n);
  std::vector<double> values;
  for (std::size_t i = 0; i < cube.xyz.size(); i += 3) {
    values.push_back(f(cube.xyz[i], cube.xyz[i + 1], cube.xyz[i + 2]));
  }
  MMG5_int out = 0;
  const double median =
      brindle::bench::MedianWallSeconds(repeats, [&] { out = CutOnce(cube, values); });
  const double tets = static_cast<double>(cube.tets.size() / 4);
  std::printf("%-7s %8.0f tets -> %8d: median %.3f s, %.3g tets/s\n", name, tets,
              static_cast<int>(out), median, tets / median);
}

}  // namespace

int main(int argc, char** argv) {
  const int repeats = argc > 1 ? std::atoi(argv[1]) : 5;
  const auto plane = [](double x, double y, double z) { return x + 0.3 * y - 0.2 * z - 0.41; };
  const auto sphere = [](double x, double y, double z) {
    return std::sqrt((x - 0.5) * (x - 0.5) + (y - 0.5) * (y - 0.5) + (z - 0.5) * (z - 0.5)) - 0.37;
  };
  for (int n : {10, 30, 55}) {  // 6 n^3 tetrahedra: 6000, 162000, 998250
    Run("plane", n, plane, repeats);
    Run("sphere", n, sphere, repeats);
  }
  return 0;
}
