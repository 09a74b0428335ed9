// The library's exports as P/Invoke declarations, one per export, each exactly as the C header
// declares it. Callers outside this assembly use VolumeSolver, SurfaceSolver, MeshTools,
// ColorMap, SphereEncoding and InfoWindow, which check array lengths before calling.
//
// Marshalling rules shared by every declaration:
//  - Library name "brindle": brindle.dll on Windows, libbrindle.so elsewhere (both runtimes add
//    the platform's prefix and suffix). Every export uses the C calling convention.
//  - Numeric arrays (double[], int[]) are blittable: the marshaller pins them and passes a
//    pointer to the first element, without copying, so the library writes straight into output
//    arrays. A null array passes a null pointer. The library is never told an array's length
//    where the C signature has no count, so the caller must size every array for the model.
//  - `char* error` is a byte[] of at least ErrorBuffer.Size (1024) bytes, also pinned; the library
//    writes a zero-terminated ASCII message into it on failure.
//  - ON_Mesh, ON_SimpleArray<ON_Line> and the window handle are native objects, passed as IntPtr.
//    Meshes returned through ON_Mesh** arrive as `out IntPtr`; the host owns them and deletes them
//    with the openNURBS it links (the library has no export to release them).
//  - Solver handles travel as SafeHandle subclasses: the marshaller stores a new handle
//    atomically for `out` parameters and keeps it alive (reference counted) during each call.
using System;
using System.Runtime.InteropServices;

namespace Brindle
{
    internal static class NativeMethods
    {
        internal const string Library = "brindle";

        // ---- Volume conduction solver ----------------------------------------------------------

        // int poissonmallocvol(int vertexCount, double* coordinates, int tetrahedronCount,
        //     int* tetrahedra, int* tetrahedronMaterials, int materialCount,
        //     double* conductivities, int highCount, int* highVertices, int lowCount,
        //     int* lowVertices, double tolerance, int* reserved, char* detail, void const** handle,
        //     char* error)
        // All arrays are read-only inputs (pinned, not copied; the library copies them).
        // `reserved` is never touched: pass IntPtr.Zero. `detail` is a byte[] of DetailSize (2000)
        // bytes that receives the failed mesh check's sentence. `handle` is `out`: the marshaller
        // wraps the returned pointer (null on failure) in a VolumeSolverHandle.
        [DllImport(Library, CallingConvention = CallingConvention.Cdecl, ExactSpelling = true)]
        internal static extern int poissonmallocvol(
            int vertexCount, [In] double[] coordinates, int tetrahedronCount, [In] int[] tetrahedra,
            [In] int[] tetrahedronMaterials, int materialCount, [In] double[] conductivities,
            int highCount, [In] int[] highVertices, int lowCount, [In] int[] lowVertices,
            double tolerance, IntPtr reserved, [Out] byte[] detail, out VolumeSolverHandle handle,
            [Out] byte[] error);

        // int poissonsolve(void* handle, double* temperatures, char* error)
        // `temperatures` receives vertexCount values: it must hold at least that many (the
        // library is not told the length).
        [DllImport(Library, CallingConvention = CallingConvention.Cdecl, ExactSpelling = true)]
        internal static extern int poissonsolve(
            VolumeSolverHandle handle, [Out] double[] temperatures, [Out] byte[] error);

        // int poissonresid(void* handle, double* residual, char* error)
        // `residual` is one double, passed by reference (`out`).
        [DllImport(Library, CallingConvention = CallingConvention.Cdecl, ExactSpelling = true)]
        internal static extern int poissonresid(
            VolumeSolverHandle handle, out double residual, [Out] byte[] error);

        // int poissoninfo(void* handle, char* error)
        [DllImport(Library, CallingConvention = CallingConvention.Cdecl, ExactSpelling = true)]
        internal static extern int poissoninfo(VolumeSolverHandle handle, [Out] byte[] error);

        // int poissonresetconductivities(void* handle, double* conductivities, int count,
        //     char* error)
        // The library reads one value per material of the solver and ignores `count`: the array
        // must hold at least materialCount values.
        [DllImport(Library, CallingConvention = CallingConvention.Cdecl, ExactSpelling = true)]
        internal static extern int poissonresetconductivities(
            VolumeSolverHandle handle, [In] double[] conductivities, int count, [Out] byte[] error);

