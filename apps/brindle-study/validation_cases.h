// The four reference cases for thermal-bridge methods, each built as an ordinary study: a block
// mesh with material and boundary references plus the study JSON, and the figures the case
// publishes with their tolerances.
#ifndef BRINDLE_STUDY_VALIDATION_CASES_H
#define BRINDLE_STUDY_VALIDATION_CASES_H

#include <functional>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "study_mesh.h"

namespace brindle::study {

// One compared figure. Relative tolerances are fractions of the reference.
struct CheckRow {
  std::string quantity;
  double computed = 0.0;
  double reference = 0.0;
  double tolerance = 0.0;
  bool relative = false;
  std::string unit;
  bool informative = false;  // shown, never fails

  double Difference() const { return computed - reference; }
  bool Passes() const;
};

// A case's study at one mesh level: level n + 1 halves every element size of level n.
struct CaseStudy {
  StudyMesh mesh;
  nlohmann::json study;
};

struct ValidationCase {
  std::string id;     // folder and JSON key, e.g. "case2"
  std::string title;  // one line for the table
  std::function<CaseStudy(int level)> build;
  int coarseLevel = 0;  // the convergence rule compares this level with the next one
  // The case's figures from the summary of its finer run.
  std::function<std::vector<CheckRow>(const nlohmann::json& summary)> checks;
  // Whether the heat flows converge (false where a temperature jump on the boundary makes the
  // flow grow without bound under refinement).
  bool flowConverges = true;
  // Largest deviation from the exact solution at a level, where the case has one (else empty).
  std::function<double(const nlohmann::json& summary)> exactError;
};

// Temperature of the unit square held at 0 C on three sides and `top` C on the fourth (y = 1),
// at x from a 0 C side and y from the 0 C bottom, summed until the terms no longer count.
double SquareColumnTemperature(double x, double y, double top = 20.0);

// The 28 grid points of the square-column case and the published table, rows from the warm
// edge down, columns from the cold side to the symmetry line.
struct GridPoint {
  std::string label;   // "r7c1" ...: row as eighths of the height, column as quarters
  double x = 0.0;      // m
  double y = 0.0;      // m
  double table = 0.0;  // C
};
std::vector<GridPoint> SquareColumnGrid();

// The studies of the four cases, in order.
std::vector<ValidationCase> ValidationCases();

}  // namespace brindle::study

#endif
