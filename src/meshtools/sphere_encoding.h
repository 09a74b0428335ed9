// Integers 0..65534 (and the marker -1) stored as unit vectors, so that a per-face or
// per-vertex normal array can carry small integer tags through file formats that keep only
// normals. The two bytes of the integer become the x and y coordinates on the upper cap of
// the unit sphere; decoding also accepts the negated vector, since normals may be flipped.
#ifndef BRINDLE_MESHTOOLS_SPHERE_ENCODING_H
#define BRINDLE_MESHTOOLS_SPHERE_ENCODING_H

namespace brindle {

// Statuses of encode_integer_to_sphere.
enum SphereEncodingStatus {
  kSphereEncoded = 0,
  kSphereRefused = -1,
};

// The value that travels as both bytes 255.
constexpr int kSphereMarkerValue = -1;
constexpr int kSphereLargestValue = 65534;

// True for the values that have a code: kSphereMarkerValue..kSphereLargestValue.
bool IsSphereEncodable(int value);

// The point of an encodable `value`.
void EncodeIntegerToSphere(int value, float& x, float& y, float& z);

// The value whose point is (x, y, z) or its negation; every input gives some value in
// kSphereMarkerValue..kSphereLargestValue.
int DecodeIntegerFromSphere(float x, float y, float z);

}  // namespace brindle

#endif
