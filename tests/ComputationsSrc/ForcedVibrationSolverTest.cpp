#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "ComputationsSrc/ForcedDampedVibrationsFc.h"
#include "ComputationsSrc/ForcedVibrationSolver.h"
#include "RunControl/Global_Parameter.h"
#include "RunControl/RunStopped.h"
#include "Support/SolverRun.h"

namespace verenwick::ForcedVibrationSolver {
namespace {

using Complex = std::complex<double>;
using std::numbers::pi;

/// A shaft line that owns its arrays: inertias with damping to ground, shafts with relative
/// damping.
struct Line {
  explicit Line(std::vector<double> inertias)
      : N(static_cast<std::int32_t>(inertias.size())),
        M(std::move(inertias)),
        CA(M.size()),
        CAR(M.size()),
        K(M.size()),
        CR(M.size()),
        CRR(M.size()) {
    for (std::int32_t i = 1; i <= N; ++i) {
      rows.push_back(i);
      columns.push_back(i);
    }
  }
  void shaft(std::int32_t i, std::int32_t j, double k, double cr = 0, double crr = 0) {
    enter(K, i, j, k);
    enter(CR, i, j, cr);
    enter(CRR, i, j, crr);
    rows.insert(rows.end(), {i, j});
    columns.insert(columns.end(), {j, i});
  }
  SystemArrays arrays() const { return {N, rows, columns, K, M, CR, CRR, CA, CAR}; }

  std::int32_t N;
  std::vector<double> M, CA, CAR, K, CR, CRR;
  std::vector<std::int32_t> rows, columns;

