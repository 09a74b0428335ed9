// Small tetrahedral meshes and a thin wrapper around the creating export for the volume tests.
#ifndef BRINDLE_TESTS_VOLUME_FIXTURES_H
#define BRINDLE_TESTS_VOLUME_FIXTURES_H

#include <brindle.h>

#include <string>
#include <vector>

namespace volume_test {

struct Mesh {
  std::vector<double> coordinates;
  std::vector<int> tetrahedra;
  std::vector<int> materials;
  std::vector<double> conductivities{1.0};
  std::vector<int> high, low;
  double tolerance = 1e-3;

  int VertexCount() const { return int(coordinates.size() / 3); }
  int TetrahedronCount() const { return int(materials.size()); }
  double X(int v) const { return coordinates[3 * v]; }
};

// Unit right tetrahedron, vertex 0 at the origin; vertex 0 low, the others high.
Mesh SingleTetrahedron();

// Box [0,1] x [0,1] x [0,1] of cells^3 cubes, 6 tetrahedra each, low face x = 0, high face
// x = 1. Interior vertices are moved by up to `jitter` of a cell in y and z, away from the
// material interface planes x = const.
Mesh Box(int cells, double jitter = 0.0);

// Result of poissonmallocvol with everything it wrote.
struct Created {
  int status = -1;
  void* handle = nullptr;
  std::string error, detail, out, err;
  ~Created() { poissonfree(handle); }
};

// Calls poissonmallocvol on the mesh, capturing both standard streams.
void Create(const Mesh& mesh, Created& created);

// Solves through poissonsolve, expecting success.
std::vector<double> Solve(void* handle, int vertexCount);

}  // namespace volume_test

#endif
