// A small self-checking runner: every public static method without parameters of the test
// classes below is one test. Results go to standard error, because the library writes its
// progress traces to standard output; the last line reads "N passed, N failed".
using System;
using System.Collections.Generic;
using System.Linq;
using System.Reflection;

namespace Brindle.Tests
{
    internal sealed class CheckFailed : Exception
    {
        public CheckFailed(string message) : base(message)
        {
        }
    }

    internal static class Check
    {
        public static void True(bool condition, string what)
        {
            if (!condition) throw new CheckFailed(what);
        }

        public static void Equal<T>(T expected, T actual, string what)
        {
            if (!EqualityComparer<T>.Default.Equals(expected, actual))
                throw new CheckFailed(what + ": expected " + expected + ", got " + actual);
        }

        public static void Near(double expected, double actual, double tolerance, string what)
        {
            if (!(Math.Abs(expected - actual) <= tolerance))
                throw new CheckFailed(what + ": expected " + expected.ToString("R") + " +- " +
                                      tolerance + ", got " + actual.ToString("R"));
        }

        public static TException Throws<TException>(Action action, string what)
            where TException : Exception
        {
            try
            {
                action();
            }
            catch (TException e)
            {
                if (e.GetType() == typeof(TException)) return e;
                throw new CheckFailed(what + ": expected " + typeof(TException).Name + ", got " +
                                      e.GetType().Name + ": " + e.Message);
            }
            catch (Exception e)
            {
                throw new CheckFailed(what + ": expected " + typeof(TException).Name + ", got " +
                                      e.GetType().Name + ": " + e.Message);
            }
            throw new CheckFailed(what + ": expected " + typeof(TException).Name + ", none thrown");
        }
    }

    internal static class TestRunner
    {
        private static readonly Type[] Suites = {
            typeof(VolumeSolverTests), typeof(SurfaceAndMeshTests), typeof(HandleReleaseTests),
            typeof(ColorAndEncodingTests), typeof(DeclarationTests),
        };

        private static int Main(string[] args)
        {
            string filter = args.Length > 0 ? args[0] : "";
            int passed = 0, failed = 0;
            foreach (Type suite in Suites)
            {
                var tests = suite.GetMethods(BindingFlags.Public | BindingFlags.Static)
                                .Where(m => m.GetParameters().Length == 0)
                                .OrderBy(m => m.MetadataToken);
                foreach (MethodInfo test in tests)
                {
                    string name = suite.Name + "." + test.Name;
                    if (!name.Contains(filter)) continue;
                    var clock = System.Diagnostics.Stopwatch.StartNew();
                    try
                    {
                        test.Invoke(null, null);
                        passed++;
                        Console.Error.WriteLine("ok     {0} ({1} ms)", name,
                                                clock.ElapsedMilliseconds);
                    }
                    catch (TargetInvocationException e)
                    {
                        failed++;
                        Exception cause = e.InnerException;
                        string why = cause is CheckFailed ? cause.Message : cause.ToString();
                        Console.Error.WriteLine("FAILED {0}: {1}", name, why);
                    }
                }
            }
            Console.Out.Flush();
            Console.Error.WriteLine("{0} passed, {1} failed", passed, failed);
            return failed == 0 && passed > 0 ? 0 : 1;
        }
    }
}
