// Level-set discretisation of a tetrahedral mesh: the mesh is split along the zero level of
// a per-vertex field so that every output tetrahedron lies on one side (reference 2 for the
// positive side, 3 for the negative one), and the boundary triangles (outer faces and the
// interface) are rebuilt. MMG's improvement phase is deliberately not reproduced: input
// vertices are never moved, which keeps volumes and outer faces exact.
#include "levelset_3d.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <unordered_set>
#include <utility>
#include <vector>

#include "levelset_common.h"
#include "parameters.h"
#include "quality.h"

namespace mmgcompat {
namespace {

// Local vertices of the six edges, in MMG's order, and the outward faces of a positively
// oriented tetrahedron (face i is opposite vertex i).
constexpr int kEdge[6][2] = {{0, 1}, {0, 2}, {0, 3}, {1, 2}, {1, 3}, {2, 3}};
constexpr int kFace[4][3] = {{1, 2, 3}, {0, 3, 2}, {0, 1, 3}, {0, 2, 1}};

struct Child {
  MMG5_int v[4];
};

// Checks of the level-set structure made before anything is touched. Returns -1 when the
// run may go on, else the status to return.
int CheckLevelSet(const MMG5_Mesh& mesh, const MMG5_Sol* ls, const MMG5_Sol* met) {
  if (ls == nullptr) {
    std::fprintf(stderr, "\n  ## ERROR: MMG3D_mmg3dls: no level-set structure.\n");
    return MMG5_STRONGFAILURE;
  }
  if (ls->np != 0 && ls->np != mesh.np) return MMG5_STRONGFAILURE;  // silent, as in MMG
  if (ls->size != 1) {
    std::fprintf(stderr, "\n  ## ERROR: WRONG DATA TYPE.\n");
    return MMG5_STRONGFAILURE;
  }
  if (met != nullptr && met->np != 0 && met->np != mesh.np) {
    std::fprintf(stderr, "\n  ## WARNING: WRONG SOLUTION NUMBER. IGNORED\n");
    return MMG5_STRONGFAILURE;
  }
  return -1;
}

class LevelSetCut3d {
 public:
  LevelSetCut3d(MMG5_Mesh& mesh, std::vector<double> values)
      : mesh_(mesh), value_(std::move(values)) {}

  // Slivers touching or below the level are pushed entirely to the negative side, so that
  // no cut runs through an element too flat to be split.
  void PushSliversNegative(const std::vector<MMG5_int>& slivers) {
    for (MMG5_int k : slivers) {
      const Tetra& t = mesh_.tetra[k];
      const bool near_or_below =
          std::any_of(t.v, t.v + 4, [this](MMG5_int v) { return value_[v] < kSliverBand; });
      if (!near_or_below) continue;
      for (MMG5_int v : t.v)
        value_[v] = -kSliverBand;
    }
  }

  void SnapToLevel();
  void Cut();
  void BuildBoundary();
  void Finish(MMG5_Sol& ls);

 private:
  void SplitTetrahedron(MMG5_int k, const EdgePointMap& cuts);
  void AppendChild(MMG5_int parent, bool first, const MMG5_int* v);
  int Sign(MMG5_int v) const { return SignOf(value_[v]); }

