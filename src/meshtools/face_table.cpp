#include "meshtools/face_table.h"

#include <utility>

namespace brindle {

FaceKey FaceKey::Sorted(int a, int b, int c) {
  if (a > b) std::swap(a, b);
  if (b > c) std::swap(b, c);
  if (a > b) std::swap(a, b);
  return FaceKey{{a, b, c}};
}

FaceTable::FaceTable(std::size_t expected_triangles)
    : pool_(expected_triangles * kNodeBytes + 1024), map_(&pool_) {}

void FaceTable::Add(const FaceKey& key, int tetrahedron) {
  auto it = map_.lower_bound(key);
  if (it == map_.end() || key < it->first) it = map_.emplace_hint(it, key, Entry{});
  Entry& entry = it->second;
  if (entry.count < kInline) {
    entry.inline_tets[entry.count] = tetrahedron;
  } else {
    const int link = static_cast<int>(overflow_.size());
    overflow_.push_back(OverflowLink{tetrahedron, kNone});
    if (entry.overflow_tail == kNone) {
      entry.overflow_head = link;
    } else {
      overflow_[entry.overflow_tail].next = link;
    }
    entry.overflow_tail = link;
  }
  ++entry.count;
}

void FaceTable::AddTetrahedron(const int c[4], int index) {
  Add(FaceKey::Sorted(c[1], c[2], c[3]), index);
  Add(FaceKey::Sorted(c[0], c[2], c[3]), index);
  Add(FaceKey::Sorted(c[0], c[1], c[3]), index);
  Add(FaceKey::Sorted(c[0], c[1], c[2]), index);
}

std::vector<int> FaceTable::Tetrahedra(const FaceKey& key) const {
  std::vector<int> tets;
  const auto it = map_.find(key);
  if (it == map_.end()) return tets;
  const Entry& entry = it->second;
  tets.reserve(entry.count);
  for (int i = 0; i < entry.count && i < kInline; ++i)
    tets.push_back(entry.inline_tets[i]);
  for (int link = entry.overflow_head; link != kNone; link = overflow_[link].next) {
    tets.push_back(overflow_[link].tetrahedron);
  }
  return tets;
}

}  // namespace brindle
