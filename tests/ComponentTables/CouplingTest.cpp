#include <gtest/gtest.h>

#include <cmath>

#include "ComponentTables/Global_GeislingerCoupling.h"
#include "ComponentTables/Global_LinearCoupling.h"
#include "ComponentTables/Global_ProgressiveCoupling.h"

namespace verenwick {
namespace {

constexpr double kRpmOf100RadiansPerSecond = 3000 / 3.141592653589793;

TEST(ProgressiveCoupling, StiffensAlongItsPointsAndBeyondThem) {
  PROGRESSIVECOUPLING_TABLE table;
  ALLOCATE_PROGRESSIVECOUPLING_TABLE(table, 1);
  table.at(1).NOMINALTORQUE = {0.0, 1000.0, 2000.0, 3000.0, 4000.0};
  table.at(1).NOMINALSTIFFNESS = {10e3, 20e3, 40e3, 80e3, 90e3};
  struct Case {
    double torque;     // N m
    double stiffness;  // N m/rad
  };
  for (const Case& c : {Case{0.0, 10e3},
                        {1000.0, 20e3},
                        {2000.0, 40e3},
                        {3000.0, 80e3},
                        {4000.0, 90e3},
                        {500.0, 15e3},
                        {1500.0, 30e3},
                        {2250.0, 50e3},
                        {3500.0, 85e3},
                        {5000.0, 100e3},
                        {-1000.0, 0.0}}) {
    EXPECT_DOUBLE_EQ(GET_PROGRESSIVECOUPLING_STIFFNESSDYNAMIC(table, 1, c.torque), c.stiffness)
        << c.torque;
  }
}

TEST(Couplings, DampAsTheMagnifierOfTheirShaftSays) {
  LINEARCOUPLING_TABLE linear;
  ALLOCATE_LINEARCOUPLING_TABLE(linear, 1);
  linear.at(1).NOMINALSTIFFNESS = 50e3;
  linear.at(1).SPEED = kRpmOf100RadiansPerSecond;
  PROGRESSIVECOUPLING_TABLE progressive;
  ALLOCATE_PROGRESSIVECOUPLING_TABLE(progressive, 1);
  progressive.at(1).NOMINALTORQUE = {0.0, 1000.0, 2000.0, 3000.0, 4000.0};
  progressive.at(1).NOMINALSTIFFNESS = {10e3, 90e3, 90e3, 90e3, 90e3};
  progressive.at(1).SPEED = kRpmOf100RadiansPerSecond;
  progressive.at(1).TORQUE = 500.0;
  // 50 kN m/rad / (5 x 100 rad/s x 2)
  EXPECT_NEAR(CALCULATE_LINEARCOUPLING_DAMPING(linear, 1, 5.0, 2.0), 50.0, 1e-12);
  EXPECT_NEAR(CALCULATE_PROGRESSIVECOUPLING_DAMPING(progressive, 1, 5.0, 2.0), 50.0, 1e-12);
  EXPECT_EQ(CALCULATE_LINEARCOUPLING_DAMPING(linear, 1, 0.0, 2.0), 0.0);
  EXPECT_EQ(CALCULATE_PROGRESSIVECOUPLING_DAMPING(progressive, 1, 0.0, 2.0), 0.0);
  CALCULATE_LINEARCOUPLING_LOADCASESETTING(linear, 1, 5.0);
  CALCULATE_PROGRESSIVECOUPLING_LOADCASESETTING(progressive, 1, 5.0);
  EXPECT_EQ(linear.at(1).STIFFNESS, 50e3);
  EXPECT_NEAR(linear.at(1).DAMPING, 100.0, 1e-12);
  EXPECT_EQ(progressive.at(1).STIFFNESS, 50e3);
  EXPECT_NEAR(progressive.at(1).DAMPING, 100.0, 1e-12);
}

/// Reference frequency 40 x 100 / 40 = 100 rad/s, so that the order of this excitation speed is the
/// relative frequency.
GEISLINGERCOUPLING_TABLE geislingerCoupling(std::int32_t damping, std::int32_t oilSupply,
                                            std::int32_t design) {
  GEISLINGERCOUPLING_TABLE table;
  ALLOCATE_GEISLINGERCOUPLING_TABLE(table, 1);
  GEISLINGERCOUPLING_RECORD& coupling = table.at(1);
  coupling.DAMPINGTYPE = damping;
  coupling.OILSUPPLYTYPE = oilSupply;
  coupling.DESIGNTYPE = design;
  coupling.STATICSTIFFNESS = 200e3;
  coupling.CHARACTERISTICFREQUENCY = 100.0;
  coupling.OILVISCOSITY = 40.0;
  coupling.SPEEDEXCITATION = kRpmOf100RadiansPerSecond;
  coupling.NOMINALTORQUE = 5000.0;
  coupling.TORQUE = 2500.0;
  return table;
}

double geislingerStiffness(double r) {
  return CALCULATE_GEISLINGERCOUPLING_STIFFNESSDYNAMIC(geislingerCoupling(1, 1, 0), 1, r);
}

/// Relative damping: damping times frequency over dynamic stiffness.
double relativeDamping(const GEISLINGERCOUPLING_TABLE& table, double r) {
  return CALCULATE_GEISLINGERCOUPLING_DAMPING(table, 1, 0.0, r) * 100 * r /
         CALCULATE_GEISLINGERCOUPLING_STIFFNESSDYNAMIC(table, 1, r);
}

TEST(GeislingerCoupling, StiffensWithTheExcitationFrequency) {
  EXPECT_EQ(geislingerStiffness(0.0), 200e3);
  EXPECT_EQ(geislingerStiffness(-1.0), 200e3);
  EXPECT_NEAR(geislingerStiffness(0.5) / 200e3, 1.185, 1e-7);
  EXPECT_NEAR(geislingerStiffness(2.0) / 200e3, 1.64, 1e-7);
  // Both pieces meet at the reference frequency.
  EXPECT_NEAR(geislingerStiffness(1 - 1e-9), geislingerStiffness(1 + 1e-9), 0.01);
}

TEST(GeislingerCoupling, DampsByItsOilSupplyAndDesign) {
  const GEISLINGERCOUPLING_TABLE pressurized = geislingerCoupling(1, 1, 0);
  EXPECT_NEAR(relativeDamping(pressurized, 0.1), 0.13, 1e-7);
  EXPECT_NEAR(relativeDamping(pressurized, 0.6), 0.5, 1e-7);
  EXPECT_NEAR(relativeDamping(pressurized, 3.0), 0.7, 1e-7);
  for (const double joint : {0.3, 1.0}) {
    EXPECT_NEAR(relativeDamping(pressurized, joint - 1e-7),
                relativeDamping(pressurized, joint + 1e-7), 1e-6);
  }
  // Without pressure the load of one half counts, and the frequency doesn't.
  for (const double r : {0.2, 5.0}) {
    EXPECT_NEAR(relativeDamping(geislingerCoupling(1, 2, 1), r), 0.058 + 0.065 + 0.0275, 1e-7);
    EXPECT_NEAR(relativeDamping(geislingerCoupling(1, 2, 2), r), 0.032 + 0.00345 + 0.01375, 1e-7);
  }
  EXPECT_EQ(relativeDamping(geislingerCoupling(1, 2, 0), 0.5), 0.0);
  EXPECT_EQ(relativeDamping(geislingerCoupling(1, 0, 1), 0.5), 0.0);
  EXPECT_EQ(relativeDamping(geislingerCoupling(0, 1, 1), 0.5), 0.0);
  // 0.5 x (1.222 x 200 kN m/rad) / 60 rad/s
  EXPECT_NEAR(CALCULATE_GEISLINGERCOUPLING_DAMPING(pressurized, 1, 0.0, 0.6), 2036.667, 1e-3);
}

TEST(GeislingerCoupling, DampsByTheMagnifierWhereThatIsAsked) {
  GEISLINGERCOUPLING_TABLE table = geislingerCoupling(2, 1, 1);
  // Loss factor 1 / sqrt(2^2 - 1)
  EXPECT_NEAR(CALCULATE_GEISLINGERCOUPLING_DAMPING(table, 1, 2.0, 0.5),
              1.185 * 200e3 / 50 / std::sqrt(3.0), 1e-2);
  EXPECT_EQ(CALCULATE_GEISLINGERCOUPLING_DAMPING(table, 1, 0.0, 0.5), 0.0);
  EXPECT_TRUE(std::isinf(CALCULATE_GEISLINGERCOUPLING_DAMPING(table, 1, 1.0, 0.5)));
  CALCULATE_GEISLINGERCOUPLING_LOADCASESETTING(table, 1, 2.0, 0.5);
  EXPECT_NEAR(table.at(1).STIFFNESS, 1.185 * 200e3, 1e-2);
  EXPECT_NEAR(table.at(1).DAMPING, 1.185 * 200e3 / 50 / std::sqrt(3.0), 1e-2);
}

}  // namespace
}  // namespace verenwick
