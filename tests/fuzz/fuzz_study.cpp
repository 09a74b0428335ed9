// brindle-study's intake on any input: the text before the first line "---" is the study file,
// the rest a MEDIT mesh. Both go through what the tool does with them short of solving a large
// system: JSON parsing, the study's checks, reading the mesh (through a scratch file, as the
// tool reads it), reference resolution, refinement and the surface-resistance layers; a tiny
// mesh is solved in full. The tool's own errors for the user are expected outcomes; any other
// exception is a finding.
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "fuzz_checks.h"
#include "layered_model.h"
#include "medit.h"
#include "mesh_intake.h"
#include "options.h"
#include "solve.h"
#include "study_engine.h"
#include "study_file.h"

namespace {

using namespace brindle::study;

// Above these sizes only the cheap steps run, so that each input stays well inside the timeout.
constexpr std::size_t kSolvedElements = 64;
constexpr std::size_t kRefinedElements = 4096;

// A directory of this process's own for the mesh file and the study's output, removed at exit.
class ScratchDir {
 public:
  ScratchDir() {
    std::string pattern = (std::filesystem::temp_directory_path() / "fuzz_study_XXXXXX").string();
    if (!mkdtemp(pattern.data())) fuzz::Finding("cannot make a scratch directory");
    path_ = pattern;
  }
  ~ScratchDir() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

const std::filesystem::path& Scratch() {
  static const ScratchDir dir;
  return dir.path();
}

StudyMesh ReadMeshText(const std::string& text) {
  const std::filesystem::path path = Scratch() / "input.mesh";
  std::ofstream(path, std::ios::binary | std::ios::trunc) << text;
  return ReadStudyMesh(path.string());
}

std::size_t ElementCount(const StudyMesh& mesh) {
  return mesh.dimension == 3 ? mesh.tetrahedra.size() : mesh.triangles.size();
}

// The solid and the environments' faces as the engine assembles them, for the layer builder.
void BuildLayers(const StudyDefinition& definition, const StudyMesh& mesh) {
  const int dim = mesh.dimension;
  SolidModel solid;
  solid.dimension = dim;
  for (const Point& p : mesh.vertices)
    solid.points.push_back({p[0] * definition.metresPerUnit, p[1] * definition.metresPerUnit,
                            p[2] * definition.metresPerUnit});
  for (const auto& m : definition.materials)
    solid.conductivity.push_back(m.second);
  std::vector<std::vector<int>> materialRefs;
  for (const auto& m : definition.materials)
    materialRefs.push_back(ResolveReferences(mesh, dim, {m.first}, "material " + m.first));
  const auto materialOf = [&](int ref) {
    for (std::size_t i = 0; i < materialRefs.size(); ++i)
      for (int r : materialRefs[i])
        if (r == ref) return static_cast<int>(i);
    return 0;
  };
  if (dim == 3) {
    for (std::size_t e = 0; e < mesh.tetrahedra.size(); ++e) {
      solid.elements.push_back(mesh.tetrahedra[e]);
      solid.material.push_back(materialOf(mesh.tetrahedronRef[e]));
    }
  } else {
    for (std::size_t e = 0; e < mesh.triangles.size(); ++e) {
      const auto& t = mesh.triangles[e];
      solid.elements.push_back({t[0], t[1], t[2], -1});
      solid.material.push_back(materialOf(mesh.triangleRef[e]));
    }
  }
  std::vector<EnvironmentFaces> faces;
  for (const EnvironmentSpec& env : definition.environments) {
    const std::vector<int> refs =
        ResolveReferences(mesh, dim - 1, env.boundaries, "boundary of environment " + env.name);
    EnvironmentFaces f{env.name, env.surfaceResistance, {}};
    const auto wanted = [&](int ref) {
      for (int r : refs)
        if (r == ref) return true;
      return false;
    };
    if (dim == 3) {
      for (std::size_t i = 0; i < mesh.triangles.size(); ++i)
        if (wanted(mesh.triangleRef[i])) f.faces.push_back(mesh.triangles[i]);
    } else {
      for (std::size_t i = 0; i < mesh.edges.size(); ++i)
        if (wanted(mesh.edgeRef[i])) f.faces.push_back({mesh.edges[i][0], mesh.edges[i][1], -1});
    }
    faces.push_back(std::move(f));
  }
  BuildLayeredModel(std::move(solid), faces);
}

void Intake(const std::string& studyText, const std::string& meshText) {
  const nlohmann::json study = nlohmann::json::parse(studyText, nullptr, false);
  if (study.is_discarded()) return;  // the tool reports a syntax error and stops
  const StudyDefinition definition = ParseStudy(study, "study.json");
  StudyMesh mesh = ReadMeshText(meshText);
  const std::size_t elements = ElementCount(mesh);
  DescribeReferences(mesh, mesh.dimension);
  DescribeReferences(mesh, mesh.dimension - 1);
  if (elements <= kRefinedElements) {
    const StudyMesh fine = RefineUniformly(mesh);
    if (ElementCount(fine) != elements * (mesh.dimension == 3 ? 8 : 4))
      fuzz::Finding("refinement did not split every element");
  }
  BuildLayers(definition, mesh);
  if (elements <= kSolvedElements && (!definition.checkConvergence || elements <= 8))
    RunStudy(study, &mesh, Scratch().string(), (Scratch() / "out").string(), "study.json");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string input(reinterpret_cast<const char*>(data), size);
  const std::size_t split = input.find("\n---\n");
  const std::string studyText = input.substr(0, split);
  const std::string meshText = split == std::string::npos ? std::string() : input.substr(split + 5);
  try {
    Intake(studyText, meshText);
  } catch (const StudyFileError&) {
  } catch (const MeshInputError&) {
  } catch (const MeditError&) {
  } catch (const LayerError&) {
  } catch (const SolveError&) {
  } catch (const UsageError&) {
  } catch (const std::exception& e) {
    fuzz::Finding(std::string("undocumented exception: ") + e.what());
  }
  return 0;
}
