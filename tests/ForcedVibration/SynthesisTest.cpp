#include <gtest/gtest.h>

#include <cmath>

#include "ForcedVibration/Synthesis.h"
#include "RunControl/Constants.h"

namespace verenwick {
namespace {

/// Results of two inertias and one shaft; families without sources until one is added.
struct Plant {
  LoadCaseResults results;
  Waveforms waveforms;

  Plant() {
    for (FamilyResults& family : results) {
      family.points = {2, 1};
      family.clear();
    }
  }
  FamilyResults& add(Family which, std::vector<double> OMEGA, std::int32_t orders) {
    FamilyResults& family = results[static_cast<std::size_t>(which)];
    family.sources = static_cast<std::int32_t>(OMEGA.size());
    family.orders = orders;
    family.clear();
    family.OMEGA = std::move(OMEGA);
    return family;
  }
  std::vector<double> synthesis(Quantity quantity, PropellerPhase phase = PropellerPhase::unknown) {
    std::vector<double> result(quantity <= Quantity::acceleration ? 2 : 1, -1.0);
    const double base = baseFrequency(results);
    std::optional<PhaseTable> phases;
    if (base != 0.0) {
      phases.emplace(results, base);
    }
    SINGLELOADCASESYNTHESIS(results, quantity, phases ? &*phases : nullptr, phase, result,
                            waveforms, true);
    return result;
  }
};

TEST(Synthesis, BaseFrequencyIsTheSmallestFirstOrderOfTheFamiliesThatRanOrOfAnySourceThatRan) {
  using Speeds = std::vector<double>;
  struct Case {
    const char* name;
    std::array<Speeds, 6> speeds;  ///< first orders of each family's sources
    double base;
  };
  for (const auto& [name, speeds, base] : {
           Case{"none", {}, 0.0},
           {"two diesels", {Speeds{30, 20}}, 20},
           {"a propeller below the diesel", {Speeds{30}, {12}}, 12},
           {"a diesel at standstill beside two propellers", {Speeds{0}, {12, 9}}, 9},
           {"generators of which one ran", {Speeds{}, {}, {0, 7}}, 7},
           {"a diesel at standstill, generators of which one ran", {Speeds{0}, {}, {7, 0, 6}}, 6},
           {"backwards", {Speeds{-20}, {-30}}, -20},
           {"a generator that did not run takes its family out", {Speeds{30}, {}, {7, 0}}, 30},
           {"a motor below all", {Speeds{30}, {}, {0}, {}, {}, {11}}, 11},
           {"pumps", {Speeds{}, {}, {}, {9}, {8}}, 8},
           {"nothing ran", {Speeds{}, {}, {}, {}, {}, {0}}, 0},
       }) {
    Plant plant;
    for (std::size_t f = 0; f < speeds.size(); ++f) {
      plant.add(static_cast<Family>(f), speeds[f], 4);
    }
    EXPECT_EQ(baseFrequency(plant.results), base) << name;
    if (base == 0) {
      EXPECT_EQ(plant.synthesis(Quantity::deflection), (Speeds{0, 0})) << name;
    }
  }
}

TEST(Synthesis, SourcesRunOnOneAngleAxisByTheirFirstOrder) {
  // The second engine's order index 2 turns at 3 times the base frequency. The third is as fast as
  // the second.
  Plant plant;
  FamilyResults& diesel = plant.add(Family::diesel, {20.0, 30.0, 30.0}, 2);
  diesel.source(1).of(Quantity::velocity).RE[1] = 3;
  diesel.source(1).of(Quantity::velocity).IM[1] = 4;
  diesel.source(2).of(Quantity::velocity).IM[3] = 0.5;
  diesel.source(3).of(Quantity::velocity).RE[3] = 0.25;
  const auto result = plant.synthesis(Quantity::velocity);
  ASSERT_EQ(plant.waveforms[0].size(), 2U * 360U);
  EXPECT_EQ(result[0], 0.0);
  for (const std::size_t m : {1, 47, 200, 333, 360}) {
    const double angle = static_cast<double>(m) * kPi / 180;
    EXPECT_NEAR(
        plant.waveforms[0][360 + m - 1],
        6 * std::cos(angle) - 8 * std::sin(angle) - std::sin(3 * angle) + 0.5 * std::cos(3 * angle),
        1e-13);
  }
}

TEST(Synthesis, FamiliesAddUpInTheWorstPhaseUnlessThePhaseOfThePropellerIsKnown) {
  Plant plant;
  FamilyResults& diesel = plant.add(Family::diesel, {20.0}, 1);
  diesel.source(1).of(Quantity::torque).RE[0] = 3;
  diesel.source(1).of(Quantity::dampingTorque).RE[0] = -2;
  plant.add(Family::propeller, {20.0}, 1).source(1).of(Quantity::torque).RE[0] = -3;
  plant.add(Family::generator, {20.0}, 1).source(1).of(Quantity::torque).RE[0] = -0.5;
  EXPECT_NEAR(plant.synthesis(Quantity::torque)[0], 6 + 6 + 1, 1e-13);
  // Engine and propeller cancel, the generator stays in its worst phase.
  EXPECT_NEAR(plant.synthesis(Quantity::torque, PropellerPhase::known)[0], 1, 1e-13);
  // Torque and damping torque add up as waveforms within a family.
  const Waveforms torque = plant.waveforms;
  plant.synthesis(Quantity::dampingTorque);
  std::vector<double> resultant(1);
  CALCULATERESULTANTTORQUE(PropellerPhase::unknown, resultant, torque, plant.waveforms);
  EXPECT_NEAR(resultant[0], 2 * (3 - 2) + 6 + 1, 1e-13);
  CALCULATERESULTANTTORQUE(PropellerPhase::known, resultant, torque, plant.waveforms);
  EXPECT_NEAR(resultant[0], 2 * (3 - 2 - 3) * -1 + 1, 1e-13);
}

}  // namespace
}  // namespace verenwick
