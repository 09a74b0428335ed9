// Meshes and materials of a study, in the form the tool hands to the solvers.
#ifndef BRINDLE_STUDY_MODEL_H
#define BRINDLE_STUDY_MODEL_H

#include <array>
#include <string>
#include <vector>

namespace brindle::study {

using Point = std::array<double, 3>;

// What a material stands for. Surface layers model a surface resistance R as a thin layer of
// conductivity thickness / R; their outer face carries the fixed air temperature.
enum class Role { kSolid, kWarmLayer, kColdLayer };

struct Material {
  std::string name;
  double conductivity = 1.0;  // W/(m K)
  Role role = Role::kSolid;
};

// Boundary condition of a vertex: held at the warm or the cold temperature, or unknown.
enum class VertexKind { kFree, kCold, kWarm };

// Triangle mesh of a 2-D section (z = 0) or of a user's surface mesh.
struct TriMesh {
  std::vector<Point> points;
  std::vector<std::array<int, 3>> triangles;
  std::vector<int> region;       // material index per triangle
  std::vector<VertexKind> kind;  // per vertex
  std::vector<char> onSurface;   // per vertex: lies on the interior (warm) surface
  std::vector<Material> materials;
};

// Tetrahedral mesh of a 3-D detail or of a user's volume mesh.
struct TetMesh {
  std::vector<Point> points;
  std::vector<std::array<int, 4>> tetrahedra;
  std::vector<int> region;       // material index per tetrahedron
  std::vector<VertexKind> kind;  // per vertex
  std::vector<char> onSurface;   // per vertex: lies on the interior (warm) surface
  std::vector<Material> materials;
};

// Axis-aligned box filled with one material; later boxes override earlier ones where they
// overlap, and space covered by no box is empty. Rectangles of a section use z0 = z1 = 0.
struct Block {
  Point low;
  Point high;
  int material = 0;
};

}  // namespace brindle::study

#endif
