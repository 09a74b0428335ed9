// The pictures and ParaView files of a solved study: the solved model adapted to the drawing
// code (surfaces per environment, a section and the surfaces file in 3-D; temperature and
// heat-flux pictures in 2-D) and the model itself with the mesh's reference numbers.
#ifndef BRINDLE_STUDY_STUDY_PICTURES_H
#define BRINDLE_STUDY_STUDY_PICTURES_H

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "model.h"
#include "section_cut.h"
#include "study_engine.h"
#include "study_mesh.h"

namespace brindle::study {

struct StudyPictureRequest {
  std::string folder;
  std::string stem = "study";        // file names start with it
  std::string caption;               // first title line of every picture
  std::vector<double> conductivity;  // W/(m K) per solid material of the outcome
  double symmetryFactor = 1.0;       // the model is 1/factor of the detail
  int isotherms = 9;
  bool sectionGiven = false;
  AxisPlane section;
};

// The solved model as the drawing code's meshes: regions are the outcome's materials, surface
// layers have a layer role so that pictures leave them out.
TetMesh OutcomeTetMesh(const StudyOutcome& outcome, const std::vector<double>& conductivity);
TriMesh OutcomeTriMesh(const StudyOutcome& outcome, const std::vector<double>& conductivity);

// Planes a partial model was cut at: planes of the model's bounding box covered by boundary
// faces that no environment touches, one per axis and log2(symmetryFactor) of them, those
// nearest `near` first.
std::vector<AxisPlane> SymmetryPlanes(const TetMesh& solid, double symmetryFactor,
                                      const std::vector<std::vector<std::array<int, 3>>>& used,
                                      const Point& near);

// Writes the pictures, <stem>.vtk (the model: temperature, the mesh's reference and material
// name per element) and, in 3-D, <stem>-surfaces.vtk. Returns what summary.json records:
// {"files": [...], "section_plane", "symmetry_planes", "surface_extremes"}.
nlohmann::json WriteStudyPictures(const StudyOutcome& outcome, const StudyMesh& mesh,
                                  const StudyPictureRequest& request);

}  // namespace brindle::study

#endif
