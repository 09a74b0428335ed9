// The linear system left after the prescribed temperatures are moved to the right-hand side:
// the free-free block of the conduction matrix, its coupling to the fixed vertices, and one
// sparse LDLT factorisation of the free-free block reused by every solve.
#ifndef BRINDLE_SURFACE_CONDUCTION_SYSTEM_H
#define BRINDLE_SURFACE_CONDUCTION_SYSTEM_H

#include <Eigen/SparseCholesky>
#include <Eigen/SparseCore>

#include "surface/stiffness.h"

namespace brindle {

class ConductionSystem {
 public:
  using Matrix = Eigen::SparseMatrix<double>;

  // Splits the assembled matrix (vertexCount square, fixed vertices first) into the two
  // blocks and factorises the free-free one. Returns false when the factorisation fails,
  // for instance on a zero pivot when no vertex is fixed.
  bool Factorise(const Triplets& triplets, int vertexCount, int fixedCount);

  const Matrix& FreeFree() const { return freeFree_; }
  const Matrix& FreeFixed() const { return freeFixed_; }

  // Free temperatures for the prescribed values `fixed`. Throws std::runtime_error when the
  // residual of the reduced system exceeds 1e-8 in absolute terms.
  Eigen::VectorXd Solve(const Eigen::VectorXd& fixed) const;

 private:
  Matrix freeFree_;
  Matrix freeFixed_;
  Eigen::SimplicialLDLT<Matrix> factor_;
  bool analysed_ = false;
};

}  // namespace brindle

#endif
