// report.html: one self-contained page per study run, readable in any browser without the
// files beside it: the inputs, the results, the mesh and convergence checks, every picture
// inline and the tool's version.
#ifndef BRINDLE_STUDY_REPORT_PAGE_H
#define BRINDLE_STUDY_REPORT_PAGE_H

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "model.h"

namespace brindle::study {

struct ReportFigure {
  std::string caption;
  std::string path;  // an SVG file, copied into the page
};

struct ReportStudy {
  std::string key;      // the study's member of the summary
  std::string heading;  // e.g. "2-D example: floor slab"
  std::vector<ReportFigure> figures;
};

// The materials of a built-in model for the records: {"name": {"conductivity_W_per_mK": k,
// "role": "solid" | "interior surface resistance" | "exterior surface resistance"}, ...}.
nlohmann::json MaterialsJson(const std::vector<Material>& materials);

// The SVG files in `folder` whose names start with `prefix`, temperature pictures before flux
// pictures, each captioned with its file name.
std::vector<ReportFigure> FiguresIn(const std::string& folder, const std::string& prefix);

// The page for a summary (its "version", "inputs" and one member per study). Members named
// mesh_check, convergence, mesh or solver are shown as checks, "materials" as its own table,
// the other members as results.
std::string ReportHtml(const nlohmann::ordered_json& summary,
                       const std::vector<ReportStudy>& studies);

// Writes ReportHtml; throws std::runtime_error when the file cannot be written.
void WriteReportPage(const std::string& path, const nlohmann::ordered_json& summary,
                     const std::vector<ReportStudy>& studies);

}  // namespace brindle::study

#endif
