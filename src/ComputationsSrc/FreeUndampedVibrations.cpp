#include "ComputationsSrc/FreeUndampedVibrations.h"

#include <cmath>

#include "ComputationsSrc/DiagnosticFile.h"
#include "ComputationsSrc/EigenvalueSolver.h"

namespace verenwick {

std::int32_t FREEUNDAMPEDVIBRATIONS(std::int32_t N, std::span<double> D, std::span<double> V,
                                    std::span<const std::int32_t> ROWIND,
                                    std::span<const std::int32_t> COLIND, std::span<const double> K,
                                    std::span<const double> M, std::int32_t printLevel) {
  DiagnosticFile diagnostics("ZBTQ.txt", printLevel > 1);
  auto problem = EigenvalueSolver::INITIALIZE(N, ROWIND, COLIND, K, M, 0);
  EigenvalueSolver::INITIALIZEREALEIGENVALUES(*problem, D);
  EigenvalueSolver::INITIALIZEREALEIGENVECTORS(*problem, V);
  diagnostics.write("=== Test Free undamped vibrations Codes ===");
  diagnostics.write("Mass moment of inertia", M);
  diagnostics.write("Stifness matrix", K);
  EigenvalueSolver::SOLVER(*problem, EigenvalueSolver::kEigenvaluesAndVectors);
  for (double& value : D) {
    value = std::sqrt(value);
  }
  if (std::FILE* const unit = printLevel > 1 ? diagnostics.unit() : stdout; unit != nullptr) {
    EigenvalueSolver::FLUSHRESULTS(unit, printLevel, *problem);
  }
  const std::int32_t error = EigenvalueSolver::GETERRORGEP(*problem);
  EigenvalueSolver::DESTROY(problem);
  return error;
}

}  // namespace verenwick
