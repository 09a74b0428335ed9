#include "mesh_source.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <sstream>
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

template <std::size_t N>
void Section(std::ostringstream& out, const char* keyword,
             const std::vector<std::array<int, N>>& elements, const std::vector<int>& refs) {
  if (elements.empty()) return;
  out << keyword << '\n' << elements.size() << '\n';
  for (std::size_t e = 0; e < elements.size(); ++e) {
    for (int v : elements[e])
      out << v + 1 << ' ';
    out << refs[e] << '\n';
  }
}

}  // namespace

std::string StudyMeshMeditText(const StudyMesh& mesh) {
  std::ostringstream out;
  out.precision(17);
  out << "MeshVersionFormatted 2\nDimension " << (mesh.dimension == 2 ? 2 : 3) << "\nVertices\n"
      << mesh.vertices.size() << '\n';
  for (const Point& p : mesh.vertices) {
    out << p[0] << ' ' << p[1];
    if (mesh.dimension != 2) out << ' ' << p[2];
    out << " 0\n";
  }
  Section(out, "Edges", mesh.edges, mesh.edgeRef);
  Section(out, "Triangles", mesh.triangles, mesh.triangleRef);
  Section(out, "Tetrahedra", mesh.tetrahedra, mesh.tetrahedronRef);
  out << "End\n";
  return out.str();
}

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
