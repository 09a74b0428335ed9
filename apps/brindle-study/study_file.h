// The study file: what a thermal-bridge study is made of, read from JSON and checked.
#ifndef BRINDLE_STUDY_STUDY_FILE_H
#define BRINDLE_STUDY_STUDY_FILE_H

#include <nlohmann/json.hpp>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "model.h"

namespace brindle::study {

// A study file that cannot be used; what() reads "<file>: <key>: <problem>".
class StudyFileError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

struct EnvironmentSpec {
  std::string name;
  double temperature = 0.0;             // C
  double surfaceResistance = 0.0;       // m2K/W
  std::vector<std::string> boundaries;  // physical names or reference numbers as text
};

// psi (2-D) or chi (3-D) of the detail between two environments: the coupling coefficient
// minus the reference flows sum(U_j l_j) (psi) or sum(U_j A_j) + sum(psi_k l_k) (chi).
struct ReferenceSpec {
  std::vector<std::string> between;  // the two environments; empty when there are only two
  std::vector<double> u;             // W/(m2 K)
  std::vector<double> sizes;         // lengths (2-D, m) or areas (3-D, m2) of the whole detail
  std::vector<double> psi;           // 3-D: linear coefficients, W/(m K)
  std::vector<double> lengths;       // 3-D: their lengths, m
};

struct StudyDefinition {
  std::string source;    // the study file, for messages
  std::string mesh;      // path as written in the file
  std::string geometry;  // .geo path, meshed with mesh_size
  double meshSize = 0.0;
  std::string lengthUnit = "m";
  double metresPerUnit = 1.0;
  std::vector<std::pair<std::string, double>> materials;  // key -> W/(m K)
  std::vector<EnvironmentSpec> environments;              // in the order of their names
  double symmetryFactor = 1.0;
  bool checkConvergence = false;
  std::vector<std::pair<std::string, Point>> probes;  // in the study's length unit
  std::optional<ReferenceSpec> psi;
  std::optional<ReferenceSpec> chi;
};

// Checks a parsed study; `source` names it in messages.
StudyDefinition ParseStudy(const nlohmann::json& study, const std::string& source);

// Reads and parses a study file (JSON syntax errors become StudyFileError).
nlohmann::json ReadStudyFile(const std::string& path);

}  // namespace brindle::study

#endif
