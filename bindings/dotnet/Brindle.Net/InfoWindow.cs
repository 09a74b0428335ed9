using System;

namespace Brindle
{
    /// <summary>The plug-in's information window (Windows only).</summary>
    public static class InfoWindow
    {
        /// <summary>
        /// Opens the window modal to `ownerWindow` (an HWND, IntPtr.Zero for none), or brings the
        /// open one to the front, and returns as soon as it is shown. Call it on the host's
        /// user-interface thread. Throws BrindleException elsewhere than on Windows (status 1).
        /// </summary>
        public static void Show(IntPtr ownerWindow)
        {
            byte[] error = ErrorBuffer.New();
            ErrorBuffer.Check("doPoshModal", NativeMethods.doPoshModal(ownerWindow, error), error);
        }

        /// <summary>The HWND of the open window, IntPtr.Zero when it is not open.</summary>
        public static IntPtr Handle
        {
            get { return NativeMethods.getPoshHandle(); }
        }
    }
}
