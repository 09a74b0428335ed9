// The study engine: a study file's mesh, materials and environments in; heat flows, coupling
// coefficients, surface temperatures and the solved model out.
#ifndef BRINDLE_STUDY_STUDY_ENGINE_H
#define BRINDLE_STUDY_STUDY_ENGINE_H

#include <array>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "model.h"
#include "study_file.h"
#include "study_mesh.h"

namespace brindle::study {

// The solved model, for pictures and files.
struct StudyOutcome {
  int dimension = 3;
  std::vector<Point> points;                 // metres: the solid's vertices, then the layers'
  std::vector<std::array<int, 4>> elements;  // tetrahedra, or triangles with a fourth index -1
  std::vector<int> material;                 // per element, index into the two lists below
  std::vector<std::string> materialNames;
  std::vector<char> materialIsLayer;         // the thin layer of a surface resistance
  std::vector<double> materialConductivity;  // W/(m K)
  std::vector<int> fixedBy;                  // per vertex: the environment holding it, or -1
  std::vector<double> temperature;           // C per vertex
  std::size_t solidVertices = 0;
  std::size_t solidElements = 0;
  double layerThickness = 0.0;  // m
  std::vector<std::string> environmentNames;
  std::vector<double> environmentTemperature;  // C
  // Per environment: its faces on the solid side (segments with a third index -1 in 2-D) and
  // where its surface is coldest and warmest (m).
  std::vector<std::vector<std::array<int, 3>>> environmentFaces;
  std::vector<Point> coldest;
  std::vector<Point> warmest;
};

struct SolvedStudy {
  nlohmann::json summary;  // what summary.json holds under "study"
  StudyOutcome outcome;
};

// Solves a checked study on a mesh (in the study's length unit).
SolvedStudy SolveStudy(const StudyDefinition& definition, const StudyMesh& mesh);

// The study as JSON; with mesh == nullptr the mesh named by the study is read (paths relative
// to baseDir). Writes the study's files into outputDir, prints the report and returns the
// summary. `source` names the study in messages. Throws StudyFileError, LayerError, SolveError
// or std::runtime_error with a message for the user.
nlohmann::json RunStudy(const nlohmann::json& study, const StudyMesh* mesh,
                        const std::string& baseDir, const std::string& outputDir,
                        const std::string& source = "study");

// The same with the solved model handed back as well.
SolvedStudy RunStudyWithOutcome(const nlohmann::json& study, const StudyMesh* mesh,
                                const std::string& baseDir, const std::string& outputDir,
                                const std::string& source = "study");

}  // namespace brindle::study

#endif
