#if defined(_WIN32)

#include "infowindow/info_window_win32.h"

namespace brindle {
namespace {

InfoWindowSlot& TheInfoWindow() {
  static InfoWindowSlot slot;
  return slot;
}

void BringToFront(HWND window) {
  if (IsIconic(window)) ShowWindowAsync(window, SW_RESTORE);
  SetForegroundWindow(window);
}

}  // namespace

DWORD ShowInfoWindow(HWND owner) {
  try {
    InfoWindowSlot& slot = TheInfoWindow();
    std::lock_guard<std::mutex> lock(slot.opening);
    if (HWND open = slot.handle.load()) {
      BringToFront(open);
      return 0;
    }
    return OpenInfoWindow(owner, slot);
  } catch (...) {
    // Only the lock can throw; it fails for want of system resources.
    return ERROR_NOT_ENOUGH_MEMORY;
  }
}

HWND OpenInfoWindowHandle() {
  return TheInfoWindow().handle.load();
}

}  // namespace brindle

#endif
