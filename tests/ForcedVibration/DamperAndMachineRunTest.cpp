#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <sstream>

#include "ForcedVibration/ReferredLine.h"
#include "Support/SolverRun.h"

/// Whole runs with dampers and machines against their closed formulas.
namespace verenwick::test {
namespace {

using std::numbers::pi;
constexpr Complex i(0, 1);

/// Complex value of a family's first source in its file, with half the amplitude.
Complex valueOf(const SolverRun& run, const std::string& file, std::size_t orders,
                std::size_t points, std::size_t loadCase, std::size_t order, std::size_t point) {
  const auto records = run.records(file);
  const std::size_t first = ((loadCase * orders + order) * points + point) * 4;
  return {records.at(first + 2), records.at(first + 3)};
}

// A main mass of 10 kg m2 on the ground (1e9 kg m2), tuned to 100 rad/s, that a motor shakes with
// 120 N m at the order of its speed.
constexpr double kMainMass = 10.0;
constexpr double kMainStiffness = 1e5;
constexpr double kTorque = 120.0;

/// The link between the main mass and its damper.
struct Link {
  double stiffness;
  double damping;
  double magnifier;
};

/// The line with a damper, at circular frequencies of the motor's speed.
std::string tunedPlant(double mass, const Link& link, const std::string& damper,
                       const std::vector<double>& frequencies, int order = 1) {
  std::ostringstream text;
  text.precision(17);
  text << "INERTIA 2 1.0 1e9 0 0\nINERTIA 1 1.0 10 0 0\nINERTIA 3 1.0 " << mass
       << " 0 0\nSHAFT 1 2 1 1.0 1e5 0 0 0 0 0 0\nSHAFT 2 1 3 1.0 " << link.stiffness << ' '
       << link.damping << ' ' << link.magnifier << " 0 0 0 0\n"
       << damper << "ELECTRICMOTOR 1\n1 1000 1500 0 0 1\n"
       << order << " 0 0 0\n100 0 0 0\nLOADCASE\nRPM 1\nELECTRICMOTOR\n";
  for (const double w : frequencies) {
    text << w * 30 / pi << ' ' << kTorque * w / 1000 << '\n';
  }
  return text.str();
}

/// Amplitude of the main mass over its static twist in each load case.
std::vector<double> responses(const SolverRun& run, std::size_t loadCases) {
  std::vector<double> values;
  for (std::size_t L = 0; L < loadCases; ++L) {
    const Complex x = valueOf(run, "ElectricMotorDeflection.bin", 4, 3, L, 0, 1);
    values.push_back(2 * std::abs(x) * kMainStiffness / kTorque);
  }
  return values;
}

TEST(TunedDamper, MeetsTheFixedPointsWhateverItsDamping) {
  // A damper of mass ratio m that is tuned to 1 / (1 + m) of the main frequency passes both fixed
  // points at the amplitude sqrt(1 + 2 / m), at the squared frequency ratios
  // (1 -+ sqrt(m / (2 + m))) / (1 + m). That holds for a dashpot as for the hysteresis of rubber.
  const double m = 0.2;
  const double tuning = 100.0 / (1 + m);
  const double stiffness = m * kMainMass * tuning * tuning;
  const double peak = std::sqrt(1 + 2 / m);
  const double spread = std::sqrt(m / (2 + m));
  const std::vector<double> fixedPoints{100 * std::sqrt((1 - spread) / (1 + m)),
                                        100 * std::sqrt((1 + spread) / (1 + m))};
  const double bestDashpot = 2 * m * kMainMass * 100 * std::sqrt(3 * m / (8 * std::pow(1 + m, 3)));
  struct Case {
    const char* what;
    std::string damper;
    double damping;
    double magnifier;
    bool isBest;
  };
  const std::string spring = "STEELSPRINGDAMPER 1\n3 1 0\n";
  const std::string rubber = "RUBBERDAMPER 1\n3 1 0\n";
  for (const Case& c : {
           Case{"best dashpot", spring, bestDashpot, 0, true},
           {"weak dashpot", spring, 0.4 * bestDashpot, 0, false},
           {"strong dashpot", spring, 3 * bestDashpot, 0, false},
           {"best rubber", rubber, 0, 1.77, true},
           {"hard rubber", rubber, 0, 8, false},
           {"lossy rubber", rubber, 0, 0.7, false},
       }) {
    const Link link{stiffness, c.damping, c.magnifier};
    const SolverRun run(tunedPlant(m * kMainMass, link, c.damper, fixedPoints), 2);
    ASSERT_EQ(run.status(), 1) << run.log();
    for (const double response : responses(run, 2)) {
      EXPECT_NEAR(response, peak, 1e-6 * peak) << c.what;
    }
    // Between and around the fixed points only a well damped one stays at their height.
    std::vector<double> range;
    for (double w = 60; w <= 130; w += 1) {
      range.push_back(w);
    }
    const SolverRun sweep(tunedPlant(m * kMainMass, link, c.damper, range), 2);
    const auto curve = responses(sweep, range.size());
    const double highest = *std::max_element(curve.begin(), curve.end());
    EXPECT_GT(highest, 0.95 * peak) << c.what;
    EXPECT_EQ(highest < 1.06 * peak, c.isBest) << c.what << ' ' << highest / peak;
  }
}

TEST(RubberDamper, DampingTorqueIsTheElasticOneOverTheMagnifier) {
  const SolverRun run(tunedPlant(2.0, {14000, 0, 4}, "RUBBERDAMPER 1\n3 1 0\n", {40, 90, 140}), 2);
  ASSERT_EQ(run.status(), 1) << run.log();
  for (std::size_t L = 0; L < 3; ++L) {
    const Complex torque = valueOf(run, "ElectricMotorTorque.bin", 4, 2, L, 0, 1);
    const Complex damping = valueOf(run, "ElectricMotorDampingTorque.bin", 4, 2, L, 0, 1);
    EXPECT_LT(std::abs(damping - i * torque / 4.0), 1e-11 * std::abs(damping)) << L;
  }
}

TEST(ViscousDamper, TableOverFrequencyActsAtBetweenAndBeyondItsRows) {
  // The table is good for 8, 12 and 20 Hz. The motor excites at twice its speed.
  constexpr const char* kTable = "Hz Nms/rad Nm/rad\n8 300 2000\n12 700 6000\n20 500 4000\n";
  struct Row {
    double hertz;
    double damping;
    double stiffness;
  };
  const std::vector<Row> rows = {{4, -100, -2000}, {6, 100, 0},     {8, 300, 2000},
                                 {9, 400, 3000},   {12, 700, 6000}, {16, 600, 5000},
                                 {20, 500, 4000},  {24, 400, 3000}};
  std::vector<double> speeds;
  for (const Row& row : rows) {
    speeds.push_back(pi * row.hertz);
  }
  SolverRun run;
  run.directory().write("table.txt", kTable);
  run.start(tunedPlant(6.0, {0, 1, 0}, "VISCOUSDAMPER 1\n1 3 1 1\n@DIR@/table.txt\n", speeds, 2),
            2);
  ASSERT_EQ(run.status(), 1) << run.log();
  const auto losses = run.records("ShaftPowerLoss.bin");
  for (std::size_t L = 0; L < rows.size(); ++L) {
    const Row& row = rows[L];
    const double w = 2 * pi * row.hertz;
    const ReferredLine line{{{1e9}, {kMainMass}, {6.0}},
                            {{0, 1, kMainStiffness}, {1, 2, row.stiffness, 1, row.damping}}};
    const auto x = line.deflection(w, {0, -i * kTorque / 2.0, 0});
    const auto expectNear = [&](const char* file, std::size_t points, std::size_t point,
                                Complex expected) {
      EXPECT_LT(std::abs(valueOf(run, file, 4, points, L, 0, point) - expected),
                1e-10 * std::abs(expected) + 1e-15)
          << file << " at " << row.hertz << " Hz";
    };
    expectNear("ElectricMotorDeflection.bin", 3, 1, x[1]);
    expectNear("ElectricMotorDeflection.bin", 3, 2, x[2]);
    expectNear("ElectricMotorTorque.bin", 2, 1, row.stiffness * (x[1] - x[2]));
    expectNear("ElectricMotorDampingTorque.bin", 2, 1, row.damping * i * w * (x[1] - x[2]));
    // Where the table runs below zero, the loss asks for a magnifier, and there is none.
    if (row.damping > 0) {
      const double loss = 0.5 * row.damping * std::norm(w * 2.0 * (x[1] - x[2]));
      EXPECT_NEAR(losses.at(L * 2 + 1), loss, 1e-10 * loss) << row.hertz;
    } else {
      EXPECT_TRUE(std::isinf(losses.at(L * 2 + 1))) << row.hertz;
    }
  }
}

// Machines on a line of two inertias that turn at 1.5 and at the reference speed.
const ReferredLine kGearedLine{{{10, 1.5, 0, 30}, {4, 1, 6, 0}}, {{0, 1, 90000, 1, 30, 0}}};
constexpr const char* kGearedInertias =
    "INERTIA 1 1.5 10 0 30\nINERTIA 2 1.0 4 6 0\nSHAFT 1 1 2 1.0 90000 30 0 80 0 0 0\n";

/// A machine's torque at one order slot: amplitude x sin(order x (omega t - phase)).
struct Slot {
  double order;
  double amplitude;
};

TEST(Machine, ShakesTheLineWithItsHarmonicTorques) {
  // At a reference speed of 600 rpm the machine on inertia 1 turns at 900 rpm with 90 kW.
  const double torque = 90e3 / (30 * pi);
  const double ratedTorque = 200e3 / (50 * pi);
  struct Case {
    const char* keyword;
    const char* file;
    const char* values;
    double rpm;
    double phase;
    std::vector<Slot> slots;
  };
  for (const Case& c : {
           Case{"ELECTRICMOTOR",
                "ElectricMotorDeflection.bin",
                "1 200 1500 0 700 3",
                900,
                0,
                {{1, 0.05 * torque}, {2.5, 0.03 * torque}, {4, 0.02 * torque}, {0, 0}}},
           {"ELECTRICMOTOR",
            "ElectricMotorDeflection.bin",
            "1 200 1500 1 700 4",
            700,
            0,
            {{1, 0.05 * ratedTorque},
             {2.5, 0.03 * ratedTorque},
             {4, 0.02 * ratedTorque},
             {6, 0.01 * ratedTorque}}},
           {"GENERATOR",
            "GeneratorDeflection.bin",
            "1 200 1500 1",
            900,
            0,
            {{1, 0.05 * torque}, {0, 0}, {0, 0}, {0, 0}}},
           {"CENTRIFUGALPUMP",
            "CentrifugalPumpDeflection.bin",
            "1 200 1500 2 40",
            900,
            2 * pi / 9,
            {{1, 0.05 * torque}, {2.5, 0.03 * torque}, {0, 0}, {0, 0}}},
       }) {
    std::ostringstream input;
    input << kGearedInertias << c.keyword << " 1\n"
          << c.values << "\n1 2.5 4 6\n5 3 2 1\nLOADCASE\nRPM 1\n"
          << c.keyword << "\n600 90\n";
    const SolverRun run(input.str(), 2);
    ASSERT_EQ(run.status(), 1) << run.log();
    for (std::size_t k = 0; k < 4; ++k) {
      const Slot& slot = c.slots[k];
      const double w = slot.order * c.rpm * pi / 30;
      const Complex force = -i * slot.amplitude / 2.0 * std::exp(-i * slot.order * c.phase);
      const auto x =
          slot.order == 0 ? std::vector<Complex>(2) : kGearedLine.deflection(w, {force, 0});
      for (std::size_t p = 0; p < 2; ++p) {
        EXPECT_LT(std::abs(valueOf(run, c.file, 4, 2, 0, k, p) - x[p]),
                  1e-11 * std::abs(x[p]) + 1e-20)
            << c.values << " slot " << k << " inertia " << p;
      }
    }
  }
}

TEST(ReciprocatingPump, ShakesTheLineFromEachOfItsCranks) {
  // Two single-acting rows on the two inertias, a quarter turn apart, at 600 rpm and 90 kW.
  const std::string pump =
      "RECIPROCATINGPUMP 1 Pump\n100 750 2 15 0 0\n2 3\n20 110\n0 0\n120 200 0.2 0 1\n2\n"
      "1 3 0 0\n6 4 0 0\n";
  const SolverRun run(
      "INERTIA 1 1.5 10 0 30\nINERTIA 2 1.0 4 6 0\nINERTIA 3 1.0 5 0 0\n"
      "SHAFT 1 1 2 1.0 90000 30 0 80 0 0 0\nSHAFT 2 2 3 1.0 80000 20 0 80 0 0 0\n" +
          pump + "LOADCASE\nRPM 1\nRECIPROCATINGPUMP\n600 90\n",
      2);
  ASSERT_EQ(run.status(), 1) << run.log();
  const ReferredLine line{{{10, 1.5, 0, 30}, {4, 1, 6, 0}, {5, 1, 0, 0}},
                          {{0, 1, 90000, 1, 30, 0}, {1, 2, 80000, 1, 20, 0}}};
  const double torque = 90e3 / (20 * pi);
  for (std::size_t k = 1; k <= 20; ++k) {
    const double order = static_cast<double>(k);
    const double amplitude = torque * (k == 1 ? 0.06 : k == 3 ? 0.04 : 0.0);
    const auto force = [&](double degrees) {
      return -i * amplitude / 2.0 * std::exp(-i * order * degrees * pi / 180.0);
    };
    const auto x = line.deflection(order * 20 * pi, {0, force(35), force(125)});
    for (std::size_t p = 0; p < 3; ++p) {
      // The torques of the table are held in single precision.
      EXPECT_LT(
          std::abs(valueOf(run, "ReciprocatingPumpDeflection.bin", 20, 3, 0, k - 1, p) - x[p]),
          2e-7 * std::abs(x[p]) + 1e-20)
          << "order " << k << " inertia " << p;
    }
  }
}

/// Amplitudes of a torque order in a shaft over the load cases of a plant.
std::vector<double> torques(const SolverRun& run, const std::string& file, std::size_t orders,
                            std::size_t shafts, std::size_t order, std::size_t shaft,
                            std::size_t loadCases) {
  std::vector<double> values;
  for (std::size_t L = 0; L < loadCases; ++L) {
    values.push_back(2 * std::abs(valueOf(run, file, orders, shafts, L, order - 1, shaft - 1)));
  }
  return values;
}

TEST(ExamplePlants, PumpSetCancelsTheLowOrdersOutsideItsCrank) {
  const SolverRun run(readText(VERENWICK_EXAMPLES "/pump-set/input.txt"), 3);
  ASSERT_EQ(run.status(), 1) << run.log();
  const auto pump = [&](std::size_t order, std::size_t shaft) {
    return torques(run, "ReciprocatingPumpTorque.bin", 20, 7, order, shaft, 8);
  };
  // The pump's torque is the same at every speed.
  const double torque = 600e3 / (250 * pi / 30);
  for (std::size_t L = 0; L < 8; ++L) {
    EXPECT_LT(pump(1, 4)[L] + pump(2, 4)[L], 1.2e-3 * torque);
    EXPECT_NEAR(pump(1, 6)[L], 0.525 * torque, 3e-3 * torque);
  }
  // Order 6 meets the mode of the elastic coupling at the fourth speed, 160 rpm.
  const auto coupling = pump(6, 2);
  EXPECT_EQ(std::max_element(coupling.begin(), coupling.end()) - coupling.begin(), 3);
  EXPECT_GT(coupling[3], 8 * coupling[7]);
  const auto ripple = torques(run, "ElectricMotorTorque.bin", 4, 7, 1, 1, 8);
  EXPECT_EQ(std::max_element(ripple.begin(), ripple.end()) - ripple.begin(), 3);
}

TEST(ExamplePlants, TurbineGeneratorShakesItsExciterAtTwiceTheNetworkFrequency) {
  const SolverRun run(readText(VERENWICK_EXAMPLES "/turbine-generator/input.txt"), 3);
  ASSERT_EQ(run.status(), 1) << run.log();
  const auto exciter = torques(run, "GeneratorTorque.bin", 4, 6, 2, 6, 6);
  EXPECT_GT(exciter[2], 3 * exciter[4]) << "1485 and 1500 rpm at 12 MW";
  EXPECT_NEAR(exciter[3], exciter[4] / 4, 1e-10 * exciter[4]) << "3 and 12 MW at 1500 rpm";
}

}  // namespace
}  // namespace verenwick::test
