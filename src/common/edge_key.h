// One 64-bit key per undirected mesh edge, for the hash maps that give each edge one record
// (the clip's new vertices, the cotangent formulation's edge weights).
#ifndef BRINDLE_COMMON_EDGE_KEY_H
#define BRINDLE_COMMON_EDGE_KEY_H

#include <cstdint>

namespace brindle {

// The smaller vertex index in the upper 32 bits, the larger in the lower: (p, q) and (q, p)
// give the same key, and no two edges of non-negative int indices share one.
inline std::uint64_t EdgeKey(int p, int q) {
  const auto low = static_cast<std::uint32_t>(p < q ? p : q);
  const auto high = static_cast<std::uint32_t>(p < q ? q : p);
  return (static_cast<std::uint64_t>(low) << 32) | high;
}

}  // namespace brindle

#endif
