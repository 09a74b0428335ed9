using System;

namespace Brindle
{
    /// <summary>
    /// Length checks done before any native call: the library trusts the counts it is given and
    /// reads or writes past a short managed array, which corrupts the runtime's heap.
    /// </summary>
    internal static class ArrayChecks
    {
        internal static void NotNull(Array array, string name)
        {
            if (array == null) throw new ArgumentNullException(name);
        }

        internal static void Exactly(Array array, int length, string name, string what)
        {
            NotNull(array, name);
            if (array.Length != length)
                throw new ArgumentException(
                    name + " must hold " + length + " values (" + what + "), not " + array.Length,
                    name);
        }

        internal static void AtLeast(Array array, int length, string name, string what)
        {
            NotNull(array, name);
            if (array.Length < length)
                throw new ArgumentException(
                    name + " must hold at least " + length + " values (" + what + "), not " +
                    array.Length, name);
        }

        /// <summary>
        /// The number of groups of `size` values in the array; refuses a partial group.
        /// </summary>
        internal static int Groups(Array array, int size, string name, string what)
        {
            NotNull(array, name);
            if (array.Length % size != 0)
                throw new ArgumentException(
                    name + " must hold " + size + " values per " + what + ", but its length " +
                    array.Length + " is not a multiple of " + size, name);
            return array.Length / size;
        }

        internal static void NotNegative(int count, string name)
        {
            if (count < 0)
                throw new ArgumentOutOfRangeException(name, count, "must not be negative");
        }
    }
}
