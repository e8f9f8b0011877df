#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <numeric>

#include "ComputationsSrc/ForcedDampedVibrationsFc.h"
#include "ComputationsSrc/ForcedVibrationSolver.h"
#include "RunControl/RunStopped.h"
#include "Support/ReadModel.h"

namespace verenwick::ForcedVibrationSolver {
namespace {

using Complex = std::complex<double>;
using std::numbers::pi;

/// A shaft line that owns its arrays: inertias with damping to ground, shafts with relative
/// damping.
struct Line {
  explicit Line(std::vector<double> inertias)
      : N(static_cast<std::int32_t>(inertias.size())), M(std::move(inertias)), rows(M.size()) {
    for (auto* values : {&CA, &CAR, &K, &CR, &CRR}) values->resize(M.size());
    std::iota(rows.begin(), rows.end(), 1);
    columns = rows;
  }
  void shaft(std::int32_t i, std::int32_t j, double k, double cr = 0, double crr = 0) {
    for (const auto& [values, value] : {std::pair{&K, k}, {&CR, cr}, {&CRR, crr}}) {
      for (const std::int32_t end : {i, j}) (*values)[static_cast<std::size_t>(end) - 1] += value;
      values->insert(values->end(), {-value, -value});
    }
    rows.insert(rows.end(), {i, j});
    columns.insert(columns.end(), {j, i});
  }
  SystemArrays arrays() const { return {N, rows, columns, K, M, CR, CRR, CA, CAR}; }

