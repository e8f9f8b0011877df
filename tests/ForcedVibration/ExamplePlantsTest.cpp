#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <set>
#include <sstream>

#include "InputAndChecking/DataChecking.h"
#include "InputAndChecking/InputSections.h"
#include "RunControl/Constants.h"
#include "Support/ReadModel.h"
#include "results/RecordNumbers.h"

namespace verenwick::test {
namespace {

/// What the examples say of themselves. Records are counted from 1.
TEST(ExamplePlants, KeepTheirWord) {
  const auto torque = [](int loadCase, int orders, int shafts, int order, int shaft) {
    return results::recordOfFamilyElement(loadCase, 1, orders, shafts, 1, order, shaft, 1);
  };
  // A motor of 2700 kW at 150 rpm and the mean term of the ice, of which the inertia of the
  // propeller keeps its share.
  constexpr double kPropeller = 4100.0 / 16;
  constexpr double kTotal = kPropeller + (260.0 + 2900.0) / 16 + 34 + 85 + 640 + 6 * 72 + 20 + 75;
  constexpr double kInIce = 2.7e6 / (5 * kPi) + 95493.0 * 0.6 * (1 - kPropeller / kTotal);
  struct Value {
    const char* plant;
    const char* file;
    std::int64_t record;
    double value;
    double tolerance;
  };
  std::map<std::string, SolverRun> runs;
  for (const Value& value : {
           // Order 6 in the elastic coupling below, in and above the critical speed, the ripple of
           // the motor at it, and order 1 between the throws, where the mean torque is that of two
           // whole pumps.
           Value{"pump-set", "ReciprocatingPumpTorque.bin", torque(1, 20, 7, 6, 2), 283, 1},
           {"pump-set", "ReciprocatingPumpTorque.bin", torque(4, 20, 7, 6, 2), 1064, 1},
           {"pump-set", "ReciprocatingPumpTorque.bin", torque(8, 20, 7, 6, 2), 128, 1},
           {"pump-set", "ElectricMotorTorque.bin", torque(4, 4, 7, 1, 1), 206, 1},
           {"pump-set", "ReciprocatingPumpTorque.bin", torque(1, 20, 7, 1, 6), 12.0e3, 50},
           {"pump-set", "NominalTorque.bin", 6, 45.8e3, 50},
           // The exciter shaft at 1485 and 1500 rpm.
           {"turbine-generator", "GeneratorTorque.bin", torque(3, 4, 6, 2, 6), 5990, 10},
           {"turbine-generator", "GeneratorTorque.bin", torque(5, 4, 6, 2, 6), 1810, 10},
           // Order 5 meets mode 2, order 4 doesn't count; order 5 of mode 3 follows 20 orders.
           {"two-stroke-ship", "VectorSumRpm.bin", 5, 66.016, 0.001},
           {"two-stroke-ship", "VectorSumRpm.bin", 20 + 5, 502.1 / 5, 0.01},
           {"two-stroke-ship", "VectorSum.bin", 5, 1, 0},
           {"two-stroke-ship", "VectorSum.bin", 4, 0, 0.05},
           {"ice-ship", "NominalTorque.bin", 12 * 13 + 1, kInIce, 1},
           // The ice in the mesh at 345 rpm and the mesh of the generator at 600 rpm, on the speeds
           // of the pinions.
           {"ice-ship", "SynPropIceTorque.bin", 3 * 13 + 3, 46.82e3, 10},
           {"twin-engine-gear", "SynthesisTorque.bin", 4 * 23 + 21, 453, 1},
           // Twice the blade order at 645 rpm, the converter's ripple at 695 rpm.
           {"azimuth-thruster", "PropellerTorque.bin", torque(18, 2, 5, 2, 5), 7450, 10},
           {"azimuth-thruster", "ElectricMotorTorque.bin", torque(22, 4, 5, 2, 4), 947, 1},
           // The blade order at 71 rpm with the water of that load case, and twice it at 152 rpm.
           {"gas-turbine-ship", "SynthesisTorque.bin", 6 * 6 + 2, 24.92e3, 10},
           {"gas-turbine-ship", "SynthesisTorque.bin", 26 * 6 + 3, 43.97e3, 10},
           // The heat of the rubber and the stress of the crankshaft at rated speed.
           {"fire-pump", "ShaftPowerLoss.bin", 18 * 10 + 1, 343, 1},
           {"fire-pump", "SynthesisStress.bin", 18 * 10 + 6, 43.6e6, 1e5},
       }) {
    const SolverRun& run =
        runs.try_emplace(value.plant, exampleInput(value.plant), 3).first->second;
    EXPECT_EQ(run.log(), "") << value.plant;
    EXPECT_NEAR(run.records(value.file).at(static_cast<std::size_t>(value.record) - 1), value.value,
                value.tolerance)
        << value.plant << ' ' << value.file << value.record;
  }
}

TEST(ExamplePlants, HaveAPageUseEverySectionAndAreReadWithoutWarnings) {
  std::set<std::string> unused = {"LOADCASE"};
  for (const InputSection& section : inputSections()) {
    unused.emplace(section.keyword);
  }
  ASSERT_GT(unused.size(), 15U);
  for (const auto& entry : std::filesystem::directory_iterator(VERENWICK_EXAMPLES)) {
    const std::string plant = entry.path().filename().string();
    if (!std::filesystem::exists(entry.path() / "input.txt")) {
      continue;
    }
    EXPECT_TRUE(std::filesystem::exists(entry.path() / "README.md")) << plant;
    std::istringstream lines(exampleInput(plant));
    std::string word;
    for (std::string line; word != "LOADCASE" && std::getline(lines, line); unused.erase(word)) {
      word.clear();
      std::istringstream(line) >> word;
    }
    ReadModel model;
    model.readExample(plant);
    EXPECT_TRUE(model.isOk() && DATACHECKING(model.model, 2)) << plant;
    // A mesh states its torque on the speed of its first node: the ratio is that of this node.
    for (std::int32_t row = 1; row <= GET_SHAFT_NUMBER(model.model.shaft); ++row) {
      const std::int32_t node =
          GET_MASS_IMASS(model.model.mass, GET_SHAFT_ORGNODE(model.model.shaft, row));
      EXPECT_EQ(GET_SHAFT_RPMRATIO(model.model.shaft, row),
                GET_MASS_RPMRATIO(model.model.mass, node))
          << plant << row;
    }
    std::istringstream log(model.log());
    for (std::string line; std::getline(log, line);) {
      // A bank that stands the bank angle behind the other one can't satisfy the check.
      EXPECT_TRUE(line.starts_with(" Warning: Bank B of Diesel")) << plant << line;
    }
  }
  EXPECT_EQ(unused, std::set<std::string>());
}

}  // namespace
}  // namespace verenwick::test
