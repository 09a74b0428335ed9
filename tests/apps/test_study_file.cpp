// Study files the engine refuses, each with a message naming the file and the key.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "block_mesher.h"
#include "block_study_mesh.h"
#include "layered_model.h"
#include "study_engine.h"

namespace brindle::study {
namespace {

using nlohmann::json;

json GoodStudy() {
  return json::parse(R"({
    "mesh": "wall.msh", "length_unit": "mm", "materials": {"brick": 0.8, "2": 0.04},
    "environments": {
      "inside": {"temperature": 20, "surface_resistance": 0.13, "boundaries": ["warm", 10]},
      "outside": {"temperature": -5, "surface_resistance": 0.04, "boundaries": "cold"}},
    "symmetry_factor": 2, "check_convergence": true, "probes": {"A": [1, 2]},
    "psi": {"U": [0.3], "lengths": [1.2]}})");
}

TEST(StudyFile, RefusesWhatItCannotUseWithFileKeyAndProblem) {
  struct Case {
    const char* pointer;  // JSON pointer of the value to change ("" removes nothing)
    json value;           // the new value (null removes the key)
    const char* message;
  };
  const Case cases[] = {
      {"/mesh", nullptr, "wall.json: mesh: give either \"mesh\" or \"geometry\""},
      {"/geometry", "wall.geo", "wall.json: mesh: give either"},
      {"/mesh_size", 5, "wall.json: mesh_size: only used with \"geometry\""},
      {"/length_unit", "inch", "wall.json: length_unit: expected \"m\", \"cm\" or \"mm\""},
      {"/materials/brick", -1, "wall.json: materials: brick: must be greater than 0"},
      {"/materials/brick", "hard", "wall.json: materials: brick: expected a number"},
      {"/materials", json::object(), "wall.json: materials: expected an object"},
      {"/environments/outside", nullptr, "wall.json: environments: a study needs at least two"},
      {"/environments/inside/temperature", nullptr,
       "wall.json: environments: inside: needs a \"temperature\""},
      {"/environments/inside/surface_resistance", -0.1,
       "wall.json: environments: inside: surface_resistance: must not be negative"},
      {"/environments/inside/boundaries", json::array(),
       "wall.json: environments: inside: boundaries: names no boundary"},
      {"/environments/inside/boundaries/0", 1.5,
       "wall.json: environments: inside: boundaries[0]: expected a physical name or a reference"},
      {"/environments/inside/colour", "red",
       "wall.json: environments: inside: colour: unknown key"},
      {"/symmetry_factor", 0, "wall.json: symmetry_factor: must be greater than 0"},
      {"/check_convergence", "yes", "wall.json: check_convergence: expected true or false"},
      {"/probes/A", json::array({1}), "wall.json: probes: A: expected [x, y] or [x, y, z]"},
      {"/psi/lengths", json::array(), "wall.json: psi: \"U\" and \"lengths\" must have the same"},
      {"/psi/between", json::array({"inside", "attic"}),
       "wall.json: psi: between: no environment attic"},
      {"/materail", 1, "wall.json: materail: unknown key"},
  };
  for (const Case& c : cases) {
    json study = GoodStudy();
    const json::json_pointer at(c.pointer);
    if (c.value.is_null())
      study[at.parent_pointer()].erase(at.back());
    else
      study[at] = c.value;
    try {
      ParseStudy(study, "wall.json");
      ADD_FAILURE() << c.pointer << " was accepted";
    } catch (const StudyFileError& e) {
      EXPECT_NE(std::string(e.what()).find(c.message), std::string::npos)
          << c.pointer << ": " << e.what();
    }
  }
}

// A small slab with a boundary inside it and one outside.
StudyMesh TwoBlockMesh() {
  const TetMesh tets =
      MeshBlocks({{{0, 0, 0}, {0.2, 0.2, 0.2}, 0}, {{0.2, 0, 0}, {0.4, 0.2, 0.2}, 1}},
                 {{"a", 1.0, Role::kSolid}, {"b", 1.0, Role::kSolid}}, {0.1, 0.1, 1.5});
  StudyMesh mesh = BlockStudyMesh(tets, [](const Point& c, const Point& n) {
    return n[0] < -0.5 && c[0] < 1e-9 ? 1 : n[0] > 0.5 ? 2 : 0;
  });
  // The interface x = 0.2 as boundary 3.
  for (const auto& t : mesh.tetrahedra)
    for (int skip = 0; skip < 4; ++skip) {
      std::array<int, 3> f;
      for (int i = 0, k = 0; i < 4; ++i)
        if (i != skip) f[k++] = t[i];
      bool onPlane = true;
      for (int v : f)
        onPlane = onPlane && std::abs(mesh.vertices[v][0] - 0.2) < 1e-12;
      if (onPlane && mesh.tetrahedronRef[&t - &mesh.tetrahedra[0]] == 1) {
        mesh.triangles.push_back(f);
        mesh.triangleRef.push_back(3);
      }
    }
  return mesh;
}

TEST(StudyFile, RefusesModelsTheMeshCannotCarry) {
  const StudyMesh mesh = TwoBlockMesh();
  const json good = {{"mesh", "m"},
                     {"materials", {{"1", 1.0}, {"2", 1.0}}},
                     {"environments",
                      {{"in", {{"temperature", 1}, {"surface_resistance", 0}, {"boundaries", {3}}}},
                       {"out", {{"temperature", 0}, {"boundaries", {2}}}}}}};
  // A fixed temperature inside the model is fine; the other changes are refused.
  EXPECT_NO_THROW(SolveStudy(ParseStudy(good, "s.json"), mesh));
  const std::pair<json, const char*> cases[] = {
      {{{"environments", {{"in", {{"surface_resistance", 0.1}}}}}},
       "environment in: 8 faces of its boundaries lie inside the model; a surface resistance "
       "needs faces on the model's outside"},
      {{{"materials", {{"2", nullptr}}}}, "s.json: materials: no conductivity for 2 ("},
      {{{"environments", {{"out", {{"boundaries", {"roof"}}}}}}},
       "s.json: environments: out: boundaries: "},
      {{{"probes", {{"far", {5, 5, 5}}}}}, "s.json: probes: far: the point lies outside the model"},
      {{{"psi", {{"U", {1}}, {"lengths", {1}}}}}, "s.json: psi: a 3-D study gives \"chi\" instead"},
      {{{"environments", {{"in", {{"boundaries", {1}}}}, {"out", {{"boundaries", {1, 2}}}}}}},
       "environments in and out share boundary faces"},
  };
  for (const auto& [patch, message] : cases) {
    json study = good;
    study.merge_patch(patch);
    try {
      SolveStudy(ParseStudy(study, "s.json"), mesh);
      ADD_FAILURE() << patch << " was accepted";
    } catch (const std::exception& e) {
      EXPECT_NE(std::string(e.what()).find(message), std::string::npos) << e.what();
    }
  }
}

}  // namespace
}  // namespace brindle::study