        // void poissonfree(void* handle)
        // Takes the raw pointer: it is called only from VolumeSolverHandle.ReleaseHandle.
        [DllImport(Library, CallingConvention = CallingConvention.Cdecl, ExactSpelling = true)]
        internal static extern void poissonfree(IntPtr handle);

        // ---- Surface conduction solver ---------------------------------------------------------

        // int sldmMalloc(const ON_Mesh* mesh, const int* faceRegions, int method, void** handle,
        //     char* error)
        // `faceRegions` holds one int per face of the mesh, or is null (every face region 0).
        // `handle` is `out`, wrapped in a SurfaceSolverHandle (null on failure).
        [DllImport(Library, CallingConvention = CallingConvention.Cdecl, ExactSpelling = true)]
        internal static extern int sldmMalloc(
            IntPtr mesh, [In] int[] faceRegions, int method, out SurfaceSolverHandle handle,
            [Out] byte[] error);

        // int sldmupdate(void* handle, const double* conductivities, int count, char* error)
        // `conductivities` holds `count` values, one per region.
        [DllImport(Library, CallingConvention = CallingConvention.Cdecl, ExactSpelling = true)]
        internal static extern int sldmupdate(
            SurfaceSolverHandle handle, [In] double[] conductivities, int count,
            [Out] byte[] error);

        // int sldmsolve(const void* handle, double* temperatures, int temperatureCount,
        //     double* levels, int levelCount, ON_SimpleArray<ON_Line>* isotherms,
        //     double* faceFlux, int faceFluxCount, double* levelFlow, ON_Mesh* fluxMesh,
        //     char* error)
        // Every array travels with its count except `levelFlow`, which receives levelCount
        // values. `isotherms` (ON_SimpleArray<ON_Line>*) and `fluxMesh` (ON_Mesh*) are native
        // objects of the host, or IntPtr.Zero to skip isotherms and flux.
        [DllImport(Library, CallingConvention = CallingConvention.Cdecl, ExactSpelling = true)]
        internal static extern int sldmsolve(
            SurfaceSolverHandle handle, [Out] double[] temperatures, int temperatureCount,
            [In] double[] levels, int levelCount, IntPtr isotherms, [Out] double[] faceFlux,
            int faceFluxCount, [Out] double[] levelFlow, IntPtr fluxMesh, [Out] byte[] error);

        // void sldmfree(void* handle)
        // Raw pointer: called only from SurfaceSolverHandle.ReleaseHandle.
        [DllImport(Library, CallingConvention = CallingConvention.Cdecl, ExactSpelling = true)]
        internal static extern void sldmfree(IntPtr handle);

        // ---- Colour map and integer encodings --------------------------------------------------

        // void HeatColor(double t, int* red, int* green, int* blue)
        // Each channel is one int passed by reference (`out`), so none is ever null.
        [DllImport(Library, CallingConvention = CallingConvention.Cdecl, ExactSpelling = true)]
        internal static extern void HeatColor(double t, out int red, out int green, out int blue);

        // int encode_integer_to_sphere(int value, float* x, float* y, float* z)
        // Each coordinate is one float by reference (`out`), so none is ever null.
        [DllImport(Library, CallingConvention = CallingConvention.Cdecl, ExactSpelling = true)]
        internal static extern int encode_integer_to_sphere(
            int value, out float x, out float y, out float z);

        // int decode_integer_from_sphere(float x, float y, float z)
        // Plain values in and out.
        [DllImport(Library, CallingConvention = CallingConvention.Cdecl, ExactSpelling = true)]
        internal static extern int decode_integer_from_sphere(float x, float y, float z);

        // ---- Level-set cutting -----------------------------------------------------------------

        // int CutTetrahedralMesh(const ON_Mesh* mesh, const double* vertexValues, int keepRef,
        //     double hmin, double hmax, ON_Mesh* interfaceMesh, ON_Mesh** result, char* errorText)
        // `vertexValues` holds one value per double-precision vertex (not checked by the
        // library). `interfaceMesh` is an empty host mesh or IntPtr.Zero. `result` is `out`: a
        // new native mesh owned by the caller, IntPtr.Zero on failure.
        [DllImport(Library, CallingConvention = CallingConvention.Cdecl, ExactSpelling = true)]
        internal static extern int CutTetrahedralMesh(
            IntPtr mesh, [In] double[] vertexValues, int keepRef, double hmin, double hmax,
            IntPtr interfaceMesh, out IntPtr result, [Out] byte[] errorText);

