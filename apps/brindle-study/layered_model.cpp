#include "layered_model.h"

#include <Eigen/Dense>
#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <unordered_map>

#include "geometry.h"

namespace brindle::study {
namespace {

// A face as the sorted vertex numbers (the third is -1 for a segment), for matching.
using FaceKey = std::array<int, 3>;

FaceKey KeyOf(std::array<int, 3> face) {
  if (face[2] < 0) {
    if (face[0] > face[1]) std::swap(face[0], face[1]);
    return face;
  }
  std::sort(face.begin(), face.end());
  return face;
}

struct FaceKeyHash {
  std::size_t operator()(const FaceKey& k) const {
    std::size_t h = static_cast<std::size_t>(k[0]) * 73856093u;
    h ^= static_cast<std::size_t>(k[1]) * 19349663u;
    h ^= static_cast<std::size_t>(k[2] + 1) * 83492791u;
    return h;
  }
};

// The faces of an element, each with the vertex opposite it.
int ElementFaces(int dimension, const std::array<int, 4>& e, std::array<FaceKey, 4>& faces,
                 std::array<int, 4>& opposite) {
  if (dimension == 2) {
    for (int i = 0; i < 3; ++i) {
      faces[i] = KeyOf({e[(i + 1) % 3], e[(i + 2) % 3], -1});
      opposite[i] = e[i];
    }
    return 3;
  }
  for (int i = 0; i < 4; ++i) {
    faces[i] = KeyOf({e[(i + 1) % 4], e[(i + 2) % 4], e[(i + 3) % 4]});
    opposite[i] = e[i];
  }
  return 4;
}

// Unit normal of a face pointing away from the vertex opposite it.
Point OutwardNormal(const std::vector<Point>& p, const FaceKey& f, int opposite) {
  Point n;
  if (f[2] < 0) {
    const Point t = p[f[1]] - p[f[0]];
    n = {t[1], -t[0], 0.0};
  } else {
    n = Cross(p[f[1]] - p[f[0]], p[f[2]] - p[f[0]]);
  }
  const double length = Norm(n);
  if (length == 0.0) return {0.0, 0.0, 0.0};
  n = (1.0 / length) * n;
  return Dot(n, p[opposite] - p[f[0]]) > 0.0 ? (-1.0) * n : n;
}

std::string Plural(std::size_t n, const char* word) {
  return std::to_string(n) + " " + word + (n == 1 ? "" : "s");
}

// Offset of a layer vertex: thickness d normal to every adjacent face of the environment
// (n_i . v = d) and flush with adjacent faces of no layer (n_a . v = 0), in the least-squares
// sense; limited to 3 d so that a near-conflict cannot throw the vertex far out.
Point MitredOffset(const Eigen::Matrix3d& normalMatrix, const Eigen::Vector3d& rightSide,
                   const Point& meanNormal, double d) {
  Eigen::JacobiSVD<Eigen::Matrix3d> svd(normalMatrix, Eigen::ComputeFullU | Eigen::ComputeFullV);
  svd.setThreshold(1e-6);
  const Eigen::Vector3d v = svd.solve(rightSide);
  Point offset{v[0], v[1], v[2]};
  const double length = Norm(offset);
  const double along = Dot(offset, meanNormal);
  if (!std::isfinite(length) || along <= 0.1 * d * Norm(meanNormal)) {
    const double mean = Norm(meanNormal);
    return mean > 0.0 ? (d / mean) * meanNormal : Point{0.0, 0.0, 0.0};
  }
  return length > 3.0 * d ? (3.0 * d / length) * offset : offset;
}

double SignedMeasure(const LayeredModel& m, const std::array<int, 4>& e) {
  const Point a = m.points[e[1]] - m.points[e[0]], b = m.points[e[2]] - m.points[e[0]];
  if (e[3] < 0) return a[0] * b[1] - a[1] * b[0];
  return Dot(Cross(a, b), m.points[e[3]] - m.points[e[0]]);
}

void AddElement(LayeredModel& m, std::array<int, 4> e, int material) {
  if (SignedMeasure(m, e) < 0.0) std::swap(e[0], e[1]);
  m.elements.push_back(e);
  m.material.push_back(material);
}

// Splits the prism between a face (v[0..2]) and its offset (v[3..5]) into three tetrahedra.
// Every quadrilateral side is cut along the diagonal through its lowest-numbered vertex, so that
// neighbouring prisms agree on their shared sides.
void AddPrism(LayeredModel& m, const std::array<int, 6>& v, int material) {
  static const int kRotations[6][6] = {{0, 1, 2, 3, 4, 5}, {1, 2, 0, 4, 5, 3}, {2, 0, 1, 5, 3, 4},
                                       {3, 5, 4, 0, 2, 1}, {4, 3, 5, 1, 0, 2}, {5, 4, 3, 2, 1, 0}};
  const int lowest = static_cast<int>(std::min_element(v.begin(), v.end()) - v.begin());
  int p[6];
  for (int i = 0; i < 6; ++i)
    p[i] = v[kRotations[lowest][i]];
  if (std::min(p[1], p[5]) < std::min(p[2], p[4])) {
    AddElement(m, {p[0], p[1], p[2], p[5]}, material);
    AddElement(m, {p[0], p[1], p[5], p[4]}, material);
  } else {
    AddElement(m, {p[0], p[1], p[2], p[4]}, material);
    AddElement(m, {p[0], p[4], p[2], p[5]}, material);
  }
  AddElement(m, {p[0], p[4], p[5], p[3]}, material);
}

// Splits the quadrilateral a, b, b', a' of a 2-D layer along the diagonal through its
// lowest-numbered vertex.
void AddQuad(LayeredModel& m, int a, int b, int outerA, int outerB, int material) {
  if (std::min(a, outerB) < std::min(b, outerA)) {
    AddElement(m, {a, b, outerB, -1}, material);
    AddElement(m, {a, outerB, outerA, -1}, material);
  } else {
    AddElement(m, {a, b, outerA, -1}, material);
    AddElement(m, {b, outerB, outerA, -1}, material);
  }
}

struct MatchedFace {
  FaceKey key;
  std::array<int, 3> given;  // as the file lists it
  int opposite = -1;
  int owners = 0;
};

// Finds the element(s) of every face of the environments.
std::vector<std::vector<MatchedFace>> MatchFaces(
    const SolidModel& solid, const std::vector<EnvironmentFaces>& environments) {
  std::vector<std::vector<MatchedFace>> matched(environments.size());
  std::unordered_map<FaceKey, std::vector<std::pair<int, int>>, FaceKeyHash> wanted;
  for (std::size_t e = 0; e < environments.size(); ++e)
    for (std::size_t f = 0; f < environments[e].faces.size(); ++f) {
      const auto& face = environments[e].faces[f];
      matched[e].push_back({KeyOf(face), face, -1, 0});
      wanted[matched[e].back().key].push_back({static_cast<int>(e), static_cast<int>(f)});
    }
  for (const auto& [key, users] : wanted)
    for (const auto& [e, f] : users)
      if (e != users.front().first)
        throw LayerError("environments " + environments[users.front().first].name + " and " +
                         environments[e].name +
                         " share boundary faces; a face belongs to one "
                         "environment");
  std::array<FaceKey, 4> faces;
  std::array<int, 4> opposite;
  for (const auto& element : solid.elements) {
    const int count = ElementFaces(solid.dimension, element, faces, opposite);
    for (int i = 0; i < count; ++i) {
      const auto hit = wanted.find(faces[i]);
      if (hit == wanted.end()) continue;
      for (const auto& [e, f] : hit->second) {
        matched[e][f].opposite = opposite[i];
        ++matched[e][f].owners;
      }
    }
  }
  for (std::size_t e = 0; e < environments.size(); ++e) {
    std::size_t loose = 0, inner = 0;
    for (const MatchedFace& m : matched[e]) {
      loose += m.owners == 0;
      inner += m.owners > 1;
    }
    const char* kind = solid.dimension == 2 ? "edge" : "face";
    if (loose)
      throw LayerError("environment " + environments[e].name + ": " + Plural(loose, kind) +
                       " of its boundaries belong to no element of the model");
    if (inner && environments[e].surfaceResistance > 0.0)
      throw LayerError("environment " + environments[e].name + ": " + Plural(inner, kind) +
                       " of its boundaries lie inside the model; a surface resistance needs "
                       "faces on the model's outside");
  }
  return matched;
}

// Outward normals of the model's outside faces that touch `vertices` but are not in `own`.
std::unordered_map<FaceKey, Point, FaceKeyHash> OtherOutsideFaces(
    const LayeredModel& m, const std::vector<char>& touches,
    const std::unordered_map<FaceKey, int, FaceKeyHash>& own) {
  std::unordered_map<FaceKey, std::pair<int, int>, FaceKeyHash> count;  // owners, opposite
  std::array<FaceKey, 4> faces;
  std::array<int, 4> opposite;
  for (std::size_t index = 0; index < m.solidElements; ++index) {
    const auto& element = m.elements[index];
    bool near = false;
    for (int v : element)
      near = near || (v >= 0 && touches[v]);
    if (!near) continue;
    const int n = ElementFaces(m.dimension, element, faces, opposite);
    for (int i = 0; i < n; ++i) {
      bool touching = false;
      for (int v : faces[i])
        touching = touching || (v >= 0 && touches[v]);
      if (!touching || own.count(faces[i])) continue;
      auto& c = count[faces[i]];
      ++c.first;
      c.second = opposite[i];
    }
  }
  std::unordered_map<FaceKey, Point, FaceKeyHash> outside;
  for (const auto& [key, c] : count)
    if (c.first == 1) outside[key] = OutwardNormal(m.points, key, c.second);
  return outside;
}

void AddLayer(LayeredModel& m, const std::vector<MatchedFace>& faces, int environment,
              int material) {
  const double d = m.layerThickness;
  std::unordered_map<FaceKey, int, FaceKeyHash> own;
  std::vector<char> touches(m.solidVertices, 0);
  for (std::size_t f = 0; f < faces.size(); ++f) {
    own[faces[f].key] = static_cast<int>(f);
    for (int v : faces[f].key)
      if (v >= 0) touches[v] = 1;
  }
  std::unordered_map<int, int> local;  // solid vertex -> layer vertex slot
  std::vector<Eigen::Matrix3d> normalMatrix;
  std::vector<Eigen::Vector3d> rightSide;
  std::vector<Point> meanNormal;
  auto slot = [&](int v) {
    const auto [it, added] = local.emplace(v, static_cast<int>(normalMatrix.size()));
    if (added) {
      normalMatrix.push_back(Eigen::Matrix3d::Zero());
      rightSide.push_back(Eigen::Vector3d::Zero());
      meanNormal.push_back({0.0, 0.0, 0.0});
    }
    return it->second;
  };
  for (const MatchedFace& f : faces) {
    const Point n = OutwardNormal(m.points, f.key, f.opposite);
    const Eigen::Vector3d nv(n[0], n[1], n[2]);
    for (int v : f.key) {
      if (v < 0) continue;
      const int s = slot(v);
      normalMatrix[s] += nv * nv.transpose();
      rightSide[s] += d * nv;
      meanNormal[s] = meanNormal[s] + n;
    }
  }
  for (const auto& [key, n] : OtherOutsideFaces(m, touches, own)) {
    const Eigen::Vector3d nv(n[0], n[1], n[2]);
    for (int v : key)
      if (v >= 0 && touches[v]) normalMatrix[local.at(v)] += nv * nv.transpose();
  }
  std::vector<int> outer(normalMatrix.size());
  for (const auto& [v, s] : local) {
    outer[s] = static_cast<int>(m.points.size());
    const Point at = m.points[v] + MitredOffset(normalMatrix[s], rightSide[s], meanNormal[s], d);
    m.points.push_back(at);
    m.fixedBy.push_back(environment);
  }
  // Layer vertices are numbered in the order their slots were made, which follows the faces;
  // the prism split only needs a consistent order, not a particular one.
  for (const MatchedFace& f : faces) {
    const auto& k = f.key;
    if (k[2] < 0) {
      AddQuad(m, k[0], k[1], outer[local.at(k[0])], outer[local.at(k[1])], material);
    } else {
      AddPrism(
          m,
          {k[0], k[1], k[2], outer[local.at(k[0])], outer[local.at(k[1])], outer[local.at(k[2])]},
          material);
    }
  }
}

}  // namespace

double ChooseLayerThickness(const SolidModel& solid, const std::vector<EnvironmentFaces>& faces) {
  double shortest = std::numeric_limits<double>::infinity();
  for (const EnvironmentFaces& environment : faces) {
    if (!(environment.surfaceResistance > 0.0)) continue;
    for (const auto& f : environment.faces) {
      const int corners = f[2] < 0 ? 2 : 3;
      for (int i = 0; i < corners; ++i) {
        const double length = Norm(solid.points[f[(i + 1) % corners]] - solid.points[f[i]]);
        if (length > 0.0) shortest = std::min(shortest, length);
      }
    }
  }
  return std::min(1e-3, 0.1 * shortest);
}

LayeredModel BuildLayeredModel(SolidModel solid, const std::vector<EnvironmentFaces>& faces) {
  const auto matched = MatchFaces(solid, faces);
  LayeredModel m;
  m.dimension = solid.dimension;
  m.layerThickness = ChooseLayerThickness(solid, faces);
  m.solidVertices = solid.points.size();
  m.solidElements = solid.elements.size();
  m.points = std::move(solid.points);
  m.elements = std::move(solid.elements);
  m.material = std::move(solid.material);
  m.conductivity = solid.conductivity;
  m.fixedBy.assign(m.solidVertices, -1);
  m.layerMaterialOf.assign(faces.size(), -1);
  m.solidFaces.resize(faces.size());
  m.surfaceVertices.resize(faces.size());
  for (std::size_t e = 0; e < faces.size(); ++e) {
    std::vector<char> seen(m.solidVertices, 0);
    for (const MatchedFace& f : matched[e]) {
      m.solidFaces[e].push_back(f.given);
      for (int v : f.key)
        if (v >= 0 && !seen[v]) {
          seen[v] = 1;
          m.surfaceVertices[e].push_back(v);
        }
    }
    if (faces[e].surfaceResistance > 0.0) continue;
    bool holds = false;
    for (int v : m.surfaceVertices[e])
      if (m.fixedBy[v] < 0) {
        m.fixedBy[v] = static_cast<int>(e);
        holds = true;
      }
    if (!holds)
      throw LayerError("environment " + faces[e].name +
                       " holds no vertex: every vertex of its faces belongs to an earlier "
                       "environment without surface resistance");
  }
  for (std::size_t e = 0; e < faces.size(); ++e) {
    if (!(faces[e].surfaceResistance > 0.0)) continue;
    const int material = static_cast<int>(m.conductivity.size());
    m.conductivity.push_back(m.layerThickness / faces[e].surfaceResistance);
    m.layerMaterialOf[e] = material;
    AddLayer(m, matched[e], static_cast<int>(e), material);
  }
  return m;
}

}  // namespace brindle::study
