#include "options.h"

#include <cerrno>
#include <cmath>
#include <cstdlib>

namespace brindle::study {
namespace {

double ParseReal(const std::string& text, const std::string& option) {
  errno = 0;
  char* end = nullptr;
  const double value = std::strtod(text.c_str(), &end);
  if (text.empty() || *end != '\0' || errno == ERANGE || !std::isfinite(value))
    throw UsageError(option + " expects a number, not '" + text + "'");
  return value;
}

int ParseInt(const std::string& text, const std::string& option, int low, int high) {
  errno = 0;
  char* end = nullptr;
  const long value = std::strtol(text.c_str(), &end, 10);
  if (text.empty() || *end != '\0' || errno == ERANGE || value < low || value > high)
    throw UsageError(option + " expects a whole number from " + std::to_string(low) + " to " +
                     std::to_string(high) + ", not '" + text + "'");
  return static_cast<int>(value);
}

}  // namespace

const char* UsageText() {
  return "usage: brindle-study [options]\n"
         "\n"
         "Without --mesh, runs the built-in thermal-bridge examples: a concrete floor slab\n"
         "through the insulation of a masonry wall (2-D) and a steel bar through an insulated\n"
         "concrete wall (3-D).\n"
         "\n"
         "  --output DIR         folder for the results (default study-output)\n"
         "  --inside C           interior temperature in C (default 20)\n"
         "  --outside C          exterior temperature in C (default -5)\n"
         "  --levels N           isotherms per 2-D study, 1..50 (default 9)\n"
         "  --refine N           2-D mesh level 0..4, each level halves the elements (default 2)\n"
         "  --refine3d N         3-D mesh level 0..1 (default 1; 1.7 million tetrahedra)\n"
         "  --no-convergence     skip the mesh checks (the examples again on coarser meshes)\n"
         "  --only 2d|3d         run one of the built-in examples\n"
         "  --section x|y|z=M    3-D section through the plane x, y or z = M metres (default:\n"
         "                       through the coldest interior surface point)\n"
         "\n"
         "Your own study, from a study file:\n"
         "  --study FILE.json    mesh (or geometry + mesh_size), length_unit (m, cm, mm),\n"
         "                       materials, environments with temperature, surface_resistance\n"
         "                       and boundaries, symmetry_factor, probes, psi or chi (see the\n"
         "                       README); results in the terminal and in DIR/summary.json\n"
         "  --check-convergence  also solve once more on the mesh refined uniformly and report\n"
         "                       the changes (a warning above 1 %)\n"
         "\n"
         "Validation against the four ISO 10211 reference cases:\n"
         "  --validate           builds and runs each case as a study at two mesh levels,\n"
         "                       prints computed / reference / tolerance tables, writes\n"
         "                       DIR/validation.json and each case's files; exit status 1 if\n"
         "                       any figure fails\n"
         "\n"
         "A quick study of a mesh (.msh or .mesh, lengths in metres) without surface\n"
         "resistances: the same as a study file with the environments \"inside\" (--high, at\n"
         "--inside) and \"outside\" (--low, at --outside):\n"
         "  --mesh FILE          tetrahedra: 3-D study; triangles only: 2-D section\n"
         "  --conductivity R=K   conductivity K in W/(m K) of the elements with reference R\n"
         "  --low R              cold side: boundary triangles (edges in a section) with\n"
         "                       reference R\n"
         "  --high R             warm side, likewise\n"
         "  --help               this text\n"
         "  --version            the tool's version\n";
}

std::string LibraryLogPath(const Options& options) {
  return options.output + "/library.log";
}

Options ParseOptions(const std::vector<std::string>& args) {
  Options options;
  for (std::size_t i = 0; i < args.size(); ++i) {
    const std::string& arg = args[i];
    auto value = [&]() -> const std::string& {
      if (i + 1 >= args.size()) throw UsageError(arg + " needs a value");
      return args[++i];
    };
    auto reference = [&]() { return ParseInt(value(), arg, -2147483647, 2147483647); };
    if (arg == "--help" || arg == "-h") {
      options.help = true;
    } else if (arg == "--version") {
      options.version = true;
    } else if (arg == "--section") {
      const std::string& plane = value();
      const std::string axes = "xyz";
      if (plane.size() < 3 || plane[1] != '=' || axes.find(plane[0]) == std::string::npos)
        throw UsageError("--section expects x=M, y=M or z=M");
      options.sectionGiven = true;
      options.sectionAxis = int(axes.find(plane[0]));
      options.sectionOffset = ParseReal(plane.substr(2), arg);
    } else if (arg == "--output") {
      options.output = value();
      if (options.output.empty()) throw UsageError("--output needs a folder name");
    } else if (arg == "--inside") {
      options.inside = ParseReal(value(), arg);
    } else if (arg == "--outside") {
      options.outside = ParseReal(value(), arg);
    } else if (arg == "--levels") {
      options.levels = ParseInt(value(), arg, 1, 50);
    } else if (arg == "--refine") {
      options.refine = ParseInt(value(), arg, 0, 4);
    } else if (arg == "--refine3d") {
      options.refine3d = ParseInt(value(), arg, 0, 1);
    } else if (arg == "--no-convergence") {
      options.convergence = false;
    } else if (arg == "--only") {
      const std::string& which = value();
      if (which != "2d" && which != "3d") throw UsageError("--only expects 2d or 3d");
      options.run2d = which == "2d";
      options.run3d = which == "3d";
    } else if (arg == "--study") {
      options.study = value();
    } else if (arg == "--check-convergence") {
      options.checkConvergence = true;
    } else if (arg == "--validate") {
      options.validate = true;
    } else if (arg == "--mesh") {
      options.mesh = value();
    } else if (arg == "--conductivity") {
      const std::string& pair = value();
      const auto eq = pair.find('=');
      if (eq == std::string::npos) throw UsageError("--conductivity expects REF=K");
      const int ref = ParseInt(pair.substr(0, eq), arg, -2147483647, 2147483647);
      const double k = ParseReal(pair.substr(eq + 1), arg);
      if (!(k > 0.0)) throw UsageError("--conductivity needs a positive conductivity");
      options.assignment.conductivity[ref] = k;
    } else if (arg == "--low") {
      options.assignment.low.push_back(reference());
    } else if (arg == "--high") {
      options.assignment.high.push_back(reference());
    } else if (arg == "--surface") {
      throw UsageError(
          "--surface is no longer needed: every environment reports its surface "
          "temperatures");
    } else {
      throw UsageError("unknown option '" + arg + "' (see --help)");
    }
  }
  if (options.inside == options.outside) throw UsageError("--inside and --outside must differ");
  const Assignment& a = options.assignment;
  const bool assigns = !a.conductivity.empty() || !a.low.empty() || !a.high.empty();
  if (options.mesh.empty() && assigns)
    throw UsageError("--conductivity, --low and --high need --mesh");
  if (!options.study.empty() && (assigns || !options.mesh.empty()))
    throw UsageError("--study takes its mesh and references from the study file");
  if (options.validate && (assigns || !options.mesh.empty() || !options.study.empty()))
    throw UsageError("--validate builds its own studies; it takes only --output");
  if (!options.mesh.empty() && (a.low.empty() || a.high.empty()))
    throw UsageError("--mesh needs at least one --low and one --high reference");
  return options;
}

}  // namespace brindle::study
