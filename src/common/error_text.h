// The error-text convention shared by every export: a caller buffer whose first byte is
// cleared on entry and which receives a printf-style message of at most 1024 bytes.
#ifndef BRINDLE_COMMON_ERROR_TEXT_H
#define BRINDLE_COMMON_ERROR_TEXT_H

#include <cstddef>

#include "common/format_attribute.h"

namespace brindle {

// Capacity of a caller's error buffer, terminating zero included.
constexpr std::size_t kErrorTextCapacity = 1024;

// Clears the first byte of `error` when it is not null.
void ClearErrorText(char* error);

// Formats a message into `error`, truncated to kErrorTextCapacity bytes including the
// terminating zero. A null `error` suppresses the message.
void SetErrorText(char* error, const char* format, ...) BRINDLE_PRINTF_FORMAT(2, 3);

}  // namespace brindle

#endif
