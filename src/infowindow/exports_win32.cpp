#if defined(_WIN32)

#include "brindle.h"
#include "common/error_text.h"
#include "infowindow/info_window_status.h"
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
}  // namespace brindle

int doPoshModal(void* ownerWindow, char* error) {
  using namespace brindle;
  ClearErrorText(error);
  HWND owner = static_cast<HWND>(ownerWindow);
  if (owner && !IsWindow(owner)) {
    SetErrorText(error, "The owner window handle is not a window");
    return kInfoWindowBadOwner;
  }
  DWORD failure = 0;
  try {
    InfoWindowSlot& slot = TheInfoWindow();
    std::lock_guard<std::mutex> lock(slot.opening);
    if (HWND open = slot.handle.load()) {
      BringToFront(open);
      return kInfoWindowOpen;
    }
    failure = OpenInfoWindow(owner, slot);
  } catch (...) {
    // Only the lock can throw; it fails for want of system resources.
    failure = ERROR_NOT_ENOUGH_MEMORY;
  }
  if (failure) {
    SetErrorText(error, "Could not open the information window (system error %lu)",
                 static_cast<unsigned long>(failure));
    return kInfoWindowCreateFailed;
  }
  return kInfoWindowOpen;
}

void* getPoshHandle(void) {
  return brindle::TheInfoWindow().handle.load();
}

#endif
