#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>

#include "ForcedVibration/PlainSynthesis.h"
#include "ForcedVibration/Synthesis.h"
#include "RunControl/Global_Parameter.h"

namespace verenwick {
namespace {

using Complex = std::complex<double>;
using std::numbers::pi;

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
  static void set(FamilyResults& family, Quantity quantity, std::int32_t s, std::int32_t k,
                  std::int32_t point, Complex value) {
    const SourceResults source = family.source(s);
    const auto at = static_cast<std::size_t>((k - 1) * family.points.of(quantity) + point - 1);
    source.of(quantity).RE[at] = value.real();
    source.of(quantity).IM[at] = value.imag();
  }
  std::vector<double> synthesis(Quantity quantity, bool considerPhase = false) {
    std::vector<double> result(quantity <= Quantity::acceleration ? 2 : 1, -1.0);
    const double base = baseFrequency(results);
    if (base == 0.0) {
      SINGLELOADCASESYNTHESIS(results, quantity, nullptr, considerPhase, result, waveforms, true,
                              true);
    } else {
      const PhaseTable phases(results, base);
      SINGLELOADCASESYNTHESIS(results, quantity, &phases, considerPhase, result, waveforms, true,
                              true);
    }
    return result;
  }
};

TEST(Synthesis, BaseFrequencyIsTheSmallestFirstOrderOfTheFamiliesThatRan) {
  struct Case {
    const char* name;
    std::vector<std::pair<Family, std::vector<double>>> sources;
    double base;
  };
  const std::vector<Case> cases = {
      {"none", {}, 0.0},
      {"two diesels", {{Family::diesel, {30.0, 20.0}}}, 20.0},
      {"a propeller below the diesel",
       {{Family::diesel, {30.0}}, {Family::propeller, {12.0}}},
       12.0},
      {"a diesel at standstill counts",
       {{Family::diesel, {0.0}}, {Family::propeller, {12.0}}},
       0.0},
      {"a generator that did not run takes its family out",
       {{Family::diesel, {30.0}}, {Family::generator, {7.0, 0.0}}},
       30.0},
      {"a motor below all",
       {{Family::diesel, {30.0}}, {Family::generator, {0.0}}, {Family::electricMotor, {11.0}}},
       11.0},
      {"pumps", {{Family::centrifugalPump, {9.0}}, {Family::reciprocatingPump, {8.0}}}, 8.0},
      {"nothing ran", {{Family::electricMotor, {0.0}}}, 0.0},
  };
  for (const auto& [name, sources, base] : cases) {
    Plant plant;
    for (const auto& [family, OMEGA] : sources) {
      plant.add(family, OMEGA, 4);
    }
    EXPECT_EQ(baseFrequency(plant.results), base) << name;
  }
}

TEST(Synthesis, OneOrderGivesItsAmplitudeAndACosineMinusSineWaveform) {
  Plant plant;
  FamilyResults& diesel = plant.add(Family::diesel, {20.0}, 2);
  Plant::set(diesel, Quantity::velocity, 1, 1, 2, {3.0, 4.0});
  const auto result = plant.synthesis(Quantity::velocity);
  EXPECT_EQ(result[0], 0.0);
  EXPECT_NEAR(result[1], 2 * 5.0, 10.0 * (1 - std::cos(pi / 360)));
  const auto& waveform = plant.waveforms[0];
  ASSERT_EQ(waveform.size(), 2U * 360U);
  const auto at = [&](int m) { return waveform[static_cast<std::size_t>(360 + m - 1)]; };
  EXPECT_NEAR(at(90), -2 * 4.0, 1e-13);
  EXPECT_NEAR(at(180), -2 * 3.0, 1e-13);
  EXPECT_NEAR(at(360), 2 * 3.0, 1e-13);
  EXPECT_NEAR(at(1), 2 * (3 * std::cos(pi / 180) - 4 * std::sin(pi / 180)), 1e-13);
}

TEST(Synthesis, SourcesRunOnOneAngleAxisByTheirFirstOrder) {
  // The second engine's order index 2 turns at 3 times the base frequency.
  Plant plant;
  FamilyResults& diesel = plant.add(Family::diesel, {20.0, 30.0}, 2);
  Plant::set(diesel, Quantity::torque, 1, 1, 1, {1.0, 0.0});
  Plant::set(diesel, Quantity::torque, 2, 2, 1, {0.0, 0.5});
  plant.synthesis(Quantity::torque);
  for (const int m : {1, 47, 200, 333}) {
    const double angle = m * pi / 180;
    EXPECT_NEAR(plant.waveforms[0][static_cast<std::size_t>(m - 1)],
                2 * std::cos(angle) - std::sin(3 * angle), 1e-13);
  }
}

TEST(Synthesis, FamiliesAddUpInTheWorstPhaseUnlessThePhaseOfThePropellerIsKnown) {
  Plant plant;
  FamilyResults& diesel = plant.add(Family::diesel, {20.0}, 1);
  FamilyResults& propeller = plant.add(Family::propeller, {20.0}, 1);
  FamilyResults& generator = plant.add(Family::generator, {20.0}, 1);
  Plant::set(diesel, Quantity::stress, 1, 1, 1, {1.0, 0.0});
  Plant::set(propeller, Quantity::stress, 1, 1, 1, {-1.0, 0.0});
  Plant::set(generator, Quantity::stress, 1, 1, 1, {-0.5, 0.0});
  EXPECT_NEAR(plant.synthesis(Quantity::stress, false)[0], 2 + 2 + 1, 1e-13);
  EXPECT_NEAR(plant.synthesis(Quantity::stress, true)[0], 1, 1e-13)
      << "engine and propeller cancel, the generator stays in its worst phase";
}

TEST(Synthesis, TheSharedPhaseTableGivesTheDigitsOfThePlainSum) {
  const LoadCaseResults results = plain::sampleResults(4, 3);
  const double base = baseFrequency(results);
  EXPECT_EQ(base, 23.7);
  const PhaseTable phases(results, base);
  Waveforms waveforms;
  for (const Quantity quantity : {Quantity::deflection, Quantity::dampingTorque}) {
    const std::size_t points = quantity == Quantity::deflection ? 4 : 3;
    std::vector<double> shared(points);
    std::vector<double> expected(points);
    SINGLELOADCASESYNTHESIS(results, quantity, &phases, false, shared, waveforms, false, true);
    plain::synthesis(results, quantity, base, expected);
    EXPECT_EQ(shared, expected);
  }
}

TEST(Synthesis, NothingRanNothingMoves) {
  Plant plant;
  plant.add(Family::electricMotor, {0.0}, 4);
  EXPECT_EQ(plant.synthesis(Quantity::deflection), (std::vector<double>{0.0, 0.0}));
  EXPECT_EQ(plant.waveforms[5], std::vector<double>(720, 0.0));
}

TEST(Synthesis, ResultantAddsTorqueAndDampingTorqueAsWaveformsWithinAFamily) {
  Plant plant;
  FamilyResults& diesel = plant.add(Family::diesel, {20.0}, 1);
  FamilyResults& propeller = plant.add(Family::propeller, {20.0}, 1);
  Plant::set(diesel, Quantity::torque, 1, 1, 1, {3.0, 0.0});
  Plant::set(diesel, Quantity::dampingTorque, 1, 1, 1, {-2.0, 0.0});
  Plant::set(propeller, Quantity::dampingTorque, 1, 1, 1, {1.0, 0.0});
  plant.synthesis(Quantity::torque);
  const Waveforms torque = plant.waveforms;
  plant.synthesis(Quantity::dampingTorque);
  std::vector<double> resultant(1);
  CALCULATERESULTANTTORQUE(false, resultant, torque, plant.waveforms);
  EXPECT_NEAR(resultant[0], 2 * (3 - 2) + 2, 1e-13);
  CALCULATERESULTANTTORQUE(true, resultant, torque, plant.waveforms);
  EXPECT_NEAR(resultant[0], 2 * (3 - 2 + 1), 1e-13);
}

TEST(Synthesis, WaveformsAreKeptWhereTheyAreAskedFor) {
  Plant plant;
  FamilyResults& diesel = plant.add(Family::diesel, {20.0}, 1);
  Plant::set(diesel, Quantity::deflection, 1, 1, 1, {1.0, 0.0});
  const PhaseTable phases(plant.results, 20.0);
  std::vector<double> result(2);
  for (const bool isAsked : {false, true}) {
    for (const bool hasDiesel : {false, true}) {
      SET_OUTPUTANGLEBASEDRESULTS(isAsked);
      SINGLELOADCASESYNTHESIS(plant.results, Quantity::deflection, &phases, false, result,
                              plant.waveforms, false, hasDiesel);
      EXPECT_EQ(plant.waveforms[0].size(), isAsked && hasDiesel ? 720U : 0U);
    }
  }
  SET_OUTPUTANGLEBASEDRESULTS(false);
}

}  // namespace
}  // namespace verenwick
