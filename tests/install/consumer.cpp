// Builds a mesh through the installed library and reads it with the openNURBS it brings along.
#include <brindle.h>
#include <opennurbs.h>

#include <cstdio>

int main() {
  const ON_Plane plane = ON_Plane::World_xy;
  ON_Mesh* mesh = nullptr;
  char error[1024];
  if (MakeRectMesh(&plane, 2.0, 1.0, 2, 1, &mesh, error) != 0) {
    std::printf("MakeRectMesh failed: %s\n", error);
    return 1;
  }
  const int vertices = mesh->VertexCount();
  const int faces = mesh->FaceCount();
  delete mesh;
  std::printf("%d vertices, %d triangles\n", vertices, faces);
  return vertices == 6 && faces == 4 ? 0 : 1;
}
