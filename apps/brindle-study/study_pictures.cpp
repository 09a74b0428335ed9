#include "study_pictures.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>

#include "color_scale.h"
#include "flat_picture.h"
#include "geometry.h"
#include "report.h"
#include "solve.h"
#include "svg_writer.h"
#include "volume_pictures.h"
#include "vtk_writer.h"

namespace brindle::study {
namespace {

std::vector<Material> OutcomeMaterials(const StudyOutcome& o,
                                       const std::vector<double>& conductivity) {
  std::vector<Material> materials;
  for (std::size_t m = 0; m < o.materialNames.size(); ++m) {
    const bool layer = m < o.materialIsLayer.size() && o.materialIsLayer[m];
    const double k = m < conductivity.size() ? conductivity[m] : 1.0;
    materials.push_back({o.materialNames[m], k, layer ? Role::kWarmLayer : Role::kSolid});
  }
  return materials;
}

double LowestAir(const StudyOutcome& o) {
  return *std::min_element(o.environmentTemperature.begin(), o.environmentTemperature.end());
}

// Reference number of every element in the mesh (layers, which the mesh has not, get 0) and
// the name of every element's material.
void ModelVtk(const std::string& path, const StudyOutcome& o, const StudyMesh& mesh,
              const std::string& title) {
  const std::vector<int>& refs = o.dimension == 3 ? mesh.tetrahedronRef : mesh.triangleRef;
  std::vector<int> reference, layer;
  for (std::size_t e = 0; e < o.elements.size(); ++e) {
    reference.push_back(e < o.solidElements && e < refs.size() ? refs[e] : 0);
    const int m = o.material[e];
    layer.push_back(m >= 0 && m < int(o.materialIsLayer.size()) && o.materialIsLayer[m]);
  }
  VtkFields fields;
  fields.tableStrings = {{"material_name", o.materialNames}};
  fields.pointScalars = {{"temperature_C", o.temperature}};
  fields.cellIntegers = {
      {"reference", reference}, {"material", o.material}, {"surface_layer", layer}};
  if (o.dimension == 3) {
    TetMesh tets;
    tets.points = o.points;
    tets.tetrahedra = o.elements;
    WriteVtk(path, title, tets, fields);
  } else {
    TriMesh tris;
    tris.points = o.points;
    for (const auto& e : o.elements)
      tris.triangles.push_back({e[0], e[1], e[2]});
    WriteVtk(path, title, tris, fields);
  }
}

// Heat-flux density (W/m²) of every triangle: k |grad T|.
std::vector<double> FluxDensity(const TriMesh& mesh, const std::vector<double>& temperature) {
  const std::vector<Point> gradients = TriangleGradients(mesh, temperature);
  std::vector<double> density;
  for (std::size_t f = 0; f < mesh.triangles.size(); ++f)
    density.push_back(mesh.materials[mesh.region[f]].conductivity * Norm(gradients[f]));
  return density;
}

nlohmann::json PointJson(const Point& p) {
  return nlohmann::json::array({p[0], p[1], p[2]});
}

nlohmann::json SectionPictures(const StudyOutcome& o, const StudyPictureRequest& r) {
  nlohmann::json record;
  const TriMesh mesh = OutcomeTriMesh(o, r.conductivity);
  const ColorScale temperatureScale = TemperatureScale(o.environmentTemperature);
  const std::vector<char> hidden = SurfaceLayerTriangles(mesh);
  std::vector<double> solidFlux, solidArea;
  const std::vector<double> density = FluxDensity(mesh, o.temperature);
  const std::vector<double> area = TriangleAreas(mesh);
  for (std::size_t f = 0; f < density.size(); ++f)
    if (!hidden[f]) {
      solidFlux.push_back(density[f]);
      solidArea.push_back(area[f]);
    }
  const ColorScale fluxScale = FluxScale(solidFlux, solidArea, "W/m²");
  const double lowestAir = LowestAir(o);
  std::vector<SvgMarker> markers;
  for (std::size_t e = 0; e < o.environmentNames.size(); ++e) {
    if (o.environmentFaces[e].empty() || e >= o.coldest.size()) continue;
    const bool exterior = o.environmentTemperature[e] <= lowestAir;
    const Point at = exterior ? o.warmest[e] : o.coldest[e];
    // The surface temperature there: the solid vertex at that point.
    double t = std::numeric_limits<double>::quiet_NaN();
    for (const auto& face : o.environmentFaces[e])
      for (int v : face)
        if (v >= 0 && Norm(o.points[v] - at) == 0.0) t = o.temperature[v];
    if (std::isnan(t)) continue;
    const double f = (t - lowestAir) / (o.environmentTemperature[e] - lowestAir);
    markers.push_back(
        {at, exterior
                 ? Format("%s: warmest %.1f °C", o.environmentNames[e].c_str(), t)
                 : Format("%s: coldest %.1f °C, f = %.3f", o.environmentNames[e].c_str(), t, f)});
  }
  const std::vector<std::string> title = {r.caption, "Temperature"};
  SvgPicture temperature =
      TemperaturePicture(mesh, o.temperature, temperatureScale, r.isotherms, title);
  temperature.markers = markers;
  SvgPicture flux = FluxPicture(mesh, density, o.temperature, fluxScale, r.isotherms,
                                {r.caption, "Heat-flux density, with isotherms"});
  flux.markers = markers;
  for (const auto& [suffix, picture] :
       {std::pair<std::string, const SvgPicture*>{"", &temperature}, {"-flux", &flux}}) {
    const std::string path = r.folder + "/" + r.stem + suffix + ".svg";
    WriteSvg(path, mesh, *picture);
    record["files"].push_back(path);
  }
  return record;
}

nlohmann::json VolumePictures(const StudyOutcome& o, const StudyPictureRequest& r) {
  const TetMesh mesh = OutcomeTetMesh(o, r.conductivity);
  const double lowestAir = LowestAir(o);
  VolumeOutcome outcome;
  outcome.caption = r.caption;
  outcome.mesh = &mesh;
  outcome.temperature = o.temperature;
  std::vector<std::vector<std::array<int, 3>>> used;
  Point firstColdest{0, 0, 0};
  bool haveColdest = false;
  for (std::size_t e = 0; e < o.environmentNames.size(); ++e) {
    const bool exterior = o.environmentTemperature[e] <= lowestAir;
    outcome.environments.push_back({o.environmentNames[e], o.environmentTemperature[e], exterior,
                                    OrientOutOfSolid(mesh, o.environmentFaces[e])});
    used.push_back(o.environmentFaces[e]);
    if (!exterior && !haveColdest && e < o.coldest.size()) {
      firstColdest = o.coldest[e];
      haveColdest = true;
    }
  }
  TetMesh solid;
  solid.points = mesh.points;
  solid.tetrahedra.assign(mesh.tetrahedra.begin(), mesh.tetrahedra.begin() + o.solidElements);
  outcome.symmetry = SymmetryPlanes(solid, r.symmetryFactor, used, firstColdest);
  outcome.sectionGiven = r.sectionGiven;
  outcome.section = r.section;
  const VolumePictureFiles written = WriteVolumePictures(r.folder, r.stem, outcome);
  nlohmann::json record;
  record["files"] = written.files;
  record["section_plane"] = PlaneName(written.section);
  record["symmetry_planes"] = nlohmann::json::array();
  for (const AxisPlane& plane : outcome.symmetry)
    record["symmetry_planes"].push_back(PlaneName(plane));
  for (const ExtremePoint& x : written.extremes)
    record["surface_extremes"][x.environment] = {{"kind", x.warmest ? "warmest" : "coldest"},
                                                 {"temperature_C", x.temperature},
                                                 {"at_m", PointJson(x.at)}};
  return record;
}

}  // namespace

TetMesh OutcomeTetMesh(const StudyOutcome& o, const std::vector<double>& conductivity) {
  TetMesh mesh;
  mesh.points = o.points;
  mesh.tetrahedra = o.elements;
  mesh.region = o.material;
  mesh.materials = OutcomeMaterials(o, conductivity);
  mesh.kind.assign(mesh.points.size(), VertexKind::kFree);
  mesh.onSurface.assign(mesh.points.size(), 0);
  return mesh;
}

TriMesh OutcomeTriMesh(const StudyOutcome& o, const std::vector<double>& conductivity) {
  TriMesh mesh;
  mesh.points = o.points;
  for (const auto& e : o.elements)
    mesh.triangles.push_back({e[0], e[1], e[2]});
  mesh.region = o.material;
  mesh.materials = OutcomeMaterials(o, conductivity);
  mesh.kind.assign(mesh.points.size(), VertexKind::kFree);
  mesh.onSurface.assign(mesh.points.size(), 0);
  return mesh;
}

std::vector<AxisPlane> SymmetryPlanes(const TetMesh& solid, double symmetryFactor,
                                      const std::vector<std::vector<std::array<int, 3>>>& used,
                                      const Point& near) {
  const int wanted = symmetryFactor > 1.0 ? int(std::lround(std::log2(symmetryFactor))) : 0;
  if (wanted <= 0 || solid.points.empty()) return {};
  Point low = solid.points.front(), high = low;
  for (const Point& p : solid.points)
    for (int a = 0; a < 3; ++a) {
      low[a] = std::min(low[a], p[a]);
      high[a] = std::max(high[a], p[a]);
    }
  double extent = 0.0;
  for (int a = 0; a < 3; ++a)
    extent = std::max(extent, high[a] - low[a]);
  const double tolerance = 1e-9 * std::max(extent, 1e-3);
  // Boundary faces: used by one tetrahedron and by no environment.
  std::map<std::array<int, 3>, int> count;
  for (const auto& t : solid.tetrahedra)
    for (int skip = 0; skip < 4; ++skip) {
      const std::array<int, 3> key = SortedFace(t, skip);
      ++count[key];
    }
  for (const auto& faces : used)
    for (auto key : faces) {
      std::sort(key.begin(), key.end());
      count[key] += 2;
    }
  struct Candidate {
    AxisPlane plane;
    double distance;
  };
  std::vector<Candidate> candidates;
  for (int a = 0; a < 3; ++a)
    for (double offset : {low[a], high[a]}) {
      bool covered = false;
      for (const auto& [face, n] : count) {
        if (n != 1) continue;
        covered = covered || std::all_of(face.begin(), face.end(), [&](int v) {
                    return std::abs(solid.points[v][a] - offset) <= tolerance;
                  });
        if (covered) break;
      }
      if (covered) candidates.push_back({{a, offset}, std::abs(near[a] - offset)});
    }
  std::stable_sort(candidates.begin(), candidates.end(),
                   [](const Candidate& x, const Candidate& y) { return x.distance < y.distance; });
  std::vector<AxisPlane> planes;
  std::vector<char> axisTaken(3, 0);
  for (const Candidate& c : candidates)
    if (int(planes.size()) < wanted && !axisTaken[c.plane.axis]) {
      planes.push_back(c.plane);
      axisTaken[c.plane.axis] = 1;
    }
  return planes;
}

nlohmann::json WriteStudyPictures(const StudyOutcome& outcome, const StudyMesh& mesh,
                                  const StudyPictureRequest& request) {
  nlohmann::json record =
      outcome.dimension == 3 ? VolumePictures(outcome, request) : SectionPictures(outcome, request);
  const std::string model = request.folder + "/" + request.stem + ".vtk";
  ModelVtk(model, outcome, mesh, request.caption);
  record["files"].push_back(model);
  return record;
}

}  // namespace brindle::study
