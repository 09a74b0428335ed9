// Minimal JSON output for the study summary.
#ifndef BRINDLE_STUDY_JSON_WRITER_H
#define BRINDLE_STUDY_JSON_WRITER_H

#include <string>
#include <utility>
#include <vector>

#include "model.h"

namespace brindle::study {

// An object whose members keep the order they were added in.
class JsonObject {
 public:
  JsonObject& Add(const std::string& key, double value);
  JsonObject& Add(const std::string& key, int value);
  JsonObject& Add(const std::string& key, bool value);
  JsonObject& Add(const std::string& key, const std::string& value);
  JsonObject& Add(const std::string& key, const char* value);
  JsonObject& Add(const std::string& key, const std::vector<double>& values);
  JsonObject& Add(const std::string& key, const JsonObject& value);

  // Pretty-printed text; non-finite numbers are written as null.
  std::string Render(int indent = 0) const;

 private:
  std::vector<std::pair<std::string, std::string>> members_;  // key, rendered value
};

// The materials of a model: {"name": {"conductivity_W_per_mK": k, "role": "solid" |
// "interior surface resistance" | "exterior surface resistance"}, ...}.
JsonObject MaterialsJson(const std::vector<Material>& materials);

// A JSON string literal with the necessary escapes.
std::string JsonString(const std::string& text);
std::string JsonNumber(double value);

}  // namespace brindle::study

#endif
