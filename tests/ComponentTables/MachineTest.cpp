#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Matrices/LoadCaseSetting.h"
#include "RunControl/Constants.h"
#include "Support/ReadModel.h"

namespace verenwick {
namespace {

using test::ReadModel;
using testing::DoubleEq;
using testing::Pointwise;

/// A motor that follows the load, one on a fixed frequency, and what they drive, at two loads. The
/// machines turn at 1500 rpm at the reference speed of 750.
const std::string kPlant =
    "INERTIA 1 2.0 10 0 0\nINERTIA 2 2.0 10 0 0\nINERTIA 3 2.0 10 0 0\nINERTIA 4 2.0 10 0 0\n"
    "INERTIA 5 2.0 10 0 0\n"
    "SHAFT 1 1 2 2.0 1e6 0 0 0 0 0 0\nSHAFT 2 2 3 2.0 1e6 0 0 0 0 0 0\n"
    "SHAFT 3 3 4 2.0 1e6 0 0 0 0 0 0\nSHAFT 4 4 5 2.0 1e6 0 0 0 0 0 0\n"
    "ELECTRICMOTOR 1\n1 500 1500 0 3000 1\n1 2 3 4\n0.6 1.0 0.3 0.2\n"
    "ELECTRICMOTOR 2\n2 500 1500 2 3000 4\n1 2 3 4\n0.6 1.0 0.3 0.2\n"
    "GENERATOR 1\n3 500 1500 2\n1 2 0 0\n1 2 3 4\n"
    "CENTRIFUGALPUMP 1\n4 300 1500 0 30\n1 2 0 0\n5 6 7 8\n"
    "STEAMTURBINE 1\n5 400 1500\n"
    "LOADCASE\nRPM 1 2 1 1 1\nELECTRICMOTOR ELECTRICMOTOR GENERATOR CENTRIFUGALPUMP STEAMTURBINE\n"
    "750 300 200 400 150 50\n375 30 20 40 15 5\n";

std::vector<double> times(double torque, std::vector<double> percents) {
  for (double& percent : percents) {
    percent *= torque / 100.0;
  }
  return percents;
}

TEST(Machine, ExcitationFollowsTheTorqueOfTheLoadCase) {
  ReadModel read(kPlant);
  ASSERT_TRUE(read.isOk()) << read.log();
  ModelBundle& m = read.model;
  const double omega = 50.0 * kPi;
  // At half the speed a tenth of the power is a fifth of the torque.
  for (const auto& [loadCase, share] : {std::pair{1, 1.0}, {2, 0.2}}) {
    LOADCASESETTING(m, loadCase);
    EXPECT_DOUBLE_EQ(m.generator.at(1).TORQUE, share * 400e3 / omega);
    EXPECT_EQ(m.generator.at(1).SPEED, loadCase == 1 ? 1500.0 : 750.0);
    EXPECT_DOUBLE_EQ(m.steamTurbine.at(1).TORQUE, share * 50e3 / omega);
    EXPECT_THAT(m.electricMotor.at(1).MOTORTORQUEAMP,
                Pointwise(DoubleEq(), times(share * 300e3 / omega, {0.6, 1.0, 0.3, 0.2})));
    // All four slots have a torque, however many orders are in use.
    EXPECT_THAT(m.generator.at(1).GENTORQUEAMP,
                Pointwise(DoubleEq(), times(share * 400e3 / omega, {1, 2, 3, 4})));
    EXPECT_THAT(m.centrifugalPump.at(1).CENTRIFUGALPUMPTORQUEAMP,
                Pointwise(DoubleEq(), times(share * 150e3 / omega, {5, 6, 7, 8})));
    // A constant excitation goes by the rated torque at every load.
    EXPECT_THAT(m.electricMotor.at(2).MOTORTORQUEAMP,
                Pointwise(DoubleEq(), times(500e3 / omega, {0.6, 1.0, 0.3, 0.2})));
  }
  EXPECT_EQ(GET_ELECTRICMOTOR_CONSTEXCITATIONTORQUE(m.electricMotor, 1), 0.0);
}

}  // namespace
}  // namespace verenwick
