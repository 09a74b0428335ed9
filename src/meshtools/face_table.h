// The table of the triangles of a tetrahedral mesh: for each distinct triangle, keyed by its
// three vertex indices in ascending order, the number of tetrahedra that have it.
#ifndef BRINDLE_MESHTOOLS_FACE_TABLE_H
#define BRINDLE_MESHTOOLS_FACE_TABLE_H

#include <cstddef>
#include <map>
#include <memory_resource>

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
};

// A balanced search tree keyed by FaceKey, so that walking it gives the triangles in ascending
// key order, with the number of tetrahedra that have each triangle. Tree nodes come from a pool
// that is released in one piece with the table.
class FaceTable {
 public:
  // `expectedTriangles` sizes the node pool; the table grows beyond it if needed.
  explicit FaceTable(std::size_t expectedTriangles);
  FaceTable(const FaceTable&) = delete;
  FaceTable& operator=(const FaceTable&) = delete;

  // Counts one more tetrahedron for `key`, creating the entry when it is new.
  void Add(const FaceKey& key);

  // Adds the four triangles of the tetrahedron with corners c[0..3].
  void AddTetrahedron(const int c[4]);

  // Calls visit(key, number of tetrahedra) for every triangle in ascending key order.
  template <class Visit>
  void ForEach(Visit&& visit) const {
    for (const auto& [key, count] : map_)
      visit(key, count);
  }

 private:
  using Map = std::pmr::map<FaceKey, int>;
  // Bytes of one tree node: the stored pair plus the colour, parent and two child links.
  static constexpr std::size_t kNodeBytes = sizeof(Map::value_type) + 4 * sizeof(void*);

  std::pmr::monotonic_buffer_resource pool_;  // declared before map_, which allocates from it
  Map map_;
};

}  // namespace brindle

#endif
