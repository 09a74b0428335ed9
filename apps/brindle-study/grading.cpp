#include "grading.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace brindle::study {
namespace {

// Points from a with the given element sizes, each scaled by `scale`, ending exactly at b.
std::vector<double> PointsFromSteps(double a, double b, const std::vector<double>& steps,
                                    double scale) {
  std::vector<double> points{a};
  double position = a;
  for (std::size_t i = 0; i + 1 < steps.size(); ++i) {
    position += steps[i] * scale;
    points.push_back(position);
  }
  points.push_back(b);
  return points;
}

void SortBreaks(std::vector<double>& breaks) {
  std::sort(breaks.begin(), breaks.end());
  breaks.erase(std::unique(breaks.begin(), breaks.end()), breaks.end());
  if (breaks.size() < 2) throw std::invalid_argument("need at least two distinct breaks");
}

}  // namespace

MeshSizes MeshSizes::Refined(int level) const {
  MeshSizes refined = *this;
  const double factor = std::ldexp(1.0, -level);
  refined.smallest *= factor;
  refined.largest *= factor;
  // Halving the ratio's logarithm too splits every element of the ramp roughly in two.
  refined.growth = std::pow(growth, factor);
  return refined;
}

std::vector<double> GradedDivision(double a, double b, const MeshSizes& sizes) {
  const double length = b - a;
  if (!(length > 0.0)) throw std::invalid_argument("interval must have a positive length");
  if (!(sizes.smallest > 0.0) || sizes.largest < sizes.smallest || sizes.growth < 1.0)
    throw std::invalid_argument("invalid mesh sizes");

  std::vector<double> half;  // element sizes from one end to the middle
  if (length <= 2.0 * sizes.largest && length <= 4.0 * sizes.smallest) {
    const int n = std::max(1, static_cast<int>(std::ceil(length / sizes.smallest - 1e-9)));
    std::vector<double> points(n + 1);
    for (int i = 0; i <= n; ++i)
      points[i] = a + length * i / n;
    points.back() = b;
    return points;
  }
  double covered = 0.0;
  double size = sizes.smallest;
  while (covered < 0.5 * length) {
    half.push_back(size);
    covered += size;
    size = std::min(size * sizes.growth, sizes.largest);
  }
  // Mirror the half and scale the whole sequence to the interval length exactly.
  std::vector<double> steps(half);
  steps.insert(steps.end(), half.rbegin(), half.rend());
  const double scale = length / (2.0 * covered);
  return PointsFromSteps(a, b, steps, scale);
}

std::vector<double> GradedLines(std::vector<double> breaks, const MeshSizes& sizes) {
  SortBreaks(breaks);
  std::vector<double> lines{breaks.front()};
  for (std::size_t i = 0; i + 1 < breaks.size(); ++i) {
    const double a = breaks[i];
    const double b = breaks[i + 1];
    const std::vector<double> points = GradedDivision(a, b, sizes);
    lines.insert(lines.end(), points.begin() + 1, points.end());
  }
  return lines;
}

std::vector<double> GradedDivision(double a, double b, double startA, double startB,
                                   const MeshSizes& sizes) {
  const double length = b - a;
  if (!(length > 0.0)) throw std::invalid_argument("interval must have a positive length");
  if (!(startA > 0.0) || !(startB > 0.0) || sizes.growth < 1.0)
    throw std::invalid_argument("invalid mesh sizes");
  // Grow from both ends, always adding on the side with the smaller next element, until the
  // elements cover the interval; then shrink them all alike to fit.
  std::vector<double> fromA, fromB;
  double nextA = std::min(startA, sizes.largest), nextB = std::min(startB, sizes.largest);
  double covered = 0.0;
  while (covered < length * (1.0 - 1e-12)) {
    const bool onA = nextA <= nextB;
    double& next = onA ? nextA : nextB;
    (onA ? fromA : fromB).push_back(next);
    covered += next;
    next = std::min(next * sizes.growth, std::max(sizes.largest, next));
  }
  fromA.insert(fromA.end(), fromB.rbegin(), fromB.rend());
  const double scale = length / covered;
  return PointsFromSteps(a, b, fromA, scale);
}

std::vector<double> GradedLines(std::vector<double> breaks, const MeshSizes& sizes,
                                const std::vector<double>& focus, double otherBreaks) {
  if (focus.empty()) return GradedLines(std::move(breaks), sizes);
  SortBreaks(breaks);
  const double span = breaks.back() - breaks.front();
  auto start = [&](double at) {
    for (double f : focus)
      if (std::abs(f - at) <= 1e-9 * span) return sizes.smallest;
    return std::max(1.0, otherBreaks) * sizes.smallest;
  };
  std::vector<double> lines{breaks.front()};
  for (std::size_t i = 0; i + 1 < breaks.size(); ++i) {
    const std::vector<double> points =
        GradedDivision(breaks[i], breaks[i + 1], start(breaks[i]), start(breaks[i + 1]), sizes);
    lines.insert(lines.end(), points.begin() + 1, points.end());
  }
  return lines;
}

}  // namespace brindle::study
