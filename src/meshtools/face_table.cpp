#include "meshtools/face_table.h"

#include <utility>

namespace brindle {

FaceKey FaceKey::Sorted(int a, int b, int c) {
  if (a > b) std::swap(a, b);
  if (b > c) std::swap(b, c);
  if (a > b) std::swap(a, b);
  return FaceKey{{a, b, c}};
}

FaceTable::FaceTable(std::size_t expectedTriangles)
    : pool_(expectedTriangles * kNodeBytes + 1024), map_(&pool_) {}

void FaceTable::Add(const FaceKey& key) {
  auto it = map_.lower_bound(key);
  if (it == map_.end() || key < it->first) it = map_.emplace_hint(it, key, 0);
  ++it->second;
}

void FaceTable::AddTetrahedron(const int c[4]) {
  Add(FaceKey::Sorted(c[1], c[2], c[3]));
  Add(FaceKey::Sorted(c[0], c[2], c[3]));
  Add(FaceKey::Sorted(c[0], c[1], c[3]));
  Add(FaceKey::Sorted(c[0], c[1], c[2]));
}

}  // namespace brindle
