using System;

namespace Brindle
{
    /// <summary>Triangle counts of a tetrahedral mesh's faces, from ExtractBoundaryMesh.</summary>
    public struct BoundaryStatistics
    {
        /// <summary>Triangles of exactly one tetrahedron: the boundary.</summary>
        public int Boundary;

        /// <summary>Triangles shared by two tetrahedra.</summary>
        public int Interior;

        /// <summary>Triangles shared by three or more tetrahedra (a broken mesh).</summary>
        public int OverShared;
    }

    /// <summary>
    /// Mesh functions over the host's native meshes.
    ///
    /// Meshes travel as IntPtr to a native ON_Mesh. Input meshes stay the host's. Every returned
    /// IntPtr is a new ON_Mesh allocated with C++ `new` that the host owns from then on: it wraps
    /// it in its own mesh type or deletes it with the openNURBS it links. The library has no
    /// export to release a mesh, and the garbage collector does not know about it.
    ///
    /// The library cannot be asked how many vertices or faces a native mesh has, so functions
    /// with per-vertex or per-face arrays take the count the host reads from its own mesh object
    /// and check the arrays (or size the results) with it.
    /// </summary>
    public static class MeshTools
    {
        /// <summary>
        /// Splits `mesh` (tetrahedra as quad faces, or triangles only) along the zero level of
        /// `vertexValues` (exactly `vertexCount` values, one per double-precision vertex).
        /// Elements get reference 2 on the positive side and 3 on the negative side; `keepRef`
        /// 2 or 3 keeps one side, 0 both. `interfaceMesh` (volume meshes only) is an empty host
        /// mesh that receives the triangles between the sides, or IntPtr.Zero.
        /// Returns a new mesh owned by the host.
        /// </summary>
        public static IntPtr CutTetrahedralMesh(IntPtr mesh, int vertexCount, double[] vertexValues,
                                                int keepRef, double hmax,
                                                IntPtr interfaceMesh = default(IntPtr))
        {
            ArrayChecks.Exactly(vertexValues, vertexCount, "vertexValues", "one per vertex");
            byte[] error = ErrorBuffer.New();
            IntPtr result;
            // hmin has no effect in the library (hmax overrides it); hmax is passed for both.
            int status = NativeMethods.CutTetrahedralMesh(mesh, vertexValues, keepRef, hmax, hmax,
                                                          interfaceMesh, out result, error);
            ErrorBuffer.Check("CutTetrahedralMesh", status, error);
            return result;
        }

        /// <summary>
        /// Clips the tetrahedra of `mesh` (quad faces) to the side where `vertexValues` (exactly
        /// `vertexCount` values, one per single-precision vertex) is at most 0, without
        /// remeshing. Returns a new mesh owned by the host.
        /// </summary>
        public static IntPtr ClipTetrahedralMesh(IntPtr mesh, int vertexCount,
                                                 double[] vertexValues)
        {
            ArrayChecks.Exactly(vertexValues, vertexCount, "vertexValues", "one per vertex");
            byte[] error = ErrorBuffer.New();
            IntPtr result;
            int status = NativeMethods.CutTetrahedralMesh2(mesh, vertexValues, 0, 0.0, 0.0,
                                                           IntPtr.Zero, out result, error);
            ErrorBuffer.Check("CutTetrahedralMesh2", status, error);
            return result;
        }

        /// <summary>
        /// Aspect ratio of every face read as a tetrahedron (sqrt(6)/2 when regular).
        /// </summary>
        public static double[] AspectRatios(IntPtr mesh, int faceCount)
        {
            return PerFace(mesh, faceCount, 1, NativeMethods.AspectRatios, "AspectRatios");
        }

        /// <summary>
        /// The six interior dihedral angles (radians) of every face read as a tetrahedron, edges
        /// (0,1), (0,2), (0,3), (1,2), (1,3), (2,3): angles[6 i + j] is edge j of face i.
        /// </summary>
        public static double[] DihedralAngles(IntPtr mesh, int faceCount)
        {
            return PerFace(mesh, faceCount, 6, NativeMethods.DihedralAngles, "DihedralAngles");
        }

        /// <summary>
        /// Volume element quality of every face read as a tetrahedron (1 when regular).
        /// </summary>
        public static double[] TetrahedronQuality(IntPtr mesh, int faceCount)
        {
            return PerFace(mesh, faceCount, 1, NativeMethods.qual, "qual");
        }

        /// <summary>
        /// Surface element quality of every face's triangle (1 when equilateral).
        /// </summary>
        public static double[] TriangleQuality(IntPtr mesh, int faceCount)
        {
            return PerFace(mesh, faceCount, 1, NativeMethods.qualS, "qualS");
        }

        /// <summary>
        /// The triangles of the tetrahedral mesh `tetrahedra` that belong to exactly one
        /// tetrahedron, as a new mesh owned by the host, with the counts of boundary, interior
        /// and over-shared triangles.
        /// </summary>
        public static IntPtr ExtractBoundaryMesh(IntPtr tetrahedra,
                                                 out BoundaryStatistics statistics)
        {
            byte[] error = ErrorBuffer.New();
            IntPtr result;
            int status = NativeMethods.ExtractBoundaryMeshWithStats(
                tetrahedra, out statistics.Boundary, out statistics.Interior,
                out statistics.OverShared, out result, error);
            ErrorBuffer.Check("ExtractBoundaryMeshWithStats", status, error);
            return result;
        }

        /// <summary>
        /// A flat width x height rectangle centred on the plane's origin, nx x ny cells of two
        /// triangles, coloured for SurfaceSolver: the first row held at 0, the last at 1. It has
        /// (nx + 1)(ny + 1) vertices and 2 nx ny faces. Returns a new mesh owned by the host.
        /// </summary>
        public static IntPtr MakeRectMesh(Plane plane, double width, double height, int nx, int ny)
        {
            byte[] error = ErrorBuffer.New();
            IntPtr result;
            int status = NativeMethods.MakeRectMesh(ref plane, width, height, nx, ny, out result,
                                                    error);
            ErrorBuffer.Check("MakeRectMesh", status, error);
            return result;
        }

        /// <summary>
        /// A copy of `mesh` with both vertex precisions filled, after checking that it has one
        /// face type and agreeing vertex lists. Returns a new mesh owned by the host.
        /// </summary>
        public static IntPtr Sanitize(IntPtr mesh)
        {
            byte[] error = ErrorBuffer.New();
            int code = 0;
            IntPtr result;
            int status = NativeMethods.TrySanitize(mesh, ref code, out result, error);
            ErrorBuffer.Check("TrySanitize", status, error);
            return result;
        }

        private delegate int PerFaceExport(IntPtr mesh, double[] values, byte[] error);

        private static double[] PerFace(IntPtr mesh, int faceCount, int perFace,
                                        PerFaceExport export, string name)
        {
            ArrayChecks.NotNegative(faceCount, "faceCount");
            // Never an empty array: the library refuses a null output when the mesh has faces,
            // and a zero face count the host got wrong must not let it write through a null.
            double[] values = new double[Math.Max(faceCount * perFace, 1)];
            byte[] error = ErrorBuffer.New();
            ErrorBuffer.Check(name, export(mesh, values, error), error);
            if (values.Length == faceCount * perFace) return values;
            return new double[0];
        }
    }
}
