// Level-set discretisation of a triangle surface: triangles are split along the zero level
// of a per-vertex field (reference 2 on the positive side, 3 on the negative one) and the
// interface edges mark their vertices with the interface reference. As in the volume driver,
// vertices are never moved afterwards.
#include "levelset_s.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <utility>
#include <vector>

#include "levelset_common.h"
#include "parameters.h"
#include "quality.h"

namespace mmgcompat {
namespace {

int CheckLevelSet(const MMG5_Mesh& mesh, const MMG5_Sol* ls, const MMG5_Sol* met) {
  if (ls == nullptr) {
    std::fprintf(stderr, "\n  ## ERROR: MMGS_mmgsls: no level-set structure.\n");
    return MMG5_STRONGFAILURE;
  }
  if ((ls->np != 0 && ls->np != mesh.np) ||
      (met != nullptr && met->np != 0 && met->np != mesh.np)) {
    std::fprintf(stderr, "\n  ## WARNING: WRONG SOLUTION NUMBER. IGNORED\n");
    return MMG5_STRONGFAILURE;
  }
  if (ls->size != 1) {
    std::fprintf(stderr, "\n  ## ERROR: WRONG DATA TYPE.\n");
    return MMG5_STRONGFAILURE;
  }
  return -1;
}

std::uint64_t EdgeKey(MMG5_int a, MMG5_int b) {
  if (a > b) std::swap(a, b);
  return (static_cast<std::uint64_t>(a) << 32) | static_cast<std::uint32_t>(b);
}

class LevelSetCutSurface {
 public:
  LevelSetCutSurface(MMG5_Mesh& mesh, std::vector<double> values)
      : mesh_(mesh), value_(std::move(values)) {}

  void SnapToLevel();
  void Cut();
  void SetReferences();
  void Finish(MMG5_Sol& ls);

 private:
  bool IsZero(MMG5_int v) const { return std::fabs(value_[v]) < kSnapBand; }
  int Sign(MMG5_int v) const { return SignOf(value_[v]); }
  void RepairSnapped();
  void LiftIsolatedZeros();
  void SplitTriangle(MMG5_int k, const EdgePointMap& cuts);
  void AppendChild(MMG5_int parent, bool first, MMG5_int a, MMG5_int b, MMG5_int c);

