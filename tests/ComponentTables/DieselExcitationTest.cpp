#include <gtest/gtest.h>

#include <cmath>

#include "ComponentTables/SampleDiesels.h"
#include "ComputationsSrc/PlainTransform.h"
#include "Excitation/HarmonicFileText.h"
#include "Excitation/TheoreticalPressure.h"
#include "RunControl/Global_Parameter.h"
#include "Support/SolverRun.h"

namespace verenwick {
namespace {

using Complex = std::complex<double>;
using sample::addBankB;
using sample::fiveCylinderTwoStroke;
using sample::setLoad;
using sample::sixCylinderFourStroke;
using sample::tableOf;

const LOADCASEGENSET_TABLE kNoGenset;

/// Torque coefficients of every row at full load.
std::vector<std::vector<Complex>> rowTorques(DIESEL_TABLE& table, std::int32_t iDiesel,
                                             double rpm) {
  setLoad(table, iDiesel, rpm, 1.0);
  CALCULATE_DIESEL_FOURIERCOEFFICIENTS(table, iDiesel, kNoGenset);
  std::vector<std::vector<Complex>> rows;
  for (std::int32_t row = 1; row <= GET_DIESEL_NCYLINDER(table, iDiesel); ++row) {
    rows.push_back(CALCULATE_DIESEL_CYLFOURIERCOEFFICIENTS(table, iDiesel, row));
  }
  return rows;
}

/// Torque in N m at a crank angle in degrees.
double torqueAt(const std::vector<Complex>& torque, const std::vector<double>& orders,
                double degrees) {
  double sum = 0.0;
  for (std::size_t k = 0; k < torque.size(); ++k) {
    const double angle = orders[k] * degrees * kPi / 180.0;
    sum += 2.0 * (torque[k].real() * std::cos(angle) - torque[k].imag() * std::sin(angle));
  }
  return sum;
}

TEST(DieselExcitation, OrdersAreThoseOfTheWholeSystem) {
  DIESEL_TABLE table;
  EXPECT_EQ(GET_DIESEL_NCYLFOURIERCOEFFICIENTS(table), 0);
  EXPECT_TRUE(GET_DIESEL_HARMONICORDER(table).empty());
  table = tableOf({fiveCylinderTwoStroke(), fiveCylinderTwoStroke()});
  ASSERT_EQ(GET_DIESEL_HARMONICORDER(table).size(), 20U);
  EXPECT_EQ(GET_DIESEL_HARMONICORDER(table)[19], 20.0);
  table.at(2).NSTROKE = 3;
  ASSERT_EQ(GET_DIESEL_HARMONICORDER(table).size(), 24U);
  EXPECT_EQ(GET_DIESEL_HARMONICORDER(table)[0], 0.5);
  EXPECT_EQ(GET_DIESEL_HARMONICORDER(table)[23], 12.0);
}

TEST(DieselExcitation, MassTorqueIsThatOfThePistonsKineticEnergy) {
  // Without gas the crank feels the change of the energy 1/2 m (dx/dt)^2 of the reciprocating mass:
  // T = -m omega^2 x' x''. Expanded in the rod ratio, with m r^2 omega^2 in front:
  // sin 1: L/4 + L^3/16 + 15 L^5/512, sin 2: -1/2 - L^4/32, sin 3: -3L/4 - 9L^3/32 - 81L^5/512,
  // sin 4: -L^2/4 - L^4/8, sin 5: 5L^3/32 + 75 L^5/512.
  DIESEL_RECORD engine = sixCylinderFourStroke();
  engine.FIRINGSTATUSA.fill(exhaustValveOpen);
  engine.FIRINGSTATUSA[5] = pistonRemoved;
  DIESEL_TABLE table = tableOf({engine});
  setLoad(table, 1, 2000.0, 0.0);
  table.at(1).POWERPERCYL = 30e3;
  CALCULATE_DIESEL_FOURIERCOEFFICIENTS(table, 1, kNoGenset);
  const auto torque = CALCULATE_DIESEL_CYLFOURIERCOEFFICIENTS(table, 1, 2);
  const double L = engine.CONRODRATIO;
  const double omega = angularSpeed(2000.0);
  const double unit = 2.521 * std::pow(0.0685 * omega, 2);
  const std::vector<double> sines{
      L / 4 + std::pow(L, 3) / 16 + 15 * std::pow(L, 5) / 512, -0.5 - std::pow(L, 4) / 32,
      -0.75 * L - 9 * std::pow(L, 3) / 32 - 81 * std::pow(L, 5) / 512,
      -L * L / 4 - std::pow(L, 4) / 8, 5 * std::pow(L, 3) / 32 + 75 * std::pow(L, 5) / 512};
  for (std::size_t order = 1; order <= sines.size(); ++order) {
    const Complex c = torque[2 * order - 1];
    EXPECT_NEAR(c.real(), 0.0, 1e-9 * unit);
    EXPECT_NEAR(-2.0 * c.imag() / unit, sines[order - 1], 1e-3 * std::fabs(sines[1])) << order;
    EXPECT_LT(std::abs(torque[2 * order - 2]), 1e-9 * unit) << "half orders of a mass";
  }
  // The expansion apart: the energy itself, point by point.
  std::vector<double> expected;
  for (int degrees = 0; degrees < 720; ++degrees) {
    const double a = degrees * kPi / 180.0;
    const double root = std::sqrt(1.0 - std::pow(L * std::sin(a), 2));
    const double x1 = std::sin(a) + L * std::sin(a) * std::cos(a) / root;
    const double x2 = std::cos(a) + L * std::cos(2 * a) / root +
                      std::pow(L, 3) * std::pow(std::sin(a) * std::cos(a), 2) / std::pow(root, 3);
    expected.push_back(-unit * x1 * x2);
  }
  const auto coefficients = plain::transform(25, expected);
  for (std::size_t k = 1; k <= 24; ++k) {
    EXPECT_LT(std::abs(torque[k - 1] - coefficients[k]), 1e-10 * unit) << k;
  }
  for (const Complex& c : CALCULATE_DIESEL_CYLFOURIERCOEFFICIENTS(table, 1, 6)) {
    EXPECT_EQ(c, Complex{}) << "no piston, no torque";
  }
}

/// The theoretical curve of a cylinder from its top dead centre on, and its tangential torque
/// coefficients without the mass, written out.
std::vector<Complex> gasTorque(const DIESEL_RECORD& d, double pMax, double pComp, double pInlet,
                               double power, bool misfire, std::size_t n, std::size_t orders) {
  std::array<double, kPressurePoints> raw{};
  double mip = 0.0;
  bool status = false;
  CALCULATEDPRESSURE({.misfire = misfire,
                      .nStroke = d.NSTROKE,
                      .bore = d.BORE,
                      .stroke = d.STROKE,
                      .lambda = d.CONRODRATIO,
                      .compRatio = d.COMPRATIO,
                      .pInlet = pInlet,
                      .tCharge = d.TCHARGEAIR,
                      .speed = d.SPEED,
                      .power = power,
                      .pMax = pMax,
                      .pComp = pComp,
                      .CompExp = d.COMPEXP,
                      .ExpaExp = d.EXPAEXP,
                      .Te = d.TE,
                      .me = d.ME,
                      .FormFactor = d.FORMFACTOR,
                      .AngleIgnition = d.ANGLEIGNITION,
                      .AngleEndOfComb = d.ANGLEENDOFCOMB,
                      .AngleExhaustStart = d.ANGLEEXHAUSTSTART,
                      .AngleInletStart = d.ANGLEINLETSTART,
                      .AngleInletClose = d.ANGLEINLETCLOSE},
                     raw, mip, status);
  const std::size_t cycle = d.NSTROKE == 2 ? 360 : 720;
  std::vector<double> torque;
  for (std::size_t i = 0; i < n; ++i) {
    const double a = static_cast<double>(i) * kPi / 180.0;
    const double beta = std::asin(d.CONRODRATIO * std::sin(a));
    const double lever = d.STROKE / 2 * std::sin(a + beta) / std::cos(beta);
    // Point 181 of the curve is top dead centre.
    torque.push_back(raw[(i + 180) % cycle] * kPi / 4 * d.BORE * d.BORE * lever);
  }
  std::vector<Complex> coefficients = plain::transform(orders + 1, torque);
  coefficients.erase(coefficients.begin());
  return coefficients;
}

void expectNear(const std::vector<Complex>& actual, const std::vector<Complex>& expected,
                double tolerance, const char* what) {
  ASSERT_EQ(actual.size(), expected.size());
  double largest = 0.0;
  for (const Complex& c : expected) {
    largest = std::max(largest, std::abs(c));
  }
  ASSERT_GT(largest, 0.0) << what;
  for (std::size_t k = 0; k < actual.size(); ++k) {
    EXPECT_LT(std::abs(actual[k] - expected[k]), tolerance * largest) << what << " " << k + 1;
  }
}

/// A row's gas torque: the mass left out.
std::vector<Complex> gasOf(DIESEL_TABLE& table, std::int32_t row) {
  const double mass = table.at(1).RECIPMASS;
  table.at(1).RECIPMASS = 0.0;
  auto torque = CALCULATE_DIESEL_CYLFOURIERCOEFFICIENTS(table, 1, row);
  table.at(1).RECIPMASS = mass;
  return torque;
}

TEST(DieselExcitation, GasTorqueIsThatOfTheCurveFromTopDeadCentreOn) {
  for (DIESEL_RECORD engine : {sixCylinderFourStroke(), fiveCylinderTwoStroke()}) {
    engine.FIRINGSTATUSA[1] = onlyCompression;
    engine.FIRINGSTATUSA[2] = partialFiring;
    engine.FIRINGPERCENTA[2] = 50.0;
    engine.HASPARTIALFIRING = true;
    DIESEL_TABLE table = tableOf({engine});
    DIESEL_RECORD& d = table.at(1);
    setLoad(table, 1, engine.MCRSPEED, 0.7);
    CALCULATE_DIESEL_FOURIERCOEFFICIENTS(table, 1, kNoGenset);
    const std::size_t n = engine.NSTROKE == 2 ? 360 : 720;
    const std::size_t orders = engine.NSTROKE == 2 ? 20 : 24;
    for (const std::int32_t row : {1, 2, 3}) {
      // The pressures take the partial power, the curve the power of a firing cylinder.
      CALCULATE_DIESEL_LOADCASESETTING(table, 1, kNoGenset, row, true);
      const auto expected =
          gasTorque(d, d.PMAXRPM, d.PCOMPRPM, d.PCHARGEAIRRPM, d.POWERPERCYL, row == 2, n, orders);
      expectNear(gasOf(table, row), expected, 1e-12, "row");
    }
  }
}

TEST(DieselExcitation, TheShipsEngineComesNearItsPrintedHarmonics) {
  // Tangential pressure amplitudes in bar of the orders 1 to 7, from the measured curves of the
  // engine at 6673 kW indicated and 99.08 rpm.
  const std::vector<double> printed{21.126, 19.316, 14.432, 10.453, 6.935, 4.578, 2.945};
  DIESEL_TABLE table = tableOf({fiveCylinderTwoStroke()});
  setLoad(table, 1, 99.08, 6673e3 * 0.95 / (table.at(1).MCRTORQUE * angularSpeed(99.08)));
  CALCULATE_DIESEL_FOURIERCOEFFICIENTS(table, 1, kNoGenset);
  const auto& gas = table.at(1).GASFCPERCYLINDER[0].NORMALGASFCBANKBANKA;
  for (std::size_t k = 0; k < printed.size(); ++k) {
    EXPECT_NEAR(2.0 * std::abs(gas[k]) / 1e5 / printed[k], 1.0, 0.07) << k + 1;
  }
}

TEST(DieselExcitation, AFiringStatusTakesItsShare) {
  DIESEL_RECORD engine = sixCylinderFourStroke();
  const std::array<std::int32_t, 6> statuses{1, 2, 3, 4, 5, 9};
  std::copy(statuses.begin(), statuses.end(), engine.FIRINGSTATUSA.begin());
  DIESEL_TABLE table = tableOf({engine});
  setLoad(table, 1, 2000.0, 1.0);
  CALCULATE_DIESEL_FOURIERCOEFFICIENTS(table, 1, kNoGenset);
  const auto isZero = [](const std::vector<Complex>& c) {
    return std::all_of(c.begin(), c.end(), [](const Complex& x) { return x == Complex{}; });
  };
  const std::array<bool, 6> hasGas{true, true, false, false, true, false};
  const std::array<bool, 6> hasMass{true, true, true, false, true, true};
  for (std::int32_t row = 1; row <= 6; ++row) {
    const auto i = static_cast<std::size_t>(row) - 1;
    EXPECT_EQ(isZero(gasOf(table, row)), !hasGas[i]) << row;
    EXPECT_EQ(gasOf(table, row) != CALCULATE_DIESEL_CYLFOURIERCOEFFICIENTS(table, 1, row),
              hasMass[i])
        << row;
  }
  EXPECT_EQ(gasOf(table, 1), gasOf(table, 5)) << "without the engine's flag the percent is unused";
  EXPECT_NE(gasOf(table, 1), gasOf(table, 2));
}

TEST(DieselExcitation, EvenFiringCancelsAllButTheFiringOrders) {
  DIESEL_RECORD engine = sixCylinderFourStroke();
  const auto total = [](DIESEL_TABLE& table) {
    const auto rows = rowTorques(table, 1, 2000.0);
    const auto orders = GET_DIESEL_HARMONICORDER(table);
    std::vector<Complex> sum(orders.size());
    for (std::size_t row = 0; row < rows.size(); ++row) {
      for (std::size_t k = 0; k < orders.size(); ++k) {
        sum[k] += rows[row][k] * std::polar(1.0, -orders[k] * table.at(1).FIRINGANGLEA[row]);
      }
    }
    return sum;
  };
  DIESEL_TABLE table = tableOf({engine});
  const auto even = total(table);
  const auto one = CALCULATE_DIESEL_CYLFOURIERCOEFFICIENTS(table, 1, 1);
  for (std::size_t k = 1; k <= 24; ++k) {
    // Orders 3, 6, 9 and 12 of a six-cylinder four-stroke engine.
    const double expected = k % 6 == 0 ? 6.0 * std::abs(one[k - 1]) : 0.0;
    EXPECT_NEAR(std::abs(even[k - 1]), expected, 1e-9 * std::abs(one[0])) << k;
  }
  engine.FIRINGSTATUSA[3] = onlyCompression;
  table = tableOf({engine});
  const auto uneven = total(table);
  for (std::size_t k = 1; k <= 5; ++k) {
    EXPECT_GT(std::abs(uneven[k - 1]), 0.2 * std::abs(one[k - 1])) << k;
  }
}

TEST(DieselExcitation, BankBFollowsBankAByItsAngles) {
  DIESEL_TABLE single = tableOf({sixCylinderFourStroke()});
  const auto bankA = rowTorques(single, 1, 2000.0)[0];
  const auto gasA = gasOf(single, 1);
  const auto orders = GET_DIESEL_HARMONICORDER(single);
  struct Case {
    double vAngle, firingShift;
  };
  // Consecutive firing, and bank B a revolution later: its gas follows, its mass doesn't care for
  // whole revolutions.
  for (const Case& c : {Case{60.0, 60.0}, Case{60.0, 420.0}, Case{0.0, 0.0}}) {
    DIESEL_RECORD engine = sixCylinderFourStroke();
    addBankB(engine, c.vAngle);
    engine.FIRINGANGLEB[0] = engine.FIRINGANGLEA[0] + c.firingShift * kPi / 180.0;
    DIESEL_TABLE table = tableOf({engine});
    const auto row = rowTorques(table, 1, 2000.0)[0];
    for (int degrees = 0; degrees < 720; degrees += 31) {
      const double massA =
          torqueAt(bankA, orders, degrees - c.vAngle) - torqueAt(gasA, orders, degrees - c.vAngle);
      EXPECT_NEAR(torqueAt(row, orders, degrees),
                  torqueAt(bankA, orders, degrees) +
                      torqueAt(gasA, orders, degrees - c.firingShift) + massA,
                  1e-2)
          << c.firingShift << " at " << degrees;
    }
  }
}

TEST(DieselExcitation, BankBHasItsOwnStatus) {
  DIESEL_RECORD engine = sixCylinderFourStroke();
  engine.FIRINGSTATUSA.fill(pistonRemoved);
  addBankB(engine, 60.0);
  engine.FIRINGSTATUSB.fill(pistonRemoved);
  engine.FIRINGSTATUSB[0] = normalFiring;
  engine.FIRINGSTATUSB[1] = onlyCompression;
  DIESEL_TABLE table = tableOf({engine});
  const auto rows = rowTorques(table, 1, 2000.0);
  const CylinderGas& gas = table.at(1).GASFCPERCYLINDER[0];
  EXPECT_EQ(gas.NORMALGASFCBANKBANKA, gas.NORMALGASFCBANKB) << "equal inputs, equal curves";
  EXPECT_GT(std::abs(rows[0][0]), 0.0);
  EXPECT_NE(rows[0], rows[1]);
  EXPECT_EQ(rows[2], std::vector<Complex>(24));
  table.at(1).ISVENGINE = false;
  EXPECT_EQ(CALCULATE_DIESEL_CYLFOURIERCOEFFICIENTS(table, 1, 1), std::vector<Complex>(24));
}

TEST(DieselExcitation, ATwoStrokeBesideAFourStrokeKeepsItsTorque) {
  DIESEL_TABLE alone = tableOf({fiveCylinderTwoStroke()});
  const auto whole = rowTorques(alone, 1, 99.0)[0];
  ASSERT_EQ(whole.size(), 20U);
  DIESEL_TABLE mixed = tableOf({fiveCylinderTwoStroke(), sixCylinderFourStroke()});
  const auto half = rowTorques(mixed, 1, 99.0)[0];
  ASSERT_EQ(half.size(), 24U);
  for (std::size_t k = 1; k <= 12; ++k) {
    EXPECT_LT(std::abs(half[2 * k - 2]), 1e-10 * std::abs(whole[0])) << k;
    EXPECT_LT(std::abs(half[2 * k - 1] - whole[k - 1]), 1e-10 * std::abs(whole[0])) << k;
  }
}

/// Engines with harmonic files of their own.
class DieselHarmonicFile : public testing::Test {
 protected:
  DieselHarmonicFile() {
    std::string results = directory_.path().string();
    SETRESULTFILEDIR(results, static_cast<std::int32_t>(results.size()));
  }
  /// A file whose row h holds h x bar / 1000 MPa in pure sine, or in pure cosine for misfiring.
  std::string write(const std::string& name, std::size_t rows, double phase) {
    test::HarmonicFileText file;
    file.columns = {0.0, 100.0};
    for (std::size_t h = 1; h <= rows; ++h) {
      file.resultant.push_back({0.0, 0.1 * static_cast<double>(h)});
      file.phase.push_back({phase, phase});
    }
    return directory_.write(name, file.text());
  }
  test::TemporaryDirectory directory_;
};

TEST_F(DieselHarmonicFile, RowsAreOrderIndicesAtTheMeanIndicatedPressure) {
  DIESEL_RECORD engine = sixCylinderFourStroke();
  engine.ISTHEORETICALPRESURE = false;
  engine.NORMALHARMONICFILE = write("normal.har", 24, 0.0);
  engine.MISHARMONICFILE = write("mis.har", 3, 90.0);
  engine.FIRINGSTATUSA[1] = onlyCompression;
  engine.FIRINGSTATUSA[2] = partialFiring;
  engine.FIRINGPERCENTA[2] = 50.0;
  engine.HASPARTIALFIRING = true;
  engine.MIPLIMIT = 10.0;
  DIESEL_TABLE table = tableOf({engine});
  bool status = true;
  LOADHALDORINFILE(table, status);
  ASSERT_TRUE(status);
  setLoad(table, 1, 1800.0, 0.6);
  CALCULATE_DIESEL_FOURIERCOEFFICIENTS(table, 1, kNoGenset);

  // Five cylinders fire; the other four make up for the half of the third.
  const double rated = CALCULATE_DIESEL_MEPMCR(table, 1, true);
  const auto mip = [&](double share) {
    const double friction = 0.1 * rated * share;
    return friction + 0.6 * (rated * share / 0.9 - friction);
  };
  const double increased = mip(4.5 / 4.0);
  // Resultant 1 Pa a Pa of mean indicated pressure and 1/100 a row: pressure -> torque by area and
  // crank radius.
  const double lever = kPi / 4 * 0.105 * 0.105 * 0.137 / 2;
  const auto expected = [&](double pressure, std::size_t k) {
    return 0.5 * static_cast<double>(k) * pressure / 100.0 * lever;
  };
  const auto normal = gasOf(table, 1);
  const auto misfiring = gasOf(table, 2);
  const auto partial = gasOf(table, 3);
  for (std::size_t k = 1; k <= 24; ++k) {
    EXPECT_NEAR(normal[k - 1].imag(), -expected(increased, k), 1e-5 * expected(increased, k));
    EXPECT_EQ(normal[k - 1].real(), 0.0);
    EXPECT_NEAR(partial[k - 1].imag(), -expected(mip(0.5), k), 1e-5 * expected(increased, k));
    // The second file ends with row 3.
    EXPECT_NEAR(misfiring[k - 1].real(), k <= 3 ? expected(increased, k) : 0.0, 1e-4) << k;
  }
  EXPECT_EQ(table.at(1).PMAXRPM, 0.0) << "no pressure model";

  // A two-stroke system has 20 orders: surplus rows are dropped.
  table.at(1).NSTROKE = 2;
  CALCULATE_DIESEL_FOURIERCOEFFICIENTS(table, 1, kNoGenset);
  EXPECT_EQ(gasOf(table, 1).size(), 20U);
}

TEST_F(DieselHarmonicFile, WithoutAFileOnlyTheMassMoves) {
  DIESEL_RECORD engine = sixCylinderFourStroke();
  engine.ISTHEORETICALPRESURE = false;
  DIESEL_TABLE table = tableOf({engine});
  const auto rows = rowTorques(table, 1, 2000.0);
  EXPECT_EQ(gasOf(table, 1), std::vector<Complex>(24));
  EXPECT_GT(std::abs(rows[0][3]), 0.0);
}

TEST(DieselExcitation, AnEngineThatNoLoadCaseNamesIsStill) {
  DIESEL_TABLE table = tableOf({sixCylinderFourStroke()});
  EXPECT_EQ(CALCULATE_DIESEL_CYLFOURIERCOEFFICIENTS(table, 1, 6), std::vector<Complex>(24));
}

TEST(DieselExcitation, SharedCurvesHaveTheDigitsOfEachRowByItself) {
  DIESEL_RECORD engine = sixCylinderFourStroke();
  addBankB(engine, 60.0);
  engine.FIRINGSTATUSA[1] = partialFiring;
  engine.FIRINGPERCENTA[1] = 70.0;
  engine.FIRINGPERCENTB[1] = 40.0;
  engine.FIRINGSTATUSA[4] = onlyCompression;
  engine.HASPARTIALFIRING = true;
  DIESEL_TABLE shared = tableOf({engine});
  setLoad(shared, 1, 1700.0, 0.8);
  DIESEL_TABLE single = shared;
  CALCULATE_DIESEL_FOURIERCOEFFICIENTS(shared, 1, kNoGenset);
  for (std::int32_t row = 1; row <= 6; ++row) {
    CALCULATE_DIESEL_FOURIERCOEFFICIENT(single, 1, kNoGenset, row, true);
    CALCULATE_DIESEL_FOURIERCOEFFICIENT(single, 1, kNoGenset, row, false);
  }
  EXPECT_EQ(shared.at(1).MASSFC, single.at(1).MASSFC);
  EXPECT_TRUE(shared.at(1).GASFCPERCYLINDER == single.at(1).GASFCPERCYLINDER);
  EXPECT_EQ(shared.at(1).PMAXRPM, single.at(1).PMAXRPM);
  const auto& gas = shared.at(1).GASFCPERCYLINDER;
  EXPECT_NE(gas[1].NORMALGASFCBANKBANKA, gas[0].NORMALGASFCBANKBANKA);
  EXPECT_NE(gas[1].NORMALGASFCBANKBANKA, gas[1].NORMALGASFCBANKB);
}

}  // namespace
}  // namespace verenwick
