using System;
using System.Runtime.InteropServices;

namespace Brindle
{
    /// <summary>A point or vector with the layout of ON_3dPoint / ON_3dVector.</summary>
    [StructLayout(LayoutKind.Sequential)]
    public struct Point3
    {
        public double X, Y, Z;

        public Point3(double x, double y, double z)
        {
            X = x;
            Y = y;
            Z = z;
        }

        internal double Length
        {
            get { return Math.Sqrt(X * X + Y * Y + Z * Z); }
        }

        internal Point3 Scaled(double s)
        {
            return new Point3(X * s, Y * s, Z * s);
        }

        internal static double Dot(Point3 a, Point3 b)
        {
            return a.X * b.X + a.Y * b.Y + a.Z * b.Z;
        }

        internal static Point3 Cross(Point3 a, Point3 b)
        {
            return new Point3(a.Y * b.Z - a.Z * b.Y, a.Z * b.X - a.X * b.Z, a.X * b.Y - a.Y * b.X);
        }

        internal static Point3 Subtract(Point3 a, Point3 b)
        {
            return new Point3(a.X - b.X, a.Y - b.Y, a.Z - b.Z);
        }
    }

    /// <summary>
    /// A plane with the memory layout of ON_Plane (origin, x, y and z axes, then the plane
    /// equation a x + b y + c z + d = 0 as four doubles), so it can be handed to MakeRectMesh by
    /// reference. Build it with FromFrame, which keeps the five parts consistent.
    /// </summary>
    [StructLayout(LayoutKind.Sequential)]
    public struct Plane
    {
        public Point3 Origin;
        public Point3 XAxis;
        public Point3 YAxis;
        public Point3 ZAxis;
        public double EquationA, EquationB, EquationC, EquationD;

        /// <summary>The world xy plane through the origin.</summary>
        public static Plane WorldXY
        {
            get
            {
                return FromFrame(new Point3(0, 0, 0), new Point3(1, 0, 0), new Point3(0, 1, 0));
            }
        }

        /// <summary>
        /// The plane through `origin` whose x axis is along `xDirection` and whose y axis is the
        /// part of `yDirection` square to it, both made unit length. Parallel or zero directions
        /// give zero axes, which MakeRectMesh refuses as an invalid mesh.
        /// </summary>
        public static Plane FromFrame(Point3 origin, Point3 xDirection, Point3 yDirection)
        {
            Point3 x = Unit(xDirection);
            Point3 y = Unit(Point3.Subtract(yDirection, x.Scaled(Point3.Dot(yDirection, x))));
            Point3 z = Unit(Point3.Cross(x, y));
            return new Plane
            {
                Origin = origin,
                XAxis = x,
                YAxis = y,
                ZAxis = z,
                EquationA = z.X,
                EquationB = z.Y,
                EquationC = z.Z,
                EquationD = -Point3.Dot(z, origin),
            };
        }

        private static Point3 Unit(Point3 v)
        {
            double length = v.Length;
            return length > 0.0 ? v.Scaled(1.0 / length) : new Point3(0, 0, 0);
        }
    }
}
