// Command-line options of brindle-study.
#ifndef BRINDLE_STUDY_OPTIONS_H
#define BRINDLE_STUDY_OPTIONS_H

#include <stdexcept>
#include <string>
#include <vector>

#include <map>

namespace brindle::study {

class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The --mesh options: conductivity per element reference, and the boundary references of the
// cold (--low) and warm (--high) sides.
struct Assignment {
  std::map<int, double> conductivity;
  std::vector<int> low;
  std::vector<int> high;
};

struct Options {
  std::string output = "study-output";
  double inside = 20.0;     // interior air temperature, C
  double outside = -5.0;    // exterior air temperature, C
  int refine = 2;           // mesh level of the 2-D example (each level halves the elements)
  int refine3d = 1;         // mesh level of the 3-D example
  bool convergence = true;  // also solve the 2-D example on the two coarser levels
  bool run2d = true;
  bool run3d = true;
  int levels = 9;     // isotherms at 1/(n+1) .. n/(n+1) of the temperature difference
  std::string study;  // the user's study file (JSON)
  bool checkConvergence = false;
  std::string mesh;  // the user's MEDIT file; empty runs the built-in examples
  Assignment assignment;
  bool help = false;
  bool validate = false;  // run the reference cases instead of a study
  bool version = false;
  // Section through a 3-D model: the plane coordinate[sectionAxis] = sectionOffset (m) when
  // given, else the plane through the coldest interior point that shows most.
  bool sectionGiven = false;
  int sectionAxis = 0;
  double sectionOffset = 0.0;
  std::string program = "brindle-study";  // how the tool was started, for printed commands
};

// Where the library's own progress traces go: library.log in the output folder.
std::string LibraryLogPath(const Options& options);

// Parses argv[1..]; throws UsageError with a one-line reason.
Options ParseOptions(const std::vector<std::string>& args);

// The --help text.
const char* UsageText();

}  // namespace brindle::study

#endif
