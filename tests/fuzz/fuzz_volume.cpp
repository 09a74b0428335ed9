// The volume solver's whole life cycle on fuzzed arrays: create with fuzzed counts, indices,
// coordinates, conductivities and tolerance, then solve, residual, status, new conductivities,
// solve again and free, with null arguments where the bytes ask for them.
#include <cstdint>
#include <cstring>
#include <vector>

#include "brindle.h"
#include "fuzz_bytes.h"
#include "fuzz_checks.h"

namespace {

// The largest caller array the harness backs with memory; a larger count is passed with a
// null array, which the library must refuse before it allocates anything. Larger backed
// arrays are legitimate work of seconds under the sanitizers, which would hide real hangs.
constexpr std::int64_t kLargestArray = 1 << 16;

// A count as the bytes give it: a small one most of the time, any int otherwise.
int ReadCount(fuzz::ByteReader& in) {
  const std::uint8_t kind = in.Byte();
  if (kind < 224) return kind % 64;
  return in.Int();
}

// A caller array of `count` entries, or an empty one (passed as null) when the bytes say so or
// the count is negative or beyond what the harness backs.
template <class T, class Read>
std::vector<T> ReadArray(fuzz::ByteReader& in, int count, std::size_t width, Read read) {
  std::vector<T> values;
  if (in.Byte() == 0xFF || count <= 0 || count > kLargestArray) return values;
  values.resize(static_cast<std::size_t>(count) * width);
  for (T& v : values)
    v = read();
  return values;
}

template <class T>
T* PointerTo(std::vector<T>& values) {
  return values.empty() ? nullptr : values.data();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::ByteReader in(data, size);
  const std::uint8_t mode = in.Byte();
  const bool rawCoordinates = mode & 1, rawIndices = mode & 2, rawConductivities = mode & 4;

  const int vertexCount = ReadCount(in);
  const int tetrahedronCount = ReadCount(in);
  const int materialCount = ReadCount(in);
  const int highCount = ReadCount(in);
  const int lowCount = ReadCount(in);
  const double tolerance = in.Flag() ? in.Double() : 1e-3;

  auto coordinate = [&] {
    return rawCoordinates ? in.Double() : static_cast<double>(static_cast<std::int8_t>(in.Byte()));
  };
  auto vertexIndex = [&] {
    if (rawIndices || vertexCount <= 0) return in.Int();
    return static_cast<int>(in.Byte() % vertexCount);
  };
  auto materialIndex = [&] {
    if (rawIndices || materialCount <= 0) return in.Int();
    return static_cast<int>(in.Byte() % materialCount);
  };
  auto conductivity = [&] { return rawConductivities ? in.Double() : 0.25 * (1 + in.Byte()); };

  std::vector<double> coordinates = ReadArray<double>(in, vertexCount, 3, coordinate);
  std::vector<int> tetrahedra = ReadArray<int>(in, tetrahedronCount, 4, vertexIndex);
  std::vector<int> materials = ReadArray<int>(in, tetrahedronCount, 1, materialIndex);
  std::vector<double> conductivities = ReadArray<double>(in, materialCount, 1, conductivity);
  std::vector<int> high = ReadArray<int>(in, highCount, 1, vertexIndex);
  std::vector<int> low = ReadArray<int>(in, lowCount, 1, vertexIndex);
  const std::vector<double> coordinatesBefore = coordinates;
  const std::vector<int> tetrahedraBefore = tetrahedra;

  fuzz::ErrorBuffer error;
  std::vector<char> detail(2000, 'd');
  void const* handle = nullptr;
  const bool nullHandleSlot = in.Byte() == 0xFF;
  int status = 0;
  fuzz::Guarded("poissonmallocvol", fuzz::Lets::kNothing, [&] {
    status = poissonmallocvol(vertexCount, PointerTo(coordinates), tetrahedronCount,
                              PointerTo(tetrahedra), PointerTo(materials), materialCount,
                              PointerTo(conductivities), highCount, PointerTo(high), lowCount,
                              PointerTo(low), tolerance, nullptr, detail.data(),
                              nullHandleSlot ? nullptr : &handle, error.get());
  });
  fuzz::ExpectStatus("poissonmallocvol", status, {0, 21, 22, 23, 24, 25, 30});
  error.Check("poissonmallocvol");
  if (std::find(detail.begin(), detail.end(), 0) == detail.end() &&
      std::find(detail.begin(), detail.end(), 'd') == detail.end())
    fuzz::Finding("poissonmallocvol left its detail text unterminated");
  // Compared as bytes: NaN coordinates never compare equal.
  auto sameBytes = [](const auto& a, const auto& b) {
    return a.size() == b.size() &&
           (a.empty() || std::memcmp(a.data(), b.data(), a.size() * sizeof(a[0])) == 0);
  };
  if (!sameBytes(coordinates, coordinatesBefore) || !sameBytes(tetrahedra, tetrahedraBefore))
    fuzz::Finding("poissonmallocvol changed the caller's arrays");
  if ((status == 0) != (handle != nullptr))
    fuzz::Finding("poissonmallocvol: handle and status disagree");
  if (!handle) return 0;

  void* solver = const_cast<void*>(handle);
  std::vector<double> temperatures(static_cast<std::size_t>(vertexCount), -7.0);
  const int steps = in.Byte() % 8;
  for (int step = 0; step < steps; ++step) {
    const std::uint8_t op = in.Byte();
    const bool nullArgument = (op & 0x80) != 0;
    switch (op % 4) {
      case 0:
        fuzz::Guarded("poissonsolve", fuzz::Lets::kNothing, [&] {
          status = poissonsolve(solver, nullArgument ? nullptr : temperatures.data(), error.get());
        });
        fuzz::ExpectStatus("poissonsolve", status, {0, 1, 30});
        break;
      case 1: {
        double residual = -1.0;
        fuzz::Guarded("poissonresid", fuzz::Lets::kNothing, [&] {
          status = poissonresid(solver, nullArgument ? nullptr : &residual, error.get());
        });
        fuzz::ExpectStatus("poissonresid", status, {0, 1, 30});
        break;
      }
      case 2:
        fuzz::Guarded("poissoninfo", fuzz::Lets::kNothing,
                      [&] { status = poissoninfo(solver, error.get()); });
        fuzz::ExpectStatus("poissoninfo", status, {0, 2});
        break;
      default: {
        // One value per material, as the solver was built with.
        std::vector<double> values(static_cast<std::size_t>(materialCount));
        for (double& k : values)
          k = conductivity();
        fuzz::Guarded("poissonresetconductivities", fuzz::Lets::kNothing, [&] {
          status = poissonresetconductivities(solver, nullArgument ? nullptr : values.data(),
                                              in.Int(), error.get());
        });
        fuzz::ExpectStatus("poissonresetconductivities", status, {0, 1, 23, 24, 30});
        break;
      }
    }
    error.Check("volume solver export");
  }
  poissonfree(solver);
  return 0;
}
