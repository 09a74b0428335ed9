using System;
using System.ComponentModel;
using System.IO;
using System.Runtime.InteropServices;

// Where the runtime honours it (.NET Framework 4.5+ and .NET Core), DllImport("brindle") looks
// in the folder of this assembly first, then in the system's safe folders only.
[assembly: DefaultDllImportSearchPaths(DllImportSearchPath.AssemblyDirectory |
                                       DllImportSearchPath.SafeDirectories)]

namespace Brindle
{
    /// <summary>
    /// Loads brindle.dll from a chosen folder before the first call. A plug-in is not the host
    /// application, so Windows would otherwise look for the library beside the host's executable
    /// and on PATH; a plug-in that was shadow-copied by its host is not even in its own folder.
    /// Once the library is loaded, every DllImport("brindle") of the process binds to it.
    /// </summary>
    public static class NativeLoader
    {
        private const uint LoadWithAlteredSearchPath = 0x00000008;

        [DllImport("kernel32", CharSet = CharSet.Unicode, SetLastError = true)]
        private static extern IntPtr LoadLibraryExW(string fileName, IntPtr reserved, uint flags);

        /// <summary>
        /// On Windows, loads brindle.dll from `folder` (by default the folder this assembly was
        /// loaded from); libraries it needs are looked up beside it first. Elsewhere this does
        /// nothing: the loader path (LD_LIBRARY_PATH, the RUNPATH of the host) decides.
        /// </summary>
        /// <exception cref="Win32Exception">The library could not be loaded.</exception>
        public static void Preload(string folder = null)
        {
            if (Environment.OSVersion.Platform != PlatformID.Win32NT) return;
            if (folder == null)
                folder = Path.GetDirectoryName(typeof(NativeLoader).Assembly.Location);
            string path = Path.Combine(folder, "brindle.dll");
            if (LoadLibraryExW(path, IntPtr.Zero, LoadWithAlteredSearchPath) == IntPtr.Zero)
                throw new Win32Exception(Marshal.GetLastWin32Error(), "Cannot load " + path);
        }
    }
}
