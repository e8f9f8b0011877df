#include <gtest/gtest.h>

#include "InputAndChecking/DataFiles.h"
#include "Matrices/LoadCaseSetting.h"
#include "Support/ReadModel.h"

namespace verenwick {
namespace {

using test::ReadModel;
using Values = std::vector<double>;

constexpr double kTwoPi = 2 * 3.141592653589793;

/// A six-metre propeller of 9000 kW at 120 rpm at half that power and 90 rpm.
class Propeller : public testing::Test {
 protected:
  Propeller()
      : read(
            "INERTIA 1 1 100 0 0\nINERTIA 2 1 50 0 0\nSHAFT 1 1 2 1 1e6 0 0 0 0 0 0\n"
            "PROPELLER 1\n2 9000 120 4 20000 5000 0\n1200 6000 0.8 0.6 1 70 0\n"
            "ARCHER 30 0 0 5 1 0 0\n0\nLOADCASE\nRPM 1\nPROPELLER\n90 4500\n") {
    EXPECT_TRUE(read.isOk()) << read.log();
    LOADCASESETTING(read.model, 1);
  }
  double dampingBy(PropellerDamping method) {
    p.DAMPINGMETHOD = static_cast<std::int32_t>(method);
    return CALCULATE_PROPELLER_ABSDAMPING(table, 1);
  }
  ReadModel read;
  PROPELLER_TABLE& table = read.model.propeller;
  PROPELLER_RECORD& p = table.at(1);
};

// Damping in N m s/rad.
TEST_F(Propeller, DampsByTheLawOfItsMethod) {
  // D / Db = 5, q = 2: 2/40 + 2/300 - 2/375 + atan(2)/8 = 0.1897269, times 4.271 x
  // 6^5 x 0.64 x 0.6 x 90 rpm.
  constexpr double kPlain = 217765.221;
  EXPECT_NEAR(dampingBy(PropellerDamping::schwanecke), kPlain, 0.01);
  // Pitch counts for a controllable pitch propeller only, and not above the full pitch.
  p.ISDUCTED = true;
  EXPECT_NEAR(dampingBy(PropellerDamping::schwanecke), 1.3 * kPlain, 1e-7 * kPlain);
  p.ISFIXEDPITCH = false;
  EXPECT_NEAR(dampingBy(PropellerDamping::schwanecke), 0.91 * kPlain, 1e-7 * kPlain);
  p.PITCHPERCENT = 1.1;
  EXPECT_NEAR(dampingBy(PropellerDamping::schwanecke), 1.3 * kPlain, 1e-7 * kPlain);
  p.DYNMAGNIFIER = 12.0;
  // (20000 + 5000) kg m2 x 9.424778 rad/s / 12
  EXPECT_NEAR(dampingBy(PropellerDamping::manual), 19634.954, 1e-3);
  p.DYNMAGNIFIER = 0.0;
  EXPECT_EQ(dampingBy(PropellerDamping::manual), 0.0);
  EXPECT_EQ(dampingBy(PropellerDamping{0}), 0.0);
}

TEST_F(Propeller, VariableDampingGrowsWithTheSpeedUpToTheKnuckle) {
  p.DYNMAGNIFIERFORKNUCKLEPOINT = 8.0;
  p.KNUCKLEPOINT = 60.0;  // 72 rpm
  const auto magnifierAt = [&](double rpm) {
    p.SPEED = rpm;
    const double damping = dampingBy(PropellerDamping::variable);
    EXPECT_NEAR(damping, 25000 * rpm * kTwoPi / 60 / p.DYNMAGNIFIER, 1e-9 * damping) << rpm;
    return p.DYNMAGNIFIER;
  };
  EXPECT_NEAR(magnifierAt(36.0), 16.0, 1e-12);
  EXPECT_EQ(magnifierAt(110.0), 8.0);
  // Each speed is answered afresh, whatever magnifier the last one has left.
  EXPECT_NEAR(magnifierAt(18.0), 32.0, 1e-12);
  p.DYNMAGNIFIERFORKNUCKLEPOINT = 0.0;
  EXPECT_EQ(dampingBy(PropellerDamping::variable), 0.0);
}

TEST_F(Propeller, WithoutEntrainedWaterOfALoadCaseTakesThatOfAll) {
  p.ISVARIABLEENTRAINEDWATER = true;
  p.NLOADCASE = 2;
  p.VARIABLEENTRAINEDWATERTABLE = {4000.0, 6000.0};
  EXPECT_EQ(CALCULATE_PROPELLER_CURRENTINERTIAWATER(table, 1, 3), 5000.0);
  EXPECT_EQ(read.log(),
            " Error occurs when setting variable propeller entrained water inertia at "
            "Propeller!\n");
}

TEST_F(Propeller, EstimatesMissingEntrainedWater) {
  CALCULATE_PROPELLER_INERTIAWATER(table, 1);
  EXPECT_EQ(p.INERTIAWATER, 5000.0) << "given";
  p.INERTIAWATER = 0.0;
  CALCULATE_PROPELLER_INERTIAWATER(table, 1);
  // (1/6 - 0.5 x 0.04 + 0.008/3) x 512.5 x 7776 / (4 pi) x 0.64 x 0.36 kg m2
  EXPECT_NEAR(p.INERTIAWATER, 0.14933333 * 512.5 * 7776 / (2 * kTwoPi) * 0.64 * 0.36, 2e-2);
}

TEST_F(Propeller, InterpolatesItsIceTableOverTheSpeedRatio) {
  p.NSPEEDRATIO = 2;
  p.SPEEDRATIO = {0.5, 0.8};
  p.ICEHARMONICORDER = {0, 1, 2};
  p.ICECOSINE = {11, 14, 1234567.125, 1234567.125, 31, 34};
  p.ICESINE = {0, 0, 0.1, 0.1, 3.1, 3.4};
  const auto setSpeed = [&](double rpm) {
    read.model.loadCaseSpeed.set(1, rpm);
    LOADCASESETTING(read.model, 1);
  };
  p.HASICEEXCITATION = true;
  struct Case {
    const char* where;
    double ratio;
    bool toOrigin;
    double mean;
    double second;  ///< cosine of the second harmonic
  };
  for (const Case& c : {Case{"above, along the last two", 1.0, false, 16.0, 36.0},
                        {"below, held", 0.25, false, 11.0, 31.0},
                        {"below, to the origin", 0.25, true, 5.5, 15.5},
                        {"between, with the line to the origin", 0.6, true, 12.0, 32.0}}) {
    p.ISTMAXCORRECTEDWITHACTUALSPEED = c.toOrigin;
    setSpeed(120.0 * c.ratio);
    EXPECT_NEAR(p.ICEZEROORDERCOEFFICIENT, c.mean, 1e-12) << c.where;
    EXPECT_NEAR(std::abs(iceHarmonic(table, 1, 2) - c.second * std::complex(0.5, 0.05)), 0.0, 1e-6)
        << c.where;
    EXPECT_EQ(iceHarmonic(table, 1, 3), std::complex<double>()) << c.where;
  }
  // Harmonics are held in single precision, the mean isn't.
  p.ICECOSINE[0] = 1234567.125;
  p.ISTMAXCORRECTEDWITHACTUALSPEED = false;
  setSpeed(30.0);
  EXPECT_EQ(p.ICEZEROORDERCOEFFICIENT, 1234567.125);
  EXPECT_EQ(iceHarmonic(table, 1, 1), std::complex(617283.5625, 0.05000000074505806));
  // A table of one speed ratio holds at every speed.
  p.NSPEEDRATIO = 1;
  setSpeed(120.0);
  EXPECT_EQ(p.ICEZEROORDERCOEFFICIENT, 1234567.125);
}

TEST_F(Propeller, IceRulesPhaseAndOrdersOfTheModel) {
  ALLOCATE_PROPELLER_TABLE(table, 3);
  EXPECT_EQ(GET_PROPELLERICEHARMONICORDERNUMBER(table), 0);
  EXPECT_FALSE(GET_PROPELLER_ISMODELCONSIDERPHASEANGLE(table));
  table.at(1).CONSIDERPHASEANGLE = true;
  EXPECT_TRUE(GET_PROPELLER_ISMODELCONSIDERPHASEANGLE(table));
  table.at(2).HASICEEXCITATION = table.at(3).HASICEEXCITATION = true;
  table.at(2).NBLADE = 13;
  EXPECT_FALSE(GET_PROPELLER_ISMODELCONSIDERPHASEANGLE(table));
  EXPECT_EQ(GET_PROPELLERICEHARMONICORDERNUMBER(table), 52) << "of the first in ice";
}

std::string failureIn(const std::string& file, std::size_t line) {
  return " Error occurs when reading " + file + " in line " + std::to_string(line) + "\n";
}

TEST_F(Propeller, IceFileFillsTheTableOrNamesTheLineThatBreaks) {
  // Of one blade at two speed ratios.
  std::vector<std::string> whole(26, "heading 1.0");
  whole[5 - 1] = "\t0,6\t0.9 remark";
  whole[9 - 1] = "0 1000.0 2000.0 3000.0";
  for (std::size_t o = 1; o <= 4; ++o) {
    const std::string order = std::to_string(o);
    whole[13 + o - 1] = test::replaced("9# 1#.5 2#.5", "#", order);
    whole[21 + o - 1] = test::replaced("# -1#.25 -2#.25", "#", order);
  }
  p.NBLADE = 1;
  p.NSPEEDRATIO = 2;
  p.HASICEEXCITATION = true;
  struct Case {
    const char* what;
    std::size_t line;         ///< that is changed
    const char* replacement;  ///< null: the file ends before it
  };
  for (const Case& c : {Case{"empty file", 1, nullptr},
                        {"one ratio only", 5, "0.6"},
                        {"too few cosines", 17, "94 14.5"},
                        {"blank line in the sines", 23, ""},
                        {"last line missing", 25, nullptr},
                        {"whole", 26, "not read"}}) {
    std::string text;
    for (std::size_t i = 0; i + 1 < c.line || (i < whole.size() && c.replacement != nullptr); ++i) {
      text += (i + 1 == c.line ? c.replacement : whole[i]) + "\n";
    }
    const ReadModel scratch;  // for a log of its own
    const std::string file = scratch.directory().write("ice.txt", text);
    p.EXCITATIONFILE = "  " + file + "  ";
    const bool isSound = c.line == 26;
    EXPECT_EQ(loadDataFiles(read.model), isSound) << c.what;
    EXPECT_EQ(scratch.log(), isSound ? "" : failureIn(file, c.line)) << c.what;
    // What was read so far is a table that can be used.
    CALCULATE_PROPELLER_FOURIERCOEFFICIENT(table, 1);
  }
  EXPECT_EQ(p.SPEEDRATIO[1], 0.9);
  // The orders that stand with the sines count.
  EXPECT_EQ(p.ICEHARMONICORDER, (Values{0, 1, 2, 3, 4}));
  EXPECT_EQ(p.ICECOSINE, (Values{1000, 2000, 11.5, 21.5, 12.5, 22.5, 13.5, 23.5, 14.5, 24.5}));
  EXPECT_EQ(p.ICESINE,
            (Values{0, 0, -11.25, -21.25, -12.25, -22.25, -13.25, -23.25, -14.25, -24.25}));
}

TEST_F(Propeller, EntrainedWaterFileHasOneLineALoadCase) {
  p.ISVARIABLEENTRAINEDWATER = true;
  p.NLOADCASE = 3;
  p.VARIABLEENTRAINEDWATERFILE =
      read.directory().write("water.txt", "case1 4000,5\n 2\t4100 7\ncase3 4200.0\ncase4 x\n");
  ASSERT_TRUE(loadDataFiles(read.model));
  EXPECT_EQ(p.VARIABLEENTRAINEDWATERTABLE, (Values{4000.5, 4100.0, 4200.0}));
  p.NLOADCASE = 4;
  EXPECT_FALSE(loadDataFiles(read.model));
  EXPECT_EQ(read.log(), failureIn(p.VARIABLEENTRAINEDWATERFILE, 4));
  EXPECT_EQ(p.VARIABLEENTRAINEDWATERTABLE.size(), 3U);
}

}  // namespace
}  // namespace verenwick
