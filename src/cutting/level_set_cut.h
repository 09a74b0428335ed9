// Splitting of a volume or surface mesh along the zero level of a vertex field with MMG's
// level-set discretisation. Elements of the result carry the side they lie on as reference
// numbers: 2 on the positive side, 3 on the negative side.
#ifndef BRINDLE_CUTTING_LEVEL_SET_CUT_H
#define BRINDLE_CUTTING_LEVEL_SET_CUT_H

#include <memory>
#include <vector>

#include "opennurbs.h"

namespace brindle {

// Element references MMG gives the two sides of the level set.
constexpr int kPositiveSideReference = 2;
constexpr int kNegativeSideReference = 3;

// Statuses of the cut; each has the message returned by LevelSetCutMessage.
enum LevelSetCutStatus {
  kCutSucceeded = 0,
  kCutNullMesh = 1,
  kCutNullValues = 2,
  kCutMixedFaces = 3,
  kCutVolumeIso = 4,
  kCutVolumeMeshSize = 5,
  kCutVolumeVertices = 6,
  kCutVolumeTetrahedra = 7,
  kCutVolumeSolSize = 8,
  kCutVolumeScalarSols = 9,
  kCutVolumeCheck = 10,
  kCutVolumeLevelSet = 11,
  kCutSurfaceIso = 12,
  kCutSurfaceMeshSize = 13,
  kCutSurfaceVertices = 14,
  kCutSurfaceTriangles = 15,
  kCutSurfaceSolSize = 16,
  kCutSurfaceScalarSols = 17,
  kCutSurfaceCheck = 18,
  kCutSurfaceLevelSet = 19,
};

// printf-style message of a status; those of 11 and 19 take MMG's return value as %d.
const char* LevelSetCutMessage(int status);

struct LevelSetCutRequest {
  const ON_Mesh* mesh = nullptr;         // tetrahedra as quad faces, or triangles
  const double* vertexValues = nullptr;  // one per double-precision vertex
  int keepRef = 0;                       // element reference to keep; 0 keeps both sides
  double hmin = 0;                       // passed to MMG and overridden by hmax
  double hmax = 0;
  ON_Mesh* interfaceMesh = nullptr;  // optional, volume meshes only
};

struct LevelSetCutOutcome {
  int status = kCutSucceeded;
  int engineStatus = 0;  // MMG's return value when the level-set call itself failed
  std::unique_ptr<ON_Mesh> mesh;
};

// Chooses the branch by the face kinds: no triangles means a volume mesh (also when there are
// no faces at all), triangles only a surface mesh, both a refusal.
LevelSetCutOutcome CutAlongZeroLevel(const LevelSetCutRequest& request);

LevelSetCutOutcome CutVolumeAlongZeroLevel(const LevelSetCutRequest& request);
LevelSetCutOutcome CutSurfaceAlongZeroLevel(const LevelSetCutRequest& request);

// Shared steps of both branches.
namespace level_set_cut_detail {

// MMG's Hausdorff parameter as the integer setter receives it: 0.5 % of the bounding-box
// diagonal, truncated toward zero.
int HausdorffAsInteger(const ON_Mesh& mesh);

// Drops every element whose reference differs from keepRef (when keepRef is not 0), then
// writes the archive with the surviving elements' references.
void FinishResult(ON_Mesh& result, std::vector<int>& references, int keepRef);

// After a low failure on the input check MMG hands the mesh back untouched but for its
// coordinates, which stay in MMG's working frame (the unit box of the used vertices). When
// `result` is exactly that, the caller's coordinates are put back, so that a low failure
// delivers the input mesh where the caller has it.
void RestoreInputFrame(const ON_Mesh& input, ON_Mesh& result);

// Sizes the three arrays that MMG's getters fill in place.
void SizeResultArrays(ON_Mesh& result, int vertexCount, int faceCount);

}  // namespace level_set_cut_detail

}  // namespace brindle

#endif
