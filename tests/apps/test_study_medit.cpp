// MEDIT .mesh reading: malformed files name the line and the problem.
#include <gtest/gtest.h>

#include "medit.h"

namespace brindle::study {
namespace {

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

}  // namespace
}  // namespace brindle::study
