#include "surface/isotherms.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <future>
#include <new>
#include <thread>
#include <vector>

namespace brindle {
namespace {

constexpr double kLevelAtCorner = 1e-14;

bool ChangesSign(double first, double second) {
  return !(first * second >= 0.0);
}

ON_3dPoint EdgeCrossing(const ON_3dPoint& first, const ON_3dPoint& second, double dFirst,
                        double dSecond) {
  return first * (dSecond / (dSecond - dFirst)) + second * (dFirst / (dFirst - dSecond));
}

}  // namespace

Isotherm TraceIsotherm(const ON_Mesh& mesh, const Eigen::VectorXd& temperature,
                       const std::vector<double>& magnitude, double level) {
  const int faceCount = mesh.FaceCount();
  // Segments gather in a standard vector, which reports running out of memory by exception;
  // a growing openNURBS array would lose its old buffer when a reallocation fails.
  std::vector<ON_Line> segments;
  Isotherm result;
  result.second = 0.0;
  for (int f = 0; f < faceCount; ++f) {
    const ON_MeshFace& face = mesh.m_F[f];
    const int corner[3] = {face.vi[0], face.vi[1], face.vi[2]};
    const double d[3] = {temperature[corner[0]] - level, temperature[corner[1]] - level,
                         temperature[corner[2]] - level};
    if (std::fabs(d[0]) < kLevelAtCorner || std::fabs(d[1]) < kLevelAtCorner ||
        std::fabs(d[2]) < kLevelAtCorner)
      continue;
    // Edges in the order (a,b), (b,c), (c,a).
    const bool crosses[3] = {ChangesSign(d[0], d[1]), ChangesSign(d[1], d[2]),
                             ChangesSign(d[2], d[0])};
    if (crosses[0] + crosses[1] + crosses[2] != 2) continue;

    ON_3dPoint ends[2];
    int found = 0;
    for (int edge = 0; edge < 3; ++edge) {
      if (!crosses[edge]) continue;
      const int first = edge, second = (edge + 1) % 3;
      ends[found++] = EdgeCrossing(mesh.Vertex(corner[first]), mesh.Vertex(corner[second]),
                                   d[first], d[second]);
    }
    segments.emplace_back(ends[0], ends[1]);
    result.second += magnitude[f] * segments.back().Length();
  }
  const int count = static_cast<int>(segments.size());
  result.first.Reserve(segments.size());
  if (result.first.Capacity() < count) throw std::bad_alloc();
  result.first.Append(count, segments.data());
  return result;
}

void TraceIsotherms(const ON_Mesh& mesh, const Eigen::VectorXd& temperature,
                    const std::vector<double>& magnitude, const double* levels, int levelCount,
                    ON_SimpleArray<ON_Line>& lines, double* flows) {
  // The levels are traced by asynchronous tasks that only read the mesh, temperatures and
  // magnitudes and each write their own levels' results; all are awaited before the results
  // are stored in level order. One task per level up to the number of hardware threads, and
  // beyond that each task takes every n-th level: a thread per level would let a long level
  // list keep the call busy for seconds starting threads. The default launch policy runs a
  // task at get() when no thread can be had.
  const int hardwareThreads = static_cast<int>(std::thread::hardware_concurrency());
  const int taskCount = std::min(levelCount, std::max(1, hardwareThreads));
  std::vector<Isotherm> traced(static_cast<std::size_t>(levelCount));
  std::vector<std::future<void>> tasks;
  tasks.reserve(static_cast<std::size_t>(taskCount));
  for (int task = 0; task < taskCount; ++task) {
    tasks.push_back(
        std::async([&mesh, &temperature, &magnitude, &traced, levels, levelCount, taskCount, task] {
          for (int i = task; i < levelCount; i += taskCount)
            traced[static_cast<std::size_t>(i)] =
                TraceIsotherm(mesh, temperature, magnitude, levels[i]);
        }));
  }
  for (std::future<void>& task : tasks)
    task.get();
  // The caller's array grows once, and only when every level fits, so that a failure leaves
  // it as it was.
  std::size_t total = static_cast<std::size_t>(lines.Count());
  for (const Isotherm& isotherm : traced)
    total += static_cast<std::size_t>(isotherm.first.Count());
  if (total > static_cast<std::size_t>(INT_MAX)) throw std::bad_alloc();
  lines.Reserve(total);
  if (static_cast<std::size_t>(lines.Capacity()) < total) throw std::bad_alloc();
  for (int i = 0; i < levelCount; ++i) {
    lines.Append(traced[i].first.Count(), traced[i].first.Array());
    flows[i] = traced[i].second;
  }
}

}  // namespace brindle
