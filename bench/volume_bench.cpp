// Volume solver benchmark on structured box meshes (6 tetrahedra per cell, Low face x = 0,
// High face x = 1). Per size it prints construction time per tetrahedron and the share of its
// two assembly stages (element pass into column buckets, summing into the blocks), CG
// iterations, time and streamed bandwidth per CG iteration against a triad measured in the same
// run, peak resident memory of create + solve per tetrahedron, and solve times with the other
// core kept busy: one thread, two threads, and the library's own choice.
#include <brindle.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <fstream>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#ifdef _OPENMP
#include <omp.h>
#endif

#include "bench_support.h"
#include "volume/block_assembly.h"
#include "volume/conduction_solver.h"
#include "volume/element_pass.h"
#include "volume/model.h"
#include "volume/solver_order.h"

namespace {

using Clock = std::chrono::steady_clock;

double Seconds(Clock::time_point since) {
  return std::chrono::duration<double>(Clock::now() - since).count();
}

// CPU time of the calling thread: on a shared machine it shows the one-core cost that the wall
// clock hides behind other processes' time slices.
double ThreadCpuSeconds() {
  timespec now;
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return double(now.tv_sec) + 1e-9 * double(now.tv_nsec);
}

using brindle::bench::Median;

// The bench cube with its Low face x = 0 and High face x = 1, one material.
struct BoxMesh {
  std::vector<double> coordinates;
  std::vector<int> tetrahedra, materials, high, low;
  int vertexCount = 0, tetrahedronCount = 0;
};

BoxMesh MakeBox(int cells) {
  brindle::bench::CubeArrays cube = brindle::bench::StructuredCubeArrays(cells);
  BoxMesh mesh;
  mesh.vertexCount = cube.VertexCount();
  mesh.tetrahedronCount = cube.TetrahedronCount();
  for (int v = 0; v < mesh.vertexCount; ++v) {
    const double x = cube.coordinates[3 * static_cast<std::size_t>(v)];
    if (x == 0.0) mesh.low.push_back(v);
    if (x == 1.0) mesh.high.push_back(v);
  }
  mesh.coordinates = std::move(cube.coordinates);
  mesh.tetrahedra = std::move(cube.tetrahedra);
  mesh.materials.assign(static_cast<std::size_t>(mesh.tetrahedronCount), 0);
  return mesh;
}

long StatusKilobytes(const char* field) {
  std::ifstream status("/proc/self/status");
  std::string line;
  while (std::getline(status, line)) {
    if (line.rfind(field, 0) == 0) return std::stol(line.substr(std::strlen(field)));
  }
  return 0;
}

void ResetPeakResident() {
  std::ofstream("/proc/self/clear_refs") << "5";
}

// STREAM-style triad a = b + s c over arrays far larger than the caches; bytes counted as
// two reads and one write per element.
double TriadGigabytesPerSecond() {
  const std::size_t n = std::size_t(1) << 23;
  std::vector<double> a(n, 0.0), b(n, 1.0), c(n, 2.0);
  std::vector<double> rates;
  for (int run = 0; run < 7; ++run) {
    const auto start = Clock::now();
    const double s = 3.0 + run;
    for (std::size_t i = 0; i < n; ++i)
      a[i] = b[i] + s * c[i];
    rates.push_back(3.0 * 8.0 * double(n) / Seconds(start) / 1e9);
  }
  if (a[n / 2] < 0) std::puts("");  // keep the loop
  return Median(rates);
}

// Keeps one core busy while it lives.
class BusyCore {
 public:
  BusyCore()
      : worker_([this] {
          volatile double x = 1.0;
          while (!stop_.load(std::memory_order_relaxed))
            x = x * 1.0000001;
        }) {}
  ~BusyCore() {
    stop_ = true;
    worker_.join();
  }

