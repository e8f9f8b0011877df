#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <regex>

#include "ComputationsSrc/FreeUndampedVibrations.h"
#include "ComputationsSrc/ShaftTree.h"
#include "FreeVibration/Lines.h"
#include "Matrices/MassStffnessAndDampingMatrix.h"
#include "RunControl/Constants.h"
#include "RunControl/NumberText.h"
#include "RunControl/Positions.h"
#include "Support/ReadModel.h"

/// What the log says of frequencies that rounding spoils, held against other calculations.
namespace verenwick::test {
namespace {

using testing::HasSubstr;
using Values = std::vector<double>;

TEST(ShaftTree, HasTheFrequenciesOfBranchedGearedAndLongLines) {
  for (const auto& entry : std::filesystem::directory_iterator(VERENWICK_EXAMPLES)) {
    const std::string plant = entry.path().filename().string();
    if (!std::filesystem::exists(entry.path() / "input.txt")) {
      continue;
    }
    ReadModel read;
    read.readExample(plant);
    ASSERT_TRUE(read.isOk()) << plant;
    MASSANDSHAFTTABLEPREPARATION(Vibration::free, read.model, 1);
    ShaftLineMatrices system;
    BUILDMASSSTIFFNESSANDDAMPINGMATRIX(Vibration::free, read.model, 1.0, system);
    const auto tree = ShaftTree::of(system.ROWIND, system.COLIND, system.K, system.M);
    ASSERT_TRUE(tree) << plant;
    FREEUNDAMPEDVIBRATIONS(system.N, system.D, system.V, system.ROWIND, system.COLIND, system.K,
                           system.M, 0);
    for (std::int32_t mode = 2; mode <= system.N; ++mode) {
      EXPECT_NEAR(tree->frequency(mode) / system.D[index(mode)], 1, 1e-9) << plant << mode;
    }
  }
  constexpr std::int32_t kInertias = 500;
  ReadModel chain(uniformChain(kInertias));
  MASSANDSHAFTTABLEPREPARATION(Vibration::free, chain.model, 1);
  ShaftLineMatrices system;
  BUILDMASSSTIFFNESSANDDAMPINGMATRIX(Vibration::free, chain.model, 1.0, system);
  const auto tree = ShaftTree::of(system.ROWIND, system.COLIND, system.K, system.M);
  for (const std::int32_t mode : {2, 3, 251, 500}) {
    const double exact = 2 * std::sqrt(3e6 / 2) * std::sin((mode - 1) * kPi / (2 * kInertias));
    EXPECT_NEAR(tree->frequency(mode) / exact, 1, 1e-13) << mode;
  }
}

/// A chain with the ids 11, 12, ... of inertias and 21, 22, ... of shafts.
struct Chain {
  Values J = {3, 0.5, 0.5, 0.6, 12, 1, 40};
  Values K = {1.1e6, 2.3e6, 2e6, 3e6, 4e4, 8e5};

  std::string input() const {
    std::string text;
    for (std::size_t i = 0; i < J.size(); ++i) {
      text += "INERTIA " + std::to_string(11 + i) + " 1 " + shortestText(J[i]) + " 0 0\n";
    }
    for (std::size_t i = 0; i < K.size(); ++i) {
      text += "SHAFT " + std::to_string(21 + i) + ' ' + std::to_string(11 + i) + ' ' +
              std::to_string(12 + i) + " 1 " + shortestText(K[i]) + " 0 0 0 0 0 0\n";
    }
    return text;
  }

  /// Torque that keeps the chain swinging at w with 1 rad at its first end, over w2: one inertia
  /// after the other, in extended precision. It vanishes at a natural frequency.
  long double residual(long double w) const {
    long double angle = 1;
    long double sum = 0;
    for (std::size_t i = 0; i < J.size(); ++i) {
      sum += J[i] * angle;
      if (i < K.size()) {
        angle -= w * w * sum / K[i];
      }
    }
    return sum;
  }

