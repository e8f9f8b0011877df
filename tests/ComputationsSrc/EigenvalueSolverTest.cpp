#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <optional>
#include <string>
#include <vector>

#include "ComputationsSrc/EigenvalueSolver.h"

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

std::string printed(std::int32_t level, const EP& problem) {
  std::FILE* const file = std::tmpfile();
  FLUSHRESULTS(file, level, problem);
  std::string text(static_cast<std::size_t>(std::ftell(file)), '\0');
  std::rewind(file);
  EXPECT_EQ(std::fread(text.data(), 1, text.size(), file), text.size());
  std::fclose(file);
  return text;
}

TEST(EigenvalueSolver, PrintsWhatItsArraysHoldNow) {
  Chain chain({1.0, 1.0, 1.0});
  chain.eigenvalues = {0.0, 10.0, 17.5};
  chain.vectors = {0.5, 1.5, 2.5, -0.25, 0.75, 3.0, 4.0, 5.0, -6.0};
  const std::string begin = " --- Begin Eigenvalue solver results ---\n Order of the system = 3\n";
  const std::string frequencies =
      " Angular velocity, in ascending order, and the corresponding RPMs \n"
      " 0 0\n 10 95.49296585513721\n 17.5 167.11269024649013\n";
  const std::string vectors =
      " Eigenvectors one by one\n Eigenvector # 1\n 0.5\n 1.5\n 2.5\n"
      " Eigenvector # 2\n -0.25\n 0.75\n 3\n Eigenvector # 3\n 4\n 5\n -6\n";
  const std::string end = " --- End Eigenvalue solver results ---\n";
  EXPECT_EQ(printed(0, *chain.problem), "");
  EXPECT_EQ(printed(1, *chain.problem), begin + frequencies + end);
  EXPECT_EQ(printed(2, *chain.problem), begin + frequencies + vectors + end);
  chain.problem->problemKind = 2;
  EXPECT_EQ(printed(2, *chain.problem), begin + end);
  chain.problem->problemKind = 1;
  INITIALIZEREALEIGENVECTORS(*chain.problem, {});
  EXPECT_EQ(printed(2, *chain.problem), begin + frequencies + end);
}

}  // namespace
}  // namespace verenwick::EigenvalueSolver
