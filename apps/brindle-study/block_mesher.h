// Structured meshers for details built from axis-aligned blocks: a tensor grid through every
// block face, graded towards the faces, each cell split into simplices.
#ifndef BRINDLE_STUDY_BLOCK_MESHER_H
#define BRINDLE_STUDY_BLOCK_MESHER_H

#include <vector>

#include "grading.h"
#include "model.h"

namespace brindle::study {

// Triangulates a section made of rectangles in the xy plane (block z extents are ignored).
// Every grid cell becomes two right triangles; vertices on the outer face of a surface layer are
// held at its temperature, vertices shared by a warm layer and a solid are interior surface.
// `focus` grades towards chosen lines instead of every block face.
TriMesh MeshSection(const std::vector<Block>& blocks, const std::vector<Material>& materials,
                    const MeshSizes& sizes, const GradingFocus& focus = {});

// Tetrahedral mesh of a detail made of boxes: every hexahedral cell is split into six
// tetrahedra around its main diagonal, which keeps neighbouring cells conforming.
TetMesh MeshBlocks(const std::vector<Block>& blocks, const std::vector<Material>& materials,
                   const MeshSizes& sizes, const GradingFocus& focus = {});

}  // namespace brindle::study

#endif
