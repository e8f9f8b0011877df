#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "ComputationsSrc/EigenvalueSolver.h"
#include "ComputationsSrc/FreeUndampedVibrations.h"
#include "Support/ReadModel.h"

namespace verenwick::EigenvalueSolver {
namespace {

using testing::DoubleNear;
using testing::Each;
using testing::Pointwise;

TEST(EigenvalueSolver, LeavesTheOutputsOfAFailedSolveAndVectorsThatNobodyAskedFor) {
  constexpr double kUntouched = -77.0;
  const std::array<std::int32_t, 4> row = {1, 2, 1, 2};
  const std::array<std::int32_t, 4> column = {1, 2, 2, 1};
  const std::array<double, 4> K = {100, 100, -100, -100};
  std::array<double, 2> M = {1, 0};
  std::array<double, 2> eigenvalues = {kUntouched, kUntouched};
  std::array<double, 4> vectors{};
  vectors.fill(kUntouched);
  const auto problem = INITIALIZE(2, row, column, K, M, 0);
  INITIALIZEREALEIGENVALUES(*problem, eigenvalues);
  INITIALIZEREALEIGENVECTORS(*problem, vectors);
  SOLVER(*problem, kEigenvaluesAndVectors);
  // The order of the problem plus that of the leading minor of M that isn't positive.
  EXPECT_EQ(GETERRORGEP(*problem), 2 + 2);
  EXPECT_THAT(eigenvalues, Each(kUntouched));
  M[1] = 1;
  for (const auto compute : std::vector<std::optional<std::int32_t>>{std::nullopt, 1, 3}) {
    eigenvalues.fill(kUntouched);
    SOLVER(*problem, compute);
    EXPECT_THAT(eigenvalues, Pointwise(DoubleNear(1e-12), {0.0, 200.0}));
  }
  EXPECT_THAT(vectors, Each(kUntouched));
}

TEST(FreeUndampedVibrations, DiagnosticsListTheProblemAndItsModes) {
  const test::ReadModel place;
  const std::array<std::int32_t, 2> diagonal = {1, 2};
  std::array<double, 2> D{};
  std::array<double, 4> V{};
  const auto solve = [&](std::int32_t printLevel) {
    FREEUNDAMPEDVIBRATIONS(2, D, V, diagonal, diagonal, std::array{144.0, 25.0},
                           std::array{4.0, 1.0}, printLevel);
  };
  const std::string begin =
      " --- Begin Eigenvalue solver results ---\n Order of the system = 2\n"
      " Angular velocity, in ascending order, and the corresponding RPMs \n"
      " 5 47.74648292756861\n 6 57.29577951308232\n";
  const std::string end = " --- End Eigenvalue solver results ---\n";
  testing::internal::CaptureStdout();
  solve(0);
  solve(1);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), begin + end);
  solve(2);
  EXPECT_EQ(test::readText(place.directory().file("ZBTQ.txt")),
            " === Test Free undamped vibrations Codes ===\n Mass moment of inertia\n 4 1\n"
            " Stifness matrix\n 144 25\n" +
                begin +
                " Eigenvectors one by one\n Eigenvector # 1\n 0\n 1\n"
                " Eigenvector # 2\n 0.5\n 0\n" +
                end);
}

}  // namespace
}  // namespace verenwick::EigenvalueSolver
