#include "infowindow/info_picture.h"

#include <algorithm>
#include <cmath>

namespace brindle {
namespace {

constexpr std::uint32_t kOutdoorPixel = 0xD8E8FFu;
constexpr std::uint32_t kRoomPixel = 0xFFE8D8u;

std::uint32_t Shade(std::uint32_t pixel, double factor) {
  std::uint32_t shaded = 0;
  for (int shift = 0; shift <= 16; shift += 8) {
    const double channel = ((pixel >> shift) & 0xFFu) * factor;
    shaded |= static_cast<std::uint32_t>(std::lround(channel)) << shift;
  }
  return shaded;
}

// Distance from (u, v) to the quadrant that extends right (or left) of x0 and above (or
// below) y0, in picture units with v growing downwards.
double DistanceToQuadrant(double u, double v, double x0, double y0, bool right, bool up) {
  const double dx = right ? std::max(0.0, x0 - u) : std::max(0.0, u - x0);
  const double dy = up ? std::max(0.0, v - y0) : std::max(0.0, y0 - v);
  return std::hypot(dx, dy);
}

}  // namespace

std::uint32_t HeatRampPixel(double t) {
  static const int kStops[5][3] = {
      {0, 0, 255}, {0, 255, 255}, {0, 255, 0}, {255, 255, 0}, {255, 0, 0}};
  if (!(t > 0)) t = 0;  // also catches NaN
  const double position = std::min(t, 1.0) * 4.0;
  const int lower = std::min(static_cast<int>(position), 3);
  const double blend = position - lower;
  std::uint32_t pixel = 0;
  for (int c = 0; c < 3; ++c) {
    const double channel = kStops[lower][c] + blend * (kStops[lower + 1][c] - kStops[lower][c]);
    pixel = (pixel << 8) | static_cast<std::uint32_t>(std::lround(channel));
  }
  return pixel;
}

// The wall is coloured by the ratio of the distances to the outdoor air and to the room, which
// is close to the real conduction field of a corner.
std::vector<std::uint32_t> RenderInfoPicture(int width, int height) {
  if (width <= 0 || height <= 0) return {};
  constexpr double kOuterCorner = 0.62;
  constexpr double kInnerCorner = 0.38;
  constexpr int kIsotherms = 8;
  std::vector<std::uint32_t> pixels(static_cast<std::size_t>(width) * height);
  for (int row = 0; row < height; ++row) {
    for (int column = 0; column < width; ++column) {
      const double u = (column + 0.5) / width;
      const double v = (row + 0.5) / height;
      const double toOutdoor = DistanceToQuadrant(u, v, kOuterCorner, 1 - kOuterCorner, true, true);
      const double toRoom = DistanceToQuadrant(u, v, kInnerCorner, 1 - kInnerCorner, false, false);
      std::uint32_t& pixel = pixels[static_cast<std::size_t>(row) * width + column];
      if (toOutdoor == 0) {
        pixel = kOutdoorPixel;
      } else if (toRoom == 0) {
        pixel = kRoomPixel;
      } else {
        const double t = toOutdoor / (toOutdoor + toRoom);
        const double band = t * kIsotherms - std::floor(t * kIsotherms);
        const bool onIsotherm = band < 0.06 || band > 0.94;
        pixel = onIsotherm ? Shade(HeatRampPixel(t), 0.55) : HeatRampPixel(t);
      }
    }
  }
  return pixels;
}

}  // namespace brindle
