// Small tetrahedral meshes, a thin wrapper around the creating export and an allocation guard
// for the volume tests.
#ifndef BRINDLE_TESTS_VOLUME_VOLUME_SUPPORT_H
#define BRINDLE_TESTS_VOLUME_VOLUME_SUPPORT_H

#include <brindle.h>

#include <cstdint>
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

// The arguments of poissonmallocvol, editable one by one.
struct Arguments {
  explicit Arguments(const Mesh& m) : mesh(m) {}
  int Call(void const** handle, char* error, char* detail = nullptr);
  Mesh mesh;
  int n = mesh.VertexCount(), t = mesh.TetrahedronCount(), m = int(mesh.conductivities.size());
  int hc = int(mesh.high.size()), lc = int(mesh.low.size());
  double *xyz = mesh.coordinates.data(), *k = mesh.conductivities.data();
  int *tets = mesh.tetrahedra.data(), *mats = mesh.materials.data();
  int *hi = mesh.high.data(), *lo = mesh.low.data();
};

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

// While alive, counts operator-new allocations; the allocation with index `failAt` (0-based)
// and every one after it throw std::bad_alloc. A negative failAt only counts. Shows that an
// export allocates nothing before refusing bad input and reports running out of memory.
class AllocationGuard {
 public:
  explicit AllocationGuard(std::int64_t failAt = -1);
  ~AllocationGuard();
  std::int64_t Count() const;
};

}  // namespace volume_test

#endif
