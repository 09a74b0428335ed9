using System;

namespace Brindle.Tests
{
    public static class VolumeSolverTests
    {
        private const double High = VolumeSolver.HighTemperature;
        private const double Low = VolumeSolver.LowTemperature;

        private static VolumeSolver Wall(BoxMesh mesh, double k0, double k1)
        {
            return new VolumeSolver(mesh.Coordinates, mesh.Tetrahedra, mesh.Materials,
                                    new[] {k0, k1}, mesh.XMinVertices, mesh.XMaxVertices, 0.001);
        }

        // Linear elements reproduce a linear field exactly: every vertex of the cube, held at 20.0
        // on x = 0 and at -13.1 on x = 1, lies on the straight profile.
        public static void CubeReproducesTheLinearField()
        {
            BoxMesh cube = BoxMesh.Build(4, 1.0, 2.0);
            using (VolumeSolver solver = Wall(cube, 1.7, 1.7))
            {
                Check.Equal(125, solver.VertexCount, "vertices");
                Check.Equal(384, solver.TetrahedronCount, "tetrahedra");
                double[] t = solver.Solve();
                for (int v = 0; v < cube.VertexCount; v++)
                    Check.Near(High + (Low - High) * cube.X(v), t[v], 1e-9, "T at vertex " + v);
                Check.True(solver.Converged, "converged");
                Check.Equal(0, solver.Info, "info");
                Check.True(solver.Residual < 1e-18, "residual " + solver.Residual);
            }
        }

        // Two layers of equal thickness: the same heat flows through both, so the interface
        // temperature is (k0 T0 + k1 T1) / (k0 + k1) and each layer is linear. Resetting the
        // conductivities swaps the profile at the next solve.
        public static void TwoMaterialWallFollowsItsProfileBeforeAndAfterAReset()
        {
            BoxMesh wall = BoxMesh.Build(4, 1.0, 0.5);
            using (VolumeSolver solver = Wall(wall, 1.0, 0.25))
            {
                CheckLayeredProfile(wall, solver.Solve(), 1.0, 0.25);
                solver.ResetConductivities(new[] {0.25, 1.0});
                CheckLayeredProfile(wall, solver.Solve(), 0.25, 1.0);
            }
        }

        private static void CheckLayeredProfile(BoxMesh wall, double[] t, double k0, double k1)
        {
            double interfaceT = (k0 * High + k1 * Low) / (k0 + k1);
            for (int v = 0; v < wall.VertexCount; v++)
            {
                double x = wall.X(v);
                double expected = x <= 0.5 ? High + (interfaceT - High) * x / 0.5
                                           : interfaceT + (Low - interfaceT) * (x - 0.5) / 0.5;
                Check.Near(expected, t[v], 1e-9, "k = " + k0 + "/" + k1 + ", x = " + x);
            }
        }

        public static void BadInputRaisesTheLibraryStatusAndMessage()
        {
            BoxMesh cube = BoxMesh.Build(1, 1.0, 2.0);
            int[] outOfRange = (int[])cube.Tetrahedra.Clone();
            outOfRange[5] = cube.VertexCount;
            BrindleException e = Check.Throws<BrindleException>(
                () => new VolumeSolver(cube.Coordinates, outOfRange, cube.Materials,
                                       new[] {1.0, 1.0}, cube.XMinVertices, null, 0.001),
                "vertex index out of range");
            Check.Equal(21, e.Status, "status");
            Check.Equal("Error with input data", e.Message, "message");
            Check.Equal("poissonmallocvol", e.Function, "function");

            // Two tetrahedra without a shared vertex: the second is not reachable from vertex 0.
            double[] twoApart = {0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1,
                                 5, 0, 0, 6, 0, 0, 5, 1, 0, 5, 0, 1};
            e = Check.Throws<BrindleException>(
                () => new VolumeSolver(twoApart, new[] {0, 1, 2, 3, 4, 5, 6, 7}, new[] {0, 0},
                                       new[] {1.0}, new[] {0}, new[] {4}, 0.001),
                "disconnected");
            Check.Equal(22, e.Status, "disconnected status");
            Check.Equal("Error constructing solver, code 22", e.LibraryMessage, "library message");
            Check.Equal("Error: The tetrahedral mesh is disconnected. Vertex 4 is not connected " +
                            "to vertex zero.\n", e.Detail, "detail");
            Check.True(e.Message.StartsWith("Error constructing solver, code 22" +
                                            Environment.NewLine + "Error: The tetrahedral"),
                       "message with detail: " + e.Message);
        }

        // The library would read or write past these arrays; the binding refuses them first.
        // A native call would have overwritten the sentinels or changed the solution.
        public static void ShortArraysAreRefusedBeforeTheNativeCall()
        {
            BoxMesh wall = BoxMesh.Build(2, 1.0, 0.5);
            Check.Throws<ArgumentException>(
                () => new VolumeSolver(wall.Coordinates, wall.Tetrahedra,
                                       new int[wall.Materials.Length - 1], new[] {1.0, 1.0},
                                       wall.XMinVertices, wall.XMaxVertices, 0.001),
                "short material list");
            Check.Throws<ArgumentException>(
                () => new VolumeSolver(new double[7], wall.Tetrahedra, wall.Materials,
                                       new[] {1.0, 1.0}, wall.XMinVertices, wall.XMaxVertices,
                                       0.001),
                "partial coordinate triple");
            Check.Throws<ArgumentNullException>(
                () => new VolumeSolver(wall.Coordinates, null, wall.Materials, new[] {1.0},
                                       wall.XMinVertices, wall.XMaxVertices, 0.001),
                "null tetrahedra");

            using (VolumeSolver solver = Wall(wall, 1.0, 0.25))
            {
                double[] before = solver.Solve();
                double[] sentinel = new double[solver.VertexCount - 1];
                for (int i = 0; i < sentinel.Length; i++) sentinel[i] = -999.0;
                var e = Check.Throws<ArgumentException>(() => solver.Solve(sentinel),
                                                        "short temperature array");
                Check.Equal("temperatures", e.ParamName, "parameter");
                Check.True(Array.TrueForAll(sentinel, t => t == -999.0), "array untouched");

                Check.Throws<ArgumentException>(
                    () => solver.ResetConductivities(new[] {5.0}), "one value for two materials");
                double[] after = solver.Solve();
                for (int v = 0; v < before.Length; v++)
                    Check.Equal(before[v], after[v], "unchanged temperature at " + v);
            }
        }
    }
}
