// What the benchmarks share: the structured tetrahedral cube they time, as plain arrays or as
// the host's ON_Mesh, and median timings over several runs.
#ifndef BRINDLE_BENCH_BENCH_SUPPORT_H
#define BRINDLE_BENCH_BENCH_SUPPORT_H

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <ctime>
#include <functional>
#include <utility>
#include <vector>

#include "opennurbs.h"

namespace brindle::bench {

// The unit cube in n^3 cells, each split into six positively oriented tetrahedra around its
// (0,0,0)-(1,1,1) diagonal: (n+1)^3 vertices x fastest, then y, then z; 6 n^3 tetrahedra of
// 0-based corners.
struct CubeArrays {
  std::vector<double> coordinates;
  std::vector<int> tetrahedra;
  int VertexCount() const { return static_cast<int>(coordinates.size() / 3); }
  int TetrahedronCount() const { return static_cast<int>(tetrahedra.size() / 4); }
};

inline CubeArrays StructuredCubeArrays(int n) {
  CubeArrays cube;
  const int m = n + 1;
  cube.coordinates.reserve(3 * static_cast<std::size_t>(m) * m * m);
  for (int k = 0; k <= n; ++k)
    for (int j = 0; j <= n; ++j)
      for (int i = 0; i <= n; ++i)
        cube.coordinates.insert(cube.coordinates.end(),
                                {double(i) / n, double(j) / n, double(k) / n});
  const int step[3] = {1, m, m * m};
  // The axes walked from corner (0,0,0) to (1,1,1); odd orders give a negative volume, so
  // their last two corners are swapped.
  const int orders[6][3] = {{0, 1, 2}, {0, 2, 1}, {1, 0, 2}, {1, 2, 0}, {2, 0, 1}, {2, 1, 0}};
  const bool odd[6] = {false, true, true, false, false, true};
  cube.tetrahedra.reserve(24 * static_cast<std::size_t>(n) * n * n);
  for (int k = 0; k < n; ++k)
    for (int j = 0; j < n; ++j)
      for (int i = 0; i < n; ++i)
        for (int t = 0; t < 6; ++t) {
          int v[4] = {i + m * (j + m * k)};
          for (int s = 0; s < 3; ++s)
            v[s + 1] = v[s] + step[orders[t][s]];
          if (odd[t]) std::swap(v[2], v[3]);
          cube.tetrahedra.insert(cube.tetrahedra.end(), {v[0], v[1], v[2], v[3]});
        }
  return cube;
}

// The same cube as the host passes it: every face one tetrahedron, double and single precision
// vertices.
inline ON_Mesh StructuredCube(int n) {
  const CubeArrays cube = StructuredCubeArrays(n);
  ON_Mesh mesh;
  mesh.m_dV.Reserve(static_cast<std::size_t>(cube.VertexCount()));
  mesh.m_F.Reserve(static_cast<std::size_t>(cube.TetrahedronCount()));
  for (std::size_t v = 0; v < cube.coordinates.size(); v += 3)
    mesh.m_dV.Append(
        ON_3dPoint(cube.coordinates[v], cube.coordinates[v + 1], cube.coordinates[v + 2]));
  mesh.UpdateSinglePrecisionVertices();
  for (std::size_t t = 0; t < cube.tetrahedra.size(); t += 4) {
    ON_MeshFace face;
    for (int c = 0; c < 4; ++c)
      face.vi[c] = cube.tetrahedra[t + static_cast<std::size_t>(c)];
    mesh.m_F.Append(face);
  }
  return mesh;
}

inline double Median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

// Median wall time of `runs` calls of `work`, in seconds; `afterEach` runs untimed after each.
inline double MedianWallSeconds(int runs, const std::function<void()>& work,
                                const std::function<void()>& afterEach = {}) {
  std::vector<double> seconds;
  for (int r = 0; r < runs; ++r) {
    const auto start = std::chrono::steady_clock::now();
    work();
    seconds.push_back(
        std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    if (afterEach) afterEach();
  }
  return Median(seconds);
}

// Median processor time of the whole process (all threads), in seconds. On a shared machine it
// is a steadier estimate of the one-core cost than the wall time.
inline double MedianCpuSeconds(int runs, const std::function<void()>& work) {
  std::vector<double> seconds;
  for (int r = 0; r < runs; ++r) {
    const std::clock_t start = std::clock();
    work();
    seconds.push_back(static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC);
  }
  return Median(seconds);
}

}  // namespace brindle::bench

#endif