        // int CutTetrahedralMesh2(const ON_Mesh* mesh, const double* vertexValues, int keepRef,
        //     double hmin, double hmax, ON_Mesh* interfaceMesh, ON_Mesh** result, char* errorText)
        // As CutTetrahedralMesh; `vertexValues` holds one value per single-precision vertex.
        [DllImport(Library, CallingConvention = CallingConvention.Cdecl, ExactSpelling = true)]
        internal static extern int CutTetrahedralMesh2(
            IntPtr mesh, [In] double[] vertexValues, int keepRef, double hmin, double hmax,
            IntPtr interfaceMesh, out IntPtr result, [Out] byte[] errorText);

        // ---- Element quality, boundary extraction, generation and sanitising -------------------

        // int AspectRatios(const ON_Mesh* mesh, double* ratios, char* error)
        // `ratios` receives FaceCount() values.
        [DllImport(Library, CallingConvention = CallingConvention.Cdecl, ExactSpelling = true)]
        internal static extern int AspectRatios(
            IntPtr mesh, [Out] double[] ratios, [Out] byte[] error);

        // int DihedralAngles(const ON_Mesh* mesh, double* angles, char* error)
        // `angles` receives 6 * FaceCount() values.
        [DllImport(Library, CallingConvention = CallingConvention.Cdecl, ExactSpelling = true)]
        internal static extern int DihedralAngles(
            IntPtr mesh, [Out] double[] angles, [Out] byte[] error);

        // int ExtractBoundaryMeshWithStats(const ON_Mesh* tetrahedra, int* boundary_count,
        //     int* interior_count, int* over_shared_count, ON_Mesh** result, char* error)
        // The three counts are single ints by reference (`out`); `result` as in the cuts.
        [DllImport(Library, CallingConvention = CallingConvention.Cdecl, ExactSpelling = true)]
        internal static extern int ExtractBoundaryMeshWithStats(
            IntPtr tetrahedra, out int boundaryCount, out int interiorCount,
            out int overSharedCount, out IntPtr result, [Out] byte[] error);

        // int MakeRectMesh(const ON_Plane* plane, double width, double height, int nx, int ny,
        //     ON_Mesh** result, char* error)
        // `plane` is the blittable Plane struct (the 16 doubles of ON_Plane), passed by
        // reference and only read. `result` as in the cuts.
        [DllImport(Library, CallingConvention = CallingConvention.Cdecl, ExactSpelling = true)]
        internal static extern int MakeRectMesh(
            [In] ref Plane plane, double width, double height, int nx, int ny, out IntPtr result,
            [Out] byte[] error);

        // int TrySanitize(const ON_Mesh* mesh, int* error_code, ON_Mesh** result, char* error)
        // `error_code` is one int by reference (`ref`: left as set by the caller on success).
        [DllImport(Library, CallingConvention = CallingConvention.Cdecl, ExactSpelling = true)]
        internal static extern int TrySanitize(
            IntPtr mesh, ref int errorCode, out IntPtr result, [Out] byte[] error);

        // int qual(const ON_Mesh* mesh, double* quality, char* errorText)
        // `quality` receives FaceCount() values.
        [DllImport(Library, CallingConvention = CallingConvention.Cdecl, ExactSpelling = true)]
        internal static extern int qual(
            IntPtr mesh, [Out] double[] quality, [Out] byte[] errorText);

        // int qualS(const ON_Mesh* mesh, double* quality, char* errorText)
        // `quality` receives FaceCount() values.
        [DllImport(Library, CallingConvention = CallingConvention.Cdecl, ExactSpelling = true)]
        internal static extern int qualS(
            IntPtr mesh, [Out] double[] quality, [Out] byte[] errorText);

        // ---- Information window ----------------------------------------------------------------

        // int doPoshModal(void* ownerWindow, char* error)
        // `ownerWindow` is an HWND as IntPtr (IntPtr.Zero for an unowned window).
        [DllImport(Library, CallingConvention = CallingConvention.Cdecl, ExactSpelling = true)]
        internal static extern int doPoshModal(IntPtr ownerWindow, [Out] byte[] error);

        // void* getPoshHandle(void)
        // The window's HWND, IntPtr.Zero when it is not open.
        [DllImport(Library, CallingConvention = CallingConvention.Cdecl, ExactSpelling = true)]
        internal static extern IntPtr getPoshHandle();
    }
}
