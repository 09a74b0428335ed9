#include "mesh_intake.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <map>
#include <sstream>

#include "medit.h"
#include "mesh_intake_detail.h"

namespace brindle::study {
namespace {

using intake_detail::RefusedElements;

std::string LowerExtension(const std::string& path) {
  const std::size_t slash = path.find_last_of("/\\");
  const std::size_t dot = path.find_last_of('.');
  if (dot == std::string::npos || (slash != std::string::npos && dot < slash)) return "";
  std::string extension = path.substr(dot);
  std::transform(extension.begin(), extension.end(), extension.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return extension;
}

std::string ReadWholeFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) throw MeshInputError(path + ": cannot open the file");
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

void RequireReadable(const std::string& path) {
  if (!std::ifstream(path, std::ios::binary)) throw MeshInputError(path + ": cannot open the file");
}

void RequireGmsh(const std::string& path, const char* what) {
  if (!CanReadGmshFiles())
    throw MeshInputError(path + ": this build of brindle-study was made without gmsh and cannot " +
                         what + "; save the mesh as an ASCII MEDIT .mesh file");
}

// MEDIT files go through the tool's own reader rather than gmsh's: gmsh keeps their references
// (as elementary entity tags) but its reader is line-bound, expecting each count on the line
// after its keyword and "Dimension" alone on its line, so valid files such as "Vertices 6" or
// "Dimension 2" on one line fail there with "Wrong node index".
StudyMesh ReadMeditStudyMesh(const std::string& path) {
  const std::string text = ReadWholeFile(path);
  if (text.find('\0') != std::string::npos)
    throw MeshInputError(path +
                         ": a binary file; the tool reads ASCII MEDIT .mesh files (not .meshb)");
  MeditMesh medit;
  try {
    medit = ParseMedit(text, path);
  } catch (const MeditError& error) {
    throw MeshInputError(error.what());
  }
  RefusedElements refused;
  refused.Add({"quadrilateral", "quadrilaterals"}, medit.quadrilateralCount);
  refused.Add({"hexahedron", "hexahedra"}, medit.hexahedronCount);
  refused.Add({"prism", "prisms"}, medit.prismCount);
  StudyMesh mesh;
  mesh.vertices = std::move(medit.vertices);
  mesh.tetrahedra = std::move(medit.tetrahedra);
  mesh.tetrahedronRef = std::move(medit.tetrahedronRef);
  mesh.triangles = std::move(medit.triangles);
  mesh.triangleRef = std::move(medit.triangleRef);
  mesh.edges = std::move(medit.edges);
  mesh.edgeRef = std::move(medit.edgeRef);
  intake_detail::FinishStudyMesh(mesh, medit.dimension, refused, path);
  return mesh;
}

const std::vector<int>& ReferencesOf(const StudyMesh& mesh, int entityDimension) {
  static const std::vector<int> kNone;
  switch (entityDimension) {
    case 3:
      return mesh.tetrahedronRef;
    case 2:
      return mesh.triangleRef;
    case 1:
      return mesh.edgeRef;
    default:
      return kNone;
  }
}

std::string ElementWord(int entityDimension, long count) {
  const bool one = count == 1;
  switch (entityDimension) {
    case 3:
      return one ? "tetrahedron" : "tetrahedra";
    case 2:
      return one ? "triangle" : "triangles";
    default:
      return one ? "edge" : "edges";
  }
}

std::map<int, long> CountByReference(const StudyMesh& mesh, int entityDimension) {
  std::map<int, long> counts;
  for (int ref : ReferencesOf(mesh, entityDimension))
    ++counts[ref];
  return counts;
}

// A whole-text integer such as "10" or " 10 ", or false.
bool ParseReference(const std::string& key, int& value) {
  const char* begin = key.c_str();
  char* end = nullptr;
  const long parsed = std::strtol(begin, &end, 10);
  if (end == begin) return false;
  while (*end != '\0' && std::isspace(static_cast<unsigned char>(*end)))
    ++end;
  if (*end != '\0' || parsed < -2147483647L || parsed > 2147483647L) return false;
  value = static_cast<int>(parsed);
  return true;
}

[[noreturn]] void FailToResolve(const StudyMesh& mesh, int entityDimension,
                                const std::string& problem) {
  const std::string listing = DescribeReferences(mesh, entityDimension);
  if (listing.empty())
    throw MeshInputError(problem + "; the mesh has no " + ElementWord(entityDimension, 2));
  throw MeshInputError(problem + "; the mesh's " + ElementWord(entityDimension, 2) +
                       " carry these references:\n" + listing);
}

}  // namespace

namespace intake_detail {

void RefusedElements::Add(const Kind& kind, long count) {
  if (count <= 0) return;
  for (auto& entry : counts_)
    if (entry.first.many == kind.many) {
      entry.second += count;
      return;
    }
  counts_.emplace_back(kind, count);
}

std::string RefusedElements::Summary() const {
  std::string summary;
  for (const auto& [kind, count] : counts_)
    summary += (summary.empty() ? "" : ", ") + std::to_string(count) + " " +
               (count == 1 ? kind.one : kind.many);
  return summary;
}

namespace {

void RefuseUnsupported(const RefusedElements& refused, const std::string& source) {
  if (refused.Empty()) return;
  const std::string hint = refused.AnyHigherOrder()
                               ? "mesh with first-order triangles/tetrahedra (gmsh: "
                                 "Mesh.ElementOrder = 1, no Recombine)"
                               : "mesh with triangles/tetrahedra (gmsh: no Recombine)";
  throw MeshInputError(source + ": " + refused.Summary() +
                       ": the solvers take triangles (2-D) and tetrahedra (3-D) only; " + hint);
}

// True when every vertex lies in one plane z = constant, up to rounding relative to the size
// of the model.
bool LiesInOnePlaneOfConstantZ(const std::vector<Point>& vertices) {
  if (vertices.empty()) return true;
  Point low = vertices[0], high = vertices[0];
  for (const Point& p : vertices)
    for (int a = 0; a < 3; ++a) {
      low[a] = std::min(low[a], p[a]);
      high[a] = std::max(high[a], p[a]);
    }
  const double extent = std::max(high[0] - low[0], high[1] - low[1]);
  return high[2] - low[2] <= 1e-9 * extent;
}

template <std::size_t N>
void MarkUsed(const std::vector<std::array<int, N>>& elements, std::vector<int>& newIndex) {
  for (const auto& element : elements)
    for (int v : element)
      newIndex[v] = 0;
}

template <std::size_t N>
void Renumber(std::vector<std::array<int, N>>& elements, const std::vector<int>& newIndex) {
  for (auto& element : elements)
    for (int& v : element)
      v = newIndex[v];
}

void DropUnusedVertices(StudyMesh& mesh) {
  std::vector<int> newIndex(mesh.vertices.size(), -1);
  MarkUsed(mesh.tetrahedra, newIndex);
  MarkUsed(mesh.triangles, newIndex);
  MarkUsed(mesh.edges, newIndex);
  int kept = 0;
  for (std::size_t v = 0; v < mesh.vertices.size(); ++v)
    if (newIndex[v] == 0) {
      mesh.vertices[kept] = mesh.vertices[v];
      newIndex[v] = kept++;
    }
  if (kept == static_cast<int>(mesh.vertices.size())) return;
  mesh.vertices.resize(kept);
  Renumber(mesh.tetrahedra, newIndex);
  Renumber(mesh.triangles, newIndex);
  Renumber(mesh.edges, newIndex);
}

}  // namespace

void FinishStudyMesh(StudyMesh& mesh, int declaredDimension, const RefusedElements& refused,
                     const std::string& source) {
  RefuseUnsupported(refused, source);
  if (!mesh.tetrahedra.empty()) {
    mesh.dimension = 3;
  } else if (mesh.triangles.empty()) {
    throw MeshInputError(source + ": the mesh has no tetrahedra (3-D) or triangles (2-D)");
  } else if (declaredDimension == 2 || LiesInOnePlaneOfConstantZ(mesh.vertices)) {
    mesh.dimension = 2;
  } else {
    throw MeshInputError(source +
                         ": the mesh has triangles but no tetrahedra, and its triangles do not "
                         "lie in one plane z = constant: a 3-D study needs tetrahedra, a 2-D "
                         "section lies in the x-y plane");
  }
  DropUnusedVertices(mesh);
  if (mesh.dimension == 2)
    for (Point& p : mesh.vertices)
      p[2] = 0.0;
}

}  // namespace intake_detail

StudyMesh ReadStudyMesh(const std::string& path) {
  const std::string extension = LowerExtension(path);
  if (extension == ".mesh") return ReadMeditStudyMesh(path);
  if (extension == ".meshb")
    throw MeshInputError(path + ": a binary MEDIT file; save the mesh as ASCII MEDIT .mesh");
  if (extension == ".geo")
    throw MeshInputError(path +
                         ": a gmsh geometry, not a mesh; give it as the study's \"geometry\" "
                         "with a \"mesh_size\" to have it meshed");
  if (extension != ".msh")
    throw MeshInputError(path + ": unknown mesh format '" + extension +
                         "'; the tool reads gmsh .msh and MEDIT .mesh meshes and meshes gmsh "
                         ".geo geometries");
  RequireReadable(path);
  RequireGmsh(path, "read gmsh .msh files");
  return intake_detail::ReadGmshMesh(path);
}

StudyMesh MeshGeometry(const std::string& geoPath, double meshSize) {
  if (!(meshSize > 0.0) || !std::isfinite(meshSize))
    throw MeshInputError(geoPath + ": the mesh size must be a positive number");
  RequireReadable(geoPath);
  RequireGmsh(geoPath, "mesh .geo geometries");
  return intake_detail::MeshGmshGeometry(geoPath, meshSize);
}

std::vector<int> ResolveReferences(const StudyMesh& mesh, int entityDimension,
                                   const std::vector<std::string>& keys, const std::string& what) {
  const std::map<int, long> counts = CountByReference(mesh, entityDimension);
  std::vector<int> resolved;
  const auto add = [&resolved](int ref) {
    if (std::find(resolved.begin(), resolved.end(), ref) == resolved.end()) resolved.push_back(ref);
  };
  for (const std::string& key : keys) {
    bool named = false;
    for (const auto& [dimensionAndRef, name] : mesh.names) {
      if (dimensionAndRef.first != entityDimension || name != key) continue;
      const int ref = dimensionAndRef.second;
      if (!counts.count(ref))
        FailToResolve(mesh, entityDimension,
                      what + " \"" + key + "\" names reference " + std::to_string(ref) +
                          ", which has no " + ElementWord(entityDimension, 2));
      add(ref);
      named = true;
    }
    if (named) continue;
    int ref = 0;
    if (!ParseReference(key, ref) || !counts.count(ref))
      FailToResolve(mesh, entityDimension, "unknown " + what + " \"" + key + "\"");
    add(ref);
  }
  return resolved;
}

std::string DescribeReferences(const StudyMesh& mesh, int entityDimension) {
  std::map<int, long> counts = CountByReference(mesh, entityDimension);
  for (const auto& entry : mesh.names)
    if (entry.first.first == entityDimension) counts.emplace(entry.first.second, 0);
  std::string listing;
  for (const auto& [ref, count] : counts) {
    if (!listing.empty()) listing += '\n';
    listing += "  " + std::to_string(ref);
    const auto name = mesh.names.find({entityDimension, ref});
    if (name != mesh.names.end()) listing += " \"" + name->second + "\"";
    listing += ": " + std::to_string(count) + " " + ElementWord(entityDimension, count);
  }
  return listing;
}

}  // namespace brindle::study
