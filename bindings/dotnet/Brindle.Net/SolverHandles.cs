using System;
using System.Runtime.InteropServices;

namespace Brindle
{
    /// <summary>
    /// Owns one solver of the library. SafeHandle releases it exactly once: on Dispose, or from
    /// the finaliser when the owner was dropped without Dispose, and never while a call that uses
    /// it is still running.
    /// </summary>
    public abstract class SolverHandle : SafeHandle
    {
        private long pressure;

        protected SolverHandle() : base(IntPtr.Zero, true)
        {
        }

        public override bool IsInvalid
        {
            get { return handle == IntPtr.Zero; }
        }

        // Tells the garbage collector how much native memory this small object keeps alive, so
        // that solvers left to the finaliser are collected before the native heap grows large.
        internal void AddPressure(long bytes)
        {
            if (bytes <= 0) return;
            GC.AddMemoryPressure(bytes);
            pressure = bytes;
        }

        /// <summary>Releases the native solver through its own free export.</summary>
        protected abstract void FreeSolver(IntPtr solver);

        protected override bool ReleaseHandle()
        {
            FreeSolver(handle);
            if (pressure > 0) GC.RemoveMemoryPressure(pressure);
            pressure = 0;
            return true;
        }
    }

    /// <summary>Owns one volume solver (poissonfree releases it).</summary>
    public sealed class VolumeSolverHandle : SolverHandle
    {
        // The marshaller creates the instance for the `out` parameter of poissonmallocvol.
        private VolumeSolverHandle()
        {
        }

        protected override void FreeSolver(IntPtr solver)
        {
            NativeMethods.poissonfree(solver);
        }
    }

    /// <summary>Owns one surface solver (sldmfree releases it).</summary>
    public sealed class SurfaceSolverHandle : SolverHandle
    {
        // The marshaller creates the instance for the `out` parameter of sldmMalloc.
        private SurfaceSolverHandle()
        {
        }

        protected override void FreeSolver(IntPtr solver)
        {
            NativeMethods.sldmfree(solver);
        }
    }
}
