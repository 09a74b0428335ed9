using System;

namespace Brindle.Tests
{
    // The same tables as the library's own tests of the ramp and the encodings.
    public static class ColorAndEncodingTests
    {
        public static void HeatColorKnotsClampAndNotANumber()
        {
            var table = new[] {
                Tuple.Create(0.0, 0, 0, 146), Tuple.Create(0.0625, 0, 0, 202),
                Tuple.Create(0.125, 0, 0, 255), Tuple.Create(0.25, 0, 146, 255),
                Tuple.Create(0.375, 0, 255, 255), Tuple.Create(0.5, 146, 255, 146),
                Tuple.Create(0.625, 255, 255, 0), Tuple.Create(0.75, 255, 146, 0),
                Tuple.Create(0.875, 255, 0, 0), Tuple.Create(1.0, 146, 0, 0),
                Tuple.Create(-3.0, 0, 0, 146), Tuple.Create(7.0, 146, 0, 0),
                Tuple.Create(double.NaN, 0, 0, 146),
            };
            foreach (var row in table)
            {
                int r, g, b;
                ColorMap.HeatColor(row.Item1, out r, out g, out b);
                string at = "t = " + row.Item1;
                Check.Equal(row.Item2, r, at + " red");
                Check.Equal(row.Item3, g, at + " green");
                Check.Equal(row.Item4, b, at + " blue");
            }
            Check.Equal(0x92FF92, ColorMap.HeatColorRgb(0.5), "packed");
        }

        public static void SphereEncodingIsExactInSinglePrecision()
        {
            var table = new[] {
                Tuple.Create(0, -0.5f, -0.5f, 0.70710677f),
                Tuple.Create(-1, 0.5f, 0.5f, 0.70710677f),
                Tuple.Create(1, -0.49607846f, -0.5f, 0.7098635f),
                Tuple.Create(65534, 0.49607846f, 0.5f, 0.7098635f),
                Tuple.Create(65535, 0.0f, 0.0f, 0.0f),
                Tuple.Create(-2, 0.0f, 0.0f, 0.0f),
            };
            foreach (var row in table)
            {
                float x, y, z;
                bool stored = SphereEncoding.Encode(row.Item1, out x, out y, out z);
                Check.Equal(row.Item4 != 0.0f, stored, "stored " + row.Item1);
                Check.Equal(row.Item2, x, "x of " + row.Item1);
                Check.Equal(row.Item3, y, "y of " + row.Item1);
                Check.Equal(row.Item4, z, "z of " + row.Item1);
            }
            Check.Equal(32896, SphereEncoding.Decode(0.0f, 0.0f, 1.0f), "centre");
            Check.Equal(33023, SphereEncoding.Decode(0.6f, 0.0f, 1.0f), "too large clamps");
            Check.Equal(33023, SphereEncoding.Decode(-0.6f, 0.0f, 1.0f), "too small clamps");
            Check.Equal(255, SphereEncoding.Decode(float.NaN, -0.5f, 1.0f), "NaN");
            Check.Equal(-1, SphereEncoding.Decode(0.51f, 0.51f, 0.5f), "marker");
            int upper = SphereEncoding.Decode(0.2f, -0.3f, 1.0f);
            Check.Equal(upper, SphereEncoding.Decode(-0.2f, 0.3f, -1.0f), "negated");
        }
    }
}
