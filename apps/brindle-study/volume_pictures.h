// The pictures and ParaView files of a solved 3-D model: for every environment its surfaces seen
// from its side, a section through the coldest interior point, and the surfaces as a VTK file.
#ifndef BRINDLE_STUDY_VOLUME_PICTURES_H
#define BRINDLE_STUDY_VOLUME_PICTURES_H

#include <array>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "model.h"
#include "section_cut.h"
#include "surface_picture.h"

namespace brindle::study {

// An environment and the solid faces it touches (oriented out of the solid).
struct VolumeEnvironment {
  std::string name;
  double temperature = 0.0;  // °C
  bool exterior = false;     // its warmest point matters, not its coldest
  std::vector<std::array<int, 3>> faces;
};

// Faces between a solid tetrahedron and one of material role `layer`, oriented out of the solid.
std::vector<std::array<int, 3>> SolidFacesTowards(const TetMesh& mesh, Role layer);

// The faces turned to point out of the tetrahedron they bound (the first one found for a face
// between two tetrahedra); faces that bound none are dropped.
std::vector<std::array<int, 3>> OrientOutOfSolid(const TetMesh& mesh,
                                                 const std::vector<std::array<int, 3>>& faces);

// The vertex of `faces` with the lowest (or highest) value.
int ExtremeVertex(const std::vector<std::array<int, 3>>& faces, const std::vector<double>& values,
                  bool highest);

// Mean unit normal of the faces around a vertex.
Point NormalAt(const std::vector<Point>& points, const std::vector<std::array<int, 3>>& faces,
               int vertex);

struct VolumeOutcome {
  std::string caption;  // first title line of every picture
  const TetMesh* mesh = nullptr;
  std::vector<double> temperature;  // per vertex, °C
  std::vector<VolumeEnvironment> environments;
  std::vector<AxisPlane> symmetry;  // planes a partial model is cut at
  bool sectionGiven = false;        // else chosen through the coldest interior point
  AxisPlane section;
};

struct ExtremePoint {
  std::string environment;
  bool warmest = false;
  Point at{0, 0, 0};
  double temperature = 0.0;
  double factor = 0.0;  // (T - coldest air) / (warmest air - coldest air)
};

struct VolumePictureFiles {
  std::vector<std::string> files;  // paths written, pictures first
  std::vector<ExtremePoint> extremes;
  AxisPlane section;
};

// Writes <stem>-<environment>.svg per environment, <stem>-section.svg and <stem>-surfaces.vtk
// into `folder`.
VolumePictureFiles WriteVolumePictures(const std::string& folder, const std::string& stem,
                                       const VolumeOutcome& outcome);

// The extreme point of every environment: {"inside": {"kind": "coldest", "temperature_C",
// "temperature_factor", "at_m": [x, y, z]}, ...}.
nlohmann::json ExtremesJson(const std::vector<ExtremePoint>& extremes);

// A file-name-safe form of an environment's name.
std::string FileStem(const std::string& name);

}  // namespace brindle::study

#endif
