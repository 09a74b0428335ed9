#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "common/error_text.h"

namespace brindle {
namespace {

// Clearing touches the first byte only; a longer message is cut to the 1024-byte window with
// its terminator, leaving the guard bytes after it; null buffers are ignored.
TEST(ErrorText, ClearsFormatsAndTruncates) {
  char buffer[kErrorTextCapacity + 16];
  std::memset(buffer, 'x', sizeof buffer);
  ClearErrorText(buffer);
  EXPECT_EQ(buffer[0], '\0');
  EXPECT_EQ(buffer[1], 'x');
  ClearErrorText(nullptr);
  SetErrorText(nullptr, "ignored %d", 1);
  SetErrorText(buffer, "Error constructing solver, code %d", 24);
  EXPECT_STREQ(buffer, "Error constructing solver, code 24");
  const std::string longText(3000, 'a');
  SetErrorText(buffer, "%s", longText.c_str());
  EXPECT_EQ(std::strlen(buffer), kErrorTextCapacity - 1);
  for (std::size_t i = kErrorTextCapacity; i < sizeof buffer; ++i)
    EXPECT_EQ(buffer[i], 'x');
}

}  // namespace
}  // namespace brindle
