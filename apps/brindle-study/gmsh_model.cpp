// Meshes read or made through gmsh's library. gmsh keeps one process-wide model, so every
// call here opens its own gmsh session and closes it before returning.
#include "mesh_intake.h"
#include "mesh_intake_detail.h"

#ifdef BRINDLE_STUDY_HAVE_GMSH

#include <gmsh.h>

#include <algorithm>
#include <cctype>
#include <exception>
#include <sstream>
#include <unordered_map>

namespace brindle::study {
namespace {

using intake_detail::RefusedElements;

// gmsh element types the solvers take.
constexpr int kLine = 1;
constexpr int kTriangle = 2;
constexpr int kTetrahedron = 4;
constexpr int kPoint = 15;

// Initialises gmsh quietly (no configuration files, nothing printed, errors thrown) and
// finalises it on every way out.
class GmshSession {
 public:
  GmshSession() {
    gmsh::initialize(0, nullptr, false);
    gmsh::option::setNumber("General.Terminal", 0);
    gmsh::option::setNumber("General.AbortOnError", 2);
  }
  ~GmshSession() { gmsh::finalize(); }
  GmshSession(const GmshSession&) = delete;
  GmshSession& operator=(const GmshSession&) = delete;
};

// Runs `step`, turning whatever gmsh throws (a std::string in some versions, an exception in
// others) into a MeshInputError that names the file.
template <class Step>
void WithGmsh(const std::string& path, const char* doing, Step step) {
  std::string problem;
  try {
    step();
    return;
  } catch (const MeshInputError&) {
    throw;
  } catch (const std::exception& error) {
    problem = error.what();
  } catch (const std::string& error) {
    problem = error;
  } catch (...) {
    problem = "unknown error";
  }
  throw MeshInputError(path + ": gmsh could not " + doing + " it: " + problem);
}

RefusedElements::Kind Words(std::string family) {
  for (char& c : family)
    c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  if (family == "tetrahedron") return {family, "tetrahedra"};
  if (family == "hexahedron") return {family, "hexahedra"};
  if (family == "polyhedron") return {family, "polyhedra"};
  return {family, family + "s"};
}

// Names an element type in the user's words: "quadrilaterals", "second-order tetrahedra".
RefusedElements::Kind KindOf(int elementType, bool& higherOrder) {
  std::string name;
  int dimension = 0, order = 0, nodes = 0, primaryNodes = 0;
  std::vector<double> localCoordinates;
  gmsh::model::mesh::getElementProperties(elementType, name, dimension, order, nodes,
                                          localCoordinates, primaryNodes);
  RefusedElements::Kind kind = Words(name.substr(0, name.find(' ')));
  higherOrder = order > 1;
  if (order > 1) {
    const std::string prefix =
        order == 2 ? "second-order " : "order-" + std::to_string(order) + " ";
    kind = {prefix + kind.one, prefix + kind.many};
  }
  return kind;
}

// Node tags to vertex indices; dense tags (the usual case) use a table.
class NodeIndex {
 public:
  NodeIndex(const std::vector<std::size_t>& tags) {
    std::size_t largest = 0;
    for (std::size_t tag : tags)
      largest = std::max(largest, tag);
    if (largest <= 2 * tags.size() + 16) {
      dense_.assign(largest + 1, -1);
      for (std::size_t i = 0; i < tags.size(); ++i)
        dense_[tags[i]] = static_cast<int>(i);
    } else {
      for (std::size_t i = 0; i < tags.size(); ++i)
        sparse_[tags[i]] = static_cast<int>(i);
    }
  }
  int operator()(std::size_t tag) const {
    if (!dense_.empty()) return tag < dense_.size() ? dense_[tag] : -1;
    const auto found = sparse_.find(tag);
    return found == sparse_.end() ? -1 : found->second;
  }

