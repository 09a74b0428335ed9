#include "common/error_text.h"

#include <cstdarg>
#include <cstdio>

namespace brindle {

void ClearErrorText(char* error) {
  if (error) error[0] = '\0';
}

void SetErrorText(char* error, const char* format, ...) {
  if (!error) return;
  va_list args;
  va_start(args, format);
  // vsnprintf always terminates within the capacity, so a long message is cut, never overrun.
  std::vsnprintf(error, kErrorTextCapacity, format, args);
  va_end(args);
}

}  // namespace brindle
