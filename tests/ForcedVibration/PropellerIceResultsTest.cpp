#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "ForcedVibration/PropellerIceResults.h"
#include "InputAndChecking/ImportInputFile.h"
#include "RunControl/Constants.h"
#include "RunControl/Global_Parameter.h"
#include "Support/SolverRun.h"
#include "results/RecordNumbers.h"

namespace verenwick::test {
namespace {

constexpr std::int32_t kBlades = 3;
constexpr std::int32_t kOrders = 4 * kBlades;
constexpr std::int32_t kForcedOnly = 2;
constexpr double kPropellerRatio = 0.25;

/// An ice excitation file over the speed ratios 0.5 and 1: a mean term at either, and harmonics of
/// all orders.
std::string iceFile(double meanAtHalf, double meanAtFull) {
  const std::string heading = "heading\n";
  std::string text = heading + heading + heading + heading + "0.5 1.0\n" + heading + heading +
                     heading + "0 " + std::to_string(meanAtHalf) + " " +
                     std::to_string(meanAtFull) + "\n";
  for (const double scale : {300.0, -200.0}) {
    text += heading + heading + heading + heading;
    for (int o = 1; o <= kOrders; ++o) {
      text += std::to_string(o) + " " + std::to_string(scale / o) + " " +
              std::to_string(2.0 * scale / o + o) + "\n";
    }
  }
  return text;
}

/// Two motors on a gear wheel drive a propeller line. Rows 1 to 3 turn at a quarter of the speed.
constexpr const char* kGearedLine = R"(
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

std::string propeller(int id, int node) {
  return "PROPELLER " + std::to_string(id) + "\n" + std::to_string(node) +
         " 200.0 250.0 3 390.0 10.0 0\n300.0 2000.0 0.8 0.6 1 100.0 0.0\n"
         "ARCHER 30.0 0.0 0.0 5.0 1.0 20.0 1\n0\nPROPELLERICE " +
         std::to_string(id) + "\n0\n@DIR@/ice.txt\n";
}

/// Load cases at half and at full speed.
std::string loadCases(int propellerId) {
  return "LOADCASE\nRPM 1 2 " + std::to_string(propellerId) +
         "\nELECTRICMOTOR ELECTRICMOTOR PROPELLER\n500.0 12.5 12.5 25.0\n1000.0 100.0 100.0 "
         "200.0\n";
}

/// A run in ice of the geared line.
struct IceRun : SolverRun {
  IceRun(const std::string& input, double meanAtHalf, double meanAtFull) {
    directory().write("ice.txt", iceFile(meanAtHalf, meanAtFull));
    start(input, kForcedOnly);
  }
};

/// Half the range of the waveform that the records of "Propeller….bin" make at a point, from 0.
double amplitudeFromOrders(const std::vector<double>& records, std::int64_t loadCase,
                           std::int64_t points, std::int64_t point,
                           const std::vector<double>& speeds) {
  const auto sources = static_cast<std::int64_t>(speeds.size());
  const double slowest = *std::min_element(speeds.begin(), speeds.end());
  std::vector<double> waveform(360);
  for (std::int64_t s = 1; s <= sources; ++s) {
    for (std::int64_t k = 1; k <= kOrders; ++k) {
      const auto record = [&](std::int64_t component) {
        return records[static_cast<std::size_t>(results::recordOfFamilyElement(
                           loadCase, sources, kOrders, points, s, k, point, component)) -
                       1];
      };
      for (std::size_t m = 1; m <= waveform.size(); ++m) {
        const double degrees = static_cast<double>(k) * static_cast<double>(m) *
                               speeds[static_cast<std::size_t>(s) - 1] / slowest;
        // Real and imaginary part belong to half the motion.
        waveform[m - 1] += 2.0 * (record(3) * std::cos(degrees * kPi / 180.0) -
                                  record(4) * std::sin(degrees * kPi / 180.0));
      }
    }
  }
  const auto [low, high] = std::minmax_element(waveform.begin(), waveform.end());
  return (*high - *low) / 2.0;
}

TEST(PropellerIceResults, SynthesisIsTheAmplitudeOfThePropellersAlone) {
  const IceRun run(std::string(kGearedLine) + propeller(1, 11) + loadCases(1), 100.0, 200.0);
  ASSERT_EQ(run.status(), 1) << run.log();
  for (const auto& [ice, plain] :
       {std::pair{"SynPropIceDeflection.bin", "SynthesisDeflection.bin"},
        std::pair{"SynPropIceVelocity.bin", "SynthesisVelocity.bin"},
        std::pair{"SynPropIceAccele.bin", "SynthesisAcceleration.bin"},
        std::pair{"SynPropIceTorque.bin", "SynthesisTorque.bin"},
        std::pair{"SynPropIceStress.bin", "SynthesisStress.bin"},
        std::pair{"SynPropIceDampingTorque.bin", "SynthesisDampingTorque.bin"}}) {
    // The motors excite nothing, so that the propeller alone is the whole.
    EXPECT_EQ(run.records(ice), run.records(plain)) << ice;
    const auto amplitudes = run.records(ice);
    EXPECT_GT(*std::max_element(amplitudes.begin(), amplitudes.end()), 0.0) << ice;
  }
}

TEST(PropellerIceResults, SynthesisOfTwoPropellersRunsOverOneTurnOfTheSlower) {
  // A second propeller on a motor's row turns four times as fast.
  const std::string input = std::string(kGearedLine) + propeller(1, 11) + propeller(2, 17) +
                            "LOADCASE\nRPM 1 2 1 2\nELECTRICMOTOR ELECTRICMOTOR PROPELLER "
                            "PROPELLER\n1000.0 100.0 100.0 150.0 50.0\n";
  const IceRun run(input, 100.0, 200.0);
  ASSERT_EQ(run.status(), 1) << run.log();
  const auto torque = run.records("PropellerTorque.bin");
  const auto synthesis = run.records("SynPropIceTorque.bin");
  ASSERT_EQ(synthesis.size(), 6U);
  for (std::int64_t s = 1; s <= 6; ++s) {
    const double expected = amplitudeFromOrders(torque, 1, 6, s, {250.0, 1000.0});
    EXPECT_NEAR(synthesis[static_cast<std::size_t>(s) - 1], expected, 1e-9 * expected);
  }
}

TEST(PropellerIceResults, MarksEndAtTheBranchingAndAtTheGear) {
  struct Case {
    const char* what;
    std::string input;
    std::vector<double> marks;
  };
  std::string turned = kGearedLine;
  turned.replace(turned.find("SHAFT 22 12 13"), 14, "SHAFT 22 13 12");
  // Without the second motor's branch the line has a gear but no branching.
  std::string straight = kGearedLine;
  straight.replace(straight.find("SHAFT 25 13 16"), 14, "SHAFT 25 15 16");
  const Case cases[] = {
      // The wheel branches: a shaft that ends there isn't on the line, one that begins there is.
      {"branching", kGearedLine + propeller(1, 11) + loadCases(1), {1, 2, 2, 2, 2, 2}},
      {"turned", turned + propeller(1, 11) + loadCases(1), {1, 1, 2, 2, 2, 2}},
      {"gear", straight + propeller(1, 11) + loadCases(1), {1, 1, 2, 2, 2, 2}},
      // Row 5 is a motor; there is no row 99.
      {"ratio of row 5", kGearedLine + propeller(5, 11) + loadCases(5), {2, 2, 2, 2, 2, 2}},
      {"own ratio", kGearedLine + propeller(99, 11) + loadCases(99), {1, 2, 2, 2, 2, 2}}};
  for (const Case& c : cases) {
    const IceRun run(c.input, 100.0, 200.0);
    EXPECT_EQ(run.records("PropellerShaftMarks.bin"), c.marks) << c.what << run.log();
  }
}

TEST(PropellerIceResults, MeanTermGoesToTheShaftsByInertiaAndSpeed) {
  const auto nominal = [](int id, double atHalf, double atFull) {
    const IceRun run(std::string(kGearedLine) + propeller(id, 11) + loadCases(id), atHalf, atFull);
    return run.records("NominalTorque.bin");
  };
  // Inertias referred to the motors' speed.
  constexpr double kSquare = kPropellerRatio * kPropellerRatio;
  constexpr double kTotal = kSquare * (400 + 40 + 80) + 2 + 10 + 2 + 11;
  constexpr double kBehind[] = {kTotal - kSquare * 400, kTotal - kSquare * 440, 12, 10, 13, 11};
  constexpr double kShaftRatio[] = {0.25, 0.25, 1, 1, 1, 1};
  const auto without = nominal(1, 0.0, 0.0);
  for (const auto& [id, ratio] : {std::pair{1, kPropellerRatio}, std::pair{5, 1.0}}) {
    const auto with = nominal(id, 700.0, 900.0);
    ASSERT_EQ(with.size(), 12U);
    for (std::size_t L = 0; L < 2; ++L) {
      for (std::size_t s = 0; s < 6; ++s) {
        const double expected =
            (L == 0 ? 700.0 : 900.0) * kBehind[s] / kTotal * ratio / kShaftRatio[s];
        EXPECT_NEAR(with[L * 6 + s] - without[L * 6 + s], expected, 1e-9 * expected);
      }
    }
  }
}

TEST(PropellerIceResults, TwoPropellersGetNoMeanTermAndNoMarks) {
  const std::string input = std::string(kGearedLine) + propeller(1, 11) + propeller(2, 12) +
                            "LOADCASE\nRPM 1 2 1 2\nELECTRICMOTOR ELECTRICMOTOR PROPELLER "
                            "PROPELLER\n1000.0 100.0 100.0 150.0 50.0\n";
  const IceRun with(input, 700.0, 900.0);
  const IceRun without(input, 0.0, 0.0);
  EXPECT_EQ(with.records("PropellerShaftMarks.bin"), std::vector<double>(6, 0.0)) << with.log();
  EXPECT_EQ(with.records("NominalTorque.bin"), without.records("NominalTorque.bin"));
}

TEST(PropellerIceResults, MarksComeWithTheFirstLoadCaseAndWithoutIceOfItsOwn) {
  const TemporaryDirectory directory;
  std::string path = directory.path().string();
  SETRESULTFILEDIR(path, static_cast<std::int32_t>(path.size()));
  ModelBundle model;
  ASSERT_TRUE(READINPUTFILE(directory.write("input.txt", kGearedLine + propeller(1, 11)), model));
  SET_PROPELLER_ICEZEROORDERCOEFFICIENT(model.propeller, 1, 500.0);
  PropellerIce ice(model);
  EXPECT_GT(SINGLELOADCASEPROPELLERICEZEROORDERTORQUE(model, 1, 2, ice), 0.0);
  EXPECT_EQ(ice.PROPELLERSHAFTMARKS[0], 0.0);
  SET_PROPELLER_HASICEEXCITATION(model.propeller, 1, false);
  EXPECT_EQ(SINGLELOADCASEPROPELLERICEZEROORDERTORQUE(model, 1, 1, ice), 0.0);
  EXPECT_EQ(ice.PROPELLERSHAFTMARKS[0], 1.0);
}

TEST(PropellerIceResults, IceShipHasItsWorstIceTorqueWhereTheBladesMeetTheFirstMode) {
  const SolverRun run(exampleInput("ice-ship"), 3);
  ASSERT_EQ(run.log(), "");
  constexpr std::size_t kShafts = 13;
  constexpr std::size_t kCoupling = 4;
  const std::vector<double> rpm = {300, 320, 335, 345, 350, 360, 380, 400, 440, 480, 520, 560, 600};
  const auto ice = run.records("SynPropIceTorque.bin");
  ASSERT_EQ(ice.size(), rpm.size() * kShafts);
  std::size_t worst = 0;
  for (std::size_t i = 0; i < rpm.size(); ++i) {
    worst = ice[i * kShafts + kCoupling] > ice[worst * kShafts + kCoupling] ? i : worst;
  }
  // The propeller turns at a quarter of the speed and has four blades.
  const double critical = run.records("NaturalFrequency.bin")[1] * 30.0 / kPi;
  EXPECT_NEAR(rpm[worst], critical, 2.0);
  EXPECT_EQ(run.records("PropellerShaftMarks.bin"),
            (std::vector<double>{1, 1, 2, 2, 2, 2, 2, 2, 2, 2, 2, 2, 2}));
  // Mean torque of the propeller shaft at full speed: 2700 kW at 150 rpm, and of the ice what goes
  // on to the inertia behind the propeller.
  constexpr double kPropeller = 4100.0 / 16.0;
  constexpr double kTotal = kPropeller + (260.0 + 2900.0) / 16.0 + 34 + 85 + 640 + 6 * 72 + 20 + 75;
  const double expected =
      2.7e6 / (150.0 * kPi / 30.0) + 95493.0 * 0.6 * (kTotal - kPropeller) / kTotal;
  EXPECT_NEAR(run.records("NominalTorque.bin")[12 * kShafts], expected, 1.0);
}

}  // namespace
}  // namespace verenwick::test
