#include <gtest/gtest.h>

#include "Matrices/MassStffnessAndDampingMatrix.h"
#include "RunControl/RunStopped.h"
#include "Support/ReadModel.h"

namespace verenwick {
namespace {

using test::ReadModel;
using Values = std::vector<double>;

constexpr double kTwoPi = 2 * 3.141592653589793;

ShaftLineMatrices matrices(Vibration vibration, ModelBundle& model, double order = 1.0,
                           std::int32_t loadCase = 1) {
  ShaftLineMatrices system;
  MASSANDSHAFTTABLEPREPARATION(vibration, model, loadCase);
  BUILDMASSSTIFFNESSANDDAMPINGMATRIX(vibration, model, order, system);
  return system;
}

const std::string kTwoInertias =
    "INERTIA 1 1.0 100.0 3.0 0.0\nINERTIA 2 0.5 40.0 7.0 0.0\n"
    "SHAFT 1 1 2 0.5 1000000.0 11.0 0.0 0 0 0 0\n";

TEST(ForcedMatrices, TakeInertiaAndDampingOfThePropeller) {
  ReadModel read(kTwoInertias +
                 "PROPELLER 1\n2 100 100 4 60 20 0\n1 1 1 1 1 1 0\nNONE 0 0 0 0 0 0 0\n0\n");
  ASSERT_TRUE(read.isOk()) << read.log();
  PROPELLER_RECORD& p = read.model.propeller.at(1);
  p.DAMPINGMETHOD = 0;
  p.SPEED = 100.0;
  p.TORQUE = 500.0;
  // Without damping of its own the propeller leaves the row's.
  ShaftLineMatrices system = matrices(Vibration::forced, read.model);
  EXPECT_EQ(system.M, (Values{100.0, 80.0 * 0.25}));
  EXPECT_EQ(system.CA, (Values{3.0, 7.0 * 0.25}));
  p.DAMPINGMETHOD = static_cast<std::int32_t>(PropellerDamping::archer);
  p.ARCHERNUMBER = 30.0;
  p.ISVARIABLEENTRAINEDWATER = true;
  p.NLOADCASE = 2;
  p.VARIABLEENTRAINEDWATERTABLE = {4.0, 8.0};
  system = matrices(Vibration::forced, read.model, 1.0, 2);
  EXPECT_EQ(system.M[1], 68.0 * 0.25);
  EXPECT_EQ(system.CA[1], 150.0 * 0.25);
  // The damping stays on the row when the next load case has none; the inertia doesn't.
  p.TORQUE = 0.0;
  system = matrices(Vibration::forced, read.model);
  EXPECT_EQ(system.CA[1], 150.0 * 0.25);
  EXPECT_EQ(system.M[1], 64.0 * 0.25);
  // A magnifier acts on the inertia in force, and in place of the damping.
  p.DAMPINGMETHOD = static_cast<std::int32_t>(PropellerDamping::variable);
  p.DYNMAGNIFIERFORKNUCKLEPOINT = 8.0;
  p.KNUCKLEPOINT = 200.0;
  system = matrices(Vibration::forced, read.model);
  EXPECT_EQ(system.CA[1], 0.0);
  EXPECT_DOUBLE_EQ(system.CAR[1], 64.0 / 16.0 * 0.25);
  // The free problem has plain water and no damping.
  system = matrices(Vibration::free, read.model);
  EXPECT_EQ(system.M[1], 80.0 * 0.25);
  EXPECT_EQ(system.CAR[1], 0.0);
}

TEST(ForcedMatrices, TakeTheCouplingsAsTheLoadStiffensThem) {
  ReadModel read(
      "INERTIA 1 1 1 0 0\nINERTIA 2 1 1 0 0\nINERTIA 3 1 1 0 0\n"
      "SHAFT 5 1 2 1.0 111.0 0.0 0.0 0 0 0 0\nSHAFT 6 2 3 2.0 222.0 0.0 10.0 0 0 0 0\n"
      "LINEARCOUPLING 1\n5 1.0 300.0\nPROGRESSIVECOUPLING 1\n6 400.0 100 200 300 400 500\n");
  ASSERT_TRUE(read.isOk()) << read.log();
  read.model.progressiveCoupling.at(1).TORQUE = 150.0;
  read.model.shaft.at(1).STIFFNESS = 111.0;
  const ShaftLineMatrices system = matrices(Vibration::forced, read.model);
  EXPECT_EQ(system.K, (Values{300.0, 1300.0, 1000.0, -300.0, -300.0, -1000.0, -1000.0}));
  EXPECT_EQ(system.CRR, (Values{0.0, 100.0, 100.0, 0.0, 0.0, -100.0, -100.0}));
  EXPECT_EQ(matrices(Vibration::free, read.model).K,
            (Values{111.0, 999.0, 888.0, -111.0, -111.0, -888.0, -888.0}));
}

TEST(ForcedMatrices, TakeAGeislingerCouplingAtTheOrder) {
  ReadModel read(kTwoInertias +
                 "GEISLINGERCOUPLING 1\n1 1000.0 1000.0 100.0 40.0\nGEISLINGERDAMPING\n"
                 "WITHPRESSURIZED\n");
  ASSERT_TRUE(read.isOk()) << read.log();
  // 50 rad/s, reference frequency 100 rad/s
  read.model.geislingerCoupling.at(1).SPEEDEXCITATION = 50 * 60 / kTwoPi;
  for (const auto& [order, stiffness, relative] :
       {std::tuple{1.0, 1185.0, 0.45}, {4.0, 1640.0, 0.7}}) {
    const ShaftLineMatrices system = matrices(Vibration::forced, read.model, order);
    EXPECT_NEAR(system.K[0], 0.25 * stiffness, 1e-4) << order;
    EXPECT_NEAR(system.CR[2], -0.25 * relative * stiffness / (50 * order), 1e-4) << order;
  }
  // A magnifier on the shaft damps in place of the coupling, with its stiffness.
  read.model.shaft.at(1).DYNMAGNIFIER = 5.0;
  const ShaftLineMatrices magnified = matrices(Vibration::forced, read.model);
  EXPECT_NEAR(magnified.CRR[0], 0.25 * 1185 / 5, 1e-4);
}

TEST(ForcedMatrices, TakeTheFormulaDampingOfAnEngineAtTheOrder) {
  // Two cylinders of engine 3, the second with a magnifier, and a flywheel on one line.
  ReadModel read(
      "INERTIA 1 0.5 10 1000 0\nINERTIA 2 0.5 10 1000 40\nINERTIA 3 0.5 10 1000 0\n"
      "SHAFT 1 1 2 0.5 1e6 600 0 0 0 1 3\nSHAFT 2 2 3 0.5 1e6 600 0 0 0 0 0\n"
      "DIESEL 3 Engine\n100 100 4 2 0 0 0 0 1\n1 2\n0 0\n0 0\n1 1\n1 1\n100 100\n100 100\n"
      "100 100 0.2 1 90 0 0 1\n\n\n2 0.5 3 2\n");
  ASSERT_TRUE(read.isOk()) << read.log();
  DIESEL_RECORD& diesel = read.model.diesel.at(1);
  diesel.SPEED = 50.0;
  const double order = 4.5;  // 225 times a minute
  const double cylinder = 2.0 * 15.0 * 0.25;
  const double formula = 3.0 * 225.0 * 225.0 * 0.25;
  const double shaft = 600.0 * 0.25;
  ShaftLineMatrices system = matrices(Vibration::forced, read.model, order);
  // The formula also stands before the magnifier of cylinder 2.
  EXPECT_EQ(system.CA, (Values{cylinder, cylinder, 250.0}));
  EXPECT_EQ(system.CR,
            (Values{formula, formula + shaft, shaft, -formula, -formula, -shaft, -shaft}));
  // That of a throw yields to its magnifier.
  read.model.shaft.at(1).DYNMAGNIFIER = 50.0;
  system = matrices(Vibration::forced, read.model, order);
  EXPECT_EQ(system.CR[0], 0.0);
  EXPECT_EQ(system.CRR[0], 1e6 / 50.0 * 0.25);
  read.model.shaft.at(1).DYNMAGNIFIER = 0.0;
  // Without the formula the rows keep their own.
  diesel.ISFORMULADAMPING = false;
  system = matrices(Vibration::forced, read.model, order);
  EXPECT_EQ(system.CA, (Values{250.0, 0.0, 250.0}));
  EXPECT_EQ(system.CAR, (Values{0.0, 10.0 / 40.0 * 0.25, 0.0}));
  EXPECT_EQ(system.CR[0], shaft);
}

TEST(ForcedMatrices, AreRefusedToALineThatIsNoTree) {
  ReadModel read(kTwoInertias);
  read.model.shaft.append();
  EXPECT_THROW(matrices(Vibration::forced, read.model), RunStopped);
  ModelBundle empty;
  EXPECT_THROW(matrices(Vibration::forced, empty), RunStopped);
}

}  // namespace
}  // namespace verenwick
