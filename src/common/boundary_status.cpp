#include "common/boundary_status.h"

namespace brindle {

int DecodeBoundaryStatus(const ON_Color& color) {
  switch (color.Red()) {
    case 39:
      return kBoundaryLow;
    case 245:
      return kBoundaryMid;
    case 255:
      return kBoundaryHigh;
    case 135:
      return kBoundaryMarked;
    case 50:
      return kBoundaryInterior;
    default:
      return kBoundaryUnknown;  // includes the palette's grey 150
  }
}

bool IsFixedBoundaryStatus(int status) {
  return status == kBoundaryLow || status == kBoundaryMid || status == kBoundaryHigh;
}

double PrescribedTemperature(int status) {
  switch (status) {
    case kBoundaryMid:
      return 0.5;
    case kBoundaryHigh:
      return 1.0;
    default:
      return 0.0;
  }
}

ON_Color BoundaryStatusColor(int status) {
  // Packed as ON_Color stores it: red in the low byte, alpha 150 in the top byte.
  unsigned int packed = 0x96969696u;
  switch (status) {
    case kBoundaryLow:
      packed = 0x96F7A827u;
      break;
    case kBoundaryMid:
      packed = 0x960055F5u;
      break;
    case kBoundaryHigh:
      packed = 0x968181FFu;
      break;
    case kBoundaryMarked:
      packed = 0x966F9587u;
      break;
    case kBoundaryInterior:
      packed = 0x96323232u;
      break;
    default:
      break;
  }
  return ON_Color(packed);
}

}  // namespace brindle
