// Every mesh tool on a mesh built from the bytes (quality measures, boundary extraction,
// sanitising), and rectangle generation with any plane, sizes and subdivision counts.
#include <cstdint>
#include <memory>
#include <vector>

#include "brindle.h"
#include "fuzz_bytes.h"
#include "fuzz_checks.h"

namespace {

void CheckResult(const char* function, int status, ON_Mesh* result) {
  const std::unique_ptr<ON_Mesh> owned(result);
  if ((status == 0) != (result != nullptr))
    fuzz::Finding(std::string(function) + ": result and status disagree");
}

// The single-allocation cap set in fuzz_options.cpp.
constexpr long long kAllocationCap = 64ll << 20;

// A subdivision count: small most of the time, any int otherwise (huge grids included; their
// arrays then fail to reserve, which must end in "Out of memory").
int ReadSubdivisions(fuzz::ByteReader& in) {
  const std::uint8_t kind = in.Byte();
  if (kind < 200) return kind % 32;
  return in.Int();
}

void RectMesh(fuzz::ByteReader& in) {
  ON_Plane plane = ON_Plane::World_xy;
  const std::uint8_t form = in.Byte();
  if (form & 1) {
    plane.origin = ON_3dPoint(in.Double(), in.Double(), in.Double());
    plane.xaxis = ON_3dVector(in.Double(), in.Double(), in.Double());
    plane.yaxis = ON_3dVector(in.Double(), in.Double(), in.Double());
    plane.zaxis = ON_3dVector(in.Double(), in.Double(), in.Double());
  }
  const double width = (form & 2) ? in.Double() : 1 + in.Byte();
  const double height = (form & 4) ? in.Double() : 1 + in.Byte();
  const int nx = ReadSubdivisions(in);
  const int ny = ReadSubdivisions(in);
  // A grid whose vertex array fits under the harness's allocation cap but holds more than
  // 2^16 vertices is legitimate work that takes seconds under the sanitizers: not run. Larger
  // grids still are, and must fail their reservations with status 4.
  const long long vertices = (static_cast<long long>(nx) + 1) * (static_cast<long long>(ny) + 1);
  const long long vertexLimit = kAllocationCap / static_cast<long long>(sizeof(ON_3dPoint));
  if (nx > 0 && ny > 0 && vertices > (1 << 16) && vertices <= vertexLimit) return;
  fuzz::ErrorBuffer error;
  ON_Mesh* result = nullptr;
  int status = 0;
  fuzz::Guarded("MakeRectMesh", fuzz::Lets::kNothing, [&] {
    status = MakeRectMesh((form & 8) ? nullptr : &plane, width, height, nx, ny,
                          (form & 16) ? nullptr : &result, error.get());
  });
  fuzz::ExpectStatus("MakeRectMesh", status, {0, 1, 2, 3, 4});
  error.Check("MakeRectMesh");
  if (!(form & 16)) CheckResult("MakeRectMesh", status, result);
}

void MeshTool(fuzz::ByteReader& in, int tool) {
  ON_Mesh mesh;
  fuzz::ReadMesh(in, mesh);
  const bool nullMesh = in.Byte() == 0xFF;
  const bool nullOutput = in.Byte() == 0xFF;
  const ON_Mesh* input = nullMesh ? nullptr : &mesh;
  const fuzz::UnchangedMesh unchanged(mesh);
  fuzz::ErrorBuffer error;
  const std::size_t faces = static_cast<std::size_t>(mesh.FaceCount());
  std::vector<double> out(6 * faces + 1, -7.0);
  double* output = nullOutput ? nullptr : out.data();
  int status = 0;
  const char* function = "";
  switch (tool) {
    case 0:
      function = "AspectRatios";
      fuzz::Guarded(function, fuzz::Lets::kNothing,
                    [&] { status = AspectRatios(input, output, error.get()); });
      fuzz::ExpectStatus(function, status, {0, 1, 2});
      break;
    case 1:
      function = "DihedralAngles";
      fuzz::Guarded(function, fuzz::Lets::kNothing,
                    [&] { status = DihedralAngles(input, output, error.get()); });
      fuzz::ExpectStatus(function, status, {0, 1, 2});
      break;
    case 2: {
      function = "ExtractBoundaryMeshWithStats";
      int counts[3] = {-1, -1, -1};
      ON_Mesh* result = nullptr;
      const bool returned = fuzz::Guarded(function, fuzz::Lets::kBadAlloc, [&] {
        status =
            ExtractBoundaryMeshWithStats(input, &counts[0], nullOutput ? nullptr : &counts[1],
                                         &counts[2], nullOutput ? nullptr : &result, error.get());
      });
      if (returned) {
        fuzz::ExpectStatus(function, status, {0, 1, 2});
        if (!nullOutput) CheckResult(function, status, result);
      }
      break;
    }
    case 3: {
      function = "TrySanitize";
      int code = 7;
      ON_Mesh* result = nullptr;
      fuzz::Guarded(function, fuzz::Lets::kNothing, [&] {
        status = TrySanitize(input, &code, nullOutput ? nullptr : &result, error.get());
      });
      fuzz::ExpectStatus(function, status, {0, 1, 2, 3, 4, 5});
      if (!nullOutput) CheckResult(function, status, result);
      break;
    }
    case 4:
      function = "qual";
      fuzz::Guarded(function, fuzz::Lets::kNothing,
                    [&] { status = qual(input, output, error.get()); });
      fuzz::ExpectStatus(function, status, {0, 1, 2, 3, 4, 5});
      break;
    default:
      function = "qualS";
      fuzz::Guarded(function, fuzz::Lets::kNothing,
                    [&] { status = qualS(input, output, error.get()); });
      fuzz::ExpectStatus(function, status, {0, 1, 2, 3, 4, 5});
      break;
  }
  unchanged.Check(function);
  error.Check(function);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::ByteReader in(data, size);
  const int tool = in.Byte() % 7;
  if (tool == 6)
    RectMesh(in);
  else
    MeshTool(in, tool);
  return 0;
}
