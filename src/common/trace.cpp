#include "common/trace.h"

#include <cstdarg>
#include <cstdio>

namespace brindle {
namespace {

void WriteTrace(std::FILE* stream, const char* format, va_list args) {
  std::vfprintf(stream, format, args);
  std::fflush(stream);
}

}  // namespace

void TraceOut(const char* format, ...) {
  va_list args;
  va_start(args, format);
  WriteTrace(stdout, format, args);
  va_end(args);
}

void TraceErr(const char* format, ...) {
  va_list args;
  va_start(args, format);
  WriteTrace(stderr, format, args);
  va_end(args);
}

}  // namespace brindle
