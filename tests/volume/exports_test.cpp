// The exports' contract for bad input: statuses, messages, null handles and buffers, running
// out of memory, and non-finite numbers.
#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <functional>
#include <limits>

#include "volume/allocation_guard.h"
#include "volume/volume_fixtures.h"

namespace volume_test {
namespace {

// Arguments of poissonmallocvol, editable one by one.
struct Arguments {
  explicit Arguments(const Mesh& m)
      : mesh(m),
        vertexCount(mesh.VertexCount()),
        coordinates(mesh.coordinates.data()),
        tetrahedronCount(mesh.TetrahedronCount()),
        tetrahedra(mesh.tetrahedra.data()),
        materials(mesh.materials.data()),
        materialCount(int(mesh.conductivities.size())),
        conductivities(mesh.conductivities.data()),
        highCount(int(mesh.high.size())),
        high(mesh.high.data()),
        lowCount(int(mesh.low.size())),
        low(mesh.low.data()) {}

  int Call(void const** handle, char* error) {
    char detail[2000];
    return poissonmallocvol(vertexCount, coordinates, tetrahedronCount, tetrahedra, materials,
                            materialCount, conductivities, highCount, high, lowCount, low, 1e-3,
                            nullptr, detail, handle, error);
  }

  Mesh mesh;
  int vertexCount;
  double* coordinates;
  int tetrahedronCount;
  int* tetrahedra;
  int* materials;
  int materialCount;
  double* conductivities;
  int highCount;
  int* high;
  int lowCount;
  int* low;
};

// Each edit makes the input unusable; the export must refuse it with 21 before allocating.
TEST(VolumeExports, RefusesBadInputBeforeAllocating) {
  const std::vector<std::pair<const char*, std::function<void(Arguments&)>>> edits = {
      {"no vertices", [](Arguments& a) { a.vertexCount = 0; }},
      {"no tetrahedra", [](Arguments& a) { a.tetrahedronCount = 0; }},
      {"no materials", [](Arguments& a) { a.materialCount = 0; }},
      {"no boundary", [](Arguments& a) { a.highCount = a.lowCount = 0; }},
      {"negative vertex count", [](Arguments& a) { a.vertexCount = -4; }},
      {"negative tetrahedron count", [](Arguments& a) { a.tetrahedronCount = -1; }},
      {"negative material count", [](Arguments& a) { a.materialCount = -1; }},
      {"negative high count", [](Arguments& a) { a.highCount = -1; }},
      {"negative low count hidden by high count", [](Arguments& a) { a.lowCount = -1; }},
      {"null coordinates", [](Arguments& a) { a.coordinates = nullptr; }},
      {"null tetrahedra", [](Arguments& a) { a.tetrahedra = nullptr; }},
      {"null materials", [](Arguments& a) { a.materials = nullptr; }},
      {"null conductivities", [](Arguments& a) { a.conductivities = nullptr; }},
      {"null high list", [](Arguments& a) { a.high = nullptr; }},
      {"null low list", [](Arguments& a) { a.low = nullptr; }},
      {"corner index too big", [](Arguments& a) { a.tetrahedra[3] = 4; }},
      {"corner index negative", [](Arguments& a) { a.tetrahedra[1] = -1; }},
      {"material index too big", [](Arguments& a) { a.materials[0] = 1; }},
      {"material index negative", [](Arguments& a) { a.materials[0] = -1; }},
      {"high entry too big", [](Arguments& a) { a.high[2] = 4; }},
      {"low entry negative", [](Arguments& a) { a.low[0] = INT_MIN; }},
  };
  for (const auto& [name, edit] : edits) {
    Arguments arguments(SingleTetrahedron());
    edit(arguments);
    void const* handle = &arguments;
    char error[1024] = "stale";
    testing::internal::CaptureStdout();
    std::int64_t allocations = 0;
    int status = 0;
    {
      AllocationGuard guard;
      status = arguments.Call(&handle, error);
      allocations = guard.Count();
    }
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "entering poissonmallocvol\n") << name;
    EXPECT_EQ(status, 21) << name;
    EXPECT_EQ(handle, nullptr) << name;
    EXPECT_STREQ(error, "Error with input data") << name;
    EXPECT_EQ(allocations, 0) << name;
  }
}

TEST(VolumeExports, NullHandleOutputAndNullErrorBuffers) {
  Arguments arguments(SingleTetrahedron());
  testing::internal::CaptureStdout();
  EXPECT_EQ(arguments.Call(nullptr, nullptr), 21);
  void const* handle = nullptr;
  EXPECT_EQ(arguments.Call(&handle, nullptr), 0);
  testing::internal::GetCapturedStdout();
  void* solver = const_cast<void*>(handle);
  double temperatures[4], residual = -1, conductivity = 2.0;
  EXPECT_EQ(poissonsolve(solver, temperatures, nullptr), 0);
  EXPECT_EQ(poissonresid(solver, &residual, nullptr), 0);
  EXPECT_EQ(poissoninfo(solver, nullptr), 0);
  EXPECT_EQ(poissonresetconductivities(solver, &conductivity, 1, nullptr), 0);
  poissonfree(solver);
}

TEST(VolumeExports, NullSolverHandle) {
  char error[1024] = "stale";
  double values[4] = {1, 1, 1, 1};
  EXPECT_EQ(poissonsolve(nullptr, values, error), 1);
  EXPECT_STREQ(error, "Null solver handle");
  EXPECT_EQ(poissonresid(nullptr, values, error), 1);
  EXPECT_STREQ(error, "Null solver handle");
  EXPECT_EQ(poissonresetconductivities(nullptr, values, 1, error), 1);
  EXPECT_STREQ(error, "Null solver handle");
  EXPECT_EQ(poissoninfo(nullptr, error), 7);
  EXPECT_STREQ(error, "Null solver handle");
  EXPECT_EQ(poissonsolve(nullptr, values, nullptr), 1);
  EXPECT_EQ(poissoninfo(nullptr, nullptr), 7);
  poissonfree(nullptr);
  EXPECT_EQ(values[0], 1.0);
}

TEST(VolumeExports, NullOutputArrays) {
  Created created;
  Create(SingleTetrahedron(), created);
  ASSERT_EQ(created.status, 0);
  char error[1024];
  EXPECT_EQ(poissonsolve(created.handle, nullptr, error), 1);
  EXPECT_STREQ(error, "Null temperature array");
  EXPECT_EQ(poissonresid(created.handle, nullptr, error), 1);
  EXPECT_STREQ(error, "Null residual pointer");
  EXPECT_EQ(poissonresetconductivities(created.handle, nullptr, 1, error), 1);
  EXPECT_STREQ(error, "Null conductivity array");
}

// An update writes its trace only with two or more materials, reads as many values as there
// are materials whatever the count argument says, and leaves the temperatures to the next
// solve.
TEST(VolumeExports, ConductivityUpdate) {
  Mesh mesh = Box(2);
  Created single;
  Create(mesh, single);
  ASSERT_EQ(single.status, 0);
  double scaled = 7.0;
  testing::internal::CaptureStdout();
  EXPECT_EQ(poissonresetconductivities(single.handle, &scaled, 99, nullptr), 0);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");

  mesh.conductivities = {1.0, 2.0};
  for (int t = 0; t < mesh.TetrahedronCount(); ++t) {
    if (mesh.X(mesh.tetrahedra[4 * t]) + mesh.X(mesh.tetrahedra[4 * t + 3]) < 1.0)
      mesh.materials[t] = 1;
  }
  Created two;
  Create(mesh, two);
  ASSERT_EQ(two.status, 0);
  const std::vector<double> before = Solve(two.handle, mesh.VertexCount());
  double conductivities[] = {3.0, 4.0};
  char error[1024] = "stale";
  testing::internal::CaptureStdout();
  EXPECT_EQ(poissonresetconductivities(two.handle, conductivities, 0, error), 0);
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "Updating conductivities to 3.000000 4.000000\n");
  EXPECT_STREQ(error, "");
  double residual = 0;
  poissonresid(two.handle, &residual, nullptr);
  EXPECT_GT(residual, 1e-6);  // old temperatures, new matrices
  EXPECT_NE(Solve(two.handle, mesh.VertexCount()), before);
}

