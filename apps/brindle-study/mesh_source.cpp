#include "mesh_source.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <stdexcept>

namespace brindle::study {
namespace {

const std::vector<int>& RefsOf(const StudyMesh& mesh, int dimension) {
  return dimension == 3 ? mesh.tetrahedronRef : dimension == 2 ? mesh.triangleRef : mesh.edgeRef;
}

std::string Describe(const StudyMesh& mesh, int dimension) {
  std::map<int, std::size_t> count;
  for (int r : RefsOf(mesh, dimension))
    ++count[r];
  std::string text;
  for (const auto& [ref, n] : count) {
    const auto name = mesh.names.find({dimension, ref});
    text += (text.empty() ? "" : ", ") + std::to_string(ref) +
            (name == mesh.names.end() ? "" : " \"" + name->second + "\"") + " (" +
            std::to_string(n) + ")";
  }
  return text.empty() ? "none" : text;
}

}  // namespace

StudyMesh StudyMeshFromMedit(const MeditMesh& medit) {
  StudyMesh mesh;
  mesh.vertices = medit.vertices;
  const bool flat = std::all_of(medit.vertices.begin(), medit.vertices.end(),
                                [&](const Point& p) { return p[2] == medit.vertices.front()[2]; });
  mesh.dimension = medit.tetrahedra.empty() && (medit.dimension == 2 || flat) ? 2 : 3;
  if (mesh.dimension == 2)
    for (Point& p : mesh.vertices)
      p[2] = 0.0;
  mesh.tetrahedra = medit.tetrahedra;
  mesh.tetrahedronRef = medit.tetrahedronRef;
  mesh.triangles = medit.triangles;
  mesh.triangleRef = medit.triangleRef;
  mesh.edges = medit.edges;
  mesh.edgeRef = medit.edgeRef;
  return mesh;
}

StudyMesh LoadStudyMesh(const StudySpec& spec, const std::string& baseDir) {
  if (!spec.geometry.empty())
    throw std::runtime_error(spec.source + ": geometry: this build cannot mesh geometries");
  const std::filesystem::path path = std::filesystem::path(baseDir) / spec.mesh;
  return StudyMeshFromMedit(ReadMedit(path.string()));
}

std::vector<int> ReferencesOf(const StudyMesh& mesh, int entityDimension,
                              const std::vector<std::string>& keys, const std::string& what) {
  const auto& refs = RefsOf(mesh, entityDimension);
  std::vector<int> out;
  for (const std::string& key : keys) {
    bool found = false;
    for (const auto& [id, name] : mesh.names)
      if (id.first == entityDimension && name == key) {
        out.push_back(id.second);
        found = true;
      }
    if (!found) {
      try {
        std::size_t used = 0;
        const int ref = std::stoi(key, &used);
        found = used == key.size() && std::find(refs.begin(), refs.end(), ref) != refs.end();
        if (found) out.push_back(ref);
      } catch (const std::exception&) {
      }
    }
    if (!found)
      throw std::runtime_error(what + " \"" + key + "\" names nothing in the mesh; its " +
                               (entityDimension == 3   ? "tetrahedra"
                                : entityDimension == 2 ? "triangles"
                                                       : "edges") +
                               " carry the references " + Describe(mesh, entityDimension));
  }
  return out;
}

}  // namespace brindle::study
