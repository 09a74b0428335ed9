using System;

namespace Brindle
{
    /// <summary>
    /// Steady heat conduction on linear tetrahedra. Vertices in the high list are held at
    /// HighTemperature, those in the low list at LowTemperature, a vertex in both lists at
    /// BothSidesTemperature; every other vertex is solved for. The library writes progress traces
    /// to standard output.
    /// </summary>
    public sealed class VolumeSolver : IDisposable
    {
        public const double HighTemperature = 20.0;
        public const double LowTemperature = -13.1;
        public const double BothSidesTemperature = 3.45;

        private readonly VolumeSolverHandle handle;

        /// <summary>
        /// Builds, checks and prepares a solver. Array lengths define the model: coordinates holds
        /// x, y, z per vertex, tetrahedra four 0-based vertex indices per tetrahedron,
        /// tetrahedronMaterials one material index per tetrahedron and conductivities one value
        /// per material; the boundary lists (null means empty) hold vertex indices. tolerance is
        /// the document tolerance of the sliver test.
        /// </summary>
        /// <exception cref="ArgumentException">An array does not fit the model.</exception>
        /// <exception cref="BrindleException">
        /// The library refused the input (21 "Error with input data"), a mesh check failed (22-25,
        /// the check's sentence in Detail) or memory ran out (30).
        /// </exception>
        public VolumeSolver(double[] coordinates, int[] tetrahedra, int[] tetrahedronMaterials,
                            double[] conductivities, int[] highVertices, int[] lowVertices,
                            double tolerance)
        {
            VertexCount = ArrayChecks.Groups(coordinates, 3, "coordinates", "vertex");
            TetrahedronCount = ArrayChecks.Groups(tetrahedra, 4, "tetrahedra", "tetrahedron");
            ArrayChecks.Exactly(tetrahedronMaterials, TetrahedronCount, "tetrahedronMaterials",
                                "one per tetrahedron");
            ArrayChecks.NotNull(conductivities, "conductivities");
            MaterialCount = conductivities.Length;
            highVertices = highVertices ?? new int[0];
            lowVertices = lowVertices ?? new int[0];

            byte[] detail = new byte[ErrorBuffer.DetailSize];
            byte[] error = ErrorBuffer.New();
            int status = NativeMethods.poissonmallocvol(
                VertexCount, coordinates, TetrahedronCount, tetrahedra, tetrahedronMaterials,
                MaterialCount, conductivities, highVertices.Length, highVertices,
                lowVertices.Length, lowVertices, tolerance, IntPtr.Zero, detail, out handle,
                error);
            if (status != 0)
            {
                handle.Dispose();  // null on failure; disposing marks it closed
                ErrorBuffer.Check("poissonmallocvol", status, error, detail);
            }
            // Matrix rows, preconditioner and work vectors: about 80 bytes per vertex and per
            // tetrahedron (measured: ~104 kB for 343 vertices and 1296 tetrahedra).
            handle.AddPressure(80L * (VertexCount + TetrahedronCount));
        }

        public int VertexCount { get; }
        public int TetrahedronCount { get; }
        public int MaterialCount { get; }

        /// <summary>The native handle, for callers that need the raw exports.</summary>
        public VolumeSolverHandle Handle
        {
            get { return handle; }
        }

        /// <summary>Solves and returns one temperature per vertex.</summary>
        public double[] Solve()
        {
            double[] temperatures = new double[VertexCount];
            Solve(temperatures);
            return temperatures;
        }

        /// <summary>Solves into a caller array of exactly VertexCount values.</summary>
        public void Solve(double[] temperatures)
        {
            ArrayChecks.Exactly(temperatures, VertexCount, "temperatures", "one per vertex");
            byte[] error = ErrorBuffer.New();
            ErrorBuffer.Check("poissonsolve",
                              NativeMethods.poissonsolve(handle, temperatures, error), error);
        }

        /// <summary>Squared norm of the free rows' imbalance after the last solve.</summary>
        public double Residual
        {
            get
            {
                byte[] error = ErrorBuffer.New();
                double residual;
                ErrorBuffer.Check("poissonresid",
                                  NativeMethods.poissonresid(handle, out residual, error), error);
                return residual;
            }
        }

        /// <summary>
        /// The solver's status: 0 after creation, an update or a converged solve, 2 after a solve
        /// that did not converge.
        /// </summary>
        public int Info
        {
            get { return NativeMethods.poissoninfo(handle, ErrorBuffer.New()); }
        }

        /// <summary>False after a solve that did not converge.</summary>
        public bool Converged
        {
            get { return Info == 0; }
        }

        /// <summary>
        /// Replaces the conductivities (exactly MaterialCount values) and re-assembles; the
        /// temperatures change at the next solve. A failed mesh check (23, 24) leaves the solver as
        /// it was.
        /// </summary>
        public void ResetConductivities(double[] conductivities)
        {
            ArrayChecks.Exactly(conductivities, MaterialCount, "conductivities",
                                "one per material");
            byte[] error = ErrorBuffer.New();
            ErrorBuffer.Check("poissonresetconductivities",
                              NativeMethods.poissonresetconductivities(
                                  handle, conductivities, conductivities.Length, error),
                              error);
        }

        /// <summary>
        /// Releases the native solver; later calls throw ObjectDisposedException.
        /// </summary>
        public void Dispose()
        {
            handle.Dispose();
        }
    }
}
