// Blue-cyan-green-yellow-red ramp for values in the unit interval.
#ifndef BRINDLE_MESHTOOLS_HEAT_COLOR_H
#define BRINDLE_MESHTOOLS_HEAT_COLOR_H

namespace brindle {

struct RgbChannels {
  int red;
  int green;
  int blue;
};

// Maps t (clamped to [0, 1]; NaN counts as 0) to 0..255 channels. Each channel is a hat
// function of width 1.5 centred at 3/4 (red), 1/2 (green) and 1/4 (blue), brightened with
// the power 0.8 and truncated, so the ends fade to half intensity: t = 0 gives (0, 0, 146).
RgbChannels HeatColorChannels(double t);

}  // namespace brindle

#endif
