// Heat flows from element fluxes: the boundary reaction of the finite-element solution.
#include "geometry.h"
#include "solve.h"

namespace brindle::study {

std::array<Point, 3> ShapeGradients(const Point& a, const Point& b, const Point& c, double* area) {
  const Point normal = Cross(b - a, c - a);
  const double twiceArea = Norm(normal);
  *area = 0.5 * twiceArea;
  if (twiceArea == 0.0) return {};
  // grad phi_a = n x (c - b) / (2A) with the unit normal n, and cyclically.
  const Point unit = (1.0 / twiceArea) * normal;
  const double scale = 1.0 / twiceArea;
  return {scale * Cross(unit, c - b), scale * Cross(unit, a - c), scale * Cross(unit, b - a)};
}

std::array<Point, 4> ShapeGradients(const Point& a, const Point& b, const Point& c, const Point& d,
                                    double* volume) {
  const Point p[4] = {a, b, c, d};
  const double sixVolume = Dot(b - a, Cross(c - a, d - a));
  *volume = std::abs(sixVolume) / 6.0;
  if (sixVolume == 0.0) return {};
  // grad phi_i is the normal of the opposite face scaled so that phi_i(p_i) = 1.
  std::array<Point, 4> gradients;
  for (int i = 0; i < 4; ++i) {
    const Point& q0 = p[(i + 1) % 4];
    const Point& q1 = p[(i + 2) % 4];
    const Point& q2 = p[(i + 3) % 4];
    const Point normal = Cross(q1 - q0, q2 - q0);
    gradients[i] = (1.0 / Dot(p[i] - q0, normal)) * normal;
  }
  return gradients;
}

std::vector<Point> TriangleGradients(const TriMesh& mesh, const std::vector<double>& field) {
  std::vector<Point> gradients;
  gradients.reserve(mesh.triangles.size());
  for (const auto& t : mesh.triangles) {
    double area = 0.0;
    const auto g = ShapeGradients(mesh.points[t[0]], mesh.points[t[1]], mesh.points[t[2]], &area);
    Point gradient{0, 0, 0};
    for (int i = 0; i < 3; ++i)
      gradient = gradient + field[t[i]] * g[i];
    gradients.push_back(gradient);
  }
  return gradients;
}

namespace {

// The boundary reaction over elements of N vertices; `gradientsOf` gives an element's shape
// gradients and its measure (area or volume).
template <std::size_t N, class GradientsOf>
double KindFlow(const std::vector<std::array<int, N>>& elements,
                const std::vector<VertexKind>& kinds, const std::vector<Point>& flux,
                VertexKind kind, const GradientsOf& gradientsOf) {
  double flow = 0.0;
  for (std::size_t e = 0; e < elements.size(); ++e) {
    const auto& t = elements[e];
    double measure = 0.0;
    const auto gradients = gradientsOf(t, &measure);
    Point indicator{0.0, 0.0, 0.0};
    for (std::size_t i = 0; i < N; ++i)
      if (kinds[t[i]] == kind) indicator = indicator + gradients[i];
    flow += measure * Dot(flux[e], indicator);
  }
  return flow;
}

}  // namespace

double BoundaryFlow(const TriMesh& mesh, const std::vector<Point>& flux, VertexKind kind) {
  const auto& p = mesh.points;
  return KindFlow(mesh.triangles, mesh.kind, flux, kind,
                  [&](const std::array<int, 3>& t, double* area) {
                    return ShapeGradients(p[t[0]], p[t[1]], p[t[2]], area);
                  });
}

double BoundaryFlow(const TetMesh& mesh, const std::vector<Point>& flux, VertexKind kind) {
  const auto& p = mesh.points;
  return KindFlow(mesh.tetrahedra, mesh.kind, flux, kind,
                  [&](const std::array<int, 4>& t, double* volume) {
                    return ShapeGradients(p[t[0]], p[t[1]], p[t[2]], p[t[3]], volume);
                  });
}

}  // namespace brindle::study
