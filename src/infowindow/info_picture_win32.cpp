#if defined(_WIN32)

#include "infowindow/info_picture_win32.h"

#include "infowindow/info_picture.h"

namespace brindle {

void DrawInfoPicture(HDC dc, const RECT& area) {
  const int width = area.right - area.left;
  const int height = area.bottom - area.top;
  const std::vector<std::uint32_t> pixels = RenderInfoPicture(width, height);
  if (pixels.empty()) return;

  // 32-bit BI_RGB pixels are 0x00RRGGBB in memory order B, G, R, unused.
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
