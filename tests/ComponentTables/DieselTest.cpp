#include <gtest/gtest.h>

#include <cmath>

#include "ComputationsSrc/DiscreteFourierTransform.h"
#include "Excitation/HarmonicFileText.h"
#include "Excitation/TheoreticalPressure.h"
#include "InputAndChecking/DataFiles.h"
#include "Matrices/LoadCaseSetting.h"
#include "RunControl/Constants.h"
#include "Support/ReadModel.h"

namespace verenwick {
namespace {

using Complex = std::complex<double>;
using Coefficients = std::vector<Complex>;

/// The first engine of an example plant, to be changed and loaded; its pressures are those of the
/// model.
struct Engine : test::ReadModel {
  explicit Engine(const char* plant) {
    readExample(plant);
    EXPECT_TRUE(isOk()) << log();
    record().ISGENSET = false;
  }
  /// Sets the load case of a speed in rpm and a fraction of the rated torque.
  void load(double rpm, double share) {
    model.loadCaseSpeed.set(1, rpm);
    model.loadCasePower.set(1, 1, share * record().MCRTORQUE * angularSpeed(rpm));
    LOADCASESETTING(model, 1);
  }
  /// Sets the pressures of one cylinder at the operating point.
  void setPressures(std::int32_t row, bool isBankA = true) {
    CALCULATE_DIESEL_LOADCASESETTING(table, 1, model.loadCaseGenset, row, isBankA);
  }
  Coefficients torque(std::int32_t row) const {
    return CALCULATE_DIESEL_CYLFOURIERCOEFFICIENTS(table, 1, row);
  }
  /// A row's torque without that of the mass.
  Coefficients gas(std::int32_t row) {
    const double mass = std::exchange(record().RECIPMASS, 0.0);
    Coefficients coefficients = torque(row);
    record().RECIPMASS = mass;
    return coefficients;
  }
  DIESEL_RECORD& record() { return table.at(1); }

