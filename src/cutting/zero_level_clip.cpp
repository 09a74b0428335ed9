#include "cutting/zero_level_clip.h"

#include <cmath>
#include <new>
#include <utility>

#include "common/edge_key.h"
#include "cutting/mesh_archive.h"

namespace brindle {

namespace {

struct Corner {
  int index;
  float value;
};

// Descending order by value; of two equal values the larger vertex index comes first.
bool ComesBefore(const Corner& x, const Corner& y) {
  return x.value > y.value || (x.value == y.value && x.index > y.index);
}

void OrderPair(Corner& first, Corner& second, bool& oddParity) {
  if (ComesBefore(second, first)) {
    std::swap(first, second);
    oddParity = !oddParity;
  }
}

// Five-comparison sorting network; the parity of the permutation tells whether the sorted
// corners still describe the input tetrahedron's orientation.
bool SortCorners(Corner (&c)[4]) {
  bool oddParity = false;
  OrderPair(c[0], c[1], oddParity);
  OrderPair(c[2], c[3], oddParity);
  OrderPair(c[0], c[2], oddParity);
  OrderPair(c[1], c[3], oddParity);
  OrderPair(c[1], c[2], oddParity);
  return oddParity;
}

void MarkRemoved(ON_MeshFace& face) {
  face.vi[0] = face.vi[1] = face.vi[2] = face.vi[3] = -1;
}

}  // namespace

ZeroLevelClip::ZeroLevelClip(const ON_Mesh& mesh, const double* vertexValues) {
  const int vertexCount = mesh.VertexCount();
  values_.resize(static_cast<std::size_t>(vertexCount));
  for (int i = 0; i < vertexCount; ++i)
    values_[i] = static_cast<float>(vertexValues[i]);
  result_.reset(mesh.Duplicate());
  if (!result_) throw std::bad_alloc();
}

int ZeroLevelClip::EdgeVertex(int positive, int negative) {
  const std::uint64_t key = EdgeKey(positive, negative);
  const auto found = edgeVertices_.find(key);
  if (found != edgeVertices_.end()) return found->second;

  const float fp = values_[positive];
  const float fq = values_[negative];
  const float t = fp / (fp - fq);
  const ON_3fPoint a = result_->m_V[positive];
  const ON_3fPoint b = result_->m_V[negative];
  // a + t (b - a), rounded once per step so that the point is reproducible bit for bit.
  const ON_3fPoint point(std::fma(t, b.x, std::fma(-t, a.x, a.x)),
                         std::fma(t, b.y, std::fma(-t, a.y, a.y)),
                         std::fma(t, b.z, std::fma(-t, a.z, a.z)));
  const int index = result_->m_V.Count();
  result_->m_V.Append(point);
  values_.push_back(0.0f);
  edgeVertices_.emplace(key, index);
  return index;
}

void ZeroLevelClip::EmitPieces(int faceIndex, const Tetrahedron* pieces, int count,
                               bool oddParity) {
  for (int k = 0; k < count; ++k) {
    Tetrahedron piece = pieces[k];
    // Sorting by value permuted the corners; an odd permutation is undone by one exchange so
    // that every piece keeps the orientation of the input tetrahedron.
    if (oddParity) std::swap(piece.v[0], piece.v[1]);
    if (k == 0) {
      ON_MeshFace& face = result_->m_F[faceIndex];
      for (int j = 0; j < 4; ++j)
        face.vi[j] = piece.v[j];
    } else {
      extraTetrahedra_.push_back(piece);
    }
  }
}

void ZeroLevelClip::ClipFace(int faceIndex) {
  ON_MeshFace& face = result_->m_F[faceIndex];
  const int vertexCount = static_cast<int>(values_.size());
  for (int j = 0; j < 4; ++j) {
    // A face with an index outside the vertex list is left for Cleanup to remove: it names
    // no tetrahedron and has no values to clip by.
    if (face.vi[j] < 0 || face.vi[j] >= vertexCount) return;
  }

  Corner c[4];
  for (int j = 0; j < 4; ++j)
    c[j] = Corner{face.vi[j], values_[face.vi[j]]};

  if (c[0].value <= 0 && c[1].value <= 0 && c[2].value <= 0 && c[3].value <= 0) return;
  if (c[0].value > 0 && c[1].value > 0 && c[2].value > 0 && c[3].value > 0) {
    MarkRemoved(face);
    return;
  }

  const bool oddParity = SortCorners(c);
  for (const Corner& corner : c) {
    if (!ON_IsValid(static_cast<double>(corner.value))) return;
  }
  const float f1 = c[1].value;
  const float f2 = c[2].value;
  const float f3 = c[3].value;
  if (f3 == 0) {
    MarkRemoved(face);
    return;
  }

  const int p0 = c[0].index, p1 = c[1].index, p2 = c[2].index, p3 = c[3].index;
  // Edge vertices are requested in a fixed order per case so that new vertex numbers do not
  // depend on the evaluation order of function arguments.
  if (f2 > 0) {
    const int e03 = EdgeVertex(p0, p3);
    const int e13 = EdgeVertex(p1, p3);
    const int e23 = EdgeVertex(p2, p3);
    const Tetrahedron pieces[] = {{{e03, e13, e23, p3}}};
    EmitPieces(faceIndex, pieces, 1, oddParity);
  } else if (f1 < 0) {
    const int e01 = EdgeVertex(p0, p1);
    const int e02 = EdgeVertex(p0, p2);
    const int e03 = EdgeVertex(p0, p3);
    const Tetrahedron pieces[] = {{{e01, p1, p2, p3}}, {{e01, p2, e02, p3}}, {{e01, p3, e02, e03}}};
    EmitPieces(faceIndex, pieces, 3, oddParity);
  } else if (f1 > 0 && f2 < 0) {
    const int e02 = EdgeVertex(p0, p2);
    const int e03 = EdgeVertex(p0, p3);
    const int e12 = EdgeVertex(p1, p2);
    const int e13 = EdgeVertex(p1, p3);
    const Tetrahedron pieces[] = {
        {{e02, e12, p2, p3}}, {{e02, e13, e12, p3}}, {{e02, e03, e13, p3}}};
    EmitPieces(faceIndex, pieces, 3, oddParity);
  } else if (f1 == 0 && f2 == 0) {
    const int e03 = EdgeVertex(p0, p3);
    const Tetrahedron pieces[] = {{{e03, p1, p2, p3}}};
    EmitPieces(faceIndex, pieces, 1, oddParity);
  } else if (f1 == 0) {  // f2 < 0
    const int e02 = EdgeVertex(p0, p2);
    const int e03 = EdgeVertex(p0, p3);
    const Tetrahedron pieces[] = {{{e02, p1, p2, p3}}, {{e03, p1, e02, p3}}};
    EmitPieces(faceIndex, pieces, 2, oddParity);
  } else {  // f1 > 0, f2 == 0
    const int e03 = EdgeVertex(p0, p3);
    const int e13 = EdgeVertex(p1, p3);
    const Tetrahedron pieces[] = {{{e03, e13, p2, p3}}};
    EmitPieces(faceIndex, pieces, 1, oddParity);
  }
}

std::unique_ptr<ON_Mesh> ZeroLevelClip::Run() {
  // Tetrahedra appended by the cut are not visited again.
  const int faceCount = result_->FaceCount();
  for (int i = 0; i < faceCount; ++i)
    ClipFace(i);

  result_->m_F.Reserve(static_cast<std::size_t>(faceCount) + extraTetrahedra_.size());
  if (static_cast<std::size_t>(result_->m_F.Capacity()) <
      static_cast<std::size_t>(faceCount) + extraTetrahedra_.size()) {
    throw std::bad_alloc();  // the appends below would drop pieces
  }
  for (const Tetrahedron& t : extraTetrahedra_) {
    ON_MeshFace face;
    for (int j = 0; j < 4; ++j)
      face.vi[j] = t.v[j];
    result_->m_F.Append(face);
  }
  // Removes the faces marked with -1 and pieces that came out flat, then the vertices no
  // tetrahedron uses any more.
  result_->Cleanup(false, true, true);

  // A red channel of 50 is what the surface solver reads as a free vertex.
  const int vertexCount = result_->VertexCount();
  result_->m_C.Reserve(static_cast<std::size_t>(vertexCount));
  if (result_->m_C.Capacity() < vertexCount) throw std::bad_alloc();
  result_->m_C.SetCount(vertexCount);
  const ON_Color freeVertex(50, 50, 50, 0);
  for (int i = 0; i < vertexCount; ++i)
    result_->m_C[i] = freeVertex;

  WriteMeshArchive(*result_, nullptr, 0);
  return std::move(result_);
}

}  // namespace brindle
