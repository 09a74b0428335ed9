using System;
using System.Runtime.InteropServices;

namespace Brindle
{
    /// <summary>
    /// Owns one volume solver of the library. SafeHandle releases it exactly once: on Dispose, or
    /// from the finaliser when the owner was dropped without Dispose, and never while a call that
    /// uses it is still running.
    /// </summary>
    public sealed class VolumeSolverHandle : SafeHandle
    {
        // The marshaller creates the instance for the `out` parameter of poissonmallocvol.
        private VolumeSolverHandle() : base(IntPtr.Zero, true)
        {
        }

        public override bool IsInvalid
        {
            get { return handle == IntPtr.Zero; }
        }

        private long pressure;

        // Tells the garbage collector how much native memory this small object keeps alive, so
        // that solvers left to the finaliser are collected before the native heap grows large.
        internal void AddPressure(long bytes)
        {
            if (bytes <= 0) return;
            GC.AddMemoryPressure(bytes);
            pressure = bytes;
        }

        private void ReleasePressure()
        {
            if (pressure > 0) GC.RemoveMemoryPressure(pressure);
            pressure = 0;
        }

        protected override bool ReleaseHandle()
        {
            NativeMethods.poissonfree(handle);
            ReleasePressure();
            return true;
        }
    }

    /// <summary>Owns one surface solver of the library; released exactly once, as above.</summary>
    public sealed class SurfaceSolverHandle : SafeHandle
    {
        private SurfaceSolverHandle() : base(IntPtr.Zero, true)
        {
        }

        public override bool IsInvalid
        {
            get { return handle == IntPtr.Zero; }
        }

        private long pressure;

        // Tells the garbage collector how much native memory this small object keeps alive, so
        // that solvers left to the finaliser are collected before the native heap grows large.
        internal void AddPressure(long bytes)
        {
            if (bytes <= 0) return;
            GC.AddMemoryPressure(bytes);
            pressure = bytes;
        }

        private void ReleasePressure()
        {
            if (pressure > 0) GC.RemoveMemoryPressure(pressure);
            pressure = 0;
        }

        protected override bool ReleaseHandle()
        {
            NativeMethods.sldmfree(handle);
            ReleasePressure();
            return true;
        }
    }
}
