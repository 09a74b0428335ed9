#include "cutting/interface_extraction.h"

#include <algorithm>
#include <cstring>
#include <unordered_map>

#include "cutting/level_set_cut.h"

namespace brindle {

std::uint64_t TriangleFaceKey(int a, int b, int c) {
  if (a > b) std::swap(a, b);
  if (b > c) std::swap(b, c);
  if (a > b) std::swap(a, b);
  const int sorted[3] = {a, b, c};
  std::uint64_t hash = 0xcbf29ce484222325ull;
  for (int index : sorted) {
    const auto value = static_cast<std::uint32_t>(index);
    for (int byte = 0; byte < 4; ++byte) {
      hash ^= (value >> (8 * byte)) & 0xffu;
      hash *= 0x100000001b3ull;
    }
  }
  return hash;
}

namespace {

constexpr unsigned char kOnPositiveSide = 1;
constexpr unsigned char kOnNegativeSide = 2;

struct BoundaryTriangle {
  int a, b, c;
  std::uint64_t key;
};

}  // namespace

void ExtractInterface(MMG5_pMesh mmgMesh, int triangleCount, const ON_Mesh& result,
                      const std::vector<int>& references, ON_Mesh& interfaceMesh) {
  // Read the boundary triangles first and mark only their keys while scanning the
  // tetrahedra: the same answer as collecting every face key of both sides, with a lookup
  // table the size of the boundary instead of four entries per tetrahedron.
  std::vector<BoundaryTriangle> triangles(static_cast<std::size_t>(triangleCount));
  std::unordered_map<std::uint64_t, unsigned char> sides;
  sides.reserve(triangles.size());
  for (BoundaryTriangle& t : triangles) {
    MMG5_int a = 0, b = 0, c = 0, ref = 0;
    MMG3D_Get_triangle(mmgMesh, &a, &b, &c, &ref, nullptr);
    t = BoundaryTriangle{a - 1, b - 1, c - 1, TriangleFaceKey(a - 1, b - 1, c - 1)};
    sides.emplace(t.key, 0);
  }

  const int tetrahedronCount = result.FaceCount();
  for (int i = 0; i < tetrahedronCount; ++i) {
    unsigned char side = 0;
    if (references[i] == kPositiveSideReference) side = kOnPositiveSide;
    if (references[i] == kNegativeSideReference) side = kOnNegativeSide;
    if (side == 0) continue;
    const int* v = result.m_F[i].vi;
    const std::uint64_t keys[4] = {
        TriangleFaceKey(v[0], v[1], v[2]), TriangleFaceKey(v[0], v[1], v[3]),
        TriangleFaceKey(v[0], v[2], v[3]), TriangleFaceKey(v[1], v[2], v[3])};
    for (std::uint64_t key : keys) {
      const auto found = sides.find(key);
      if (found != sides.end()) found->second |= side;
    }
  }

  interfaceMesh.m_dV = result.m_dV;
  interfaceMesh.m_C = result.m_C;
  interfaceMesh.UpdateSinglePrecisionVertices();
  interfaceMesh.m_F.Reserve(triangles.size());
  if (interfaceMesh.m_F.Capacity() < triangleCount) throw std::bad_alloc();
  interfaceMesh.m_F.SetCount(triangleCount);
  for (int i = 0; i < triangleCount; ++i) {
    const BoundaryTriangle& t = triangles[i];
    ON_MeshFace& face = interfaceMesh.m_F[i];
    if (sides[t.key] == (kOnPositiveSide | kOnNegativeSide)) {
      face.vi[0] = t.a;
      face.vi[1] = t.b;
      face.vi[2] = t.c;
      face.vi[3] = t.c;
    } else {
      face.vi[0] = face.vi[1] = face.vi[2] = face.vi[3] = -1;
    }
  }
  interfaceMesh.Cleanup(true, true, true);
}

}  // namespace brindle
