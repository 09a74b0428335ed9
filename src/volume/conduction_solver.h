// The volume conduction solver: checks a tetrahedral model, assembles the stiffness of linear
// tetrahedra into a free block and a free-to-fixed coupling block, and solves for the nodal
// temperatures with a Jacobi-preconditioned conjugate-gradient solver.
#ifndef BRINDLE_VOLUME_CONDUCTION_SOLVER_H
#define BRINDLE_VOLUME_CONDUCTION_SOLVER_H

#include <Eigen/IterativeLinearSolvers>
#include <Eigen/SparseCore>
#include <cstdint>
#include <string>
#include <vector>

#include "volume/block_assembly.h"
#include "volume/model.h"
#include "volume/volume_status.h"

namespace brindle {

// Temperatures of the fixed vertex kinds.
constexpr double kLowTemperature = -13.1;
constexpr double kMidTemperature = 3.45;
constexpr double kHighTemperature = 20.0;

class brindle {
 public:
  using SparseMatrix = Eigen::SparseMatrix<double>;
  // The full symmetric matrix is stored, so products run row by row over the column-major
  // storage of its transpose. Tolerance and iteration limit stay at Eigen's defaults.
  using Solver = Eigen::ConjugateGradient<SparseMatrix, Eigen::Lower | Eigen::Upper,
                                          Eigen::DiagonalPreconditioner<double>>;

  // Checks the model (kDisconnectedMesh to kSoloVertex, the sentence goes to `detail`, a
  // buffer of 2000 characters, when it is not null), assembles and prepares the solver. `code`
  // receives kVolumeSucceeded on success. Throws std::bad_alloc when memory runs out. Every index
  // in the model must be in range (the exports make sure of it).
  brindle(prepoisson model, double tolerance, int* code, char* detail);
  brindle(const brindle&) = delete;
  brindle& operator=(const brindle&) = delete;

  // Fills the temperatures; non-convergence shows only in Status().
  int Solve();
  // Squared norm of the free rows' imbalance, coupling * fixed + free * unknowns.
  double Residual() const;
  // New material conductivities. A count other than the material count is ignored (returns
  // kVolumeSucceeded). A failed element check returns its code with the sentence in `message` and
  // keeps the previous matrices. Throws std::bad_alloc, leaving the solver as it was.
  int UpdateConductivities(const std::vector<double>& conductivities, std::string& message);
  // Eigen::ComputationInfo of the last compute or solve: 0 success, 2 no convergence.
  int Status() const;

  // temperatures[vertex number] for every vertex; the caller provides VertexCount() values.
  void CopyTemperatures(double* temperatures) const;
  std::size_t VertexCount() const { return vertices_.size(); }
  std::size_t MaterialCount() const { return model_.materials.size(); }
  const SparseMatrix& FreeMatrix() const { return free_; }
  const Solver& LinearSolver() const { return solver_; }

 private:
  void RunElementPass(BlockAssembler& assembler, std::vector<char>* used,
                      std::string& message) const;
  void Prepare(SystemBlocks blocks);
  void WriteFixedTemperatures();

  double tolerance_;
  SparseMatrix coupling_;
  SparseMatrix free_;
  Solver solver_;
  std::vector<VertexRecord> vertices_;   // solver order
  std::vector<std::int32_t> positions_;  // input vertex number -> solver position
  prepoisson model_;
  Eigen::VectorXd temperatures_;  // solver order
  std::size_t fixedCount_ = 0;    // F: vertices of kind Low, Mid or High
  bool freeMatrixFinite_ = true;  // false when NaN or infinity reached the free matrix
};

}  // namespace brindle

#endif
