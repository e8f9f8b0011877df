#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "FreeVibration/Lines.h"
#include "FreeVibration/RelativeModes.h"
#include "RunControl/Constants.h"
#include "Support/ReadModel.h"
#include "Support/SolverRun.h"

namespace verenwick::test {
namespace {

using testing::Each;
using testing::HasSubstr;
using testing::NanSensitiveDoubleEq;
using testing::Not;
using testing::Pointwise;
using Values = std::vector<double>;

TEST(FreeVibration, PublishedSystemsReproduce) {
  struct System {
    const char* source;
    std::string input;
    double unit;  ///< of the printed frequencies, rad/s
    Values frequencies;
    double tolerance;  ///< relative, from the digits printed
  };
  for (const System& system : {
           System{"Friswell et al., Dynamics of Rotating Machines, Section 9.6.3, branched gears",
                  "INERTIA 1 1 3200 0 0\nINERTIA 2 1 1025 0 0\nINERTIA 3 0.625 450 0 0\n"
                  "INERTIA 4 0.625 450 0 0\nSHAFT 1 1 2 1 4272566.008882119 0 0 0 0 0 0\n"
                  "SHAFT 2 2 3 0.625 7450763.826873114 0 0 0 0 0 0\n"
                  "SHAFT 3 2 4 0.625 7450763.826873114 0 0 0 0 0 0\n",
                  2 * kPi,
                  {10.304, 20.479, 24.423},
                  6e-5},
           {"six-cylinder engine",
            kSixCylinderLine,
            2 * kPi,
            {216.584, 592.74, 984.923, 1171.02},
            1e-5},
           {"five-cylinder ship plant",
            exampleInput("two-stroke-ship"),
            kPi / 30,
            {330.08, 502.1, 1872.2},
            2.5e-5},
       }) {
    const SolverRun run(system.input);
    ASSERT_EQ(run.status(), 1) << run.log();
    const Values omega = run.records("NaturalFrequency.bin");
    for (std::size_t m = 0; m < system.frequencies.size(); ++m) {
      EXPECT_NEAR(omega.at(m + 1) / system.unit / system.frequencies[m], 1, system.tolerance)
          << system.source;
    }
  }
}

/// A free uniform chain of n inertias J and shafts k has w_m = 2 sqrt(k/J) sin(m pi / 2n) and the
/// shapes cos(m pi (i - 1/2) / n), m from 0 and i from 1.
TEST(FreeVibration, AUniformChainHasItsClosedForm) {
  constexpr std::size_t kInertias = 500;
  constexpr std::size_t kShafts = kInertias - 1;
  constexpr double kJ = 2.0;
  constexpr double kK = 3e6;
  const SolverRun run(uniformChain(kInertias));
  ASSERT_EQ(run.status(), 1) << run.log();
  const Values omega = run.records("NaturalFrequency.bin");
  const Values deflection = run.records("RelativeDeflection.bin");
  const Values torque = run.records("RelativeTorque.bin");
  ASSERT_EQ(deflection.size(), kShafts * kInertias);
  ASSERT_EQ(torque.size(), kShafts * kShafts);
  EXPECT_EQ(omega[0], 0.0);
  const double highest = 2 * std::sqrt(kK / kJ);
  for (const std::size_t m : {1, 2, 17, 250, 499}) {
    const double turn = static_cast<double>(m) * kPi / kInertias;
    // An eigenvalue is known to the rounding of the largest one.
    EXPECT_NEAR(std::pow(omega[m], 2), std::pow(highest * std::sin(turn / 2), 2),
                1e-12 * highest * highest);
    const auto shape = [&](std::size_t i) {
      return std::cos(turn * (static_cast<double>(i) - 0.5)) / std::cos(turn / 2);
    };
    const double tolerance = 1e-8 / std::fabs(std::cos(turn / 2));
    for (const std::size_t i : {1, 2, 250, 499}) {
      EXPECT_NEAR(deflection[(m - 1) * kInertias + i - 1], shape(i), tolerance);
      EXPECT_NEAR(torque[(m - 1) * kShafts + i - 1], kK * (shape(i) - shape(i + 1)),
                  kK * tolerance);
    }
  }
}

/// A ring, a propeller, two cylinders and a second propeller, whose modes are chosen so that two
/// candidates for the reference tie or stand still.
TEST(RelativeModes, TheReferenceIsTheFirstLargestCylinderThenPropellerThenInertia) {
  ReadModel read;
  ModelBundle& model = read.model;
  ALLOCATE_MASS_TABLE(model.mass, 5);
  std::int32_t i = 0;
  for (const auto& [type, ratio] : {std::pair{MassType::viscousDamperRing, 1.0},
                                    {MassType::propeller, 0.5},
                                    {MassType::dieselCylinder, 1.0},
                                    {MassType::dieselCylinder, 2.0},
                                    {MassType::propeller, 0.5}}) {
    SET_MASS_MASSTYPE(model.mass, ++i, type);
    SET_MASS_RPMRATIO(model.mass, i, ratio);
  }
  ALLOCATE_DIESEL_TABLE(model.diesel, 1);
  ALLOCATE_PROPELLER_TABLE(model.propeller, 2);
  // At the speed of each inertia modes 2 to 4 are (-4, -2, 2, 4), (1, 1, -4, -6), (2, 0, 0, 1).
  const Values modes = {1, 1, 1, 1, -8, -2, 1, 8, 2, 1, -2, -12, 4, 0, 0, 2};
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
  const Values byCylinder = {0, 2,   1, -1,        -2,   0,    -0.25,    -0.25,
                             1, 1.5, 0, kInfinity, kNan, kNan, kInfinity};
  EXPECT_THAT(RELATIVEINERTIADEFLECTION(model, 4, modes),
              Pointwise(NanSensitiveDoubleEq(), byCylinder));
  DEALLOCATE_DIESEL_TABLE(model.diesel);
  const Values byPropeller = {0,       1, 0.5, -0.5, -1, 0, -1 / 6.0, -1 / 6.0,
                              4 / 6.0, 1, 0,   1,    0,  0, 0.5};
  EXPECT_THAT(RELATIVEINERTIADEFLECTION(model, 4, modes),
              Pointwise(NanSensitiveDoubleEq(), byPropeller));
  DEALLOCATE_PROPELLER_TABLE(model.propeller);
  EXPECT_EQ(RELATIVEINERTIADEFLECTION(model, 4, modes),
            (Values{0, 1, 0.5, -0.5, -1, 0, 1, 1, -4, -6, 0, 1, 0, 0, 0.5}));
}

/// The ring of a viscous damper has no spring, whatever stiffness its link states: half its inertia
/// goes to the casing. Behind a gear of ratio 1/2 an inertia counts a quarter and has half the
/// deflection, and torque is that of the deflections as they are.
TEST(RelativeModes, ARingStandsStillAndDeflectionsAreAtTheirOwnSpeed) {
  const std::string flywheelAndRing =
      "INERTIA 1 1.0 10.0 0.0 0.0\nINERTIA 2 1.0 100.0 0.0 0.0\n"
      "SHAFT 1 1 2 1.0 5e4 50.0 0.0 0.0 0.0 0 0\nVISCOUSDAMPER 1\n2 1 50.0 0\n";
  const SolverRun alone(flywheelAndRing);
  ASSERT_EQ(alone.status(), 1) << alone.log();
  EXPECT_EQ(alone.records("NaturalFrequency.bin"), Values{0.0});
  EXPECT_TRUE(alone.records("RelativeTorque.bin").empty());
  EXPECT_THAT(filesIn(alone.results()), Each(Not(HasSubstr("VectorSum")))) << "without an engine";
  const SolverRun geared(flywheelAndRing +
                         "INERTIA 3 0.5 200.0 0.0 0.0\nSHAFT 2 2 3 1.0 3e6 0.0 0.0 0.0 0.0 0 0\n");
  const auto near = [](const Values& values) {
    return Pointwise(testing::DoubleNear(1e-3), values);
  };
  EXPECT_THAT(geared.records("NaturalFrequency.bin"),
              near({0.0, std::sqrt(3e6 * (1 / 105.0 + 1 / 50.0))}));
  EXPECT_THAT(geared.records("RelativeDeflection.bin"), near({0.0, 1.0, -1.05}));
  EXPECT_THAT(geared.records("RelativeTorque.bin"), near({0.0, 3e6 * (1 + 1.05)}));
}

TEST(FreeVibration, AModelTooLargeForADenseProblemStopsWithAText) {
  const SolverRun run(uniformChain(5001));
  EXPECT_EQ(run.status(), 1);
  EXPECT_EQ(run.log(),
            " ** 5001 inertias are too many for the free vibration calculation, at most 5000\n");
}

}  // namespace
}  // namespace verenwick::test
