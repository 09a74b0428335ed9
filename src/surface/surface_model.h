// The surface model a solver works on: a private copy of the caller's triangle mesh in which
// the vertices with a prescribed temperature come first, the maps between the caller's and
// the ordered numbering, the face regions and the conductivity of each region.
#ifndef BRINDLE_SURFACE_SURFACE_MODEL_H
#define BRINDLE_SURFACE_SURFACE_MODEL_H

#include <Eigen/Core>
#include <vector>

#include "opennurbs.h"
#include "surface/surface_status.h"

namespace brindle {

struct SurfaceModel {
  // Vertices renumbered: fixed ones in input order at the front, free ones in reverse input
  // order at the back. Only double and single precision vertices, colours and faces are set.
  ON_Mesh mesh;
  std::vector<int> oldToNew;
  std::vector<int> newToOld;
  std::vector<int> faceRegion;  // region number of each face, never negative
  // Region numbers are the caller's and may be sparse and large, so the solver keeps one
  // conductivity per region in use only: usedRegions lists them in ascending order and
  // faceRegionSlot gives each face's position in that list.
  std::vector<int> usedRegions;
  std::vector<int> faceRegionSlot;
  int fixedCount = 0;                // ordered vertices 0..fixedCount-1 have prescribed values
  std::vector<double> conductivity;  // one per entry of usedRegions
  Eigen::VectorXd prescribed;        // temperature of each fixed vertex, ordered numbering

  int VertexCount() const { return static_cast<int>(newToOld.size()); }
  int FaceCount() const { return static_cast<int>(faceRegion.size()); }
  int LargestRegion() const;
  double FaceConductivity(int face) const { return conductivity[faceRegionSlot[face]]; }

  // Fills usedRegions and faceRegionSlot from faceRegion.
  void IndexRegions();
  // Takes values[r] for every region r in use when `count` covers every face region (values
  // then holds `count` entries) and returns true; otherwise empties the list and returns false.
  bool SetConductivities(const double* values, int count);
  // A conductivity of 1.0 for every region in use.
  void SetDefaultConductivities();
};

// Checks the caller's mesh and method as a solver needs them. Returns 0, or writes the
// message and returns the code (kInvalidMethod to kNoFaces).
int CheckSurfaceInput(const ON_Mesh* mesh, int method, char* error);

// Fills `model` from a mesh that passed CheckSurfaceInput. `faceRegions` may be null: every
// face is then region 0 with conductivity 1.0. Returns 0, or writes the message and returns
// the failure code.
int BuildSurfaceModel(const ON_Mesh& input, const int* faceRegions, SurfaceModel& model,
                      char* error);

}  // namespace brindle

#endif