 private:
  std::atomic<bool> stop_{false};
  std::thread worker_;
};

double SolveSeconds(const brindle::brindle::SparseMatrix& free, const Eigen::VectorXd& rhs,
                    int threads) {
#ifdef _OPENMP
  const int savedDynamic = omp_get_dynamic();
  omp_set_dynamic(0);
  omp_set_num_threads(threads);
#else
  (void)threads;
#endif
  brindle::brindle::Solver cg;
  cg.compute(free);
  const auto start = Clock::now();
  Eigen::VectorXd x = cg.solve(rhs);
  const double seconds = Seconds(start);
#ifdef _OPENMP
  omp_set_dynamic(savedDynamic);
#endif
  return seconds;
}

void RunSize(int cells, double triad, int repeats) {
  BoxMesh mesh = MakeBox(cells);
  const int nt = mesh.tetrahedronCount;
  char detail[2000], error[1024];

  // Create + solve through the exports, with the peak resident memory they add.
  std::vector<double> create, createCpu, solve;
  long peakKb = 0;
  int iterations = 0;
  double bytesPerIteration = 0;
  std::vector<double> temperatures(mesh.vertexCount);
  for (int r = 0; r < repeats; ++r) {
    ResetPeakResident();
    const long before = StatusKilobytes("VmRSS:");
    void const* handle = nullptr;
    auto start = Clock::now();
    const double cpuStart = ThreadCpuSeconds();
    const int status =
        poissonmallocvol(mesh.vertexCount, mesh.coordinates.data(), nt, mesh.tetrahedra.data(),
                         mesh.materials.data(), 1, std::vector<double>{1.0}.data(),
                         int(mesh.high.size()), mesh.high.data(), int(mesh.low.size()),
                         mesh.low.data(), 1e-6, nullptr, detail, &handle, error);
    create.push_back(Seconds(start));
    createCpu.push_back(ThreadCpuSeconds() - cpuStart);
    if (status != 0) {
      std::printf("poissonmallocvol failed: %d %s %s\n", status, error, detail);
      return;
    }
    start = Clock::now();
    poissonsolve(const_cast<void*>(handle), temperatures.data(), error);
    solve.push_back(Seconds(start));
    peakKb = std::max(peakKb, StatusKilobytes("VmHWM:") - before);
    const auto* solver = static_cast<const brindle::brindle*>(handle);
    iterations = int(solver->LinearSolver().iterations());
    const auto& free = solver->FreeMatrix();
    const double n = double(free.rows());
    // What Eigen's CG loop reads and writes per iteration: the matrix (values, inner and outer
    // indices) once, and 19 vector passes (product in/out, two dot products, two axpys, the
    // residual norm, the preconditioner, the update of p).
    bytesPerIteration = 12.0 * double(free.nonZeros()) + 4.0 * (n + 1) + 19.0 * 8.0 * n;
    poissonfree(const_cast<void*>(handle));
  }

  // Stage shares of construction, timed on the same model.
  std::vector<double> passTimes, assemblyTimes;
  double threadTimes[3] = {0, 0, 0};
  {
    brindle::prepoisson model(mesh.vertexCount, mesh.coordinates.data(), nt, mesh.tetrahedra.data(),
                              mesh.materials.data(), 1, std::vector<double>{1.0}.data(),
                              int(mesh.high.size()), mesh.high.data(), int(mesh.low.size()),
                              mesh.low.data());
    const brindle::SolverOrder order = brindle::SortIntoSolverOrder(model.vertices);
    brindle::SystemBlocks blocks;
    for (int r = 0; r < repeats; ++r) {
      std::string message;
      auto start = Clock::now();
      brindle::BlockAssembler assembler(model.tetrahedra, order.positions, order.fixedCount);
      brindle::ForEachElementMatrix(model, order.positions, 1e-6, nullptr, message,
                                    [&](std::size_t, const std::int32_t(&p)[4],
                                        const brindle::ElementMatrix& k) { assembler.Add(p, k); });
      passTimes.push_back(Seconds(start));
      start = Clock::now();
      blocks = assembler.Finish();
      assemblyTimes.push_back(Seconds(start));
    }
    Eigen::VectorXd fixed(Eigen::Index(order.fixedCount));
    for (Eigen::Index i = 0; i < fixed.size(); ++i)
      fixed[i] = order.vertices[i].kind == brindle::VertexKind::Low ? -13.1 : 20.0;
    Eigen::VectorXd rhs = Eigen::VectorXd::Zero(blocks.freeBlock.rows());
    rhs.noalias() -= blocks.couplingBlock * fixed;

    BusyCore busy;
    threadTimes[0] = SolveSeconds(blocks.freeBlock, rhs, 1);
    threadTimes[1] = SolveSeconds(blocks.freeBlock, rhs, 2);
    void const* handle = nullptr;
    poissonmallocvol(mesh.vertexCount, mesh.coordinates.data(), nt, mesh.tetrahedra.data(),
                     mesh.materials.data(), 1, std::vector<double>{1.0}.data(),
                     int(mesh.high.size()), mesh.high.data(), int(mesh.low.size()), mesh.low.data(),
                     1e-6, nullptr, detail, &handle, error);
    const auto start = Clock::now();
    poissonsolve(const_cast<void*>(handle), temperatures.data(), error);
    threadTimes[2] = Seconds(start);
    poissonfree(const_cast<void*>(handle));
  }

  const double createSeconds = Median(create);
  const double iterationSeconds = Median(solve) / std::max(iterations, 1);
  const double bandwidth = bytesPerIteration / iterationSeconds / 1e9;
  std::printf(
      "RESULT %9d tets | create %.3f us/tet (cpu %.3f; element pass %2.0f%%, summing %2.0f%%) | "
      "CG %4d it, %.3f ms/it, %.2f GB/s = %3.0f%% of triad %.2f GB/s | peak %4.0f B/tet | "
      "busy-core solve 1t %.3f s, 2t %.3f s, library %.3f s\n",
      nt, createSeconds / nt * 1e6, Median(createCpu) / nt * 1e6,
      100 * Median(passTimes) / createSeconds, 100 * Median(assemblyTimes) / createSeconds,
      iterations, iterationSeconds * 1e3, bandwidth, 100 * bandwidth / triad, triad,
      double(peakKb) * 1024.0 / nt, threadTimes[0], threadTimes[1], threadTimes[2]);
  std::fflush(stdout);
}

}  // namespace

// Arguments: cells per box side (default 12 26 55 70, i.e. about 1e4, 1e5, 1e6 and 2e6
// tetrahedra).
int main(int argc, char** argv) {
  std::vector<int> sides;
  for (int i = 1; i < argc; ++i)
    sides.push_back(std::atoi(argv[i]));
  if (sides.empty()) sides = {12, 26, 55, 70};
  const double triad = TriadGigabytesPerSecond();
  for (int cells : sides)
    RunSize(cells, triad, cells >= 55 ? 3 : 5);
  return 0;
}
