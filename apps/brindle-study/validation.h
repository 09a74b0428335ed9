// `brindle-study --validate`: the reference cases run as ordinary studies at two mesh levels,
// compared with their published figures, printed as tables and written to validation.json.
#ifndef BRINDLE_STUDY_VALIDATION_H
#define BRINDLE_STUDY_VALIDATION_H

#include <functional>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "validation_cases.h"

namespace brindle::study {

// Runs one case's study and returns its summary; an empty folder means: write no files.
using StudyRunner =
    std::function<nlohmann::json(const CaseStudy& study, const std::string& outputFolder)>;

struct LevelResult {
  int level = 0;
  std::size_t elements = 0;
  std::size_t vertices = 0;
  double seconds = 0.0;
  nlohmann::json summary;
};

struct CaseResult {
  std::string id;
  std::string title;
  int dimension = 3;
  std::vector<LevelResult> levels;  // coarsest first; the checks use the last
  std::vector<CheckRow> rows;
  double seconds = 0.0;

  bool Passed() const;
};

// Runs a case from level 0 up to one above its coarse level, the finest run writing its files
// into outputFolder/<id>, and gathers its figures, the convergence rule and, where the case has
// an exact solution, the error at every level.
CaseResult ValidateCase(const ValidationCase& c, const StudyRunner& run,
                        const std::string& outputFolder);

// The table printed for a case.
std::string CaseTable(const CaseResult& result);

nlohmann::json ValidationJson(const std::vector<CaseResult>& results);

// The command: runs every case through the study engine, prints the tables, writes
// outputFolder/validation.json and returns 0 when everything passes, 1 otherwise.
int RunValidation(const std::string& outputFolder);

}  // namespace brindle::study

#endif
