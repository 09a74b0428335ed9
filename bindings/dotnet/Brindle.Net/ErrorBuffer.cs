using System;
using System.Text;

namespace Brindle
{
    /// <summary>The caller-side text buffers of the exports and the status check.</summary>
    internal static class ErrorBuffer
    {
        /// <summary>
        /// Size of every `error` buffer: 1023 characters and the terminating zero.
        /// </summary>
        internal const int Size = 1024;

        /// <summary>Size of the `detail` buffer of poissonmallocvol.</summary>
        internal const int DetailSize = 2000;

        internal static byte[] New()
        {
            return new byte[Size];
        }

        /// <summary>
        /// The zero-terminated text at the start of a buffer (ASCII from the library).
        /// </summary>
        internal static string Read(byte[] buffer)
        {
            if (buffer == null) return string.Empty;
            int length = Array.IndexOf(buffer, (byte)0);
            if (length < 0) length = buffer.Length;
            return Encoding.UTF8.GetString(buffer, 0, length);
        }

        /// <summary>Throws a BrindleException for a non-zero status.</summary>
        internal static void Check(string function, int status, byte[] error, byte[] detail = null)
        {
            if (status != 0)
                throw new BrindleException(function, status, Read(error), Read(detail));
        }
    }
}
