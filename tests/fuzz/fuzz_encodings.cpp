// The colour ramp and the integer-in-unit-vector encodings on any values, with the round trip
// of every encodable integer checked.
#include <cmath>
#include <cstdint>

#include "brindle.h"
#include "fuzz_bytes.h"
#include "fuzz_checks.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::ByteReader in(data, size);
  const std::uint8_t nulls = in.Byte();

  const double t = in.Double();
  int rgb[3] = {-1, -1, -1};
  HeatColor(t, (nulls & 1) ? nullptr : &rgb[0], (nulls & 2) ? nullptr : &rgb[1],
            (nulls & 4) ? nullptr : &rgb[2]);
  for (int c = 0; c < 3; ++c) {
    const bool skipped = (nulls >> c) & 1;
    if (skipped ? rgb[c] != -1 : (rgb[c] < 0 || rgb[c] > 255))
      fuzz::Finding("HeatColor wrote a channel outside 0..255 or through a null pointer");
  }

  const int value = in.Int();
  float xyz[3] = {2.0f, 2.0f, 2.0f};
  const int status =
      encode_integer_to_sphere(value, (nulls & 8) ? nullptr : &xyz[0],
                               (nulls & 16) ? nullptr : &xyz[1], (nulls & 32) ? nullptr : &xyz[2]);
  fuzz::ExpectStatus("encode_integer_to_sphere", status, {0, -1});
  const bool encodable = value >= -1 && value <= 65534;
  if ((status == 0) != (encodable && (nulls & 56) == 0))
    fuzz::Finding("encode_integer_to_sphere status disagrees with its arguments");
  if (status == 0) {
    const double length = std::sqrt(xyz[0] * xyz[0] + xyz[1] * xyz[1] + xyz[2] * xyz[2]);
    if (!(std::fabs(length - 1.0) < 1e-5)) fuzz::Finding("encoded vector is not a unit vector");
    if (decode_integer_from_sphere(xyz[0], xyz[1], xyz[2]) != value ||
        decode_integer_from_sphere(-xyz[0], -xyz[1], -xyz[2]) != value)
      fuzz::Finding("decoding does not give back the encoded integer");
  }

  const int decoded = decode_integer_from_sphere(in.Float(), in.Float(), in.Float());
  if (decoded < -1 || decoded > 65534) fuzz::Finding("decoded integer out of -1..65534");
  return 0;
}
