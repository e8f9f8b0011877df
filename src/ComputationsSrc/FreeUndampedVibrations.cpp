#include "ComputationsSrc/FreeUndampedVibrations.h"

#include <cmath>
#include <cstdio>
#include <memory>

#include "ComputationsSrc/EigenvalueSolver.h"
#include "RunControl/Files.h"
#include "RunControl/NumberText.h"

namespace verenwick {
namespace {

struct CloseFile {
  void operator()(std::FILE* file) const { static_cast<void>(std::fclose(file)); }
};

void print(std::FILE* unit, const char* heading, std::span<const double> values) {
  std::fprintf(unit, "%s\n", heading);
  for (const double value : values) {
    std::fprintf(unit, " %s\n", shortestText(value).c_str());
  }
}

}  // namespace

void FREEUNDAMPEDVIBRATIONS(std::int32_t N, std::span<double> D, std::span<double> V,
                            std::span<const std::int32_t> ROWIND,
                            std::span<const std::int32_t> COLIND, std::span<const double> K,
                            std::span<const double> M, std::int32_t printLevel) {
  std::unique_ptr<std::FILE, CloseFile> diagnostics;
  if (printLevel > 1) {
    const std::string path = nativePath(resultFileAddress("ZBTQ.txt")).string();
    diagnostics.reset(std::fopen(path.c_str(), "w"));
  }
  auto problem = EigenvalueSolver::INITIALIZE(N, ROWIND, COLIND, K, M, 0);
  EigenvalueSolver::INITIALIZEREALEIGENVALUES(*problem, D);
  EigenvalueSolver::INITIALIZEREALEIGENVECTORS(*problem, V);
  if (diagnostics) {
    std::fprintf(diagnostics.get(), "=== Test Free undamped vibrations Codes ===\n");
    print(diagnostics.get(), "Mass moment of inertia", M);
    print(diagnostics.get(), "Stifness matrix", K);
  }
  EigenvalueSolver::SOLVER(*problem, EigenvalueSolver::kEigenvaluesAndVectors);
  for (double& value : D) {
    value = std::sqrt(value);
  }
  EigenvalueSolver::FLUSHRESULTS(diagnostics ? diagnostics.get() : stdout, printLevel, *problem);
  EigenvalueSolver::DESTROY(problem);
}

}  // namespace verenwick
