// Owning wrappers and solve helpers for the surface solver tests.
#ifndef BRINDLE_TESTS_SLDM_TEST_SUPPORT_H
#define BRINDLE_TESTS_SLDM_TEST_SUPPORT_H

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "brindle.h"
#include "opennurbs.h"

namespace brindle {
namespace testing {

struct SolverDeleter {
  void operator()(void* handle) const { sldmfree(handle); }
};
using SolverHandle = std::unique_ptr<void, SolverDeleter>;

// Creates a solver and expects success; method 0's trace lines are swallowed.
inline SolverHandle CreateSolver(const ON_Mesh& mesh, int method,
                                 const std::vector<int>& regions = {}) {
  void* handle = nullptr;
  char error[1024] = "stale";
  ::testing::internal::CaptureStdout();
  const int status =
      sldmMalloc(&mesh, regions.empty() ? nullptr : regions.data(), method, &handle, error);
  ::testing::internal::GetCapturedStdout();
  EXPECT_EQ(status, 0) << error;
  EXPECT_STREQ(error, "");
  return SolverHandle(handle);
}

inline int Update(void* handle, const std::vector<double>& conductivities) {
  ::testing::internal::CaptureStdout();
  const int status =
      sldmupdate(handle, conductivities.data(), static_cast<int>(conductivities.size()), nullptr);
  ::testing::internal::GetCapturedStdout();
  return status;
}

// Everything one full solve produces.
struct Solution {
  std::vector<double> temperature;
  std::vector<double> faceFlux;
  std::vector<double> levelFlow;
  ON_SimpleArray<ON_Line> isotherms;
  ON_Mesh fluxMesh;
};

inline std::unique_ptr<Solution> SolveAll(const void* handle, const ON_Mesh& mesh,
                                          std::vector<double> levels = {}) {
  auto s = std::make_unique<Solution>();
  s->temperature.assign(mesh.VertexCount(), -7.0);
  s->faceFlux.assign(3 * mesh.FaceCount(), -7.0);
  s->levelFlow.assign(levels.size(), -7.0);
  // Face flux needs a level-flow array even when no level is asked for.
  double unusedFlow = -7.0;
  double* levelFlow = levels.empty() ? &unusedFlow : s->levelFlow.data();
  char error[1024];
  const int status = sldmsolve(
      handle, s->temperature.data(), mesh.VertexCount(), levels.empty() ? nullptr : levels.data(),
      static_cast<int>(levels.size()), &s->isotherms, s->faceFlux.data(),
      static_cast<int>(s->faceFlux.size()), levelFlow, &s->fluxMesh, error);
  EXPECT_EQ(status, 0) << error;
  return s;
}

}  // namespace testing
}  // namespace brindle

#endif
