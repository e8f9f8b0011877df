#include <gtest/gtest.h>

#include "RunControl/Constants.h"
#include "Support/SolverRun.h"
#include "results/RecordNumbers.h"

namespace verenwick::test {
namespace {

/// What the examples say of themselves. Records are counted from 1.
TEST(ExamplePlants, KeepTheirWord) {
  const auto family = [](int loadCase, int orders, int shafts, int order, int shaft) {
    return results::recordOfFamilyElement(loadCase, 1, orders, shafts, 1, order, shaft, 1);
  };
  struct Value {
    const char* what;
    const char* file;
    std::int64_t record;
    double value;
    double tolerance;
  };
  struct Plant {
    const char* name;
    std::vector<Value> values;
  };
  // A motor of 2700 kW at 150 rpm and the mean term of the ice, of which the inertia of the
  // propeller keeps its share.
  constexpr double kPropeller = 4100.0 / 16;
  constexpr double kTotal = kPropeller + (260.0 + 2900.0) / 16 + 34 + 85 + 640 + 6 * 72 + 20 + 75;
  constexpr double kInIce = 2.7e6 / (5 * kPi) + 95493.0 * 0.6 * (1 - kPropeller / kTotal);
  for (const Plant& plant : {
           Plant{"pump-set",
                 {{"order 6 below", "ReciprocatingPumpTorque.bin", family(1, 20, 7, 6, 2), 283, 1},
                  {"in", "ReciprocatingPumpTorque.bin", family(4, 20, 7, 6, 2), 1064, 1},
                  {"above its critical", "ReciprocatingPumpTorque.bin", family(8, 20, 7, 6, 2), 128,
                   1},
                  {"the ripple", "ElectricMotorTorque.bin", family(4, 4, 7, 1, 1), 206, 1},
                  {"between throws", "ReciprocatingPumpTorque.bin", family(1, 20, 7, 1, 6), 12.0e3,
                   50}}},
           {"turbine-generator",
            {{"1485 rpm", "GeneratorTorque.bin", family(3, 4, 6, 2, 6), 5990, 10},
             {"1500 rpm", "GeneratorTorque.bin", family(5, 4, 6, 2, 6), 1810, 10}}},
           {"two-stroke-ship",
            {{"order 5 in mode 2", "VectorSumRpm.bin", 5, 66.016, 0.001},
             {"its sum", "VectorSum.bin", 5, 1, 0},
             {"order 4", "VectorSum.bin", 4, 0, 0.05}}},
           {"ice-ship",
            {{"mean torque in ice", "NominalTorque.bin", 12 * 13 + 1, kInIce, 1},
             {"on the propeller's line", "PropellerShaftMarks.bin", 2, 1, 0},
             {"behind the gear", "PropellerShaftMarks.bin", 3, 2, 0}}},
       }) {
    const SolverRun run(exampleInput(plant.name), 3);
    ASSERT_EQ(run.log(), "") << plant.name;
    for (const Value& value : plant.values) {
      EXPECT_NEAR(run.records(value.file).at(static_cast<std::size_t>(value.record) - 1),
                  value.value, value.tolerance)
          << plant.name << ", " << value.what;
    }
  }
}

}  // namespace
}  // namespace verenwick::test