  /// The lowest elastic frequency: where the residual first changes its sign.
  double lowest() const {
    long double low = 1e-12L;
    while (residual(low * 1.01L) > 0) {
      low *= 1.01L;
    }
    long double high = low * 1.01L;
    for (int i = 0; i < 80; ++i) {
      const long double middle = (low + high) / 2;
      (residual(middle) > 0 ? low : high) = middle;
    }
    return static_cast<double>(low);
  }
};

/// Digits of mode 2 that the log states; none if it states nothing.
std::optional<int> statedDigits(const std::string& log) {
  std::smatch found;
  if (!std::regex_search(log, found, std::regex("mode 2 has (\\d+) digits left"))) {
    return std::nullopt;
  }
  return std::stoi(found[1]);
}

TEST(FrequencyWarnings, TheDigitsLeftAreThoseOfAnExactCalculation) {
  struct Spread {
    const char* what;
    double (*value)(int exponent);
    int from;
    int to;
    bool isShaft;
    std::size_t at;
    std::string words;
    int worst;  ///< digits that the far end of the range leaves at most
  };
  const auto power = [](int exponent) { return std::pow(10.0, exponent); };
  for (const Spread& spread : {
           Spread{"stiff", power, 10, 22, true, 2, "Shaft 23 is too stiff beside the others (", 0},
           {"stiff at the end", power, 10, 22, true, 5, "Shaft 26 is too stiff beside", 1},
           {"soft", power, 2, -12, true, 3, "Shaft 24 is too soft beside the others (", 0},
           {"small", power, -3, -25, false, 2, "Inertia 13 is too small beside the others (", 0},
           // The solver takes these from the small end up and loses nothing.
           {"small at the end", power, -3, -25, false, 0, "", 15},
           {"large", power, 2, 30, false, 4, "", 15},
       }) {
    bool hasWarned = false;
    for (int exponent = spread.from; exponent != spread.to + (spread.to > spread.from ? 1 : -1);
         exponent += spread.to > spread.from ? 1 : -1) {
      Chain chain;
      (spread.isShaft ? chain.K : chain.J)[spread.at] = spread.value(exponent);
      const SolverRun run(chain.input());
      ASSERT_EQ(run.status(), 1) << run.log();
      const double error =
          std::fabs(run.records("NaturalFrequency.bin").at(1) / chain.lowest() - 1);
      const double digits = error < 1 ? std::max(-std::log10(error), 0.0) : 0.0;
      const auto stated = statedDigits(run.log());
      hasWarned = hasWarned || stated;
      if (stated) {
        EXPECT_LE(*stated, digits + 0.1) << spread.what << exponent << run.log();
        EXPECT_GT(*stated, digits - 1.1) << spread.what << exponent << run.log();
        EXPECT_THAT(run.log(), HasSubstr("Warning: Natural frequencies are uncertain"));
        EXPECT_THAT(run.log(), HasSubstr(spread.words)) << spread.what << exponent;
      } else {
        EXPECT_GT(digits, 5.9) << spread.what << exponent;
        EXPECT_EQ(run.log(), "") << spread.what << exponent;
      }
      if (exponent == spread.to) {
        EXPECT_LE(stated.value_or(15), spread.worst) << spread.what;
      }
    }
    EXPECT_EQ(hasWarned, spread.worst < 6) << spread.what;
  }
}

TEST(FrequencyWarnings, ModesThatComeOutAsZeroAreCounted) {
  for (const double stiffness : {1e22, 1e50, 1e300}) {
    Chain chain;
    chain.K[1] = stiffness;
    const SolverRun run(chain.input());
    const Values omega = run.records("NaturalFrequency.bin");
    const auto lost = std::count_if(omega.begin() + 1, omega.end(),
                                    [](double w) { return !(w > 0) || !std::isfinite(w); });
    EXPECT_THAT(run.log(), HasSubstr("Shaft 22 is too stiff beside the others ("));
    EXPECT_THAT(run.log(),
                lost > 0 ? HasSubstr(", " + std::to_string(lost) + " come out as 0 or as no number")
                         : HasSubstr("of 6 modes"));
  }
}

TEST(FrequencyWarnings, AnEigenproblemThatFailsIsToldAndLeavesZeros) {
  Chain tiny;
  tiny.J[3] = 1e-310;
  Chain stiff;
  stiff.K[2] = 1e308;
  const std::string propeller =
      "PROPELLER 1\n17 200 1000 4 0 0 0\n400 2500 0.8 0.6 1 100 0\nMANUAL 0 0 0 5 2 15 1\n0\n";
  for (const auto& [input, words] :
       {std::pair{tiny.input(), ": Inertia 14 is too small beside the others (1e-310 kg m2)\n"},
        {stiff.input(), ": Shaft 23 is too stiff beside the others (1e+308 N m/rad)\n"},
        {Chain().input() + propeller,
         ": Inertia 17 is zero or negative in the calculation (0 kg m2)\n"}}) {
    const SolverRun run(input);
    EXPECT_EQ(run.status(), 1);
    EXPECT_THAT(run.log(), HasSubstr(" Warning: Natural frequencies can't be calculated and are "
                                     "written as 0" +
                                     std::string(words)));
    EXPECT_EQ(run.records("NaturalFrequency.bin"), Values(7, 0.0));
  }
}

/// The ring of a viscous damper is no part of the free problem: ids behind it don't shift.
TEST(FrequencyWarnings, TheShaftToBlameIsNamedByItsIdBehindADamperRing) {
  Chain chain;
  chain.K[5] = 1e20;
  const SolverRun run(
      "INERTIA 1 1 0.1 0 0\nINERTIA 2 1 0.2 0 0\nSHAFT 1 1 2 1 0 1 0 0 0 0 0\n"
      "VISCOUSDAMPER 1\n2 1 10.0 0\n" +
      chain.input() + "SHAFT 9 2 11 1 1e6 0 0 0 0 0 0\n");
  EXPECT_THAT(run.log(), HasSubstr(": Shaft 26 is too stiff beside the others (1e+20 N m/rad)\n"));
}

}  // namespace
}  // namespace verenwick::test
