using System;

namespace Brindle
{
    /// <summary>
    /// A non-zero status from the library, with the message the library wrote (empty for the few
    /// statuses that come without one) and, for a failed volume mesh check, the check's sentence.
    /// </summary>
    [Serializable]
    public sealed class BrindleException : Exception
    {
        public BrindleException(string function, int status, string libraryMessage, string detail)
            : base(Compose(function, status, libraryMessage, detail))
        {
            Function = function;
            Status = status;
            LibraryMessage = libraryMessage ?? string.Empty;
            Detail = detail ?? string.Empty;
        }

        /// <summary>The export that failed, e.g. "poissonmallocvol".</summary>
        public string Function { get; }

        /// <summary>The status the export returned (never 0).</summary>
        public int Status { get; }

        /// <summary>The library's message exactly as written, or empty.</summary>
        public string LibraryMessage { get; }

        /// <summary>
        /// The sentence of a failed mesh check (poissonmallocvol 22-25), or empty.
        /// </summary>
        public string Detail { get; }

        // The library's own words come first so that a host can show Message as it is; a status
        // without a message still says which call failed and how.
        private static string Compose(string function, int status, string message, string detail)
        {
            string text = string.IsNullOrEmpty(message)
                ? function + " failed with status " + status
                : message;
            if (!string.IsNullOrEmpty(detail)) text += Environment.NewLine + detail.TrimEnd('\n');
            return text;
        }
    }
}
