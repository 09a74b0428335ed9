// Legacy VTK files (ASCII unstructured grids) for ParaView.
#ifndef BRINDLE_STUDY_VTK_WRITER_H
#define BRINDLE_STUDY_VTK_WRITER_H

#include <string>
#include <utility>
#include <vector>

#include "model.h"

namespace brindle::study {

struct VtkFields {
  std::vector<std::pair<std::string, std::vector<double>>> pointScalars;
  std::vector<std::pair<std::string, std::vector<Point>>> cellVectors;
  std::vector<std::pair<std::string, std::vector<int>>> cellIntegers;
};

// Writes triangles (VTK type 5) or tetrahedra (type 10) with the given fields. Field names
// must not contain blanks. Throws std::runtime_error when the file cannot be written.
void WriteVtk(const std::string& path, const std::string& title, const TriMesh& mesh,
              const VtkFields& fields);
void WriteVtk(const std::string& path, const std::string& title, const TetMesh& mesh,
              const VtkFields& fields);

}  // namespace brindle::study

#endif
