#include "volume/conduction_solver.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "common/trace.h"
#include "volume/block_assembly.h"
#include "volume/mesh_checks.h"
#include "volume/solve_threads.h"
#include "volume/solver_order.h"

namespace brindle {
namespace {

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
  *code = kVolumeSucceeded;
  const std::size_t n = model_.vertices.size();

  const std::int64_t unreachable = FirstVertexUnreachableFromZero(n, model_.tetrahedra);
  if (unreachable >= 0) {
    CopyDetailText(detail, DisconnectedMeshMessage(unreachable));
    *code = kDisconnectedMesh;
    return;
  }

  SolverOrder order = SortIntoSolverOrder(model_.vertices);
  vertices_ = std::move(order.vertices);
  positions_ = std::move(order.positions);
  fixedCount_ = order.fixedCount;

  std::vector<char> used(n, 0);
  BlockAssembler assembler(model_.tetrahedra, positions_, fixedCount_);
  std::string message;
  try {
    RunElementPass(assembler, &used, message);
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
  Prepare(assembler.Finish());
  temperatures_.setZero(Eigen::Index(n));
}

void brindle::RunElementPass(BlockAssembler& assembler, std::vector<char>* used,
                             std::string& message) const {
  ForEachElementMatrix(model_, positions_, tolerance_, used, message,
                       [&assembler](std::size_t, const std::int32_t(&p)[4],
                                    const ElementMatrix& k) { assembler.Add(p, k); });
}

void brindle::Prepare(SystemBlocks blocks) {
  const bool finite = AllFinite(blocks.freeBlock);
  // Nothing below allocates: the solver's storage keeps its size on an update, so running out
  // of memory earlier leaves the previous matrices and solver intact.
  free_.swap(blocks.freeBlock);
  coupling_.swap(blocks.couplingBlock);
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
  if (freeCount == 0) return kVolumeSucceeded;

  const Eigen::VectorXd fixed = temperatures_.head(f);
  Eigen::VectorXd rhs = Eigen::VectorXd::Zero(freeCount);
  rhs.noalias() -= coupling_ * fixed;

  Eigen::VectorXd unknowns;
  if (freeMatrixFinite_ && rhs.allFinite()) {
    SolveThreadScope threads(free_.nonZeros());
    unknowns = solver_.solve(rhs);
  } else {
    // A system with NaN or infinite entries would only burn the full iteration budget: stop
    // the solver before its first iteration so that it reports no convergence, and mark the
    // unknowns as undefined.
    solver_.setMaxIterations(0);
    unknowns = solver_.solve(rhs);
    solver_.setMaxIterations(-1);  // back to Eigen's default limit
    unknowns.setConstant(std::numeric_limits<double>::quiet_NaN());
  }
  temperatures_.tail(freeCount) = unknowns;
  return kVolumeSucceeded;
}

double brindle::Residual() const {
  const Eigen::Index f = Eigen::Index(fixedCount_);
  const Eigen::Index freeCount = temperatures_.size() - f;
  if (freeCount == 0) return 0.0;
  return (coupling_ * temperatures_.head(f) + free_ * temperatures_.tail(freeCount)).squaredNorm();
}

int brindle::UpdateConductivities(const std::vector<double>& conductivities, std::string& message) {
  if (conductivities.size() >= 2) {
    TraceOut("Updating conductivities to %f %f\n", conductivities[0], conductivities[1]);
  }
  // Guard: the exports always pass MaterialCount() values. Another count is ignored rather
  // than read past the material table.
  if (conductivities.size() != model_.materials.size()) return kVolumeSucceeded;

  std::vector<double> previous(model_.materials.size());
  for (std::size_t m = 0; m < previous.size(); ++m) {
    previous[m] = model_.materials[m].conductivity;
    model_.materials[m].conductivity = conductivities[m];
  }
  try {
    BlockAssembler assembler(model_.tetrahedra, positions_, fixedCount_);
    RunElementPass(assembler, nullptr, message);
    Prepare(assembler.Finish());
  } catch (const MeshCheckFailure& failure) {
    // Guard: the element checks do not depend on conductivities and passed when the solver
    // was built, so an update cannot fail them; the catch keeps a failure a status all the
    // same instead of an exception that the exports would let through.
    return failure.code;
  } catch (...) {
    // Out of memory: the matrices were not touched, so the conductivities go back as well.
    for (std::size_t m = 0; m < previous.size(); ++m)
      model_.materials[m].conductivity = previous[m];
    throw;
  }
  return kVolumeSucceeded;
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
