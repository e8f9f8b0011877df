#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ForcedVibration/EveryKind.h"
#include "results/ResultReader.h"

namespace verenwick::test {
namespace {

using testing::Contains;
using testing::Each;
using testing::Gt;
using Values = std::vector<double>;

/// Two motors on a gear wheel drive a propeller line. Rows 1 to 3 turn at a quarter of the speed.
const std::string kGearedLine = R"(
INERTIA 11 0.25 400.0 20.0 0.0  propeller
INERTIA 12 0.25 40.0 0.0 0.0
INERTIA 13 0.25 80.0 0.0 0.0    gear wheel
INERTIA 14 1.0 2.0 0.0 0.0      pinion
INERTIA 15 1.0 10.0 1.0 0.0     motor
INERTIA 16 1.0 2.0 0.0 0.0      pinion
INERTIA 17 1.0 11.0 1.0 0.0     motor
SHAFT 21 11 12 0.25 2e6 0.0 100.0 200.0 0.0 0 0
SHAFT 22 12 13 0.25 3e6 0.0 100.0 200.0 0.0 0 0
SHAFT 23 13 14 1.0 1e7 0.0 100.0 0.0 0.0 0 0
SHAFT 24 14 15 1.0 1e6 0.0 100.0 100.0 50.0 0 0
SHAFT 25 13 16 1.0 1e7 0.0 100.0 0.0 0.0 0 0
SHAFT 26 16 17 1.0 2e6 0.0 100.0 100.0 50.0 0 0
LINEARCOUPLING 5
24 1000.0 1e6
ELECTRICMOTOR 1
15 100.0 1000.0 0 0.0 0
0.0 0.0 0.0 0.0
0.0 0.0 0.0 0.0
ELECTRICMOTOR 2
17 100.0 1000.0 0 0.0 0
0.0 0.0 0.0 0.0
0.0 0.0 0.0 0.0
)";

std::string icePropeller(int id, int node) {
  return "PROPELLER " + std::to_string(id) + "\n" + std::to_string(node) +
         " 200.0 250.0 4 390.0 10.0 0\n300.0 2000.0 0.8 0.6 1 100.0 0.0\n"
         "ARCHER 30.0 0.0 0.0 5.0 1.0 20.0 1\n0\nPROPELLERICE " +
         std::to_string(id) + "\n0\n@DIR@/ice.txt\n";
}

/// The line with one propeller, at half and at full speed.
std::string onePropeller(int id) {
  return kGearedLine + icePropeller(id, 11) + "LOADCASE\nRPM 1 2 " + std::to_string(id) +
         "\nELECTRICMOTOR ELECTRICMOTOR PROPELLER\n500 12.5 12.5 25\n1000 100 100 200\n";
}

/// The line with a second propeller, on a motor's row and four times as fast.
const std::string kTwoPropellers =
    kGearedLine + icePropeller(1, 11) + icePropeller(2, 17) +
    "LOADCASE\nRPM 1 2 1 2\nELECTRICMOTOR ELECTRICMOTOR PROPELLER PROPELLER\n"
    "1000 100 100 150 50\n";

/// A run with mean terms of the ice at the speed ratios 0.5 and 1, and harmonics of all orders.
struct IceRun : SolverRun {
  explicit IceRun(const std::string& input, const std::string& means = "1000 2000") {
    directory().write("ice.txt", replaced(readText(kEveryKind / "ice.txt"), "1000 2000", means));
    start(input, 2);
    EXPECT_EQ(status(), 1) << log();
  }
};

TEST(PropellerIceResults, SynthesisIsTheAmplitudeOfThePropellersAlone) {
  for (const std::string& input : {onePropeller(1), kTwoPropellers}) {
    const IceRun run(input);
    EXPECT_THAT(run.records("ElectricMotorDeflection.bin"), Each(0.0)) << "motors without orders";
    for (const auto& [ice, plain] :
         {std::pair{"SynPropIceDeflection.bin", "SynthesisDeflection.bin"},
          {"SynPropIceVelocity.bin", "SynthesisVelocity.bin"},
          {"SynPropIceAccele.bin", "SynthesisAcceleration.bin"},
          {"SynPropIceTorque.bin", "SynthesisTorque.bin"},
          {"SynPropIceStress.bin", "SynthesisStress.bin"},
          {"SynPropIceDampingTorque.bin", "SynthesisDampingTorque.bin"}}) {
      // The propellers alone are the whole.
      EXPECT_EQ(run.records(ice), run.records(plain)) << ice;
      EXPECT_THAT(run.records(ice), Contains(Gt(0.0))) << ice;
    }
  }
}

TEST(PropellerIceResults, MarksEndAtTheBranchingAndAtTheGear) {
  const auto changed = [](const std::string& from, const std::string& to) {
    std::string input = onePropeller(1);
    return input.replace(input.find(from), from.size(), to);
  };
  struct Case {
    const char* what;
    std::string input;
    Values marks;
  };
  for (const Case& c : {
           // The wheel branches: a shaft that ends there isn't on the line, one that begins there
           // is.
           Case{"branching", onePropeller(1), {1, 2, 2, 2, 2, 2}},
           {"turned", changed("SHAFT 22 12 13", "SHAFT 22 13 12"), {1, 1, 2, 2, 2, 2}},
           // Without the second motor's branch the line has a gear but no branching.
           {"gear", changed("SHAFT 25 13 16", "SHAFT 25 15 16"), {1, 1, 2, 2, 2, 2}},
           // The propeller's id is looked up among the rows: row 5 is a motor, there is no row 99.
           {"ratio of row 5", onePropeller(5), {2, 2, 2, 2, 2, 2}},
           {"own ratio", onePropeller(99), {1, 2, 2, 2, 2, 2}},
           {"two propellers", kTwoPropellers, {0, 0, 0, 0, 0, 0}},
       }) {
    EXPECT_EQ(IceRun(c.input).records("PropellerShaftMarks.bin"), c.marks) << c.what;
  }
}

TEST(PropellerIceResults, MeanTermGoesToTheShaftsByInertiaAndSpeed) {
  // Inertias referred to the motors' speed.
  constexpr double kTotal = (400 + 40 + 80) / 16.0 + 2 + 10 + 2 + 11;
  constexpr double kBehind[] = {kTotal - 400 / 16.0, kTotal - 440 / 16.0, 12, 10, 13, 11};
  constexpr double kShaftRatio[] = {0.25, 0.25, 1, 1, 1, 1};
  for (const auto& [id, ratio] : {std::pair{1, 0.25}, {5, 1.0}}) {
    const auto without = IceRun(onePropeller(id), "0 0").records("NominalTorque.bin");
    const auto with = IceRun(onePropeller(id), "700 900").records("NominalTorque.bin");
    ASSERT_EQ(with.size(), 12U);
    for (std::size_t s = 0; s < 6; ++s) {
      const double share = kBehind[s] / kTotal * ratio / kShaftRatio[s];
      EXPECT_NEAR(with[s] - without[s], 700 * share, 1e-6 * share);
      EXPECT_NEAR(with[6 + s] - without[6 + s], 900 * share, 1e-6 * share);
    }
  }
  EXPECT_EQ(IceRun(kTwoPropellers, "700 900").records("NominalTorque.bin"),
            IceRun(kTwoPropellers, "0 0").records("NominalTorque.bin"));
}

/// The marks are written with the first load case: without any, their file is whole and empty.
TEST(PropellerIceResults, ARunWithoutLoadCasesIsWhole) {
  const std::string input = onePropeller(1);
  SolverRun run;
  run.directory().write("ice.txt", readText(kEveryKind / "ice.txt"));
  run.start(input.substr(0, input.find("LOADCASE")), 7);
  ASSERT_EQ(run.status(), 1) << run.log();
  const results::ResultDirectory directory(run.results());
  for (const auto& file : results::kResultFiles) {
    if (file.layout != results::Layout::text && directory.has(file)) {
      EXPECT_NO_THROW(static_cast<void>(directory.open(file))) << file.name;
    }
  }
  EXPECT_TRUE(directory.has(results::resultFile("PropellerShaftMarks.bin")));
}

}  // namespace
}  // namespace verenwick::test