 private:
  std::vector<int> dense_;
  std::unordered_map<std::size_t, int> sparse_;
};

template <std::size_t N>
void AppendElements(const std::vector<std::size_t>& nodeTags, const NodeIndex& index,
                    const std::vector<int>& refs, std::vector<std::array<int, N>>& elements,
                    std::vector<int>& elementRefs) {
  const std::size_t count = nodeTags.size() / N;
  for (int ref : refs)
    for (std::size_t e = 0; e < count; ++e) {
      std::array<int, N> element;
      for (std::size_t c = 0; c < N; ++c) {
        element[c] = index(nodeTags[e * N + c]);
        if (element[c] < 0) throw std::runtime_error("an element uses an unknown node");
      }
      elements.push_back(element);
      elementRefs.push_back(ref);
    }
}

// What reading the model met besides the elements it kept, per entity dimension.
struct Tally {
  RefusedElements refused;
  long ungrouped[4] = {0, 0, 0, 0};     // elements of entities in no physical group
  long multiGrouped[4] = {0, 0, 0, 0};  // elements of entities in several physical groups
};

// The references of an entity's elements: its physical groups when its dimension has any
// (gmsh saves only those elements then), else its own tag, as in a file without groups.
std::vector<int> ReferencesOfEntity(int dimension, int tag, bool dimensionHasGroups) {
  if (!dimensionHasGroups) return {tag};
  std::vector<int> groups;
  gmsh::model::getPhysicalGroupsForEntity(dimension, tag, groups);
  return groups;
}

void ReadEntity(int dimension, int tag, bool dimensionHasGroups, const NodeIndex& index,
                StudyMesh& mesh, Tally& tally) {
  std::vector<int> types;
  std::vector<std::vector<std::size_t>> elementTags, nodeTags;
  gmsh::model::mesh::getElements(types, elementTags, nodeTags, dimension, tag);
  const std::vector<int> refs = ReferencesOfEntity(dimension, tag, dimensionHasGroups);
  for (std::size_t t = 0; t < types.size(); ++t) {
    const long count = static_cast<long>(elementTags[t].size());
    if (count == 0 || types[t] == kPoint) continue;
    if (refs.empty()) tally.ungrouped[dimension] += count;
    if (refs.size() > 1) tally.multiGrouped[dimension] += count;
    if (types[t] == kTetrahedron) {
      AppendElements(nodeTags[t], index, refs, mesh.tetrahedra, mesh.tetrahedronRef);
    } else if (types[t] == kTriangle) {
      AppendElements(nodeTags[t], index, refs, mesh.triangles, mesh.triangleRef);
    } else if (types[t] == kLine) {
      AppendElements(nodeTags[t], index, refs, mesh.edges, mesh.edgeRef);
    } else {
      bool higherOrder = false;
      const RefusedElements::Kind kind = KindOf(types[t], higherOrder);
      tally.refused.Add(kind, count);
      if (higherOrder) tally.refused.MarkHigherOrder();
    }
  }
}

void ReadNames(StudyMesh& mesh, bool hasGroups[4]) {
  gmsh::vectorpair groups;
  gmsh::model::getPhysicalGroups(groups);
  for (const auto& [dimension, tag] : groups) {
    if (dimension < 0 || dimension > 3) continue;
    hasGroups[dimension] = true;
    std::string name;
    gmsh::model::getPhysicalName(dimension, tag, name);
    if (!name.empty()) mesh.names[{dimension, tag}] = name;
  }
}

// The solid elements must each have exactly one material: refuses those of entities in no
// physical group or in several, when the file has physical groups of their dimension.
void RequireOneGroupPerSolid(const Tally& tally, int solidDimension, const std::string& path) {
  const char* elements = solidDimension == 3 ? "tetrahedra" : "triangles";
  const char* group = solidDimension == 3 ? "physical volume" : "physical surface";
  if (tally.ungrouped[solidDimension] > 0)
    throw MeshInputError(path + ": " + std::to_string(tally.ungrouped[solidDimension]) + " " +
                         elements + " belong to no " + group +
                         "; give every part of the model a physical group, or none");
  if (tally.multiGrouped[solidDimension] > 0)
    throw MeshInputError(path + ": " + std::to_string(tally.multiGrouped[solidDimension]) + " " +
                         elements + " belong to more than one " + group +
                         "; each element needs exactly one material");
}

// Copies gmsh's current model into a study mesh and checks it.
StudyMesh ReadCurrentModel(const std::string& path) {
  StudyMesh mesh;
  Tally tally;
  WithGmsh(path, "read", [&] {
    bool hasGroups[4] = {false, false, false, false};
    ReadNames(mesh, hasGroups);
    std::vector<std::size_t> nodeTags;
    std::vector<double> coordinates, parametric;
    gmsh::model::mesh::getNodes(nodeTags, coordinates, parametric, -1, -1, false, false);
    mesh.vertices.resize(nodeTags.size());
    for (std::size_t v = 0; v < nodeTags.size(); ++v)
      mesh.vertices[v] = {coordinates[3 * v], coordinates[3 * v + 1], coordinates[3 * v + 2]};
    const NodeIndex index(nodeTags);
    gmsh::vectorpair entities;
    gmsh::model::getEntities(entities);
    for (const auto& [dimension, tag] : entities)
      if (dimension >= 1 && dimension <= 3)
        ReadEntity(dimension, tag, hasGroups[dimension], index, mesh, tally);
  });
  if (tally.refused.Empty()) {
    const bool solids = !mesh.tetrahedra.empty() || tally.ungrouped[3] + tally.multiGrouped[3] > 0;
    RequireOneGroupPerSolid(tally, solids ? 3 : 2, path);
  }
  intake_detail::FinishStudyMesh(mesh, 0, tally.refused, path);
  return mesh;
}

}  // namespace

bool CanReadGmshFiles() {
  return true;
}

namespace intake_detail {

StudyMesh ReadGmshMesh(const std::string& path) {
  GmshSession session;
  WithGmsh(path, "read", [&] { gmsh::open(path); });
  return ReadCurrentModel(path);
}

StudyMesh MeshGmshGeometry(const std::string& path, double meshSize) {
  GmshSession session;
  WithGmsh(path, "read", [&] { gmsh::open(path); });
  WithGmsh(path, "mesh", [&] {
    const int dimension = gmsh::model::getDimension();
    if (dimension < 2)
      throw MeshInputError(path + ": the geometry has no surfaces or volumes to mesh");
    gmsh::option::setNumber("Mesh.MeshSizeMax", meshSize);
    gmsh::model::mesh::generate(dimension);
  });
  return ReadCurrentModel(path);
}

}  // namespace intake_detail
}  // namespace brindle::study

#else  // built without gmsh's library

namespace brindle::study {

bool CanReadGmshFiles() {
  return false;
}

namespace intake_detail {

StudyMesh ReadGmshMesh(const std::string& path) {
  throw MeshInputError(path + ": this build cannot read gmsh files");
}

StudyMesh MeshGmshGeometry(const std::string& path, double) {
  throw MeshInputError(path + ": this build cannot mesh gmsh geometries");
}

}  // namespace intake_detail
}  // namespace brindle::study

#endif
