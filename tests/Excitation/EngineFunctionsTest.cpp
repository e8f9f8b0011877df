#include <gtest/gtest.h>

#include "Excitation/Engine_functions.h"

namespace verenwick {
namespace {

TEST(EngineFunctions, MeanPressuresAreThoseOfPowerAndFriction) {
  // Pi and the constants of part load have single precision.
  EXPECT_NEAR(CALCULATE_TORQUE(1e6, 120.0), 79577.46933150284, 1e-7);
  EXPECT_DOUBLE_EQ(CALCULATE_POWER(CALCULATE_TORQUE(7.5e5, 93.0), 93.0), 7.5e5);
  // 0.5 m bore, 2 m stroke: 0.3927 m3. At 120 rpm a two-stroke has two cycles a second.
  const double swept = 3.1415927410125732 / 4 * 0.25 * 2.0;
  EXPECT_NEAR(CALCULATE_MEP(1e6, 120.0, 0.5, 2, 2.0) * swept / 5e5, 1, 1e-12);
  EXPECT_NEAR(CALCULATE_MEP(1e6, 120.0, 0.5, 4, 2.0) * swept / 1e6, 1, 1e-12);
  const double none = 1e99;
  EXPECT_DOUBLE_EQ(CALCULATE_MIP(5e5, 1.8e6, 0.5, 0.9, none), 1.09e6) << "rated friction";
  EXPECT_EQ(CALCULATE_MIP(0, 1.8e6, 1.0, 0.9, 1.9e6), 1.9e6);
  EXPECT_DOUBLE_EQ(CALCULATE_MIP_MAX(1.8e6, 0.9, 1.1), 2.2e6);
}

TEST(EngineFunctions, PressuresFollowTheTorqueWithinTheirLimits) {
  struct Case {
    double power, speed;
    std::int32_t nStroke;
    double pInlet, pComp, pMax;
  };
  // Rated: 1 MW at 100 rpm, inlet 4 bar, compression 100 bar, peak 150 bar, here in Pa. The limit
  // of the peak from below takes the compression pressure of the same load.
  for (const Case& c : {
           Case{5e5, 50, 4, 4e5, 1e7, 1.5e7},                           // torque decides, not power
           {8e5, 100, 2, 300800.24724, 7360000.13351, 13080000.04292},  // torque 0.8
           {8e5, 100, 4, 297600.25829, 7360000.13351, 12599999.96424},
           {3e5, 100, 2, 1e5, 3000000.11921, 8280000.1502},  // inlet and compression at floors
           {2e6, 100, 2, 449599.88821, 1e7, 1.5e7},          // cut at torque 1.1, and at rated
       }) {
    const double pComp = CALCULATE_PCOMP(1e6, 100, c.power, c.speed, 1e7);
    // The gauge of the inlet is 1.0, not one bar.
    EXPECT_NEAR(CALCULATE_PINLET(1e6, 100, c.power, c.speed, 4e5, c.nStroke), c.pInlet, 1e-4);
    EXPECT_NEAR(pComp, c.pComp, 1e-4);
    EXPECT_NEAR(CALCULATE_PMAX(1e6, 100, c.power, c.speed, 1.5e7, pComp, c.nStroke), c.pMax, 1e-4);
  }
  EXPECT_NEAR(CALCULATE_PMAX(1e6, 100, 1e4, 100, 1.5e7, 7e6, 4), 7700000.16689, 1e-4)
      << "1.1 pComp";
  EXPECT_NEAR(CALCULATE_PMAX(1e6, 100, 1e4, 100, 1.5e7, 3e6, 4), 4500000.17881, 1e-4)
      << "0.3 rated";
  EXPECT_EQ(CALCULATE_PMAX(1e6, 100, 1e4, 100, 1.5e7, 1.5e7, 4), 1.5e7) << "rated is the last word";
}

}  // namespace
}  // namespace verenwick
