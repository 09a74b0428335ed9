// Reader for MEDIT .mesh files (the ASCII format written by MMG, gmsh and TetGen).
#ifndef BRINDLE_STUDY_MEDIT_H
#define BRINDLE_STUDY_MEDIT_H

#include <array>
#include <stdexcept>
#include <string>
#include <vector>

#include "model.h"
#include "study_mesh.h"

namespace brindle::study {

// A malformed file; what() reads "<source>:<line>: <problem>".
class MeditError : public std::runtime_error {
 public:
  MeditError(const std::string& message, int line) : std::runtime_error(message), line_(line) {}
  int Line() const { return line_; }

 private:
  int line_;
};

// Elements keep their reference numbers; indices are 0-based here (1-based in the file).
struct MeditMesh {
  int dimension = 0;
  std::vector<Point> vertices;
  std::vector<int> vertexRef;
  std::vector<std::array<int, 2>> edges;
  std::vector<int> edgeRef;
  std::vector<std::array<int, 3>> triangles;
  std::vector<int> triangleRef;
  std::vector<std::array<int, 4>> tetrahedra;
  std::vector<int> tetrahedronRef;
  // Elements the solvers cannot take, counted so that a study can refuse them by name.
  long quadrilateralCount = 0;
  long hexahedronCount = 0;
  long prismCount = 0;
};

// Parses the text of a .mesh file. Keywords are case-insensitive, '#' starts a comment that
// runs to the end of the line, "End" stops reading. Sections the tool has no use for
// (corners, ridges, required entities, normals, tangents) are read and dropped; quadrilaterals,
// hexahedra and prisms are read and counted. `source` names the text in messages.
MeditMesh ParseMedit(const std::string& text, const std::string& source = "mesh");

// Reads and parses a file; an unreadable file is reported as a MeditError at line 0.
MeditMesh ReadMedit(const std::string& path);

// MEDIT text of a study mesh with its elements and boundary elements, references kept
// (Dimension 2 for a section).
std::string MeditText(const StudyMesh& mesh);

// Writes MeditText to a file; throws std::runtime_error when it cannot.
void WriteMedit(const std::string& path, const std::string& text);

}  // namespace brindle::study

#endif
