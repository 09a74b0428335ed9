// Isotherms as line segments, one segment per face the level crosses, with the heat flow
// across them: the sum over crossed faces of flux magnitude times segment length.
#ifndef BRINDLE_SURFACE_ISOTHERMS_H
#define BRINDLE_SURFACE_ISOTHERMS_H

#include <Eigen/Core>
#include <utility>
#include <vector>

#include "surface/surface_model.h"

namespace brindle {

using Isotherm = std::pair<ON_SimpleArray<ON_Line>, double>;

// Segments and flow of the level `level`. A face is crossed when the level separates its
// corners, i.e. exactly two of its edges change sign; a level within 1e-14 of a corner
// temperature draws nothing in that face.
Isotherm TraceIsotherm(const ON_Mesh& mesh, const Eigen::VectorXd& temperature,
                       const std::vector<double>& magnitude, double level);

// Traces every level on a task of its own and appends the results in level order: segments
// to `lines`, flows to `flows[i]`.
void TraceIsotherms(const ON_Mesh& mesh, const Eigen::VectorXd& temperature,
                    const std::vector<double>& magnitude, const double* levels, int levelCount,
                    ON_SimpleArray<ON_Line>& lines, double* flows);

}  // namespace brindle

#endif
