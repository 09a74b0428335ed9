// Boundary conditions travel on a surface mesh as vertex colours. The red channel alone says
// whether a vertex has a prescribed temperature; the palette below is the one place where a
// status is turned back into a colour, so generated meshes decode to what they were painted.
#ifndef BRINDLE_COMMON_BOUNDARY_STATUS_H
#define BRINDLE_COMMON_BOUNDARY_STATUS_H

#include "opennurbs.h"

namespace brindle {

// Status decoded from a vertex colour's red channel.
enum BoundaryStatus : int {
  kBoundaryUnknown = -1,  // any unlisted red value (150 is the palette's own "unknown")
  kBoundaryLow = 1,       // red 39: fixed at 0.0
  kBoundaryMid = 2,       // red 245: fixed at 0.5
  kBoundaryHigh = 3,      // red 255: fixed at 1.0
  kBoundaryMarked = 4,    // red 135: free
  kBoundaryInterior = 5,  // red 50: free
};

// Reads the red channel only; green, blue and alpha carry no meaning here.
int DecodeBoundaryStatus(const ON_Color& color);

// True for the statuses that prescribe a temperature (1, 2 and 3).
bool IsFixedBoundaryStatus(int status);

// Temperature prescribed by a fixed status: 0.0, 0.5 or 1.0. Other statuses give 0.0.
double PrescribedTemperature(int status);

// Palette colour of a status (alpha byte 150). Statuses outside 1..5, including -1 and 0,
// get the grey "unknown" colour, which decodes to -1.
ON_Color BoundaryStatusColor(int status);

}  // namespace brindle

#endif
