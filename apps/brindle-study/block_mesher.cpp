#include "block_mesher.h"

#include <algorithm>
#include <stdexcept>

namespace brindle::study {
namespace {

// The axis across which a surface layer is thin (its smallest extent), -1 for solids.
std::vector<int> ThinAxes(const std::vector<Block>& blocks, const std::vector<Material>& materials,
                          int dimensions) {
  std::vector<int> thin;
  for (const Block& block : blocks) {
    int axis = -1;
    if (materials[block.material].role != Role::kSolid)
      for (int a = 0; a < dimensions; ++a)
        if (axis < 0 || block.high[a] - block.low[a] < block.high[axis] - block.low[axis]) axis = a;
    thin.push_back(axis);
  }
  return thin;
}

struct NodeClass {
  bool used = false;
  VertexKind kind = VertexKind::kFree;
  bool onSurface = false;
};

// Classifies a grid node from the blocks of the 2^d cells around it (-1 = empty or outside).
// Cell c lies on the low side of the node along axis a when bit a of c is clear. A node is held
// at a layer's temperature when every filled cell around it belongs to that kind of layer and,
// across some layer's thin axis, the node faces empty space: that is the layer's outer face.
// Nodes inside a layer's thickness at a cut-off plane stay free.
NodeClass ClassifyNode(const std::vector<int>& cells, const std::vector<Block>& blocks,
                       const std::vector<Material>& materials, const std::vector<int>& thin) {
  NodeClass node;
  bool allWarm = true, allCold = true, outerFace = false, touchesWarm = false, touchesSolid = false;
  for (std::size_t c = 0; c < cells.size(); ++c) {
    if (cells[c] < 0) continue;
    node.used = true;
    const Role role = materials[blocks[cells[c]].material].role;
    allWarm = allWarm && role == Role::kWarmLayer;
    allCold = allCold && role == Role::kColdLayer;
    touchesWarm = touchesWarm || role == Role::kWarmLayer;
    touchesSolid = touchesSolid || role == Role::kSolid;
    const int axis = thin[cells[c]];
    if (axis >= 0 && cells[c ^ (std::size_t{1} << axis)] < 0) outerFace = true;
  }
  if (node.used && outerFace && allWarm) node.kind = VertexKind::kWarm;
  if (node.used && outerFace && allCold) node.kind = VertexKind::kCold;
  node.onSurface = touchesWarm && touchesSolid;
  return node;
}

// Grid lines along one axis through every block face.
std::vector<double> AxisLines(const std::vector<Block>& blocks, int axis, const MeshSizes& sizes,
                              const GradingFocus& focus) {
  std::vector<double> breaks;
  for (const Block& block : blocks) {
    breaks.push_back(block.low[axis]);
    breaks.push_back(block.high[axis]);
  }
  return GradedLines(breaks, sizes, focus.lines[axis], focus.otherBreaks);
}

// The block a cell belongs to: the last block containing the cell centre, or -1.
int CellBlock(const std::vector<Block>& blocks, const Point& centre, int dimensions) {
  for (int b = static_cast<int>(blocks.size()) - 1; b >= 0; --b) {
    bool inside = true;
    for (int a = 0; a < dimensions; ++a)
      inside = inside && centre[a] > blocks[b].low[a] && centre[a] < blocks[b].high[a];
    if (inside) return b;
  }
  return -1;
}

void CheckBlocks(const std::vector<Block>& blocks, const std::vector<Material>& materials,
                 int dimensions) {
  if (blocks.empty()) throw std::invalid_argument("a detail needs at least one block");
  for (const Block& block : blocks) {
    if (block.material < 0 || block.material >= static_cast<int>(materials.size()))
      throw std::invalid_argument("block material out of range");
    for (int a = 0; a < dimensions; ++a)
      if (!(block.high[a] > block.low[a]))
        throw std::invalid_argument("block with an empty extent");
  }
}

}  // namespace

TriMesh MeshSection(const std::vector<Block>& blocks, const std::vector<Material>& materials,
                    const MeshSizes& sizes, const GradingFocus& focus) {
  CheckBlocks(blocks, materials, 2);
  const std::vector<int> thin = ThinAxes(blocks, materials, 2);
  const std::vector<double> xs = AxisLines(blocks, 0, sizes, focus);
  const std::vector<double> ys = AxisLines(blocks, 1, sizes, focus);
  const int nx = static_cast<int>(xs.size()) - 1;
  const int ny = static_cast<int>(ys.size()) - 1;

  std::vector<int> cell(static_cast<std::size_t>(nx) * ny);
  for (int j = 0; j < ny; ++j)
    for (int i = 0; i < nx; ++i)
      cell[j * nx + i] =
          CellBlock(blocks, {0.5 * (xs[i] + xs[i + 1]), 0.5 * (ys[j] + ys[j + 1]), 0.0}, 2);
  auto cellAt = [&](int i, int j) {
    return (i < 0 || j < 0 || i >= nx || j >= ny) ? -1 : cell[j * nx + i];
  };

  TriMesh mesh;
  mesh.materials = materials;
  std::vector<int> index(static_cast<std::size_t>(nx + 1) * (ny + 1), -1);
  std::vector<int> around(4);
  for (int j = 0; j <= ny; ++j)
    for (int i = 0; i <= nx; ++i) {
      for (int c = 0; c < 4; ++c)
        around[c] = cellAt(i - 1 + (c & 1), j - 1 + ((c >> 1) & 1));
      const NodeClass node = ClassifyNode(around, blocks, materials, thin);
      if (!node.used) continue;
      index[j * (nx + 1) + i] = static_cast<int>(mesh.points.size());
      mesh.points.push_back({xs[i], ys[j], 0.0});
      mesh.kind.push_back(node.kind);
      mesh.onSurface.push_back(node.onSurface);
    }
  for (int j = 0; j < ny; ++j)
    for (int i = 0; i < nx; ++i) {
      const int block = cellAt(i, j);
      if (block < 0) continue;
      const int v00 = index[j * (nx + 1) + i], v10 = index[j * (nx + 1) + i + 1];
      const int v01 = index[(j + 1) * (nx + 1) + i], v11 = index[(j + 1) * (nx + 1) + i + 1];
      // Alternate the diagonal so that the mesh has no preferred direction.
      if ((i + j) % 2 == 0) {
        mesh.triangles.push_back({v00, v10, v11});
        mesh.triangles.push_back({v00, v11, v01});
      } else {
        mesh.triangles.push_back({v00, v10, v01});
        mesh.triangles.push_back({v10, v11, v01});
      }
      mesh.region.push_back(blocks[block].material);
      mesh.region.push_back(blocks[block].material);
    }
  return mesh;
}

TetMesh MeshBlocks(const std::vector<Block>& blocks, const std::vector<Material>& materials,
                   const MeshSizes& sizes, const GradingFocus& focus) {
  CheckBlocks(blocks, materials, 3);
  const std::vector<int> thin = ThinAxes(blocks, materials, 3);
  std::array<std::vector<double>, 3> lines;
  for (int a = 0; a < 3; ++a)
    lines[a] = AxisLines(blocks, a, sizes, focus);
  const int n0 = static_cast<int>(lines[0].size()) - 1;
  const int n1 = static_cast<int>(lines[1].size()) - 1;
  const int n2 = static_cast<int>(lines[2].size()) - 1;

  std::vector<int> cell(static_cast<std::size_t>(n0) * n1 * n2);
  auto cellIndex = [&](int i, int j, int k) {
    return (static_cast<std::size_t>(k) * n1 + j) * n0 + i;
  };
  for (int k = 0; k < n2; ++k)
    for (int j = 0; j < n1; ++j)
      for (int i = 0; i < n0; ++i)
        cell[cellIndex(i, j, k)] =
            CellBlock(blocks,
                      {0.5 * (lines[0][i] + lines[0][i + 1]), 0.5 * (lines[1][j] + lines[1][j + 1]),
                       0.5 * (lines[2][k] + lines[2][k + 1])},
                      3);
  auto cellAt = [&](int i, int j, int k) {
    if (i < 0 || j < 0 || k < 0 || i >= n0 || j >= n1 || k >= n2) return -1;
    return cell[cellIndex(i, j, k)];
  };

  TetMesh mesh;
  mesh.materials = materials;
  auto nodeIndex = [&](int i, int j, int k) {
    return (static_cast<std::size_t>(k) * (n1 + 1) + j) * (n0 + 1) + i;
  };
  std::vector<int> index(static_cast<std::size_t>(n0 + 1) * (n1 + 1) * (n2 + 1), -1);
  std::vector<int> around(8);
  for (int k = 0; k <= n2; ++k)
    for (int j = 0; j <= n1; ++j)
      for (int i = 0; i <= n0; ++i) {
        for (int c = 0; c < 8; ++c)
          around[c] = cellAt(i - 1 + (c & 1), j - 1 + ((c >> 1) & 1), k - 1 + ((c >> 2) & 1));
        const NodeClass node = ClassifyNode(around, blocks, materials, thin);
        if (!node.used) continue;
        index[nodeIndex(i, j, k)] = static_cast<int>(mesh.points.size());
        mesh.points.push_back({lines[0][i], lines[1][j], lines[2][k]});
        mesh.kind.push_back(node.kind);
        mesh.onSurface.push_back(node.onSurface);
      }

  // Six tetrahedra per cube, one per monotone path from corner 0 to corner 7 (bit a = step
  // along axis a); all positively oriented and conforming between cells.
  static const int kPaths[6][3] = {{1, 2, 4}, {2, 4, 1}, {4, 1, 2},
                                   {1, 4, 2}, {4, 2, 1}, {2, 1, 4}};
  for (int k = 0; k < n2; ++k)
    for (int j = 0; j < n1; ++j)
      for (int i = 0; i < n0; ++i) {
        const int block = cellAt(i, j, k);
        if (block < 0) continue;
        int corner[8];
        for (int c = 0; c < 8; ++c)
          corner[c] = index[nodeIndex(i + (c & 1), j + ((c >> 1) & 1), k + ((c >> 2) & 1))];
        for (int p = 0; p < 6; ++p) {
          const int a = kPaths[p][0], b = a | kPaths[p][1];
          std::array<int, 4> tet{corner[0], corner[a], corner[b], corner[7]};
          if (p >= 3) std::swap(tet[1], tet[2]);  // odd permutations flip the orientation
          mesh.tetrahedra.push_back(tet);
          mesh.region.push_back(blocks[block].material);
        }
      }
  return mesh;
}

}  // namespace brindle::study
