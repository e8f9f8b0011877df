#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cmath>
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

/// A chain of three inertias on two shafts of 100 N m/rad, its outputs at a mark of their own.
struct Chain {
  static constexpr double kUntouched = -77.0;

  explicit Chain(const std::array<double, 3>& inertias)
      : M(inertias), problem(INITIALIZE(3, row, column, K, M, 0)) {
    eigenvalues.fill(kUntouched);
    vectors.fill(kUntouched);
    INITIALIZEREALEIGENVALUES(*problem, eigenvalues);
    INITIALIZEREALEIGENVECTORS(*problem, vectors);
  }
  const std::array<std::int32_t, 7> row = {1, 2, 3, 1, 2, 2, 3};
  const std::array<std::int32_t, 7> column = {1, 2, 3, 2, 1, 3, 2};
  const std::array<double, 7> K = {100, 200, 100, -100, -100, -100, -100};
  std::array<double, 3> M;
  std::array<double, 3> eigenvalues{};
  std::array<double, 9> vectors{};
  std::unique_ptr<EP> problem;
};

TEST(EigenvalueSolver, AFailedSolveGivesItsInfoAndLeavesTheOutputs) {
  Chain chain({1.0, 0.0, 1.0});
  SOLVER(*chain.problem, kEigenvaluesAndVectors);
  // The order of the problem plus that of the leading minor of M that isn't positive.
  EXPECT_EQ(GETERRORGEP(*chain.problem), 3 + 2);
  EXPECT_THAT(chain.eigenvalues, Each(Chain::kUntouched));
  EXPECT_THAT(chain.vectors, Each(Chain::kUntouched));
}

TEST(EigenvalueSolver, OnlyAskedForDoesItGiveVectors) {
  Chain chain({1.0, 1.0, 1.0});
  for (const auto compute : std::vector<std::optional<std::int32_t>>{std::nullopt, 1, 3, 2}) {
    EXPECT_THAT(chain.vectors, Each(Chain::kUntouched));
    SOLVER(*chain.problem, compute);
    EXPECT_EQ(GETERRORGEP(*chain.problem), 0);
    // Equal inertias J: 0, k/J and 3 k/J.
    EXPECT_THAT(chain.eigenvalues, Pointwise(DoubleNear(1e-12), {0.0, 100.0, 300.0}));
    chain.eigenvalues.fill(Chain::kUntouched);
  }
  // The second mode has its node in the middle.
  EXPECT_NEAR(std::fabs(chain.vectors[3]), std::sqrt(0.5), 1e-14);
  EXPECT_NEAR(chain.vectors[4], 0.0, 1e-14);
  EXPECT_NEAR(chain.vectors[5], -chain.vectors[3], 1e-14);
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
            " === Test Free undamped vibrations Codes ===\n Mass moment of inertia\n 4\n 1\n"
            " Stifness matrix\n 144\n 25\n" +
                begin +
                " Eigenvectors one by one\n Eigenvector # 1\n 0\n 1\n"
                " Eigenvector # 2\n 0.5\n 0\n" +
                end);
}

}  // namespace
}  // namespace verenwick::EigenvalueSolver
