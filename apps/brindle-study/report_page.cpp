#include "report_page.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "svg_writer.h"

namespace brindle::study {
namespace {

namespace fs = std::filesystem;

std::string ValueText(const nlohmann::ordered_json& value) {
  if (value.is_string()) return value.get<std::string>();
  if (value.is_number_float()) {
    char text[32];
    std::snprintf(text, sizeof text, "%.6g", value.get<double>());
    return text;
  }
  if (value.is_array()) {
    std::string text;
    for (const auto& item : value)
      text += (text.empty() ? "" : ", ") + ValueText(item);
    return "[" + text + "]";
  }
  return value.dump();
}

bool IsCheck(const std::string& key) {
  return key == "mesh_check" || key == "convergence" || key == "mesh" || key == "solver";
}

// Rows "a / b / c | value" for the leaves under `value`.
void Rows(std::string& out, const std::string& prefix, const nlohmann::ordered_json& value) {
  if (value.is_object() && !value.empty()) {
    for (const auto& [key, member] : value.items())
      Rows(out, prefix.empty() ? key : prefix + " / " + key, member);
    return;
  }
  out +=
      "<tr><th>" + XmlEscape(prefix) + "</th><td>" + XmlEscape(ValueText(value)) + "</td></tr>\n";
}

std::string Table(const nlohmann::ordered_json& value) {
  std::string rows;
  Rows(rows, "", value);
  return "<table>\n" + rows + "</table>\n";
}

std::string ReadText(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) throw std::runtime_error("cannot read " + path);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

// The <svg> element of a file, without an XML declaration or doctype before it.
std::string InlineSvg(const std::string& path) {
  const std::string text = ReadText(path);
  const std::size_t start = text.find("<svg");
  if (start == std::string::npos) throw std::runtime_error(path + " holds no SVG picture");
  return text.substr(start);
}

// The environments of a study side by side: one row each, one column per figure.
std::string EnvironmentTable(const nlohmann::ordered_json& environments) {
  static const std::pair<const char*, const char*> kColumns[] = {
      {"temperature_C", "air °C"},
      {"surface_resistance", "R m²K/W"},
      {"heat_flow", "heat flow"},
      {"surface_temperature_min_C", "surface min °C"},
      {"surface_temperature_min_at", "at (m)"},
      {"surface_temperature_max_C", "surface max °C"},
      {"surface_temperature_max_at", "at (m)"},
      {"temperature_factor_min", "f min"}};
  std::string out = "<table>\n<tr><th>environment</th>";
  for (const auto& column : kColumns)
    out += std::string("<th>") + column.second + "</th>";
  out += "</tr>\n";
  for (const auto& [name, e] : environments.items()) {
    out += "<tr><th>" + XmlEscape(name) + "</th>";
    for (const auto& column : kColumns)
      out += "<td>" + (e.contains(column.first) ? XmlEscape(ValueText(e[column.first])) : "") +
             "</td>";
    out += "</tr>\n";
  }
  return out + "</table>\n";
}

constexpr const char* kStyle =
    "body{font-family:sans-serif;margin:24px auto;max-width:1200px;color:#1a1a1a}"
    "h1{font-size:24px}h2{font-size:20px;border-bottom:2px solid #ccc;padding-bottom:4px;"
    "margin-top:36px}h3{font-size:16px}"
    "table{border-collapse:collapse;margin:8px 0 16px}th,td{border:1px solid #ccc;"
    "padding:3px 10px;text-align:left;font-size:13px}th{background:#f3f3f3;font-weight:normal}"
    "td{font-family:monospace}figure{margin:16px 0}figure svg{max-width:100%;height:auto;"
    "border:1px solid #ddd}figcaption{font-size:12px;color:#555}";

}  // namespace

nlohmann::json MaterialsJson(const std::vector<Material>& materials) {
  nlohmann::json json = nlohmann::json::object();
  for (const Material& m : materials)
    json[m.name] = {{"conductivity_W_per_mK", m.conductivity},
                    {"role", m.role == Role::kSolid       ? "solid"
                             : m.role == Role::kWarmLayer ? "interior surface resistance"
                                                          : "exterior surface resistance"}};
  return json;
}

std::vector<ReportFigure> FiguresIn(const std::string& folder, const std::string& prefix) {
  std::vector<std::string> names;
  std::error_code error;
  for (const auto& entry : fs::directory_iterator(folder, error)) {
    const std::string name = entry.path().filename().string();
    if (entry.path().extension() == ".svg" && name.compare(0, prefix.size(), prefix) == 0)
      names.push_back(name);
  }
  auto isFlux = [](const std::string& name) { return name.find("-flux") != std::string::npos; };
  std::sort(names.begin(), names.end(), [&](const std::string& a, const std::string& b) {
    return isFlux(a) != isFlux(b) ? !isFlux(a) : a < b;
  });
  std::vector<ReportFigure> figures;
  for (const std::string& name : names)
    figures.push_back({name, (fs::path(folder) / name).string()});
  return figures;
}

std::string ReportHtml(const nlohmann::ordered_json& summary,
                       const std::vector<ReportStudy>& studies) {
  const std::string version = summary.value("version", std::string("unknown"));
  std::string out =
      "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
      "<title>brindle-study report</title>\n<style>" +
      std::string(kStyle) + "</style>\n</head>\n<body>\n<h1>Thermal-bridge study</h1>\n";
  out += "<p>brindle-study " + XmlEscape(version) + "</p>\n";
  if (summary.contains("inputs")) out += "<h2>Inputs</h2>\n" + Table(summary["inputs"]);
  for (const ReportStudy& study : studies) {
    out += "<h2>" + XmlEscape(study.heading) + "</h2>\n";
    if (summary.contains(study.key)) {
      nlohmann::ordered_json results = nlohmann::ordered_json::object();
      nlohmann::ordered_json checks = nlohmann::ordered_json::object();
      for (const auto& [key, member] : summary[study.key].items())
        if (key != "materials" && key != "environments")
          (IsCheck(key) ? checks : results)[key] = member;
      if (summary[study.key].contains("materials"))
        out += "<h3>Materials</h3>\n" + Table(summary[study.key]["materials"]);
      if (summary[study.key].contains("environments") &&
          summary[study.key]["environments"].is_object())
        out += "<h3>Environments</h3>\n" + EnvironmentTable(summary[study.key]["environments"]);
      out += "<h3>Results</h3>\n" + Table(results);
      if (!checks.empty()) out += "<h3>Mesh and convergence checks</h3>\n" + Table(checks);
    }
    for (const ReportFigure& figure : study.figures)
      out += "<figure>\n" + InlineSvg(figure.path) + "<figcaption>" + XmlEscape(figure.caption) +
             "</figcaption>\n</figure>\n";
  }
  return out + "</body>\n</html>\n";
}

void WriteReportPage(const std::string& path, const nlohmann::ordered_json& summary,
                     const std::vector<ReportStudy>& studies) {
  WriteTextFile(path, ReportHtml(summary, studies));
}

}  // namespace brindle::study
