#include <gtest/gtest.h>

#include "Support/ReadModel.h"

namespace verenwick {
namespace {

using test::ReadModel;

constexpr double kPiHere = 3.141592653589793;

/// Lines 1 to 3 of an input file.
const std::string kLine =
    "INERTIA 1 1.0 100.0 0.0 0.0\nINERTIA 2 0.5 50.0 0.0 0.0\nSHAFT 7 1 2 0.5 1.0E6 0.0 0.0 0 0 0 "
    "0\n";

std::string propeller(int id, const std::string& magnifier, const std::string& damping) {
  return "Propeller " + std::to_string(id) +
         "\n2 9000.0 120.0 4 20000.0 5000.0 1\n1200.0 6000.0 0.8 0.6 0 85.0 " + magnifier + "\n" +
         damping + "\n0\n";
}

TEST(PropellerSection, ConvertsToSiAndMarksItsInertia) {
  const ReadModel read(kLine + propeller(3, "9.0", "archer 30.0 2.0 60.0 4.0 1.0 90.0 1 remark"));
  ASSERT_TRUE(read.isOk()) << read.log();
  const PROPELLER_RECORD& p = read.model.propeller.at(1);
  EXPECT_EQ(GET_PROPELLER_ID(read.model.propeller, 1), 3);
  EXPECT_EQ(p.MCRPOWER, 9.0e6);
  EXPECT_DOUBLE_EQ(p.MCRTORQUE, 9.0e6 / (4 * kPiHere));
  EXPECT_EQ(p.NBLADE, 4);
  EXPECT_EQ(p.INERTIAAIR, 20000.0);
  EXPECT_EQ(p.INERTIAWATER, 5000.0);
  EXPECT_TRUE(p.ISDUCTED);
  EXPECT_EQ(p.DB, 1.2);
  EXPECT_EQ(p.DI, 6.0);
  EXPECT_EQ(p.PITCHRATIO, 0.8);
  EXPECT_EQ(p.EXPAREARATIO, 0.6);
  EXPECT_FALSE(p.ISFIXEDPITCH);
  EXPECT_EQ(p.PITCHPERCENT, 0.85);
  EXPECT_EQ(p.TORQUEPERCENT1, 0.04);
  EXPECT_EQ(p.TORQUEPERCENT2, 0.01);
  EXPECT_DOUBLE_EQ(p.EXCITATIONPHASE, kPiHere / 2);
  EXPECT_TRUE(p.CONSIDERPHASEANGLE);
  EXPECT_FALSE(p.HASICEEXCITATION);
  EXPECT_EQ(p.RPMRATIO, 0.5);
  EXPECT_EQ(read.model.mass.at(2).MASSTYPE, MassType::propeller);
  EXPECT_EQ(read.model.mass.at(2).COMPONENTTYPE, ComponentType::propeller);
  EXPECT_EQ(read.model.mass.at(2).COMPONENTID, 3);
}

TEST(PropellerSection, KeepsTheValuesOfItsMethodOnly) {
  const std::string values = " 30.0 2.0 60.0 4.0 1.0 0.0 0";
  struct Case {
    const char* word;
    std::int32_t method;
    double archer, frahm, magnifier, knuckleMagnifier, knuckle;
  };
  // An unknown word goes on with the method of the propeller before it.
  const std::vector<Case> cases = {
      {"none", 0, 0, 0, 0, 0, 0},      {"Schwaneke", 1, 0, 0, 0, 0, 0},
      {"ARCHER", 2, 30, 0, 0, 0, 0},   {"unknown", 2, 30, 0, 0, 0, 0},
      {"frahm", 3, 0, 2, 0, 0, 0},     {"MANUAL", 4, 0, 0, 9, 0, 0},
      {"VARIABLE", 5, 0, 0, 9, 9, 60},
  };
  std::string text = kLine;
  for (std::size_t i = 0; i < cases.size(); ++i) {
    text += propeller(static_cast<int>(i), "9.0", cases[i].word + values);
  }
  const ReadModel read(text);
  ASSERT_TRUE(read.isOk()) << read.log();
  for (std::size_t i = 0; i < cases.size(); ++i) {
    const PROPELLER_RECORD& p = read.model.propeller.at(static_cast<std::int32_t>(i) + 1);
    const Case& c = cases[i];
    EXPECT_EQ(p.DAMPINGMETHOD, c.method) << c.word;
    EXPECT_EQ(p.ARCHERNUMBER, c.archer) << c.word;
    EXPECT_EQ(p.FRAHMNUMBER, c.frahm) << c.word;
    EXPECT_EQ(p.DYNMAGNIFIER, c.magnifier) << c.word;
    EXPECT_EQ(p.DYNMAGNIFIERFORKNUCKLEPOINT, c.knuckleMagnifier) << c.word;
    EXPECT_EQ(p.KNUCKLEPOINT, c.knuckle) << c.word;
    EXPECT_EQ(p.TORQUEPERCENT1, 0.04) << c.word;
  }
}

TEST(PropellerIceSection, ChangesThePropellerReadLast) {
  const std::string damping = "ARCHER 30.0 0.0 0.0 4.0 1.0 0.0 0";
  const std::string ice = "PROPELLERICE 99\n0\n ice file.txt  \n";
  const std::string corrected = "propellerice 1\n1\nother.txt\n";
  const ReadModel read(kLine + propeller(1, "0", damping) + ice + propeller(2, "0", damping) +
                       corrected + propeller(3, "0", damping));
  ASSERT_TRUE(read.isOk()) << read.log();
  const auto& table = read.model.propeller;
  EXPECT_EQ(table.at(1).EXCITATIONFILE, " ice file.txt");
  EXPECT_EQ(table.at(1).NSPEEDRATIO, 2);
  EXPECT_TRUE(table.at(1).HASICEEXCITATION);
  EXPECT_FALSE(table.at(1).ISTMAXCORRECTEDWITHACTUALSPEED);
  EXPECT_EQ(table.at(2).NSPEEDRATIO, 10);
  EXPECT_TRUE(table.at(2).ISTMAXCORRECTEDWITHACTUALSPEED);
  EXPECT_FALSE(table.at(3).HASICEEXCITATION);
}

TEST(CouplingSections, StoreTheirValuesAndMarkTheirShaft) {
  const ReadModel linear(kLine + "LinearCoupling 4\n7 5000.0 240000.0\n");
  ASSERT_TRUE(linear.isOk()) << linear.log();
  const SHAFT_RECORD& shaft = linear.model.shaft.at(1);
  EXPECT_EQ(shaft.STIFFNESS, 240000.0);
  EXPECT_EQ(shaft.SHAFTTYPE, ShaftType::linearCoupling);
  EXPECT_EQ(shaft.COMPONENTTYPE, ComponentType::linearCoupling);
  EXPECT_EQ(shaft.COMPONENTID, 4);
  EXPECT_EQ(linear.model.linearCoupling.at(1).NOMINALTORQUE, 5000.0);
  EXPECT_EQ(linear.model.linearCoupling.at(1).RPMRATIO, 0.5);

  const ReadModel progressive(kLine + "PROGRESSIVECOUPLING 4\n7 8000.0 1.0 2.0 3.0 4.0 5.0\n");
  ASSERT_TRUE(progressive.isOk()) << progressive.log();
  const PROGRESSIVECOUPLING_RECORD& points = progressive.model.progressiveCoupling.at(1);
  EXPECT_EQ(points.NOMINALTORQUE, (std::array<double, 5>{0.0, 2000.0, 4000.0, 6000.0, 8000.0}));
  EXPECT_EQ(points.NOMINALSTIFFNESS, (std::array<double, 5>{1.0, 2.0, 3.0, 4.0, 5.0}));
  EXPECT_EQ(progressive.model.shaft.at(1).STIFFNESS, 1.0e6);
  EXPECT_EQ(progressive.model.shaft.at(1).SHAFTTYPE, ShaftType::progressiveCoupling);
}

TEST(CouplingSections, AGeislingerCouplingTakesItsWordsWhereTheyAreAskedFor) {
  const std::string values = "\n7 5000.0 90000.0 420.0 55.0\n";
  struct Case {
    const char* words;
    std::int32_t damping, oilSupply, design;
  };
  // Each section goes on with what the one before it left in force.
  const std::vector<Case> cases = {
      {"unknown\n", 0, 0, 0},
      {"GEISLINGERDAMPING\nunknown\n", 1, 0, 0},
      {"geislingerdamping\nwithoutpressurized\nmultispring\n", 1, 2, 1},
      {"GENERALDAMPING\n", 2, 2, 1},
      {"GEISLINGERDAMPING remark\nWITHPRESSURIZED\n", 1, 1, 1},
      {"GEISLINGERDAMPING\nWITHOUTPRESSURIZED\nDUALSPRING\n", 1, 2, 2},
      {"-\n-\n-\n", 1, 2, 2},
  };
  std::string text = kLine;
  for (const Case& c : cases) {
    text += "GEISLINGERCOUPLING 1" + values + c.words;
  }
  const ReadModel read(text + "INERTIA 3 1.0 1.0 0.0 0.0\n");
  ASSERT_TRUE(read.isOk()) << read.log();
  for (std::size_t i = 0; i < cases.size(); ++i) {
    const auto& coupling = read.model.geislingerCoupling.at(static_cast<std::int32_t>(i) + 1);
    EXPECT_EQ(coupling.DAMPINGTYPE, cases[i].damping) << i;
    EXPECT_EQ(coupling.OILSUPPLYTYPE, cases[i].oilSupply) << i;
    EXPECT_EQ(coupling.DESIGNTYPE, cases[i].design) << i;
    EXPECT_EQ(coupling.CHARACTERISTICFREQUENCY, 420.0) << i;
    EXPECT_EQ(coupling.OILVISCOSITY, 55.0) << i;
  }
  EXPECT_EQ(read.model.shaft.at(1).SHAFTTYPE, ShaftType::geislingerCoupling);
  // No line of a section was lost or taken twice.
  EXPECT_EQ(GET_MASS_IMASS(read.model.mass, 3), 3);
}

TEST(PropellerAndCouplingSections, NameTheLineThatCannotBeRead) {
  const std::string head = kLine + "PROPELLER 1\n2 9000.0 120.0 4 20000.0 5000.0 1\n";
  const std::string geometry = "1200.0 6000.0 0.8 0.6 0 85.0 0.0\n";
  const std::string damping = "ARCHER 30.0 0.0 0.0 4.0 1.0 0.0 0\n";
  struct Case {
    std::string input;
    const char* fields;
    int line;
  };
  for (const Case& c : {
           Case{kLine + "PROPELLER one\n", "Id", 4},
           {kLine + "PROPELLER 1\n2 9000.0 120.0 4.5 20000.0 5000.0 1\n",
            "PropellerNode, McrPower, McrSpeed, nBlade, InertiaAir, InertiaWater, isDucted", 5},
           {head + "1200.0 6000.0 0.8 0.6 0 85.0\n",
            "Db, Di, PitchRatio, ExpAreaRatio, isFixedPitch, PitchPercent, DynMagnifier", 6},
           {head + geometry + "30.0 0.0 0.0 4.0 1.0 0.0 0\n",
            "ArcherNumber, FrahmNumber,  KnucklePoint, TorquePercent1, TorquePercent2, "
            "ExcitationPhase, ConsiderPhaseAngle",
            7},
           {head + geometry + damping, "isVariablePropellerEntrainedWater", 8},
           {head + geometry + damping + "1\n\n", "isVariablePropellerEntrainedWater", 9},
           {kLine + "PROPELLERICE 1\n0\nice.txt\n", "PropellerIce Id", 4},
           {head + geometry + damping + "0\nPROPELLERICE\n0\nice.txt\n", "PropellerIce Id", 9},
           {head + geometry + damping + "0\nPROPELLERICE 1\nno\nice.txt\n",
            "isTmaxCorrectedWithActualSpeed", 10},
           {kLine + "LINEARCOUPLING 1\n7 5000.0\n", "ShaftNode, NominalTorque, NominalStiffness",
            5},
           {kLine + "PROGRESSIVECOUPLING 1\n7 8000.0 1.0 2.0 3.0 4.0\n",
            "ShaftNode, NominalTorque, NominalStiffness(5)", 5},
           {kLine + "GEISLINGERCOUPLING 1\n7 5000.0 90000.0 420.0\n",
            "ShaftNode, NominalTorque, StaticStiffness, CharacteristicFrequency, OilViscosity", 5},
       }) {
    const ReadModel read(c.input);
    EXPECT_FALSE(read.isOk());
    EXPECT_EQ(read.log(), " Error occurs when reading \"" + std::string(c.fields) +
                              "\" in input file line " + std::to_string(c.line) + "\n");
  }
}

}  // namespace
}  // namespace verenwick
