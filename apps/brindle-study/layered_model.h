// The model the solvers see: the user's elements in metres plus, on every environment with a
// surface resistance, a one-element-thick layer whose outer face carries the air temperature.
#ifndef BRINDLE_STUDY_LAYERED_MODEL_H
#define BRINDLE_STUDY_LAYERED_MODEL_H

#include <array>
#include <stdexcept>
#include <string>
#include <vector>

#include "model.h"

namespace brindle::study {

// A boundary that cannot carry what the study asks of it; the message is for the user.
class LayerError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Faces of one environment: triangles in 3-D, segments (third index -1) in 2-D.
struct EnvironmentFaces {
  std::string name;
  double surfaceResistance = 0.0;  // m2K/W; 0 holds the faces themselves at the temperature
  std::vector<std::array<int, 3>> faces;
};

// Elements are tetrahedra in 3-D and triangles (fourth index -1) in 2-D.
struct SolidModel {
  int dimension = 3;
  std::vector<Point> points;  // metres
  std::vector<std::array<int, 4>> elements;
  std::vector<int> material;  // index into conductivity
  std::vector<double> conductivity;
};

struct LayeredModel {
  int dimension = 3;
  std::vector<Point> points;  // metres: the solid's vertices first, then the layers' outer ones
  std::vector<std::array<int, 4>> elements;  // the solid's elements first, then the layers'
  std::vector<int> material;
  std::vector<double> conductivity;  // the solid's materials, then one layer material per
                                     // environment with a surface resistance
  std::vector<int> layerMaterialOf;  // per environment: its layer's material, or -1
  std::vector<int> fixedBy;          // per vertex: the environment holding it, or -1
  std::size_t solidVertices = 0;
  std::size_t solidElements = 0;
  double layerThickness = 0.0;  // m, the same for every layer so one conductivity suits it
  // Per environment: its faces on the solid side and the vertices they touch, for the surface
  // temperatures.
  std::vector<std::vector<std::array<int, 3>>> solidFaces;
  std::vector<std::vector<int>> surfaceVertices;
};

// Layer thickness for a model: at most 1 mm and a tenth of the shortest edge of a face that
// carries a layer, so that the layer cannot disturb corners or lateral conduction.
double ChooseLayerThickness(const SolidModel& solid, const std::vector<EnvironmentFaces>& faces);

// Builds the layers. A vertex on the fixed faces of several environments (R = 0) is held by the
// first of them. Throws LayerError for faces that are not on the model's outside when they need
// a layer, and for faces that are not faces of any element.
LayeredModel BuildLayeredModel(SolidModel solid, const std::vector<EnvironmentFaces>& faces);

}  // namespace brindle::study

#endif
