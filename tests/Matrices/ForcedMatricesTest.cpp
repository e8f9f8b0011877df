#include <gtest/gtest.h>

#include <cmath>

#include "ComputationsSrc/FreeUndampedVibrations.h"
#include "Matrices/MassStffnessAndDampingMatrix.h"
#include "Support/ReadModel.h"

namespace verenwick {
namespace {

using test::ReadModel;

constexpr double kTwoPi = 2 * 3.141592653589793;

ShaftLineMatrices forcedMatrices(ModelBundle& model, double order = 1.0,
                                 std::int32_t loadCase = 1) {
  ShaftLineMatrices system;
  MASSANDSHAFTTABLEPREPARATION(false, model, loadCase);
  BUILDMASSSTIFFNESSANDDAMPINGMATRIX(false, model, order, system);
  return system;
}

/// Drive rotor, gear train and two driven rotors at 5/8 of its speed; Friswell, Penny, Garvey and
/// Lees, Dynamics of Rotating Machines, section 9.6.3, prints 10.304, 20.479 and 24.423 Hz.
const std::string kBranchedGears =
    "INERTIA 1 1.0 3200.0 0.0 0.0\nINERTIA 2 1.0 1025.0 0.0 0.0\n"
    "INERTIA 3 0.625 450.0 0.0 0.0\nINERTIA 4 0.625 450.0 0.0 0.0\n"
    "SHAFT 1 1 2 1.0 4272566.008882119 0.0 0.0 0 0 0 0\n"
    "SHAFT 2 2 3 0.625 7450763.826873114 0.0 0.0 0 0 0 0\n"
    "SHAFT 3 2 4 0.625 7450763.826873114 0.0 0.0 0 0 0 0\n";

TEST(ForcedMatrices, OfAPublishedGearedSystemHaveItsNaturalFrequencies) {
  // The forced problem refers the line to the speed of a source, here of a driven rotor.
  for (const double sourceRatio : {1.0, 0.625}) {
    ReadModel read(kBranchedGears);
    ASSERT_TRUE(read.isOk()) << read.log();
    for (std::int32_t i = 1; i <= 4; ++i) {
      read.model.mass.at(i).RPMRATIO /= sourceRatio;
    }
    for (std::int32_t s = 1; s <= 3; ++s) {
      read.model.shaft.at(s).RPMRATIO /= sourceRatio;
    }
    const ShaftLineMatrices system = forcedMatrices(read.model);
    std::vector<double> frequencies(4);
    std::vector<double> shapes(16);
    FREEUNDAMPEDVIBRATIONS(4, frequencies, shapes, system.ROWIND, system.COLIND, system.K, system.M,
                           0);
    const double published[] = {10.304, 20.479, 24.423};
    for (std::size_t mode = 1; mode <= 3; ++mode) {
      EXPECT_NEAR(frequencies[mode] / kTwoPi, published[mode - 1], 0.0006) << sourceRatio;
    }
  }
}

const std::string kTwoInertias =
    "INERTIA 1 1.0 100.0 3.0 0.0\nINERTIA 2 0.5 40.0 7.0 0.0\n"
    "SHAFT 1 1 2 0.5 1000000.0 11.0 0.0 0 0 0 0\n";

void putPropellerOn(ReadModel& read, double rpm, double torque) {
  PROPELLER_TABLE& table = read.model.propeller;
  ALLOCATE_PROPELLER_TABLE(table, 1);
  PROPELLER_RECORD& p = table.at(1);
  p.PROPELLERNODE = 2;
  p.INERTIAAIR = 60.0;
  p.INERTIAWATER = 20.0;
  p.SPEED = rpm;
  p.MCRSPEED = 100.0;
  p.TORQUE = torque;
}

TEST(ForcedMatrices, TakeInertiaAndDampingOfThePropeller) {
  ReadModel read(kTwoInertias);
  putPropellerOn(read, 100.0, 500.0);
  PROPELLER_RECORD& p = read.model.propeller.at(1);
  // Without damping of its own the propeller leaves the row's.
  ShaftLineMatrices system = forcedMatrices(read.model);
  EXPECT_EQ(system.M, (std::vector<double>{100.0, 80.0 * 0.25}));
  EXPECT_EQ(system.CA, (std::vector<double>{3.0, 7.0 * 0.25}));

  p.DAMPINGMETHOD = static_cast<std::int32_t>(PropellerDamping::archer);
  p.ARCHERNUMBER = 30.0;
  p.ISVARIABLEENTRAINEDWATER = true;
  p.NLOADCASE = 2;
  p.VARIABLEENTRAINEDWATERTABLE = {4.0, 8.0};
  system = forcedMatrices(read.model, 1.0, 2);
  EXPECT_EQ(system.M[1], 68.0 * 0.25);
  EXPECT_EQ(system.CA[1], 150.0 * 0.25);
  EXPECT_EQ(system.CAR[1], 0.0);
  // The damping stays on the row when the next load case has none; the inertia doesn't.
  p.TORQUE = 0.0;
  system = forcedMatrices(read.model, 1.0, 1);
  EXPECT_EQ(system.CA[1], 150.0 * 0.25);
  EXPECT_EQ(system.M[1], 64.0 * 0.25);

  // A magnifier acts on the inertia in force, and in place of the damping.
  p.DAMPINGMETHOD = static_cast<std::int32_t>(PropellerDamping::variable);
  p.DYNMAGNIFIERFORKNUCKLEPOINT = 8.0;
  p.KNUCKLEPOINT = 200.0;
  system = forcedMatrices(read.model, 1.0, 1);
  EXPECT_EQ(system.CA[1], 0.0);
  EXPECT_DOUBLE_EQ(system.CAR[1], 64.0 / 16.0 * 0.25);

  // The free problem has plain water and no damping.
  MASSANDSHAFTTABLEPREPARATION(true, read.model, 1);
  BUILDMASSSTIFFNESSANDDAMPINGMATRIX(true, read.model, 1.0, system);
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
  const ShaftLineMatrices system = forcedMatrices(read.model);
  EXPECT_EQ(system.K,
            (std::vector<double>{300.0, 1300.0, 1000.0, -300.0, -300.0, -1000.0, -1000.0}));
  EXPECT_EQ(system.CRR, (std::vector<double>{0.0, 100.0, 100.0, 0.0, 0.0, -100.0, -100.0}));
  ShaftLineMatrices free;
  MASSANDSHAFTTABLEPREPARATION(true, read.model, 1);
  BUILDMASSSTIFFNESSANDDAMPINGMATRIX(true, read.model, 1.0, free);
  EXPECT_EQ(free.K, (std::vector<double>{111.0, 999.0, 888.0, -111.0, -111.0, -888.0, -888.0}));
}

TEST(ForcedMatrices, TakeAGeislingerCouplingAtTheOrder) {
  ReadModel read(kTwoInertias +
                 "GEISLINGERCOUPLING 1\n1 1000.0 1000.0 100.0 40.0\nGEISLINGERDAMPING\n"
                 "WITHPRESSURIZED\n");
  ASSERT_TRUE(read.isOk()) << read.log();
  GEISLINGERCOUPLING_TABLE& table = read.model.geislingerCoupling;
  table.at(1).SPEEDEXCITATION = 50 * 60 / kTwoPi;  // 50 rad/s, reference frequency 100 rad/s
  for (const double order : {1.0, 4.0}) {
    const ShaftLineMatrices system = forcedMatrices(read.model, order);
    const double stiffness = order == 1.0 ? 1.185 * 1000 : (1.1 + 0.27 * 2) * 1000;
    const double relative = order == 1.0 ? 0.45 : 0.7;
    EXPECT_NEAR(system.K[0], 0.25 * stiffness, 1e-4) << order;
    EXPECT_NEAR(system.CR[2], -0.25 * relative * stiffness / (50 * order), 1e-4) << order;
    EXPECT_EQ(system.CRR[0], 0.0);
  }
  // A magnifier on the shaft damps in place of the coupling, with its stiffness.
  read.model.shaft.at(1).DYNMAGNIFIER = 5.0;
  const ShaftLineMatrices magnified = forcedMatrices(read.model);
  EXPECT_EQ(magnified.CR[0], 0.0);
  EXPECT_NEAR(magnified.CRR[0], 0.25 * 1185 / 5, 1e-4);
  // A coupling that isn't in the table leaves the values of the shaft.
  table.at(1).SHAFTNODE = 9;
  EXPECT_EQ(forcedMatrices(read.model).K[0], 0.25 * 1e6);
}

}  // namespace
}  // namespace verenwick
