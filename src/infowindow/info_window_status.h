// Statuses of doPoshModal.
#ifndef BRINDLE_INFOWINDOW_INFO_WINDOW_STATUS_H
#define BRINDLE_INFOWINDOW_INFO_WINDOW_STATUS_H

namespace brindle {

enum InfoWindowStatus : int {
  kInfoWindowOpen = 0,
  kInfoWindowUnavailable = 1,
  kInfoWindowBadOwner = 2,
  kInfoWindowCreateFailed = 3,
};

}  // namespace brindle

#endif
