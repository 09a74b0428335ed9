// Drawing the plug-in's picture into a window.
#ifndef BRINDLE_INFOWINDOW_INFO_PICTURE_WIN32_H
#define BRINDLE_INFOWINDOW_INFO_PICTURE_WIN32_H
#if defined(_WIN32)

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

namespace brindle {

// Draws the picture of info_picture.h into `area` of `dc`, with a grey frame.
void DrawInfoPicture(HDC dc, const RECT& area);

}  // namespace brindle

#endif
#endif
