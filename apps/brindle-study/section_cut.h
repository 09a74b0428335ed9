// A plane cut through a tetrahedral model, as a flat triangle mesh that the flat pictures draw.
#ifndef BRINDLE_STUDY_SECTION_CUT_H
#define BRINDLE_STUDY_SECTION_CUT_H

#include <array>
#include <string>
#include <vector>

#include "model.h"

namespace brindle::study {

// The plane coordinate[axis] = offset (axis 0 x, 1 y, 2 z).
struct AxisPlane {
  int axis = 0;
  double offset = 0.0;
};

// The axes a cut normal to `axis` is drawn in, horizontal then vertical: z stays vertical.
std::array<int, 2> PlaneAxes(int axis);

struct SectionCut {
  AxisPlane plane;
  std::array<int, 2> axes{0, 1};  // model axes of the mesh's x and y
  TriMesh mesh;  // in the plane's coordinates (z = 0); materials and regions of the model
  std::vector<double> values;  // per vertex, interpolated along the cut edges
};

// Cuts every tetrahedron the plane crosses. Cut points are shared by the tetrahedra around the
// same edge, so the cut mesh is conforming and material outlines come out whole. A vertex on the
// plane counts as above it: a face lying in the plane is cut once, by the tetrahedron below.
SectionCut CutTetMesh(const TetMesh& mesh, const std::vector<double>& values, AxisPlane plane);

// The cut through `at` that best shows the field: among the axis planes through the point that
// are not parallel to the surface there (its normal `surfaceNormal`, or none when zero), the one
// whose cut spans the widest range of values.
SectionCut ChooseSection(const TetMesh& mesh, const std::vector<double>& values, const Point& at,
                         const Point& surfaceNormal);

// "x = 0.125 m"-style name of a plane.
std::string PlaneName(const AxisPlane& plane);

}  // namespace brindle::study

#endif