 private:
  static void enter(std::vector<double>& values, std::int32_t i, std::int32_t j, double value) {
    values[static_cast<std::size_t>(i) - 1] += value;
    values[static_cast<std::size_t>(j) - 1] += value;
    values.insert(values.end(), {-value, -value});
  }
};

struct Solved {
  std::vector<double> XAMP, XANGLE, XRE, XIM;
  explicit Solved(std::size_t size) : XAMP(size), XANGLE(size), XRE(size), XIM(size) {}
  Complex at(std::size_t i) const { return {XRE[i], XIM[i]}; }
  Response response() { return {XAMP, XANGLE, XRE, XIM}; }
};

Solved solve(const Line& line, double omega, const std::vector<double>& orders,
             const std::vector<Complex>& coefficients, const std::vector<double>& phase,
             const std::vector<std::int32_t>& dof, bool bandStorage = false) {
  Solved solved(line.M.size() * orders.size());
  std::unique_ptr<ForcedSolverRecord> record;
  INITIALIZE(record, line.arrays(), 1, bandStorage);
  SOLVEFORCED(record, omega, {orders, coefficients, phase, dof}, solved.response(), {});
  return solved;
}

/// Two inertias, force at the first: Cramer's rule on the 2 x 2 dynamic stiffness.
std::pair<Complex, Complex> twoInertias(double J1, double J2, Complex shaft, Complex ground1,
                                        double w, Complex force) {
  const Complex a = shaft - w * w * J1 + ground1;
  const Complex d = shaft - w * w * J2;
  const Complex determinant = a * d - shaft * shaft;
  return {force * d / determinant, force * shaft / determinant};
}

TEST(ForcedVibrationSolver, TwoInertiasFollowTheClosedFormulaUnderEachKindOfDamping) {
  constexpr double J1 = 3.0;
  constexpr double J2 = 2.0;
  constexpr double k = 500.0;
  const double resonance = std::sqrt(k * (1 / J1 + 1 / J2));
  constexpr Complex i(0, 1);
  struct Case {
    const char* name;
    double CA, CAR, CR, CRR;
  };
  for (const Case& damping : {Case{"absolute", 7, 0, 0, 0}, Case{"inertia magnifier", 0, 0.3, 0, 0},
                              Case{"relative", 0, 0, 5, 0}, Case{"shaft magnifier", 0, 0, 0, 25},
                              Case{"all", 7, 0.3, 5, 25}}) {
    Line line({J1, J2});
    line.CA[0] = damping.CA;
    line.CAR[0] = damping.CAR;
    line.shaft(1, 2, k, damping.CR, damping.CRR);
    const Complex force(30, -40);
    const double omega = resonance / 1.5;
    const std::vector<double> orders = {0.5, 1.5, 4.0};  // below, at and above the resonance
    const Solved solved = solve(line, omega, orders, {force, force, force}, {0}, {1});
    for (std::size_t order = 0; order < orders.size(); ++order) {
      const double w = omega * orders[order];
      const auto [x1, x2] = twoInertias(J1, J2, k + i * (damping.CRR + w * damping.CR),
                                        i * (w * damping.CA + w * w * damping.CAR), w, force);
      EXPECT_LT(std::abs(solved.at(2 * order) - x1), 1e-12 * std::abs(x1))
          << damping.name << ", order " << orders[order];
      EXPECT_LT(std::abs(solved.at(2 * order + 1) - x2), 1e-12 * std::abs(x2))
          << damping.name << ", order " << orders[order];
      EXPECT_NEAR(solved.XAMP[2 * order], 2 * std::abs(x1), 1e-12 * std::abs(x1));
    }
  }
}

TEST(ForcedVibrationSolver, AnOrderOfZeroKeepsTheForceAndItsNegativeArgumentIsTheAngle) {
  struct Case {
    Complex force;
    double angle;
  };
  for (const auto& [force, angle] :
       {Case{{1, 0}, 2 * pi}, Case{{1, -1}, pi / 4}, Case{{0, -1}, pi / 2},
        Case{{-1, -1}, 3 * pi / 4}, Case{{-1, 0}, pi}, Case{{-1, 1}, 5 * pi / 4},
        Case{{0, 1}, 3 * pi / 2}, Case{{1, 1}, 7 * pi / 4}}) {
    Line line({1, 1});
    line.shaft(1, 2, 10);
    const Solved solved = solve(line, 3.0, {0.0, -1.0}, {force, 2.0 * force}, {0}, {2});
    EXPECT_NEAR(solved.XANGLE[1], angle, 1e-15) << force;
    EXPECT_EQ(solved.at(1), force);
    EXPECT_EQ(solved.at(3), 2.0 * force) << "an order below 0 has no solve either";
    EXPECT_DOUBLE_EQ(solved.XAMP[1], 2 * std::abs(force));
    EXPECT_TRUE(std::isnan(solved.XANGLE[0])) << "no phase without a response";
  }
}

TEST(ForcedVibrationSolver, ExcitationPointsAreDelayedByOrderTimesPhaseAndAddUp) {
  Line line({1, 1});
  line.shaft(1, 2, 10);
  // Two points, two orders: order 2 turns the phase twice. No solve at an order below zero.
  const std::vector<Complex> coefficients = {{3, 4}, {1, 2}, {-2, 1}, {0, 5}};
  const Solved solved = solve(line, 1.0, {-1.0, -2.0}, coefficients, {0.3, 1.1}, {2, 2});
  const auto turned = [](Complex value, double angle) { return value * std::polar(1.0, -angle); };
  EXPECT_LT(std::abs(solved.at(1) - turned({3, 4}, -0.3) - turned({-2, 1}, -1.1)), 1e-15);
  EXPECT_LT(std::abs(solved.at(3) - turned({1, 2}, -0.6) - turned({0, 5}, -2.2)), 1e-15);
}

/// A branched line of 15 inertias with every kind of damping, stiffness over five decades.
Line branchedLine(bool hasMagnifiers) {
  Line line({40, 9, 12, 12, 12, 300, 2, 0.5, 4000, 70, 1, 6, 6, 0.02, 25});
  const std::vector<std::int32_t> parent = {0, 1, 2, 3, 4, 5, 6, 7, 6, 9, 10, 6, 12, 13, 13};
  for (std::int32_t i = 2; i <= line.N; ++i) {
    const double k = 1e4 * std::pow(10.0, i % 6);
    line.shaft(parent[static_cast<std::size_t>(i) - 1], i, k, 1e-4 * k,
               hasMagnifiers ? k / (30.0 + i) : 0.0);
  }
  for (std::size_t i = 0; i < line.M.size(); ++i) {
    line.CA[i] = i % 3 == 0 ? 20.0 : 0.0;
    line.CAR[i] = hasMagnifiers && i % 3 == 1 ? line.M[i] / 50 : 0.0;
  }
  return line;
}

TEST(ForcedVibrationSolver, BackwardErrorOfABranchedLineIsRounding) {
  const Line line = branchedLine(true);
  const std::vector<double> orders = {0.5, 1, 6, 60};
  const std::vector<Complex> coefficients = {1e4, {0, 3e3}, {-200, 50}, 10};
  const Solved solved = solve(line, 40.0, orders, coefficients, {0}, {3});
  const auto n = static_cast<std::size_t>(line.N);
  for (std::size_t k = 0; k < orders.size(); ++k) {
    const double w = 40.0 * orders[k];
    std::vector<Complex> residual(n);
    std::vector<double> scale(n);
    residual[2] = -coefficients[k];
    scale[2] = std::abs(coefficients[k]);
    const auto addTerm = [&](std::size_t i, Complex a, std::size_t j) {
      residual[i] += a * solved.at(k * n + j);
      scale[i] += std::abs(a) * std::abs(solved.at(k * n + j));
    };
    for (std::size_t e = 0; e < line.K.size(); ++e) {
      addTerm(static_cast<std::size_t>(line.rows[e]) - 1, {line.K[e], line.CRR[e] + w * line.CR[e]},
              static_cast<std::size_t>(line.columns[e]) - 1);
    }
    for (std::size_t i = 0; i < n; ++i) {
      addTerm(i, {-w * w * line.M[i], w * line.CA[i] + w * w * line.CAR[i]}, i);
    }
    const double largest = *std::max_element(scale.begin(), scale.end());
    for (std::size_t i = 0; i < n; ++i) {
      EXPECT_LT(std::abs(residual[i]), 1e-14 * largest) << "order " << orders[k] << ", row " << i;
    }
  }
}

TEST(ForcedVibrationSolver, BandStorageGivesTheSameResponseWithoutMagnifiers) {
  Line chain({4, 2, 6, 1, 3});
  for (std::int32_t i = 2; i <= chain.N; ++i) {
    chain.shaft(i - 1, i, 1000.0 * i, 2.0);
  }
  chain.CA = {1, 0, 2, 0, 3};
  Line branched = branchedLine(false);
  for (const Line* line : {&chain, &branched}) {
    std::unique_ptr<ForcedSolverRecord> record;
    INITIALIZE(record, line->arrays(), 1, true);
    EXPECT_EQ(matrixKind(*record), line == &chain ? MatrixKind::tridiagonal : MatrixKind::banded);
    EXPECT_EQ(record->KL, line == &chain ? 1 : 6);
    EXPECT_EQ(record->KU, record->KL);
    const std::vector<double> orders = {0.5, 1.0, 5.0};
    const std::vector<Complex> coefficients = {{10, 1}, {3, -4}, {0, 7}};
    const Solved full = solve(*line, 9.0, orders, coefficients, {0.4}, {2});
    const Solved band = solve(*line, 9.0, orders, coefficients, {0.4}, {2}, true);
    for (std::size_t i = 0; i < full.XRE.size(); ++i) {
      EXPECT_LT(std::abs(full.at(i) - band.at(i)), 1e-9 * full.XAMP[i]) << i;
    }
  }
  // Band storage has no place for damping by magnifiers.
  const Solved plain = solve(branched, 9.0, {1.0}, {10}, {0}, {2}, true);
  const Solved magnified = solve(branchedLine(true), 9.0, {1.0}, {10}, {0}, {2}, true);
  EXPECT_EQ(plain.XRE, magnified.XRE);
  EXPECT_EQ(plain.XIM, magnified.XIM);
}

TEST(ForcedVibrationSolver, WithoutBandStorageNoStructureIsPrepared) {
  const Line line = branchedLine(true);
  std::unique_ptr<ForcedSolverRecord> record;
  DESTROY(record);
  INITIALIZE(record, line.arrays(), 1);
  EXPECT_EQ(matrixKind(*record), MatrixKind::general);
  EXPECT_EQ(record->KL, 0);
  EXPECT_EQ(record->KU, 0);
  EXPECT_TRUE(record->PERM.empty() && record->INVP.empty());
  DESTROY(record);
  EXPECT_EQ(record, nullptr);
}

TEST(ForcedVibrationSolver, IndexListsOfDifferentLengthStopTheRunWithBandStorage) {
  const Line line = branchedLine(false);
  SystemArrays broken = line.arrays();
  broken.COLIND = broken.COLIND.subspan(1);
  std::unique_ptr<ForcedSolverRecord> record;
  EXPECT_THAT([&] { INITIALIZE(record, broken, 1, true); },
              testing::ThrowsMessage<RunStopped>("** PrepareMatrixStructure failed"));
  ASSERT_NE(record, nullptr);
  EXPECT_EQ(GETERRORFVS(*record), -1);
}

ComplexMatrix general(std::int32_t N) {
  return {N, std::vector<Complex>(static_cast<std::size_t>(N * N))};
}

TEST(ForcedVibrationSolver, TheLastOfTwoShaftsBetweenTheSameInertiasIsTheOffDiagonal) {
  Line line({1, 1});
  line.shaft(1, 2, 10, 1);
  line.shaft(2, 1, 3, 2);
  std::unique_ptr<ForcedSolverRecord> record;
  INITIALIZE(record, line.arrays(), 1);
  ComplexMatrix A = general(2);
  MAKEMATRIX(*record, MatrixKind::general, 2.0, 0.5, A);
  EXPECT_EQ(A(1, 1), Complex(13 - 1, 3));
  EXPECT_EQ(A(1, 2), Complex(-3, -2));
  EXPECT_EQ(A(2, 1), Complex(-3, -2));
}

TEST(ForcedVibrationSolver, TheUndampedMatrixAddsInertiaWithTheOppositeSign) {
  Line line({4, 1});
  line.CA = {9, 9};
  line.shaft(1, 2, 10, 7, 8);
  std::unique_ptr<ForcedSolverRecord> record;
  INITIALIZE(record, line.arrays());  // damping is asked for, it is no default
  ComplexMatrix A = general(2);
  MAKEMATRIX(*record, MatrixKind::general, 3.0, 1.0, A);
  EXPECT_EQ(A(1, 1), Complex(10 + 9 * 4, 0));
  EXPECT_EQ(A(2, 1), Complex(-10, 0));
}

TEST(ForcedVibrationSolver, ASingularSystemStopsTheRunInFixedWords) {
  // An undamped inertia of its own, right at standstill.
  Line line({1, 2});
  line.shaft(1, 2, 0.0);
  std::unique_ptr<ForcedSolverRecord> record;
  for (const auto& [bandStorage, words] :
       {std::pair{false, "** CGETRF/ZGETRF failed"}, std::pair{true, "** CGTSV/ZGTSV failed"}}) {
    INITIALIZE(record, line.arrays(), 1, bandStorage);
    Solved solved(2);
    const std::vector<double> orders = {1};
    const std::vector<Complex> force = {1};
    const std::vector<double> phase = {0};
    const std::vector<std::int32_t> dof = {1};
    EXPECT_THAT(
        [&] {
          SOLVEFORCED(record, 0.0, {orders, force, phase, dof}, solved.response(), {});
        },
        testing::ThrowsMessage<RunStopped>(words));
    EXPECT_GT(GETERRORFVS(*record), 0);
  }
}

TEST(ForcedVibrationSolver, ArraysThatDependOnTheFrequencyAreRebuiltForEveryOrder) {
  Line line({3, 2});
  line.shaft(1, 2, 500, 5);
  std::vector<double> asked;
  Line rebuilt({3, 2});
  const ArraysOfOrder arraysOfOrder = [&](double order) {
    asked.push_back(order);
    rebuilt = Line({3, 2});
    rebuilt.shaft(1, 2, 100 * order, 7);
    return rebuilt.arrays();
  };
  const std::vector<double> orders = {0.0, 0.5, 3.0};
  const std::vector<double> FORE = {1, 2, 3};
  const std::vector<double> FOIM = {4, 5, 6};
  const std::vector<double> phase = {0};
  const std::vector<std::int32_t> dof = {1};
  Solved solved(6);
  FORCEDDAMPEDVIBRATIONSFC(line.arrays(), arraysOfOrder, 10.0, {orders, FORE, FOIM, phase, dof},
                           solved.response());
  EXPECT_EQ(asked, orders);
  EXPECT_EQ(solved.at(0), Complex(1, 4));
  for (std::size_t k = 1; k < 3; ++k) {
    const double w = 10 * orders[k];
    const auto [x1, x2] =
        twoInertias(3, 2, Complex(100 * orders[k], w * 7), 0, w, {FORE[k], FOIM[k]});
    EXPECT_LT(std::abs(solved.at(2 * k) - x1), 1e-13 * std::abs(x1));
    EXPECT_LT(std::abs(solved.at(2 * k + 1) - x2), 1e-13 * std::abs(x2));
  }
}

TEST(ForcedVibrationSolver, DiagnosticsListTheSystemAndItsResponse) {
  const test::TemporaryDirectory directory;
  std::string name = directory.path().string();
  SETRESULTFILEDIR(name, static_cast<std::int32_t>(name.size()));
  Line line({3, 2});
  line.shaft(1, 2, 500, 5);
  const std::vector<double> orders = {0.0};
  const std::vector<double> FORE = {-1.5, 0};
  const std::vector<double> FOIM = {0, -2};
  const std::vector<double> phase = {0, 0};
  const std::vector<std::int32_t> dof = {1, 2};
  Solved solved(2);
  const FourierExcitation excitation{orders, FORE, FOIM, phase, dof};
  FORCEDDAMPEDVIBRATIONSFC(line.arrays(), {}, 10.0, excitation, solved.response(), 1);
  EXPECT_TRUE(test::filesIn(directory.path()).empty());
  FORCEDDAMPEDVIBRATIONSFC(line.arrays(), {}, 10.0, excitation, solved.response(), 2);
  EXPECT_EQ(test::readText(directory.path() / "ZBTQ_Forced.txt"),
            " === Test Forced damped vibrations Codes ===\n Mass moment of inertia\n 3\n 2\n"
            " Stifness matrix\n 500\n 500\n -500\n -500\n Absolute damping\n 0\n 0\n"
            " Absolute damping, prescirbed with magnifiers\n 0\n 0\n"
            " Relative damping\n 5\n 5\n -5\n -5\n"
            " Relative damping, prescribed with magnifiers\n 0\n 0\n -0\n -0\n"
            " Excitation Fourier Coefficients\n (-1.5,0)\n (0,-2)\n Forced vibration Fourier "
            "coefficients\n"
            " Amplitude\n 3\n 4\n Angle, rad\n 3.141592653589793\n 1.5707963267948966\n"
            " Angle, deg\n 180\n 90\n Real\n -1.5\n 0\n Imaginary\n 0\n -2\n");
}

}  // namespace
}  // namespace verenwick::ForcedVibrationSolver
