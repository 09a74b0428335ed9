#include "vtk_writer.h"

#include <fstream>
#include <stdexcept>

#include "geometry.h"

namespace brindle::study {
namespace {

template <std::size_t N>
void Write(const std::string& path, const std::string& title, const std::vector<Point>& points,
           const std::vector<std::array<int, N>>& cells, int cellType, const VtkFields& fields) {
  std::ofstream out(path);
  if (!out) throw std::runtime_error("cannot write " + path);
  out.precision(10);
  out << "# vtk DataFile Version 3.0\n" << title << "\nASCII\nDATASET UNSTRUCTURED_GRID\n";
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
  if (!fields.cellVectors.empty() || !fields.cellIntegers.empty())
    out << "CELL_DATA " << cells.size() << '\n';
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

}  // namespace

VtkFields TemperatureFields(const std::vector<double>& factor,
                            const std::vector<Point>& factorGradientFlux,
                            const std::vector<int>& region, const TemperaturePair& pair) {
  VtkFields fields;
  std::vector<double> celsius;
  for (double t : factor)
    celsius.push_back(pair.Celsius(t));
  fields.pointScalars = {{"temperature_C", celsius}, {"temperature_factor", factor}};
  std::vector<Point> heatFlux;
  for (const Point& q : factorGradientFlux)
    heatFlux.push_back(-pair.Difference() * q);
  fields.cellVectors = {{"heat_flux_W_per_m2", heatFlux}};
  fields.cellIntegers = {{"material", region}};
  return fields;
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
