// Structured tetrahedral meshes of boxes, built in managed arrays as a host would.
using System.Collections.Generic;

namespace Brindle.Tests
{
    internal sealed class BoxMesh
    {
        public double[] Coordinates;
        public int[] Tetrahedra;
        public int[] Materials;
        public int[] XMinVertices;  // the face x = 0
        public int[] XMaxVertices;  // the face x = length

        public int VertexCount
        {
            get { return Coordinates.Length / 3; }
        }

        public double X(int vertex)
        {
            return Coordinates[3 * vertex];
        }

        // The box [0, length] x [0, 1] x [0, 1] in n x n x n cells, each cell split into six
        // tetrahedra around its main diagonal, so neighbouring cells share their face diagonals.
        // Cells with x below `interface` get material 0, the others material 1.
        public static BoxMesh Build(int n, double length, double interfaceX)
        {
            var mesh = new BoxMesh();
            int side = n + 1;
            mesh.Coordinates = new double[3 * side * side * side];
            var xMin = new List<int>();
            var xMax = new List<int>();
            for (int k = 0; k < side; k++)
                for (int j = 0; j < side; j++)
                    for (int i = 0; i < side; i++)
                    {
                        int v = Index(i, j, k, side);
                        mesh.Coordinates[3 * v] = length * i / n;
                        mesh.Coordinates[3 * v + 1] = (double)j / n;
                        mesh.Coordinates[3 * v + 2] = (double)k / n;
                        if (i == 0) xMin.Add(v);
                        if (i == n) xMax.Add(v);
                    }
            mesh.XMinVertices = xMin.ToArray();
            mesh.XMaxVertices = xMax.ToArray();

            // The six monotone paths from corner (0,0,0) to (1,1,1) of a cell.
            int[][] paths = {
                new[] {0, 1, 2}, new[] {0, 2, 1}, new[] {1, 0, 2},
                new[] {1, 2, 0}, new[] {2, 0, 1}, new[] {2, 1, 0},
            };
            var tetrahedra = new List<int>();
            var materials = new List<int>();
            for (int k = 0; k < n; k++)
                for (int j = 0; j < n; j++)
                    for (int i = 0; i < n; i++)
                    {
                        int material = length * (i + 0.5) / n < interfaceX ? 0 : 1;
                        foreach (int[] path in paths)
                        {
                            int[] corner = {i, j, k};
                            tetrahedra.Add(Index(corner[0], corner[1], corner[2], side));
                            foreach (int axis in path)
                            {
                                corner[axis]++;
                                tetrahedra.Add(Index(corner[0], corner[1], corner[2], side));
                            }
                            materials.Add(material);
                        }
                    }
            mesh.Tetrahedra = tetrahedra.ToArray();
            mesh.Materials = materials.ToArray();
            return mesh;
        }

        private static int Index(int i, int j, int k, int side)
        {
            return i + side * (j + side * k);
        }
    }
}
