// Speed and memory of a whole thermal-bridge study against the library's own create + solve on
// the same mesh. Each run is a child process, so that its peak memory is its own.
//
//   study_speed all TETRAHEDRA DIR   write a wall-with-bar mesh and its study into DIR, then run
//                                    both and print the figures
//   study_speed write TETRAHEDRA DIR | library DIR | study DIR   the single steps
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

#include "block_mesher.h"
#include "block_study_mesh.h"
#include "brindle.h"
#include "medit.h"
#include "mesh_intake.h"
#include "mesh_source.h"
#include "study_engine.h"
#include "study_file.h"

namespace {

using namespace brindle::study;
using Clock = std::chrono::steady_clock;

double Since(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

// An insulated concrete wall 1 m x 1 m with a steel bar, meshed to about `target` tetrahedra.
StudyMesh WallMesh(double target) {
  const std::vector<Block> blocks{{{0.0, 0.0, 0.0}, {0.18, 1.0, 1.0}, 0},
                                  {{0.18, 0.0, 0.0}, {0.38, 1.0, 1.0}, 1},
                                  {{0.08, 0.45, 0.45}, {0.38, 0.55, 0.55}, 2}};
  const std::vector<Material> materials{{"concrete", 2.3, Role::kSolid},
                                        {"insulation", 0.035, Role::kSolid},
                                        {"steel", 50, Role::kSolid}};
  // Six tetrahedra per cell of a uniform grid: cells of size h fill 0.38 m3 with 6 * 0.38 / h^3.
  const double h = std::cbrt(6.0 * 0.38 / target);
  const TetMesh tets = MeshBlocks(blocks, materials, {h, h, 1.01});
  return BlockStudyMesh(tets, [](const Point& c, const Point& n) {
    if (n[0] < -0.5 && c[0] < 1e-9) return 1;
    if (n[0] > 0.5 && c[0] > 0.38 - 1e-9) return 2;
    return 0;
  });
}

int Write(double target, const std::string& dir) {
  const StudyMesh mesh = WallMesh(target);
  std::ofstream(dir + "/bench.mesh") << MeditText(mesh);
  std::ofstream(dir + "/bench.json") << R"({"mesh": "bench.mesh",
    "materials": {"1": 2.3, "2": 0.035, "3": 50},
    "environments": {
      "inside": {"temperature": 20, "surface_resistance": 0.13, "boundaries": [1]},
      "outside": {"temperature": -5, "surface_resistance": 0.04, "boundaries": [2]}}})";
  std::printf("wrote %s/bench.mesh: %zu vertices, %zu tetrahedra\n", dir.c_str(),
              mesh.vertices.size(), mesh.tetrahedra.size());
  return 0;
}

// What a host does: the mesh's arrays straight into poissonmallocvol, the inside faces high and
// the outside faces low, then poissonsolve.
int Library(const std::string& dir) {
  std::vector<double> coordinates;
  std::vector<int> tetrahedra, region, high, low;
  {
    const StudyMesh mesh = ReadStudyMesh(dir + "/bench.mesh");
    for (const Point& p : mesh.vertices)
      coordinates.insert(coordinates.end(), p.begin(), p.end());
    for (std::size_t t = 0; t < mesh.tetrahedra.size(); ++t) {
      tetrahedra.insert(tetrahedra.end(), mesh.tetrahedra[t].begin(), mesh.tetrahedra[t].end());
      region.push_back(mesh.tetrahedronRef[t] - 1);
    }
    std::vector<char> side(mesh.vertices.size(), 0);
    for (std::size_t f = 0; f < mesh.triangles.size(); ++f)
      for (int v : mesh.triangles[f])
        side[v] = static_cast<char>(mesh.triangleRef[f]);
    for (std::size_t v = 0; v < side.size(); ++v) {
      if (side[v] == 1) high.push_back(static_cast<int>(v));
      if (side[v] == 2) low.push_back(static_cast<int>(v));
    }
  }
  std::vector<double> conductivity{2.3, 0.035, 50.0};
  const auto start = Clock::now();
  int reserved = 0;
  char detail[2000] = "", error[1024] = "";
  const void* handle = nullptr;
  const int n = static_cast<int>(coordinates.size() / 3);
  if (poissonmallocvol(n, coordinates.data(), static_cast<int>(region.size()), tetrahedra.data(),
                       region.data(), 3, conductivity.data(), static_cast<int>(high.size()),
                       high.data(), static_cast<int>(low.size()), low.data(), 1e-9, &reserved,
                       detail, &handle, error) != 0) {
    std::fprintf(stderr, "poissonmallocvol: %s %s\n", error, detail);
    return 1;
  }
  std::vector<double> temperature(n);
  const int status = poissonsolve(const_cast<void*>(handle), temperature.data(), error);
  const double seconds = Since(start);
  poissonfree(const_cast<void*>(handle));
  std::printf("library create+solve: %.2f s (status %d)\n", seconds, status);
  std::FILE* out = std::fopen((dir + "/library-seconds").c_str(), "w");
  if (out) {
    std::fprintf(out, "%.3f\n", seconds);
    std::fclose(out);
  }
  return status;
}

