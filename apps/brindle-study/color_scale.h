// Colour scales of a study's pictures: the temperature and heat-flux ramps, round legend ticks,
// and the one scale that every picture of a study shares.
#ifndef BRINDLE_STUDY_COLOR_SCALE_H
#define BRINDLE_STUDY_COLOR_SCALE_H

#include <array>
#include <string>
#include <vector>

namespace brindle::study {

using Rgb = std::array<int, 3>;

enum class ColorMode { kTemperature, kFlux };

struct ColorScale {
  ColorMode mode = ColorMode::kTemperature;
  double low = 0.0;
  double high = 1.0;
  bool clippedHigh = false;        // values above `high` occur and get the top colour
  std::vector<std::string> title;  // legend lines, e.g. {"temperature", "°C"}

  Rgb Color(double value) const;
  // Ticks at round values (steps of 1, 2 or 5 times a power of ten) inside [low, high].
  std::vector<double> Ticks() const;
};

// Temperature ramp from cold (0: dark blue) over cyan, green and yellow to warm (1: dark red).
Rgb TemperatureColor(double t);

// Heat-flux ramp of the library (0: black .. 1: white hot).
Rgb FluxColor(double t);

// Round values low <= v <= high, about `wanted` of them, spaced 1, 2 or 5 times a power of ten.
std::vector<double> RoundTicks(double low, double high, int wanted = 6);

// The smallest number 1, 2 or 5 times a power of ten that is >= value (value > 0).
double RoundUp(double value);

// Temperature scale of a study: the span of its environment temperatures, so that a uniform
// field shows in the colour of its temperature and not as an extreme.
ColorScale TemperatureScale(const std::vector<double>& environmentTemperatures);

// Heat-flux scale shared by all pictures of a study, from the flux magnitudes of all of them.
// The top is the 98th percentile rounded up, but at least twice the median: re-entrant corners do
// not wash out the rest, and a uniform field sits mid-scale instead of looking like a hot spot.
// Percentiles weigh each element by its area (none given: equally), so that the many small
// elements of a mesh refined at a thermal bridge do not decide the scale of the whole section.
ColorScale FluxScale(const std::vector<double>& magnitudes, const std::vector<double>& areas,
                     const std::string& unitLine);

// Text of a value with as many decimals as the step between ticks needs.
std::string TickText(double value, double step);

}  // namespace brindle::study

#endif
