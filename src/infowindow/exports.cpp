// The information window's exports. The window is a Windows window; elsewhere the exports exist
// so that a host links and runs, and they report that there is no window.
#include "brindle.h"
#include "common/error_text.h"
#include "infowindow/info_window_status.h"
#if defined(_WIN32)
#include "infowindow/info_window_win32.h"
#endif

using namespace brindle;

extern "C" {

#if defined(_WIN32)

BRINDLE_API int doPoshModal(void* ownerWindow, char* error) {
  ClearErrorText(error);
  HWND owner = static_cast<HWND>(ownerWindow);
  if (owner && !IsWindow(owner)) {
    SetErrorText(error, "The owner window handle is not a window");
    return kInfoWindowBadOwner;
  }
  const DWORD failure = ShowInfoWindow(owner);
  if (failure) {
    SetErrorText(error, "Could not open the information window (system error %lu)",
                 static_cast<unsigned long>(failure));
    return kInfoWindowCreateFailed;
  }
  return kInfoWindowOpen;
}

BRINDLE_API void* getPoshHandle(void) {
  return OpenInfoWindowHandle();
}

#else

BRINDLE_API int doPoshModal(void* /*ownerWindow*/, char* error) {
  ClearErrorText(error);
  SetErrorText(error, "The information window is not available on this platform");
  return kInfoWindowUnavailable;
}

BRINDLE_API void* getPoshHandle(void) {
  return nullptr;
}

#endif

}  // extern "C"
