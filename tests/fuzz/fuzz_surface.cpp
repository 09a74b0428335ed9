// The surface solver on a mesh built from the bytes: triangles and quads, colours present or
// not, mismatched vertex lists, any face indices and coordinates; fuzzed regions, method,
// isotherm levels and output arguments; solve and update in any order; free.
#include <cstdint>
#include <vector>

#include "brindle.h"
#include "fuzz_bytes.h"
#include "fuzz_checks.h"

namespace {

// Beyond this many entries a caller array is not backed; the count is then replaced by the
// array's true length, since a caller's count always describes its own array.
constexpr int kLargestArray = 1 << 16;

int ReadLength(fuzz::ByteReader& in) {
  const std::uint8_t kind = in.Byte();
  if (kind < 240) return kind % 16;
  return in.Int();
}

void Solve(fuzz::ByteReader& in, void* solver, const ON_Mesh& mesh, fuzz::ErrorBuffer& error) {
  const int vertexCount = mesh.VertexCount();
  const int faceCount = mesh.FaceCount();
  int temperatureCount = vertexCount;
  if (in.Flag()) temperatureCount += static_cast<std::int8_t>(in.Byte());
  std::vector<double> temperatures(static_cast<std::size_t>(std::max(vertexCount, 1)), -7.0);
  const bool nullTemperatures = in.Byte() == 0xFF;

  int levelCount = ReadLength(in);
  const bool levelsBacked = levelCount >= 0 && levelCount <= kLargestArray;
  std::vector<double> levels(levelsBacked ? static_cast<std::size_t>(levelCount) : 0);
  for (double& level : levels)
    level = in.Flag() ? in.Double() : in.Byte() / 255.0;
  if (levelCount > kLargestArray) levelCount = static_cast<int>(levels.size());
  std::vector<double> levelFlow(levels.size() + 1, -7.0);

  const std::uint8_t outputs = in.Byte();
  int faceFluxCount = 3 * faceCount;
  if (outputs & 1) faceFluxCount = in.Int();
  std::vector<double> faceFlux(static_cast<std::size_t>(3) * faceCount + 1, -7.0);
  ON_SimpleArray<ON_Line> isotherms;
  ON_Mesh fluxMesh;
  if (outputs & 2) fluxMesh.m_V.Append(ON_3fPoint(1, 2, 3));  // not empty

  int status = 0;
  fuzz::Guarded("sldmsolve", fuzz::Lets::kSurfaceErrors, [&] {
    status =
        sldmsolve(solver, nullTemperatures ? nullptr : temperatures.data(), temperatureCount,
                  (outputs & 4) ? nullptr : levels.data(), levelCount,
                  (outputs & 8) ? nullptr : &isotherms, (outputs & 16) ? nullptr : faceFlux.data(),
                  faceFluxCount, (outputs & 32) ? nullptr : levelFlow.data(),
                  (outputs & 64) ? nullptr : &fluxMesh, error.get());
  });
  fuzz::ExpectStatus("sldmsolve", status, {0, -1001, -17, -18, -19, -20, -21, -22});
  error.Check("sldmsolve");
}

void Update(fuzz::ByteReader& in, void* solver, fuzz::ErrorBuffer& error) {
  int count = ReadLength(in);
  const bool backed = count > 0 && count <= kLargestArray;
  std::vector<double> conductivities(backed ? static_cast<std::size_t>(count) : 0);
  for (double& k : conductivities)
    k = in.Flag() ? in.Double() : 0.5 * (1 + in.Byte());
  if (count > kLargestArray) count = static_cast<int>(conductivities.size());
  const bool nullValues = in.Byte() == 0xFF;
  int status = 0;
  fuzz::Guarded("sldmupdate", fuzz::Lets::kSurfaceErrors, [&] {
    status =
        sldmupdate(solver, nullValues || conductivities.empty() ? nullptr : conductivities.data(),
                   count, error.get());
  });
  fuzz::ExpectStatus("sldmupdate", status, {0, -3003, -3004, -3005, 22, 23, 24, 128, 2025});
  error.Check("sldmupdate");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::ByteReader in(data, size);
  ON_Mesh mesh;
  fuzz::ReadMesh(in, mesh);
  const int method = in.Flag() ? in.Int() : in.Byte() % 4;

  const std::uint8_t regionKind = in.Byte();
  std::vector<int> regions(static_cast<std::size_t>(mesh.FaceCount()) + 1);
  for (int& r : regions)
    r = (regionKind & 1) ? in.Int() : in.Byte() % 4;
  const int* faceRegions = (regionKind & 2) ? nullptr : regions.data();

  const fuzz::UnchangedMesh unchanged(mesh);
  fuzz::ErrorBuffer error;
  void* handle = &handle;  // stale: must come back null on failure
  const bool nullHandleSlot = in.Byte() == 0xFF;
  int status = 0;
  const bool returned = fuzz::Guarded("sldmMalloc", fuzz::Lets::kSurfaceErrors, [&] {
    status = sldmMalloc((regionKind & 4) ? nullptr : &mesh, faceRegions, method,
                        nullHandleSlot ? nullptr : &handle, error.get());
  });
  unchanged.Check("sldmMalloc");
  error.Check("sldmMalloc");
  if (!returned || nullHandleSlot) return 0;
  fuzz::ExpectStatus(
      "sldmMalloc", status,
      {0, 41, 24, 25, 26, 27, 28, 29, 30, 42, 43, 127, 1, 22, 23, 128, 2025, 33, 44});
  if ((status == 0) != (handle != nullptr)) fuzz::Finding("sldmMalloc: handle and status disagree");
  if (!handle) return 0;

  const int steps = 1 + in.Byte() % 4;
  for (int step = 0; step < steps && in.Remaining() > 0; ++step) {
    if (in.Flag())
      Update(in, handle, error);
    else
      Solve(in, handle, mesh, error);
  }
  sldmfree(handle);
  return 0;
}
