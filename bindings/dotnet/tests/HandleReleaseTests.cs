using System;
using System.IO;
using System.Linq;

namespace Brindle.Tests
{
    public static class HandleReleaseTests
    {
        private static readonly BoxMesh Cube = BoxMesh.Build(6, 1.0, 0.5);

        private static VolumeSolver NewSolver()
        {
            return new VolumeSolver(Cube.Coordinates, Cube.Tetrahedra, Cube.Materials,
                                    new[] {1.0, 0.5}, Cube.XMinVertices, Cube.XMaxVertices, 0.001);
        }

        private static IntPtr NewSquare()
        {
            return MeshTools.MakeRectMesh(Plane.WorldXY, 1.0, 1.0, 8, 8);
        }

        // Resident memory of this process in kilobytes (Linux).
        private static long ResidentKilobytes()
        {
            string line = File.ReadAllLines("/proc/self/status").First(l => l.StartsWith("VmRSS:"));
            return long.Parse(line.Substring(6).Trim().Split(' ')[0]);
        }

        private static long GrowthOver(int warmUp, int rounds, Action round)
        {
            for (int i = 0; i < warmUp; i++) round();  // the allocators' and the JIT's first use
            GC.Collect();
            GC.WaitForPendingFinalizers();
            long start = ResidentKilobytes();
            for (int i = 0; i < rounds; i++) round();
            GC.Collect();
            GC.WaitForPendingFinalizers();
            GC.Collect();
            return ResidentKilobytes() - start;
        }

        public static void DisposeReleasesOnceAndLaterCallsAreRefused()
        {
            VolumeSolver solver = NewSolver();
            Check.True(!solver.Handle.IsInvalid, "a live handle");
            solver.Dispose();
            solver.Dispose();
            Check.True(solver.Handle.IsClosed, "closed after Dispose");
            Check.Throws<ObjectDisposedException>(() => solver.Solve(), "solve after Dispose");
            Check.Throws<ObjectDisposedException>(() => { var i = solver.Info; }, "info");

            var surface = new SurfaceSolver(NewSquare(), 81, 128, null);
            surface.Dispose();
            surface.Dispose();
            Check.Throws<ObjectDisposedException>(() => surface.Solve(), "surface after Dispose");
        }

        // Thousands of create/solve/free rounds keep resident memory flat, whether the solvers are
        // disposed or left to the finaliser. Solvers left to the finaliser pile up until the next
        // collection (a high-water mark of some 300 on Mono), so growth is measured over a second
        // batch of rounds after a first one. The bound is set from the footprint of solvers that
        // are kept alive, so it is known to catch a leak.
        public static void ThousandsOfSolversKeepMemoryFlat()
        {
            const int rounds = 3000;
            var kept = new VolumeSolver[200];
            long keptGrowth = GrowthOver(0, 1, () =>
            {
                for (int i = 0; i < kept.Length; i++) kept[i] = NewSolver();
            });
            double perSolver = (double)keptGrowth / kept.Length;
            foreach (VolumeSolver s in kept) s.Dispose();

            long disposed = GrowthOver(rounds, rounds, () =>
            {
                using (VolumeSolver s = NewSolver()) s.Solve();
            });
            long finalised = GrowthOver(rounds, rounds, () => NewSolver().Solve());
            long surfaceSquare = 0;
            IntPtr square = NewSquare();  // one mesh, many solvers
            surfaceSquare = GrowthOver(rounds, rounds, () =>
            {
                using (var s = new SurfaceSolver(square, 81, 128, null)) s.Solve();
            });

            Console.Error.WriteLine(
                "       volume solver of {0} vertices ~{1:F0} kB kept alive; resident growth " +
                "over {2} rounds: disposed {3} kB, finalised {4} kB, surface {5} kB",
                Cube.VertexCount, perSolver, rounds, disposed, finalised, surfaceSquare);
            // A leak of every solver would grow by rounds x perSolver; allow a tenth of that for
            // the collector's timing (measured: a few MB on Mono).
            double bound = Math.Max(0.1 * rounds * perSolver, 4096);
            Check.True(perSolver > 20, "a kept solver is measurable: " + perSolver + " kB");
            Check.True(disposed < bound, "disposed growth " + disposed + " kB, bound " + bound);
            Check.True(finalised < bound, "finalised growth " + finalised + " kB, bound " + bound);
            Check.True(surfaceSquare < bound, "surface growth " + surfaceSquare + " kB");
        }
    }
}
