#include "surface/stiffness.h"

namespace brindle {

double CornerCotangent(const ON_3dPoint& apex, const ON_3dPoint& first, const ON_3dPoint& second,
                       double* crossLength) {
  const ON_3dVector toFirst = first - apex;
  const ON_3dVector toSecond = second - apex;
  *crossLength = ON_CrossProduct(toFirst, toSecond).Length();
  return (toFirst * toSecond) / *crossLength;
}

int AssembleStiffness(const SurfaceModel& model, int method, Triplets& triplets) {
  triplets.clear();
  int code = 0;
  switch (method) {
    case 0:
      code = AssembleGradientForm(model, triplets);
      break;
    case 1:
      code = AssembleEdgeCotangentForm(model, triplets);
      break;
    case 2:
      code = AssembleVertexRowForm(model, triplets);
      break;
    default:
      code = AssembleEdgeVectorForm(model, triplets);
      break;
  }
  if (code != kSurfaceSucceeded) triplets.clear();
  return code;
}

}  // namespace brindle
