// The byte layout shared by the fuzz harnesses and the seed generator: a reader that takes
// little-endian values from the front of the input (zeros once it runs out) and the matching
// writer, plus the mesh encoding that the surface, cutting and mesh-tool harnesses read.
#ifndef BRINDLE_TESTS_FUZZ_FUZZ_BYTES_H
#define BRINDLE_TESTS_FUZZ_FUZZ_BYTES_H

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#include "opennurbs.h"

namespace fuzz {

class ByteReader {
 public:
  ByteReader(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}

  std::uint8_t Byte() { return pos_ < size_ ? data_[pos_++] : 0; }
  bool Flag() { return (Byte() & 1) != 0; }
  std::uint16_t U16() {
    const std::uint16_t low = Byte();
    return static_cast<std::uint16_t>(low | (Byte() << 8));
  }
  std::int32_t Int() { return static_cast<std::int32_t>(Raw<std::uint32_t>()); }
  double Double() { return Raw<double>(); }
  float Float() { return Raw<float>(); }
  std::size_t Remaining() const { return size_ - pos_; }

 private:
  template <class T>
  T Raw() {
    std::uint8_t bytes[sizeof(T)];
    for (std::uint8_t& b : bytes)
      b = Byte();
    T value;
    std::memcpy(&value, bytes, sizeof(T));
    return value;
  }

  const std::uint8_t* data_;
  std::size_t size_;
  std::size_t pos_ = 0;
};

class ByteWriter {
 public:
  void Byte(std::uint8_t b) { bytes.push_back(b); }
  void Flag(bool b) { Byte(b ? 1 : 0); }
  void U16(std::uint16_t v) {
    Byte(static_cast<std::uint8_t>(v & 0xFF));
    Byte(static_cast<std::uint8_t>(v >> 8));
  }
  void Int(std::int32_t v) { Raw(static_cast<std::uint32_t>(v)); }
  void Double(double v) { Raw(v); }
  void Float(float v) { Raw(v); }

  std::vector<std::uint8_t> bytes;

 private:
  template <class T>
  void Raw(T value) {
    std::uint8_t b[sizeof(T)];
    std::memcpy(b, &value, sizeof(T));
    bytes.insert(bytes.end(), b, b + sizeof(T));
  }
};

// Mesh encoding. A flags byte, the vertex and face counts (16 bits each, taken modulo 4096), then
// per vertex its coordinates, per face its kind and indices, and per vertex its colour when colours
// are on.
enum MeshFlags : std::uint8_t {
  kRawCoordinates = 1,  // three doubles per vertex, else three signed bytes
  kRawIndices = 2,      // ints as they come, else 16-bit indices
  kWithColors = 4,     // one colour per vertex
  kSingleOnly = 8,      // single-precision vertices only
  kExtraSingle = 16,    // one more single-precision vertex than double-precision ones
  kExtraColor = 32,    // one colour too many
  kMixedFaces = 64,     // a kind byte per face (odd: quad), else the kind of kAllQuads
  kAllQuads = 128,      // every face a quad (tetrahedron), else triangles
};

constexpr int kMeshSizeLimit = 4096;

// Colour of a vertex from one byte: the three held reds, or any other colour.
inline ON_Color ColorFromByte(std::uint8_t b) {
  switch (b & 3) {
    case 0:
      return ON_Color(39, 168, 247);
    case 1:
      return ON_Color(245, 1, 2);
    case 2:
      return ON_Color(255, 129, 129);
    default:
      return ON_Color(b, 50, 50);
  }
}

// Reads a mesh in the encoding above. Out-of-range, negative and repeated indices, NaN and
// infinite coordinates and mismatched vertex lists all pass through as the bytes say.
inline void ReadMesh(ByteReader& in, ON_Mesh& mesh) {
  const std::uint8_t flags = in.Byte();
  // At most 4095 vertices and faces: inputs are a few kilobytes, so larger meshes would be
  // zero padding that costs time and reaches nothing new.
  const int vertexCount = in.U16() % kMeshSizeLimit;
  const int faceCount = in.U16() % kMeshSizeLimit;
  for (int v = 0; v < vertexCount; ++v) {
    ON_3dPoint p;
    if (flags & kRawCoordinates) {
      p = ON_3dPoint(in.Double(), in.Double(), in.Double());
    } else {
      const auto x = static_cast<std::int8_t>(in.Byte());
      const auto y = static_cast<std::int8_t>(in.Byte());
      const auto z = static_cast<std::int8_t>(in.Byte());
      p = ON_3dPoint(x, y, z);
    }
    if (!(flags & kSingleOnly)) mesh.m_dV.Append(p);
    mesh.m_V.Append(ON_3fPoint(p));
  }
  if (flags & kExtraSingle) mesh.m_V.Append(ON_3fPoint(0.5f, 0.25f, 0.125f));
  for (int f = 0; f < faceCount; ++f) {
    bool quad = (flags & kAllQuads) != 0;
    if (flags & kMixedFaces) quad = in.Flag();
    ON_MeshFace face;
    for (int c = 0; c < (quad ? 4 : 3); ++c)
      face.vi[c] = (flags & kRawIndices) ? in.Int() : in.U16();
    if (!quad) face.vi[3] = face.vi[2];
    mesh.m_F.Append(face);
  }
  if (flags & kWithColors) {
    for (int v = 0; v < vertexCount; ++v)
      mesh.m_C.Append(ColorFromByte(in.Byte()));
    if (flags & kExtraColor) mesh.m_C.Append(ON_Color(1, 2, 3));
  }
}

// The writer's side of ReadMesh, for seeds: double-precision points, faces of three or four
// indices (a fourth index equal to the third still makes a triangle), optional colour bytes.
struct SeedMesh {
  std::vector<ON_3dPoint> points;
  std::vector<std::vector<int>> faces;
  std::vector<std::uint8_t> colors;  // empty: no colours
};

inline void WriteMesh(ByteWriter& out, const SeedMesh& mesh) {
  bool anyQuad = false, anyTriangle = false, smallCoordinates = true;
  for (const auto& face : mesh.faces)
    (face.size() == 4 ? anyQuad : anyTriangle) = true;
  for (const ON_3dPoint& p : mesh.points) {
    for (int a = 0; a < 3; ++a)
      smallCoordinates = smallCoordinates && p[a] == static_cast<std::int8_t>(p[a]);
  }
  std::uint8_t flags = 0;
  if (!smallCoordinates) flags |= kRawCoordinates;
  if (!mesh.colors.empty()) flags |= kWithColors;
  if (anyQuad && anyTriangle) flags |= kMixedFaces;
  if (anyQuad && !anyTriangle) flags |= kAllQuads;
  out.Byte(flags);
  out.U16(static_cast<std::uint16_t>(mesh.points.size()));
  out.U16(static_cast<std::uint16_t>(mesh.faces.size()));
  for (const ON_3dPoint& p : mesh.points) {
    for (int a = 0; a < 3; ++a) {
      if (flags & kRawCoordinates)
        out.Double(p[a]);
      else
        out.Byte(static_cast<std::uint8_t>(static_cast<std::int8_t>(p[a])));
    }
  }
  for (const auto& face : mesh.faces) {
    if (flags & kMixedFaces) out.Flag(face.size() == 4);
    for (int c = 0; c < static_cast<int>(face.size()); ++c)
      out.U16(static_cast<std::uint16_t>(face[c]));
  }
  for (std::uint8_t c : mesh.colors)
    out.Byte(c);
}

}  // namespace fuzz

#endif
