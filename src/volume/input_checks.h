// Range checks of the host's arrays, made before anything is allocated for a new solver.
#ifndef BRINDLE_VOLUME_INPUT_CHECKS_H
#define BRINDLE_VOLUME_INPUT_CHECKS_H

namespace brindle {

struct VolumeInput {
  int vertexCount;
  const double* coordinates;
  int tetrahedronCount;
  const int* tetrahedra;
  const int* tetrahedronMaterials;
  int materialCount;
  const double* conductivities;
  int highCount;
  const int* highVertices;
  int lowCount;
  const int* lowVertices;
};

// True when no count is zero (the boundary lists may not both be empty), no count is negative,
// every array behind a non-zero count exists, and every vertex, material and boundary-list
// index is in range. Reads the index arrays, never the coordinates or conductivities.
bool IsUsableVolumeInput(const VolumeInput& input);

}  // namespace brindle

#endif
