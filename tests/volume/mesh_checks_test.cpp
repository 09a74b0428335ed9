// The mesh checks as the caller sees them: code, sentence in the detail buffer, traces.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "volume/conduction_solver.h"
#include "volume/mesh_checks.h"
#include "volume/volume_fixtures.h"

namespace volume_test {
namespace {

void ExpectRefused(const Created& created, int code, const std::string& detail) {
  EXPECT_EQ(created.status, code);
  EXPECT_EQ(created.handle, nullptr);
  EXPECT_EQ(created.error, "Error constructing solver, code " + std::to_string(code));
  EXPECT_EQ(created.detail, detail);
  EXPECT_EQ(created.out,
            "entering poissonmallocvol\ndefine a new prepoisson\ndefine a new brindle\n"
            "done defining  a new brindle\n");
  EXPECT_EQ(created.err, "there was an error with the new brindle\n");
}

// Two tetrahedra side by side that share no vertex.
Mesh TwoSeparateTetrahedra() {
  Mesh mesh = SingleTetrahedron();
  for (int i = 0; i < 12; ++i)
    mesh.coordinates.push_back(mesh.coordinates[i] + (i % 3 == 0 ? 5 : 0));
  mesh.tetrahedra.insert(mesh.tetrahedra.end(), {4, 5, 6, 7});
  mesh.materials.push_back(0);
  return mesh;
}

TEST(VolumeMeshChecks, UnitTetrahedronPassesEveryCheck) {
  Created created;
  Create(SingleTetrahedron(), created);
  EXPECT_EQ(created.status, 0);
  EXPECT_EQ(created.detail, "");  // left untouched on success
  EXPECT_EQ(created.error, "");
  EXPECT_EQ(created.out,
            "entering poissonmallocvol\ndefine a new prepoisson\ndefine a new brindle\n"
            "before defining a new SpMat\ndone defining  a new brindle\n"
            "returning ffrom poissonmallocvol\n");
  EXPECT_EQ(created.err, "");
}

TEST(VolumeMeshChecks, DisconnectedMeshNamesLowestUnreachedVertex) {
  Created created;
  Create(TwoSeparateTetrahedra(), created);
  ExpectRefused(created, 22,
                "Error: The tetrahedral mesh is disconnected. Vertex 4 is not connected to "
                "vertex zero.\n");
}

// Reachability runs through several tetrahedra, and the unreached vertices interleave with the
// reached ones in numbering: the lowest of them is named.
TEST(VolumeMeshChecks, ConnectivityFollowsChainsOfTetrahedra) {
  const std::vector<brindle::Tetrahedron> chain = {
      {0, 2, 4, 6}, {6, 8, 9, 10}, {1, 3, 5, 7}, {10, 11, 12, 13}};
  EXPECT_EQ(brindle::FirstVertexUnreachableFromZero(14, chain), 1);
  const std::vector<brindle::Tetrahedron> joined = {
      {0, 2, 4, 6}, {6, 8, 9, 10}, {1, 3, 5, 7}, {10, 11, 12, 13}, {13, 7, 12, 11}};
  EXPECT_EQ(brindle::FirstVertexUnreachableFromZero(14, joined), -1);
  EXPECT_EQ(brindle::FirstVertexUnreachableFromZero(15, joined), 14);
}

TEST(VolumeMeshChecks, DegenerateTetrahedron) {
  Mesh mesh = SingleTetrahedron();
  mesh.tetrahedra = {0, 1, 1, 2, 0, 1, 2, 3};
  mesh.materials = {0, 0};
  Created created;
  Create(mesh, created);
  ExpectRefused(created, 23,
                "Error: Tetrahedron number 0 is degenerate, consisting of vertex indices 0, 1, "
                "1, 2. Please use a quality tet mesher.\n");

  // The element checks print solver positions: with vertex 4 the only fixed vertex, it moves
  // to position 0 and vertices 0 to 3 to positions 1 to 4.
  mesh.coordinates.insert(mesh.coordinates.end(), {1, 1, 1});
  mesh.tetrahedra = {0, 1, 2, 4, 1, 2, 3, 3};
  mesh.low = {4};
  mesh.high.clear();
  Created shifted;
  Create(mesh, shifted);
  EXPECT_EQ(shifted.status, 23);
  EXPECT_EQ(shifted.detail,
            "Error: Tetrahedron number 1 is degenerate, consisting of vertex indices 2, 3, 4, 4. "
            "Please use a quality tet mesher.\n");
}

TEST(VolumeMeshChecks, FlatTetrahedronIsASliver) {
  Mesh mesh = SingleTetrahedron();
  mesh.coordinates[11] = 0.0005;  // vertex 3 half a tolerance above the plane of 0, 1, 2
  Created created;
  Create(mesh, created);
  ExpectRefused(created, 24,
                "Error: There is a sliver (thin) tetrahedron. Vertex number 0 is, up to your "
                "document tolerance 0.001000, on the same plane as the other tetrahedral "
                "vertices 1, 2, 3 of tetrahedron number 0.\n");

  // Vertex 1 close to the plane of the large face 0-2-3 while the small face 1-2-3 keeps
  // vertex 0 well away: the first apex passes and the second one fails, listing the other
  // three in tetrahedron order.
  Mesh second = SingleTetrahedron();
  second.coordinates = {0, 0, 0, 9, 0.5, 0.0005, 10, 0, 0, 10, 1, 0};
  Created created2;
  Create(second, created2);
  EXPECT_EQ(created2.status, 24);
  EXPECT_EQ(created2.detail,
            "Error: There is a sliver (thin) tetrahedron. Vertex number 1 is, up to your "
            "document tolerance 0.001000, on the same plane as the other tetrahedral vertices "
            "0, 2, 3 of tetrahedron number 0.\n");
}

// A face whose normal is shorter than 1e-20 gets the height 1e-20: it passes a zero tolerance
// and fails any tolerance above 1e-20. A NaN tolerance fails like a NaN height.
TEST(VolumeMeshChecks, ShortNormalAndNaNTolerance) {
  Mesh tiny = SingleTetrahedron();
  for (double& c : tiny.coordinates)
    c *= 1e-12;
  tiny.tolerance = 0.0;
  Created passes;
  Create(tiny, passes);
  EXPECT_EQ(passes.status, 0) << passes.detail;

  tiny.tolerance = 1e-19;
  Created fails;
  Create(tiny, fails);
  EXPECT_EQ(fails.status, 24);

  Mesh nanTolerance = SingleTetrahedron();
  nanTolerance.tolerance = std::numeric_limits<double>::quiet_NaN();
  Created nan;
  Create(nanTolerance, nan);
  EXPECT_EQ(nan.status, 24);
  EXPECT_NE(nan.detail.find("document tolerance nan,"), std::string::npos) << nan.detail;
}

// The update repeats the element checks; a failed one reports its code and sentence and keeps
// the previous matrices. Geometry and tolerance do not change after a successful build, so
// only an object whose own build failed shows this.
TEST(VolumeMeshChecks, UpdateReportsFailedElementCheck) {
  Mesh mesh = SingleTetrahedron();
  mesh.coordinates[11] = 0.0005;
  brindle::prepoisson model(mesh.VertexCount(), mesh.coordinates.data(), 1, mesh.tetrahedra.data(),
                            mesh.materials.data(), 1, mesh.conductivities.data(), 3,
                            mesh.high.data(), 1, mesh.low.data());
  int code = -1;
  char detail[2000] = "";
  testing::internal::CaptureStdout();
  brindle::brindle solver(std::move(model), 1e-3, &code, detail);
  testing::internal::GetCapturedStdout();
  ASSERT_EQ(code, 24);
  std::string message;
  EXPECT_EQ(solver.UpdateConductivities({5.0}, message), 24);
  EXPECT_EQ(message, detail);
  EXPECT_EQ(solver.FreeMatrix().nonZeros(), 0);
}

}  // namespace
}  // namespace volume_test
