// Runs the library's solvers on a study mesh through the public exports, as a host does, and
// derives the heat flows from the results.
#ifndef BRINDLE_STUDY_SOLVE_H
#define BRINDLE_STUDY_SOLVE_H

#include <array>
#include <stdexcept>
#include <vector>

#include "model.h"

namespace brindle::study {

// A solver refused the model or failed; the message says which export and why.
class SolveError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

using Segment = std::array<Point, 2>;

// Result of a 2-D run. Temperatures are dimensionless: 0 on the cold edge, 1 on the warm one.
struct SurfaceSolution {
  std::vector<double> temperature;              // per vertex
  std::vector<Point> flux;                      // per triangle, k grad T, W/(m2 K)
  std::vector<double> levels;                   // isotherm temperatures actually traced
  std::vector<std::vector<Segment>> isotherms;  // per level
  std::vector<double> levelFlow;                // heat flow across each isotherm, W/(m K)
  double warmFlow = 0.0;  // heat entering at the warm edge, W/(m K), from the element fluxes
  double coldFlow = 0.0;  // heat leaving at the cold edge, W/(m K)
};

// Result of a 3-D run, with temperatures scaled to 0 (cold side) .. 1 (warm side).
struct VolumeSolution {
  std::vector<double> temperature;  // per vertex
  std::vector<Point> flux;          // per tetrahedron, k grad T, W/(m2 K)
  double warmFlow = 0.0;            // W/K entering at the warm side
  double coldFlow = 0.0;            // W/K leaving at the cold side
  double residual = 0.0;            // squared residual reported by the solver
  bool converged = true;
};

// Solves a triangle mesh with the surface solver and traces the given isotherm levels
// (a level that passes exactly through a vertex is moved by 1e-9 so that no face is skipped).
SurfaceSolution SolveSurface(const TriMesh& mesh, const std::vector<double>& levels);

// Heat entering the mesh through the vertices of one kind: the consistent boundary reaction
// sum over elements of volume * flux . grad(sum of the kind's shape functions).
double BoundaryFlow(const TriMesh& mesh, const std::vector<Point>& flux, VertexKind kind);
double BoundaryFlow(const TetMesh& mesh, const std::vector<Point>& flux, VertexKind kind);

// Gradients of the linear shape functions of a triangle (in its plane) and a tetrahedron.
std::array<Point, 3> ShapeGradients(const Point& a, const Point& b, const Point& c, double* area);
std::array<Point, 4> ShapeGradients(const Point& a, const Point& b, const Point& c, const Point& d,
                                    double* volume);

// Gradient of a linear field (one value per vertex) on every triangle.
std::vector<Point> TriangleGradients(const TriMesh& mesh, const std::vector<double>& field);

}  // namespace brindle::study

#endif
