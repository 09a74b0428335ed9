// Progress lines, number formatting and temperature scaling for the study's reports.
#ifndef BRINDLE_STUDY_REPORT_H
#define BRINDLE_STUDY_REPORT_H

#include <chrono>
#include <string>

namespace brindle::study {

// printf-style formatting into a string. On MinGW the C++ runtime uses the C99-conforming
// stdio, so the arguments are checked as GNU formats there (%zu, %lld).
#if defined(__MINGW32__)
__attribute__((format(gnu_printf, 1, 2)))
#elif defined(__GNUC__)
__attribute__((format(printf, 1, 2)))
#endif
std::string
Format(const char* format, ...);

// Prints "[   1.234 s] message" lines, timed from construction.
class Progress {
 public:
  Progress();
  void Line(const std::string& message) const;
  double Seconds() const;

 private:
  std::chrono::steady_clock::time_point start_;
};

// Scales dimensionless temperatures (0 = outside, 1 = inside) to a chosen pair in C.
struct TemperaturePair {
  double inside = 20.0;
  double outside = -5.0;
  double Celsius(double factor) const { return outside + factor * (inside - outside); }
  double Difference() const { return inside - outside; }
};

}  // namespace brindle::study

#endif
