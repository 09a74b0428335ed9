// Statuses of the per-element measures AspectRatios and DihedralAngles, which check their
// arguments alike.
#ifndef BRINDLE_MESHTOOLS_ELEMENT_MEASURE_STATUS_H
#define BRINDLE_MESHTOOLS_ELEMENT_MEASURE_STATUS_H

namespace brindle {

enum ElementMeasureStatus {
  kMeasureSucceeded = 0,
  kMeasureNullMesh = 1,
  kMeasureNullOutput = 2,
};

}  // namespace brindle

#endif
