#include "mesh_source.h"

#include "mesh_intake.h"

#include <filesystem>
#include <sstream>

namespace brindle::study {
namespace {

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

StudyMesh LoadStudyMesh(const StudySpec& spec, const std::string& baseDir) {
  const std::filesystem::path base(baseDir);
  if (!spec.geometry.empty()) return MeshGeometry((base / spec.geometry).string(), spec.meshSize);
  return ReadStudyMesh((base / spec.mesh).string());
}

}  // namespace brindle::study
