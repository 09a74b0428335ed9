#include "report.h"

#include <cstdarg>
#include <cstdio>
#include <vector>

namespace brindle::study {

std::string Format(const char* format, ...) {
  va_list args;
  va_start(args, format);
  va_list copy;
  va_copy(copy, args);
  const int length = std::vsnprintf(nullptr, 0, format, copy);
  va_end(copy);
  std::vector<char> text(length > 0 ? length + 1 : 1, '\0');
  if (length > 0) std::vsnprintf(text.data(), text.size(), format, args);
  va_end(args);
  return text.data();
}

Progress::Progress() : start_(std::chrono::steady_clock::now()) {}

double Progress::Seconds() const {
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count();
}

void Progress::Line(const std::string& message) const {
  std::printf("[%8.3f s] %s\n", Seconds(), message.c_str());
  std::fflush(stdout);
}

}  // namespace brindle::study
