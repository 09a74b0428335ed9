#include "volume/conduction_solver.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "common/trace.h"
#include "volume/element_geometry.h"
#include "volume/mesh_checks.h"
#include "volume/solve_threads.h"

namespace brindle {
namespace {

// Corners of the face opposite each corner, in tetrahedron order.
constexpr int kOppositeFace[4][3] = {{1, 2, 3}, {0, 2, 3}, {0, 1, 3}, {0, 1, 2}};

Vec3 PointOf(const VertexRecord& vertex) {
  return {vertex.x, vertex.y, vertex.z};
}

double FixedTemperature(VertexKind kind) {
  switch (kind) {
    case VertexKind::Low:
      return kLowTemperature;
    case VertexKind::Mid:
      return kMidTemperature;
    default:
      return kHighTemperature;
  }
}

bool AllFinite(const brindle::SparseMatrix& matrix) {
  return Eigen::Map<const Eigen::VectorXd>(matrix.valuePtr(), matrix.nonZeros()).allFinite();
}

}  // namespace

brindle::brindle(prepoisson model, double tolerance, int* code, char* detail)
    : tolerance_(tolerance), model_(std::move(model)) {
  *code = 0;
  const std::size_t n = model_.vertices.size();

  const std::int64_t unreachable = FirstVertexUnreachableFromZero(n, model_.tetrahedra);
  if (unreachable >= 0) {
    CopyDetailText(detail, DisconnectedMeshMessage(unreachable));
    *code = kDisconnectedMesh;
    return;
  }

  vertices_ = model_.vertices;
  for (std::size_t i = 0; i < n; ++i)
    vertices_[i].number = std::int64_t(i);
  std::sort(vertices_.begin(), vertices_.end(),
            [](const VertexRecord& a, const VertexRecord& b) { return a.kind < b.kind; });
  positions_.resize(n);
  for (std::size_t i = 0; i < n; ++i)
    positions_[vertices_[i].number] = std::int32_t(i);
  fixedCount_ = std::size_t(std::count_if(vertices_.begin(), vertices_.end(),
                                          [](const VertexRecord& v) { return IsFixed(v.kind); }));

  std::vector<char> used(n, 0);
  std::vector<Triplet> triplets;
  std::string message;
  try {
    triplets = ElementPass(&used, message);
  } catch (const MeshCheckFailure& failure) {
    CopyDetailText(detail, message);
    *code = failure.code;
    return;
  }
  if (std::find(used.begin(), used.end(), 0) != used.end()) {
    CopyDetailText(detail, SoloVertexMessage());
    *code = kSoloVertex;
    return;
  }
  std::vector<char>().swap(used);

  TraceOut("before defining a new SpMat\n");
  AssembleAndPrepare(triplets);
  temperatures_.setZero(Eigen::Index(n));
}

std::vector<brindle::Triplet> brindle::ElementPass(std::vector<char>* used,
                                                   std::string& message) const {
  const std::vector<Tetrahedron>& tetrahedra = model_.tetrahedra;
  std::vector<double> conductivityOfMaterial(model_.materials.size());
  for (std::size_t m = 0; m < model_.materials.size(); ++m)
    conductivityOfMaterial[m] = model_.materials[m].conductivity;

  std::vector<Triplet> triplets;
  triplets.reserve(16 * tetrahedra.size());
  for (std::size_t t = 0; t < tetrahedra.size(); ++t) {
    const Tetrahedron& tet = tetrahedra[t];
    const std::int32_t p[4] = {positions_[tet[0]], positions_[tet[1]], positions_[tet[2]],
                               positions_[tet[3]]};
    if (p[0] == p[1] || p[0] == p[2] || p[0] == p[3] || p[1] == p[2] || p[1] == p[3] ||
        p[2] == p[3]) {
      message = DegenerateTetrahedronMessage(t, p);
      throw MeshCheckFailure{kDegenerateTetrahedron};
    }
    if (used) {
      for (std::int32_t position : p)
        (*used)[position] = 1;
    }

    const Vec3 points[4] = {PointOf(model_.vertices[tet[0]]), PointOf(model_.vertices[tet[1]]),
                            PointOf(model_.vertices[tet[2]]), PointOf(model_.vertices[tet[3]])};
    const double sixVolume = SixTimesVolume(points[0], points[1], points[2], points[3]);
    const double scale = sixVolume * conductivityOfMaterial[model_.tetrahedronMaterials[t]] / 6;

    Vec3 gradients[4];
    for (int apex = 0; apex < 4; ++apex) {
      const int* face = kOppositeFace[apex];
      const ApexGradient g =
          GradientAtApex(points[apex], points[face[0]], points[face[1]], points[face[2]]);
      if (!IsThickEnough(g.height, tolerance_)) {
        const std::int32_t others[3] = {p[face[0]], p[face[1]], p[face[2]]};
        message = SliverTetrahedronMessage(p[apex], tolerance_, others, t);
        throw MeshCheckFailure{kSliverTetrahedron};
      }
      gradients[apex] = g.gradient;
    }

    for (int i = 0; i < 4; ++i) {
      triplets.emplace_back(p[i], p[i], scale * Dot(gradients[i], gradients[i]));
    }
    for (int i = 0; i < 4; ++i) {
      for (int j = i + 1; j < 4; ++j) {
        const double value = scale * Dot(gradients[i], gradients[j]);
        triplets.emplace_back(p[i], p[j], value);
        triplets.emplace_back(p[j], p[i], value);
      }
    }
  }
  return triplets;
}

// Builds the global matrix in solver order, keeps its free block and its free-to-fixed
// coupling block, and prepares the solver on the free block. The triplets are released as
// soon as the matrix exists, so the two never outlive each other by more than one copy.
void brindle::AssembleAndPrepare(std::vector<Triplet>& triplets) {
  const Eigen::Index n = Eigen::Index(vertices_.size());
  const Eigen::Index f = Eigen::Index(fixedCount_);
  SparseMatrix freeBlock;
  SparseMatrix couplingBlock;
  {
    SparseMatrix global(n, n);
    global.setFromTriplets(triplets.begin(), triplets.end());
    std::vector<Triplet>().swap(triplets);
    freeBlock = global.block(f, f, n - f, n - f);
    couplingBlock = global.block(f, 0, n - f, f);
  }
  freeBlock.makeCompressed();
  couplingBlock.makeCompressed();
  const bool finite = AllFinite(freeBlock);
  // Nothing below allocates once the sizes are known (an update keeps them), so the solver is
  // never left half prepared.
  free_.swap(freeBlock);
  coupling_.swap(couplingBlock);
  freeMatrixFinite_ = finite;
  solver_.compute(free_);
}

void brindle::WriteFixedTemperatures() {
  for (std::size_t i = 0; i < vertices_.size() && IsFixed(vertices_[i].kind); ++i) {
    temperatures_[Eigen::Index(i)] = FixedTemperature(vertices_[i].kind);
  }
}

int brindle::Solve() {
  WriteFixedTemperatures();
  const Eigen::Index f = Eigen::Index(fixedCount_);
  const Eigen::Index freeCount = temperatures_.size() - f;
  if (freeCount == 0) return 0;

  const Eigen::VectorXd fixed = temperatures_.head(f);
  Eigen::VectorXd rhs = Eigen::VectorXd::Zero(freeCount);
  rhs.noalias() -= coupling_ * fixed;

  Eigen::VectorXd unknowns;
  if (freeMatrixFinite_ && rhs.allFinite()) {
    SolveThreadScope threads(free_.nonZeros());
    unknowns = solver_.solve(rhs);
  } else {
    // A system with NaN or infinite entries would only burn the full iteration budget: stop
    // the solver before its first iteration so it reports no convergence, and mark the
    // unknowns as undefined.
    solver_.setMaxIterations(0);
    unknowns = solver_.solve(rhs);
    solver_.setMaxIterations(-1);  // back to Eigen's default limit
    unknowns.setConstant(std::numeric_limits<double>::quiet_NaN());
  }
  temperatures_.tail(freeCount) = unknowns;
  return 0;
}

double brindle::Residual() const {
  const Eigen::Index f = Eigen::Index(fixedCount_);
  const Eigen::Index freeCount = temperatures_.size() - f;
  if (freeCount == 0) return 0.0;
  const auto fixed = temperatures_.head(f);
  const auto unknowns = temperatures_.tail(freeCount);
  return (coupling_ * fixed + free_ * unknowns).squaredNorm();
}

int brindle::UpdateConductivities(const std::vector<double>& conductivities, std::string& message) {
  if (conductivities.size() >= 2) {
    TraceOut("Updating conductivities to %f %f\n", conductivities[0], conductivities[1]);
  }
  if (conductivities.size() != model_.materials.size()) return 0;

  std::vector<double> previous(model_.materials.size());
  for (std::size_t m = 0; m < previous.size(); ++m) {
    previous[m] = model_.materials[m].conductivity;
    model_.materials[m].conductivity = conductivities[m];
  }
  try {
    std::vector<Triplet> triplets = ElementPass(nullptr, message);
    AssembleAndPrepare(triplets);
  } catch (const MeshCheckFailure& failure) {
    return failure.code;
  } catch (...) {
    for (std::size_t m = 0; m < previous.size(); ++m)
      model_.materials[m].conductivity = previous[m];
    throw;
  }
  return 0;
}

int brindle::Status() const {
  return int(solver_.info());
}

void brindle::CopyTemperatures(double* temperatures) const {
  for (std::size_t i = 0; i < vertices_.size(); ++i) {
    temperatures[vertices_[i].number] = temperatures_[Eigen::Index(i)];
  }
}

}  // namespace brindle
