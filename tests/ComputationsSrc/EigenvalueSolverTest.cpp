#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <sstream>
#include <string>

#include "ComputationsSrc/EigenvalueSolver.h"
#include "RunControl/Constants.h"

namespace verenwick::EigenvalueSolver {
namespace {

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
  bool areVectorsUntouched() const {
    return vectors == std::array{kUntouched, kUntouched, kUntouched, kUntouched, kUntouched,
                                 kUntouched, kUntouched, kUntouched, kUntouched};
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
  EXPECT_EQ(chain.eigenvalues,
            (std::array{Chain::kUntouched, Chain::kUntouched, Chain::kUntouched}));
  EXPECT_TRUE(chain.areVectorsUntouched());
}

TEST(EigenvalueSolver, OnlyAskedForDoesItGiveVectors) {
  using Request = std::optional<std::int32_t>;
  for (const Request compute :
       {Request(), Request(kEigenvaluesOnly), Request(kEigenvaluesAndVectors), Request(3)}) {
    Chain chain({1.0, 1.0, 1.0});
    SOLVER(*chain.problem, compute);
    EXPECT_EQ(GETERRORGEP(*chain.problem), 0);
    // Equal inertias J: 0, k/J and 3 k/J, with a node in the middle in the second mode.
    EXPECT_NEAR(chain.eigenvalues[0], 0.0, 1e-12);
    EXPECT_NEAR(chain.eigenvalues[1], 100.0, 1e-12);
    EXPECT_NEAR(chain.eigenvalues[2], 300.0, 1e-12);
    if (compute == kEigenvaluesAndVectors) {
      EXPECT_NEAR(std::fabs(chain.vectors[3]), std::sqrt(0.5), 1e-14);
      EXPECT_NEAR(chain.vectors[4], 0.0, 1e-14);
      EXPECT_NEAR(chain.vectors[5], -chain.vectors[3], 1e-14);
    } else {
      EXPECT_TRUE(chain.areVectorsUntouched());
    }
  }
}

/// A number in twelve digits, whatever the layout of its text.
std::string plain(double number) {
  std::ostringstream text;
  text.precision(12);
  text << number;
  return text.str();
}

/// What FLUSHRESULTS prints, one line after the other, with single blanks and plain numbers.
std::string printed(std::int32_t level, const EP& problem) {
  std::FILE* const file = std::tmpfile();
  FLUSHRESULTS(file, level, problem);
  std::rewind(file);
  std::string text;
  for (std::array<char, 200> buffer{}; std::fgets(buffer.data(), buffer.size(), file) != nullptr;) {
    std::istringstream line(buffer.data());
    for (std::string word; line >> word;) {
      char* end = nullptr;
      const double number = std::strtod(word.c_str(), &end);
      text += (*end == '\0' ? plain(number) : word) + ' ';
    }
    text.back() = '\n';
  }
  std::fclose(file);
  return text;
}

TEST(EigenvalueSolver, PrintsWhatItsArraysHoldNow) {
  Chain chain({1.0, 1.0, 1.0});
  chain.eigenvalues = {0.0, 10.0, 17.5};
  chain.vectors = {0.5, 1.5, 2.5, -0.25, 0.75, 3.0, 4.0, 5.0, -6.0};
  const std::string begin = "--- Begin Eigenvalue solver results ---\nOrder of the system = 3\n";
  const std::string frequencies =
      "Angular velocity, in ascending order, and the corresponding RPMs\n0 0\n10 " +
      plain(300 / kPi) + "\n17.5 " + plain(525 / kPi) + "\n";
  const std::string vectors =
      "Eigenvectors one by one\nEigenvector # 1\n0.5\n1.5\n2.5\n"
      "Eigenvector # 2\n-0.25\n0.75\n3\nEigenvector # 3\n4\n5\n-6\n";
  const std::string end = "--- End Eigenvalue solver results ---\n";
  EXPECT_EQ(printed(0, *chain.problem), "");
  EXPECT_EQ(printed(1, *chain.problem), begin + frequencies + end);
  EXPECT_EQ(printed(2, *chain.problem), begin + frequencies + vectors + end);
  chain.problem->problemKind = 1;
  EXPECT_EQ(printed(2, *chain.problem), begin + frequencies + vectors + end);
  chain.problem->problemKind = 2;
  EXPECT_EQ(printed(2, *chain.problem), begin + end);
  chain.problem->problemKind = 0;
  INITIALIZEREALEIGENVECTORS(*chain.problem, {});
  EXPECT_EQ(printed(2, *chain.problem), begin + frequencies + end);
}

}  // namespace
}  // namespace verenwick::EigenvalueSolver
