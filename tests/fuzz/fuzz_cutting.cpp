// Both cutting exports on tetrahedral, triangle and mixed meshes built from the bytes, with
// fuzzed vertex values (NaN and infinities included), kept side, sizes and optional outputs.
#include <algorithm>
#include <cstdint>
#include <memory>
#include <vector>

#include "brindle.h"
#include "fuzz_bytes.h"
#include "fuzz_checks.h"

namespace {

double ReadValue(fuzz::ByteReader& in, bool raw) {
  if (raw) return in.Double();
  // Small steps around the level, with exact zeros among them.
  return (static_cast<int>(in.Byte()) - 128) / 32.0;
}

void CheckResult(const char* function, int status, ON_Mesh* result) {
  const std::unique_ptr<ON_Mesh> owned(result);
  if ((status == 0) != (result != nullptr))
    fuzz::Finding(std::string(function) + ": result and status disagree");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::ByteReader in(data, size);
  ON_Mesh mesh;
  fuzz::ReadMesh(in, mesh);
  const std::uint8_t options = in.Byte();
  const bool rawValues = options & 1;
  const int keepRef = (options & 2) ? in.Int() : in.Byte() % 4;
  const double hmin = (options & 4) ? in.Double() : 0.01;
  const double hmax = (options & 8) ? in.Double() : 0.5;
  const bool withInterface = options & 16;
  const bool clip = options & 32;
  const bool nullMesh = (options & 0xC0) == 0xC0;

  std::vector<double> values(
      static_cast<std::size_t>(std::max(mesh.m_dV.Count(), mesh.m_V.Count())) + 1);
  for (double& v : values)
    v = ReadValue(in, rawValues);

  const fuzz::UnchangedMesh unchanged(mesh);
  fuzz::ErrorBuffer error;
  ON_Mesh interfaceMesh;
  ON_Mesh* result = nullptr;
  int status = 0;
  const ON_Mesh* input = nullMesh ? nullptr : &mesh;
  if (clip) {
    const bool returned = fuzz::Guarded("CutTetrahedralMesh2", fuzz::Lets::kBadAlloc, [&] {
      status = CutTetrahedralMesh2(input, values.data(), keepRef, hmin, hmax, nullptr, &result,
                                   error.get());
    });
    unchanged.Check("CutTetrahedralMesh2");
    error.Check("CutTetrahedralMesh2");
    if (!returned) return 0;
    fuzz::ExpectStatus("CutTetrahedralMesh2", status, {0, 1});
    CheckResult("CutTetrahedralMesh2", status, result);
    return 0;
  }
  const bool returned = fuzz::Guarded("CutTetrahedralMesh", fuzz::Lets::kBadAlloc, [&] {
    status = CutTetrahedralMesh(input, values.data(), keepRef, hmin, hmax,
                                withInterface ? &interfaceMesh : nullptr, &result, error.get());
  });
  unchanged.Check("CutTetrahedralMesh");
  error.Check("CutTetrahedralMesh");
  if (!returned) return 0;
  fuzz::ExpectStatus("CutTetrahedralMesh", status,
                     {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19});
  CheckResult("CutTetrahedralMesh", status, result);
  return 0;
}
