#include <gtest/gtest.h>

#include <cmath>

#include "ComponentTables/Global_GeislingerCoupling.h"
#include "ComponentTables/Global_LinearCoupling.h"
#include "ComponentTables/Global_ProgressiveCoupling.h"

namespace verenwick {
namespace {

constexpr double kRpmOf100RadiansPerSecond = 3000 / 3.141592653589793;

TEST(ProgressiveCoupling, StiffensAlongItsPointsAndDampsByItsMagnifier) {
  PROGRESSIVECOUPLING_TABLE table;
  ALLOCATE_PROGRESSIVECOUPLING_TABLE(table, 1);
  PROGRESSIVECOUPLING_RECORD& coupling = table.at(1);
  coupling.NOMINALTORQUE = {0.0, 1000.0, 2000.0, 3000.0, 4000.0};
  coupling.NOMINALSTIFFNESS = {10e3, 20e3, 40e3, 80e3, 90e3};
  for (const auto& [torque, stiffness] :
       {std::pair{-1000.0, 0.0}, {0.0, 10e3}, {1000.0, 20e3}, {2250.0, 50e3}, {5000.0, 100e3}}) {
    EXPECT_DOUBLE_EQ(GET_PROGRESSIVECOUPLING_STIFFNESSDYNAMIC(table, 1, torque), stiffness);
  }
  coupling.TORQUE = 2250.0;
  coupling.SPEED = kRpmOf100RadiansPerSecond;
  // 50 kN m/rad / (magnifier x 100 rad/s x order)
  EXPECT_NEAR(CALCULATE_PROGRESSIVECOUPLING_DAMPING(table, 1, 5.0, 2.0), 50.0, 1e-12);
  EXPECT_EQ(CALCULATE_PROGRESSIVECOUPLING_DAMPING(table, 1, 0.0, 2.0), 0.0);
  LINEARCOUPLING_TABLE linear;
  ALLOCATE_LINEARCOUPLING_TABLE(linear, 1);
  EXPECT_EQ(CALCULATE_LINEARCOUPLING_DAMPING(linear, 1, 0.0, 2.0), 0.0);
}

TEST(GeislingerCoupling, StiffensAndDampsByFrequencyOilAndLoad) {
  GEISLINGERCOUPLING_TABLE table;
  ALLOCATE_GEISLINGERCOUPLING_TABLE(table, 1);
  GEISLINGERCOUPLING_RECORD& coupling = table.at(1);
  coupling.STATICSTIFFNESS = 200e3;
  coupling.NOMINALTORQUE = 5000.0;
  coupling.TORQUE = 2500.0;
  // The reference frequency is 40 x 200 / 80 = 100 rad/s, the speed of excitation.
  coupling.CHARACTERISTICFREQUENCY = 200.0;
  coupling.OILVISCOSITY = 80.0;
  coupling.SPEEDEXCITATION = kRpmOf100RadiansPerSecond;
  EXPECT_EQ(CALCULATE_GEISLINGERCOUPLING_STIFFNESSDYNAMIC(table, 1, -1.0), 200e3);
  struct Case {
    std::int32_t damping, oilSupply, design;
    double magnifier;
    double r;          ///< frequency over the reference frequency
    double stiffness;  ///< dynamic over static
    double relative;   ///< damping times frequency over dynamic stiffness
  };
  for (const Case& c : {Case{1, 1, 0, 0.0, 0.1, 1.037, 0.13},  // with oil pressure
                        {1, 1, 0, 0.0, 0.2999, 1.110963, 0.34989},
                        {1, 1, 0, 0.0, 0.3001, 1.111037, 0.35005},
                        {1, 1, 0, 0.0, 0.9999, 1.369963, 0.69995},
                        {1, 1, 0, 0.0, 3.0, 1.91, 0.7},
                        // Without pressure the load of one half counts, and the frequency doesn't.
                        {1, 2, 1, 0.0, 5.0, 2.45, 0.058 + 0.065 + 0.0275},
                        {1, 2, 2, 0.0, 5.0, 2.45, 0.032 + 0.00345 + 0.01375},
                        {1, 2, 0, 0.0, 0.5, 1.185, 0.0},
                        {0, 1, 1, 0.0, 0.5, 1.185, 0.0},
                        // By a magnifier the loss factor is 1 / sqrt(2^2 - 1).
                        {2, 1, 1, 2.0, 0.5, 1.185, 1 / std::sqrt(3.0)},
                        {2, 1, 1, 0.0, 0.5, 1.185, 0.0}}) {
    coupling.DAMPINGTYPE = c.damping;
    coupling.OILSUPPLYTYPE = c.oilSupply;
    coupling.DESIGNTYPE = c.design;
    CALCULATE_GEISLINGERCOUPLING_LOADCASESETTING(table, 1, c.magnifier, c.r);
    EXPECT_NEAR(coupling.STIFFNESS / 200e3, c.stiffness, 1e-7) << c.r;
    EXPECT_NEAR(coupling.DAMPING * 100 * c.r / coupling.STIFFNESS, c.relative, 1e-7) << c.r;
  }
}

}  // namespace
}  // namespace verenwick
