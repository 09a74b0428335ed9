#include "surface/conduction_system.h"

#include <algorithm>
#include <stdexcept>

namespace brindle {
namespace {

constexpr double kResidualLimit = 1e-8;

bool SamePattern(const Eigen::SparseMatrix<double>& x, const Eigen::SparseMatrix<double>& y) {
  if (x.rows() != y.rows() || x.cols() != y.cols() || x.nonZeros() != y.nonZeros()) return false;
  const auto outer = x.outerSize() + 1;
  return std::equal(x.outerIndexPtr(), x.outerIndexPtr() + outer, y.outerIndexPtr()) &&
         std::equal(x.innerIndexPtr(), x.innerIndexPtr() + x.nonZeros(), y.innerIndexPtr());
}

}  // namespace

bool ConductionSystem::Factorise(const Triplets& triplets, int vertexCount, int fixedCount) {
  // Splitting the triplets keeps their order inside each block, so duplicates are summed in
  // the same order as when the whole matrix is built first and the blocks are cut from it.
  const int freeCount = vertexCount - fixedCount;
  Triplets freeFreeEntries, freeFixedEntries;
  freeFreeEntries.reserve(triplets.size());
  freeFixedEntries.reserve(triplets.size() / 4);
  for (const auto& entry : triplets) {
    if (entry.row() < fixedCount) continue;
    if (entry.col() >= fixedCount) {
      freeFreeEntries.emplace_back(entry.row() - fixedCount, entry.col() - fixedCount,
                                   entry.value());
    } else {
      freeFixedEntries.emplace_back(entry.row() - fixedCount, entry.col(), entry.value());
    }
  }
  Matrix freeFree(freeCount, freeCount), freeFixed(freeCount, fixedCount);
  freeFree.setFromTriplets(freeFreeEntries.begin(), freeFreeEntries.end());
  freeFixed.setFromTriplets(freeFixedEntries.begin(), freeFixedEntries.end());

  // Changing conductivities keeps the sparsity pattern, so the fill-reducing ordering and
  // symbolic analysis of the previous factorisation can be reused.
  const bool reuseAnalysis = analysed_ && SamePattern(freeFree, freeFree_);
  freeFree_ = std::move(freeFree);
  freeFixed_ = std::move(freeFixed);
  if (freeCount == 0) return true;  // every vertex fixed: nothing to factorise
  if (reuseAnalysis) {
    factor_.factorize(freeFree_);
  } else {
    factor_.compute(freeFree_);
    analysed_ = true;
  }
  return factor_.info() == Eigen::Success;
}

Eigen::VectorXd ConductionSystem::Solve(const Eigen::VectorXd& fixed) const {
  if (freeFree_.rows() == 0) return Eigen::VectorXd();
  const Eigen::VectorXd rhs = -(freeFixed_ * fixed);
  const Eigen::VectorXd free = factor_.solve(rhs);
  const Eigen::VectorXd residual = freeFree_ * free + freeFixed_ * fixed;
  // Leaves by exception, see brindle.h.
  if (residual.norm() > kResidualLimit) throw std::runtime_error("Large reduced residual");
  return free;
}

}  // namespace brindle
