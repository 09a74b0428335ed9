// The table of the triangles of a tetrahedral mesh: for each distinct triangle, keyed by its
// three vertex indices in ascending order, the tetrahedra that have it, in insertion order.
#ifndef BRINDLE_MESHTOOLS_FACE_TABLE_H
#define BRINDLE_MESHTOOLS_FACE_TABLE_H

#include <cstddef>
#include <map>
#include <memory_resource>
#include <vector>

namespace brindle {

// Three vertex indices sorted ascending, ordered lexicographically as signed ints.
struct FaceKey {
  int v[3];

  static FaceKey Sorted(int a, int b, int c);
  friend bool operator<(const FaceKey& l, const FaceKey& r) {
    if (l.v[0] != r.v[0]) return l.v[0] < r.v[0];
    if (l.v[1] != r.v[1]) return l.v[1] < r.v[1];
    return l.v[2] < r.v[2];
  }
  friend bool operator==(const FaceKey& l, const FaceKey& r) {
    return l.v[0] == r.v[0] && l.v[1] == r.v[1] && l.v[2] == r.v[2];
  }
};

// A balanced search tree keyed by FaceKey, so that walking it gives the triangles in ascending
// key order. Almost every triangle belongs to one or two tetrahedra, so each entry keeps the
// first two indices inline and chains the rare further ones through a shared overflow array;
// tree nodes come from a pool that is released in one piece with the table.
class FaceTable {
 public:
  // `expected_triangles` sizes the node pool; the table grows beyond it if needed.
  explicit FaceTable(std::size_t expected_triangles);
  FaceTable(const FaceTable&) = delete;
  FaceTable& operator=(const FaceTable&) = delete;

  // Appends `tetrahedron` to the list of `key`, creating the entry when it is new.
  void Add(const FaceKey& key, int tetrahedron);

  // Adds the four triangles of tetrahedron `index` with corners c[0..3], opposite corner 0, 1,
  // 2 and 3 in that order.
  void AddTetrahedron(const int c[4], int index);

  std::size_t TriangleCount() const { return map_.size(); }

  // Calls visit(key, number of tetrahedra) for every triangle in ascending key order.
  template <class Visit>
  void ForEach(Visit&& visit) const {
    for (const auto& [key, entry] : map_)
      visit(key, entry.count);
  }

  // The tetrahedra of `key` in insertion order; empty when the key is absent.
  std::vector<int> Tetrahedra(const FaceKey& key) const;

 private:
  static constexpr int kInline = 2;
  static constexpr int kNone = -1;

  struct Entry {
    int count = 0;
    int inline_tets[kInline];
    int overflow_head = kNone;  // first link in overflow_, for the third tetrahedron on
    int overflow_tail = kNone;
  };
  struct OverflowLink {
    int tetrahedron;
    int next;
  };

  using Map = std::pmr::map<FaceKey, Entry>;
  // Bytes of one tree node: the stored pair plus the colour, parent and two child links.
  static constexpr std::size_t kNodeBytes = sizeof(Map::value_type) + 4 * sizeof(void*);

  std::pmr::monotonic_buffer_resource pool_;  // declared before map_, which allocates from it
  Map map_;
  std::vector<OverflowLink> overflow_;
};

}  // namespace brindle

#endif
