#include "study_file.h"

#include <cmath>
#include <fstream>
#include <set>
#include <sstream>

namespace brindle::study {
namespace {

using nlohmann::json;

[[noreturn]] void Fail(const std::string& source, const std::string& key,
                       const std::string& problem) {
  throw StudyFileError(source + ": " + key + ": " + problem);
}

double Number(const json& value, const std::string& source, const std::string& key) {
  if (!value.is_number() || !std::isfinite(value.get<double>()))
    Fail(source, key, "expected a number, found " + value.dump());
  return value.get<double>();
}

double Positive(const json& value, const std::string& source, const std::string& key) {
  const double x = Number(value, source, key);
  if (!(x > 0.0)) Fail(source, key, "must be greater than 0, found " + value.dump());
  return x;
}

std::string Text(const json& value, const std::string& source, const std::string& key) {
  if (!value.is_string() || value.get<std::string>().empty())
    Fail(source, key, "expected a file name, found " + value.dump());
  return value.get<std::string>();
}

// A reference written as a name or a number: 10 and "10" are the same.
std::string ReferenceKey(const json& value, const std::string& source, const std::string& key) {
  if (value.is_number_integer()) return std::to_string(value.get<long long>());
  if (value.is_string() && !value.get<std::string>().empty()) return value.get<std::string>();
  Fail(source, key, "expected a physical name or a reference number, found " + value.dump());
}

std::vector<double> Numbers(const json& value, const std::string& source, const std::string& key) {
  if (!value.is_array()) Fail(source, key, "expected a list of numbers, found " + value.dump());
  std::vector<double> out;
  for (std::size_t i = 0; i < value.size(); ++i)
    out.push_back(Number(value[i], source, key + "[" + std::to_string(i) + "]"));
  return out;
}

void CheckKeys(const json& object, const std::set<std::string>& known, const std::string& source,
               const std::string& where) {
  for (const auto& item : object.items())
    if (!known.count(item.key())) {
      std::string list;
      for (const auto& k : known)
        list += (list.empty() ? "" : ", ") + k;
      Fail(source, where + item.key(), "unknown key (known here: " + list + ")");
    }
}

EnvironmentSpec ParseEnvironment(const std::string& name, const json& value,
                                 const std::string& source) {
  const std::string key = "environments: " + name;
  if (!value.is_object())
    Fail(source, key, "expected {\"temperature\", \"surface_resistance\", \"boundaries\"}");
  CheckKeys(value, {"temperature", "surface_resistance", "boundaries"}, source, key + ": ");
  EnvironmentSpec e;
  e.name = name;
  if (!value.contains("temperature")) Fail(source, key, "needs a \"temperature\" in C");
  e.temperature = Number(value["temperature"], source, key + ": temperature");
  if (value.contains("surface_resistance")) {
    e.surfaceResistance = Number(value["surface_resistance"], source, key + ": surface_resistance");
    if (e.surfaceResistance < 0.0)
      Fail(source, key + ": surface_resistance", "must not be negative");
  }
  if (!value.contains("boundaries")) Fail(source, key, "needs \"boundaries\"");
  const json& b = value["boundaries"];
  if (b.is_array()) {
    for (std::size_t i = 0; i < b.size(); ++i)
      e.boundaries.push_back(
          ReferenceKey(b[i], source, key + ": boundaries[" + std::to_string(i) + "]"));
  } else {
    e.boundaries.push_back(ReferenceKey(b, source, key + ": boundaries"));
  }
  if (e.boundaries.empty()) Fail(source, key + ": boundaries", "names no boundary");
  return e;
}

ReferenceSpec ParseReference(const json& value, const std::string& source, const std::string& key,
                             bool threeD) {
  if (!value.is_object()) Fail(source, key, "expected an object");
  const char* size = threeD ? "areas" : "lengths";
  std::set<std::string> known{"between", "U", size};
  if (threeD) known.insert({"psi", "lengths"});
  CheckKeys(value, known, source, key + ": ");
  ReferenceSpec r;
  if (value.contains("between")) {
    const json& b = value["between"];
    if (!b.is_array() || b.size() != 2 || !b[0].is_string() || !b[1].is_string())
      Fail(source, key + ": between", "expected two environment names");
    r.between = {b[0].get<std::string>(), b[1].get<std::string>()};
    if (r.between[0] == r.between[1])
      Fail(source, key + ": between", "expected two different environments");
  }
  if (value.contains("U")) r.u = Numbers(value["U"], source, key + ": U");
  if (value.contains(size)) r.sizes = Numbers(value[size], source, key + ": " + size);
  if (r.u.size() != r.sizes.size())
    Fail(source, key, std::string("\"U\" and \"") + size + "\" must have the same length");
  if (threeD) {
    if (value.contains("psi")) r.psi = Numbers(value["psi"], source, key + ": psi");
    if (value.contains("lengths")) r.lengths = Numbers(value["lengths"], source, key + ": lengths");
    if (r.psi.size() != r.lengths.size())
      Fail(source, key, "\"psi\" and \"lengths\" must have the same length");
  }
  return r;
}

}  // namespace

StudyDefinition ParseStudy(const json& study, const std::string& source) {
  StudyDefinition s;
  s.source = source;
  if (!study.is_object()) Fail(source, "(top level)", "expected a JSON object");
  CheckKeys(study,
            {"mesh", "geometry", "mesh_size", "length_unit", "materials", "environments",
             "symmetry_factor", "check_convergence", "probes", "psi", "chi"},
            source, "");
  if (study.contains("mesh")) s.mesh = Text(study["mesh"], source, "mesh");
  if (study.contains("geometry")) s.geometry = Text(study["geometry"], source, "geometry");
  if (s.mesh.empty() == s.geometry.empty())
    Fail(source, "mesh", "give either \"mesh\" or \"geometry\" (with \"mesh_size\")");
  if (!s.geometry.empty()) {
    if (!study.contains("mesh_size")) Fail(source, "geometry", "needs \"mesh_size\"");
    s.meshSize = Positive(study["mesh_size"], source, "mesh_size");
  } else if (study.contains("mesh_size")) {
    Fail(source, "mesh_size", "only used with \"geometry\"");
  }
  if (study.contains("length_unit")) {
    const json& u = study["length_unit"];
    const std::string unit = u.is_string() ? u.get<std::string>() : u.dump();
    if (unit == "m")
      s.metresPerUnit = 1.0;
    else if (unit == "cm")
      s.metresPerUnit = 0.01;
    else if (unit == "mm")
      s.metresPerUnit = 0.001;
    else
      Fail(source, "length_unit", "expected \"m\", \"cm\" or \"mm\", found " + u.dump());
    s.lengthUnit = unit;
  }
  if (!study.contains("materials") || !study["materials"].is_object() || study["materials"].empty())
    Fail(source, "materials", "expected an object of conductivities, e.g. {\"concrete\": 2.3}");
  for (const auto& item : study["materials"].items())
    s.materials.push_back({item.key(), Positive(item.value(), source, "materials: " + item.key())});
  if (!study.contains("environments") || !study["environments"].is_object())
    Fail(source, "environments", "expected an object of environments");
  for (const auto& item : study["environments"].items())
    s.environments.push_back(ParseEnvironment(item.key(), item.value(), source));
  if (s.environments.size() < 2)
    Fail(source, "environments", "a study needs at least two environments");
  if (study.contains("symmetry_factor"))
    s.symmetryFactor = Positive(study["symmetry_factor"], source, "symmetry_factor");
  if (study.contains("check_convergence")) {
    if (!study["check_convergence"].is_boolean())
      Fail(source, "check_convergence", "expected true or false");
    s.checkConvergence = study["check_convergence"].get<bool>();
  }
  if (study.contains("probes")) {
    const json& p = study["probes"];
    if (!p.is_object()) Fail(source, "probes", "expected {\"label\": [x, y, z], ...}");
    for (const auto& item : p.items()) {
      const std::string key = "probes: " + item.key();
      const auto xyz = Numbers(item.value(), source, key);
      if (xyz.size() != 2 && xyz.size() != 3) Fail(source, key, "expected [x, y] or [x, y, z]");
      s.probes.push_back({item.key(), {xyz[0], xyz[1], xyz.size() == 3 ? xyz[2] : 0.0}});
    }
  }
  if (study.contains("psi")) s.psi = ParseReference(study["psi"], source, "psi", false);
  if (study.contains("chi")) s.chi = ParseReference(study["chi"], source, "chi", true);
  for (const ReferenceSpec* r : {s.psi ? &*s.psi : nullptr, s.chi ? &*s.chi : nullptr}) {
    if (!r) continue;
    const char* key = r == (s.psi ? &*s.psi : nullptr) ? "psi" : "chi";
    if (r->between.empty() && s.environments.size() != 2)
      Fail(source, key, "name the two environments with \"between\"");
    for (const std::string& name : r->between) {
      bool found = false;
      for (const auto& e : s.environments)
        found = found || e.name == name;
      if (!found) Fail(source, std::string(key) + ": between", "no environment " + name);
    }
  }
  return s;
}

json ReadStudyFile(const std::string& path) {
  std::ifstream in(path);
  if (!in) throw StudyFileError(path + ": cannot be read");
  std::stringstream text;
  text << in.rdbuf();
  try {
    return json::parse(text.str());
  } catch (const json::parse_error& e) {
    throw StudyFileError(path + ": not valid JSON (" + e.what() + ")");
  }
}

}  // namespace brindle::study
