#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <numbers>
#include <sstream>

#include "Support/ReadModel.h"

namespace verenwick {
namespace {

using test::ReadModel;
using testing::DoubleEq;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Pointwise;

/// Inertias 101 to 112 in a row, inertia 100 + n at the speed ratio n / 8; shaft n joins inertias
/// 100 + n and 101 + n.
const std::string kLine = [] {
  std::ostringstream text;
  for (int i = 1; i <= 12; ++i) {
    text << "INERTIA " << 100 + i << ' ' << i / 8.0 << " 10.0 0.0 0.0\n";
  }
  for (int i = 1; i <= 11; ++i) {
    text << "SHAFT " << i << " " << 100 + i << " " << 101 + i << " 1.0 1e6 0 0 100 0 0 0\n";
  }
  return text.str();
}();
constexpr int kLinesBefore = 23;

const std::string kSections =
    "ViscousDamper 5\n"                                   // 1
    "102 101 1600.0 1 remark\n"                           //
    "   @DIR@/table, one.txt  \n"                         // 3
    "RUBBERDAMPER 6\n"                                    //
    "103 104 60.5\n"                                      // 5
    "STEELSPRINGDAMPER 7\n"                               //
    "105 106 24,5\n"                                      // 7
    "ELECTRICMOTOR 8\n"                                   //
    "107 1150.0 1500.0 1 3000.0 2\n"                      // 9
    "1.0 2.0 0.5 4.0\n"                                   //
    "0.6 1.0 0.3 0.2\n"                                   // 11
    "GENERATOR 9\n"                                       //
    "108 500.0 750.0 4\n"                                 // 13
    "1.0 2.0 4.0 6.0\n"                                   //
    "0.8 0.4 0.2 0.1\n"                                   // 15
    "CENTRIFUGALPUMP 10\n"                                //
    "109 720.0 1500.0 0 30.0\n"                           // 17
    "1.0 5.0 7.0 10.0\n"                                  //
    "0.4 1.5 1.2 0.4\n"                                   // 19
    "GASTURBINE 11\n"                                     //
    "110 5000.0 3000.0\n"                                 // 21
    "STEAMTURBINE 12\n"                                   //
    "111 950.0 6000.0\n"                                  // 23
    "RECIPROCATINGPUMP 13 \"Boiler feed pump no. 12\"\n"  //
    "660.0 250.0 2 10.0 1 2\n"                            // 25
    "112 107\n"                                           //
    "0.0 180.0\n"                                         // 27
    "90.0 270.0\n"                                        //
    "120.0 300.0 0.2 62.0 1\n"                            // 29
    "3\n"                                                 //
    "3.0 6.0 9.0 12.0\n"                                  // 31
    "6.0 3.0 1.2 5.0\n";                                  //

TEST(DamperAndMachineSections, StoreTheirValuesInSiUnits) {
  const ReadModel read(kLine + kSections);
  ASSERT_TRUE(read.isOk()) << read.log();
  const ModelBundle& m = read.model;

  const VISCOUSDAMPER_RECORD& viscous = m.viscousDamper.at(1);
  EXPECT_EQ(viscous.CASINGNODE, 102);
  EXPECT_EQ(viscous.RINGNODE, 101);
  EXPECT_EQ(viscous.ABSDAMPING, 1600.0);
  EXPECT_TRUE(viscous.ISCUSTOMDAMPING);
  // A comma is a full stop, in paths as well.
  EXPECT_EQ(viscous.CUSTOMDAMPINGFILE, read.directory().file("table. one.txt"));
  EXPECT_EQ(m.rubberDamper.at(1).TURNINGMASSNODE, 103);
  EXPECT_EQ(m.rubberDamper.at(1).DRIVEPLATENODE, 104);
  EXPECT_EQ(m.rubberDamper.at(1).ABSDAMPING, 60.5);
  EXPECT_EQ(m.steelSpringDamper.at(1).OUTERMEMBERNODE, 105);
  EXPECT_EQ(m.steelSpringDamper.at(1).INNERMEMBERNODE, 106);
  EXPECT_EQ(m.steelSpringDamper.at(1).ABSDAMPING, 24.5);

  const ELECTRICMOTOR_RECORD& motor = m.electricMotor.at(1);
  EXPECT_EQ(motor.ELECTRICMOTORNODE, 107);
  EXPECT_EQ(motor.MCRPOWER, 1.15e6);
  EXPECT_EQ(motor.MCRSPEED, 1500.0);
  EXPECT_DOUBLE_EQ(motor.MCRTORQUE, 1.15e6 / (50.0 * std::numbers::pi));
  EXPECT_EQ(motor.EXCITATIONTYPE, 1);
  EXPECT_EQ(motor.CONSTEXCITATIONFREQ, 3000.0);
  EXPECT_EQ(motor.MOTORORDERNUMBER, 2);
  EXPECT_THAT(motor.MOTORORDER, ElementsAre(1.0, 2.0, 0.5, 4.0));
  EXPECT_THAT(motor.MOTORTORQUEPERCENT, Pointwise(DoubleEq(), {0.006, 0.01, 0.003, 0.002}));
  const GENERATOR_RECORD& generator = m.generator.at(1);
  EXPECT_EQ(generator.GENERATORNODE, 108);
  EXPECT_DOUBLE_EQ(generator.MCRTORQUE, 5e5 / (25.0 * std::numbers::pi));
  EXPECT_EQ(generator.GENERATORORDERNUMBER, 4);
  EXPECT_THAT(generator.GENERATORORDER, ElementsAre(1.0, 2.0, 4.0, 6.0));
  EXPECT_THAT(generator.GENERATORTORQUEPERCENT,
              Pointwise(DoubleEq(), {0.008, 0.004, 0.002, 0.001}));
  const CENTRIFUGALPUMP_RECORD& centrifugal = m.centrifugalPump.at(1);
  EXPECT_EQ(centrifugal.CENTRIFUGALPUMPNODE, 109);
  EXPECT_DOUBLE_EQ(centrifugal.MCRTORQUE, 7.2e5 / (50.0 * std::numbers::pi));
  EXPECT_EQ(centrifugal.CENTRIFUGALPUMPORDERNUMBER, 0);
  EXPECT_DOUBLE_EQ(centrifugal.CENTRIFUGALPUMPPHASEANGLE, std::numbers::pi / 6);
  EXPECT_THAT(centrifugal.CENTRIFUGALPUMPORDER, ElementsAre(1.0, 5.0, 7.0, 10.0));
  EXPECT_THAT(centrifugal.CENTRIFUGALPUMPTORQUEPERCENT,
              Pointwise(DoubleEq(), {0.004, 0.015, 0.012, 0.004}));
  EXPECT_EQ(m.gasTurbine.at(1).GASTURBINENODE, 110);
  EXPECT_DOUBLE_EQ(m.gasTurbine.at(1).MCRTORQUE, 5e6 / (100.0 * std::numbers::pi));
  EXPECT_EQ(m.steamTurbine.at(1).STEAMTURBINENODE, 111);
  EXPECT_DOUBLE_EQ(m.steamTurbine.at(1).MCRTORQUE, 9.5e5 / (200.0 * std::numbers::pi));

  const RECIPROCATINGPUMP_RECORD& pump = m.reciprocatingPump.at(1);
  EXPECT_EQ(pump.NAME, "Boiler feed pump no.");
  EXPECT_EQ(pump.MCRPOWER, 6.6e5);
  EXPECT_DOUBLE_EQ(pump.MCRTORQUE, 6.6e5 / (250.0 / 30.0 * std::numbers::pi));
  EXPECT_EQ(pump.NCYLINDER, 2);
  EXPECT_DOUBLE_EQ(pump.EXCITATIONPHASE, std::numbers::pi / 18);
  EXPECT_TRUE(pump.ISOPPOSITE);
  EXPECT_TRUE(pump.ISDOUBLEACTING);
  EXPECT_EQ(pump.VANGLE, 180.0);
  EXPECT_EQ(pump.CYLINDERS[0], 112);
  EXPECT_EQ(pump.CYLINDERS[1], 107);
  EXPECT_DOUBLE_EQ(pump.DISCHARGEANGLEA[1], std::numbers::pi);
  EXPECT_EQ(pump.BORE, 0.12);
  EXPECT_EQ(pump.STROKELENGTH, 0.3);
  EXPECT_EQ(pump.CONRODRATIO, 0.2);
  EXPECT_EQ(pump.RECIPMASS, 62.0);
  EXPECT_TRUE(pump.ISSIMPLIFIEDPRESSURE);
  EXPECT_EQ(pump.RECIPROCATINGPUMPORDERNUMBER, 3);
  EXPECT_THAT(pump.RECIPROCATINGPUMPORDER, ElementsAre(3.0, 6.0, 9.0, 12.0));
  EXPECT_THAT(pump.RECIPROCATINGPUMPTORQUEPERCENT,
              Pointwise(DoubleEq(), {0.06, 0.03, 0.012, 0.05}));
}

TEST(DamperAndMachineSections, TurnAtTheSpeedRatioOfTheirInertia) {
  const ReadModel read(kLine + kSections);
  ASSERT_TRUE(read.isOk()) << read.log();
  const ModelBundle& m = read.model;
  EXPECT_EQ(m.viscousDamper.at(1).RPMRATIO, 2 / 8.0) << "of the casing";
  EXPECT_EQ(m.rubberDamper.at(1).RPMRATIO, 3 / 8.0) << "of the turning mass";
  EXPECT_EQ(m.steelSpringDamper.at(1).RPMRATIO, 5 / 8.0) << "of the outer member";
  EXPECT_EQ(m.electricMotor.at(1).RPMRATIO, 7 / 8.0);
  EXPECT_EQ(m.generator.at(1).RPMRATIO, 8 / 8.0);
  EXPECT_EQ(m.centrifugalPump.at(1).RPMRATIO, 9 / 8.0);
  EXPECT_EQ(m.gasTurbine.at(1).RPMRATIO, 10 / 8.0);
  EXPECT_EQ(m.steamTurbine.at(1).RPMRATIO, 11 / 8.0);
  EXPECT_EQ(m.reciprocatingPump.at(1).RPMRATIO, 12 / 8.0) << "of the first cylinder";
}

TEST(DamperAndMachineSections, MarkTheirInertiasAndShafts) {
  const ReadModel read(kLine + kSections);
  ASSERT_TRUE(read.isOk()) << read.log();
  const ModelBundle& m = read.model;
  struct InertiaMark {
    std::int32_t id;
    MassType type;
    ComponentType owner;
    std::int32_t ownerId;
  };
  using C = ComponentType;
  using T = MassType;
  for (const InertiaMark& mark : {
           InertiaMark{101, T::viscousDamperRing, C::viscousDamper, 5},
           {102, T::viscousDamperCasing, C::viscousDamper, 5},
           {103, T::rubberDamperTurningMass, C::rubberDamper, 6},
           {104, T::rubberDamperDrivePlate, C::rubberDamper, 6},
           {105, T::steelSpringDamperOuterMember, C::steelSpringDamper, 7},
           {106, T::steelSpringDamperInnerMember, C::steelSpringDamper, 7},
           // The last section in the file has the motor's inertia.
           {107, T::reciprocatingPumpCylinder, C::reciprocatingPump, 13},
           {108, T::generator, C::generator, 9},
           {109, T::centrifugalPump, C::centrifugalPump, 10},
           {110, T::gasTurbine, C::gasTurbine, 11},
           {111, T::steamTurbine, C::steamTurbine, 12},
           {112, T::reciprocatingPumpCylinder, C::reciprocatingPump, 13},
       }) {
    const std::int32_t i = GET_MASS_IMASS(m.mass, mark.id);
    EXPECT_EQ(GET_MASS_MASSTYPE(m.mass, i), mark.type) << mark.id;
    EXPECT_EQ(GET_MASS_COMPONENTTYPE(m.mass, i), mark.owner) << mark.id;
    EXPECT_EQ(GET_MASS_COMPONENTID(m.mass, i), mark.ownerId) << mark.id;
  }
  struct ShaftMark {
    std::int32_t id;
    ShaftType type;
    ComponentType owner;
    std::int32_t ownerId;
  };
  for (const ShaftMark& mark : {
           ShaftMark{1, ShaftType::viscousDamperLink, C::viscousDamper, 5},
           {2, ShaftType::plain, C::plainShaft, 2},
           {3, ShaftType::rubberDamperLink, C::rubberDamper, 6},
           {5, ShaftType::steelSpringDamperLink, C::steelSpringDamper, 7},
       }) {
    const std::int32_t i = GET_SHAFT_ISHAFT(m.shaft, mark.id);
    EXPECT_EQ(GET_SHAFT_SHAFTTYPE(m.shaft, i), mark.type) << mark.id;
    EXPECT_EQ(GET_SHAFT_COMPONENTTYPE(m.shaft, i), mark.owner) << mark.id;
    EXPECT_EQ(GET_SHAFT_COMPONENTID(m.shaft, i), mark.ownerId) << mark.id;
  }
}

/// The sections with one line replaced.
std::string withLine(int number, const std::string& replacement) {
  std::istringstream in(kSections);
  std::string text;
  std::string line;
  for (int i = 1; std::getline(in, line); ++i) {
    text += (i == number ? replacement : line) + "\n";
  }
  return text;
}

TEST(DamperAndMachineSections, RefuseALineNamingItsFields) {
  struct Case {
    int line;
    const char* replacement;
    const char* fields;
  };
  const std::string many = "1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19 20 21";
  for (const Case& c : {
           Case{1, "VISCOUSDAMPER five", "Id"},
           {2, "102 101 1600.0", "CasingNode, RingNode, AbsDamping"},
           {5, "103 104 soft", "TurningMassNode, DrivePlateNode, AbsDamping"},
           {7, "105 106.5 24.5", "OuterMemberNode, InnerMemberNode, AbsDamping"},
           {8, "ELECTRICMOTOR", "Id"},
           {9, "107 1150.0 1500.0 1 3000.0 5",
            "ElectricMotorNode, McrPower, McrSpeed, ExcitationType, ConstExcitationFreq, "
            "MotorOrderNumber"},
           {10, "1.0 2.0", "Electric motor order"},
           {11, "0.6 1.0 0.3", "Electric motor torque amplitude"},
           {13, "108 500.0 750.0 -1", "GeneratorNode, McrPower, McrSpeed, GeneratorOrderNumber"},
           {14, "1.0 2.0 4.0 x", "Generator torque order"},
           {15, "", "Generator torque amplitude"},
           {17, "109 720.0 1500.0 5 30.0",
            "CentrifugalPumpNode, McrPower, McrSpeed, CentrifugalPumpOrderNumber, "
            "CentrifugalPumpPhaseAngle"},
           {18, "1.0 5.0 7.0", "Centrifugal pump torque order"},
           {19, "0.4 1.5 1.2", "Centrifugal pump torque amplitude"},
           {21, "110 5000.0", "GasTurbineNode, McrPower, McrSpeed"},
           {23, "111 950.0", "SteamTurbineNode, McrPower, McrSpeed"},
           {24, "RECIPROCATINGPUMP 13", "Id, PumpName"},
           {25, "660.0 250.0 2 10.0 1",
            "McrPower, McrSpeed, nPumpCylinder, ExcitationPhase, isOpposite, isDoubleActing"},
           {26, "112", "PumpCylinders"},
           {27, "0.0", "DischargeAngleA"},
           {28, "0.0", "DischargeAngleB"},
           {29, "120.0 300.0 0.2 62.0",
            "Bore, Stroke, ConrodRatio, RecipMass, isSimplifiedPresure"},
           {30, "5", "ReciprocatingPumpOrderNumber"},
           {31, "3.0", "Reciprocating pump torque order"},
           {32, "6.0", "Reciprocating pump torque amplitude"},
       }) {
    const ReadModel read(kLine + withLine(c.line, c.replacement));
    EXPECT_FALSE(read.isOk()) << c.line;
    EXPECT_EQ(read.log(), std::string(" Error occurs when reading \"") + c.fields +
                              "\" in input file line " + std::to_string(kLinesBefore + c.line) +
                              "\n");
  }
  // More cylinders than a pump can have are refused with the line that would hold them.
  const ReadModel read(kLine + withLine(25, "660.0 250.0 21 10.0 1 1"));
  EXPECT_FALSE(read.isOk());
  EXPECT_EQ(read.log(), " Error occurs when reading \"PumpCylinders\" in input file line 49\n");
}

TEST(DamperAndMachineSections, DamperWithoutAShaftBetweenItsNodesMarksTheLastShaft) {
  const ReadModel read(kLine + "RUBBERDAMPER 6\n101 108 0.0\n");
  ASSERT_TRUE(read.isOk()) << read.log();
  EXPECT_EQ(GET_SHAFT_SHAFTTYPE(read.model.shaft, 11), ShaftType::rubberDamperLink);
}

TEST(ReciprocatingPumpSection, OppositeAnglesGoByTheLastEngine) {
  const auto engine = [](const char* isVengine) {
    return std::string("DIESEL 1 Engine\n1000 500 4 1 0 ") + isVengine +
           " 90 0 1.1\n101\n0\n0\n1\n1\n100\n100\n200 300 0.25 20 90 0 0 0\n\n\n";
  };
  struct Case {
    const char* what;
    std::string engines;
    double angle;
  };
  for (const Case& c : {Case{"no engine", "", 0.0},
                        {"in-line engine", engine("0"), 0.0},
                        {"V engine", engine("1"), std::numbers::pi / 2},
                        {"a flag that isn't 1", engine("2"), 0.0},
                        {"V engine, then in-line", engine("1") + engine("0"), 0.0}}) {
    const ReadModel read(kLine + c.engines + kSections);
    ASSERT_TRUE(read.isOk()) << c.what << read.log();
    EXPECT_DOUBLE_EQ(read.model.reciprocatingPump.at(1).DISCHARGEANGLEB[0], c.angle) << c.what;
  }
}

TEST(ReciprocatingPumpSection, HarmonicFileStandsWhereTheOrdersWould) {
  const std::string pump =
      "RECIPROCATINGPUMP 1 P\n660 250 1 0 0 0\n112\n0\n0\n120 300 0.2 62 0\n  pumps/a b.har \n";
  const ReadModel read(kLine + pump + "GASTURBINE 1\n110 1 1\n");
  ASSERT_TRUE(read.isOk()) << read.log();
  EXPECT_EQ(read.model.reciprocatingPump.at(1).PUMPHARMONICFILE, "  pumps/a b.har");
  EXPECT_EQ(read.model.gasTurbine.at(1).GASTURBINENODE, 110);
}

TEST(ReciprocatingPumpSection, WarnsOfOrdersThatAreLeftOut) {
  const ReadModel read(kLine + withLine(31, "0.5 21.0 -3.0 40.0"));
  ASSERT_TRUE(read.isOk()) << read.log();
  EXPECT_EQ(read.log(),
            " Warning: Reciprocating pump 13 has an order outside 1 to 20 (0.5), it is left out\n"
            " Warning: Reciprocating pump 13 has an order outside 1 to 20 (21), it is left out\n"
            " Warning: Reciprocating pump 13 has an order outside 1 to 20 (-3), it is left out\n");
}

}  // namespace
}  // namespace verenwick
