#include "ComputationsSrc/EigenvalueSolver.h"

#include <algorithm>

#include "ComputationsSrc/Lapack.h"
#include "RunControl/NumberText.h"
#include "RunControl/Positions.h"

namespace verenwick::EigenvalueSolver {
namespace {

std::size_t element(const EP& problem, std::int32_t row, std::int32_t column) {
  return index(column) * asSize(problem.N) + index(row);
}

/// Expands the entries to dense column-major matrices.
void BUILDAANDB(const EP& problem, std::vector<double>& A, std::vector<double>& B) {
  for (std::size_t e = 0; e < problem.K.size(); ++e) {
    A[element(problem, problem.ROWIND[e], problem.COLIND[e])] = problem.K[e];
  }
  for (std::int32_t i = 1; i <= problem.N; ++i) {
    B[element(problem, i, i)] = problem.M[index(i)];
  }
}

}  // namespace

std::unique_ptr<EP> INITIALIZE(std::int32_t N, std::span<const std::int32_t> ROWIND,
                               std::span<const std::int32_t> COLIND, std::span<const double> K,
                               std::span<const double> M, std::int32_t problemKind) {
  auto problem = std::make_unique<EP>();
  problem->N = N;
  problem->problemKind = problemKind;
  problem->ROWIND = ROWIND;
  problem->COLIND = COLIND;
  problem->K = K;
  problem->M = M;
  return problem;
}

void INITIALIZEREALEIGENVALUES(EP& problem, std::span<double> eigenvalues) {
  problem.EIGVALREAL = eigenvalues;
  problem.EIGVALIMAG.assign(static_cast<std::size_t>(problem.N), 0.0);
}

void INITIALIZEREALEIGENVECTORS(EP& problem, std::span<double> eigenvectors) {
  problem.RIGHTEIGVECREAL = eigenvectors;
}

void SOLVER(EP& problem, std::optional<std::int32_t> COMPUTE) {
  constexpr std::int32_t kType = 1;
  constexpr std::int32_t kQuery = -1;
  const char* const jobz = COMPUTE == kEigenvaluesAndVectors ? "V" : "N";
  const auto order = static_cast<std::size_t>(problem.N);
  std::vector<double> A(order * order);
  std::vector<double> B(order * order);
  std::vector<double> W(order);
  BUILDAANDB(problem, A, B);
  std::int32_t info = 0;
  double optimal = 0.0;
  lapack::dsygv_(kType, jobz, "L", problem.N, A.data(), problem.N, B.data(), problem.N, W.data(),
                 &optimal, kQuery, info);
  const auto length = static_cast<std::int32_t>(optimal);
  std::vector<double> work(static_cast<std::size_t>(std::max(length, 1)));
  lapack::dsygv_(kType, jobz, "L", problem.N, A.data(), problem.N, B.data(), problem.N, W.data(),
                 work.data(), length, info);
  if (info != 0) {
    problem.error = info;
    return;
  }
  if (*jobz == 'V') {
    std::copy(A.begin(), A.end(), problem.RIGHTEIGVECREAL.begin());
  }
  std::copy(W.begin(), W.end(), problem.EIGVALREAL.begin());
}

std::int32_t GETERRORGEP(const EP& problem) { return problem.error; }

void FLUSHRESULTS(std::FILE* unit, std::int32_t printLevel, const EP& problem) {
  if (printLevel <= 0) {
    return;
  }
  constexpr double kRpm = 9.549296585513721;
  const bool hasFrequencies = problem.problemKind == 0 || problem.problemKind == 1;
  std::fprintf(unit, " --- Begin Eigenvalue solver results ---\n");
  std::fprintf(unit, " Order of the system = %d\n", problem.N);
  if (hasFrequencies) {
    std::fprintf(unit, " Angular velocity, in ascending order, and the corresponding RPMs \n");
    for (const double omega : problem.EIGVALREAL) {
      std::fprintf(unit, " %s %s\n", shortestText(omega).c_str(),
                   shortestText(omega * kRpm).c_str());
    }
  }
  if (hasFrequencies && printLevel > 1 && !problem.RIGHTEIGVECREAL.empty()) {
    std::fprintf(unit, " Eigenvectors one by one\n");
    for (std::int32_t mode = 1; mode <= problem.N; ++mode) {
      std::fprintf(unit, " Eigenvector # %d\n", mode);
      for (std::int32_t i = 1; i <= problem.N; ++i) {
        std::fprintf(unit, " %s\n",
                     shortestText(problem.RIGHTEIGVECREAL[element(problem, i, mode)]).c_str());
      }
    }
  }
  std::fprintf(unit, " --- End Eigenvalue solver results ---\n");
}

void DESTROY(std::unique_ptr<EP>& problem) { problem.reset(); }

}  // namespace verenwick::EigenvalueSolver