// Running out of memory at any allocation of creation or update ends in 30 with a null handle
// and nothing leaked (the sanitizer build checks the leaks); an update that runs out leaves the
// solver as it was.
TEST(VolumeExports, OutOfMemoryIsReported) {
  const Mesh mesh = Box(2);
  Arguments arguments(mesh);
  int failures = 0;
  for (std::int64_t failAt = 0;; ++failAt) {
    void const* handle = &arguments;
    char error[1024] = "stale";
    testing::internal::CaptureStdout();
    int status = 0;
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

// NaN or infinite numbers never crash or stall. A NaN coordinate fails the sliver test even
// at a zero tolerance (its height is NaN). A system with non-finite entries solves at once to
// NaN with status 2, and a finite update makes the solver usable again.
TEST(VolumeExports, NonFiniteNumbers) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double inf = std::numeric_limits<double>::infinity();
  for (double tolerance : {1e-3, 0.0}) {
    Mesh nanPoint = Box(2);
    nanPoint.coordinates[3 * 13] = nan;  // the centre vertex
    nanPoint.tolerance = tolerance;
    Created refused;
    Create(nanPoint, refused);
    EXPECT_EQ(refused.status, 24);
  }
  Mesh farPoint = Box(2);
  farPoint.coordinates[3 * 13 + 1] = inf;
  Created far;
  Create(farPoint, far);
  EXPECT_EQ(far.status, 24);

  for (double conductivity : {inf, nan}) {
    Mesh mesh = Box(2);
    mesh.conductivities = {conductivity};
    Created created;
    Create(mesh, created);
    ASSERT_EQ(created.status, 0);
    const std::vector<double> t = Solve(created.handle, mesh.VertexCount());
    EXPECT_TRUE(std::isnan(t[13]));
    EXPECT_EQ(t[0], -13.1);
    EXPECT_EQ(poissoninfo(created.handle, nullptr), 2);
    // A finite update makes the same solver usable again.
    double one = 1.0;
    EXPECT_EQ(poissonresetconductivities(created.handle, &one, 1, nullptr), 0);
    EXPECT_NEAR(Solve(created.handle, mesh.VertexCount())[13], 3.45, 1e-12);
    EXPECT_EQ(poissoninfo(created.handle, nullptr), 0);
  }
}

// Repeated tetrahedra and list entries are taken as given: a tetrahedron listed twice counts
// twice, like one of double conductivity; a repeated low entry changes nothing.
TEST(VolumeExports, RepeatedEntries) {
  Mesh doubled = Box(2, 0.2);
  doubled.tetrahedra.insert(doubled.tetrahedra.end(), doubled.tetrahedra.begin(),
                            doubled.tetrahedra.begin() + 8);
  doubled.materials.insert(doubled.materials.end(), {0, 0});
  doubled.low.insert(doubled.low.end(), doubled.low.begin(), doubled.low.end());
  Mesh stiffer = Box(2, 0.2);
  stiffer.conductivities = {1.0, 2.0};
  stiffer.materials[0] = stiffer.materials[1] = 1;

  Created a, b;
  Create(doubled, a);
  Create(stiffer, b);
  ASSERT_EQ(a.status, 0);
  ASSERT_EQ(b.status, 0);
  const std::vector<double> ta = Solve(a.handle, doubled.VertexCount());
  const std::vector<double> tb = Solve(b.handle, stiffer.VertexCount());
  for (std::size_t v = 0; v < ta.size(); ++v)
    EXPECT_NEAR(ta[v], tb[v], 1e-12) << v;
  EXPECT_GT(std::fabs(ta[13] - 3.45), 1e-3);  // the extra stiffness does show
}

}  // namespace
}  // namespace volume_test
