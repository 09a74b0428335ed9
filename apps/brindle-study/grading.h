// Graded one-dimensional subdivisions for the structured meshers.
#ifndef BRINDLE_STUDY_GRADING_H
#define BRINDLE_STUDY_GRADING_H

#include <array>
#include <vector>

namespace brindle::study {

// Element sizes for one mesh: small near every material break, growing geometrically towards
// the middle of each interval up to the largest size.
struct MeshSizes {
  double smallest = 0.004;  // m, next to a break
  double largest = 0.05;    // m, far from breaks
  double growth = 1.3;      // ratio of neighbouring element sizes

  // Halves every element `level` times (level 0 leaves the sizes unchanged).
  MeshSizes Refined(int level) const;
};

// Points a = p0 < p1 < ... < pn = b that divide [a, b] symmetrically: sizes start at
// `sizes.smallest` at both ends, grow by `sizes.growth` and level off at `sizes.largest`.
// Short intervals get a uniform division. Always at least one element.
std::vector<double> GradedDivision(double a, double b, const MeshSizes& sizes);

// Sorted, de-duplicated grid lines through every break, each interval divided by
// GradedDivision.
std::vector<double> GradedLines(std::vector<double> breaks, const MeshSizes& sizes);

// Where the heat flow bends most, e.g. lines through the corners that matter. On an axis with
// focus lines, elements start at MeshSizes::smallest next to them and `otherBreaks` times that
// next to the axis's other breaks; an axis without any grades towards every break alike.
struct GradingFocus {
  std::array<std::vector<double>, 3> lines;  // per axis: x, y, z
  double otherBreaks = 1.0;
};

// Points a = p0 < ... < pn = b whose sizes start at `startA` next to a and at `startB` next to
// b and grow by `sizes.growth` up to `sizes.largest`, scaled to fit exactly.
std::vector<double> GradedDivision(double a, double b, double startA, double startB,
                                   const MeshSizes& sizes);

// Grid lines through every break, graded towards the focus lines of one axis (all breaks when
// there are none).
std::vector<double> GradedLines(std::vector<double> breaks, const MeshSizes& sizes,
                                const std::vector<double>& focus, double otherBreaks);

}  // namespace brindle::study

#endif
