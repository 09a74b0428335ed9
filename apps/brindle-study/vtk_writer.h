// Legacy VTK files (ASCII unstructured grids) for ParaView.
#ifndef BRINDLE_STUDY_VTK_WRITER_H
#define BRINDLE_STUDY_VTK_WRITER_H

#include <array>
#include <string>
#include <utility>
#include <vector>

#include "model.h"
#include "report.h"

namespace brindle::study {

struct VtkFields {
  // Arrays of the whole data set, e.g. the reference numbers and names of the materials.
  std::vector<std::pair<std::string, std::vector<int>>> tableIntegers;
  std::vector<std::pair<std::string, std::vector<std::string>>> tableStrings;
  std::vector<std::pair<std::string, std::vector<double>>> pointScalars;
  std::vector<std::pair<std::string, std::vector<double>>> cellScalars;
  std::vector<std::pair<std::string, std::vector<Point>>> cellVectors;
  std::vector<std::pair<std::string, std::vector<int>>> cellIntegers;
};

// The fields of a solved model the tool built itself: temperature per vertex in degrees Celsius
// and as the factor the solvers work in, heat flux per element for the temperature pair (heat
// flows from warm to cold, against the factor's gradient), and the material of each element as
// its reference number in the MEDIT files the tool writes (index + 1), with the materials' names
// in the data set's table.
VtkFields TemperatureFields(const std::vector<double>& factor,
                            const std::vector<Point>& factorGradientFlux,
                            const std::vector<int>& region, const std::vector<Material>& materials,
                            const TemperaturePair& pair);

// Triangles (VTK type 5) of a surface given by its own points.
void WriteVtk(const std::string& path, const std::string& title, const std::vector<Point>& points,
              const std::vector<std::array<int, 3>>& triangles, const VtkFields& fields);

// Writes triangles (VTK type 5) or tetrahedra (type 10) with the given fields. Field names
// must not contain blanks. Throws std::runtime_error when the file cannot be written.
void WriteVtk(const std::string& path, const std::string& title, const TriMesh& mesh,
              const VtkFields& fields);
void WriteVtk(const std::string& path, const std::string& title, const TetMesh& mesh,
              const VtkFields& fields);

}  // namespace brindle::study

#endif
