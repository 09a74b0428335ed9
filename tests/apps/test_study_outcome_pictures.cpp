// A solved study drawn: the engine's model adapted to the pictures, the symmetry planes of a
// partial model found from its free faces, and the files a study leaves.
#include <gtest/gtest.h>

#include <filesystem>

#include "block_mesher.h"
#include "study_pictures.h"
#include "study_test_files.h"
#include "volume_pictures.h"

namespace brindle::study {
namespace {

namespace fs = std::filesystem;

// A 0.3 x 0.2 x 0.1 block with an environment on x = 0 and one on x = 0.3.
TetMesh Block() {
  return MeshBlocks({{{0, 0, 0}, {0.3, 0.2, 0.1}, 0}}, {{"brick", 0.8, Role::kSolid}},
                    {0.05, 0.05, 1.5});
}

std::vector<std::array<int, 3>> FacesAt(const TetMesh& mesh, double x) {
  std::vector<std::array<int, 3>> faces;
  for (const auto& t : mesh.tetrahedra)
    for (int skip = 0; skip < 4; ++skip) {
      std::array<int, 3> f;
      int k = 0;
      for (int i = 0; i < 4; ++i)
        if (i != skip) f[k++] = t[i];
      if (std::all_of(f.begin(), f.end(), [&](int v) { return mesh.points[v][0] == x; }))
        faces.push_back(f);
    }
  return faces;
}

TEST(StudyOutcomePictures, SymmetryPlanesAreFreeBoundingPlanesNearTheColdSpot) {
  const TetMesh mesh = Block();
  const std::vector<std::vector<std::array<int, 3>>> used{FacesAt(mesh, 0.0), FacesAt(mesh, 0.3)};
  EXPECT_TRUE(SymmetryPlanes(mesh, 1.0, used, {0, 0, 0}).empty());
  const auto quarter = SymmetryPlanes(mesh, 4.0, used, {0, 0.01, 0.0});
  ASSERT_EQ(quarter.size(), 2u);  // one per axis: z = 0 and y = 0, never the used x planes
  EXPECT_EQ(quarter[0].axis, 2);
  EXPECT_EQ(quarter[1].axis, 1);
  EXPECT_EQ(quarter[1].offset, 0.0);
}

TEST(StudyOutcomePictures, SolvedStudyLeavesPicturesAndTheModelWithItsReferences) {
  const TetMesh block = Block();
  StudyOutcome o;
  o.dimension = 3;
  o.points = block.points;
  o.elements = block.tetrahedra;
  o.material.assign(block.tetrahedra.size(), 0);
  o.materialNames = {"brick"};
  o.materialIsLayer = {0};
  o.solidVertices = block.points.size();
  o.solidElements = block.tetrahedra.size();
  for (const Point& p : block.points)
    o.temperature.push_back(18.0 - 60.0 * p[0] + p[1]);
  o.environmentNames = {"room", "outside"};
  o.environmentTemperature = {20.0, -5.0};
  o.environmentFaces = {FacesAt(block, 0.0), FacesAt(block, 0.3)};
  o.coldest = {{0, 0, 0}, {0.3, 0, 0}};
  o.warmest = {{0, 0.2, 0}, {0.3, 0.2, 0}};
  StudyMesh mesh;
  mesh.tetrahedronRef.assign(block.tetrahedra.size(), 7);

  const fs::path folder = ScratchFolder("brindle-study-outcome");
  StudyPictureRequest request;
  request.folder = folder.string();
  request.caption = "block";
  request.conductivity = {0.8};
  request.symmetryFactor = 2.0;
  const nlohmann::json record = WriteStudyPictures(o, mesh, request);
  std::vector<std::string> names;
  for (const auto& f : record["files"])
    names.push_back(fs::path(f.get<std::string>()).filename().string());
  EXPECT_EQ(names,
            (std::vector<std::string>{"study-room.svg", "study-outside.svg", "study-section.svg",
                                      "study-surfaces.vtk", "study.vtk"}));
  EXPECT_EQ(record["symmetry_planes"], nlohmann::json::array({"y = 0.000 m"}));
  EXPECT_EQ(record["surface_extremes"]["outside"]["kind"], "warmest");
  EXPECT_NEAR(record["surface_extremes"]["room"]["temperature_C"].get<double>(), 18.0, 1e-12);

  const std::string model = ReadFile(folder / "study.vtk");
  for (const char* expected : {"material_name 1 1 string\nbrick\n", "SCALARS reference int 1",
                               "SCALARS surface_layer int 1", "LOOKUP_TABLE default\n7\n7\n"})
    EXPECT_NE(model.find(expected), std::string::npos) << expected;
  EXPECT_NE(
      ReadFile(folder / "study-surfaces.vtk").find("environment_name 1 2 string\nroom\noutside\n"),
      std::string::npos);
  const std::string room = ReadFile(folder / "study-room.svg");
  EXPECT_NE(room.find(">coldest 18.0 °C, f = 0.920</text>"), std::string::npos);
  EXPECT_NE(room.find("symmetry plane"), std::string::npos);
  fs::remove_all(folder);
}

}  // namespace
}  // namespace brindle::study
