// Writes the seed inputs of the fuzz harnesses: small valid studies in each harness's byte
// layout, so that fuzzing starts from inputs that reach the solvers and the cut.
// Usage: make_fuzz_corpus <corpus directory>; each harness gets <dir>/<harness>/seed-* and the
// reproducers of fixed findings <dir>/<harness>/repro-*.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <limits>
#include <string>
#include <vector>

#include "fuzz_bytes.h"

namespace {

namespace fs = std::filesystem;
using fuzz::ByteWriter;
using fuzz::SeedMesh;

fs::path corpusRoot;

void Save(const std::string& harness, const std::string& name, const ByteWriter& out) {
  const fs::path dir = corpusRoot / harness;
  fs::create_directories(dir);
  std::ofstream file(dir / name, std::ios::binary);
  file.write(reinterpret_cast<const char*>(out.bytes.data()),
             static_cast<std::streamsize>(out.bytes.size()));
}

// The unit cube of side `s` split into six tetrahedra around its diagonal 0-6.
SeedMesh Cube(int s) {
  SeedMesh m;
  for (int k = 0; k < 8; ++k)
    m.points.emplace_back(s * ((k == 1 || k == 2 || k == 5 || k == 6) ? 1 : 0),
                          s * ((k == 2 || k == 3 || k == 6 || k == 7) ? 1 : 0),
                          s * (k >= 4 ? 1 : 0));
  m.faces = {{0, 1, 2, 6}, {0, 2, 3, 6}, {0, 3, 7, 6}, {0, 7, 4, 6}, {0, 4, 5, 6}, {0, 5, 1, 6}};
  return m;
}

// An nx x ny grid of triangles, the bottom row held at 0, the top row at 1.
SeedMesh Grid(int nx, int ny, int cell) {
  SeedMesh m;
  for (int j = 0; j <= ny; ++j) {
    for (int i = 0; i <= nx; ++i) {
      m.points.emplace_back(i * cell, j * cell, 0);
      m.colors.push_back(j == 0 ? 0 : j == ny ? 2 : 3);
    }
  }
  for (int j = 0; j < ny; ++j) {
    for (int i = 0; i < nx; ++i) {
      const int k = j * (nx + 1) + i;
      m.faces.push_back({k, k + 1, k + nx + 2});
      m.faces.push_back({k, k + nx + 2, k + nx + 1});
    }
  }
  return m;
}

void VolumeSeeds() {
  const SeedMesh cube = Cube(10);
  for (int variant = 0; variant < 3; ++variant) {
    ByteWriter out;
    out.Byte(variant == 2 ? 4 : 0);  // mode: raw conductivities in the last variant
    out.Byte(8);                     // vertices
    out.Byte(6);                     // tetrahedra
    out.Byte(2);                     // materials
    out.Byte(4);                     // high
    out.Byte(4);                     // low
    out.Flag(false);                 // default tolerance
    out.Byte(0);
    for (const ON_3dPoint& p : cube.points) {
      for (int a = 0; a < 3; ++a)
        out.Byte(static_cast<std::uint8_t>(p[a]));
    }
    out.Byte(0);
    for (const auto& t : cube.faces) {
      for (int v : t)
        out.Byte(static_cast<std::uint8_t>(v));
    }
    out.Byte(0);
    for (int t = 0; t < 6; ++t)
      out.Byte(static_cast<std::uint8_t>(t % 2));
    out.Byte(0);
    if (variant == 2) {
      out.Double(1.0);
      out.Double(std::numeric_limits<double>::quiet_NaN());
    } else {
      out.Byte(3);  // 1.0
      out.Byte(variant == 0 ? 3 : 11);
    }
    out.Byte(0);
    for (int v : {4, 5, 6, 7})
      out.Byte(static_cast<std::uint8_t>(v));
    out.Byte(0);
    for (int v : {0, 1, 2, 3})
      out.Byte(static_cast<std::uint8_t>(v));
    out.Byte(0);  // handle slot present
    out.Byte(5);  // steps: solve, resid, info, new conductivities, solve
    for (int op : {0, 1, 2, 3})
      out.Byte(static_cast<std::uint8_t>(op));
    out.Byte(7);
    out.Byte(1);
    out.Int(2);
    out.Byte(0);
    Save("volume", "seed-cube-" + std::to_string(variant), out);
  }
}

void WriteSolve(ByteWriter& out, int levels) {
  out.Flag(false);  // solve
  out.Flag(false);  // matching temperature count
  out.Byte(0);      // temperatures present
  out.Byte(static_cast<std::uint8_t>(levels));
  for (int i = 0; i < levels; ++i) {
    out.Flag(false);
    out.Byte(static_cast<std::uint8_t>(255 * (i + 1) / (levels + 1)));
  }
  out.Byte(0);  // every output requested
}

void SurfaceSeeds() {
  for (int method = 0; method < 4; ++method) {
    const SeedMesh grid = Grid(3, 3, 2);
    ByteWriter out;
    fuzz::WriteMesh(out, grid);
    out.Flag(false);
    out.Byte(static_cast<std::uint8_t>(method));
    out.Byte(0);  // small regions, present, mesh present
    for (std::size_t f = 0; f <= grid.faces.size(); ++f)
      out.Byte(static_cast<std::uint8_t>(f < 6 ? 0 : 1));
    out.Byte(0);  // handle slot present
    out.Byte(2);  // three steps
    WriteSolve(out, 3);
    out.Flag(true);  // update
    out.Byte(2);
    out.Flag(false);
    out.Byte(1);
    out.Flag(false);
    out.Byte(5);
    out.Byte(0);
    WriteSolve(out, 1);
    Save("surface", "seed-grid-method" + std::to_string(method), out);
  }
}

void CuttingSeeds() {
  const SeedMesh cube = Cube(4);
  for (int variant = 0; variant < 4; ++variant) {
    ByteWriter out;
    const bool surface = variant >= 2;
    const SeedMesh mesh = surface ? Grid(4, 4, 1) : cube;
    fuzz::WriteMesh(out, mesh);
    const bool clip = variant == 1;
    out.Byte(static_cast<std::uint8_t>((clip ? 32 : 0) | (variant == 0 ? 16 : 0)));
    out.Byte(static_cast<std::uint8_t>(variant == 3 ? 2 : 0));  // keepRef
    for (std::size_t v = 0; v <= mesh.points.size(); ++v) {
      // A plane through the mesh, off the vertices.
      const double x = v < mesh.points.size() ? mesh.points[v].x : 0.0;
      out.Byte(static_cast<std::uint8_t>(128 + static_cast<int>(32 * (x - 1.3))));
    }
    Save("cutting", "seed-plane-" + std::to_string(variant), out);
  }
}

void MeshtoolSeeds() {
  const SeedMesh cube = Cube(3);
  const SeedMesh grid = Grid(2, 2, 1);
  for (int tool = 0; tool < 6; ++tool) {
    ByteWriter out;
    out.Byte(static_cast<std::uint8_t>(tool));
    fuzz::WriteMesh(out, tool == 5 || tool == 3 ? grid : cube);
    out.Byte(0);
    out.Byte(0);
    Save("meshtools", "seed-tool" + std::to_string(tool), out);
  }
  ByteWriter rect;
  rect.Byte(6);
  rect.Byte(0);  // world plane, small sizes
  rect.Byte(3);
  rect.Byte(1);
  rect.Byte(5);
  rect.Byte(4);
  Save("meshtools", "seed-rect", rect);
}

void EncodingSeeds() {
  for (int value : {0, 1, 255, 65534, -1}) {
    ByteWriter out;
    out.Byte(0);
    out.Double(value / 65534.0);
    out.Int(value);
    out.Float(0.6f);
    out.Float(0.0f);
    out.Float(0.8f);
    Save("encodings", "seed-value" + std::to_string(value), out);
  }
}

// Inputs of fixed findings, kept so that every run replays them.
void Reproducers() {
  {
    // A grid whose vertex and colour arrays cannot be reserved.
    ByteWriter out;
    out.Byte(6);
    out.Byte(0);
    out.Byte(3);
    out.Byte(1);
    out.Byte(200);
    out.Int(30000);
    out.Byte(200);
    out.Int(30000);
    Save("meshtools", "repro-rect-unreservable", out);
  }
  {
    // Region numbers INT_MAX and 3e8 on a few faces, then an update.
    const SeedMesh grid = Grid(2, 2, 2);
    ByteWriter out;
    fuzz::WriteMesh(out, grid);
    out.Flag(false);
    out.Byte(1);
    out.Byte(1);  // raw region numbers
    for (std::size_t f = 0; f <= grid.faces.size(); ++f)
      out.Int(f % 2 ? 2147483647 : 300000000);
    out.Byte(0);
    out.Byte(1);
    out.Flag(true);
    out.Byte(3);
    for (int i = 0; i < 3; ++i) {
      out.Flag(false);
      out.Byte(1);
    }
    out.Byte(0);
    WriteSolve(out, 2);
    Save("surface", "repro-region-intmax", out);
  }
  {
    // A nearly flat tetrahedron: the level-set call stops with a low failure.
    SeedMesh flat;
    flat.points = {ON_3dPoint(0, 20, 0), ON_3dPoint(15, 20, 0), ON_3dPoint(0, 30, 0),
                   ON_3dPoint(5, 25, 1e-40)};
    flat.faces = {{0, 1, 2, 3}};
    ByteWriter out;
    fuzz::WriteMesh(out, flat);
    out.Byte(16);
    out.Byte(0);
    for (int v : {160, 160, 160, 96, 128})
      out.Byte(static_cast<std::uint8_t>(v));
    Save("cutting", "repro-flat-tetrahedron", out);
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: make_fuzz_corpus <corpus directory>\n");
    return 2;
  }
  corpusRoot = argv[1];
  VolumeSeeds();
  SurfaceSeeds();
  CuttingSeeds();
  MeshtoolSeeds();
  EncodingSeeds();
  Reproducers();
  return 0;
}
