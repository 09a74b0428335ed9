// Flat rectangular test meshes, painted with the boundary colours the surface solver reads: the
// first row of vertices held at 0, the last row at 1, every other row free.
#ifndef BRINDLE_MESHTOOLS_RECT_MESH_H
#define BRINDLE_MESHTOOLS_RECT_MESH_H

#include <memory>

#include "opennurbs.h"

namespace brindle {

// Statuses of MakeRectMesh.
enum RectMeshStatus {
  kRectSucceeded = 0,
  kRectInvalidDimensions = 1,
  kRectInvalidMesh = 2,
  kRectNullArgument = 3,
  kRectOutOfMemory = 4,
};

// True when width and height are positive numbers and the grid of nx by ny cells has at least
// one cell and few enough vertices and triangles to be counted in an int.
bool IsValidRectangle(double width, double height, int nx, int ny);

// The rectangle width x height centred on the plane's origin, u along its x axis and v along
// its y axis, split into nx x ny cells of two triangles each. Arguments must pass
// IsValidRectangle. The result may fail ON_Mesh::IsValid (e.g. on a plane without axes).
std::unique_ptr<ON_Mesh> BuildRectMesh(const ON_Plane& plane, double width, double height, int nx,
                                       int ny);

}  // namespace brindle

#endif
