// Timings of the surface solver on rectangles and on irregular meshes, per method:
// creation split into assembly and factorisation (against a bare LDLT factorisation of the
// same matrix), update, solve with 0 and with 16 isotherm levels, and the speed-up of the
// per-level isotherm tasks over tracing the levels one after another.
//
// Usage: surface_bench [triangles ...] [m<method> ...] (default 1e4 1e5 1e6, all methods). Figures
// go to standard error, as standard output carries method 0's per-face trace; run with >/dev/null.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "bench_support.h"
#include "brindle.h"
#include "common/boundary_status.h"
#include "surface/conduction_system.h"
#include "surface/face_flux.h"
#include "surface/flux_mesh.h"
#include "surface/isotherms.h"
#include "surface/surface_solver.h"

namespace {

// Median processor time of all threads, in ms. On a busy machine this is a steadier estimate
// of the single-threaded cost than the wall time.
double CpuMs(const std::function<void()>& work, int repeats) {
  return 1000.0 * brindle::bench::MedianCpuSeconds(repeats, work);
}

double TimeMs(const std::function<void()>& work, int repeats) {
  return 1000.0 * brindle::bench::MedianWallSeconds(repeats, work);
}

// A rectangle of about `triangles` faces, the lower row at 0 and the upper at 1. Irregular
// meshes move the interior vertices by up to 20% of a cell (no face folds over) and pick each
// cell's diagonal at random.
ON_Mesh Rectangle(int triangles, bool irregular) {
  const int nx = std::max(1, static_cast<int>(std::sqrt(triangles / 2.0)));
  const int ny = std::max(1, triangles / (2 * nx));
  const double dx = 1.0 / nx, dy = 1.0 / ny;
  std::mt19937 random(12345);
  std::uniform_real_distribution<double> jitter(-0.2, 0.2);
  std::bernoulli_distribution flip(0.5);
  ON_Mesh mesh;
  mesh.ReserveVertexCapacity(static_cast<std::size_t>((nx + 1) * (ny + 1)));
  for (int j = 0; j <= ny; ++j) {
    for (int i = 0; i <= nx; ++i) {
      double x = i * dx, y = j * dy;
      if (irregular && i > 0 && i < nx && j > 0 && j < ny) {
        x += jitter(random) * dx;
        y += jitter(random) * dy;
      }
      mesh.SetVertex(mesh.VertexCount(), ON_3dPoint(x, y, 0.0));
      const int status = j == 0    ? brindle::kBoundaryLow
                         : j == ny ? brindle::kBoundaryHigh
                                   : brindle::kBoundaryInterior;
      mesh.m_C.Append(brindle::BoundaryStatusColor(status));
    }
  }
  mesh.m_F.Reserve(static_cast<std::size_t>(2 * nx * ny));
  for (int r = 0; r < ny; ++r) {
    for (int c = 0; c < nx; ++c) {
      const int k = r * (nx + 1) + c;
      if (irregular && flip(random)) {
        mesh.SetTriangle(mesh.FaceCount(), k, k + 1, k + nx + 1);
        mesh.SetTriangle(mesh.FaceCount(), k + 1, k + nx + 2, k + nx + 1);
      } else {
        mesh.SetTriangle(mesh.FaceCount(), k, k + 1, k + nx + 2);
        mesh.SetTriangle(mesh.FaceCount(), k, k + nx + 2, k + nx + 1);
      }
    }
  }
  return mesh;
}

void BenchMethod(const ON_Mesh& mesh, int method, const char* kind) {
  const int repeats = mesh.FaceCount() >= 500000 ? 3 : 5;
  const int vertices = mesh.VertexCount(), faces = mesh.FaceCount();

  // Creation through the export, and its parts on the same model.
  void* handle = nullptr;
  char error[1024];
  if (const int status = sldmMalloc(&mesh, nullptr, method, &handle, error)) {
    std::fprintf(stderr, "%-9s %8d tri  m%d  creation failed: %d %s\n", kind, faces, method, status,
                 error);
    return;
  }
  const double create = TimeMs(
      [&] {
        sldmfree(handle);
        handle = nullptr;
        if (sldmMalloc(&mesh, nullptr, method, &handle, nullptr) != 0) std::abort();
      },
      repeats);
  const double createCpu = CpuMs(
      [&] {
        sldmfree(handle);
        handle = nullptr;
        if (sldmMalloc(&mesh, nullptr, method, &handle, nullptr) != 0) std::abort();
      },
      repeats);
  const auto& solver = *static_cast<const brindle::SurfaceSolver*>(handle);
  brindle::Triplets triplets;
  const double assembly =
      TimeMs([&] { brindle::AssembleStiffness(solver.model, method, triplets); }, repeats);
  const double bareFactorisation = TimeMs(
      [&] {
        Eigen::SimplicialLDLT<Eigen::SparseMatrix<double>> ldlt(solver.system.FreeFree());
        if (ldlt.info() != Eigen::Success) std::abort();
      },
      repeats);
  const double modelCpu = CpuMs(
      [&] {
        brindle::SurfaceModel model;
        brindle::BuildSurfaceModel(mesh, nullptr, model, nullptr);
      },
      repeats);
  brindle::AssembleStiffness(solver.model, method, triplets);
  const double blocksCpu = CpuMs(
      [&] {
        brindle::ConductionSystem system;
        system.Factorise(triplets, solver.model.VertexCount(), solver.model.fixedCount);
      },
      repeats);
  const double bareCpu = CpuMs(
      [&] {
        Eigen::SimplicialLDLT<Eigen::SparseMatrix<double>> ldlt(solver.system.FreeFree());
        if (ldlt.info() != Eigen::Success) std::abort();
      },
      repeats);
  const double conductivity = 2.0;
  const double update = TimeMs([&] { sldmupdate(handle, &conductivity, 1, nullptr); }, repeats);

  std::vector<double> temperature(vertices), flux(3 * static_cast<std::size_t>(faces));
  std::vector<double> levels(16), flows(16);
  for (int i = 0; i < 16; ++i)
    levels[i] = (i + 0.5) / 16.0;
  auto solve = [&](int levelCount) {
    ON_SimpleArray<ON_Line> lines;
    ON_Mesh fluxMesh;
    if (sldmsolve(handle, temperature.data(), vertices, levels.data(), levelCount, &lines,
                  flux.data(), 3 * faces, flows.data(), &fluxMesh, nullptr) != 0)
      std::abort();
  };
  const double solve0 = TimeMs([&] { solve(0); }, repeats);
  const double solve16 = TimeMs([&] { solve(16); }, repeats);
  const double solve16Cpu = CpuMs([&] { solve(16); }, repeats);

  // Parts of a solve: the two triangular solves, the face flux, the flux mesh.
  Eigen::VectorXd t;
  const double solveOnly = TimeMs([&] { t = solver.SolveTemperatures(); }, repeats);
  std::vector<double> faceMagnitude;
  const double faceFlux = TimeMs(
      [&] { faceMagnitude = brindle::ComputeFaceFlux(solver.model, t, flux.data()); }, repeats);
  const double fluxMesh = TimeMs(
      [&] {
        ON_Mesh out;
        brindle::BuildFluxMesh(solver.model, faceMagnitude, out);
      },
      repeats);

  // Isotherm tasks against the same levels traced one after another.
  const std::vector<double> magnitude(static_cast<std::size_t>(faces), 1.0);
  const double tasks = TimeMs(
      [&] {
        ON_SimpleArray<ON_Line> lines;
        brindle::TraceIsotherms(solver.model.mesh, t, magnitude, levels.data(), 16, lines,
                                flows.data());
      },
      repeats);
  const double sequential = TimeMs(
      [&] {
        for (double level : levels)
          brindle::TraceIsotherm(solver.model.mesh, t, magnitude, level);
      },
      repeats);

  std::fprintf(
      stderr,
      "%-9s %8d tri  m%d  create %8.2f ms (assembly %7.2f, bare LDLT %8.2f, ratio %.2f, cpu ratio "
      "%.2f; cpu: model %.2f, blocks+LDLT %.2f, LDLT %.2f)\n    "
      "update %8.2f  solve0 %7.2f (LDLT %6.2f, flux %6.2f, mesh %6.2f)  solve16 %7.2f (cpu %7.2f)"
      "  isotherms seq %7.2f tasks %7.2f\n",
      kind, faces, method, create, assembly, bareFactorisation, create / bareFactorisation,
      createCpu / bareCpu, modelCpu, blocksCpu, bareCpu, update, solve0, solveOnly, faceFlux,
      fluxMesh, solve16, solve16Cpu, sequential, tasks);
  sldmfree(handle);
}

}  // namespace

int main(int argc, char** argv) {
  // Arguments: triangle counts, and optionally "m<k>" to run method k only.
  std::vector<int> sizes, methods;
  for (int i = 1; i < argc; ++i) {
    if (argv[i][0] == 'm')
      methods.push_back(std::atoi(argv[i] + 1));
    else
      sizes.push_back(std::atoi(argv[i]));
  }
  if (sizes.empty()) sizes = {10000, 100000, 1000000};
  if (methods.empty()) methods = {0, 1, 2, 3};
  for (int triangles : sizes) {
    for (bool irregular : {false, true}) {
      const ON_Mesh mesh = Rectangle(triangles, irregular);
      for (int method : methods)
        BenchMethod(mesh, method, irregular ? "irregular" : "rectangle");
    }
  }
  return 0;
}
