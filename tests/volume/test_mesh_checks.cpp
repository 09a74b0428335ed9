// The mesh checks as the caller sees them: code, sentence in the detail buffer, traces.
#include <gtest/gtest.h>

#include <functional>
#include <limits>

#include "volume/mesh_checks.h"
#include "volume/volume_support.h"

namespace volume_test {
namespace {

const char kCheckTrace[] =
    "entering poissonmallocvol\ndefine a new prepoisson\ndefine a new brindle\n";

// Each mesh fails one check: code, sentence, traces, and no handle. The unit tetrahedron, and
// a tiny one at a zero tolerance, pass every check and leave the detail buffer untouched.
TEST(VolumeMeshChecks, RefusalsNameTheFirstFault) {
  struct Case {
    const char* name;
    std::function<void(Mesh&)> edit;
    int code;
    std::string detail;
  };
  const std::string sliver = "Error: There is a sliver (thin) tetrahedron. Vertex number ";
  const std::vector<Case> cases = {
      {"second tetrahedron apart",
       [](Mesh& m) {
         for (int i = 0; i < 12; ++i)
           m.coordinates.push_back(m.coordinates[i] + (i % 3 == 0 ? 5 : 0));
         m.tetrahedra.insert(m.tetrahedra.end(), {4, 5, 6, 7});
         m.materials.push_back(0);
       },
       22,
       "Error: The tetrahedral mesh is disconnected. Vertex 4 is not connected to vertex "
       "zero.\n"},
      {"repeated corner",
       [](Mesh& m) {
         m.tetrahedra = {0, 1, 1, 2, 0, 1, 2, 3};
         m.materials = {0, 0};
       },
       23,
       "Error: Tetrahedron number 0 is degenerate, consisting of vertex indices 0, 1, 1, 2. "
       "Please use a quality tet mesher.\n"},
      // The element checks print solver positions: with vertex 4 the only fixed vertex, it
      // moves to position 0 and vertices 0 to 3 to positions 1 to 4.
      {"repeated corner, renumbered",
       [](Mesh& m) {
         m.coordinates.insert(m.coordinates.end(), {1, 1, 1});
         m.tetrahedra = {0, 1, 2, 4, 1, 2, 3, 3};
         m.materials = {0, 0};
         m.low = {4};
         m.high.clear();
       },
       23,
       "Error: Tetrahedron number 1 is degenerate, consisting of vertex indices 2, 3, 4, 4. "
       "Please use a quality tet mesher.\n"},
      {"vertex 3 half a tolerance above the base", [](Mesh& m) { m.coordinates[11] = 0.0005; }, 24,
       sliver + "0 is, up to your document tolerance 0.001000, on the same plane as the other "
                "tetrahedral vertices 1, 2, 3 of tetrahedron number 0.\n"},
      // Vertex 1 close to the plane of the large face 0-2-3 while the small face 1-2-3 keeps
      // vertex 0 well away: the second apex fails, listing the others in tetrahedron order.
      {"second apex flat",
       [](Mesh& m) { m.coordinates = {0, 0, 0, 9, 0.5, 0.0005, 10, 0, 0, 10, 1, 0}; }, 24,
       sliver + "1 is, up to your document tolerance 0.001000, on the same plane as the other "
                "tetrahedral vertices 0, 2, 3 of tetrahedron number 0.\n"},
      // A face normal shorter than 1e-20 gives the height 1e-20, which fails any larger
      // tolerance (and passes a zero one, below).
      {"tiny tetrahedron",
       [](Mesh& m) {
         for (double& c : m.coordinates)
           c *= 1e-12;
         m.tolerance = 1e-19;
       },
       24,
       sliver + "0 is, up to your document tolerance 0.000000, on the same plane as the other "
                "tetrahedral vertices 1, 2, 3 of tetrahedron number 0.\n"},
      {"NaN tolerance", [](Mesh& m) { m.tolerance = std::numeric_limits<double>::quiet_NaN(); }, 24,
       sliver + "0 is, up to your document tolerance nan, on the same plane as the other "
                "tetrahedral vertices 1, 2, 3 of tetrahedron number 0.\n"},
  };
  for (const Case& c : cases) {
    Mesh mesh = SingleTetrahedron();
    c.edit(mesh);
    Created created;
    Create(mesh, created);
    EXPECT_EQ(created.status, c.code) << c.name;
    EXPECT_EQ(created.handle, nullptr) << c.name;
    EXPECT_EQ(created.error, "Error constructing solver, code " + std::to_string(c.code)) << c.name;
    EXPECT_EQ(created.detail, c.detail) << c.name;
    EXPECT_EQ(created.out, std::string(kCheckTrace) + "done defining  a new brindle\n") << c.name;
    EXPECT_EQ(created.err, "there was an error with the new brindle\n") << c.name;
  }

  for (double scale : {1.0, 1e-12}) {
    Mesh mesh = SingleTetrahedron();
    for (double& c : mesh.coordinates)
      c *= scale;
    mesh.tolerance = scale == 1.0 ? 1e-3 : 0.0;
    Created created;
    Create(mesh, created);
    EXPECT_EQ(created.status, 0) << created.detail;
    EXPECT_EQ(created.detail + created.error + created.err, "");
    EXPECT_EQ(created.out, std::string(kCheckTrace) +
                               "before defining a new SpMat\ndone defining  a new brindle\n"
                               "returning ffrom poissonmallocvol\n");
  }
}

// Reachability runs through several tetrahedra, and the unreached vertices interleave with the
// reached ones in numbering: the lowest of them is named.
TEST(VolumeMeshChecks, ConnectivityFollowsChainsOfTetrahedra) {
  std::vector<brindle::Tetrahedron> mesh = {
      {0, 2, 4, 6}, {6, 8, 9, 10}, {1, 3, 5, 7}, {10, 11, 12, 13}};
  EXPECT_EQ(brindle::FirstVertexUnreachableFromZero(14, mesh), 1);
  mesh.push_back({13, 7, 12, 11});
  EXPECT_EQ(brindle::FirstVertexUnreachableFromZero(14, mesh), -1);
  EXPECT_EQ(brindle::FirstVertexUnreachableFromZero(15, mesh), 14);
}

}  // namespace
}  // namespace volume_test
