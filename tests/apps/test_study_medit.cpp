// MEDIT .mesh reading.
#include <gtest/gtest.h>

#include "medit.h"

namespace brindle::study {
namespace {

// A prism x in [0, 1] split into three tetrahedra (refs 1, 2, 2), with boundary triangles on its
// x = 0 (ref 10) and x = 1 (ref 20) ends.
const char* kPrism = R"(MeshVersionFormatted 2
# a comment line
Dimension
3
VERTICES 6
0 0 0 0
0 1 0 0   # trailing comment
0 0 1 7
1 0 0 0
1 1 0 0
1 0 1 0
triangles 2
1 2 3 10
4 5 6 20
Corners 1 1
Tetrahedra 3
1 2 3 4 1
2 3 4 5 2
3 4 5 6 2
END
this text after End is ignored
)";

TEST(StudyMedit, ReadsVerticesElementsAndReferences) {
  const MeditMesh mesh = ParseMedit(kPrism);
  EXPECT_EQ(mesh.dimension, 3);
  ASSERT_EQ(mesh.vertices.size(), 6u);
  EXPECT_EQ(mesh.vertices[4], (Point{1, 1, 0}));
  EXPECT_EQ(mesh.vertexRef[2], 7);
  ASSERT_EQ(mesh.triangles.size(), 2u);
  EXPECT_EQ(mesh.triangles[1], (std::array<int, 3>{3, 4, 5}));
  EXPECT_EQ(mesh.triangleRef[1], 20);
  ASSERT_EQ(mesh.tetrahedra.size(), 3u);
  EXPECT_EQ(mesh.tetrahedra[1], (std::array<int, 4>{1, 2, 3, 4}));
  EXPECT_EQ(mesh.tetrahedronRef, (std::vector<int>{1, 2, 2}));
}

void ExpectErrorAtLine(const std::string& text, int line, const std::string& words) {
  try {
    ParseMedit(text, "m.mesh");
    FAIL() << "accepted: " << text;
  } catch (const MeditError& e) {
    EXPECT_EQ(e.Line(), line) << e.what();
    EXPECT_NE(std::string(e.what()).find("m.mesh:" + std::to_string(line) + ": "),
              std::string::npos)
        << e.what();
    EXPECT_NE(std::string(e.what()).find(words), std::string::npos) << e.what();
  }
}

TEST(StudyMedit, MalformedFilesNameTheLine) {
  const std::string head = "MeshVersionFormatted 2\nDimension 3\nVertices 2\n0 0 0 1\n1 1 1 1\n";
  ExpectErrorAtLine(head + "Triangles 1\n1 2 3 0\n", 7, "vertex index 3 out of range 1..2");
  ExpectErrorAtLine(head + "Triangles 1\n1 2 0 0\n", 7, "out of range");
  ExpectErrorAtLine(head + "Triangles -1\n", 6, "invalid count");
  ExpectErrorAtLine(head + "Pentagons 1\n", 6, "unknown keyword 'Pentagons'");
  ExpectErrorAtLine(head + "Edges 1\n1 x2 0\n", 7, "found 'x2'");
  ExpectErrorAtLine(head + "Edges 1\n1 2\n\n", 7, "unexpected end of file");
  ExpectErrorAtLine("MeshVersionFormatted 2\nDimension 3\nVertices 1\n0 nan 0 1\n", 4,
                    "coordinate");
  ExpectErrorAtLine("MeshVersionFormatted 2\nVertices 1\n0 0 0 1\n", 2, "before Dimension");
  ExpectErrorAtLine("Dimension 4\n", 1, "dimension must be 2 or 3");
  ExpectErrorAtLine("", 1, "not a MEDIT mesh");
  ExpectErrorAtLine("MeshVersionFormatted 2\nDimension 3\n", 1, "no vertices");
}

TEST(StudyMedit, StudyMeshTextReadsBackWithItsReferences) {
  StudyMesh mesh;
  mesh.dimension = 2;
  mesh.vertices = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}};
  mesh.triangles = {{0, 1, 2}, {0, 2, 3}};
  mesh.triangleRef = {1, 2};
  mesh.edges = {{0, 1}};
  mesh.edgeRef = {10};
  const MeditMesh read = ParseMedit(MeditText(mesh));
  EXPECT_EQ(read.dimension, 2);
  EXPECT_EQ(read.vertices, mesh.vertices);
  EXPECT_EQ(read.triangles, mesh.triangles);
  EXPECT_EQ(read.triangleRef, mesh.triangleRef);
  EXPECT_EQ(read.edges, mesh.edges);
  EXPECT_EQ(read.edgeRef, mesh.edgeRef);
}

}  // namespace
}  // namespace brindle::study
