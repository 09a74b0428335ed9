// Reading meshes for studies: gmsh files and geometries, MEDIT files, references, refinement,
// and the block mesher that the other tests build their models with.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>

#include "block_mesher.h"
#include "block_study_mesh.h"
#include "examples.h"
#include "geometry.h"
#include "medit.h"
#include "mesh_intake.h"

#ifdef BRINDLE_STUDY_HAVE_GMSH
#include <gmsh.h>
#endif

#if defined(BRINDLE_STUDY_HAVE_GMSH) && defined(__GNUC__)
// gmsh's .geo parser keeps a few small strings past gmsh::finalize; they are gmsh's own, so the
// leak checker of sanitizer builds is told to leave that library alone.
extern "C" __attribute__((visibility("default"))) const char* __lsan_default_suppressions() {
  return "leak:libgmsh.so\n";
}
#endif

namespace brindle::study {
namespace {

const std::string kData = BRINDLE_STUDY_TEST_DATA;

// A file path of its own for the running test (ctest runs tests in parallel processes).
std::string TempPath(const std::string& name) {
  const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
  const auto dir =
      std::filesystem::temp_directory_path() / ("brindle-intake-" + std::string(test->name()));
  std::filesystem::create_directories(dir);
  return (dir / name).string();
}

std::string WriteFile(const std::string& name, const std::string& text) {
  const std::string path = TempPath(name);
  std::ofstream(path, std::ios::binary) << text;
  return path;
}

// The message of the MeshInputError that `read` throws, or "" when it throws none.
template <class Read>
std::string ErrorOf(Read read) {
  try {
    read();
  } catch (const MeshInputError& error) {
    return error.what();
  }
  return "";
}

// Expects reading the mesh file to fail with a message that holds each of `words`.
void ExpectRefused(const std::string& path, std::initializer_list<std::string> words) {
  const std::string message = ErrorOf([&] { ReadStudyMesh(path); });
  for (const std::string& w : words)
    EXPECT_NE(message.find(w), std::string::npos) << message;
}

double TetVolume(const StudyMesh& m, const std::array<int, 4>& t) {
  const Point& a = m.vertices[t[0]];
  return Dot(m.vertices[t[1]] - a, Cross(m.vertices[t[2]] - a, m.vertices[t[3]] - a)) / 6;
}

double TriangleArea(const StudyMesh& m, const std::array<int, 3>& t) {
  const Point& a = m.vertices[t[0]];
  return Norm(Cross(m.vertices[t[1]] - a, m.vertices[t[2]] - a)) / 2;
}

double TotalVolume(const StudyMesh& m, int ref) {
  double total = 0;
  for (std::size_t e = 0; e < m.tetrahedra.size(); ++e)
    if (m.tetrahedronRef[e] == ref) total += std::abs(TetVolume(m, m.tetrahedra[e]));
  return total;
}

double TotalArea(const StudyMesh& m, int ref) {
  double total = 0;
  for (std::size_t e = 0; e < m.triangles.size(); ++e)
    if (m.triangleRef[e] == ref) total += TriangleArea(m, m.triangles[e]);
  return total;
}

std::map<int, long> Counts(const std::vector<int>& refs) {
  std::map<int, long> counts;
  for (int r : refs)
    ++counts[r];
  return counts;
}

#ifdef BRINDLE_STUDY_HAVE_GMSH
// Meshes a geometry with gmsh directly and saves it in the given .msh format.
std::string SaveMsh(const std::string& geo, double version, bool binary, const std::string& name) {
  const std::string path = TempPath(name);
  gmsh::initialize(0, nullptr, false);
  gmsh::option::setNumber("General.Terminal", 0);
  gmsh::open(geo);
  gmsh::option::setNumber("Mesh.MeshSizeMax", 0.25);
  gmsh::model::mesh::generate(3);
  gmsh::option::setNumber("Mesh.MshFileVersion", version);
  gmsh::option::setNumber("Mesh.Binary", binary ? 1 : 0);
  gmsh::write(path);
  gmsh::finalize();
  return path;
}
#endif

#define REQUIRE_GMSH() \
  if (!CanReadGmshFiles()) GTEST_SKIP() << "built without gmsh"

TEST(StudyIntake, GeometryKeepsPhysicalTagsNamesAndVolumes) {
  REQUIRE_GMSH();
  const StudyMesh mesh = MeshGeometry(kData + "/two_layers.geo", 0.25);
  EXPECT_EQ(mesh.dimension, 3);
  const auto tets = Counts(mesh.tetrahedronRef);
  ASSERT_EQ(tets.size(), 2u);
  EXPECT_NEAR(TotalVolume(mesh, 1), 0.2, 1e-12);
  EXPECT_NEAR(TotalVolume(mesh, 2), 0.1, 1e-12);
  // Only the named faces are boundary triangles; the others belong to no physical surface.
  EXPECT_EQ(Counts(mesh.triangleRef).size(), 2u);
  EXPECT_NEAR(TotalArea(mesh, 10), 1.0, 1e-12);
  EXPECT_NEAR(TotalArea(mesh, 20), 1.0, 1e-12);
  EXPECT_EQ(mesh.names.at({3, 1}), "concrete");
  EXPECT_EQ(mesh.names.at({3, 2}), "insulation");
  EXPECT_EQ(mesh.names.at({2, 10}), "warm");
  EXPECT_EQ(mesh.names.at({2, 20}), "cold");
  // A size below what the geometry itself asks for gives more elements.
  EXPECT_GT(MeshGeometry(kData + "/two_layers.geo", 0.08).tetrahedra.size(),
            3 * mesh.tetrahedra.size());
}

#ifdef BRINDLE_STUDY_HAVE_GMSH
// Version 2.2 files give gmsh a model of other entities than version 4.1 files (ASCII or binary
// is gmsh's own concern); the tool reads both alike.
TEST(StudyIntake, MshFilesOfEitherVersionReadAlike) {
  const std::string geo = kData + "/two_layers.geo";
  const StudyMesh first = ReadStudyMesh(SaveMsh(geo, 4.1, false, "a41.msh"));
  EXPECT_NEAR(TotalVolume(first, 1) + TotalVolume(first, 2), 0.3, 1e-12);
  EXPECT_EQ(first.names.size(), 4u);
  const StudyMesh old = ReadStudyMesh(SaveMsh(geo, 2.2, false, "a22.msh"));
  EXPECT_EQ(old.vertices.size(), first.vertices.size());
  EXPECT_EQ(Counts(old.tetrahedronRef), Counts(first.tetrahedronRef));
  EXPECT_EQ(Counts(old.triangleRef), Counts(first.triangleRef));
  EXPECT_EQ(old.names, first.names);
}
#endif

TEST(StudyIntake, TrianglesInAPlaneOfConstantZAreASection) {
  REQUIRE_GMSH();
  const StudyMesh mesh = MeshGeometry(kData + "/section.geo", 0.1);  // drawn at z = 5
  EXPECT_EQ(mesh.dimension, 2);
  EXPECT_TRUE(mesh.tetrahedra.empty());
  EXPECT_TRUE(std::all_of(mesh.vertices.begin(), mesh.vertices.end(),
                          [](const Point& p) { return p[2] == 0.0; }));
  EXPECT_NEAR(TotalArea(mesh, 7), 0.5, 1e-12);
  EXPECT_EQ(mesh.names.at({2, 7}), "brick");
  EXPECT_EQ(Counts(mesh.edgeRef).size(), 1u);  // only the named edge
  EXPECT_EQ(mesh.names.at({1, 3}), "warm");

  // A tilted surface mesh is neither a section nor a volume.
  const std::string tilted = WriteFile(
      "tilted.msh",
      "$MeshFormat\n2.2 0 8\n$EndMeshFormat\n$Nodes\n3\n1 0 0 0\n2 1 0 0\n3 0 1 1\n$EndNodes\n"
      "$Elements\n1\n1 2 2 1 1 1 2 3\n$EndElements\n");
  ExpectRefused(tilted, {"no tetrahedra"});
}

TEST(StudyIntake, RefusesElementsTheSolversCannotTakeWithTheirCounts) {
  REQUIRE_GMSH();
  const std::string header =
      "$MeshFormat\n2.2 0 8\n$EndMeshFormat\n$Nodes\n6\n1 0 0 0\n"
      "2 1 0 0\n3 2 0 0\n4 0 1 0\n5 1 1 0\n6 2 1 0\n$EndNodes\n";
  const std::string quads =
      WriteFile("quads.msh", header +
                                 "$Elements\n3\n1 3 2 1 1 1 2 5 4\n2 3 2 1 1 2 3 6 5\n"
                                 "3 2 2 1 1 1 2 5\n$EndElements\n");
  ExpectRefused(quads, {"quads.msh: 2 quadrilaterals: the solvers take triangles (2-D) and "
                        "tetrahedra (3-D) only",
                        "no Recombine"});

  const std::string curved =
      WriteFile("curved.msh", header + "$Elements\n1\n1 9 2 1 1 1 3 6 2 5 4\n$EndElements\n");
  ExpectRefused(curved, {"1 second-order triangle:", "Mesh.ElementOrder = 1"});

  // A volume left out of the physical groups would silently lose its material.
  const std::string partial =
      WriteFile("partial.geo",
                "SetFactory(\"OpenCASCADE\");\n"
                "Box(1) = {0, 0, 0, 1, 1, 1};\nBox(2) = {1, 0, 0, 1, 1, 1};\n"
                "Coherence;\nPhysical Volume(\"wall\", 1) = {1};\n");
  const std::string partialMessage = ErrorOf([&] { MeshGeometry(partial, 0.5); });
  EXPECT_NE(partialMessage.find("tetrahedra belong to no physical volume"), std::string::npos)
      << partialMessage;
}

TEST(StudyIntake, UnreadableFilesGetClearMessages) {
  ExpectRefused(WriteFile("binary.mesh", std::string("\x01\x00\x00\x00\x07", 5)), {"binary"});
  ExpectRefused(TempPath("missing.msh"), {"cannot open"});
  ExpectRefused("detail.stl", {"unknown mesh format '.stl'"});
  ExpectRefused(kData + "/section.geo", {"\"mesh_size\""});
  EXPECT_NE(ErrorOf([&] { MeshGeometry(kData + "/section.geo", 0); }).find("mesh size"),
            std::string::npos);
  const std::string garbage = WriteFile("garbage.msh", "solid cube\n  facet normal 0 0 1\n");
  const std::string message = ErrorOf([&] { ReadStudyMesh(garbage); });
  EXPECT_EQ(message.rfind(garbage + ": ", 0), 0u) << message;
  if (!CanReadGmshFiles()) {
    EXPECT_NE(message.find("without gmsh"), std::string::npos);
  }
}

// MEDIT's keywords in any case, comments, blocks the solvers do not use and text after End.
TEST(StudyIntake, MeditFilesKeepTheirReferences) {
  const std::string path = WriteFile("prism.mesh",
                                     "MeshVersionFormatted 2\n# a comment\nDimension\n3\n"
                                     "VERTICES 7\n0 0 0 0\n0 1 0 0  # trailing\n0 0 1 7\n"
                                     "1 0 0 0\n1 1 0 0\n1 0 1 0\n9 9 9 0\n"
                                     "triangles 2\n1 2 3 10\n4 5 6 20\nCorners 1 1\n"
                                     "Tetrahedra 3\n1 2 3 4 1\n2 3 4 5 2\n3 4 5 6 2\nEND\nafter\n");
  const StudyMesh mesh = ReadStudyMesh(path);
  EXPECT_EQ(mesh.dimension, 3);
  EXPECT_EQ(mesh.vertices.size(), 6u);  // the unused vertex is gone
  EXPECT_EQ(mesh.vertices[4], (Point{1, 1, 0}));
  EXPECT_EQ(mesh.tetrahedronRef, (std::vector<int>{1, 2, 2}));
  EXPECT_EQ(mesh.triangleRef, (std::vector<int>{10, 20}));
  EXPECT_NEAR(TotalVolume(mesh, 1) + TotalVolume(mesh, 2), 0.5, 1e-15);

  const StudyMesh section = ReadStudyMesh(
      WriteFile("square.mesh",
                "MeshVersionFormatted 2\nDimension 2\nVertices 4\n0 0 0\n2 0 0\n2 1 0\n0 1 0\n"
                "Edges 1\n4 1 5\nTriangles 2\n1 2 3 3\n1 3 4 4\nEnd\n"));
  EXPECT_EQ(section.dimension, 2);
  EXPECT_EQ(section.triangleRef, (std::vector<int>{3, 4}));
  EXPECT_EQ(section.edgeRef, (std::vector<int>{5}));

  const std::string medit =
      WriteFile("quads.mesh",
                "MeshVersionFormatted 2\nDimension 2\nVertices 4\n0 0 0\n1 0 0\n1 1 0\n0 1 0\n"
                "Triangles 1\n1 2 3 1\nQuadrilaterals 1\n1 2 3 4 1\nEnd\n");
  ExpectRefused(medit, {"1 quadrilateral:"});
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

TEST(StudyIntake, MalformedMeditFilesNameTheLine) {
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

// Two tetrahedra of references 1 and 2, boundary triangles 10 (named "warm") and 20.
StudyMesh SmallMesh() {
  StudyMesh mesh;
  mesh.vertices = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 1, 1}};
  mesh.tetrahedra = {{0, 1, 2, 3}, {1, 2, 3, 4}};
  mesh.tetrahedronRef = {1, 2};
  mesh.triangles = {{0, 1, 2}, {0, 2, 3}, {1, 2, 4}};
  mesh.triangleRef = {10, 10, 20};
  mesh.names = {{{2, 10}, "warm"}, {{3, 2}, "insulation"}, {{2, 30}, "unused"}};
  return mesh;
}

TEST(StudyIntake, ReferencesByNameOrNumberAndListingOfUnknownOnes) {
  const StudyMesh mesh = SmallMesh();
  EXPECT_EQ(ResolveReferences(mesh, 3, {"insulation", "1", "2"}, "material"),
            (std::vector<int>{2, 1}));
  EXPECT_EQ(ResolveReferences(mesh, 2, {"20", "warm"}, "boundary"), (std::vector<int>{20, 10}));
  EXPECT_EQ(DescribeReferences(mesh, 2),
            "  10 \"warm\": 2 triangles\n  20: 1 triangle\n  30 \"unused\": 0 triangles");

  const std::string unknown = ErrorOf([&] { ResolveReferences(mesh, 3, {"concrte"}, "material"); });
  EXPECT_EQ(unknown,
            "unknown material \"concrte\"; the mesh's tetrahedra carry these references:\n"
            "  1: 1 tetrahedron\n  2 \"insulation\": 1 tetrahedron");
  // A reference of another entity dimension is not one of these.
  EXPECT_NE(ErrorOf([&] { ResolveReferences(mesh, 3, {"10"}, "material"); }), "");
  EXPECT_NE(
      ErrorOf([&] { ResolveReferences(mesh, 2, {"unused"}, "boundary of environment inside"); })
          .find("boundary of environment inside \"unused\" names reference 30, which has no "
                "triangles"),
      std::string::npos);
  EXPECT_NE(
      ErrorOf([&] { ResolveReferences(mesh, 1, {"1"}, "boundary"); }).find("the mesh has no edges"),
      std::string::npos);
}

using Face = std::array<int, 3>;

Face Sorted(Face f) {
  std::sort(f.begin(), f.end());
  return f;
}

// Faces of tetrahedra that only one tetrahedron has: the outer surface of a conforming mesh.
std::set<Face> OuterFaces(const StudyMesh& mesh) {
  std::map<Face, int> uses;
  for (const auto& t : mesh.tetrahedra)
    for (int skip = 0; skip < 4; ++skip) {
      Face f;
      for (int c = 0, k = 0; c < 4; ++c)
        if (c != skip) f[k++] = t[c];
      ++uses[Sorted(f)];
    }
  std::set<Face> outer;
  for (const auto& [face, count] : uses) {
    EXPECT_LE(count, 2);
    if (count == 1) outer.insert(face);
  }
  return outer;
}

TEST(StudyIntake, UniformRefinementPreservesVolumesAreasAndConformity) {
  StudyMesh mesh = SmallMesh();
  // Distort the shape so that every split picks a diagonal of its own.
  mesh.vertices[4] = {0.9, 1.3, 0.7};
  const std::size_t coarseOuter = OuterFaces(mesh).size();
  StudyMesh fine = mesh;
  for (int level = 1; level <= 2; ++level) {
    fine = RefineUniformly(fine);
    const double scale = std::pow(8.0, level);
    ASSERT_EQ(fine.tetrahedra.size(), 2 * scale);
    EXPECT_EQ(fine.triangles.size(), 3 * std::pow(4.0, level));
    for (int ref : {1, 2})
      EXPECT_NEAR(TotalVolume(fine, ref), TotalVolume(mesh, ref), 1e-14);
    for (int ref : {10, 20})
      EXPECT_NEAR(TotalArea(fine, ref), TotalArea(mesh, ref), 1e-14);
    for (std::size_t e = 0; e < fine.tetrahedra.size(); ++e)  // no element turned inside out
      EXPECT_GT(TetVolume(fine, fine.tetrahedra[e]) * TetVolume(mesh, mesh.tetrahedra[e / scale]),
                0);
    // Conforming: the outer surface is the refined outer surface of the coarse mesh, and
    // every refined boundary triangle is one of its faces.
    const std::set<Face> outer = OuterFaces(fine);
    EXPECT_EQ(outer.size(), coarseOuter * std::pow(4.0, level));
    for (const auto& t : fine.triangles)
      EXPECT_TRUE(outer.count(Sorted(t)));
  }
  EXPECT_EQ(fine.names, mesh.names);

  StudyMesh section;
  section.dimension = 2;
  section.vertices = {{0, 0, 0}, {2, 0, 0}, {2, 1, 0}};
  section.triangles = {{0, 1, 2}};
  section.triangleRef = {4};
  section.edges = {{0, 1}, {1, 2}};
  section.edgeRef = {5, 6};
  const StudyMesh refined = RefineUniformly(section);
  EXPECT_EQ(refined.vertices.size(), 6u);  // edge midpoints are shared with the triangles
  EXPECT_EQ(refined.edges, (std::vector<std::array<int, 2>>{{0, 3}, {3, 1}, {1, 4}, {4, 2}}));
  EXPECT_EQ(refined.edgeRef, (std::vector<int>{5, 5, 6, 6}));
}

TEST(StudyBlockMesher, TetrahedraFillTheBlocksConformingly) {
  const Detail detail = SteelBarDetail();
  const StudyMesh mesh =
      BlockStudyMesh(MeshBlocks(detail.blocks, detail.materials, {0.02, 0.2, 1.6}),
                     [](const Point&, const Point&) { return 0; });
  for (const auto& t : mesh.tetrahedra)
    ASSERT_GT(TetVolume(mesh, t), 0.0);
  EXPECT_NEAR(TotalVolume(mesh, 3), 0.02 * 0.02 * 0.30, 1e-12);                // steel
  EXPECT_NEAR(TotalVolume(mesh, 2), 0.25 * 0.20 - 0.02 * 0.02 * 0.20, 1e-12);  // insulation
  // Conforming: every face is shared by two tetrahedra or lies on the box surface.
  double boundaryArea = 0.0;
  for (const Face& f : OuterFaces(mesh))
    boundaryArea += 0.5 * Norm(Cross(mesh.vertices[f[1]] - mesh.vertices[f[0]],
                                     mesh.vertices[f[2]] - mesh.vertices[f[0]]));
  const double lx = 0.38, ly = 0.5, lz = 0.5;
  EXPECT_NEAR(boundaryArea, 2 * (lx * ly + ly * lz + lz * lx), 1e-9);
}

}  // namespace
}  // namespace brindle::study
