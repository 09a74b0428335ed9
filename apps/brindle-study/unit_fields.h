// One solve per environment: that environment's fixed vertices at 1, every other environment's
// at 0. Any study's temperature field is the weighted sum of these unit fields.
#ifndef BRINDLE_STUDY_UNIT_FIELDS_H
#define BRINDLE_STUDY_UNIT_FIELDS_H

#include <vector>

#include "layered_model.h"

namespace brindle::study {

struct UnitFields {
  std::vector<std::vector<double>> field;  // per environment, per vertex, 0..1
  int solverRuns = 0;                      // the last field is 1 minus the others, so one run fewer
  double solverScale = 1.0;                // solver coordinates = metres x this
  double sliverTolerance = 0;              // in solver coordinates
  double worstResidual = 0.0;              // 3-D: largest squared residual reported by the solver
  bool converged = true;                   // 3-D: every run reached the solver's tolerance
  double seconds = 0.0;                    // time spent in the solver exports
};

// Runs the volume solver (3-D) or the surface solver (2-D) through the exports. Throws
// SolveError with the export's own message when it refuses the model.
UnitFields SolveUnitFields(const LayeredModel& model);

// reaction[e][f]: heat entering the model at environment e's fixed vertices in unit field f,
// W/K (W/(m K) in 2-D), from the element stiffness rows of those vertices.
std::vector<std::vector<double>> Reactions(const LayeredModel& model, const UnitFields& fields);

// The model's temperature field for the environments' temperatures.
std::vector<double> Superpose(const UnitFields& fields, const std::vector<double>& temperature);

}  // namespace brindle::study

#endif
