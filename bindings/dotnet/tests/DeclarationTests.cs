using System;
using System.IO;
using System.Linq;
using System.Reflection;
using System.Runtime.InteropServices;
using System.Text.RegularExpressions;

namespace Brindle.Tests
{
    // The P/Invoke declarations against the C header: one per export, same name, same number of
    // parameters, C calling convention, library "brindle". Catches an export added to the header
    // without a declaration, and a declaration whose parameters drifted.
    public static class DeclarationTests
    {
        private static string HeaderPath()
        {
            string fromEnvironment = Environment.GetEnvironmentVariable("BRINDLE_HEADER");
            if (!string.IsNullOrEmpty(fromEnvironment)) return fromEnvironment;
            // The runner is built into build/dotnet of the repository.
            string folder = Path.GetDirectoryName(typeof(DeclarationTests).Assembly.Location);
            return Path.Combine(folder, "..", "..", "include", "brindle.h");
        }

        public static void EveryExportHasOneExactDeclaration()
        {
            string header = File.ReadAllText(HeaderPath());
            const string declaration =
                @"(?m)^BRINDLE_API\s+(?:const\s+)?\w+\s*\**\s*(\w+)\s*\(([^)]*)\)";
            var exports = Regex.Matches(header, declaration)
                               .Cast<Match>()
                               .ToDictionary(m => m.Groups[1].Value,
                                             m => ParameterCount(m.Groups[2].Value));
            Check.Equal(24, exports.Count, "exports in the header");

            Type native = typeof(VolumeSolver).Assembly.GetType("Brindle.NativeMethods", true);
            var declarations = native.GetMethods(BindingFlags.Static | BindingFlags.NonPublic)
                                   .Where(m => m.GetCustomAttribute<DllImportAttribute>() != null)
                                   .ToList();
            Check.Equal(exports.Count, declarations.Count, "declarations");
            foreach (MethodInfo method in declarations)
            {
                var import = method.GetCustomAttribute<DllImportAttribute>();
                Check.Equal("brindle", import.Value, method.Name + " library");
                Check.Equal(CallingConvention.Cdecl, import.CallingConvention, method.Name);
                Check.True(import.ExactSpelling, method.Name + " exact spelling");
                Check.True(exports.ContainsKey(method.Name), method.Name + " is exported");
                Check.Equal(exports[method.Name], method.GetParameters().Length,
                            method.Name + " parameters");
            }
        }

        private static int ParameterCount(string list)
        {
            string trimmed = list.Trim();
            return trimmed.Length == 0 || trimmed == "void" ? 0 : trimmed.Split(',').Length;
        }
    }
}
