#if defined(_WIN32)

#include "infowindow/info_picture_win32.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

namespace brindle {
namespace {

// Blue, cyan, green, yellow, red: the usual heat ramp, for t in [0, 1].
std::uint32_t HeatPixel(double t) {
  static const int kStops[5][3] = {
      {0, 0, 255}, {0, 255, 255}, {0, 255, 0}, {255, 255, 0}, {255, 0, 0}};
  const double position = std::clamp(t, 0.0, 1.0) * 4.0;
  const int lower = std::min(static_cast<int>(position), 3);
  const double blend = position - lower;
  int rgb[3];
  for (int c = 0; c < 3; ++c) {
    rgb[c] = static_cast<int>(
        std::lround(kStops[lower][c] + blend * (kStops[lower + 1][c] - kStops[lower][c])));
  }
  return (static_cast<std::uint32_t>(rgb[0]) << 16) | (static_cast<std::uint32_t>(rgb[1]) << 8) |
         static_cast<std::uint32_t>(rgb[2]);
}

std::uint32_t Shade(std::uint32_t pixel, double factor) {
  std::uint32_t shaded = 0;
  for (int shift = 0; shift <= 16; shift += 8) {
    const double channel = ((pixel >> shift) & 0xFFu) * factor;
    shaded |= static_cast<std::uint32_t>(std::lround(channel)) << shift;
  }
  return shaded;
}

// Distance from (u, v) to the quadrant {x >= x0 if right else x <= x0, y <= y0 if up else
// y >= y0}, in picture units with v growing downwards.
double DistanceToQuadrant(double u, double v, double x0, double y0, bool right, bool up) {
  const double dx = right ? std::max(0.0, x0 - u) : std::max(0.0, u - x0);
  const double dy = up ? std::max(0.0, v - y0) : std::max(0.0, y0 - v);
  return std::hypot(dx, dy);
}

// The picture as 0x00RRGGBB pixels, row by row from the top: cold outdoor air in the upper
// right, the warm room in the lower left, and the wall corner between them coloured by the
// ratio of the distances to the two, which is close to the real conduction field.
std::vector<std::uint32_t> RenderPicture(int width, int height) {
  constexpr double kOuterCorner = 0.62;
  constexpr double kInnerCorner = 0.38;
  constexpr int kIsotherms = 8;
  const std::uint32_t kOutdoor = 0xD8E8FFu;
  const std::uint32_t kRoom = 0xFFE8D8u;
  std::vector<std::uint32_t> pixels(static_cast<std::size_t>(width) * height);
  for (int row = 0; row < height; ++row) {
    for (int column = 0; column < width; ++column) {
      const double u = (column + 0.5) / width;
      const double v = (row + 0.5) / height;
      const double to_outdoor =
          DistanceToQuadrant(u, v, kOuterCorner, 1 - kOuterCorner, true, true);
      const double to_room = DistanceToQuadrant(u, v, kInnerCorner, 1 - kInnerCorner, false, false);
      std::uint32_t& pixel = pixels[static_cast<std::size_t>(row) * width + column];
      if (to_outdoor == 0) {
        pixel = kOutdoor;
      } else if (to_room == 0) {
        pixel = kRoom;
      } else {
        const double t = to_outdoor / (to_outdoor + to_room);
        const double band = t * kIsotherms - std::floor(t * kIsotherms);
        const bool on_isotherm = band < 0.06 || band > 0.94;
        pixel = on_isotherm ? Shade(HeatPixel(t), 0.55) : HeatPixel(t);
      }
    }
  }
  return pixels;
}

}  // namespace

void DrawInfoPicture(HDC dc, const RECT& area) {
  const int width = area.right - area.left;
  const int height = area.bottom - area.top;
  if (width <= 0 || height <= 0) return;
  const std::vector<std::uint32_t> pixels = RenderPicture(width, height);

  BITMAPINFO info = {};
  info.bmiHeader.biSize = sizeof(info.bmiHeader);
  info.bmiHeader.biWidth = width;
  info.bmiHeader.biHeight = -height;  // negative: rows run from the top
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  info.bmiHeader.biCompression = BI_RGB;
  SetDIBitsToDevice(dc, area.left, area.top, width, height, 0, 0, 0, height, pixels.data(), &info,
                    DIB_RGB_COLORS);
  FrameRect(dc, &area, static_cast<HBRUSH>(GetStockObject(GRAY_BRUSH)));
}

}  // namespace brindle

#endif
