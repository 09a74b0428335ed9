#include "levelset_common.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>

#include "parameters.h"

namespace mmgcompat {

bool ComputeScaleFrame(const MMG5_Mesh& mesh, ScaleFrame* frame) {
  double low[3], high[3];
  for (int i = 0; i < 3; ++i) {
    low[i] = std::numeric_limits<double>::max();
    high[i] = -std::numeric_limits<double>::max();
  }
  for (MMG5_int k = 1; k <= mesh.np; ++k) {
    const Point& p = mesh.point[k];
    if (!p.used) continue;
    for (int i = 0; i < 3; ++i) {
      low[i] = std::min(low[i], p.c[i]);
      high[i] = std::max(high[i], p.c[i]);
    }
  }
  frame->extent = 0.0;
  for (int i = 0; i < 3; ++i) {
    frame->origin[i] = low[i];
    frame->extent = std::max(frame->extent, high[i] - low[i]);
  }
  // No used vertex leaves the extent at its start value; NaN coordinates fail the test too.
  if (!(frame->extent >= kMinExtent)) {
    std::fprintf(stderr,
                 "\n  ## Error: MMG5_scaleMesh: unable to scale mesh: Check that your mesh"
                 " contains non-zero points and valid elements.\n");
    return false;
  }
  return true;
}

void ApplyScaleFrame(MMG5_Mesh& mesh, const ScaleFrame& frame) {
  const double inverse = 1.0 / frame.extent;
  for (MMG5_int k = 1; k <= mesh.np; ++k) {
    Point& p = mesh.point[k];
    if (!p.used) continue;
    for (int i = 0; i < 3; ++i)
      p.c[i] = (p.c[i] - frame.origin[i]) * inverse;
  }
}

std::vector<double> ShiftedScaledValues(const MMG5_Mesh& mesh, const MMG5_Sol& ls,
                                        const ScaleFrame& frame) {
  const double inverse = 1.0 / frame.extent;
  const double level = LevelValue(mesh) * inverse;
  std::vector<double> values(static_cast<std::size_t>(mesh.np) + 1, 0.0);
  for (MMG5_int k = 1; k <= mesh.np; ++k) {
    if (mesh.point[k].used) values[k] = ls.m[k] * inverse - level;
  }
  return values;
}

bool ZeroIsManifold(const std::vector<std::pair<MMG5_int, MMG5_int>>& link_edges,
                    const std::vector<double>& values) {
  // Balls are small: a linear list of the neighbours and a union-find over it.
  std::vector<MMG5_int> ids;
  ids.reserve(2 * link_edges.size());
  for (const auto& e : link_edges) {
    ids.push_back(e.first);
    ids.push_back(e.second);
  }
  std::sort(ids.begin(), ids.end());
  ids.erase(std::unique(ids.begin(), ids.end()), ids.end());
  auto local = [&ids](MMG5_int v) {
    return static_cast<int>(std::lower_bound(ids.begin(), ids.end(), v) - ids.begin());
  };
  std::vector<int> parent(ids.size());
  for (std::size_t i = 0; i < parent.size(); ++i)
    parent[i] = static_cast<int>(i);
  auto root = [&parent](int i) {
    while (parent[i] != i)
      i = parent[i] = parent[parent[i]];
    return i;
  };
  for (const auto& e : link_edges) {
    const int sa = SignOf(values[e.first]);
    if (sa == 0 || sa != SignOf(values[e.second])) continue;
    parent[root(local(e.first))] = root(local(e.second));
  }
  int positive_pieces = 0, negative_pieces = 0;
  for (std::size_t i = 0; i < ids.size(); ++i) {
    if (root(static_cast<int>(i)) != static_cast<int>(i)) continue;
    const int sign = SignOf(values[ids[i]]);
    if (sign > 0) ++positive_pieces;
    if (sign < 0) ++negative_pieces;
  }
  return positive_pieces == 1 && negative_pieces == 1;
}

EdgePointMap::EdgePointMap(std::size_t expected_edges) {
  std::size_t capacity = 16;
  while (capacity < 2 * expected_edges)
    capacity *= 2;
  keys_.assign(capacity, 0);
  points_.assign(capacity, 0);
  mask_ = capacity - 1;
}

std::uint64_t EdgePointMap::Key(MMG5_int a, MMG5_int b) {
  if (a > b) std::swap(a, b);
  return (static_cast<std::uint64_t>(static_cast<std::uint32_t>(a)) << 32) |
         static_cast<std::uint32_t>(b);
}

std::size_t EdgePointMap::Slot(std::uint64_t key) const {
  // 64-bit mix (from splitmix64) so that neighbouring edges spread over the table.
  key ^= key >> 30;
  key *= 0xbf58476d1ce4e5b9ULL;
  key ^= key >> 27;
  key *= 0x94d049bb133111ebULL;
  key ^= key >> 31;
  return static_cast<std::size_t>(key) & mask_;
}

MMG5_int EdgePointMap::Find(MMG5_int a, MMG5_int b) const {
  const std::uint64_t key = Key(a, b);
  for (std::size_t s = Slot(key);; s = (s + 1) & mask_) {
    if (keys_[s] == key) return points_[s];
    if (keys_[s] == 0) return 0;
  }
}

MMG5_int EdgePointMap::Insert(MMG5_int a, MMG5_int b, MMG5_int point) {
  if (2 * (size_ + 1) > keys_.size()) Grow();
  const std::uint64_t key = Key(a, b);  // never 0: vertex numbers start at 1
  for (std::size_t s = Slot(key);; s = (s + 1) & mask_) {
    if (keys_[s] == key) return points_[s];
    if (keys_[s] == 0) {
      keys_[s] = key;
      points_[s] = point;
      ++size_;
      return point;
    }
  }
}

void EdgePointMap::Grow() {
  std::vector<std::uint64_t> old_keys;
  std::vector<MMG5_int> old_points;
  old_keys.swap(keys_);
  old_points.swap(points_);
  keys_.assign(2 * old_keys.size(), 0);
  points_.assign(2 * old_keys.size(), 0);
  mask_ = keys_.size() - 1;
  for (std::size_t i = 0; i < old_keys.size(); ++i) {
    if (old_keys[i] == 0) continue;
    for (std::size_t s = Slot(old_keys[i]);; s = (s + 1) & mask_) {
      if (keys_[s] == 0) {
        keys_[s] = old_keys[i];
        points_[s] = old_points[i];
        break;
      }
    }
  }
}

void CutPosition(const double* p0, const double* p1, double v0, double v1, double* out) {
  double s = v0 / (v0 - v1);
  if (std::isnan(s)) s = 0.5;  // both ends infinite: no better guess than the midpoint
  s = std::max(std::min(s, 1.0 - kCutClamp), kCutClamp);
  for (int i = 0; i < 3; ++i)
    out[i] = p0[i] + s * (p1[i] - p0[i]);
}

std::vector<MMG5_int> CompactVertices(MMG5_Mesh& mesh, const std::vector<char>& used) {
  std::vector<MMG5_int> renumber(static_cast<std::size_t>(mesh.np) + 1, 0);
  MMG5_int last = mesh.np;
  for (MMG5_int k = 1; k <= last; ++k) {
    if (!used[k]) {
      while (last > k && !used[last])
        --last;
      if (last == k) {
        --last;
        break;
      }
      mesh.point[k] = mesh.point[last];
      renumber[last] = k;
      --last;
    } else {
      renumber[k] = k;
    }
  }
  for (MMG5_int k = 1; k <= last; ++k) {
    mesh.point[k].ref = std::abs(mesh.point[k].ref);
    mesh.point[k].used = true;
  }
  mesh.point.resize(static_cast<std::size_t>(last) + 1);
  mesh.np = last;
  return renumber;
}

bool TooBadQuality(const WorstElement& worst, double scale) {
  if (!(worst.quality * scale < 1e-30)) return false;
  std::fprintf(stderr,
               "\n  ## Error: MMG5_minQualCheck: too bad quality for the worst element:"
               " (elt %d -> %15e)\n",
               static_cast<int>(worst.number), worst.quality);
  return true;
}

bool MissingLevelSetValues(const MMG5_Mesh& mesh, const MMG5_Sol& ls) {
  if (ls.np != 0 && ls.m.size() >= static_cast<std::size_t>(mesh.np) + 1) return false;
  std::fprintf(stderr, "\n  ## ERROR: A VALID SOLUTION FILE IS NEEDED \n");
  return true;
}

void ClearIsoReferences(MMG5_Mesh& mesh) {
  const MMG5_int isoRef = IsoReference(mesh);
  for (MMG5_int k = 1; k <= mesh.np; ++k) {
    if (mesh.point[k].ref == isoRef) mesh.point[k].ref = 0;
  }
}

}  // namespace mmgcompat
