// Throughput of the two cuts on structured cubes: input tetrahedra per second, median of
// several runs on one thread. Targets: at least 1e6/s for the clip (CutTetrahedralMesh2) and
// 3e5/s for the level-set cut (CutTetrahedralMesh) with the bundled MMG subset.
#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <vector>

#include "brindle.h"
#include "opennurbs.h"

namespace {

ON_Mesh StructuredCube(int n) {
  ON_Mesh mesh;
  const double h = 1.0 / n;
  mesh.m_dV.Reserve(static_cast<std::size_t>(n + 1) * (n + 1) * (n + 1));
  mesh.m_F.Reserve(6 * static_cast<std::size_t>(n) * n * n);
  for (int k = 0; k <= n; ++k)
    for (int j = 0; j <= n; ++j)
      for (int i = 0; i <= n; ++i)
        mesh.m_dV.Append(ON_3dPoint(i * h, j * h, k * h));
  mesh.UpdateSinglePrecisionVertices();
  auto id = [n](int i, int j, int k) { return i + (n + 1) * (j + (n + 1) * k); };
  // Six tetrahedra around the main diagonal of each cell, positively oriented.
  const int axes[6][3] = {{0, 1, 2}, {1, 2, 0}, {2, 0, 1}, {0, 2, 1}, {2, 1, 0}, {1, 0, 2}};
  for (int k = 0; k < n; ++k)
    for (int j = 0; j < n; ++j)
      for (int i = 0; i < n; ++i)
        for (int t = 0; t < 6; ++t) {
          int at[3] = {i, j, k};
          int v[4];
          v[0] = id(i, j, k);
          for (int s = 0; s < 3; ++s) {
            ++at[axes[t][s]];
            v[s + 1] = id(at[0], at[1], at[2]);
          }
          if (t >= 3) std::swap(v[2], v[3]);  // odd permutations of the axes
          ON_MeshFace face;
          for (int c = 0; c < 4; ++c)
            face.vi[c] = v[c];
          mesh.m_F.Append(face);
        }
  return mesh;
}

using Cut = int (*)(const ON_Mesh*, const double*, int, double, double, ON_Mesh*, ON_Mesh**, char*);

double MedianSeconds(Cut cut, const ON_Mesh& mesh, const std::vector<double>& values, int runs) {
  std::vector<double> seconds;
  for (int r = 0; r < runs; ++r) {
    ON_Mesh* result = nullptr;
    char error[1024];
    const auto start = std::chrono::steady_clock::now();
    const int status = cut(&mesh, values.data(), 0, 0.01, 0.1, nullptr, &result, error);
    const auto stop = std::chrono::steady_clock::now();
    if (status != 0) {
      std::fprintf(stderr, "cut failed with %d: %s\n", status, error);
      std::exit(1);
    }
    delete result;
    seconds.push_back(std::chrono::duration<double>(stop - start).count());
  }
  std::sort(seconds.begin(), seconds.end());
  return seconds[seconds.size() / 2];
}

}  // namespace

int main(int argc, char** argv) {
  const int largest = argc > 1 ? std::atoi(argv[1]) : 55;  // 6 * 55^3 = 998250 tetrahedra
  struct Field {
    const char* name;
    std::function<double(const ON_3dPoint&)> f;
  };
  const Field fields[] = {{"plane", [](const ON_3dPoint& p) { return p.x - 0.37; }},
                          {"sphere", [](const ON_3dPoint& p) {
                             return std::sqrt((p.x - 0.5) * (p.x - 0.5) +
                                              (p.y - 0.5) * (p.y - 0.5) +
                                              (p.z - 0.5) * (p.z - 0.5)) -
                                    0.35;
                           }}};
  std::printf("%-22s %-7s %10s %12s %14s\n", "entry", "field", "tets", "median s", "tets/s");
  for (int n : {10, 25, largest}) {
    const ON_Mesh cube = StructuredCube(n);
    const int tets = cube.FaceCount();
    for (const Field& field : fields) {
      std::vector<double> values;
      for (int i = 0; i < cube.m_dV.Count(); ++i)
        values.push_back(field.f(cube.m_dV[i]));
      const int runs = n >= 40 ? 5 : 9;
      const double clip = MedianSeconds(CutTetrahedralMesh2, cube, values, runs);
      std::printf("%-22s %-7s %10d %12.4f %14.0f\n", "CutTetrahedralMesh2", field.name, tets, clip,
                  tets / clip);
      const double levelSet = MedianSeconds(CutTetrahedralMesh, cube, values, runs);
      std::printf("%-22s %-7s %10d %12.4f %14.0f\n", "CutTetrahedralMesh", field.name, tets,
                  levelSet, tets / levelSet);
    }
  }
  return 0;
}
