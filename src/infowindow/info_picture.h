// The plug-in's picture, computed in code so that nothing has to ship beside the library.
#ifndef BRINDLE_INFOWINDOW_INFO_PICTURE_H
#define BRINDLE_INFOWINDOW_INFO_PICTURE_H

#include <cstdint>
#include <vector>

namespace brindle {

// The heat ramp blue, cyan, green, yellow, red for t in [0, 1] as 0x00RRGGBB; t outside the
// range (or NaN) takes the nearer end, NaN the cold one.
std::uint32_t HeatRampPixel(double t);

// The picture, `width` x `height` pixels of 0x00RRGGBB row by row from the top: the
// temperature field across a wall corner between cold outdoor air (upper right) and a warm
// room (lower left), with isotherm lines. Empty when either size is not positive.
std::vector<std::uint32_t> RenderInfoPicture(int width, int height);

}  // namespace brindle

#endif
