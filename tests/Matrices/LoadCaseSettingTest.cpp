#include <gtest/gtest.h>

#include "Matrices/LoadCaseSetting.h"
#include "RunControl/Constants.h"
#include "Support/ReadModel.h"

namespace verenwick {
namespace {

using test::ReadModel;

TEST(LoadCaseSetting, PutsSpeedPowerAndTorqueOnTheWholeLine) {
  ReadModel read(
      "INERTIA 1 1.0 100.0 0 0\nINERTIA 2 0.5 50.0 0 0\nSHAFT 1 1 2 0.5 1e6 0 0 0 0 0 0\n"
      "LINEARCOUPLING 3\n1 1000.0 1e6\nGEISLINGERCOUPLING 4\n1 1 1 1 1\nGENERALDAMPING\n"
      "PROPELLER 5\n2 1000 120 1 40 10 0\n600 3000 0.8 0.6 1 100 0\nARCHER 30 0 0 4 1 0 0\n0\n"
      "LOADCASE\nRPM 5 3 5\nPROPELLER LINEARCOUPLING PROPELLER\n100 60 30 999\n200 480 90 999\n");
  ASSERT_TRUE(read.isOk()) << read.log();
  ModelBundle& model = read.model;
  // A column of a kind that carries no load, and one of a component that isn't there.
  model.loadCase.append();
  SET_LOADCASE_COMPONENTTYPE(model.loadCase, 4, ComponentType{27});
  model.loadCase.append();
  SET_LOADCASE_COMPONENTTYPE(model.loadCase, 5, ComponentType::diesel);
  LOADCASESETTING(model, 2);
  EXPECT_EQ(model.mass.at(1).SPEED, 200.0);
  EXPECT_EQ(model.mass.at(2).SPEED, 100.0);
  EXPECT_EQ(model.shaft.at(1).SPEED, 100.0);
  const PROPELLER_RECORD& p = model.propeller.at(1);
  EXPECT_EQ(p.POWER, 480e3) << "the column named first";
  EXPECT_EQ(p.SPEED, 100.0);
  EXPECT_NEAR(p.TORQUE, 480e3 / angularSpeed(100.0), 1e-8);
  const LINEARCOUPLING_RECORD& coupling = model.linearCoupling.at(1);
  EXPECT_EQ(coupling.POWER, 90e3);
  EXPECT_EQ(coupling.SPEED, 100.0);
  EXPECT_NEAR(coupling.TORQUE, 90e3 / angularSpeed(100.0), 1e-9);
  EXPECT_EQ(model.geislingerCoupling.at(1).POWER, 0.0);
  setOperatingPoint(model, 2, 1);
  EXPECT_EQ(coupling.POWER, 30e3);
  EXPECT_EQ(p.POWER, 480e3);
}

TEST(LoadCaseSetting, MachinesExciteByTheTorqueOfTheLoadCase) {
  // A motor that follows the load, one on a fixed frequency, and what they drive. The machines turn
  // at 1500 rpm at the reference speed of 750.
  ReadModel read(
      "INERTIA 1 2.0 10 0 0\nINERTIA 2 2.0 10 0 0\nINERTIA 3 2.0 10 0 0\nINERTIA 4 2.0 10 0 0\n"
      "ELECTRICMOTOR 1\n1 500 1500 0 3000 1\n1 2 3 4\n0.6 1.0 0.3 0.2\n"
      "ELECTRICMOTOR 2\n2 500 1500 2 3000 4\n1 2 3 4\n0.6 1.0 0.3 0.2\n"
      "GENERATOR 1\n3 500 1500 2\n1 2 0 0\n0.6 1.0 0.3 0.2\n"
      "CENTRIFUGALPUMP 1\n4 300 1500 0 30\n1 2 0 0\n0.6 1.0 0.3 0.2\n"
      "LOADCASE\nRPM 1 2 1 1\nELECTRICMOTOR ELECTRICMOTOR GENERATOR CENTRIFUGALPUMP\n"
      "750 300 200 400 150\n375 30 20 40 15\n");
  ASSERT_TRUE(read.isOk()) << read.log();
  ModelBundle& m = read.model;
  const double omega = 50.0 * kPi;
  const std::array percents{0.6, 1.0, 0.3, 0.2};
  // At half the speed a tenth of the power is a fifth of the torque.
  for (const auto& [loadCase, share] : {std::pair{1, 1.0}, {2, 0.2}}) {
    LOADCASESETTING(m, loadCase);
    // All four slots have a torque, however many orders are in use.
    for (std::size_t i = 0; i < 4; ++i) {
      const double part = percents[i] / 100.0 / omega;
      EXPECT_DOUBLE_EQ(m.electricMotor.at(1).MOTORTORQUEAMP[i], share * 300e3 * part);
      EXPECT_DOUBLE_EQ(m.generator.at(1).GENTORQUEAMP[i], share * 400e3 * part);
      EXPECT_DOUBLE_EQ(m.centrifugalPump.at(1).CENTRIFUGALPUMPTORQUEAMP[i], share * 150e3 * part);
      // A constant excitation goes by the rated torque at every load.
      EXPECT_DOUBLE_EQ(m.electricMotor.at(2).MOTORTORQUEAMP[i], 500e3 * part);
    }
  }
}

}  // namespace
}  // namespace verenwick
