#include "example_study.h"

#include <cmath>
#include <cstdio>
#include <fstream>
#include <stdexcept>

#include "block_mesher.h"
#include "block_study_mesh.h"
#include "geometry.h"
#include "medit.h"
#include "mesh_source.h"
#include "solve.h"
#include "terminal.h"

namespace brindle::study {
namespace {

constexpr int kInside = 1;
constexpr int kOutside = 2;

FaceTagger DetailTagger(const Detail& detail) {
  const double outside = detail.outsideFace;
  return [outside](const Point& c, const Point& n) {
    const double tolerance = 1e-9;
    if (n[0] > 0.5 && std::abs(c[0] - outside) < tolerance) return kOutside;
    if (n[0] < -0.5 && std::abs(c[0]) < tolerance) return kInside;
    if (std::abs(n[0]) < 0.5 && c[0] < -tolerance) return kInside;  // faces in the room
    return 0;
  };
}

template <class Mesh>
void FillFromOutcome(const StudyOutcome& o, Mesh& mesh) {
  mesh.points = o.points;
  mesh.region = o.material;
  for (std::size_t m = 0; m < o.materialNames.size(); ++m) {
    Role role = Role::kSolid;
    if (o.materialIsLayer[m])
      role = o.materialNames[m].find("inside") != std::string::npos ? Role::kWarmLayer
                                                                    : Role::kColdLayer;
    mesh.materials.push_back({o.materialNames[m], o.materialConductivity[m], role});
  }
  mesh.kind.assign(o.points.size(), VertexKind::kFree);
  for (std::size_t v = 0; v < o.points.size(); ++v)
    if (o.fixedBy[v] == 0)
      mesh.kind[v] = VertexKind::kWarm;
    else if (o.fixedBy[v] == 1)
      mesh.kind[v] = VertexKind::kCold;
  mesh.onSurface.assign(o.points.size(), 0);
  for (const auto& face : o.environmentFaces[0])
    for (int v : face)
      if (v >= 0) mesh.onSurface[v] = 1;
}

}  // namespace

StudyMesh DetailStudyMesh(const Detail& detail, const MeshSizes& sizes, int dimension) {
  StudyMesh mesh =
      dimension == 2
          ? BlockStudyMesh(MeshSection(detail.blocks, detail.materials, sizes, detail.focus),
                           DetailTagger(detail))
          : BlockStudyMesh(MeshBlocks(detail.blocks, detail.materials, sizes, detail.focus),
                           DetailTagger(detail));
  for (std::size_t m = 0; m < detail.materials.size(); ++m)
    mesh.names[{dimension, static_cast<int>(m) + 1}] = detail.materials[m].name;
  mesh.names[{dimension - 1, kInside}] = "room side";
  mesh.names[{dimension - 1, kOutside}] = "outer face";
  return mesh;
}

nlohmann::json DetailStudyJson(const Detail& detail, const TemperaturePair& pair,
                               const std::string& meshFile, bool byReference) {
  nlohmann::json materials = nlohmann::json::object();
  std::vector<char> used(detail.materials.size(), 0);
  for (const Block& b : detail.blocks)
    used[b.material] = 1;
  for (std::size_t m = 0; m < detail.materials.size(); ++m)
    if (used[m])
      materials[byReference ? std::to_string(m + 1) : detail.materials[m].name] =
          detail.materials[m].conductivity;
  const nlohmann::json inside = byReference ? nlohmann::json(kInside) : "room side";
  const nlohmann::json outside = byReference ? nlohmann::json(kOutside) : "outer face";
  return {{"mesh", meshFile},
          {"materials", materials},
          {"environments",
           {{"inside",
             {{"temperature", pair.inside},
              {"surface_resistance", kInteriorSurfaceResistance},
              {"boundaries", {inside}}}},
            {"outside",
             {{"temperature", pair.outside},
              {"surface_resistance", kExteriorSurfaceResistance},
              {"boundaries", {outside}}}}}},
          {"symmetry_factor", detail.symmetryCopies}};
}

SolvedStudy SolveDetailStudy(const Detail& detail, const MeshSizes& sizes, int dimension,
                             const TemperaturePair& pair) {
  const StudyMesh mesh = DetailStudyMesh(detail, sizes, dimension);
  return SolveStudy(ParseStudy(DetailStudyJson(detail, pair, "built in"), "built-in example"),
                    mesh);
}

std::string WriteExampleStudy(const std::string& dir, const std::string& name, const Detail& detail,
                              const MeshSizes& sizes, int dimension, const TemperaturePair& pair) {
  WriteMedit(dir + "/" + name + ".mesh", MeditText(DetailStudyMesh(detail, sizes, dimension)));
  const std::string study = dir + "/" + name + ".json";
  std::ofstream out(study);
  out << DetailStudyJson(detail, pair, name + ".mesh", true).dump(2) << '\n';
  if (!out) throw std::runtime_error("cannot write " + study);
  return study;
}

TriMesh OutcomeTriMesh(const StudyOutcome& o) {
  TriMesh mesh;
  FillFromOutcome(o, mesh);
  for (const auto& e : o.elements)
    mesh.triangles.push_back({e[0], e[1], e[2]});
  return mesh;
}

TetMesh OutcomeTetMesh(const StudyOutcome& o) {
  TetMesh mesh;
  FillFromOutcome(o, mesh);
  mesh.tetrahedra = o.elements;
  return mesh;
}

std::vector<double> OutcomeFactor(const StudyOutcome& o, const TemperaturePair& pair) {
  std::vector<double> factor;
  factor.reserve(o.temperature.size());
  for (double t : o.temperature)
    factor.push_back((t - pair.outside) / pair.Difference());
  return factor;
}

void PrintOwnStudyCommand(const Progress& progress, const std::string& program,
                          const std::string& written, const std::string& study) {
  progress.Line("  wrote " + written + " and " + study +
                " with its mesh; to study it as your own:");
  std::printf("    %s\n", ShellCommand({program, "--study", AbsolutePath(study)}).c_str());
  std::fflush(stdout);
}

std::vector<Point> FactorFlux(const StudyOutcome& o, const std::vector<double>& factor) {
  std::vector<Point> flux;
  flux.reserve(o.elements.size());
  for (std::size_t e = 0; e < o.elements.size(); ++e) {
    const auto& t = o.elements[e];
    double measure = 0.0;
    Point gradient{0.0, 0.0, 0.0};
    if (t[3] < 0) {
      const auto g = ShapeGradients(o.points[t[0]], o.points[t[1]], o.points[t[2]], &measure);
      for (int i = 0; i < 3; ++i)
        gradient = gradient + factor[t[i]] * g[i];
    } else {
      const auto g =
          ShapeGradients(o.points[t[0]], o.points[t[1]], o.points[t[2]], o.points[t[3]], &measure);
      for (int i = 0; i < 4; ++i)
        gradient = gradient + factor[t[i]] * g[i];
    }
    flux.push_back(o.materialConductivity[o.material[e]] * gradient);
  }
  return flux;
}

}  // namespace brindle::study
