// Away from Windows the information window exports must link, answer and change nothing.
#if !defined(_WIN32)

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "brindle.h"

namespace {

TEST(InfoWindowElsewhere, ReportsThatNoWindowIsAvailable) {
  char error[1024];
  std::memset(error, 'x', sizeof(error));
  int ownerStandIn = 0;
  EXPECT_EQ(doPoshModal(&ownerStandIn, error), 1);
  EXPECT_EQ(std::string(error), "The information window is not available on this platform");
  EXPECT_EQ(doPoshModal(nullptr, nullptr), 1);
  EXPECT_EQ(getPoshHandle(), nullptr);
}

}  // namespace

#endif
