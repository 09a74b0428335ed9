// The exports' contract for bad input: statuses, messages, null handles and buffers, running
// out of memory, and non-finite numbers.
#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <functional>
#include <limits>

#include "volume/volume_support.h"

namespace volume_test {
namespace {

// Each edit makes the input unusable: 21 with a null handle, before anything is allocated.
TEST(VolumeExports, RefusesBadInputBeforeAllocating) {
  const std::vector<std::pair<const char*, std::function<void(Arguments&)>>> edits = {
      {"no vertices", [](Arguments& a) { a.n = 0; }},
      {"no tetrahedra", [](Arguments& a) { a.t = 0; }},
      {"no materials", [](Arguments& a) { a.m = 0; }},
      {"no boundary", [](Arguments& a) { a.hc = a.lc = 0; }},
      {"negative vertex count", [](Arguments& a) { a.n = -4; }},
      {"negative material count", [](Arguments& a) { a.m = -1; }},
      {"negative low count beside a high list", [](Arguments& a) { a.lc = -1; }},
      {"null coordinates", [](Arguments& a) { a.xyz = nullptr; }},
      {"null tetrahedra", [](Arguments& a) { a.tets = nullptr; }},
      {"null materials", [](Arguments& a) { a.mats = nullptr; }},
      {"null conductivities", [](Arguments& a) { a.k = nullptr; }},
      {"null high list", [](Arguments& a) { a.hi = nullptr; }},
      {"corner index too big", [](Arguments& a) { a.tets[3] = 4; }},
      {"corner index negative", [](Arguments& a) { a.tets[1] = -1; }},
      {"material index too big", [](Arguments& a) { a.mats[0] = 1; }},
      {"high entry too big", [](Arguments& a) { a.hi[2] = 4; }},
      {"low entry negative", [](Arguments& a) { a.lo[0] = INT_MIN; }},
  };
  for (const auto& [name, edit] : edits) {
    Arguments arguments(SingleTetrahedron());
    edit(arguments);
    void const* handle = &arguments;
    char error[1024] = "stale";
    std::int64_t allocations = -1;
    testing::internal::CaptureStdout();
    {
      AllocationGuard guard;
      EXPECT_EQ(arguments.Call(&handle, error), 21) << name;
      allocations = guard.Count();
    }
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "entering poissonmallocvol\n") << name;
    EXPECT_EQ(handle, nullptr) << name;
    EXPECT_STREQ(error, "Error with input data") << name;
    EXPECT_EQ(allocations, 0) << name;
  }
}

TEST(VolumeExports, NullHandlesPointersAndBuffers) {
  char error[1024] = "stale";
  double values[4] = {1, 1, 1, 1};
  EXPECT_EQ(poissonsolve(nullptr, values, error), 1);
  EXPECT_STREQ(error, "Null solver handle");
  EXPECT_EQ(poissonresid(nullptr, values, error), 1);
  EXPECT_EQ(poissonresetconductivities(nullptr, values, 1, error), 1);
  EXPECT_STREQ(error, "Null solver handle");
  EXPECT_EQ(poissoninfo(nullptr, error), 7);
  EXPECT_STREQ(error, "Null solver handle");
  poissonfree(nullptr);

  Arguments arguments(SingleTetrahedron());
  testing::internal::CaptureStdout();
  EXPECT_EQ(arguments.Call(nullptr, nullptr), 21);  // nowhere to put the solver
  void const* handle = nullptr;
  EXPECT_EQ(arguments.Call(&handle, nullptr), 0);
  testing::internal::GetCapturedStdout();
  void* solver = const_cast<void*>(handle);
  EXPECT_EQ(poissonsolve(solver, nullptr, error), 1);
  EXPECT_STREQ(error, "Null temperature array");
  EXPECT_EQ(poissonresid(solver, nullptr, error), 1);
  EXPECT_STREQ(error, "Null residual pointer");
  EXPECT_EQ(poissonresetconductivities(solver, nullptr, 1, error), 1);
  EXPECT_STREQ(error, "Null conductivity array");

  // Null error buffers everywhere; one material writes no update trace.
  EXPECT_EQ(poissonsolve(solver, values, nullptr), 0);
  EXPECT_EQ(poissonresid(solver, values, nullptr), 0);
  EXPECT_EQ(poissoninfo(solver, nullptr), 0);
  testing::internal::CaptureStdout();
  EXPECT_EQ(poissonresetconductivities(solver, values, 99, nullptr), 0);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
  poissonfree(solver);
}

// Running out of memory at any allocation of creation or update ends in 30 with a null handle
// and nothing leaked (the sanitizer build checks leaks); an update that runs out leaves the
// solver as it was.
TEST(VolumeExports, OutOfMemoryIsReported) {
  const Mesh mesh = Box(2);
  Arguments arguments(mesh);
  int failures = 0;
  for (std::int64_t failAt = 0;; ++failAt) {
    void const* handle = &arguments;
    char error[1024] = "stale";
    int status = 0;
    testing::internal::CaptureStdout();
    {
      AllocationGuard guard(failAt);
      status = arguments.Call(&handle, error);
    }
    testing::internal::GetCapturedStdout();
    if (status == 0) {
      poissonfree(const_cast<void*>(handle));
      break;
    }
    ++failures;
    EXPECT_EQ(status, 30) << failAt;
    EXPECT_EQ(handle, nullptr) << failAt;
    EXPECT_STREQ(error, "Out of memory, too much mesh for your RAM") << failAt;
  }
  EXPECT_GT(failures, 5);

  Created created;
  Create(mesh, created);
  const std::vector<double> reference = Solve(created.handle, mesh.VertexCount());
  double halved = 0.5;
  for (std::int64_t failAt = 0; failAt < 4; ++failAt) {
    char error[1024] = "stale";
    int status = 0;
    {
      AllocationGuard guard(failAt);
      status = poissonresetconductivities(created.handle, &halved, 1, error);
    }
    EXPECT_EQ(status, 30) << failAt;
    EXPECT_STREQ(error, "Out of memory, too much mesh for your RAM");
    EXPECT_EQ(Solve(created.handle, mesh.VertexCount()), reference);
  }
}

// NaN or infinite numbers never crash or stall. A NaN or infinite coordinate fails the sliver
// test even at a zero tolerance. A system with non-finite entries solves at once to NaN with
// status 2, and a finite update makes the solver usable again.
TEST(VolumeExports, NonFiniteNumbers) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double inf = std::numeric_limits<double>::infinity();
  for (double value : {nan, inf}) {
    Mesh mesh = Box(2);
    mesh.coordinates[3 * 13 + 1] = value;  // the centre vertex
    mesh.tolerance = 0.0;
    Created refused;
    Create(mesh, refused);
    EXPECT_EQ(refused.status, 24);

    mesh = Box(2);
    mesh.conductivities = {value};
    Created created;
    Create(mesh, created);
    ASSERT_EQ(created.status, 0);
    const std::vector<double> t = Solve(created.handle, mesh.VertexCount());
    EXPECT_TRUE(std::isnan(t[13]));
    EXPECT_EQ(t[0], -13.1);
    EXPECT_EQ(poissoninfo(created.handle, nullptr), 2);
    double one = 1.0;
    EXPECT_EQ(poissonresetconductivities(created.handle, &one, 1, nullptr), 0);
    EXPECT_NEAR(Solve(created.handle, mesh.VertexCount())[13], 3.45, 1e-12);
    EXPECT_EQ(poissoninfo(created.handle, nullptr), 0);
  }
}

}  // namespace
}  // namespace volume_test
