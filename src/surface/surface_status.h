// Statuses of the surface solver's exports, shared by the exports and the internals that
// produce them. Creation reports positive codes; solving and updating report the negative ones
// of their own argument checks and pass the assembly codes through.
#ifndef BRINDLE_SURFACE_SURFACE_STATUS_H
#define BRINDLE_SURFACE_SURFACE_STATUS_H

namespace brindle {

enum SurfaceStatus : int {
  kSurfaceSucceeded = 0,

  // Creation: the export's own checks and allocation failure.
  kNullHandleSlot = 41,
  kCreateOutOfMemory = 44,
  // Creation: input checks, in the order they are made.
  kInvalidMethod = 24,
  kNullMesh = 25,
  kVertexCountsDiffer = 26,
  kQuadFaces = 27,
  kNoVertexColors = 28,
  kNoVertices = 29,
  kNoFaces = 30,
  // Creation: building the ordered model.
  kFaceVertexOutOfRange = 42,
  kNegativeFaceRegion = 43,
  kOrderedMeshInvalid = 127,
  kUnexpectedBoundaryStatus = 1,
  // Assembly, on creation and on an update.
  kRepeatedFaceVertex = 22,    // method 0
  kDegenerateFace = 23,        // method 0
  kUnusedVertex = 24,          // method 0
  kDegenerateCorner = 128,     // method 2
  kDegenerateTriangle = 2025,  // method 3
  // Creation: factorisation.
  kFactorisationFailed = 33,

  // Solving.
  kNullSolverHandle = -1001,  // also on an update
  kTemperatureCountMismatch = -17,
  kNullTemperatures = -18,
  kNegativeLevelCount = -19,
  kNegativeFaceFluxCount = -20,
  kFluxMeshNotEmpty = -21,
  kSolveOutOfMemory = -22,

  // Updating.
  kConductivityCountTooSmall = -3003,
  kNullConductivities = -3004,
  kUpdateOutOfMemory = -3005,
};

}  // namespace brindle

#endif
