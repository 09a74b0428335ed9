#include "section_cut.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>

#include "geometry.h"

namespace brindle::study {

std::array<int, 2> PlaneAxes(int axis) {
  if (axis == 0) return {1, 2};
  if (axis == 1) return {0, 2};
  return {0, 1};
}

std::string PlaneName(const AxisPlane& plane) {
  char text[48];
  std::snprintf(text, sizeof text, "%c = %.3f m", "xyz"[plane.axis], plane.offset);
  return text;
}

SectionCut CutTetMesh(const TetMesh& mesh, const std::vector<double>& values, AxisPlane plane) {
  SectionCut cut;
  cut.plane = plane;
  cut.axes = PlaneAxes(plane.axis);
  cut.mesh.materials = mesh.materials;
  const int axis = plane.axis;
  // Vertices within rounding of the plane lie on it, so that a plane through grid lines that
  // are not exactly representable still meets their vertices rather than slivers beside them.
  double extent = std::abs(plane.offset);
  for (const Point& p : mesh.points)
    extent = std::max(extent, std::abs(p[axis]));
  const double tolerance = 1e-12 * std::max(extent, 1e-3);
  auto onPlane = [&](int v) { return std::abs(mesh.points[v][axis] - plane.offset) <= tolerance; };
  auto above = [&](int v) { return mesh.points[v][axis] >= plane.offset - tolerance; };
  // Cut points keyed by their edge; a vertex lying on the plane is its own key (v, v).
  std::map<std::pair<int, int>, int> pointOf;
  auto cutPoint = [&](int below, int upper) {
    const Point& a = mesh.points[below];
    const Point& b = mesh.points[upper];
    const bool atUpper = onPlane(upper);
    const std::pair<int, int> key =
        atUpper ? std::make_pair(upper, upper)
                : std::make_pair(std::min(below, upper), std::max(below, upper));
    const auto found = pointOf.find(key);
    if (found != pointOf.end()) return found->second;
    const double w = atUpper ? 1.0 : (plane.offset - a[axis]) / (b[axis] - a[axis]);
    const Point p = a + w * (b - a);
    const int index = int(cut.mesh.points.size());
    cut.mesh.points.push_back({p[cut.axes[0]], p[cut.axes[1]], 0.0});
    cut.values.push_back(values[below] + w * (values[upper] - values[below]));
    pointOf.emplace(key, index);
    return index;
  };
  for (std::size_t t = 0; t < mesh.tetrahedra.size(); ++t) {
    const auto& tet = mesh.tetrahedra[t];
    std::vector<int> polygon;
    for (int i = 0; i < 4; ++i)
      for (int j = i + 1; j < 4; ++j)
        if (above(tet[i]) != above(tet[j])) {
          const int low = above(tet[i]) ? tet[j] : tet[i];
          const int high = above(tet[i]) ? tet[i] : tet[j];
          const int p = cutPoint(low, high);
          if (std::find(polygon.begin(), polygon.end(), p) == polygon.end()) polygon.push_back(p);
        }
    if (polygon.size() < 3) continue;
    // Order the corners around their centre, counter-clockwise in the picture.
    Point centre{0, 0, 0};
    for (int p : polygon)
      centre = centre + cut.mesh.points[p];
    centre = (1.0 / polygon.size()) * centre;
    std::sort(polygon.begin(), polygon.end(), [&](int a, int b) {
      const Point da = cut.mesh.points[a] - centre, db = cut.mesh.points[b] - centre;
      return std::atan2(da[1], da[0]) < std::atan2(db[1], db[0]);
    });
    for (std::size_t k = 1; k + 1 < polygon.size(); ++k) {
      std::array<int, 3> tri{polygon[0], polygon[k], polygon[k + 1]};
      const Point e1 = cut.mesh.points[tri[1]] - cut.mesh.points[tri[0]];
      const Point e2 = cut.mesh.points[tri[2]] - cut.mesh.points[tri[0]];
      const double area = e1[0] * e2[1] - e1[1] * e2[0];
      if (area == 0.0) continue;  // a corner or an edge touching the plane
      // Nearly coincident corners may sort out of turn; keep every piece counter-clockwise.
      if (area < 0.0) std::swap(tri[1], tri[2]);
      cut.mesh.triangles.push_back(tri);
      cut.mesh.region.push_back(mesh.region[t]);
    }
  }
  cut.mesh.kind.assign(cut.mesh.points.size(), VertexKind::kFree);
  cut.mesh.onSurface.assign(cut.mesh.points.size(), 0);
  return cut;
}

SectionCut ChooseSection(const TetMesh& mesh, const std::vector<double>& values, const Point& at,
                         const Point& surfaceNormal) {
  int parallel = -1;  // the axis plane parallel to the surface shows no heat path
  if (Norm(surfaceNormal) > 0.0) {
    parallel = 0;
    for (int a = 1; a < 3; ++a)
      if (std::abs(surfaceNormal[a]) > std::abs(surfaceNormal[parallel])) parallel = a;
  }
  double extent = 0.0;
  for (const Point& p : mesh.points)
    extent =
        std::max({extent, std::abs(p[0] - at[0]), std::abs(p[1] - at[1]), std::abs(p[2] - at[2])});
  SectionCut best;
  double bestRange = -1.0;
  for (int axis = 0; axis < 3; ++axis) {
    if (axis == parallel) continue;
    // A point on the model's boundary (a symmetry plane) is cut just inside the model.
    SectionCut cut = CutTetMesh(mesh, values, {axis, at[axis]});
    for (double shift : {1e-7, -1e-7})
      if (cut.mesh.triangles.empty())
        cut = CutTetMesh(mesh, values, {axis, at[axis] + shift * extent});
    if (cut.mesh.triangles.empty()) continue;
    // Surface-resistance layers span the air temperatures in every cut; the solid decides.
    double lo = 1e300, hi = -1e300;
    for (std::size_t f = 0; f < cut.mesh.triangles.size(); ++f) {
      const int m = cut.mesh.region[f];
      if (m >= 0 && m < int(mesh.materials.size()) && mesh.materials[m].role != Role::kSolid)
        continue;
      for (int v : cut.mesh.triangles[f]) {
        lo = std::min(lo, cut.values[v]);
        hi = std::max(hi, cut.values[v]);
      }
    }
    if (hi - lo > bestRange) {
      bestRange = hi - lo;
      best = std::move(cut);
    }
  }
  return best;
}

}  // namespace brindle::study
