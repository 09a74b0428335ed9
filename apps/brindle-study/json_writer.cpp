#include "json_writer.h"

#include <cmath>
#include <cstdio>

namespace brindle::study {

std::string JsonString(const std::string& text) {
  std::string out = "\"";
  for (char c : text) {
    switch (c) {
      case '"':
        out += "\\\"";
        break;
      case '\\':
        out += "\\\\";
        break;
      case '\n':
        out += "\\n";
        break;
      case '\t':
        out += "\\t";
        break;
      case '\r':
        out += "\\r";
        break;
      default:
        if (static_cast<unsigned char>(c) < 0x20) {
          char escaped[8];
          std::snprintf(escaped, sizeof escaped, "\\u%04x", static_cast<unsigned>(c));
          out += escaped;
        } else {
          out += c;
        }
    }
  }
  return out + "\"";
}

std::string JsonNumber(double value) {
  if (!std::isfinite(value)) return "null";
  char text[32];
  std::snprintf(text, sizeof text, "%.10g", value);
  return text;
}

JsonObject& JsonObject::Add(const std::string& key, double value) {
  members_.emplace_back(key, JsonNumber(value));
  return *this;
}
JsonObject& JsonObject::Add(const std::string& key, int value) {
  members_.emplace_back(key, std::to_string(value));
  return *this;
}
JsonObject& JsonObject::Add(const std::string& key, bool value) {
  members_.emplace_back(key, value ? "true" : "false");
  return *this;
}
JsonObject& JsonObject::Add(const std::string& key, const std::string& value) {
  members_.emplace_back(key, JsonString(value));
  return *this;
}
JsonObject& JsonObject::Add(const std::string& key, const char* value) {
  return Add(key, std::string(value));
}
JsonObject& JsonObject::Add(const std::string& key, const std::vector<double>& values) {
  std::string text = "[";
  for (std::size_t i = 0; i < values.size(); ++i)
    text += (i ? ", " : "") + JsonNumber(values[i]);
  members_.emplace_back(key, text + "]");
  return *this;
}
JsonObject& JsonObject::Add(const std::string& key, const JsonObject& value) {
  members_.emplace_back(key, value.Render(0));
  return *this;
}

JsonObject MaterialsJson(const std::vector<Material>& materials) {
  JsonObject json;
  for (const Material& m : materials) {
    const char* role = m.role == Role::Solid       ? "solid"
                       : m.role == Role::WarmLayer ? "interior surface resistance"
                                                   : "exterior surface resistance";
    JsonObject material;
    material.Add("conductivity_W_per_mK", m.conductivity).Add("role", role);
    json.Add(m.name, material);
  }
  return json;
}

std::string JsonObject::Render(int indent) const {
  if (members_.empty()) return "{}";
  const std::string pad(indent + 2, ' ');
  std::string out = "{\n";
  for (std::size_t i = 0; i < members_.size(); ++i) {
    const auto& [key, value] = members_[i];
    // Only nested objects span lines (strings escape their line ends); indent them one level.
    std::string rendered;
    for (char c : value) {
      rendered += c;
      if (c == '\n') rendered += pad;
    }
    out += pad + JsonString(key) + ": " + rendered + (i + 1 < members_.size() ? ",\n" : "\n");
  }
  return out + std::string(indent, ' ') + "}";
}

}  // namespace brindle::study
