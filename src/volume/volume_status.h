// Statuses of the volume solver's exports, shared by the exports and the solver's checks.
#ifndef BRINDLE_VOLUME_VOLUME_STATUS_H
#define BRINDLE_VOLUME_VOLUME_STATUS_H

namespace brindle {

enum VolumeStatus : int {
  kVolumeSucceeded = 0,
  kNullArgument = 1,    // a null handle or array after creation
  kInfoNullHandle = 7,  // the status query's null handle
  kBadInput = 21,       // counts, arrays or indices refused before anything is allocated
  // Mesh checks, with a sentence for the caller's detail buffer.
  kDisconnectedMesh = 22,
  kDegenerateTetrahedron = 23,
  kSliverTetrahedron = 24,
  kSoloVertex = 25,
  kOutOfMemory = 30,
};

}  // namespace brindle

#endif
