#include <gtest/gtest.h>

#include "common/boundary_status.h"

namespace brindle {
namespace {

TEST(BoundaryStatus, DecodesTheRedChannelOnly) {
  EXPECT_EQ(DecodeBoundaryStatus(ON_Color(245, 17, 200, 3)), 2);
  EXPECT_EQ(DecodeBoundaryStatus(ON_Color(255, 255, 255)), 3);
  EXPECT_EQ(DecodeBoundaryStatus(ON_Color(128, 39, 255)), -1);
  EXPECT_EQ(PrescribedTemperature(2), 0.5);
  EXPECT_FALSE(IsFixedBoundaryStatus(4));
}

TEST(BoundaryStatus, PaletteIsTheInverseOfDecoding) {
  const unsigned int packed[6] = {0x96969696u, 0x96F7A827u, 0x960055F5u,
                                  0x968181FFu, 0x966F9587u, 0x96323232u};
  for (int status = 0; status <= 5; ++status) {
    const ON_Color color = BoundaryStatusColor(status);
    EXPECT_EQ(static_cast<unsigned int>(color), packed[status]) << status;
    EXPECT_EQ(DecodeBoundaryStatus(color), status == 0 ? -1 : status);
  }
  EXPECT_EQ(BoundaryStatusColor(1).Red(), 39);  // red sits in the low byte
  EXPECT_EQ(static_cast<unsigned int>(BoundaryStatusColor(-1)), 0x96969696u);
  EXPECT_EQ(static_cast<unsigned int>(BoundaryStatusColor(9)), 0x96969696u);
}

}  // namespace
}  // namespace brindle