  std::int32_t N;
  std::vector<double> M, CA, CAR, K, CR, CRR;
  std::vector<std::int32_t> rows, columns;
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

TEST(ForcedVibrationSolver, AnOrderOfZeroKeepsTheForceAndItsNegativeArgumentIsTheAngle) {
  Line line({1, 1});
  line.shaft(1, 2, 10);
  for (const auto& [force, angle] : {std::pair{Complex(1, 0), 2 * pi},
                                     {Complex(0, -1), pi / 2},
                                     {Complex(-1, 0), pi},
                                     {Complex(0, 1), 3 * pi / 2}}) {
    const Solved solved = solve(line, 3.0, {0.0}, {force}, {0}, {2});
    EXPECT_NEAR(solved.XANGLE[1], angle, 1e-15) << force;
    EXPECT_EQ(solved.at(1), force);
    EXPECT_DOUBLE_EQ(solved.XAMP[1], 2 * std::abs(force));
    EXPECT_TRUE(std::isnan(solved.XANGLE[0])) << "no phase without a response";
  }
  // Two points on one inertia add up; each is delayed by order times phase. No solve below zero.
  const std::vector<Complex> coefficients = {{3, 4}, {1, 2}, {-2, 1}, {0, 5}};
  const Solved solved = solve(line, 1.0, {-1.0, -2.0}, coefficients, {0.3, 1.1}, {2, 2});
  const auto turned = [](Complex value, double angle) { return value * std::polar(1.0, -angle); };
  EXPECT_LT(std::abs(solved.at(1) - turned({3, 4}, -0.3) - turned({-2, 1}, -1.1)), 1e-15);
  EXPECT_LT(std::abs(solved.at(3) - turned({1, 2}, -0.6) - turned({0, 5}, -2.2)), 1e-15);
}

TEST(ForcedVibrationSolver, BandStorageGivesTheSameResponseWithoutMagnifiers) {
  Line line({4, 2, 6, 1, 3});
  for (std::int32_t i = 2; i <= line.N; ++i) line.shaft(i - 1, i, 1000.0 * i, 2.0);
  line.CA = {1, 0, 2, 0, 3};
  const auto solved = [](const Line& of, bool bandStorage) {
    return solve(of, 9.0, {0.5, 1.0}, {{10, 1}, {3, -4}}, {0.4}, {2}, bandStorage);
  };
  std::unique_ptr<ForcedSolverRecord> record;
  for (const auto kind : {MatrixKind::tridiagonal, MatrixKind::banded}) {
    if (kind == MatrixKind::banded)
      line.shaft(1, 4, 1e5, 3.0);
    INITIALIZE(record, line.arrays(), 1, true);
    EXPECT_EQ(matrixKind(*record), kind);
    const Solved full = solved(line, false);
    Line magnified = line;  // band storage has no place for damping by magnifiers
    magnified.CAR.assign(5, 0.1);
    magnified.CRR.assign(line.K.size(), 50);
    const Solved band = solved(magnified, true);
    for (std::size_t i = 0; i < full.XRE.size(); ++i) {
      EXPECT_LT(std::abs(full.at(i) - band.at(i)), 1e-9 * full.XAMP[i]) << i;
    }
  }
}

TEST(ForcedVibrationSolver, TheMatrixTakesTheLastShaftAndDampingOnlyIfAsked) {
  ComplexMatrix A{2, std::vector<Complex>(4)};
  std::unique_ptr<ForcedSolverRecord> record;
  Line line({4, 1});
  line.CA = {9, 9};
  line.shaft(1, 2, 10, 7, 8);
  line.shaft(2, 1, 3, 2);
  SystemArrays arrays = line.arrays();
  arrays.CAR = {};  // relative damping by magnifiers doesn't count without the absolute one
  INITIALIZE(record, arrays);
  MAKEMATRIX(*record, MatrixKind::general, 2.0, 0.5, A);
  EXPECT_EQ(A(1, 1), Complex(13 + 4, 0)) << "undamped, inertia adds with the opposite sign";
  EXPECT_EQ(A(2, 1), Complex(-3, 0));
  INITIALIZE(record, arrays, 1);
  MAKEMATRIX(*record, MatrixKind::general, 2.0, 0.5, A);
  EXPECT_EQ(A(1, 1), Complex(13 - 4, 9 + 9));
  EXPECT_EQ(A(1, 2), Complex(-3, -2));
}

TEST(ForcedVibrationSolver, ABrokenSystemStopsTheRunInFixedWords) {
  // An undamped inertia of its own, right at standstill.
  Line line({1, 2});
  line.shaft(1, 2, 0.0);
  const auto solved = [&](bool bandStorage) {
    return solve(line, 0.0, {1}, {1}, {0}, {1}, bandStorage);
  };
  using testing::ThrowsMessage;
  EXPECT_THAT([&] { solved(false); }, ThrowsMessage<RunStopped>("** CGETRF/ZGETRF failed"));
  EXPECT_THAT([&] { solved(true); }, ThrowsMessage<RunStopped>("** CGTSV/ZGTSV failed"));
  line.columns.pop_back();
  EXPECT_THAT([&] { solved(true); }, ThrowsMessage<RunStopped>("** PrepareMatrixStructure failed"));
}

TEST(ForcedVibrationSolver, DiagnosticsListTheSystemAndItsResponse) {
  const test::ReadModel place;
  Line line({3, 2});
  line.shaft(1, 2, 500, 5);
  const std::vector<double> orders = {0.0}, FORE = {-1.5, 0}, FOIM = {0, -2}, phase = {0, 0};
  const std::vector<std::int32_t> dof = {1, 2};
  Solved solved(2);
  const auto file = place.directory().path() / "ZBTQ_Forced.txt";
  for (const std::int32_t level : {1, 2}) {
    EXPECT_FALSE(std::filesystem::exists(file));
    FORCEDDAMPEDVIBRATIONSFC(line.arrays(), {}, 10.0, {orders, FORE, FOIM, phase, dof},
                             solved.response(), level);
  }
  EXPECT_EQ(test::readText(file),
            " === Test Forced damped vibrations Codes ===\n Mass moment of inertia\n 3 2\n"
            " Stifness matrix\n 500 500 -500 -500\n Absolute damping\n 0 0\n"
            " Absolute damping, prescirbed with magnifiers\n 0 0\n"
            " Relative damping\n 5 5 -5 -5\n"
            " Relative damping, prescribed with magnifiers\n 0 0 -0 -0\n"
            " Excitation Fourier Coefficients\n (-1.5,0) (0,-2)\n Forced vibration Fourier "
            "coefficients\n"
            " Amplitude\n 3 4\n Angle, rad\n 3.141592653589793 1.5707963267948966\n"
            " Angle, deg\n 180 90\n Real\n -1.5 0\n Imaginary\n 0 -2\n");
}

}  // namespace
}  // namespace verenwick::ForcedVibrationSolver
