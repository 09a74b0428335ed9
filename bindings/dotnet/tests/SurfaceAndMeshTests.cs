// .NET cannot construct an ON_Mesh, so these tests make their meshes with MakeRectMesh. The host
// deletes returned meshes with its own openNURBS; the library has no export for that, so the few
// small meshes made here (a few kilobytes in all) are left to the end of the test process.
using System;
using System.Linq;

namespace Brindle.Tests
{
    public static class SurfaceAndMeshTests
    {
        private const int Cells = 4;
        private const int Vertices = (Cells + 1) * (Cells + 1);
        private const int Faces = 2 * Cells * Cells;

        // A unit square in 4 x 4 cells: first row held at 0, last row at 1.
        private static IntPtr Square()
        {
            IntPtr mesh = MeshTools.MakeRectMesh(Plane.WorldXY, 1.0, 1.0, Cells, Cells);
            Check.True(mesh != IntPtr.Zero, "a mesh was made");
            return mesh;
        }

        // Held rows at 0 and 1 with free rows between: every formulation gives the linear field,
        // so the temperatures are the five row values, each on one row of five vertices.
        public static void SurfaceSolverGivesTheLinearFieldWithEveryMethod()
        {
            IntPtr square = Square();
            foreach (SurfaceMethod method in Enum.GetValues(typeof(SurfaceMethod)))
            {
                using (var solver = new SurfaceSolver(square, Vertices, Faces, null, method))
                {
                    double[] t = solver.Solve();
                    double[] sorted = t.OrderBy(x => x).ToArray();
                    for (int v = 0; v < Vertices; v++)
                        Check.Near((v / (Cells + 1)) / (double)Cells, sorted[v], 1e-12,
                                   method + ", sorted temperature " + v);
                }
            }
        }

        // One region throughout: a new conductivity scales the flux but not the temperatures.
        public static void UpdateChecksRegionCountAndKeepsTheField()
        {
            IntPtr square = Square();
            using (var solver = new SurfaceSolver(square, Vertices, Faces, new int[Faces]))
            {
                double[] before = solver.Solve();
                solver.Update(new[] {3.0});
                double[] after = solver.Solve();
                for (int v = 0; v < Vertices; v++)
                    Check.Near(before[v], after[v], 1e-12, "temperature at " + v);
                Check.Throws<ArgumentException>(() => solver.Update(new double[0]), "no value");
                Check.Throws<ArgumentException>(() => solver.Solve(new double[Vertices - 1], null,
                                                                    IntPtr.Zero, null, IntPtr.Zero,
                                                                    null),
                                                "short temperatures");
                Check.Throws<ArgumentException>(
                    () => solver.Solve(new double[Vertices], new[] {0.5}, IntPtr.Zero, null,
                                       IntPtr.Zero, new double[0]),
                    "level flow shorter than the levels");
            }
            var regions = new int[Faces];
            regions[7] = 2;
            using (var solver = new SurfaceSolver(square, Vertices, Faces, regions))
            {
                Check.Equal(3, solver.RegionCount, "regions 0..2");
                Check.Throws<ArgumentException>(() => solver.Update(new[] {1.0, 1.0}),
                                                "two values for three regions");
                solver.Update(new[] {1.0, 1.0, 1.0});
            }
            Check.Throws<ArgumentException>(
                () => new SurfaceSolver(square, Vertices, Faces, new int[Faces - 1]),
                "short region list");
        }

        public static void SurfaceAndMeshFailuresCarryTheLibraryMessage()
        {
            IntPtr square = Square();
            var e = Check.Throws<BrindleException>(
                () => new SurfaceSolver(square, Vertices, Faces, null, (SurfaceMethod)7),
                "method 7");
            Check.Equal(24, e.Status, "status");
            Check.Equal("Invalid method 7, must be 0-3", e.Message, "message");

            e = Check.Throws<BrindleException>(
                () => new SurfaceSolver(IntPtr.Zero, 0, 0, null), "null mesh");
            Check.Equal(25, e.Status, "null mesh status");
            Check.Equal("Null mesh", e.Message, "null mesh message");

            var regions = new int[Faces];
            regions[3] = -2;
            e = Check.Throws<BrindleException>(
                () => new SurfaceSolver(square, Vertices, Faces, regions), "negative region");
            Check.Equal("Face 3 has negative region number -2", e.Message, "region message");

            e = Check.Throws<BrindleException>(
                () => MeshTools.MakeRectMesh(Plane.WorldXY, -1.0, 1.0, 2, 2), "negative width");
            Check.Equal(1, e.Status, "rectangle status");
            Check.Equal("Invalid dimensions or subdivisions", e.Message, "rectangle message");

            Plane flat = Plane.FromFrame(new Point3(0, 0, 0), new Point3(1, 0, 0),
                                         new Point3(2, 0, 0));
            e = Check.Throws<BrindleException>(() => MeshTools.MakeRectMesh(flat, 1, 1, 2, 2),
                                               "plane without a y axis");
            Check.Equal(2, e.Status, "invalid mesh status");

            e = Check.Throws<BrindleException>(() => MeshTools.TriangleQuality(IntPtr.Zero, 3),
                                               "null mesh quality");
            Check.Equal("Null mesh or quality array", e.Message, "quality message");
            Check.Equal("qualS", e.Function, "quality function");

            e = Check.Throws<BrindleException>(() => MeshTools.Sanitize(IntPtr.Zero), "sanitize");
            Check.Equal("Null mesh or error code pointer", e.Message, "sanitize message");
        }

        // The square's cells are split into right isosceles triangles: surface quality
        // sqrt(3)/2 each, as in the library's own tests.
        public static void MeshFunctionsWorkOnNativeMeshes()
        {
            IntPtr square = Square();
            double[] quality = MeshTools.TriangleQuality(square, Faces);
            Check.Equal(Faces, quality.Length, "one quality per face");
            foreach (double q in quality) Check.Near(Math.Sqrt(3.0) / 2, q, 1e-14, "quality");

            IntPtr copy = MeshTools.Sanitize(square);
            Check.True(copy != IntPtr.Zero && copy != square, "sanitised copy");
            using (var solver = new SurfaceSolver(copy, Vertices, Faces, null))
                Check.Equal(Vertices, solver.Solve().Length, "the copy solves");

            // Cut the square along y = 0.1 (its vertices run row by row from y = -0.5) and keep
            // the negative side.
            double[] level = new double[Vertices];
            for (int v = 0; v < Vertices; v++)
                level[v] = -0.5 + (v / (Cells + 1)) / (double)Cells - 0.1;
            IntPtr below = MeshTools.CutTetrahedralMesh(square, Vertices, level, 3, 0.5);
            Check.True(below != IntPtr.Zero, "cut mesh");
            Check.Throws<ArgumentException>(
                () => MeshTools.CutTetrahedralMesh(square, Vertices, new double[3], 3, 0.5),
                "short level values");
        }
    }
}
