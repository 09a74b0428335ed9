// The built-in details as ordinary studies: block-meshed geometry, a study file, the engine.
#ifndef BRINDLE_STUDY_EXAMPLE_STUDY_H
#define BRINDLE_STUDY_EXAMPLE_STUDY_H

#include <nlohmann/json.hpp>
#include <string>

#include "examples.h"
#include "grading.h"
#include "report.h"
#include "study_engine.h"

namespace brindle::study {

// References of the mesh: materials 1.. in the detail's order; faces 1 inside, 2 outside.
// The mesh names them as the study file does.
StudyMesh DetailStudyMesh(const Detail& detail, const MeshSizes& sizes, int dimension);

// The study of a detail with its surface resistances, "inside" and "outside" environments.
// Materials and boundaries are named as DetailStudyMesh names them, or by reference number for a
// mesh file that keeps no names.
nlohmann::json DetailStudyJson(const Detail& detail, const TemperaturePair& pair,
                               const std::string& meshFile, bool byReference = false);

// Solves a detail through the engine.
SolvedStudy SolveDetailStudy(const Detail& detail, const MeshSizes& sizes, int dimension,
                             const TemperaturePair& pair);

// Writes DIR/NAME.mesh (the detail's mesh, MEDIT) and DIR/NAME.json (its study); returns the
// study's path.
std::string WriteExampleStudy(const std::string& dir, const std::string& name, const Detail& detail,
                              const MeshSizes& sizes, int dimension, const TemperaturePair& pair);

// Tells which files an example wrote (`written`, then its study file) and prints the command
// that studies the written study file as the user's own.
void PrintOwnStudyCommand(const Progress& progress, const std::string& program,
                          const std::string& written, const std::string& study);

// The solved model as the examples' meshes: layer materials carry their side's role, vertices
// their fixed side, and the room's surface is marked.
TriMesh OutcomeTriMesh(const StudyOutcome& outcome);
TetMesh OutcomeTetMesh(const StudyOutcome& outcome);

// Temperature factors (0 outside, 1 inside) and the element fluxes k grad(factor).
std::vector<double> OutcomeFactor(const StudyOutcome& outcome, const TemperaturePair& pair);
std::vector<Point> FactorFlux(const StudyOutcome& outcome, const std::vector<double>& factor);

}  // namespace brindle::study

#endif
