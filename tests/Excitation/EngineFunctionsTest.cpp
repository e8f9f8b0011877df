#include <gtest/gtest.h>

#include <array>
#include <utility>

#include "Excitation/Engine_functions.h"
#include "Excitation/ExcitationConstants.h"

namespace verenwick {
namespace {

TEST(ExcitationConstants, AreTheirSinglePrecisionValues) {
  const std::array<std::pair<double, double>, 22> table{{
      {kPiSingle, 3.1415927410125732},
      {kTorqueRatioLimit, 1.1000000238418579},
      {kPeakOverCompression, 1.1000000238418579},
      {kPeakSlopeTwoStroke, 0.6399999856948853},
      {kPeakSlopeFourStroke, 0.8000000119209290},
      {kLowestShareOfRated, 0.3000000119209290},
      {kInletSlopeTwoStroke, 1.2400000095367432},
      {kInletSlopeFourStroke, 1.2799999713897705},
      {kCompressionSlope, 1.3199999332427979},
      {kGasConstant, 286.7200012207031250},
      {kToleranceTwoStroke, 0.0199999995529652},
      {kToleranceFourStroke, 0.0049999998882413},
      {kVibe, 6.9000000953674316},
      {kSpecificHeatSlope, 0.2177000045776367},
      {kSpecificHeatBase, 921.0999755859375000},
      {kExpansionExponentDrop, 0.0599999986588955},
      {kExhaustLevelShare, 0.4000000059604645},
      {kExhaustExponent, 0.1669999957084656},
      {kMisfireExponent, 1.3600000143051147},
      {kMisfireCap, 0.8999999761581421},
      {kFormFactorStep, 0.6000000238418579},
      {kFormFactorFloor, 0.009999999776482582},
  }};
  for (const auto& [constant, widened] : table) EXPECT_NEAR(constant, widened, 1e-16);
}

TEST(EngineFunctions, MeanPressuresAreThoseOfPowerAndFriction) {
  EXPECT_NEAR(CALCULATE_TORQUE(1e6, 120.0), 1e6 / (4 * kPiSingle), 1e-7);
  EXPECT_DOUBLE_EQ(CALCULATE_POWER(CALCULATE_TORQUE(7.5e5, 93.0), 93.0), 7.5e5);
  // 0.5 m bore, 2 m stroke: 0.3927 m3. At 120 rpm a two-stroke has two cycles a second.
  const double swept = kPiSingle / 4 * 0.25 * 2.0;
  EXPECT_NEAR(CALCULATE_MEP(1e6, 120.0, 0.5, 2, 2.0) * swept / 5e5, 1, 1e-12);
  EXPECT_NEAR(CALCULATE_MEP(1e6, 120.0, 0.5, 4, 2.0) * swept / 1e6, 1, 1e-12);
  const double rated = 1.8e6;
  const double none = 1e99;
  EXPECT_DOUBLE_EQ(CALCULATE_MIP(0, rated, 0.0, 0.9, none), 0.1 * rated);
  EXPECT_DOUBLE_EQ(CALCULATE_MIP(0, rated, 1.0, 0.9, none), 2e6);
  EXPECT_DOUBLE_EQ(CALCULATE_MIP(5e5, rated, 0.5, 0.9, none), 1.09e6) << "rated friction";
  EXPECT_EQ(CALCULATE_MIP(0, rated, 1.0, 0.9, 1.9e6), 1.9e6);
  EXPECT_DOUBLE_EQ(CALCULATE_MIP_MAX(rated, 0.9, 1.1), 2.2e6);
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
           Case{1e6, 100, 2, 4e5, 1e7, 1.5e7},
           {5e5, 50, 4, 4e5, 1e7, 1.5e7},                 // torque decides, not power
           {8e5, 100, 2, 3.008e5, 7.36e6, 1.308e7},       // torque 0.8
           {8e5, 100, 4, 2.976e5, 7.36e6, 1.26e7},        // torque 0.8
           {3e5, 100, 2, 1e5, 3e6, 8.28e6},               // inlet and compression at their floors
           {2e6, 100, 2, 4e5 * (1 + 0.124), 1e7, 1.5e7},  // cut at torque 1.1, and at rated
       }) {
    const double pComp = CALCULATE_PCOMP(1e6, 100, c.power, c.speed, 1e7);
    // The gauge of the inlet is 1.0, not one bar.
    EXPECT_NEAR(CALCULATE_PINLET(1e6, 100, c.power, c.speed, 4e5, c.nStroke), c.pInlet, 0.3);
    EXPECT_NEAR(pComp, c.pComp, 2);
    EXPECT_NEAR(CALCULATE_PMAX(1e6, 100, c.power, c.speed, 1.5e7, pComp, c.nStroke), c.pMax, 3);
  }
  EXPECT_NEAR(CALCULATE_PMAX(1e6, 100, 1e4, 100, 1.5e7, 7e6, 4), 7.7e6, 1) << "1.1 of compression";
  EXPECT_NEAR(CALCULATE_PMAX(1e6, 100, 1e4, 100, 1.5e7, 3e6, 4), 4.5e6, 1) << "0.3 of rated";
  EXPECT_EQ(CALCULATE_PMAX(1e6, 100, 1e4, 100, 1.5e7, 1.5e7, 4), 1.5e7) << "rated is the last word";
}

}  // namespace
}  // namespace verenwick
