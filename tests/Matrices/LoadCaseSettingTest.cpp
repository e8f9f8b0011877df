#include <gtest/gtest.h>

#include "Matrices/LoadCaseSetting.h"
#include "Support/ReadModel.h"

namespace verenwick {
namespace {

using test::ReadModel;

constexpr double kRpmOfOneRadian = 30 / 3.141592653589793;

TEST(LoadCaseSetting, PutsSpeedPowerAndTorqueOnTheWholeLine) {
  ReadModel read;
  read.read(
      "INERTIA 1 1.0 100.0 0 0\nINERTIA 2 0.5 50.0 0 0\nSHAFT 1 1 2 0.5 1e6 0 0 0 0 0 0\n"
      "LINEARCOUPLING 3\n1 1000.0 1e6\nGEISLINGERCOUPLING 4\n1 1 1 1 1\nGENERALDAMPING\n"
      "PROPELLER 5\n2 1000 120 1 40 10 0\n600 3000 0.8 0.6 1 100 0\nARCHER 30 0 0 4 1 0 0\n0\n"
      "LOADCASE\nRPM 5 3 5\nPROPELLER LINEARCOUPLING PROPELLER\n100 60 30 999\n200 480 90 999\n");
  ASSERT_TRUE(read.isOk()) << read.log();
  ModelBundle& model = read.model;
  // A column of a kind that carries no load, and one of a component that isn't there.
  ASSERT_EQ(GET_LOADCASE_NCOMPONENT(model.loadCase), 3);
  model.loadCase.append();
  SET_LOADCASE_COMPONENTTYPE(model.loadCase, 4, ComponentType{27});
  model.loadCase.append();
  SET_LOADCASE_COMPONENTTYPE(model.loadCase, 5, ComponentType::diesel);
  LOADCASESETTING(model, 2);
  EXPECT_EQ(model.mass.at(1).SPEED, 200.0);
  EXPECT_EQ(model.mass.at(2).SPEED, 100.0);
  EXPECT_EQ(model.shaft.at(1).SPEED, 100.0);
  const PROPELLER_RECORD& p = model.propeller.at(1);
  EXPECT_EQ(p.POWER, 480e3);  // the column named first
  EXPECT_EQ(p.SPEED, 100.0);
  EXPECT_NEAR(p.TORQUE, 4800 * kRpmOfOneRadian, 1e-8);
  const LINEARCOUPLING_RECORD& coupling = model.linearCoupling.at(1);
  EXPECT_EQ(coupling.POWER, 90e3);
  EXPECT_EQ(coupling.SPEED, 100.0);
  EXPECT_NEAR(coupling.TORQUE, 900 * kRpmOfOneRadian, 1e-9);
  EXPECT_EQ(model.geislingerCoupling.at(1).POWER, 0.0);
  setOperatingPoint(model, 2, 1);
  EXPECT_EQ(coupling.POWER, 30e3);
  EXPECT_EQ(p.POWER, 480e3);
}

TEST(LoadCaseSetting, ComputesTheIceExcitationOfTheSpeed) {
  ReadModel read(
      "INERTIA 1 1.0 100.0 0 0\nINERTIA 2 0.5 50.0 0 0\nSHAFT 1 1 2 0.5 1e6 0 0 0 0 0 0\n"
      "PROPELLER 5\n2 1000 120 1 40 10 0\n600 3000 0.8 0.6 1 100 0\nARCHER 30 0 0 4 1 0 0\n0\n"
      "LOADCASE\nRPM 5\nPROPELLER\n120 60\n240 480\n");
  ASSERT_TRUE(read.isOk()) << read.log();
  PROPELLER_RECORD& p = read.model.propeller.at(1);
  p.NSPEEDRATIO = 2;
  p.SPEEDRATIO = {0.5, 1.0};
  p.ICEHARMONICORDER = {0, 1};
  p.ICECOSINE = {100, 200, 300, 400};
  p.ICESINE = {0, 0, 30, 40};
  LOADCASESETTING(read.model, 2);
  EXPECT_EQ(iceHarmonic(read.model.propeller, 1, 1), std::complex<double>());
  p.HASICEEXCITATION = true;
  for (const auto& [loadCase, mean] : {std::pair(1, 100.0), std::pair(2, 200.0)}) {
    LOADCASESETTING(read.model, loadCase);
    EXPECT_EQ(p.ICEZEROORDERCOEFFICIENT, mean);
    EXPECT_EQ(iceHarmonic(read.model.propeller, 1, 1),
              std::complex((mean + 200) / 2, (mean + 200) / 20));
  }
}

/// An engine with three throws, of which one cylinder doesn't fire.
TEST(LoadCaseSetting, SharesTheEnginePowerAmongFiringCylinders) {
  for (const bool isVengine : {false, true}) {
    ReadModel read;
    ModelBundle& model = read.model;
    ALLOCATE_DIESEL_TABLE(model.diesel, 1);
    ALLOCATE_LOADCASE_TABLE(model.loadCase, 1);
    SET_DIESEL_ID(model.diesel, 1, 8);
    SET_LOADCASE_COMPONENTTYPE(model.loadCase, 1, ComponentType::diesel);
    SET_LOADCASE_COMPONENTID(model.loadCase, 1, 8);
    model.loadCaseSpeed.allocate(2);
    model.loadCasePower.allocate(2);
    model.loadCaseSpeed.set(2, 500.0);
    model.loadCasePower.set(1, 2, 900e3);
    DIESEL_RECORD& diesel = model.diesel.at(1);
    diesel.NCYLINDER = 3;
    diesel.ISVENGINE = isVengine;
    diesel.NSTROKE = 4;
    diesel.RPMRATIO = 2.0;
    diesel.MCRTORQUE = 900 * kRpmOfOneRadian;
    diesel.MCRPOWER = 900e3;
    diesel.MCRSPEED = 1000.0;
    diesel.BORE = 0.2;
    diesel.STROKE = 0.3;
    diesel.CONRODRATIO = 0.25;
    diesel.ME = 0.9;
    diesel.FIRINGSTATUSA = {1, 2, 5};
    diesel.FIRINGSTATUSB = {1, 3, 1};
    LOADCASESETTING(model, 2);
    const double perCylinder = isVengine ? 225e3 : 450e3;
    EXPECT_EQ(diesel.ILOADCASE, 2);
    EXPECT_EQ(diesel.SPEED, 1000.0);
    EXPECT_EQ(diesel.POWER, 900e3);
    EXPECT_EQ(diesel.POWERPERCYL, perCylinder);
    for (std::size_t row = 0; row < 4; ++row) {
      EXPECT_EQ(diesel.CYLPOWERA[row], row < 3 ? perCylinder : 0.0);
      EXPECT_EQ(diesel.CYLPOWERB[row], row < 3 && isVengine ? perCylinder : 0.0);
    }
    EXPECT_NEAR(diesel.TORQUE, 900 * kRpmOfOneRadian, 1e-9);
    EXPECT_NEAR(diesel.LOADPERCENTAGE, 1.0, 1e-12);
    EXPECT_NE(diesel.MASSFC, (std::array<std::complex<double>, kMaxOrders>{}));
  }
}

/// The cylinders of an opposite pump halve the power of their row; those of a V engine don't.
TEST(LoadCaseSetting, SharesThePumpPowerAmongCylinders) {
  for (const bool isOpposite : {false, true}) {
    ReadModel read;
    ModelBundle& model = read.model;
    ALLOCATE_RECIPROCATINGPUMP_TABLE(model.reciprocatingPump, 1);
    ALLOCATE_LOADCASE_TABLE(model.loadCase, 1);
    SET_RECIPROCATINGPUMP_ID(model.reciprocatingPump, 1, 8);
    SET_LOADCASE_COMPONENTTYPE(model.loadCase, 1, ComponentType::reciprocatingPump);
    SET_LOADCASE_COMPONENTID(model.loadCase, 1, 8);
    model.loadCaseSpeed.allocate(1);
    model.loadCasePower.allocate(1);
    model.loadCaseSpeed.set(1, 500.0);
    model.loadCasePower.set(1, 1, 600e3);
    RECIPROCATINGPUMP_RECORD& pump = model.reciprocatingPump.at(1);
    pump.NCYLINDER = 3;
    pump.ISOPPOSITE = isOpposite;
    pump.ISSIMPLIFIEDPRESSURE = true;
    pump.RPMRATIO = 0.5;
    pump.MCRSPEED = 500.0;
    pump.MCRTORQUE = 48000 * kRpmOfOneRadian / 10;
    pump.BORE = 0.1;
    pump.STROKELENGTH = 0.3;
    LOADCASESETTING(model, 1);
    const double perCylinder = isOpposite ? 100e3 : 200e3;
    EXPECT_EQ(pump.POWERPERCYL, perCylinder);
    EXPECT_EQ(pump.POWER, 600e3);
    EXPECT_EQ(pump.SPEED, 250.0);
    EXPECT_EQ(pump.SPEEDPERCENTAGE, 0.5);
    EXPECT_NEAR(pump.LOADPERCENTAGE, 0.5, 1e-12);
    for (std::size_t row = 0; row < 4; ++row) {
      EXPECT_EQ(pump.CYLPOWERA[row], row < 3 ? perCylinder : 0.0);
      EXPECT_EQ(pump.CYLPOWERB[row], row < 3 && isOpposite ? perCylinder : 0.0);
    }
  }
}

}  // namespace
}  // namespace verenwick
