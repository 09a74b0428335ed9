#include "volume_pictures.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>

#include "color_scale.h"
#include "flat_picture.h"
#include "geometry.h"
#include "report.h"
#include "svg_writer.h"
#include "vtk_writer.h"

namespace brindle::study {

std::vector<std::array<int, 3>> SolidFacesTowards(const TetMesh& mesh, Role layer) {
  struct Side {
    int tet = -1;
    int opposite = -1;  // the tetrahedron's vertex not on the face
  };
  std::map<std::array<int, 3>, std::vector<Side>> faces;
  for (std::size_t t = 0; t < mesh.tetrahedra.size(); ++t)
    for (int skip = 0; skip < 4; ++skip) {
      const std::array<int, 3> key = SortedFace(mesh.tetrahedra[t], skip);
      faces[key].push_back({int(t), mesh.tetrahedra[t][skip]});
    }
  auto role = [&](int tet) { return mesh.materials[mesh.region[tet]].role; };
  std::vector<std::array<int, 3>> out;
  for (const auto& [key, sides] : faces) {
    if (sides.size() != 2) continue;
    for (int s = 0; s < 2; ++s) {
      if (role(sides[s].tet) != Role::kSolid || role(sides[1 - s].tet) != layer) continue;
      std::array<int, 3> face = key;
      const Point& a = mesh.points[face[0]];
      const Point normal = Cross(mesh.points[face[1]] - a, mesh.points[face[2]] - a);
      if (Dot(normal, mesh.points[sides[s].opposite] - a) > 0.0) std::swap(face[1], face[2]);
      out.push_back(face);
    }
  }
  return out;
}

std::vector<std::array<int, 3>> OrientOutOfSolid(const TetMesh& mesh,
                                                 const std::vector<std::array<int, 3>>& faces) {
  std::map<std::array<int, 3>, int> opposite;  // sorted face -> the tetrahedron's fourth vertex
  for (const auto& tet : mesh.tetrahedra)
    for (int skip = 0; skip < 4; ++skip) {
      const std::array<int, 3> key = SortedFace(tet, skip);
      opposite.emplace(key, tet[skip]);
    }
  std::vector<std::array<int, 3>> out;
  for (std::array<int, 3> face : faces) {
    std::array<int, 3> key = face;
    std::sort(key.begin(), key.end());
    const auto found = opposite.find(key);
    if (found == opposite.end()) continue;
    const Point& a = mesh.points[face[0]];
    const Point normal = Cross(mesh.points[face[1]] - a, mesh.points[face[2]] - a);
    if (Dot(normal, mesh.points[found->second] - a) > 0.0) std::swap(face[1], face[2]);
    out.push_back(face);
  }
  return out;
}

int ExtremeVertex(const std::vector<std::array<int, 3>>& faces, const std::vector<double>& values,
                  bool highest) {
  int best = -1;
  for (const auto& f : faces)
    for (int v : f)
      if (best < 0 || (highest ? values[v] > values[best] : values[v] < values[best])) best = v;
  return best;
}

Point NormalAt(const std::vector<Point>& points, const std::vector<std::array<int, 3>>& faces,
               int vertex) {
  Point sum{0, 0, 0};
  for (const auto& f : faces)
    if (f[0] == vertex || f[1] == vertex || f[2] == vertex) {
      const Point n = Cross(points[f[1]] - points[f[0]], points[f[2]] - points[f[0]]);
      if (Norm(n) > 0.0) sum = sum + (1.0 / Norm(n)) * n;
    }
  return Norm(sum) > 0.0 ? (1.0 / Norm(sum)) * sum : sum;
}

std::string FileStem(const std::string& name) {
  std::string stem;
  for (char c : name) {
    const bool plain = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
    if (plain)
      stem += char(std::tolower(static_cast<unsigned char>(c)));
    else if (!stem.empty() && stem.back() != '-')
      stem += '-';
  }
  while (!stem.empty() && stem.back() == '-')
    stem.pop_back();
  return stem.empty() ? "environment" : stem;
}

nlohmann::json ExtremesJson(const std::vector<ExtremePoint>& extremes) {
  nlohmann::json json = nlohmann::json::object();
  for (const ExtremePoint& e : extremes)
    json[e.environment] = {{"kind", e.warmest ? "warmest" : "coldest"},
                           {"temperature_C", e.temperature},
                           {"temperature_factor", std::isnan(e.factor) ? nlohmann::json(nullptr)
                                                                       : nlohmann::json(e.factor)},
                           {"at_m", {e.at[0], e.at[1], e.at[2]}}};
  return json;
}

namespace {

std::string PointText(const Point& p) {
  return Format("(%.3f, %.3f, %.3f) m", p[0], p[1], p[2]);
}

// Surfaces of all environments as one VTK file: temperature and f-factor per point, the
// environment per face, and the environments' names in the data set's table.
void WriteSurfacesVtk(const std::string& path, const VolumeOutcome& outcome, double coldAir,
                      double warmAir) {
  const TetMesh& mesh = *outcome.mesh;
  std::map<int, int> local;
  std::vector<Point> points;
  std::vector<double> temperature, factor;
  std::vector<std::array<int, 3>> triangles;
  std::vector<int> environment;
  std::vector<std::string> names;
  for (std::size_t e = 0; e < outcome.environments.size(); ++e) {
    names.push_back(outcome.environments[e].name);
    for (const auto& f : outcome.environments[e].faces) {
      std::array<int, 3> t;
      for (int i = 0; i < 3; ++i) {
        const auto [it, added] = local.emplace(f[i], int(points.size()));
        if (added) {
          points.push_back(mesh.points[f[i]]);
          const double celsius = outcome.temperature[f[i]];
          temperature.push_back(celsius);
          // An interior surface against its own air; the exterior against the warmest air.
          const double air =
              outcome.environments[e].exterior ? warmAir : outcome.environments[e].temperature;
          factor.push_back(air > coldAir ? (celsius - coldAir) / (air - coldAir) : 0.0);
        }
        t[i] = it->second;
      }
      triangles.push_back(t);
      environment.push_back(int(e));
    }
  }
  VtkFields fields;
  fields.tableStrings = {{"environment_name", names}};
  fields.pointScalars = {{"temperature_C", temperature}, {"temperature_factor", factor}};
  fields.cellIntegers = {{"environment", environment}};
  WriteVtk(path, outcome.caption + ": surfaces of the environments", points, triangles, fields);
}

}  // namespace

VolumePictureFiles WriteVolumePictures(const std::string& folder, const std::string& stem,
                                       const VolumeOutcome& outcome) {
  const TetMesh& mesh = *outcome.mesh;
  VolumePictureFiles written;
  std::vector<double> airs;
  for (const VolumeEnvironment& env : outcome.environments)
    airs.push_back(env.temperature);
  const ColorScale scale = TemperatureScale(airs);
  const double coldAir = scale.low, warmAir = scale.high;
  // Temperature factor of a surface point against its environment's air and the coldest air.
  auto factorOf = [&](double t, double air) {
    return air > coldAir ? (t - coldAir) / (air - coldAir)
                         : std::numeric_limits<double>::quiet_NaN();
  };

  // The section goes through the coldest point of the first interior environment.
  Point sectionAt = mesh.points.empty() ? Point{0, 0, 0} : mesh.points.front();
  Point sectionNormal{0, 0, 0};
  double sectionTemperature = 0.0, sectionAir = 0.0;
  bool sectionPointSet = false;
  std::vector<std::string> surfacePictures;
  for (const VolumeEnvironment& env : outcome.environments) {
    if (env.faces.empty()) continue;
    const int v = ExtremeVertex(env.faces, outcome.temperature, env.exterior);
    const double t = outcome.temperature[v];
    const double f = factorOf(t, env.temperature);
    const std::string what =
        env.exterior ? Format("warmest %.1f °C", t) : Format("coldest %.1f °C, f = %.3f", t, f);
    written.extremes.push_back({env.name, env.exterior, mesh.points[v], t, f});
    if (!env.exterior && !sectionPointSet) {
      sectionAt = mesh.points[v];
      sectionNormal = NormalAt(mesh.points, env.faces, v);
      sectionTemperature = t;
      sectionAir = env.temperature;
      sectionPointSet = true;
    }
    SurfaceScene scene;
    scene.title = {outcome.caption,
                   Format("Surfaces towards %s (air %.1f °C), seen from its side", env.name.c_str(),
                          env.temperature),
                   what + " at " + PointText(mesh.points[v])};
    scene.points = mesh.points;
    scene.triangles = env.faces;
    scene.temperature = outcome.temperature;
    scene.scale = scale;
    // A surface held at one temperature has no point worth pointing at.
    const int other = ExtremeVertex(env.faces, outcome.temperature, !env.exterior);
    if (std::abs(outcome.temperature[other] - t) > 1e-9 * std::max(1.0, std::abs(t)))
      scene.markers = {{mesh.points[v], what}};
    scene.symmetry = outcome.symmetry;
    const std::string path = folder + "/" + stem + "-" + FileStem(env.name) + ".svg";
    WriteSurfaceSvg(path, scene);
    written.files.push_back(path);
  }

  SectionCut cut = outcome.sectionGiven
                       ? CutTetMesh(mesh, outcome.temperature, outcome.section)
                       : ChooseSection(mesh, outcome.temperature, sectionAt, sectionNormal);
  written.section = cut.plane;
  if (!cut.mesh.triangles.empty()) {
    const char* names = "xyz";
    SvgPicture picture = TemperaturePicture(
        cut.mesh, cut.values, scale, 9,
        {outcome.caption, "Section " + PlaneName(cut.plane) +
                              (outcome.sectionGiven ? "" : " through the coldest interior point")});
    picture.axes = {std::string(1, names[cut.axes[0]]), std::string(1, names[cut.axes[1]])};
    if (sectionPointSet && !outcome.sectionGiven)
      picture.markers.push_back({{sectionAt[cut.axes[0]], sectionAt[cut.axes[1]], 0.0},
                                 Format("coldest %.1f °C, f = %.3f", sectionTemperature,
                                        factorOf(sectionTemperature, sectionAir))});
    for (const AxisPlane& plane : outcome.symmetry)
      for (int k = 0; k < 2; ++k)
        if (cut.axes[k] == plane.axis)
          picture.guides.push_back(
              {EdgesOnLine(cut.mesh, picture.hidden, k, plane.offset), "symmetry"});
    const std::string path = folder + "/" + stem + "-section.svg";
    WriteSvg(path, cut.mesh, picture);
    written.files.push_back(path);
  }

  const std::string vtk = folder + "/" + stem + "-surfaces.vtk";
  WriteSurfacesVtk(vtk, outcome, coldAir, warmAir);
  written.files.push_back(vtk);
  return written;
}

}  // namespace brindle::study
