#include "study_engine.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <limits>
#include <map>
#include <set>

#include "geometry.h"
#include "layered_model.h"
#include "mesh_intake.h"
#include "report.h"
#include "solve.h"
#include "unit_fields.h"
#include "vtk_writer.h"

namespace brindle::study {
namespace {

using nlohmann::json;

json Xyz(const Point& p) {
  return json::array({p[0], p[1], p[2]});
}

// The solid model in metres with one material per study material, and the environments'
// faces, both from the mesh's references.
struct Assembled {
  SolidModel solid;
  std::vector<std::string> materialNames;
  std::vector<EnvironmentFaces> faces;
};

// References named by study keys; a name the mesh lacks is reported against the study's key.
std::vector<int> Resolve(const StudyMesh& mesh, int dimension, const std::vector<std::string>& keys,
                         const std::string& what, const std::string& where) {
  try {
    return ResolveReferences(mesh, dimension, keys, what);
  } catch (const MeshInputError& e) {
    throw StudyFileError(where + ": " + e.what());
  }
}

Assembled Assemble(const StudyDefinition& definition, const StudyMesh& mesh) {
  const int dimension = mesh.dimension;
  const std::string& source = definition.source;
  Assembled a;
  a.solid.dimension = dimension;
  a.solid.points.reserve(mesh.vertices.size());
  for (const Point& p : mesh.vertices)
    a.solid.points.push_back(definition.metresPerUnit * p);
  const std::vector<int>& elementRef = dimension == 3 ? mesh.tetrahedronRef : mesh.triangleRef;
  if (elementRef.empty())
    throw StudyFileError(source + ": mesh: has no " +
                         std::string(dimension == 3 ? "tetrahedra" : "triangles"));
  std::map<int, int> materialOfRef;
  for (const auto& [key, conductivity] : definition.materials) {
    const int index = static_cast<int>(a.solid.conductivity.size());
    for (int ref : Resolve(mesh, dimension, {key}, "material", source + ": materials: " + key)) {
      if (materialOfRef.count(ref))
        throw StudyFileError(source + ": materials: " + key + ": reference " + std::to_string(ref) +
                             " already has a material");
      materialOfRef[ref] = index;
    }
    a.solid.conductivity.push_back(conductivity);
    a.materialNames.push_back(key);
  }
  a.solid.material.reserve(elementRef.size());
  std::map<int, std::size_t> missing;
  for (int ref : elementRef) {
    const auto m = materialOfRef.find(ref);
    if (m == materialOfRef.end()) ++missing[ref];
    a.solid.material.push_back(m == materialOfRef.end() ? 0 : m->second);
  }
  if (!missing.empty()) {
    std::string list;
    for (const auto& [ref, n] : missing) {
      const auto name = mesh.names.find({dimension, ref});
      list += (list.empty() ? "" : ", ") + std::to_string(ref) +
              (name == mesh.names.end() ? "" : " \"" + name->second + "\"") + " (" +
              std::to_string(n) + " elements)";
    }
    throw StudyFileError(source + ": materials: no conductivity for " + list);
  }
  a.solid.elements.reserve(elementRef.size());
  if (dimension == 3) {
    a.solid.elements = mesh.tetrahedra;
  } else {
    for (const auto& t : mesh.triangles)
      a.solid.elements.push_back({t[0], t[1], t[2], -1});
  }
  for (const EnvironmentSpec& e : definition.environments) {
    EnvironmentFaces faces{e.name, e.surfaceResistance, {}};
    const auto refs =
        Resolve(mesh, dimension - 1, e.boundaries, "boundary of environment " + e.name,
                source + ": environments: " + e.name + ": boundaries");
    const std::set<int> wanted(refs.begin(), refs.end());
    if (dimension == 3) {
      for (std::size_t f = 0; f < mesh.triangles.size(); ++f)
        if (wanted.count(mesh.triangleRef[f])) faces.faces.push_back(mesh.triangles[f]);
    } else {
      for (std::size_t f = 0; f < mesh.edges.size(); ++f)
        if (wanted.count(mesh.edgeRef[f]))
          faces.faces.push_back({mesh.edges[f][0], mesh.edges[f][1], -1});
    }
    a.faces.push_back(std::move(faces));
  }
  return a;
}

// Barycentric coordinates of p in element e (the fourth is 0 for a triangle).
std::array<double, 4> Barycentric(const LayeredModel& m, const std::array<int, 4>& e,
                                  const Point& p) {
  std::array<double, 4> b{0.0, 0.0, 0.0, 0.0};
  if (e[3] < 0) {
    const Point& a = m.points[e[0]];
    const Point u = m.points[e[1]] - a, v = m.points[e[2]] - a, w = p - a;
    const double det = u[0] * v[1] - u[1] * v[0];
    if (det == 0.0) return {-1.0, -1.0, -1.0, -1.0};
    b[1] = (w[0] * v[1] - w[1] * v[0]) / det;
    b[2] = (u[0] * w[1] - u[1] * w[0]) / det;
    b[0] = 1.0 - b[1] - b[2];
    return b;
  }
  const Point& a = m.points[e[0]];
  const Point u = m.points[e[1]] - a, v = m.points[e[2]] - a, t = m.points[e[3]] - a, w = p - a;
  const double det = Dot(u, Cross(v, t));
  if (det == 0.0) return {-1.0, -1.0, -1.0, -1.0};
  b[1] = Dot(w, Cross(v, t)) / det;
  b[2] = Dot(u, Cross(w, t)) / det;
  b[3] = Dot(u, Cross(v, w)) / det;
  b[0] = 1.0 - b[1] - b[2] - b[3];
  return b;
}

// Temperature at a point, interpolated in the solid element that contains it best.
json Probe(const LayeredModel& m, const std::vector<double>& temperature, const Point& at,
           const std::string& label, const std::string& source) {
  double best = -std::numeric_limits<double>::infinity();
  std::size_t element = 0;
  std::array<double, 4> weights{};
  for (std::size_t e = 0; e < m.solidElements; ++e) {
    const auto b = Barycentric(m, m.elements[e], at);
    const double inside = *std::min_element(b.begin(), b.begin() + (m.dimension == 2 ? 3 : 4));
    if (inside > best) {
      best = inside;
      element = e;
      weights = b;
    }
  }
  if (!(best >= -1e-6))
    throw StudyFileError(source + ": probes: " + label + ": the point lies outside the model");
  double t = 0.0;
  for (int i = 0; i < (m.dimension == 2 ? 3 : 4); ++i)
    t += std::max(0.0, weights[i]) * temperature[m.elements[element][i]];
  double total = 0.0;
  for (int i = 0; i < (m.dimension == 2 ? 3 : 4); ++i)
    total += std::max(0.0, weights[i]);
  return {{"temperature_C", t / total}, {"at", Xyz(at)}};
}

struct Extremes {
  double low = std::numeric_limits<double>::infinity();
  double high = -std::numeric_limits<double>::infinity();
  int lowVertex = -1;
  int highVertex = -1;
};

Extremes SurfaceExtremes(const std::vector<int>& vertices, const std::vector<double>& t) {
  Extremes x;
  for (int v : vertices) {
    if (t[v] < x.low) x.low = t[v], x.lowVertex = v;
    if (t[v] > x.high) x.high = t[v], x.highVertex = v;
  }
  return x;
}

// Coupling coefficient between two environments minus the reference flows.
json ReferenceFigure(const ReferenceSpec& r, const StudyDefinition& definition,
                     const json& coupling, bool threeD) {
  const std::string a = r.between.empty() ? definition.environments[0].name : r.between[0];
  const std::string b = r.between.empty() ? definition.environments[1].name : r.between[1];
  const double l = coupling[a][b].get<double>();
  double reference = 0.0;
  for (std::size_t i = 0; i < r.u.size(); ++i)
    reference += r.u[i] * r.sizes[i];
  for (std::size_t i = 0; i < r.psi.size(); ++i)
    reference += r.psi[i] * r.lengths[i];
  return {{"between", json::array({a, b})},
          {"coupling_coefficient", l},
          {"reference_coupling", reference},
          {"value", l - reference},
          {"unit", threeD ? "W/K" : "W/(m K)"}};
}

StudyOutcome Outcome(const StudyDefinition& definition, LayeredModel&& model,
                     const std::vector<std::string>& solidMaterialNames,
                     std::vector<double>&& temperature) {
  StudyOutcome o;
  o.dimension = model.dimension;
  o.solidVertices = model.solidVertices;
  o.solidElements = model.solidElements;
  o.layerThickness = model.layerThickness;
  o.materialNames = solidMaterialNames;
  o.materialIsLayer.assign(solidMaterialNames.size(), 0);
  o.materialConductivity = model.conductivity;
  o.fixedBy = std::move(model.fixedBy);
  for (std::size_t e = 0; e < definition.environments.size(); ++e)
    if (model.layerMaterialOf[e] >= 0) {
      o.materialNames.push_back("surface layer " + definition.environments[e].name);
      o.materialIsLayer.push_back(1);
    }
  for (const EnvironmentSpec& e : definition.environments) {
    o.environmentNames.push_back(e.name);
    o.environmentTemperature.push_back(e.temperature);
  }
  o.environmentFaces = std::move(model.solidFaces);
  o.points = std::move(model.points);
  o.elements = std::move(model.elements);
  o.material = std::move(model.material);
  o.temperature = std::move(temperature);
  return o;
}

}  // namespace

SolvedStudy SolveStudy(const StudyDefinition& definition, const StudyMesh& mesh) {
  const bool threeD = mesh.dimension == 3;
  const auto start = std::chrono::steady_clock::now();
  auto seconds = [&start] {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  };
  Assembled assembled = Assemble(definition, mesh);
  const std::size_t meshVertices = assembled.solid.points.size();
  LayeredModel model = BuildLayeredModel(std::move(assembled.solid), assembled.faces);
  const double layersReady = seconds();
  const UnitFields fields = SolveUnitFields(model);
  const auto reaction = Reactions(model, fields);
  const std::size_t n = definition.environments.size();
  std::vector<double> airTemperature;
  for (const auto& e : definition.environments)
    airTemperature.push_back(e.temperature);
  std::vector<double> temperature = Superpose(fields, airTemperature);
  const double lowestAir = *std::min_element(airTemperature.begin(), airTemperature.end());
  const double sf = definition.symmetryFactor;

  json s;
  s["dimension"] = mesh.dimension;
  s["length_unit"] = definition.lengthUnit;
  s["symmetry_factor"] = sf;
  json coupling = json::object();
  double largest = 0.0, asymmetry = 0.0;
  for (std::size_t e = 0; e < n; ++e)
    for (std::size_t f = 0; f < n; ++f) {
      largest = std::max(largest, std::abs(reaction[e][f]));
      asymmetry = std::max(asymmetry, std::abs(reaction[e][f] - reaction[f][e]));
    }
  for (std::size_t e = 0; e < n; ++e)
    for (std::size_t f = 0; f < n; ++f)
      if (e != f)
        coupling[definition.environments[e].name][definition.environments[f].name] =
            -0.5 * sf * (reaction[e][f] + reaction[f][e]);
  json environments = json::object();
  json weighting = json::object();
  std::vector<Point> coldest, warmest;
  double balance = 0.0;
  for (std::size_t e = 0; e < n; ++e) {
    const EnvironmentSpec& env = definition.environments[e];
    double flow = 0.0;
    for (std::size_t f = 0; f < n; ++f)
      flow += reaction[e][f] * airTemperature[f];
    flow *= sf;
    balance += flow;
    const Extremes x = SurfaceExtremes(model.surfaceVertices[e], temperature);
    json entry = {{"temperature_C", env.temperature},
                  {"surface_resistance", env.surfaceResistance},
                  {"heat_flow", flow},
                  {"surface_temperature_min_C", x.low},
                  {"surface_temperature_min_at", Xyz(model.points[x.lowVertex])},
                  {"surface_temperature_max_C", x.high},
                  {"surface_temperature_max_at", Xyz(model.points[x.highVertex])}};
    entry["temperature_factor_min"] =
        env.temperature > lowestAir ? json((x.low - lowestAir) / (env.temperature - lowestAir))
                                    : json(nullptr);
    environments[env.name] = entry;
    coldest.push_back(model.points[x.lowVertex]);
    warmest.push_back(model.points[x.highVertex]);
    json g = json::object();
    for (std::size_t f = 0; f < n; ++f)
      g[definition.environments[f].name] = fields.field[f][x.lowVertex];
    weighting[env.name] = g;
  }
  s["environments"] = environments;
  s["heat_flow_unit"] = threeD ? "W" : "W/m";
  s["heat_flow_balance"] = balance;
  s["coupling_coefficients"] = coupling;
  s["coupling_unit"] = threeD ? "W/K" : "W/(m K)";
  s["weighting_factors"] = weighting;
  if (definition.psi && !threeD)
    s["psi"] = ReferenceFigure(*definition.psi, definition, coupling, false);
  if (definition.chi && threeD)
    s["chi"] = ReferenceFigure(*definition.chi, definition, coupling, true);
  if (definition.psi && threeD)
    throw StudyFileError(definition.source + ": psi: a 3-D study gives \"chi\" instead");
  if (definition.chi && !threeD)
    throw StudyFileError(definition.source + ": chi: a 2-D study gives \"psi\" instead");
  json probes = json::object();
  for (const auto& [label, at] : definition.probes)
    probes[label] =
        Probe(model, temperature, definition.metresPerUnit * at, label, definition.source);
  s["probes"] = probes;
  s["mesh"] = {{"vertices", meshVertices},
               {"elements", model.solidElements},
               {"layer_vertices", model.points.size() - model.solidVertices},
               {"layer_elements", model.elements.size() - model.solidElements},
               {"layer_thickness_m", model.layerThickness}};
  s["solver"] = {{"runs", fields.solverRuns},
                 {"seconds", fields.seconds},
                 {"model_seconds", layersReady},
                 {"coordinate_scale", fields.solverScale},
                 {"sliver_tolerance", fields.sliverTolerance},
                 {"converged", fields.converged},
                 {"worst_squared_residual", fields.worstResidual},
                 {"coupling_asymmetry", largest > 0.0 ? asymmetry / largest : 0.0}};

  s["solver"]["results_seconds"] = seconds() - layersReady - fields.seconds;
  SolvedStudy solved;
  solved.summary = std::move(s);
  solved.outcome =
      Outcome(definition, std::move(model), assembled.materialNames, std::move(temperature));
  solved.outcome.coldest = coldest;
  solved.outcome.warmest = warmest;
  return solved;
}

}  // namespace brindle::study
