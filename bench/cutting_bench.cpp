// Throughput of the two cuts on structured cubes: input tetrahedra per second, median of
// several runs on one thread. Targets: at least 1e6/s for the clip (CutTetrahedralMesh2) and
// 3e5/s for the level-set cut (CutTetrahedralMesh) with the bundled MMG subset.
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <vector>

#include "bench_support.h"
#include "brindle.h"
#include "opennurbs.h"

namespace {

using brindle::bench::StructuredCube;

using Cut = int (*)(const ON_Mesh*, const double*, int, double, double, ON_Mesh*, ON_Mesh**, char*);

double MedianSeconds(Cut cut, const ON_Mesh& mesh, const std::vector<double>& values, int runs) {
  ON_Mesh* result = nullptr;
  const auto cutOnce = [&] {
    char error[1024];
    const int status = cut(&mesh, values.data(), 0, 0.01, 0.1, nullptr, &result, error);
    if (status != 0) {
      std::fprintf(stderr, "cut failed with %d: %s\n", status, error);
      std::exit(1);
    }
  };
  return brindle::bench::MedianWallSeconds(runs, cutOnce, [&] {
    delete result;
    result = nullptr;
  });
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
