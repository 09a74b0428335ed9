#include "color_scale.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "brindle.h"

namespace brindle::study {

Rgb TemperatureColor(double t) {
  if (!(t >= 0.0)) t = 0.0;  // also NaN
  t = std::min(t, 1.0);
  // Evenly spaced anchors; linear blends between them.
  static const Rgb kAnchors[] = {{20, 30, 140},  {30, 110, 220}, {60, 190, 220}, {110, 200, 110},
                                 {235, 220, 70}, {245, 140, 40}, {190, 30, 30}};
  const int last = int(std::size(kAnchors)) - 1;
  const double at = t * last;
  const int i = std::min(int(at), last - 1);
  const double w = at - i;
  Rgb c;
  for (int k = 0; k < 3; ++k)
    c[k] = int(std::lround(kAnchors[i][k] * (1.0 - w) + kAnchors[i + 1][k] * w));
  return c;
}

Rgb FluxColor(double t) {
  Rgb c;
  HeatColor(t, &c[0], &c[1], &c[2]);
  return c;
}

Rgb ColorScale::Color(double value) const {
  const double t = high > low ? (value - low) / (high - low) : 0.5;
  return mode == ColorMode::kTemperature ? TemperatureColor(t) : FluxColor(t);
}

double RoundUp(double value) {
  const double power = std::pow(10.0, std::floor(std::log10(value)));
  for (double m : {1.0, 2.0, 5.0, 10.0})
    if (m * power >= value * (1.0 - 1e-12)) return m * power;
  return 10.0 * power;
}

namespace {

// The 1-2-5 step whose number of ticks comes nearest to `wanted`.
double TickStep(double low, double high, int wanted) {
  const double rough = RoundUp((high - low) / std::max(wanted - 1, 1));
  double best = rough;
  int bestMiss = 1 << 30;
  for (double step : {rough / 2.5, rough / 2.0, rough}) {
    const double candidate = RoundUp(step);
    const int count =
        int(std::floor(high / candidate + 1e-9) - std::ceil(low / candidate - 1e-9)) + 1;
    const int miss = std::abs(count - wanted);
    if (miss < bestMiss) {
      bestMiss = miss;
      best = candidate;
    }
  }
  return best;
}

}  // namespace

std::vector<double> RoundTicks(double low, double high, int wanted) {
  std::vector<double> ticks;
  // A span lost in rounding (a field held at one temperature) has no steps worth drawing, and
  // steps that small could not be counted in doubles.
  if (!(high - low > 1e-9 * std::max({1.0, std::abs(low), std::abs(high)}))) return {low};
  const double step = TickStep(low, high, wanted);
  const double tolerance = 1e-9 * step;
  for (double k = std::ceil(low / step - 1e-9); k * step <= high + tolerance; k += 1.0)
    ticks.push_back(std::abs(k) < 0.5 ? 0.0 : k * step);
  return ticks;
}

std::vector<double> ColorScale::Ticks() const {
  return RoundTicks(low, high);
}

std::string TickText(double value, double step) {
  const int decimals = step >= 1.0 ? 0 : int(std::ceil(-std::log10(step) - 1e-9));
  char text[32];
  std::snprintf(text, sizeof text, "%.*f", std::clamp(decimals, 0, 6), value);
  return text;
}

ColorScale TemperatureScale(const std::vector<double>& environmentTemperatures) {
  ColorScale scale;
  scale.mode = ColorMode::kTemperature;
  scale.title = {"temperature", "°C"};
  if (environmentTemperatures.empty()) return scale;
  const auto [low, high] =
      std::minmax_element(environmentTemperatures.begin(), environmentTemperatures.end());
  scale.low = *low;
  scale.high = *high > *low ? *high : *low + 1.0;
  return scale;
}

namespace {

// The value below which the given fraction of the total weight lies.
double WeightedQuantile(const std::vector<std::pair<double, double>>& sortedValueWeight,
                        double totalWeight, double fraction) {
  double sum = 0.0;
  for (const auto& [value, weight] : sortedValueWeight) {
    sum += weight;
    if (sum >= fraction * totalWeight) return value;
  }
  return sortedValueWeight.back().first;
}

}  // namespace

ColorScale FluxScale(const std::vector<double>& magnitudes, const std::vector<double>& areas,
                     const std::string& unitLine) {
  ColorScale scale;
  scale.mode = ColorMode::kFlux;
  scale.title = {"heat flux density", unitLine};
  if (magnitudes.empty()) return scale;
  std::vector<std::pair<double, double>> sorted;
  double total = 0.0;
  for (std::size_t i = 0; i < magnitudes.size(); ++i) {
    const double weight = areas.size() == magnitudes.size() ? areas[i] : 1.0;
    sorted.push_back({magnitudes[i], weight});
    total += weight;
  }
  std::sort(sorted.begin(), sorted.end());
  const double p98 = WeightedQuantile(sorted, total, 0.98);
  const double median = WeightedQuantile(sorted, total, 0.5);
  const double top = std::max(p98, 2.0 * median);
  scale.low = 0.0;
  scale.high = top > 0.0 ? RoundUp(top) : 1.0;
  scale.clippedHigh = sorted.back().first > scale.high;
  return scale;
}

}  // namespace brindle::study
