#include <gtest/gtest.h>

#include <cmath>
#include <numeric>
#include <sstream>

#include "ComputationsSrc/FreeUndampedVibrations.h"
#include "RunControl/Constants.h"
#include "Support/SolverRun.h"

namespace verenwick {
namespace {

using test::SolverRun;

struct Inertia {
  double J;
  double ratio = 1.0;
};
struct Shaft {
  int from;
  int to;
  double k;
  double ratio = 1.0;
};

std::string inputText(const std::vector<Inertia>& inertias, const std::vector<Shaft>& shafts) {
  std::ostringstream text;
  text.precision(17);
  int id = 0;
  for (const Inertia& inertia : inertias) {
    text << "INERTIA " << ++id << ' ' << inertia.ratio << ' ' << inertia.J << " 0 0\n";
  }
  id = 0;
  for (const Shaft& shaft : shafts) {
    text << "SHAFT " << ++id << ' ' << shaft.from << ' ' << shaft.to << ' ' << shaft.ratio << ' '
         << shaft.k << " 0 0 0 0 0 0\n";
  }
  return text.str();
}

/// Shafts that join a line of inertias one behind the other.
std::vector<Shaft> line(const std::vector<double>& k) {
  std::vector<Shaft> shafts;
  for (std::size_t s = 0; s < k.size(); ++s) {
    shafts.push_back({static_cast<int>(s) + 1, static_cast<int>(s) + 2, k[s]});
  }
  return shafts;
}

constexpr double kHertz = 2 * kPi;
constexpr double kCyclesPerMinute = kPi / 30;

TEST(FreeVibration, PublishedSystemsReproduce) {
  struct System {
    const char* source;
    std::vector<Inertia> inertias;
    std::vector<Shaft> shafts;
    double unit;  ///< of the printed frequencies, rad/s
    std::vector<double> frequencies;
    double tolerance;  ///< relative, from the digits printed
  };
  const std::vector<System> systems = {
      {"two masses on a shaft, closed formula",
       {{211.4}, {8.3}},
       line({9775000.0}),
       kHertz,
       {176.1},
       3e-4},
      {"Thomson, Theory of Vibration, Example 12.4-1",
       {{5.0}, {11.0}, {22.0}},
       line({1e5, 2e5}),
       1.0,
       {123.666, 202.658},
       5e-6},
      {"Friswell et al., Dynamics of Rotating Machines, Example 9.7.1",
       {{0.0035}, {0.0035}, {0.0035}, {0.15}, {0.05}},
       line({12000.0, 12000.0, 14000.0, 10000.0}),
       kHertz,
       {81.21, 141.21, 378.95, 536.36},
       1e-4},
      {"Friswell et al., Section 9.6.3, branched gears",
       {{3200.0}, {1025.0}, {450.0, 0.625}, {450.0, 0.625}},
       {{1, 2, 4272566.008882119},
        {2, 3, 7450763.826873114, 0.625},
        {2, 4, 7450763.826873114, 0.625}},
       kHertz,
       {10.304, 20.479, 24.423},
       6e-5},
      {"Kundur, Power System Stability and Control, Fig. 15.3",
       {{968.4616469813454},
        {1811.9605008038077},
        {9020.751631156887},
        {9309.728090336805},
        {6677.699259427825}},
       line({32093594.274480697, 71253668.02224155, 111297051.70416242, 91717014.83028199}),
       kHertz,
       {16.23, 24.08, 30.3, 44.0},
       7e-4},
      {"Mendes, Meirelles, Zampieri (2008), six-cylinder engine",
       {{0.017}, {0.009}, {0.0467}, {0.0327}, {0.0467}, {0.0467}, {0.0327}, {0.0487}, {2.075}},
       line({1106000.0, 1631000.0, 1253000.0, 1253000.0, 1678000.0, 1253000.0, 1253000.0,
             1976000.0}),
       kHertz,
       {216.584, 592.74, 984.923, 1171.02},
       1e-5},
      {"five-cylinder two-stroke ship plant, 6350 kW",
       {{8730.0},
        {578.0},
        {4920.0},
        {4920.0},
        {4920.0},
        {4920.0},
        {4920.0},
        {735.0},
        {8136.0},
        {82.095},
        {194.14},
        {21497.0}},
       line({18e6, 1508e6, 1344e6, 1344e6, 1344e6, 1344e6, 892e6, 509e6, 20e6, 62058e6, 19377e6}),
       kCyclesPerMinute,
       {330.08, 502.1, 1872.2},
       2.5e-5},
  };
  for (const System& system : systems) {
    const SolverRun run(inputText(system.inertias, system.shafts));
    ASSERT_EQ(run.status(), 1) << system.source << run.log();
    const auto omega = run.records("NaturalFrequency.bin");
    ASSERT_EQ(omega.size(), system.inertias.size());
    EXPECT_EQ(omega[0], 0.0) << system.source;
    for (std::size_t mode = 0; mode < system.frequencies.size(); ++mode) {
      EXPECT_NEAR(omega[mode + 1] / system.unit, system.frequencies[mode],
                  system.tolerance * system.frequencies[mode])
          << system.source;
    }
  }
}

/// A free uniform chain of n inertias J and shafts k has w_m = 2 sqrt(k/J) sin(m pi / 2n) and the
/// shapes cos(m pi (i - 1/2) / n), m from 0 and i from 1.
TEST(FreeVibration, AUniformChainHasItsClosedForm) {
  constexpr int kInertias = 500;
  constexpr double kJ = 2.0;
  constexpr double kK = 3e6;
  const SolverRun run(inputText(std::vector<Inertia>(kInertias, {kJ}),
                                line(std::vector<double>(kInertias - 1, kK))));
  ASSERT_EQ(run.status(), 1) << run.log();
  const auto omega = run.records("NaturalFrequency.bin");
  const auto deflection = run.records("RelativeDeflection.bin");
  const auto torque = run.records("RelativeTorque.bin");
  ASSERT_EQ(omega.size(), 500U);
  ASSERT_EQ(deflection.size(), 499U * 500U);
  ASSERT_EQ(torque.size(), 499U * 499U);
  const double highest = 2 * std::sqrt(kK / kJ);
  for (const int m : {1, 2, 17, 250, 499}) {
    // An eigenvalue is known to the rounding of the largest one.
    const double closed = highest * std::sin(m * kPi / (2 * kInertias));
    const auto mode = static_cast<std::size_t>(m);
    EXPECT_NEAR(omega[mode] * omega[mode], closed * closed, 1e-12 * highest * highest);
    const auto shape = [&](int i) {
      return std::cos(m * kPi * (i - 0.5) / kInertias) / std::cos(m * kPi * 0.5 / kInertias);
    };
    const double scale = 1 / std::fabs(std::cos(m * kPi * 0.5 / kInertias));
    for (const int i : {1, 2, 250, 499, 500}) {
      EXPECT_NEAR(deflection[(mode - 1) * 500 + static_cast<std::size_t>(i) - 1], shape(i),
                  1e-8 * scale);
    }
    for (const int s : {1, 250, 499}) {
      EXPECT_NEAR(torque[(mode - 1) * 499 + static_cast<std::size_t>(s) - 1],
                  kK * (shape(s) - shape(s + 1)), 1e-8 * kK * scale);
    }
  }
}

/// A step-down gear of any ratio is the same line referred to the fast shaft: J and k of the slow
/// side by the ratio squared. The deflections come back at the speed of each inertia, so that the
/// torques of the two sides of the mesh stand in the inverse ratio of the speeds.
TEST(FreeVibration, GearedBranchesFollowTheRatioRule) {
  constexpr double kRatio = 0.2;
  const std::vector<double> k = {1e6, 1e9, 4e7};
  const SolverRun geared(inputText({{10.0}, {20.0}, {500.0, kRatio}, {900.0, kRatio}},
                                   {{1, 2, k[0]}, {2, 3, k[1]}, {3, 4, k[2], kRatio}}));
  const double square = kRatio * kRatio;
  const SolverRun referred(inputText({{10.0}, {20.0}, {500.0 * square}, {900.0 * square}},
                                     line({k[0], k[1], k[2] * square})));
  const auto omega = geared.records("NaturalFrequency.bin");
  const auto expected = referred.records("NaturalFrequency.bin");
  const auto deflection = geared.records("RelativeDeflection.bin");
  const auto plain = referred.records("RelativeDeflection.bin");
  const auto torque = geared.records("RelativeTorque.bin");
  for (std::size_t mode = 1; mode < 4; ++mode) {
    EXPECT_NEAR(omega[mode], expected[mode], 1e-12 * expected[3]);
    for (std::size_t i = 0; i < 4; ++i) {
      const double ratio = i < 2 ? 1.0 : kRatio;
      const std::size_t at = (mode - 1) * 4 + i;
      EXPECT_NEAR(deflection[at], plain[at] * ratio, 1e-9 * std::fabs(plain[at])) << mode << i;
    }
    const std::size_t at = (mode - 1) * 4;
    EXPECT_NEAR(torque[(mode - 1) * 3 + 2], k[2] * (deflection[at + 2] - deflection[at + 3]),
                1e-9 * k[2]);
  }
}

/// Judged by backward error: K x - w2 M x against the size of its terms, and x' M y.
TEST(FreeVibration, ModesSolveTheEigenproblemAndAreOrthogonal) {
  // Inertias over seven decades, a branch, shafts over five.
  const std::vector<double> M = {8730.0, 0.578, 4920.0, 0.002, 735.0, 21497.0, 82.0, 3.5};
  const std::vector<Shaft> shafts = {{1, 2, 1.8e7}, {2, 3, 1.5e9},  {3, 4, 4e4}, {3, 5, 9e8},
                                     {5, 6, 2e7},   {7, 5, 6.2e10}, {8, 7, 1e5}};
  const auto N = static_cast<std::int32_t>(M.size());
  std::vector<std::int32_t> row(M.size());
  std::iota(row.begin(), row.end(), 1);
  std::vector<std::int32_t> column = row;
  std::vector<double> K(M.size());
  for (const Shaft& shaft : shafts) {
    for (const int end : {shaft.from, shaft.to}) {
      K[static_cast<std::size_t>(end) - 1] += shaft.k;
      row.push_back(end);
      column.push_back(shaft.from + shaft.to - end);
      K.push_back(-shaft.k);
    }
  }
  std::vector<double> omega(M.size());
  std::vector<double> V(M.size() * M.size());
  FREEUNDAMPEDVIBRATIONS(N, omega, V, row, column, K, M, 0);
  omega[0] = 0.0;
  // In the coordinates y = sqrt(M) x the matrix has this norm at most.
  double norm = 0.0;
  for (std::size_t i = 0; i < M.size(); ++i) {
    norm = std::max(norm, 2 * K[i] / M[i]);
  }
  for (std::size_t mode = 0; mode < M.size(); ++mode) {
    const double* x = &V[mode * M.size()];
    std::vector<double> residual(M.size());
    for (std::size_t e = 0; e < K.size(); ++e) {
      residual[static_cast<std::size_t>(row[e]) - 1] +=
          K[e] * x[static_cast<std::size_t>(column[e]) - 1];
    }
    for (std::size_t i = 0; i < M.size(); ++i) {
      residual[i] -= omega[mode] * omega[mode] * M[i] * x[i];
      EXPECT_LT(std::fabs(residual[i]) / std::sqrt(M[i]), 50 * 2.2e-16 * norm) << mode << ' ' << i;
    }
    for (std::size_t other = 0; other < M.size(); ++other) {
      double product = 0.0;
      for (std::size_t i = 0; i < M.size(); ++i) {
        product += x[i] * M[i] * V[other * M.size() + i];
      }
      EXPECT_NEAR(product, mode == other ? 1.0 : 0.0, 1e-13);
    }
  }
}

/// A flywheel with a viscous damper on it and nothing else: the ring has no spring, one degree of
/// freedom is left.
TEST(FreeVibration, ASingleDegreeOfFreedomHasNothingButItsRigidBodyMode) {
  const SolverRun run(
      "INERTIA 1 1.0 100.0 0.0 0.0\nINERTIA 2 1.0 10.0 0.0 0.0\n"
      "SHAFT 1 1 2 1.0 0.0 50.0 0.0 0.0 0.0 0 0\nVISCOUSDAMPER 1\n1 2 50.0 0\n");
  ASSERT_EQ(run.status(), 1) << run.log();
  EXPECT_EQ(run.records("NaturalFrequency.bin"), std::vector<double>{0.0});
  EXPECT_TRUE(run.records("RelativeDeflection.bin").empty());
  EXPECT_TRUE(run.records("RelativeTorque.bin").empty());
}

TEST(FreeVibration, AModelTooLargeForADenseProblemStopsWithAText) {
  const SolverRun run(
      inputText(std::vector<Inertia>(5001, {1.0}), line(std::vector<double>(5000, 1e6))));
  EXPECT_EQ(run.status(), 1);
  EXPECT_EQ(run.log(),
            " ** 5001 inertias are too many for the free vibration calculation, at most 5000\n");
}

}  // namespace
}  // namespace verenwick
