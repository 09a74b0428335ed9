// Throughput of the tetrahedral mesh tools on a structured cube of about a million tetrahedra:
// AspectRatios and DihedralAngles should reach 2e6 tetrahedra per second and
// ExtractBoundaryMeshWithStats 1e6 per second, on one core. Prints the median of several runs,
// timed in processor time so that other processes sharing the machine do not count.
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "bench_support.h"
#include "brindle.h"

namespace {

using brindle::bench::MedianCpuSeconds;

void Report(const char* name, int tets, double seconds, double target) {
  const double rate = tets / seconds;
  std::printf("%-30s %9.3f s  %12.0f tets/s  target %.0e  %s\n", name, seconds, rate, target,
              rate >= target ? "ok" : "SLOW");
}

}  // namespace

int main(int argc, char** argv) {
  const int n = argc > 1 ? std::atoi(argv[1]) : 55;  // 6 * 55^3 = 998250 tetrahedra
  const int runs = argc > 2 ? std::atoi(argv[2]) : 5;
  const ON_Mesh cube = brindle::bench::StructuredCube(n);
  const int tets = cube.FaceCount();
  std::printf("structured cube n=%d: %d tetrahedra, %d vertices, median of %d runs\n", n, tets,
              cube.VertexCount(), runs);

  std::vector<double> ratios(tets);
  Report("AspectRatios", tets,
         MedianCpuSeconds(runs, [&] { AspectRatios(&cube, ratios.data(), nullptr); }), 2e6);

  std::vector<double> angles(6 * static_cast<std::size_t>(tets));
  Report("DihedralAngles", tets,
         MedianCpuSeconds(runs, [&] { DihedralAngles(&cube, angles.data(), nullptr); }), 2e6);

  Report("ExtractBoundaryMeshWithStats", tets,
         MedianCpuSeconds(runs,
                          [&] {
                            int boundary = 0;
                            ON_Mesh* surface = nullptr;
                            ExtractBoundaryMeshWithStats(&cube, &boundary, nullptr, nullptr,
                                                         &surface, nullptr);
                            delete surface;
                          }),
         1e6);
  return 0;
}
