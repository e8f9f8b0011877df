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
      "PROPELLER 5\n2 1000 120 1 40 10 0\n600 3000 0.8 0.6 1 100 0\nARCHER 30 0 0 4 1 0 0\n0\n"
      "LOADCASE\nRPM 5 5\nPROPELLER PROPELLER\n100 60 999\n200 480 999\n");
  ASSERT_TRUE(read.isOk()) << read.log();
  ModelBundle& model = read.model;
  // A column of a kind that carries no load, and one of a component that isn't there.
  model.loadCase.append();
  SET_LOADCASE_COMPONENTTYPE(model.loadCase, 3, ComponentType{27});
  model.loadCase.append();
  SET_LOADCASE_COMPONENTTYPE(model.loadCase, 4, ComponentType::diesel);
  LOADCASESETTING(model, 2);
  EXPECT_EQ(model.mass.at(1).SPEED, 200.0);
  EXPECT_EQ(model.mass.at(2).SPEED, 100.0);
  EXPECT_EQ(model.shaft.at(1).SPEED, 100.0);
  const PROPELLER_RECORD& p = model.propeller.at(1);
  EXPECT_EQ(p.POWER, 480e3) << "the column named first";
  EXPECT_EQ(p.SPEED, 100.0);
  EXPECT_NEAR(p.TORQUE, 480e3 / angularSpeed(100.0), 1e-8);
}

}  // namespace
}  // namespace verenwick
