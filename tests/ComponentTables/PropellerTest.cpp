#include <gtest/gtest.h>

#include "ComponentTables/Global_Propeller.h"
#include "Support/ReadModel.h"

namespace verenwick {
namespace {

constexpr double kTwoPi = 2 * 3.141592653589793;

PROPELLER_TABLE oneSixMetrePropeller() {
  PROPELLER_TABLE table;
  ALLOCATE_PROPELLER_TABLE(table, 1);
  PROPELLER_RECORD& p = table.at(1);
  p.MCRPOWER = 9.0e6;
  p.MCRSPEED = 120.0;
  p.MCRTORQUE = 9.0e6 / (kTwoPi * 2);
  p.POWER = 4.5e6;
  p.SPEED = 90.0;
  p.TORQUE = 4.5e6 / (kTwoPi * 1.5);
  p.NBLADE = 4;
  p.DB = 1.2;
  p.DI = 6.0;
  p.PITCHRATIO = 0.8;
  p.EXPAREARATIO = 0.6;
  p.INERTIAAIR = 20000.0;
  p.INERTIAWATER = 5000.0;
  p.ISFIXEDPITCH = true;
  p.PITCHPERCENT = 0.7;
  p.ARCHERNUMBER = 30.0;
  p.FRAHMNUMBER = 2.5;
  p.DYNMAGNIFIER = 12.0;
  return table;
}

double dampingBy(PROPELLER_TABLE& table, PropellerDamping method) {
  SET_PROPELLER_DAMPINGMETHOD(table, 1, static_cast<std::int32_t>(method));
  const double damping = CALCULATE_PROPELLER_ABSDAMPING(table, 1);
  EXPECT_EQ(GET_PROPELLER_ABSDAMPING(table, 1), damping);
  return damping;
}

// All in N m s/rad.
TEST(PropellerDamping, FollowsTheLawOfItsMethod) {
  PROPELLER_TABLE table = oneSixMetrePropeller();
  // D / Db = 5, q = 2: 2/40 + 2/300 - 2/375 + atan(2)/8 = 0.1897269, times 4.271 x 6^5 x 0.64 x
  // 0.6 x 90 rpm.
  const double plain = dampingBy(table, PropellerDamping::schwanecke);
  EXPECT_NEAR(plain, 217765.221, 0.01);
  // Pitch counts for a controllable pitch propeller only, and not above the full pitch.
  SET_PROPELLER_ISDUCTED(table, 1, true);
  EXPECT_NEAR(dampingBy(table, PropellerDamping::schwanecke), 1.3 * plain, 1e-7 * plain);
  SET_PROPELLER_ISFIXEDPITCH(table, 1, false);
  EXPECT_NEAR(dampingBy(table, PropellerDamping::schwanecke), 0.91 * plain, 1e-7 * plain);
  SET_PROPELLER_PITCHPERCENT(table, 1, 1.1);
  EXPECT_NEAR(dampingBy(table, PropellerDamping::schwanecke), 1.3 * plain, 1e-7 * plain);

  // 30 x 477464.8 N m / 90 rpm
  EXPECT_NEAR(dampingBy(table, PropellerDamping::archer), 159154.943, 1e-3);
  // 2.5 x (716197.24 / 9.549296) / 120^2 x 91.25 x 90 rpm
  EXPECT_NEAR(dampingBy(table, PropellerDamping::frahm), 106933.597, 0.01);
  // (20000 + 5000) kg m2 x 9.424778 rad/s / 12
  EXPECT_NEAR(dampingBy(table, PropellerDamping::manual), 19634.954, 1e-3);
  SET_PROPELLER_DYNMAGNIFIER(table, 1, 0.0);
  EXPECT_EQ(dampingBy(table, PropellerDamping::manual), 0.0);
  EXPECT_EQ(dampingBy(table, PropellerDamping{0}), 0.0);
}

TEST(PropellerDamping, GrowsWithTheSpeedUpToTheKnuckle) {
  PROPELLER_TABLE table = oneSixMetrePropeller();
  PROPELLER_RECORD& p = table.at(1);
  p.DYNMAGNIFIERFORKNUCKLEPOINT = 8.0;
  p.KNUCKLEPOINT = 60.0;  // 72 rpm
  const auto magnifierAt = [&](double rpm) {
    p.SPEED = rpm;
    const double damping = dampingBy(table, PropellerDamping::variable);
    EXPECT_NEAR(damping, 25000 * rpm * kTwoPi / 60 / p.DYNMAGNIFIER, 1e-9 * damping) << rpm;
    return p.DYNMAGNIFIER;
  };
  EXPECT_NEAR(magnifierAt(36.0), 16.0, 1e-12);
  EXPECT_NEAR(magnifierAt(71.999), 8.0, 2e-4);
  EXPECT_EQ(magnifierAt(72.0), 8.0);
  EXPECT_EQ(magnifierAt(110.0), 8.0);
  // Each speed is answered afresh, whatever magnifier the last one has left.
  EXPECT_NEAR(magnifierAt(18.0), 32.0, 1e-12);
  p.KNUCKLEPOINT = 0.0;
  EXPECT_EQ(magnifierAt(1.0), 8.0);
  p.DYNMAGNIFIERFORKNUCKLEPOINT = 0.0;
  p.DYNMAGNIFIER = 5.0;
  EXPECT_EQ(dampingBy(table, PropellerDamping::variable), 0.0);
  EXPECT_EQ(p.DYNMAGNIFIER, 5.0);
}

TEST(Propeller, TakesEntrainedWaterByLoadCase) {
  const test::ReadModel logDirectory;
  PROPELLER_TABLE table = oneSixMetrePropeller();
  PROPELLER_RECORD& p = table.at(1);
  const auto inertia = [&](bool isFree, std::int32_t loadCase) {
    CALCULATE_PROPELLER_INERTIATOTAL(isFree, table, 1, loadCase);
    return p.INERTIATOTAL;
  };
  p.NLOADCASE = 2;
  p.VARIABLEENTRAINEDWATERTABLE = {4000.0, 6000.0};
  EXPECT_EQ(inertia(false, 2), 25000.0);
  p.ISVARIABLEENTRAINEDWATER = true;
  EXPECT_EQ(inertia(false, 1), 24000.0);
  EXPECT_EQ(inertia(false, 2), 26000.0);
  EXPECT_EQ(inertia(true, 2), 25000.0);
  EXPECT_EQ(inertia(false, 3), 25000.0);
  EXPECT_EQ(logDirectory.log(),
            " Error occurs when setting variable propeller entrained water inertia at "
            "Propeller!\n");
}

TEST(Propeller, EstimatesMissingEntrainedWater) {
  PROPELLER_TABLE table = oneSixMetrePropeller();
  const auto estimate = [&] {
    CALCULATE_PROPELLER_INERTIAWATER(table, 1);
    return GET_PROPELLER_INERTIAWATER(table, 1);
  };
  EXPECT_EQ(estimate(), 5000.0);
  SET_PROPELLER_INERTIAWATER(table, 1, 0.0);
  // (1/6 - 0.5 x 0.04 + 0.008/3) x 512.5 x 7776 / (4 pi) x 0.64 x 0.36 kg m2
  EXPECT_NEAR(estimate(), 0.14933333 * 512.5 * 7776 / (2 * kTwoPi) * 0.64 * 0.36, 2e-2);
  SET_PROPELLER_INERTIAWATER(table, 1, 0.0);
  SET_PROPELLER_EXPAREARATIO(table, 1, 0.0);
  EXPECT_EQ(estimate(), 0.0);
}

TEST(Propeller, SetsBladeOrderTorquesOfALoadCase) {
  PROPELLER_TABLE table = oneSixMetrePropeller();
  PROPELLER_RECORD& p = table.at(1);
  p.DAMPINGMETHOD = static_cast<std::int32_t>(PropellerDamping::archer);
  p.TORQUEPERCENT1 = 0.05;
  p.TORQUEPERCENT2 = 0.01;
  CALCULATE_PROPELLER_LOADCASESETTING(table, 1);
  EXPECT_EQ(p.BLADEFREQUENCY, 360.0);
  EXPECT_NEAR(p.DAMPING, 159154.943, 1e-3);
  EXPECT_NEAR(p.TORQUEAMP1, 23873.241, 1e-3);
  EXPECT_NEAR(p.TORQUEAMP2, 4774.648, 1e-3);
}

/// Two blades at speed ratios 0.5 and 0.8 give a table of nine lines; line o has the cosine 10 o +
/// 1 at the first ratio and 10 o + 4 at the second, and the sine is the tenth of it.
PROPELLER_TABLE propellerInIce() {
  PROPELLER_TABLE table = oneSixMetrePropeller();
  PROPELLER_RECORD& p = table.at(1);
  p.NBLADE = 2;
  p.HASICEEXCITATION = true;
  p.NSPEEDRATIO = 2;
  p.SPEEDRATIO = {0.5, 0.8};
  for (int o = 1; o <= GET_PROPELLER_NICEFOURIERORDERS(table, 1); ++o) {
    p.ICEHARMONICORDER.push_back(o - 1);
    for (const int column : {1, 4}) {
      p.ICECOSINE.push_back(10 * o + column);
      p.ICESINE.push_back(o == 1 ? 0.0 : 0.1 * (10 * o + column));
    }
  }
  return table;
}

TEST(PropellerIce, InterpolatesItsTableOverTheSpeedRatio) {
  struct Case {
    const char* where;
    double ratio;
    bool toOrigin;
    double mean;
    double third;  ///< cosine of the third line
  };
  for (const Case& c : {Case{"at the first ratio", 0.5, false, 11.0, 31.0},
                        {"at the second ratio", 0.8, false, 14.0, 34.0},
                        {"between", 0.6, false, 12.0, 32.0},
                        {"above, along the last two", 1.0, false, 16.0, 36.0},
                        {"below, held", 0.25, false, 11.0, 31.0},
                        {"below, to the origin", 0.25, true, 5.5, 15.5},
                        {"at rest, to the origin", 0.0, true, 0.0, 0.0},
                        {"above the first ratio with the line to the origin", 0.6, true, 12, 32}}) {
    PROPELLER_TABLE table = propellerInIce();
    PROPELLER_RECORD& p = table.at(1);
    p.ISTMAXCORRECTEDWITHACTUALSPEED = c.toOrigin;
    p.SPEED = 120.0 * c.ratio;
    CALCULATE_PROPELLER_FOURIERCOEFFICIENT(table, 1);
    EXPECT_NEAR(p.ICEZEROORDERCOEFFICIENT, c.mean, 1e-12) << c.where;
    ASSERT_EQ(p.ICEFOURIERCOEFFICIENT.size(), 8U) << c.where;
    EXPECT_NEAR(iceHarmonic(table, 1, 2).real(), c.third / 2, 1e-6) << c.where;
    EXPECT_NEAR(iceHarmonic(table, 1, 2).imag(), c.third / 20, 1e-6) << c.where;
    EXPECT_EQ(iceHarmonic(table, 1, 9), std::complex<double>()) << c.where;
  }
}

TEST(PropellerIce, KeepsSinglePrecisionInTheHarmonicsAndNotInTheMean) {
  PROPELLER_TABLE table = propellerInIce();
  PROPELLER_RECORD& p = table.at(1);
  p.ICECOSINE[0] = p.ICECOSINE[2] = 1234567.125;
  p.ICESINE[2] = 0.1;
  p.SPEED = 30.0;
  CALCULATE_PROPELLER_FOURIERCOEFFICIENT(table, 1);
  EXPECT_EQ(p.ICEZEROORDERCOEFFICIENT, 1234567.125);
  EXPECT_EQ(iceHarmonic(table, 1, 1), std::complex(617283.5625, 0.05000000074505806));
}

TEST(PropellerIce, HoldsATableOfOneSpeedRatioAtEverySpeed) {
  PROPELLER_TABLE table = propellerInIce();
  PROPELLER_RECORD& p = table.at(1);
  p.NSPEEDRATIO = 1;
  p.SPEED = 120.0;
  CALCULATE_PROPELLER_FOURIERCOEFFICIENT(table, 1);
  EXPECT_EQ(p.ICEZEROORDERCOEFFICIENT, 11.0);
}

TEST(PropellerIce, RulesPhaseAndOrdersOfTheModel) {
  PROPELLER_TABLE table;
  EXPECT_EQ(GET_PROPELLERICEHARMONICORDERNUMBER(table), 0);
  EXPECT_FALSE(GET_PROPELLER_ISMODELCONSIDERPHASEANGLE(table));
  ALLOCATE_PROPELLER_TABLE(table, 3);
  SET_PROPELLER_CONSIDERPHASEANGLE(table, 1, true);
  EXPECT_TRUE(GET_PROPELLER_ISMODELCONSIDERPHASEANGLE(table));
  SET_PROPELLER_NBLADE(table, 2, 13);
  SET_PROPELLER_NBLADE(table, 3, 4);
  SET_PROPELLER_HASICEEXCITATION(table, 2, true);
  SET_PROPELLER_HASICEEXCITATION(table, 3, true);
  EXPECT_FALSE(GET_PROPELLER_ISMODELCONSIDERPHASEANGLE(table));
  EXPECT_EQ(GET_PROPELLERICEHARMONICORDERNUMBER(table), 52);
}

}  // namespace
}  // namespace verenwick
