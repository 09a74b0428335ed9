#include "user_model.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <string>

namespace brindle::study {
namespace {

// Dense material list from the element references, in ascending reference order.
std::vector<int> MaterialIndices(const std::vector<int>& refs, const Assignment& assignment,
                                 std::vector<Material>& materials) {
  const std::set<int> used(refs.begin(), refs.end());
  std::map<int, int> index;
  for (int ref : used) {
    const auto k = assignment.conductivity.find(ref);
    if (k == assignment.conductivity.end())
      throw AssignmentError("no conductivity for element reference " + std::to_string(ref) +
                            " (give --conductivity " + std::to_string(ref) + "=K)");
    index[ref] = static_cast<int>(materials.size());
    materials.push_back({"reference " + std::to_string(ref), k->second, Role::Solid});
  }
  for (const auto& [ref, k] : assignment.conductivity)
    if (!used.count(ref))
      throw AssignmentError("no element carries reference " + std::to_string(ref) +
                            " given with --conductivity");
  std::vector<int> region;
  for (int ref : refs)
    region.push_back(index[ref]);
  return region;
}

// Marks the vertices of the boundary elements (or vertices) whose reference is in `refs`.
template <std::size_t N>
std::vector<char> Group(const MeditMesh& mesh, const std::vector<std::array<int, N>>& elements,
                        const std::vector<int>& elementRef, const std::vector<int>& refs,
                        const char* option) {
  std::vector<char> member(mesh.vertices.size(), 0);
  for (int ref : refs) {
    bool found = false;
    if (!elements.empty()) {
      for (std::size_t e = 0; e < elements.size(); ++e)
        if (elementRef[e] == ref) {
          for (int v : elements[e])
            member[v] = 1;
          found = true;
        }
    } else {
      for (std::size_t v = 0; v < mesh.vertices.size(); ++v)
        if (mesh.vertexRef[v] == ref) member[v] = found = true;
    }
    if (!found)
      throw AssignmentError(std::string("no boundary element carries reference ") +
                            std::to_string(ref) + " given with " + option);
  }
  return member;
}

template <std::size_t N>
std::vector<VertexKind> Kinds(const MeditMesh& mesh,
                              const std::vector<std::array<int, N>>& elements,
                              const std::vector<int>& elementRef, const Assignment& assignment) {
  if (assignment.low.empty() || assignment.high.empty())
    throw AssignmentError("a study needs a cold side (--low) and a warm side (--high)");
  const auto low = Group(mesh, elements, elementRef, assignment.low, "--low");
  const auto high = Group(mesh, elements, elementRef, assignment.high, "--high");
  std::vector<VertexKind> kind(mesh.vertices.size(), VertexKind::Free);
  for (std::size_t v = 0; v < kind.size(); ++v) {
    if (low[v] && high[v])
      throw AssignmentError("vertex " + std::to_string(v + 1) +
                            " belongs to both the --low and the --high side");
    if (low[v]) kind[v] = VertexKind::Cold;
    if (high[v]) kind[v] = VertexKind::Warm;
  }
  return kind;
}

// Vertices used by no element would leave the solvers with an unknown they cannot fix.
template <std::size_t N>
void CheckAllUsed(const MeditMesh& mesh, const std::vector<std::array<int, N>>& elements) {
  std::vector<char> used(mesh.vertices.size(), 0);
  for (const auto& e : elements)
    for (int v : e)
      used[v] = 1;
  const auto unused = std::find(used.begin(), used.end(), 0);
  if (unused != used.end())
    throw AssignmentError("vertex " + std::to_string(unused - used.begin() + 1) +
                          " belongs to no element");
}

}  // namespace

bool IsVolumeMesh(const MeditMesh& mesh) {
  return !mesh.tetrahedra.empty();
}

TetMesh BuildVolumeModel(const MeditMesh& mesh, const Assignment& assignment) {
  if (mesh.tetrahedra.empty()) throw AssignmentError("the mesh has no tetrahedra");
  CheckAllUsed(mesh, mesh.tetrahedra);
  TetMesh model;
  model.points = mesh.vertices;
  model.tetrahedra = mesh.tetrahedra;
  model.region = MaterialIndices(mesh.tetrahedronRef, assignment, model.materials);
  model.kind = Kinds(mesh, mesh.triangles, mesh.triangleRef, assignment);
  model.onSurface.assign(mesh.vertices.size(), 0);
  if (!assignment.surface.empty())
    model.onSurface =
        Group(mesh, mesh.triangles, mesh.triangleRef, assignment.surface, "--surface");
  return model;
}

TriMesh BuildSurfaceModel(const MeditMesh& mesh, const Assignment& assignment) {
  if (mesh.triangles.empty()) throw AssignmentError("the mesh has no triangles");
  CheckAllUsed(mesh, mesh.triangles);
  TriMesh model;
  model.points = mesh.vertices;
  model.triangles = mesh.triangles;
  model.region = MaterialIndices(mesh.triangleRef, assignment, model.materials);
  model.kind = Kinds(mesh, mesh.edges, mesh.edgeRef, assignment);
  model.onSurface.assign(mesh.vertices.size(), 0);
  if (!assignment.surface.empty())
    model.onSurface = Group(mesh, mesh.edges, mesh.edgeRef, assignment.surface, "--surface");
  return model;
}

}  // namespace brindle::study
