#include "meshtools/rect_mesh.h"

#include <climits>
#include <new>

#include "common/boundary_status.h"

namespace brindle {
namespace {

// Boundary status of grid row j of ny: held at 0 at the bottom, at 1 at the top, free between.
int RowStatus(int j, int ny) {
  if (j == 0) return kBoundaryLow;
  if (j == ny) return kBoundaryHigh;
  return kBoundaryInterior;
}

// openNURBS arrays report a failed reservation only through their capacity, and a later append
// would then write through a null buffer, so every array the build fills is reserved in full
// here and checked.
template <class T>
void ReserveOrThrow(ON_SimpleArray<T>& array, std::size_t capacity) {
  array.Reserve(capacity);
  if (static_cast<std::size_t>(array.Capacity()) < capacity) throw std::bad_alloc();
}

void ReserveGridArrays(int nx, int ny, ON_Mesh& mesh) {
  const std::size_t vertexCount = static_cast<std::size_t>(nx + 1) * (ny + 1);
  const std::size_t triangleCount = 2 * static_cast<std::size_t>(nx) * ny;
  ReserveOrThrow(mesh.m_dV, vertexCount);
  ReserveOrThrow(mesh.m_V, vertexCount);
  ReserveOrThrow(mesh.m_C, vertexCount);
  ReserveOrThrow(mesh.m_N, vertexCount);
  ReserveOrThrow(mesh.m_F, triangleCount);
  ReserveOrThrow(mesh.m_FN, triangleCount);
}

void AppendGridVertices(const ON_Plane& plane, double width, double height, int nx, int ny,
                        ON_Mesh& mesh) {
  const double x0 = width * -0.5;
  const double y0 = height * -0.5;
  const double dx = width / nx;
  const double dy = height / ny;
  for (int j = 0; j <= ny; ++j) {
    const ON_Color color = BoundaryStatusColor(RowStatus(j, ny));
    const double v = j * dy + y0;
    for (int i = 0; i <= nx; ++i) {
      const double u = i * dx + x0;
      mesh.m_dV.Append(plane.PointAt(u, v));
      mesh.m_C.Append(color);
    }
  }
}

// Counter-clockwise seen from the side the plane's normal points to.
void AppendGridQuads(int nx, int ny, ON_Mesh& mesh) {
  for (int r = 0; r < ny; ++r) {
    for (int c = 0; c < nx; ++c) {
      const int k = r * (nx + 1) + c;
      ON_MeshFace& quad = mesh.m_F.AppendNew();
      quad.vi[0] = k;
      quad.vi[1] = k + 1;
      quad.vi[2] = k + nx + 2;
      quad.vi[3] = k + nx + 1;
    }
  }
}

}  // namespace

bool IsValidRectangle(double width, double height, int nx, int ny) {
  // Written so that NaN sizes fail too.
  if (!(width > 0.0) || !(height > 0.0) || nx < 1 || ny < 1) return false;
  const long long vertices = (static_cast<long long>(nx) + 1) * (static_cast<long long>(ny) + 1);
  const long long triangles = 2 * static_cast<long long>(nx) * ny;
  return vertices <= INT_MAX && triangles <= INT_MAX;
}

std::unique_ptr<ON_Mesh> BuildRectMesh(const ON_Plane& plane, double width, double height, int nx,
                                       int ny) {
  auto mesh = std::make_unique<ON_Mesh>();
  ReserveGridArrays(nx, ny, *mesh);
  AppendGridVertices(plane, width, height, nx, ny, *mesh);
  mesh->UpdateSinglePrecisionVertices();
  AppendGridQuads(nx, ny, *mesh);
  // Only the mesh itself is checked afterwards; the individual results do not matter.
  mesh->CombineIdenticalVertices(false, false);
  mesh->ConvertQuadsToTriangles();
  mesh->ComputeFaceNormals();
  mesh->ComputeVertexNormals();
  mesh->Compact();
  return mesh;
}

}  // namespace brindle