  MMG5_Mesh& mesh_;
  std::vector<double> value_;        // shifted, scaled level-set value per vertex
  std::vector<MMG5_int> input_ref_;  // per output tetrahedron: reference of its input element
};

void LevelSetCut3d::SnapToLevel() {
  // Values within the snap band become exact zeros; remember on which side they were (an
  // exact zero counts as negative, so a zero that cannot stay goes to the negative side).
  std::vector<MMG5_int> snapped;
  std::vector<signed char> side;
  std::vector<int> slot(value_.size(), -1);
  for (MMG5_int k = 1; k <= mesh_.np; ++k) {
    if (!mesh_.point[k].used || !(std::fabs(value_[k]) < kSnapBand)) continue;
    side.push_back(std::fabs(value_[k]) < kExactZero || value_[k] < 0.0 ? -1 : 1);
    slot[k] = static_cast<int>(snapped.size());
    snapped.push_back(k);
    value_[k] = 0.0;
  }
  if (snapped.empty()) return;

  // Balls of the snapped vertices, and the order in which the elements first meet them.
  std::vector<int> ball_start(snapped.size() + 1, 0);
  std::vector<int> order;
  std::vector<char> seen(snapped.size(), 0);
  for (MMG5_int k = 1; k <= mesh_.ne; ++k) {
    for (MMG5_int v : mesh_.tetra[k].v) {
      const int s = slot[v];
      if (s < 0) continue;
      ++ball_start[s + 1];
      if (!seen[s]) {
        seen[s] = 1;
        order.push_back(s);
      }
    }
  }
  for (std::size_t s = 0; s < snapped.size(); ++s)
    ball_start[s + 1] += ball_start[s];
  std::vector<MMG5_int> ball(ball_start.back());
  std::vector<int> fill(ball_start.begin(), ball_start.end() - 1);
  for (MMG5_int k = 1; k <= mesh_.ne; ++k) {
    for (MMG5_int v : mesh_.tetra[k].v) {
      if (slot[v] >= 0) ball[fill[slot[v]]++] = k;
    }
  }

  bool warned_all_zero = false;
  std::vector<char> settled(snapped.size(), 0);
  std::vector<std::pair<MMG5_int, MMG5_int>> link;
  bool changed = true;
  while (changed) {
    changed = false;
    for (int s : order) {
      if (settled[s]) continue;
      const MMG5_int p = snapped[s];
      link.clear();
      bool all_zero_element = false;
      for (int b = ball_start[s]; b < ball_start[s + 1]; ++b) {
        const Tetra& t = mesh_.tetra[ball[b]];
        MMG5_int others[3];
        int n = 0;
        for (MMG5_int v : t.v) {
          if (v != p && n < 3) others[n++] = v;
        }
        if (n < 3) continue;  // an element repeating p has no link face
        if (Sign(others[0]) == 0 && Sign(others[1]) == 0 && Sign(others[2]) == 0) {
          all_zero_element = true;
        }
        link.emplace_back(others[0], others[1]);
        link.emplace_back(others[1], others[2]);
        link.emplace_back(others[0], others[2]);
      }
      if (all_zero_element && !warned_all_zero) {
        warned_all_zero = true;
        std::fprintf(stderr,
                     "\n  ## Warning: MMG3D_ismaniball:  at least 1 tetra with 4 null values.\n");
      }
      if (!all_zero_element && ZeroIsManifold(link, value_)) continue;
      value_[p] = side[s] < 0 ? -kRepairValue : kRepairValue;
      settled[s] = 1;
      changed = true;
    }
  }
}

void LevelSetCut3d::Cut() {
  const MMG5_int ne = mesh_.ne;
  // Only elements with both signs are cut; count them to size the tables once.
  std::vector<MMG5_int> mixed;
  std::size_t extra = 0;
  for (MMG5_int k = 1; k <= ne; ++k) {
    const Tetra& t = mesh_.tetra[k];
    int positive = 0, negative = 0;
    for (MMG5_int v : t.v) {
      const int s = Sign(v);
      positive += s > 0;
      negative += s < 0;
    }
    if (positive == 0 || negative == 0) continue;
    mixed.push_back(k);
    const int cuts = positive * negative;  // 1, 2, 3 or 4 cut edges
    extra += cuts == 4 ? 5 : static_cast<std::size_t>(cuts);
  }

  // One point per cut edge, numbered in the order the elements meet the edges.
  EdgePointMap cuts(4 * mixed.size());
  for (MMG5_int k : mixed) {
    const Tetra t = mesh_.tetra[k];
    for (const auto& e : kEdge) {
      const MMG5_int a = t.v[e[0]], b = t.v[e[1]];
      if (Sign(a) * Sign(b) >= 0 || cuts.Find(a, b) != 0) continue;
      Point p;
      CutPosition(mesh_.point[a].c, mesh_.point[b].c, value_[a], value_[b], p.c);
      p.used = true;
      mesh_.point.push_back(p);
      value_.push_back(0.0);
      cuts.Insert(a, b, ++mesh_.np);
    }
  }

  input_ref_.resize(static_cast<std::size_t>(ne) + 1);
  for (MMG5_int k = 1; k <= ne; ++k)
    input_ref_[k] = mesh_.tetra[k].ref;
  mesh_.tetra.reserve(mesh_.tetra.size() + extra);
  input_ref_.reserve(input_ref_.size() + extra);
  for (MMG5_int k : mixed)
    SplitTetrahedron(k, cuts);
  mesh_.ne = static_cast<MMG5_int>(mesh_.tetra.size() - 1);

  // Side of every element: any vertex above the level makes it positive.
  for (MMG5_int k = 1; k <= mesh_.ne; ++k) {
    Tetra& t = mesh_.tetra[k];
    const bool positive = std::any_of(t.v, t.v + 4, [this](MMG5_int v) { return Sign(v) > 0; });
    t.ref = positive ? MG_PLUS : MG_MINUS;
  }
}

void LevelSetCut3d::AppendChild(MMG5_int parent, bool first, const MMG5_int* v) {
  Tetra child;
  std::copy(v, v + 4, child.v);
  const double volume = SixVolume(mesh_.point[child.v[0]].c, mesh_.point[child.v[1]].c,
                                  mesh_.point[child.v[2]].c, mesh_.point[child.v[3]].c);
  if (volume < 0.0) std::swap(child.v[2], child.v[3]);
  child.ref = input_ref_[parent];
  if (first) {
    mesh_.tetra[parent] = child;
  } else {
    mesh_.tetra.push_back(child);
    input_ref_.push_back(input_ref_[parent]);
  }
}

// Splits element k by its cut edges. A quadrilateral that the cut leaves on a face is divided
// along the diagonal that starts at the face's lower-numbered uncut vertex; the rule depends
// on the face alone, so both elements sharing the face split it the same way.
void LevelSetCut3d::SplitTetrahedron(MMG5_int k, const EdgePointMap& cuts) {
  const Tetra t = mesh_.tetra[k];
  MMG5_int plus[4], minus[4], zero[4];
  int np = 0, nm = 0, nz = 0;
  for (MMG5_int v : t.v) {
    const int s = Sign(v);
    if (s > 0) plus[np++] = v;
    if (s < 0) minus[nm++] = v;
    if (s == 0) zero[nz++] = v;
  }
  auto cut = [&cuts](MMG5_int a, MMG5_int b) { return cuts.Find(a, b); };
  Child out[6];
  int n = 0;
  auto emit = [&out, &n](MMG5_int a, MMG5_int b, MMG5_int c, MMG5_int d) {
    out[n++] = Child{{a, b, c, d}};
  };
  // Pyramid with apex x over the quadrilateral q0 q1 q2 q3 (in cyclic order), split along
  // the diagonal q0-q2.
  auto pyramid = [&emit](MMG5_int x, MMG5_int q0, MMG5_int q1, MMG5_int q2, MMG5_int q3) {
    emit(x, q0, q1, q2);
    emit(x, q0, q2, q3);
  };

  if (np == 1 && nm == 1) {
    // Two vertices on the level: the cut point and the zero edge split the element in two.
    const MMG5_int c = cut(plus[0], minus[0]);
    emit(plus[0], c, zero[0], zero[1]);
    emit(minus[0], c, zero[0], zero[1]);
  } else if (nz == 1) {
    // One vertex on the level, the others 1 : 2.
    const bool lone_plus = np == 1;
    const MMG5_int lone = lone_plus ? plus[0] : minus[0];
    const MMG5_int* pair = lone_plus ? minus : plus;
    MMG5_int a = pair[0], b = pair[1];
    if (b < a) std::swap(a, b);
    const MMG5_int ca = cut(lone, a), cb = cut(lone, b);
    emit(lone, ca, cb, zero[0]);
    // Quadrilateral a b cb ca on the face opposite the zero vertex: diagonal a-cb.
    pyramid(zero[0], a, b, cb, ca);
  } else if (np == 1 || nm == 1) {
    // One vertex alone on its side: a corner element and a prism.
    const bool lone_plus = np == 1;
    const MMG5_int lone = lone_plus ? plus[0] : minus[0];
    MMG5_int base[3];
    std::copy(lone_plus ? minus : plus, (lone_plus ? minus : plus) + 3, base);
    std::sort(base, base + 3);
    MMG5_int top[3];
    for (int i = 0; i < 3; ++i)
      top[i] = cut(lone, base[i]);
    emit(lone, top[0], top[1], top[2]);
    // The lowest base vertex carries the diagonals of both its quadrilaterals, so it sees
    // the whole top triangle; the remaining pyramid has the quadrilateral base[1] base[2].
    emit(base[0], top[0], top[1], top[2]);
    pyramid(base[0], base[1], base[2], top[2], top[1]);
  } else {
    // Two against two: both sides are prisms sharing the interface quadrilateral.
    MMG5_int p0 = plus[0], p1 = plus[1], m0 = minus[0], m1 = minus[1];
    if (p1 < p0) std::swap(p0, p1);
    if (m1 < m0) std::swap(m0, m1);
    const MMG5_int c00 = cut(p0, m0), c01 = cut(p0, m1), c10 = cut(p1, m0), c11 = cut(p1, m1);
    // Interface quadrilateral c00 c01 c11 c10, divided along its shorter diagonal; it is
    // interior to the element, so only the two prisms have to agree.
    auto squared = [this](MMG5_int a, MMG5_int b) {
      const double* x = mesh_.point[a].c;
      const double* y = mesh_.point[b].c;
      return (x[0] - y[0]) * (x[0] - y[0]) + (x[1] - y[1]) * (x[1] - y[1]) +
             (x[2] - y[2]) * (x[2] - y[2]);
    };
    const bool first_diagonal = squared(c00, c11) <= squared(c01, c10);
    auto interface_pyramid = [&](MMG5_int apex) {
      if (first_diagonal) {
        pyramid(apex, c00, c01, c11, c10);
      } else {
        pyramid(apex, c01, c11, c10, c00);
      }
    };
    // Positive prism: p0 (lower number) carries both face diagonals towards p1's cut points.
    emit(p0, p1, c10, c11);
    interface_pyramid(p0);
    // Negative prism, likewise from m0.
    emit(m0, m1, c01, c11);
    interface_pyramid(m0);
  }
  for (int i = 0; i < n; ++i)
    AppendChild(k, i == 0, out[i].v);
}

void LevelSetCut3d::BuildBoundary() {
  // Every face is filed under its lowest vertex; a face met once is on the outer boundary,
  // a face met twice between elements of different sides is on the interface.
  struct FaceEntry {
    MMG5_int b, c;
    std::uint64_t element_face;  // 4 * element + local face
  };
  const std::size_t np = static_cast<std::size_t>(mesh_.np);
  std::vector<std::size_t> start(np + 2, 0);
  auto sorted_face = [this](MMG5_int k, int f, MMG5_int* s) {
    const Tetra& t = mesh_.tetra[k];
    s[0] = t.v[kFace[f][0]];
    s[1] = t.v[kFace[f][1]];
    s[2] = t.v[kFace[f][2]];
    if (s[0] > s[1]) std::swap(s[0], s[1]);
    if (s[1] > s[2]) std::swap(s[1], s[2]);
    if (s[0] > s[1]) std::swap(s[0], s[1]);
  };
  for (MMG5_int k = 1; k <= mesh_.ne; ++k) {
    for (int f = 0; f < 4; ++f) {
      MMG5_int s[3];
      sorted_face(k, f, s);
      ++start[s[0] + 1];
    }
  }
  for (std::size_t i = 1; i < start.size(); ++i)
    start[i] += start[i - 1];
  std::vector<FaceEntry> entries(start.back());
  std::vector<std::size_t> fill(start.begin(), start.end() - 1);
  for (MMG5_int k = 1; k <= mesh_.ne; ++k) {
    for (int f = 0; f < 4; ++f) {
      MMG5_int s[3];
      sorted_face(k, f, s);
      entries[fill[s[0]]++] = FaceEntry{s[1], s[2], 4 * static_cast<std::uint64_t>(k) + f};
    }
  }

  struct BoundaryFace {
    std::uint64_t element_face;
    bool interface;
  };
  std::vector<BoundaryFace> faces;
  for (std::size_t a = 1; a <= np; ++a) {
    auto first = entries.begin() + static_cast<std::ptrdiff_t>(start[a]);
    auto last = entries.begin() + static_cast<std::ptrdiff_t>(start[a + 1]);
    std::sort(first, last, [](const FaceEntry& x, const FaceEntry& y) {
      return x.b != y.b ? x.b < y.b : x.c < y.c;
    });
    for (auto run = first; run != last;) {
      auto end = run + 1;
      while (end != last && end->b == run->b && end->c == run->c)
        ++end;
      // Normally a face has one or two elements. A non-manifold face (three or more) is
      // paired up in order, as MMG's face hashing does, and a leftover counts as boundary.
      for (auto pair = run; pair != end; pair += 2) {
        if (pair + 1 == end) {
          faces.push_back(BoundaryFace{pair->element_face, false});
          break;
        }
        const Tetra& t0 = mesh_.tetra[pair->element_face / 4];
        const Tetra& t1 = mesh_.tetra[(pair + 1)->element_face / 4];
        if (t0.ref != t1.ref) {
          // Seen from the negative element, so the normal points into the positive side.
          const auto& negative = t0.ref == MG_MINUS ? *pair : *(pair + 1);
          faces.push_back(BoundaryFace{negative.element_face, true});
        }
      }
      run = end;
    }
  }
  std::sort(faces.begin(), faces.end(), [](const BoundaryFace& x, const BoundaryFace& y) {
    return x.element_face < y.element_face;
  });

  const MMG5_int iso_ref = IsoReference(mesh_);
  mesh_.tria.assign(faces.size() + 1, Tria());
  std::unordered_set<std::uint64_t> interface_edges;
  auto edge_key = [](MMG5_int a, MMG5_int b) {
    if (a > b) std::swap(a, b);
    return (static_cast<std::uint64_t>(a) << 32) | static_cast<std::uint32_t>(b);
  };
  for (std::size_t i = 0; i < faces.size(); ++i) {
    const MMG5_int k = static_cast<MMG5_int>(faces[i].element_face / 4);
    const int f = static_cast<int>(faces[i].element_face % 4);
    Tria& tri = mesh_.tria[i + 1];
    for (int j = 0; j < 3; ++j)
      tri.v[j] = mesh_.tetra[k].v[kFace[f][j]];
    tri.ref = faces[i].interface ? iso_ref : input_ref_[k];
    if (faces[i].interface) {
      for (int j = 0; j < 3; ++j)
        interface_edges.insert(edge_key(tri.v[j], tri.v[(j + 1) % 3]));
    }
  }
  mesh_.nt = static_cast<MMG5_int>(faces.size());

  // Special edges: where the interface meets the outer boundary.
  std::unordered_set<std::uint64_t> rim;
  for (std::size_t i = 0; i < faces.size(); ++i) {
    if (faces[i].interface) continue;
    const Tria& tri = mesh_.tria[i + 1];
    for (int j = 0; j < 3; ++j) {
      const std::uint64_t key = edge_key(tri.v[j], tri.v[(j + 1) % 3]);
      if (interface_edges.count(key) != 0) rim.insert(key);
    }
  }
  mesh_.na = static_cast<MMG5_int>(rim.size());
}

void LevelSetCut3d::Finish(MMG5_Sol& ls) {
  std::vector<char> used(static_cast<std::size_t>(mesh_.np) + 1, 0);
  for (MMG5_int k = 1; k <= mesh_.ne; ++k) {
    for (MMG5_int v : mesh_.tetra[k].v)
      used[v] = 1;
  }
  const std::vector<MMG5_int> renumber = CompactVertices(mesh_, used);
  bool moved = false;
  for (std::size_t k = 1; k < renumber.size() && !moved; ++k) {
    moved = used[k] && renumber[k] != static_cast<MMG5_int>(k);
  }
  if (moved) {
    for (MMG5_int k = 1; k <= mesh_.ne; ++k) {
      for (MMG5_int& v : mesh_.tetra[k].v)
        v = renumber[v];
    }
    for (MMG5_int k = 1; k <= mesh_.nt; ++k) {
      for (MMG5_int& v : mesh_.tria[k].v)
        v = renumber[v];
    }
  }
  // The level-set values are consumed by the discretisation, as in MMG.
  ls.m.clear();
  ls.m.shrink_to_fit();
  mesh_.npi = mesh_.np;
  mesh_.nei = mesh_.ne;
  mesh_.nti = mesh_.nt;
  mesh_.nai = mesh_.na;
}

}  // namespace

int DiscretizeLevelSet3d(MMG5_Mesh& mesh, MMG5_Sol* ls, MMG5_Sol* met) {
  const int refused = CheckLevelSet(mesh, ls, met);
  if (refused >= 0) return refused;
  if (mesh.point.size() != static_cast<std::size_t>(mesh.np) + 1 ||
      mesh.tetra.size() != static_cast<std::size_t>(mesh.ne) + 1) {
    std::fprintf(stderr, "\n  ## Error: MMG3D_mmg3dls: mesh not sized.\n");
    return MMG5_STRONGFAILURE;
  }

  ScaleFrame frame;
  if (!ComputeScaleFrame(mesh, &frame)) return MMG5_STRONGFAILURE;

  // Input quality: a worst element below 1e-30 stops the run with the mesh left scaled.
  WorstElement worst;
  std::vector<MMG5_int> slivers;
  for (MMG5_int k = 1; k <= mesh.ne; ++k) {
    const Tetra& t = mesh.tetra[k];
    const double q = UnscaledTetQuality(mesh.point[t.v[0]].c, mesh.point[t.v[1]].c,
                                        mesh.point[t.v[2]].c, mesh.point[t.v[3]].c);
    worst.Consider(q, k);
    if (q < kSliverQuality) slivers.push_back(k);
  }
  if (TooBadQuality(worst, kTetQualityScale)) {
    ApplyScaleFrame(mesh, frame);
    return MMG5_LOWFAILURE;
  }
  if (MissingLevelSetValues(mesh, *ls)) {
    ApplyScaleFrame(mesh, frame);
    return MMG5_STRONGFAILURE;
  }
  ClearIsoReferences(mesh);

  LevelSetCut3d cut(mesh, ShiftedScaledValues(mesh, *ls, frame));
  cut.PushSliversNegative(slivers);
  cut.SnapToLevel();
  cut.Cut();
  cut.BuildBoundary();
  cut.Finish(*ls);
  return MMG5_SUCCESS;
}

}  // namespace mmgcompat
