// The plug-in's picture, drawn in code so that nothing has to ship beside the library.
#ifndef BRINDLE_INFOWINDOW_INFO_PICTURE_WIN32_H
#define BRINDLE_INFOWINDOW_INFO_PICTURE_WIN32_H
#if defined(_WIN32)

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

namespace brindle {

// Draws the picture into `area` of `dc`: the temperature field of a wall corner, coloured from
// cold blue to warm red, with isotherm lines.
void DrawInfoPicture(HDC dc, const RECT& area);

}  // namespace brindle

#endif
#endif