  DIESEL_TABLE& table = model.diesel;
};

/// Six cylinders in a row, four-stroke, 2700 kW at 600 rpm; a second engine like it beside it.
constexpr const char* kRowEngine = "twin-engine-gear";
/// Twelve cylinders, four-stroke, 1560 kW at 1000 rpm, bank B 60 degrees behind bank A.
constexpr const char* kVeeEngine = "v-genset";
/// Five cylinders, two-stroke, 6350 kW at 99 rpm.
constexpr const char* kTwoStrokeEngine = "two-stroke-ship";

TEST(DieselTable, FindsTheLastEngineAndTheFirstRowWithAnInertia) {
  Engine engine(kRowEngine);
  engine.table.at(1).CYLINDERS = {21, 22, 23, 24, 25, 26, 27};
  engine.table.at(2).CYLINDERS = {21, 22, 23, 24, 23, 26};
  EXPECT_EQ(GET_DIESEL_IDIESEL_BASEDON_CYLINDERINDEX(engine.table, 23), 2);
  EXPECT_EQ(GET_DIESEL_IDIESEL_BASEDON_CYLINDERINDEX(engine.table, 27), 0) << "beyond row six";
  EXPECT_EQ(GET_DIESEL_ICYLINDER(engine.table, 2, 23), 3);
}

TEST(DieselLoad, WithoutACylinderThatFiresFullyNoneMakesUpForTheOthers) {
  Engine engine(kRowEngine);
  for (const FiringStatus status : {partialFiring, exhaustValveOpen}) {
    engine.record().FIRINGSTATUSA.fill(status);
    EXPECT_EQ(GET_DIESEL_POWERCYLPERCENTINCREASED(engine.table, 1), 1.0);
  }
}

TEST(DieselLoad, PressuresOfAVeeEngineFollowTheTorque) {
  Engine engine(kVeeEngine);
  engine.load(800.0, 0.5);
  EXPECT_NEAR(engine.record().PMAXRPM, 185e5 * (1.0 - 0.8 * 0.5), 1.0);
  // Mean effective pressure x swept volume x working cycles a second is the cylinder's power.
  const double swept = kPi / 4.0 * 0.2 * 0.2 * 0.24;
  EXPECT_NEAR(engine.record().MEPRPM * swept * 800.0 / 120.0, engine.record().POWER / 12.0, 1e-6);
  const double rated = 1560e3 / 12.0 / (swept * 1000.0 / 120.0);
  const double mepRated = CALCULATE_DIESEL_MEPMCR(engine.table, 1, true);
  EXPECT_NEAR(mepRated / rated, kPi / kPiSingle, 1e-12);
  engine.load(1000.0, 2.0);
  EXPECT_DOUBLE_EQ(engine.record().MIPRPM, 1.15 * (mepRated / 0.91)) << "overload is cut";
  // The rated pressure counts the cylinders that fire, or all.
  engine.record().FIRINGSTATUSA[2] = onlyCompression;
  engine.record().FIRINGSTATUSB[3] = exhaustValveOpen;
  EXPECT_DOUBLE_EQ(CALCULATE_DIESEL_MEPMCR(engine.table, 1, false), mepRated);
  EXPECT_DOUBLE_EQ(CALCULATE_DIESEL_MEPMCR(engine.table, 1, true), mepRated * 12 / 10);
  // All cylinders have the power of one that fires.
  engine.load(1000.0, 1.0);
  EXPECT_DOUBLE_EQ(engine.record().POWERPERCYL, 156e3);
  EXPECT_DOUBLE_EQ(CALCULATE_DIESEL_NORMALCYLPOWER(engine.table, 1), 156e3);
  engine.record().RPMRATIO = 0.5;  // behind a gear
  engine.load(1000.0, 1.0);
  EXPECT_EQ(engine.record().SPEED, 500.0);
}

TEST(DieselLoad, BankADecidesOnThePartialPowerOfBothBanks) {
  Engine engine(kVeeEngine);
  engine.record().HASPARTIALFIRING = true;
  engine.record().FIRINGSTATUSA[0] = partialFiring;
  engine.record().FIRINGPERCENTA[0] = 60.0;
  engine.record().FIRINGPERCENTB[0] = 80.0;
  engine.record().FIRINGSTATUSB[1] = partialFiring;
  engine.record().FIRINGPERCENTB[1] = 40.0;
  engine.load(1000.0, 0.8);
  constexpr double kIncrease = 11.0 / 10.0;  // of the ten that fire fully
  // In row 1 bank B fires normally, and its percent counts; in row 2 partially, and it doesn't.
  for (const auto& [row, isBankA, share] : {std::tuple{1, true, 0.6},
                                            {1, false, 0.8},
                                            {2, true, kIncrease},
                                            {2, false, kIncrease},
                                            {0, true, kIncrease}}) {
    engine.setPressures(row, isBankA);
    Engine alike(kVeeEngine);  // all cylinders at that share
    alike.load(1000.0, 0.8 * share);
    EXPECT_NEAR(engine.record().PMAXRPM, alike.record().PMAXRPM, 1e-3) << row << isBankA;
    EXPECT_NEAR(engine.record().MEPRPM, alike.record().MEPRPM, 1e-3);
  }
}

TEST(DieselLoad, AGensetTakesItsPressuresFromTheTable) {
  Engine engine(kVeeEngine);
  engine.load(1000.0, 0.5);
  engine.record().ISGENSET = true;
  engine.record().ILOADCASE = 3;
  engine.setPressures(1);
  EXPECT_EQ(engine.record().PMAXRPM, 154e5);
  EXPECT_EQ(engine.record().PCOMPRPM, 117e5);
  EXPECT_GT(engine.record().PCHARGEAIRRPM, 1e5) << "that of the load";
  EXPECT_EQ(GET_LOADCASEGENSET_PRESSURECOMP(engine.model.loadCaseGenset, 1, 5), 0.0);
}

TEST(DieselExcitation, OrdersAreThoseOfTheWholeSystem) {
  Engine engine(kRowEngine);
  engine.table.at(1).NSTROKE = 2;
  // Any engine that isn't two-stroke brings the half orders.
  for (const auto& [nStroke, orders, first, last] :
       {std::tuple{3, 24U, 0.5, 12.0}, {2, 20U, 1.0, 20.0}}) {
    engine.table.at(2).NSTROKE = nStroke;
    const std::vector<double> all = GET_DIESEL_HARMONICORDER(engine.table);
    EXPECT_EQ(std::tuple(all.size(), all.front(), all.back()), std::tuple(orders, first, last));
  }
}

TEST(DieselExcitation, MassTorqueIsThatOfThePistonsKineticEnergy) {
  // The crank feels the change of the energy 1/2 m (dx/dt)^2 of the reciprocating mass:
  // T = -m omega^2 x' x''. With m r^2 omega^2 in front its sine of order 2 is -1/2 - L^4/32 and
  // that of order 3 -3L/4 - 9L^3/32 - 81L^5/512, rod ratio L.
  Engine engine(kRowEngine);
  engine.record().FIRINGSTATUSA.fill(exhaustValveOpen);
  EXPECT_EQ(engine.torque(2), Coefficients(24)) << "no load case, no torque";
  engine.load(600.0, 1.0);
  const Coefficients torque = engine.torque(2);
  const double L = 0.24;
  const double unit = 165.0 * std::pow(0.225 * angularSpeed(600.0), 2);
  const double third = -0.75 * L - 9 * std::pow(L, 3) / 32 - 81 * std::pow(L, 5) / 512;
  EXPECT_NEAR(torque[3].real() / unit, 0.0, 1e-9);
  EXPECT_NEAR(-2.0 * torque[3].imag() / unit, -0.5 - std::pow(L, 4) / 32, 2e-5);
  EXPECT_NEAR(-2.0 * torque[5].imag() / unit, third, 2e-5);
}

/// The tangential torque of a theoretical pressure curve, N m, written out: the first harmonics of
/// the working cycle.
Coefficients curveTorque(const DIESEL_RECORD& d, bool misfire) {
  const CylinderPressureInput input{.misfire = misfire,
                                    .nStroke = d.NSTROKE,
                                    .bore = d.BORE,
                                    .stroke = d.STROKE,
                                    .lambda = d.CONRODRATIO,
                                    .compRatio = d.COMPRATIO,
                                    .pInlet = d.PCHARGEAIRRPM,
                                    .tCharge = d.TCHARGEAIR,
                                    .speed = d.SPEED,
                                    .power = d.POWERPERCYL,
                                    .pMax = d.PMAXRPM,
                                    .pComp = d.PCOMPRPM,
                                    .Te = d.TE,
                                    .me = d.ME,
                                    .FormFactor = d.FORMFACTOR,
                                    .AngleIgnition = d.ANGLEIGNITION,
                                    .AngleEndOfComb = d.ANGLEENDOFCOMB,
                                    .AngleExhaustStart = d.ANGLEEXHAUSTSTART,
                                    .AngleInletStart = d.ANGLEINLETSTART,
                                    .AngleInletClose = d.ANGLEINLETCLOSE};
  std::array<double, kPressurePoints> curve{};
  double mip = 0.0;
  bool status = false;
  CALCULATEDPRESSURE(input, curve, mip, status);
  const std::size_t cycle = d.NSTROKE == 2 ? 360 : 720;
  std::vector<double> torque;
  for (std::size_t degrees = 0; degrees < cycle; ++degrees) {
    const double a = static_cast<double>(degrees) * kPi / 180.0;
    const double beta = std::asin(d.CONRODRATIO * std::sin(a));
    const double lever = d.STROKE / 2 * std::sin(a + beta) / std::cos(beta);
    // Point 181 of the curve is top dead centre.
    torque.push_back(curve[(degrees + 180) % cycle] * kPi / 4 * d.BORE * d.BORE * lever);
  }
  Coefficients coefficients(25);
  DISCRETEFOURIERTRANSFORM(coefficients, torque);
  return coefficients;
}

TEST(DieselExcitation, GasTorqueIsThatOfTheCurveFromTopDeadCentreOn) {
  // A two-stroke beside a four-stroke keeps its torque, at every other one of the half orders.
  for (const auto& [plant, isBesideFourStroke, orders] : {std::tuple{kRowEngine, false, 24U},
                                                          {kTwoStrokeEngine, false, 20U},
                                                          {kTwoStrokeEngine, true, 24U}}) {
    Engine engine(plant);
    if (isBesideFourStroke) {
      engine.table.append();
    }
    DIESEL_RECORD& d = engine.table.at(1);
    d.FIRINGSTATUSA[1] = onlyCompression;
    d.FIRINGSTATUSA[2] = partialFiring;
    d.FIRINGPERCENTA[2] = 50.0;
    d.HASPARTIALFIRING = true;
    d.RECIPMASS = 0.0;
    engine.load(99.0, 0.7);
    for (const std::int32_t row : {1, 2, 3}) {
      // The pressures take the partial power, the curve the power of a firing cylinder.
      engine.setPressures(row);
      const Coefficients expected = curveTorque(d, row == 2);
      const Coefficients gas = engine.torque(row);
      ASSERT_EQ(gas.size(), orders);
      for (std::size_t k = 0; k < gas.size(); ++k) {
        const std::size_t step = isBesideFourStroke ? 2 : 1;
        const Complex harmonic = (k + 1) % step == 0 ? expected[(k + 1) / step] : 0.0;
        EXPECT_LT(std::abs(gas[k] - harmonic), 1e-12 * d.MCRTORQUE) << row << " " << k + 1;
      }
    }
  }
}

TEST(DieselExcitation, TheShipsEngineComesNearItsPrintedHarmonics) {
  // Tangential pressure amplitudes in bar of the orders 1 to 7, from the measured curves of the
  // engine at 6673 kW indicated and 99.08 rpm.
  const std::vector<double> printed{21.126, 19.316, 14.432, 10.453, 6.935, 4.578, 2.945};
  Engine engine(kTwoStrokeEngine);
  engine.load(99.08, 6673e3 * 0.95 / (engine.record().MCRTORQUE * angularSpeed(99.08)));
  const auto& gas = engine.record().GASFCPERCYLINDER[0].NORMALGASFCBANKBANKA;
  for (std::size_t k = 0; k < printed.size(); ++k) {
    EXPECT_NEAR(2.0 * std::abs(gas[k]) / 1e5 / printed[k], 1.0, 0.07) << k + 1;
  }
}

TEST(DieselExcitation, AFiringStatusTakesItsShare) {
  constexpr std::array statuses{1, 2, 3, 4, 5, 9};
  constexpr std::array hasGas{true, true, false, false, true, false};
  constexpr std::array hasMass{true, true, true, false, true, true};
  for (const bool isBankB : {false, true}) {
    Engine engine(kVeeEngine);
    (isBankB ? engine.record().FIRINGSTATUSA : engine.record().FIRINGSTATUSB).fill(pistonRemoved);
    std::copy(statuses.begin(), statuses.end(),
              (isBankB ? engine.record().FIRINGSTATUSB : engine.record().FIRINGSTATUSA).begin());
    engine.load(1000.0, 1.0);
    for (std::size_t i = 0; i < statuses.size(); ++i) {
      const auto row = static_cast<std::int32_t>(i) + 1;
      EXPECT_EQ(engine.gas(row) != Coefficients(24), hasGas[i]) << isBankB << statuses[i];
      EXPECT_EQ(engine.gas(row) != engine.torque(row), hasMass[i]) << isBankB << statuses[i];
    }
    // Without the engine's flag the percent is unused.
    EXPECT_NEAR(std::abs(engine.gas(1)[0] - engine.gas(5)[0]), 0.0, 1e-6);
    EXPECT_NE(engine.gas(1), engine.gas(2));
  }
}

TEST(DieselExcitation, BankBFollowsBankAByItsAngles) {
  // Consecutive firing, and bank B a revolution later: its gas follows, its mass doesn't care for
  // whole revolutions.
  for (const auto& [vAngle, firingShift] : {std::pair{60.0, 60.0}, {60.0, 420.0}, {0.0, 0.0}}) {
    Engine engine(kVeeEngine);
    engine.record().VANGLE = vAngle;
    engine.record().FIRINGANGLEB[0] = engine.record().FIRINGANGLEA[0] + firingShift * kPi / 180.0;
    engine.load(1000.0, 1.0);
    const Coefficients both = engine.torque(1);
    engine.record().FIRINGSTATUSB[0] = pistonRemoved;
    const Coefficients bankA = engine.torque(1);
    const Coefficients gas = engine.gas(1);
    for (std::size_t k = 0; k < 24; ++k) {
      const auto delayed = [&](double degrees) {
        return std::polar(1.0, -0.5 * static_cast<double>(k + 1) * degrees * kPi / 180.0);
      };
      const Complex expected =
          bankA[k] + gas[k] * delayed(firingShift) + (bankA[k] - gas[k]) * delayed(vAngle);
      EXPECT_NEAR(std::abs(both[k] - expected), 0.0, 1e-3) << firingShift << " order " << k + 1;
    }
  }
}

TEST(DieselExcitation, HarmonicFileRowsAreOrderIndicesAtTheMeanIndicatedPressure) {
  Engine engine(kRowEngine);
  // Row h of a file holds h x bar / 1000 MPa, in pure sine or, for misfiring, in pure cosine.
  const auto write = [&](const char* name, std::size_t rows, double phase) {
    test::HarmonicFileText file{.columns = {0.0, 100.0}, .resultant = {}, .phase = {}};
    for (std::size_t h = 1; h <= rows; ++h) {
      file.resultant.push_back({0.0, 0.1 * static_cast<double>(h)});
      file.phase.push_back({phase, phase});
    }
    return engine.directory().write(name, file.text());
  };
  engine.record().ISTHEORETICALPRESURE = false;
  engine.record().MIPLIMIT = 10.0;
  engine.record().NORMALHARMONICFILE = write("normal.har", 24, 0.0);
  engine.record().MISHARMONICFILE = write("mis.har", 3, 90.0);
  engine.record().FIRINGSTATUSA[1] = onlyCompression;
  engine.record().FIRINGSTATUSA[2] = partialFiring;
  engine.record().FIRINGPERCENTA[2] = 50.0;
  engine.record().HASPARTIALFIRING = true;
  ASSERT_TRUE(loadDataFiles(engine.model));
  engine.load(540.0, 0.6);
  // Five cylinders fire; the other four make up for the half of the third.
  const double rated = CALCULATE_DIESEL_MEPMCR(engine.table, 1, true);
  const auto mip = [&](double share) {
    const double friction = 0.09 * rated * share;
    return friction + 0.6 * (rated * share / 0.91 - friction);
  };
  const double increased = mip(4.5 / 4.0);
  // Resultant 1/100 Pa a row and Pa of mean indicated pressure, by area and crank radius.
  const auto expected = [&](double pressure, std::size_t k) {
    const double lever = kPi / 4 * 0.34 * 0.34 * 0.225;
    return 0.5 * static_cast<double>(k) * pressure / 100.0 * lever;
  };
  const Coefficients normal = engine.gas(1);
  const Coefficients misfiring = engine.gas(2);
  const Coefficients partial = engine.gas(3);
  for (std::size_t k = 1; k <= 24; ++k) {
    EXPECT_NEAR(normal[k - 1].imag(), -expected(increased, k), 1e-5 * expected(increased, k));
    EXPECT_NEAR(partial[k - 1].imag(), -expected(mip(0.5), k), 1e-5 * expected(increased, k));
    // The second file ends with row 3.
    EXPECT_NEAR(misfiring[k - 1].real(), k <= 3 ? expected(increased, k) : 0.0, 1e-3) << k;
  }
  // A two-stroke system has 20 orders: surplus rows are dropped.
  engine.record().NSTROKE = engine.table.at(2).NSTROKE = 2;
  engine.load(540.0, 0.6);
  EXPECT_EQ(engine.gas(1).size(), 20U);
}

}  // namespace
}  // namespace verenwick