  MMG5_Mesh& mesh_;
  std::vector<double> value_;
  // Triangle fans of the snapped vertices (CSR) and their original values.
  std::vector<MMG5_int> snapped_;
  std::vector<double> original_;
  std::vector<int> slot_;
  std::vector<int> fan_start_;
  std::vector<MMG5_int> fan_;
};

void LevelSetCutSurface::SnapToLevel() {
  slot_.assign(value_.size(), -1);
  for (MMG5_int k = 1; k <= mesh_.np; ++k) {
    if (!mesh_.point[k].used || !IsZero(k)) continue;
    slot_[k] = static_cast<int>(snapped_.size());
    snapped_.push_back(k);
    original_.push_back(value_[k]);
    value_[k] = 0.0;
  }
  if (snapped_.empty()) return;
  fan_start_.assign(snapped_.size() + 1, 0);
  for (MMG5_int k = 1; k <= mesh_.nt; ++k) {
    for (MMG5_int v : mesh_.tria[k].v) {
      if (slot_[v] >= 0) ++fan_start_[slot_[v] + 1];
    }
  }
  for (std::size_t s = 0; s < snapped_.size(); ++s)
    fan_start_[s + 1] += fan_start_[s];
  fan_.resize(fan_start_.back());
  std::vector<int> fill(fan_start_.begin(), fan_start_.end() - 1);
  for (MMG5_int k = 1; k <= mesh_.nt; ++k) {
    for (MMG5_int v : mesh_.tria[k].v) {
      if (slot_[v] >= 0) fan_[fill[slot_[v]]++] = k;
    }
  }
  RepairSnapped();
  LiftIsolatedZeros();
}

// A snapped vertex with both signs around it stays on the level only if the level set then
// crosses its fan once (one positive and one negative piece, no triangle left with three
// zeros); otherwise it goes back to its original side (an exact zero counts as positive).
void LevelSetCutSurface::RepairSnapped() {
  std::vector<char> checked(snapped_.size(), 0);
  std::vector<std::pair<MMG5_int, MMG5_int>> link;
  for (MMG5_int k = 1; k <= mesh_.nt; ++k) {
    for (int i = 0; i < 3; ++i) {
      const MMG5_int p = mesh_.tria[k].v[i];
      const int s = slot_[p];
      if (s < 0 || checked[s]) continue;
      // A vertex is examined at the first triangle (in storage order) where the level set
      // leaves it: the opposite edge ends on a non-zero value and starts on a zero or on the
      // other sign. The order matters because every repair changes the later checks.
      const double v1 = value_[mesh_.tria[k].v[(i + 1) % 3]];
      const double v2 = value_[mesh_.tria[k].v[(i + 2) % 3]];
      if (std::fabs(v2) < kSnapBand || v1 * v2 > 0.0) continue;
      checked[s] = 1;
      link.clear();
      bool positive = false, negative = false, flat = false;
      for (int f = fan_start_[s]; f < fan_start_[s + 1]; ++f) {
        const Tria& t = mesh_.tria[fan_[f]];
        MMG5_int others[2];
        int n = 0;
        for (MMG5_int v : t.v) {
          if (v != p && n < 2) others[n++] = v;
        }
        if (n < 2) continue;  // degenerate triangle repeating p
        link.emplace_back(others[0], others[1]);
        for (MMG5_int v : others) {
          positive = positive || Sign(v) > 0;
          negative = negative || Sign(v) < 0;
        }
        flat = flat || (IsZero(others[0]) && IsZero(others[1]));
      }
      if (!positive || !negative) continue;  // left to the isolated-zero pass
      if (!flat && ZeroIsManifold(link, value_)) continue;
      value_[p] = original_[s] < 0.0 ? -kRepairValue : kRepairValue;
    }
  }
}

// A zero whose neighbours all lie on one side is moved to that side: it would only touch
// the level, not cross it.
void LevelSetCutSurface::LiftIsolatedZeros() {
  for (MMG5_int k = 1; k <= mesh_.nt; ++k) {
    for (MMG5_int p : mesh_.tria[k].v) {
      const int s = slot_[p];
      if (s < 0 || !IsZero(p)) continue;
      bool positive = false, negative = false;
      for (int f = fan_start_[s]; f < fan_start_[s + 1]; ++f) {
        for (MMG5_int v : mesh_.tria[fan_[f]].v) {
          if (v == p) continue;
          positive = positive || value_[v] >= kSnapBand;
          negative = negative || value_[v] <= -kSnapBand;
        }
      }
      if (positive && !negative) value_[p] = kRepairValue;
      if (negative && !positive) value_[p] = -kRepairValue;
    }
  }
}

void LevelSetCutSurface::Cut() {
  const MMG5_int nt = mesh_.nt;
  std::vector<MMG5_int> mixed;
  for (MMG5_int k = 1; k <= nt; ++k) {
    const Tria& t = mesh_.tria[k];
    bool positive = false, negative = false;
    for (MMG5_int v : t.v) {
      positive = positive || Sign(v) > 0;
      negative = negative || Sign(v) < 0;
    }
    if (positive && negative) mixed.push_back(k);
  }
  EdgePointMap cuts(2 * mixed.size());
  for (MMG5_int k : mixed) {
    const Tria t = mesh_.tria[k];
    for (int i = 0; i < 3; ++i) {
      const MMG5_int a = t.v[i], b = t.v[(i + 1) % 3];
      if (Sign(a) * Sign(b) >= 0 || cuts.Find(a, b) != 0) continue;
      Point p;
      CutPosition(mesh_.point[a].c, mesh_.point[b].c, value_[a], value_[b], p.c);
      p.used = true;
      mesh_.point.push_back(p);
      value_.push_back(0.0);
      cuts.Insert(a, b, ++mesh_.np);
    }
  }
  mesh_.tria.reserve(mesh_.tria.size() + 2 * mixed.size());
  for (MMG5_int k : mixed)
    SplitTriangle(k, cuts);
  mesh_.nt = static_cast<MMG5_int>(mesh_.tria.size() - 1);
}

void LevelSetCutSurface::AppendChild(MMG5_int parent, bool first, MMG5_int a, MMG5_int b,
                                     MMG5_int c) {
  Tria child;
  child.v[0] = a;
  child.v[1] = b;
  child.v[2] = c;
  if (first) {
    mesh_.tria[parent] = child;
  } else {
    mesh_.tria.push_back(child);
  }
}

// Children keep the cyclic order of their parent, so the surface keeps its orientation. The
// quadrilateral left by two cut edges is divided along the diagonal from its lower-numbered
// uncut vertex, a rule that neighbours sharing the edge cannot disagree on.
void LevelSetCutSurface::SplitTriangle(MMG5_int k, const EdgePointMap& cuts) {
  const Tria t = mesh_.tria[k];
  int zero = -1;
  for (int i = 0; i < 3; ++i) {
    if (Sign(t.v[i]) == 0) zero = i;
  }
  if (zero >= 0) {
    // The zero vertex and one cut point on the opposite edge.
    const MMG5_int z = t.v[zero], x = t.v[(zero + 1) % 3], y = t.v[(zero + 2) % 3];
    const MMG5_int c = cuts.Find(x, y);
    AppendChild(k, true, z, x, c);
    AppendChild(k, false, z, c, y);
    return;
  }
  // One vertex alone on its side: rotate it first.
  int lone = 0;
  for (int i = 0; i < 3; ++i) {
    if (Sign(t.v[i]) != Sign(t.v[(i + 1) % 3]) && Sign(t.v[i]) != Sign(t.v[(i + 2) % 3])) lone = i;
  }
  const MMG5_int l = t.v[lone], a = t.v[(lone + 1) % 3], b = t.v[(lone + 2) % 3];
  const MMG5_int ca = cuts.Find(l, a), cb = cuts.Find(l, b);
  AppendChild(k, true, l, ca, cb);
  if (a < b) {
    AppendChild(k, false, ca, a, cb);
    AppendChild(k, false, a, b, cb);
  } else {
    AppendChild(k, false, ca, a, b);
    AppendChild(k, false, ca, b, cb);
  }
}

void LevelSetCutSurface::SetReferences() {
  const MMG5_int iso_ref = IsoReference(mesh_);
  std::vector<std::uint64_t> interface_edges;
  for (MMG5_int k = 1; k <= mesh_.nt; ++k) {
    Tria& t = mesh_.tria[k];
    int zeros = 0;
    bool positive = false;
    for (MMG5_int v : t.v) {
      zeros += Sign(v) == 0;
      positive = positive || Sign(v) > 0;
    }
    t.ref = positive ? MG_PLUS : MG_MINUS;
    if (zeros != 2) continue;
    for (int i = 0; i < 3; ++i) {
      const MMG5_int a = t.v[i], b = t.v[(i + 1) % 3];
      if (Sign(a) != 0 || Sign(b) != 0) continue;
      mesh_.point[a].ref = iso_ref;
      mesh_.point[b].ref = iso_ref;
      interface_edges.push_back(EdgeKey(a, b));
    }
  }
  // Special edges: the open boundary of the surface and the interface.
  std::vector<std::uint64_t> edges;
  edges.reserve(3 * static_cast<std::size_t>(mesh_.nt));
  for (MMG5_int k = 1; k <= mesh_.nt; ++k) {
    const Tria& t = mesh_.tria[k];
    for (int i = 0; i < 3; ++i)
      edges.push_back(EdgeKey(t.v[i], t.v[(i + 1) % 3]));
  }
  std::sort(edges.begin(), edges.end());
  std::vector<std::uint64_t> special = interface_edges;
  for (std::size_t i = 0; i < edges.size();) {
    std::size_t j = i + 1;
    while (j < edges.size() && edges[j] == edges[i])
      ++j;
    if (j - i == 1) special.push_back(edges[i]);
    i = j;
  }
  std::sort(special.begin(), special.end());
  mesh_.na = static_cast<MMG5_int>(std::unique(special.begin(), special.end()) - special.begin());
}

// Leaves the input as it is apart from the removal of unused vertices.
void CompactInput(MMG5_Mesh& mesh) {
  std::vector<char> used(static_cast<std::size_t>(mesh.np) + 1, 0);
  for (MMG5_int k = 1; k <= mesh.nt; ++k) {
    for (MMG5_int v : mesh.tria[k].v)
      used[v] = 1;
  }
  const std::vector<MMG5_int> renumber = CompactVertices(mesh, used);
  for (MMG5_int k = 1; k <= mesh.nt; ++k) {
    for (MMG5_int& v : mesh.tria[k].v)
      v = renumber[v];
  }
  mesh.npi = mesh.np;
  mesh.nti = mesh.nt;
}

void LevelSetCutSurface::Finish(MMG5_Sol& ls) {
  CompactInput(mesh_);
  ls.m.clear();
  ls.m.shrink_to_fit();
  ls.np = ls.npi = 0;
  mesh_.nai = mesh_.na;
}

}  // namespace

int DiscretizeLevelSetSurface(MMG5_Mesh& mesh, MMG5_Sol* ls, MMG5_Sol* met) {
  const int refused = CheckLevelSet(mesh, ls, met);
  if (refused >= 0) return refused;
  if (mesh.point.size() != static_cast<std::size_t>(mesh.np) + 1 ||
      mesh.tria.size() != static_cast<std::size_t>(mesh.nt) + 1) {
    std::fprintf(stderr, "\n  ## Error: MMGS_mmgsls: mesh not sized.\n");
    return MMG5_STRONGFAILURE;
  }

  ScaleFrame frame;
  if (!ComputeScaleFrame(mesh, &frame)) return MMG5_STRONGFAILURE;

  WorstElement worst;
  for (MMG5_int k = 1; k <= mesh.nt; ++k) {
    const Tria& t = mesh.tria[k];
    worst.Consider(
        UnscaledTriQuality(mesh.point[t.v[0]].c, mesh.point[t.v[1]].c, mesh.point[t.v[2]].c), k);
  }
  // Unlike the volume run, a too bad surface is handed back unscaled.
  if (TooBadQuality(worst, kTriQualityScale)) {
    CompactInput(mesh);
    return MMG5_LOWFAILURE;
  }
  if (MissingLevelSetValues(mesh, *ls)) {
    ApplyScaleFrame(mesh, frame);
    return MMG5_STRONGFAILURE;
  }
  ClearIsoReferences(mesh);

  LevelSetCutSurface cut(mesh, ShiftedScaledValues(mesh, *ls, frame));
  cut.SnapToLevel();
  cut.Cut();
  cut.SetReferences();
  cut.Finish(*ls);
  return MMG5_SUCCESS;
}

}  // namespace mmgcompat
