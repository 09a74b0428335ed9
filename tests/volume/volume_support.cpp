#include "volume/volume_support.h"

#include <gtest/gtest.h>

#include <cmath>

namespace volume_test {

Mesh SingleTetrahedron() {
  Mesh mesh;
  mesh.coordinates = {0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1};
  mesh.tetrahedra = {0, 1, 2, 3};
  mesh.materials = {0};
  mesh.low = {0};
  mesh.high = {1, 2, 3};
  return mesh;
}

Mesh Box(int cells, double jitter) {
  Mesh mesh;
  const int side = cells + 1;
  auto index = [side](int i, int j, int k) { return i + side * (j + side * k); };
  for (int k = 0; k < side; ++k) {
    for (int j = 0; j < side; ++j) {
      for (int i = 0; i < side; ++i) {
        double y = double(j) / cells, z = double(k) / cells;
        if (j > 0 && j < cells && k > 0 && k < cells) {
          // Deterministic, irregular displacement that keeps every cell convex.
          y += jitter / cells * std::sin(1.7 * i + 2.3 * j + 0.9 * k);
          z += jitter / cells * std::cos(0.8 * i + 1.1 * j + 2.9 * k);
        }
        mesh.coordinates.insert(mesh.coordinates.end(), {double(i) / cells, y, z});
        if (i == 0) mesh.low.push_back(index(i, j, k));
        if (i == cells) mesh.high.push_back(index(i, j, k));
      }
    }
  }
  static const int kCellTetrahedra[6][4] = {{0, 1, 3, 7}, {0, 1, 5, 7}, {0, 2, 3, 7},
                                            {0, 2, 6, 7}, {0, 4, 5, 7}, {0, 4, 6, 7}};
  for (int k = 0; k < cells; ++k) {
    for (int j = 0; j < cells; ++j) {
      for (int i = 0; i < cells; ++i) {
        for (const auto& tet : kCellTetrahedra) {
          for (int c : tet)
            mesh.tetrahedra.push_back(index(i + (c & 1), j + ((c >> 1) & 1), k + ((c >> 2) & 1)));
          mesh.materials.push_back(0);
        }
      }
    }
  }
  return mesh;
}

int Arguments::Call(void const** handle, char* error, char* detail) {
  char scratch[2000];
  return poissonmallocvol(n, xyz, t, tets, mats, m, k, hc, hi, lc, lo, mesh.tolerance, nullptr,
                          detail ? detail : scratch, handle, error);
}

void Create(const Mesh& mesh, Created& created) {
  Arguments arguments(mesh);
  char error[1024] = "stale";
  char detail[2000] = "";
  void const* handle = reinterpret_cast<void const*>(&created);  // must be overwritten
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  created.status = arguments.Call(&handle, error, detail);
  created.out = testing::internal::GetCapturedStdout();
  created.err = testing::internal::GetCapturedStderr();
  created.handle = const_cast<void*>(handle);
  created.error = error;
  created.detail = detail;
}

std::vector<double> Solve(void* handle, int vertexCount) {
  std::vector<double> temperatures(vertexCount, -999.0);
  char error[1024] = "stale";
  testing::internal::CaptureStdout();
  const int status = poissonsolve(handle, temperatures.data(), error);
  testing::internal::GetCapturedStdout();
  EXPECT_EQ(status, 0);
  EXPECT_STREQ(error, "");
  return temperatures;
}

}  // namespace volume_test
