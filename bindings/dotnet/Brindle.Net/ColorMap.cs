namespace Brindle
{
    /// <summary>The library's blue-cyan-green-yellow-red heat ramp.</summary>
    public static class ColorMap
    {
        /// <summary>
        /// Channels 0..255 for t in [0, 1] (clamped, NaN counts as 0): t = 0 gives (0, 0, 146),
        /// t = 0.5 (146, 255, 146), t = 1 (146, 0, 0).
        /// </summary>
        public static void HeatColor(double t, out int red, out int green, out int blue)
        {
            NativeMethods.HeatColor(t, out red, out green, out blue);
        }

        /// <summary>The same colour packed as 0xRRGGBB.</summary>
        public static int HeatColorRgb(double t)
        {
            int red, green, blue;
            NativeMethods.HeatColor(t, out red, out green, out blue);
            return (red << 16) | (green << 8) | blue;
        }
    }

    /// <summary>An integer 0..65534 (or the marker -1) carried in a unit vector.</summary>
    public static class SphereEncoding
    {
        /// <summary>
        /// Stores `value` as a unit vector on the upper cap of the unit sphere. Returns false for a
        /// value outside -1..65534, with all three coordinates 0.
        /// </summary>
        public static bool Encode(int value, out float x, out float y, out float z)
        {
            return NativeMethods.encode_integer_to_sphere(value, out x, out y, out z) == 0;
        }

        /// <summary>
        /// The integer stored in (x, y, z) or in its negation; -1 for the marker.
        /// </summary>
        public static int Decode(float x, float y, float z)
        {
            return NativeMethods.decode_integer_from_sphere(x, y, z);
        }
    }
}