int Study(const std::string& dir) {
  const auto start = Clock::now();
  const auto summary =
      RunStudy(ReadStudyFile(dir + "/bench.json"), nullptr, dir, dir + "/out", "bench.json");
  std::ofstream(dir + "/out/summary.json") << nlohmann::json{{"study", summary}}.dump(2);
  const double seconds = Since(start);
  const auto& t = summary["solver"];
  std::printf(
      "study from reading to writing: %.2f s (read %.2f, model %.2f, solver %.2f, results %.2f, "
      "write %.2f)\n",
      seconds, t["read_seconds"].get<double>(), t["model_seconds"].get<double>(),
      t["seconds"].get<double>(), t["results_seconds"].get<double>(),
      t["write_seconds"].get<double>());
  std::FILE* out = std::fopen((dir + "/study-seconds").c_str(), "w");
  if (out) {
    std::fprintf(out, "%.3f\n", seconds);
    std::fclose(out);
  }
  return 0;
}

// Runs this program with `args` as a child; returns its peak resident memory in MB.
double Child(const char* self, const std::vector<std::string>& args) {
  const pid_t pid = fork();
  if (pid == 0) {
    std::vector<char*> argv{const_cast<char*>(self)};
    for (const auto& a : args)
      argv.push_back(const_cast<char*>(a.c_str()));
    argv.push_back(nullptr);
    execv(self, argv.data());
    std::_Exit(127);
  }
  int status = 0;
  rusage usage{};
  wait4(pid, &status, 0, &usage);
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
    std::fprintf(stderr, "%s failed\n", args.front().c_str());
    std::exit(1);
  }
  return usage.ru_maxrss / 1024.0;
}

double ReadNumber(const std::string& path) {
  std::ifstream in(path);
  double x = 0.0;
  in >> x;
  return x;
}

}  // namespace

int main(int argc, char** argv) {
  const std::string mode = argc > 1 ? argv[1] : "";
  if (mode == "write" && argc == 4) return Write(std::atof(argv[2]), argv[3]);
  if (mode == "library" && argc == 3) return Library(argv[2]);
  if (mode == "study" && argc == 3) return Study(argv[2]);
  if (mode == "all" && argc == 4) {
    const std::string dir = argv[3];
    Child(argv[0], {"write", argv[2], dir});
    const double libraryMemory = Child(argv[0], {"library", dir});
    const double studyMemory = Child(argv[0], {"study", dir});
    const double libraryTime = ReadNumber(dir + "/library-seconds");
    const double studyTime = ReadNumber(dir + "/study-seconds");
    std::printf(
        "\nlibrary create+solve %.2f s, peak %.0f MB\n"
        "whole study          %.2f s, peak %.0f MB\n"
        "ratios: time %.2f (target 3), memory %.2f (target 2)\n",
        libraryTime, libraryMemory, studyTime, studyMemory, studyTime / libraryTime,
        studyMemory / libraryMemory);
    return 0;
  }
  std::fprintf(stderr, "usage: study_speed all|write TETRAHEDRA DIR | library|study DIR\n");
  return 2;
}
