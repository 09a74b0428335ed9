#include "meshtools/heat_color.h"

#include <cmath>

#include "opennurbs.h"

namespace brindle {
namespace {

int RampChannel(double s, double centre) {
  double hat = 1.5 - std::fabs(4.0 * s - centre);
  hat = ON_Min(ON_Max(hat, 0.0), 1.0);
  // Truncation, not rounding: the ramp's published colours depend on it.
  return static_cast<int>(std::pow(hat, 0.8) * 255.0);
}

}  // namespace

RgbChannels HeatColorChannels(double t) {
  // fmax returns the number when the other argument is NaN, so NaN maps like 0.
  const double s = std::fmin(std::fmax(t, 0.0), 1.0);
  return RgbChannels{RampChannel(s, 3.0), RampChannel(s, 2.0), RampChannel(s, 1.0)};
}

}  // namespace brindle
