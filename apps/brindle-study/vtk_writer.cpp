#include "vtk_writer.h"

#include <cstdio>
#include <fstream>
#include <stdexcept>

#include "geometry.h"

namespace brindle::study {
namespace {

// The title is one line of at most 255 characters.
std::string OneLine(std::string text) {
  for (char& c : text)
    if (c == '\n' || c == '\r') c = ' ';
  return text.substr(0, 255);
}

// Strings of a table, one per line: blanks, '%' and other bytes outside printable ASCII are
// written as %XX, which the legacy reader decodes.
std::string Encoded(const std::string& text) {
  std::string out;
  for (unsigned char c : text) {
    if (c > ' ' && c < 127 && c != '%') {
      out += char(c);
    } else {
      char code[4];
      std::snprintf(code, sizeof code, "%%%02X", unsigned(c));
      out += code;
    }
  }
  return out;
}

template <std::size_t N>
void Write(const std::string& path, const std::string& title, const std::vector<Point>& points,
           const std::vector<std::array<int, N>>& cells, int cellType, const VtkFields& fields) {
  std::ofstream out(path);
  if (!out) throw std::runtime_error("cannot write " + path);
  out.precision(10);
  out << "# vtk DataFile Version 3.0\n" << OneLine(title) << "\nASCII\nDATASET UNSTRUCTURED_GRID\n";
  const std::size_t tables = fields.tableIntegers.size() + fields.tableStrings.size();
  if (tables) out << "FIELD FieldData " << tables << '\n';
  for (const auto& [name, values] : fields.tableIntegers) {
    out << name << " 1 " << values.size() << " int\n";
    for (int v : values)
      out << v << '\n';
  }
  for (const auto& [name, values] : fields.tableStrings) {
    out << name << " 1 " << values.size() << " string\n";
    for (const std::string& v : values)
      out << Encoded(v) << '\n';
  }
  out << "POINTS " << points.size() << " double\n";
  for (const Point& p : points)
    out << p[0] << ' ' << p[1] << ' ' << p[2] << '\n';
  out << "CELLS " << cells.size() << ' ' << cells.size() * (N + 1) << '\n';
  for (const auto& cell : cells) {
    out << N;
    for (int v : cell)
      out << ' ' << v;
    out << '\n';
  }
  out << "CELL_TYPES " << cells.size() << '\n';
  for (std::size_t c = 0; c < cells.size(); ++c)
    out << cellType << '\n';
  if (!fields.pointScalars.empty()) out << "POINT_DATA " << points.size() << '\n';
  for (const auto& [name, values] : fields.pointScalars) {
    out << "SCALARS " << name << " double 1\nLOOKUP_TABLE default\n";
    for (double v : values)
      out << v << '\n';
  }
  if (!fields.cellVectors.empty() || !fields.cellIntegers.empty() || !fields.cellScalars.empty())
    out << "CELL_DATA " << cells.size() << '\n';
  for (const auto& [name, values] : fields.cellScalars) {
    out << "SCALARS " << name << " double 1\nLOOKUP_TABLE default\n";
    for (double v : values)
      out << v << '\n';
  }
  for (const auto& [name, values] : fields.cellVectors) {
    out << "VECTORS " << name << " double\n";
    for (const Point& v : values)
      out << v[0] << ' ' << v[1] << ' ' << v[2] << '\n';
  }
  for (const auto& [name, values] : fields.cellIntegers) {
    out << "SCALARS " << name << " int 1\nLOOKUP_TABLE default\n";
    for (int v : values)
      out << v << '\n';
  }
  if (!out) throw std::runtime_error("error while writing " + path);
}

std::vector<int> BuiltInReferences(const std::vector<Material>& materials) {
  std::vector<int> references;
  for (std::size_t m = 0; m < materials.size(); ++m)
    references.push_back(int(m) + 1);
  return references;
}

std::vector<std::string> MaterialNames(const std::vector<Material>& materials) {
  std::vector<std::string> names;
  for (const Material& m : materials)
    names.push_back(m.name);
  return names;
}

}  // namespace

VtkFields TemperatureFields(const std::vector<double>& factor,
                            const std::vector<Point>& factorGradientFlux,
                            const std::vector<int>& region, const std::vector<Material>& materials,
                            const TemperaturePair& pair) {
  const std::vector<int> reference = BuiltInReferences(materials);
  VtkFields fields;
  std::vector<double> celsius;
  for (double t : factor)
    celsius.push_back(pair.Celsius(t));
  fields.pointScalars = {{"temperature_C", celsius}, {"temperature_factor", factor}};
  std::vector<Point> heatFlux;
  for (const Point& q : factorGradientFlux)
    heatFlux.push_back(-pair.Difference() * q);
  fields.cellVectors = {{"heat_flux_W_per_m2", heatFlux}};
  std::vector<int> material;
  for (int r : region)
    material.push_back(r >= 0 && r < int(reference.size()) ? reference[r] : r);
  fields.cellIntegers = {{"material", material}};
  fields.tableIntegers = {{"material_reference", reference}};
  fields.tableStrings = {{"material_name", MaterialNames(materials)}};
  return fields;
}

void WriteVtk(const std::string& path, const std::string& title, const std::vector<Point>& points,
              const std::vector<std::array<int, 3>>& triangles, const VtkFields& fields) {
  Write(path, title, points, triangles, 5, fields);
}

void WriteVtk(const std::string& path, const std::string& title, const TriMesh& mesh,
              const VtkFields& fields) {
  Write(path, title, mesh.points, mesh.triangles, 5, fields);
}

void WriteVtk(const std::string& path, const std::string& title, const TetMesh& mesh,
              const VtkFields& fields) {
  Write(path, title, mesh.points, mesh.tetrahedra, 10, fields);
}

}  // namespace brindle::study
