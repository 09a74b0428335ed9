using System;

namespace Brindle
{
    /// <summary>
    /// Element formulations of the surface solver; all give the same Laplace operator.
    /// </summary>
    public enum SurfaceMethod
    {
        /// <summary>
        /// Gradient form; writes a "Conductivity" trace line per face to standard output.
        /// </summary>
        Gradient = 0,

        /// <summary>
        /// Edge cotangents, harmonic mean of the conductivities across region edges.
        /// </summary>
        EdgeCotangents = 1,

        /// <summary>Per-vertex rows of cotangent weights.</summary>
        VertexCotangents = 2,

        /// <summary>Edge-vector form.</summary>
        EdgeVectors = 3,
    }

    /// <summary>
    /// Steady heat conduction on a triangle ON_Mesh of the host whose vertex colours carry the
    /// boundary conditions (red 39: 0.0, red 245: 0.5, red 255: 1.0, any other red: free) and whose
    /// faces belong to conductivity regions, each starting at conductivity 1.0.
    ///
    /// The library cannot be asked how many vertices and faces a native mesh has, so the host
    /// passes the counts it reads from its own mesh object; every array is checked against them.
    /// The mesh is read during construction only; the host keeps owning it.
    ///
    /// Two failures of the library leave as native C++ exceptions, which no .NET runtime can
    /// catch: method EdgeCotangents on a mesh with non-triangle faces, and a solve whose residual
    /// exceeds 1e-8. Use another method for meshes that were not checked, and keep meshes well
    /// shaped.
    /// </summary>
    public sealed class SurfaceSolver : IDisposable
    {
        private readonly SurfaceSolverHandle handle;

        /// <summary>Checks the mesh, builds the solver and factorises it.</summary>
        /// <param name="mesh">A native ON_Mesh* owned by the host.</param>
        /// <param name="vertexCount">The mesh's vertex count.</param>
        /// <param name="faceCount">The mesh's face count.</param>
        /// <param name="faceRegions">
        /// One region number (>= 0) per face, or null for region 0.
        /// </param>
        /// <param name="method">The element formulation.</param>
        /// <exception cref="ArgumentException">
        /// faceRegions does not hold faceCount values.
        /// </exception>
        /// <exception cref="BrindleException">
        /// The library refused the mesh or the method.
        /// </exception>
        public SurfaceSolver(IntPtr mesh, int vertexCount, int faceCount, int[] faceRegions,
                             SurfaceMethod method = SurfaceMethod.EdgeVectors)
        {
            ArrayChecks.NotNegative(vertexCount, "vertexCount");
            ArrayChecks.NotNegative(faceCount, "faceCount");
            if (faceRegions != null)
                ArrayChecks.Exactly(faceRegions, faceCount, "faceRegions", "one per face");
            VertexCount = vertexCount;
            FaceCount = faceCount;
            RegionCount = CountRegions(faceRegions);

            byte[] error = ErrorBuffer.New();
            int status =
                NativeMethods.sldmMalloc(mesh, faceRegions, (int)method, out handle, error);
            if (status != 0)
            {
                handle.Dispose();
                ErrorBuffer.Check("sldmMalloc", status, error);
            }
            // The solver's copy of the mesh, its matrices and their factor.
            handle.AddPressure(200L * (vertexCount + faceCount));
        }

        public int VertexCount { get; }
        public int FaceCount { get; }

        /// <summary>Largest region number plus one (1 without regions).</summary>
        public int RegionCount { get; }

        /// <summary>The native handle, for callers that need the raw exports.</summary>
        public SurfaceSolverHandle Handle
        {
            get { return handle; }
        }

        /// <summary>
        /// Replaces the region conductivities (exactly RegionCount values) and refactorises.
        /// An assembly failure (22, 23, 24, 128, 2025, no message) keeps the new values but the
        /// previous factorisation stays in use.
        /// </summary>
        public void Update(double[] conductivities)
        {
            ArrayChecks.Exactly(conductivities, RegionCount, "conductivities", "one per region");
            byte[] error = ErrorBuffer.New();
            ErrorBuffer.Check("sldmupdate",
                              NativeMethods.sldmupdate(handle, conductivities,
                                                       conductivities.Length, error),
                              error);
        }

        /// <summary>
        /// Solves and returns the temperature of every vertex in the mesh's order.
        /// </summary>
        public double[] Solve()
        {
            double[] temperatures = new double[VertexCount];
            Solve(temperatures, null, IntPtr.Zero, null, IntPtr.Zero, null);
            return temperatures;
        }

        /// <summary>
        /// Solves with the optional outputs: isotherms at `levels` appended to the host's
        /// ON_SimpleArray&lt;ON_Line&gt;* `isotherms` with the heat flow across each level in
        /// `levelFlow` (one per level), and face flux (three values per face in `faceFlux`) with
        /// the flux-coloured faces added to the host's empty ON_Mesh* `fluxMesh`. The library
        /// computes these only when `levelFlow` is given too; pass null / IntPtr.Zero to skip.
        /// </summary>
        public void Solve(double[] temperatures, double[] levels, IntPtr isotherms,
                          double[] faceFlux, IntPtr fluxMesh, double[] levelFlow)
        {
            ArrayChecks.Exactly(temperatures, VertexCount, "temperatures", "one per vertex");
            if (faceFlux != null)
                ArrayChecks.Exactly(faceFlux, 3 * FaceCount, "faceFlux", "three per face");
            int levelCount = levels == null ? 0 : levels.Length;
            // The library writes levelFlow[i] for every level; an empty array might reach it as
            // a null pointer, which would switch the flux off.
            if (levelFlow != null)
                ArrayChecks.AtLeast(levelFlow, Math.Max(levelCount, 1), "levelFlow",
                                    "one per level, and at least one");
            byte[] error = ErrorBuffer.New();
            int status = NativeMethods.sldmsolve(
                handle, temperatures, temperatures.Length, levels, levelCount, isotherms, faceFlux,
                faceFlux == null ? 0 : faceFlux.Length, levelFlow, fluxMesh, error);
            ErrorBuffer.Check("sldmsolve", status, error);
        }

        /// <summary>
        /// Releases the native solver; later calls throw ObjectDisposedException.
        /// </summary>
        public void Dispose()
        {
            handle.Dispose();
        }

        private static int CountRegions(int[] faceRegions)
        {
            int largest = 0;
            if (faceRegions != null)
                foreach (int region in faceRegions) largest = Math.Max(largest, region);
            return largest + 1;
        }
    }
}
