// The information window is a Windows window; elsewhere the exports exist so that a host links
// and runs, and they report that there is no window.
#if !defined(_WIN32)

#include "brindle.h"
#include "common/error_text.h"
#include "infowindow/info_window_status.h"

int doPoshModal(void* /*ownerWindow*/, char* error) {
  brindle::ClearErrorText(error);
  brindle::SetErrorText(error, "The information window is not available on this platform");
  return brindle::kInfoWindowUnavailable;
}

void* getPoshHandle(void) {
  return nullptr;
}

#endif
