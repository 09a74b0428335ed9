/* A C99 caller of every export: the header compiles as C, and the library links and answers a
 * C program. openNURBS types are opaque here, so the mesh functions are called with null
 * meshes and must refuse them; the volume solver, which takes plain arrays, runs for real. */
#include <math.h>
#include <stdio.h>
#include <string.h>

#include "brindle.h"

static int failures = 0;

static void expect(int condition, const char* what) {
  if (!condition) {
    printf("FAILED: %s\n", what);
    ++failures;
  }
}

/* One tetrahedron with corner 0 held high and corner 1 held low; the other two are free. */
static void solve_one_tetrahedron(void) {
  double coordinates[12] = {0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1};
  int tetrahedra[4] = {0, 1, 2, 3};
  int materials[1] = {0};
  double conductivities[1] = {1.0};
  int high[1] = {0};
  int low[1] = {1};
  double temperatures[4] = {0, 0, 0, 0};
  double residual = -1;
  char error[1024];
  void const* handle = NULL;
  int status = poissonmallocvol(4, coordinates, 1, tetrahedra, materials, 1, conductivities, 1,
                                high, 1, low, 1e-3, NULL, NULL, &handle, error);
  expect(status == 0 && handle != NULL, "poissonmallocvol builds a solver");
  if (!handle) return;
  expect(poissonsolve((void*)handle, temperatures, error) == 0, "poissonsolve");
  expect(temperatures[0] == 20.0 && temperatures[1] == -13.1, "fixed temperatures kept");
  expect(temperatures[2] >= -13.1 && temperatures[2] <= 20.0 && temperatures[3] >= -13.1 &&
             temperatures[3] <= 20.0,
         "free temperatures between the two");
  expect(poissonresid((void*)handle, &residual, error) == 0 && residual >= 0 && residual < 1e-12,
         "poissonresid");
  expect(poissoninfo((void*)handle, error) == 0, "poissoninfo");
  expect(poissonresetconductivities((void*)handle, conductivities, 1, error) == 0,
         "poissonresetconductivities");
  poissonfree((void*)handle);
}

static void refuse_null_meshes(void) {
  char error[1024];
  void* handle = &error;
  ON_Mesh* result = (ON_Mesh*)(void*)error; /* any non-null value: failures clear it */
  double value = 0;
  int count = 0;
  brindle_line_array* isotherms = NULL;
  ON_Plane* plane = NULL;

  expect(sldmMalloc(NULL, NULL, 0, &handle, error) == 25 && handle == NULL, "sldmMalloc null mesh");
  expect(strcmp(error, "Null mesh") == 0, "sldmMalloc message");
  expect(sldmupdate(NULL, &value, 1, error) == -1001, "sldmupdate null handle");
  expect(sldmsolve(NULL, &value, 1, NULL, 0, isotherms, NULL, 0, NULL, NULL, error) == -1001,
         "sldmsolve null handle");
  sldmfree(NULL);
  expect(CutTetrahedralMesh(NULL, &value, 0, 0, 0, NULL, &result, error) == 1 && result == NULL,
         "CutTetrahedralMesh null mesh");
  result = (ON_Mesh*)(void*)error;
  expect(CutTetrahedralMesh2(NULL, &value, 0, 0, 0, NULL, &result, error) == 1 && result == NULL,
         "CutTetrahedralMesh2 null mesh");
  expect(AspectRatios(NULL, &value, error) == 1, "AspectRatios null mesh");
  expect(DihedralAngles(NULL, &value, error) == 1, "DihedralAngles null mesh");
  expect(ExtractBoundaryMeshWithStats(NULL, &count, &count, &count, &result, error) == 1 &&
             result == NULL,
         "ExtractBoundaryMeshWithStats null mesh");
  expect(MakeRectMesh(plane, 1, 1, 1, 1, &result, error) == 3, "MakeRectMesh null plane");
  expect(TrySanitize(NULL, &count, &result, error) == 1, "TrySanitize null mesh");
  expect(qual(NULL, &value, error) == 5, "qual null mesh");
  expect(qualS(NULL, &value, error) == 5, "qualS null mesh");
}

static void colours_and_encodings(void) {
  int red = -1, green = -1, blue = -1;
  float x = 0, y = 0, z = 0;
  HeatColor(0.5, &red, &green, &blue);
  expect(red == 146 && green == 255 && blue == 146, "HeatColor(0.5)");
  expect(encode_integer_to_sphere(1234, &x, &y, &z) == 0, "encode_integer_to_sphere");
  expect(fabs(x * x + y * y + z * z - 1.0) < 1e-5, "encoded vector has unit length");
  expect(decode_integer_from_sphere(x, y, z) == 1234, "decode_integer_from_sphere");
}

static void information_window(void) {
  char error[1024];
  expect(getPoshHandle() == NULL, "getPoshHandle with no window open");
#if defined(_WIN32)
  /* On Windows the call would open a window; here it only has to link. */
  int (*volatile open_window)(void*, char*) = doPoshModal;
  expect(open_window != NULL, "doPoshModal links");
  (void)error;
#else
  expect(doPoshModal(NULL, error) == 1, "doPoshModal elsewhere than on Windows");
#endif
}

int main(void) {
  solve_one_tetrahedron();
  refuse_null_meshes();
  colours_and_encodings();
  information_window();
  if (failures == 0) printf("every export answered as expected\n");
  return failures == 0 ? 0 : 1;
}
