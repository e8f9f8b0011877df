#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

#include "Excitation/HarmonicFileText.h"
#include "InputAndChecking/DataFiles.h"
#include "Matrices/LoadCaseSetting.h"
#include "RunControl/Constants.h"
#include "Support/ReadModel.h"

namespace verenwick {
namespace {

using Complex = std::complex<double>;
using test::HarmonicFileText;
using test::ReadModel;

/// Single-precision constants of the system are good for this share of a result.
constexpr double kSevenDigits = 2e-7;

/// A pump of three rows, driven through a gear at a fifth of the reference speed.
struct Pump {
  bool isOpposite = false;
  bool isDoubleActing = false;
  double recipMass = 0.0;                          ///< kg
  std::string pressure = "0\n0 0 0 0\n0 0 0 0\n";  ///< lines behind the flag isSimplifiedPressure
  bool isSimplified = true;
  std::string sectionsBefore = "";

  std::string input() const {
    std::ostringstream text;
    text << "INERTIA 1 1.0 10 0 0\nINERTIA 2 0.2 10 0 0\nINERTIA 3 0.2 10 0 0\n"
         << "INERTIA 4 0.2 10 0 0\nSHAFT 1 1 2 1.0 1e6 0 0 0 0 0 0\n"
         << "SHAFT 2 2 3 0.2 1e6 0 0 0 0 0 0\nSHAFT 3 3 4 0.2 1e6 0 0 0 0 0 0\n"
         << sectionsBefore << "RECIPROCATINGPUMP 9 Pump\n"
         << "600 250 3 15 " << isOpposite << ' ' << isDoubleActing << "\n2 3 4\n0 240 120\n0 0 0\n"
         << "120 300 0.2 " << recipMass << ' ' << isSimplified << '\n'
         << pressure << "LOADCASE\nRPM 9\nRECIPROCATINGPUMP\n1000 360\n";
    return text.str();
  }
};

/// The pump at 200 rpm and 360 kW.
class LoadedPump {
 public:
  explicit LoadedPump(const Pump& pump, const std::string& harmonicFile = "") {
    read_.directory().write("pump.har", harmonicFile);
    read_.read(pump.input());
    EXPECT_TRUE(read_.isOk() && loadDataFiles(read_.model)) << read_.log();
    LOADCASESETTING(read_.model, 1);
  }
  const RECIPROCATINGPUMP_TABLE& table() const { return read_.model.reciprocatingPump; }
  const RECIPROCATINGPUMP_RECORD& record() const { return table().at(1); }
  std::vector<Complex> torque(std::int32_t row = 1) const {
    return CALCULATE_RECIPROCATINGPUMP_CYLFOURIERCOEFFICIENTS(table(), 1, row);
  }
  std::string log() const { return read_.log(); }

 private:
  ReadModel read_;
};

constexpr double kTorque = 360e3 / (200.0 / 30.0 * kPi);  ///< N m at 200 rpm and 360 kW

TEST(ReciprocatingPump, SharesItsPowerAmongRowsAndOppositeCylinders) {
  for (const bool isOpposite : {false, true}) {
    for (const bool isDoubleActing : {false, true}) {
      const LoadedPump pump({.isOpposite = isOpposite, .isDoubleActing = isDoubleActing});
      const RECIPROCATINGPUMP_RECORD& r = pump.record();
      const double share = isOpposite ? 60e3 : 120e3;
      for (std::size_t row = 0; row < 3; ++row) {
        EXPECT_DOUBLE_EQ(r.CYLPOWERA[row], share);
        EXPECT_DOUBLE_EQ(r.CYLPOWERB[row], isOpposite ? share : 0.0);
      }
      EXPECT_DOUBLE_EQ(r.POWERPERCYL, share);
      EXPECT_DOUBLE_EQ(r.SPEED, 200.0);
      EXPECT_DOUBLE_EQ(r.SPEEDPERCENTAGE, 0.8);
      EXPECT_DOUBLE_EQ(r.TORQUE, kTorque);
      // 60 % of the power at 80 % of the speed.
      EXPECT_DOUBLE_EQ(r.LOADPERCENTAGE, 0.75);
      EXPECT_EQ(r.ILOADCASE, 1);
      // Every side of every piston does one stroke's work a revolution.
      const int sides = 3 * (isOpposite ? 2 : 1) * (isDoubleActing ? 2 : 1);
      const double volume = kPi / 4 * 0.12 * 0.12 * 0.3;
      EXPECT_NEAR(r.MIPRPM * volume * (200.0 / 60.0) * sides, 360e3, 1e-6);
      EXPECT_NEAR(
          CALCULATE_RECIPROCATINGPUMP_MEPMCR(pump.table(), 1) * volume * (250.0 / 60.0) * sides,
          600e3, 600e3 * kSevenDigits);
    }
  }
}

TEST(ReciprocatingPump, HasTwentyWholeOrdersWhateverTheEnginesDo) {
  EXPECT_EQ(GET_RECIPROCATINGPUMP_NCYLFOURIERCOEFFICIENTS(RECIPROCATINGPUMP_TABLE{}), 0);
  const LoadedPump pump({.sectionsBefore = "DIESEL 1 FourStroke\n1000 500 4 1 0 0 0 0 1.1\n1\n0\n"
                                           "0\n1\n1\n100\n100\n200 300 0.25 20 90 0 0 0\n\n\n"});
  const std::vector<double> orders = GET_RECIPROCATINGPUMP_HARMONICORDER(pump.table(), 1);
  ASSERT_EQ(orders.size(), 20U);
  EXPECT_EQ(orders.front(), 1.0);
  EXPECT_EQ(orders.back(), 20.0);
  EXPECT_EQ(pump.torque().size(), 20U);
  EXPECT_EQ(GET_RECIPROCATINGPUMP_ICYLINDER(pump.table(), 1, 4), 3);
  EXPECT_EQ(GET_RECIPROCATINGPUMP_ICYLINDER(pump.table(), 1, 0), 0);
}

/// What a row does to the coefficient of one cylinder side at an order: the opposite cylinder half
/// a turn behind, counted twice in a double-acting pump, and the other side of the first piston.
Complex rowFactor(const Pump& pump, int order) {
  const auto delayed = [&](double degrees) {
    return std::polar(1.0, -order * degrees * kPi / 180.0);
  };
  Complex factor = 1.0;
  if (pump.isOpposite) {
    factor += delayed(180.0) * (pump.isDoubleActing ? 2.0 : 1.0);
  }
  if (pump.isDoubleActing) {
    factor += delayed(pump.isOpposite ? 360.0 : 180.0);
  }
  return factor;
}

TEST(ReciprocatingPump, TorqueTableActsByItsIntegerOrders) {
  for (const bool isOpposite : {false, true}) {
    for (const bool isDoubleActing : {false, true}) {
      // 3.9 takes the index of 3 from the order before it, and 21 has none.
      const Pump input{.isOpposite = isOpposite,
                       .isDoubleActing = isDoubleActing,
                       .pressure = "4\n3.0 3.9 20.5 21.0\n50.0 6.0 2.0 30.0\n"};
      const LoadedPump pump(input);
      EXPECT_EQ(pump.record().SIMPLIFIEDORDER[2], 3.9);
      EXPECT_DOUBLE_EQ(pump.record().RECIPROCATINGPUMPTORQUEAMP[3], 0.3 * kTorque);
      const auto torque = pump.torque(2);
      for (int k = 1; k <= 20; ++k) {
        const double amplitude = (k == 3 ? 0.06 : k == 20 ? 0.02 : 0.0) * kTorque;
        // The curve amplitude x sin has the coefficient -i/2 amplitude.
        const Complex expected = Complex(0.0, -0.5 * amplitude) * rowFactor(input, k);
        EXPECT_NEAR(std::abs(torque[static_cast<std::size_t>(k) - 1] - expected), 0.0,
                    3e-5 * amplitude)
            << k;
      }
    }
  }
}

TEST(ReciprocatingPump, OrdersBeyondTheCountAreLeftOut) {
  const LoadedPump pump({.pressure = "1\n3.0 6.0 9.0 12.0\n6.0 3.0 1.2 5.0\n"});
  const auto torque = pump.torque();
  EXPECT_NEAR(torque[2].imag(), -0.03 * kTorque, kTorque * kSevenDigits);
  for (const std::size_t k : {5U, 8U, 11U}) {
    EXPECT_EQ(torque[k], Complex(0.0));
  }
  EXPECT_DOUBLE_EQ(pump.record().RECIPROCATINGPUMPTORQUEAMP[1], 0.03 * kTorque);
  // The torque of the table is held in single precision.
  EXPECT_EQ(pump.record().TORQUEAMP[2].imag(),
            static_cast<double>(static_cast<float>(-0.5 * pump.record().TORQUE * 0.06)));
}

TEST(ReciprocatingPump, MassTorqueIsThatOfThePistonsKineticEnergy) {
  // The crank feels the change of the energy 1/2 m (dx/dt)^2 of the reciprocating mass:
  // T = -m omega^2 x' x''. Here x' and x'' come from the crank drive's geometry, and the torque's
  // sine coefficients from a sum over the revolution.
  const Pump input{.recipMass = 62.0};
  const LoadedPump pump(input);
  const double radius = 0.15;
  const double lambda = 0.2;
  const double omega = angularSpeed(200.0);
  const auto position = [&](double a) {
    return radius * (std::cos(a) + std::sqrt(1.0 - std::pow(lambda * std::sin(a), 2)) / lambda);
  };
  constexpr int kSteps = 3600;
  const double step = 2 * kPi / kSteps;
  for (int k = 1; k <= 6; ++k) {
    double sine = 0.0;
    for (int i = 0; i < kSteps; ++i) {
      // Energy at half steps; its change over a step is the work done on the mass.
      const auto speed = [&](double a) {
        return (position(a + step) - position(a - step)) / (2 * step);
      };
      const double a = i * step;
      const double change = std::pow(speed(a + step), 2) - std::pow(speed(a - step), 2);
      const double torque = -0.5 * 62.0 * omega * omega * change / (2 * step);
      sine += torque * std::sin(k * a) / kSteps;
    }
    const Complex computed = pump.torque()[static_cast<std::size_t>(k) - 1];
    const double unit = 62.0 * std::pow(radius * omega, 2);
    EXPECT_NEAR(computed.real(), 0.0, unit * 1e-12) << k;
    EXPECT_NEAR(computed.imag(), -sine, unit * 2e-5) << k;
  }
}

TEST(ReciprocatingPump, OppositeAndDoubleActingMassesAddUpAsCounted) {
  const LoadedPump single({.recipMass = 62.0});
  for (const auto& [isOpposite, isDoubleActing] :
       {std::pair{true, false}, {false, true}, {true, true}}) {
    const Pump input{.isOpposite = isOpposite, .isDoubleActing = isDoubleActing, .recipMass = 62.0};
    const LoadedPump pump(input);
    for (int k = 1; k <= 6; ++k) {
      const auto i = static_cast<std::size_t>(k) - 1;
      EXPECT_NEAR(std::abs(pump.torque()[i] - single.torque()[i] * rowFactor(input, k)), 0.0,
                  1e-5 * std::abs(single.torque()[i]))
          << k;
    }
  }
}

/// Tangential pressure of two orders at 60, 80 and 100 % speed.
const HarmonicFileText kHarmonics{.columnLabel = "Speedpercentage:",
                                  .columns = {0.6, 0.8, 1.0},
                                  .resultant = {{1.0, 2.0, 4.0}, {0.5, 0.5, 0.5}},
                                  .phase = {{10.0, 30.0, 50.0}, {0.0, -90.0, 0.0}}};

TEST(ReciprocatingPump, HarmonicFileGivesTheTangentialPressureAtItsSpeed) {
  for (const bool isOpposite : {false, true}) {
    for (const bool isDoubleActing : {false, true}) {
      const Pump input{.isOpposite = isOpposite,
                       .isDoubleActing = isDoubleActing,
                       .pressure = "@DIR@/pump.har\n",
                       .isSimplified = false};
      const LoadedPump pump(input, kHarmonics.text());
      const auto torque = pump.torque(3);
      const double arm = kPi / 4 * 0.12 * 0.12 * 0.15;
      // R sin(k angle + F) has the coefficient -i/2 R exp(i F).
      const std::vector<Complex> pressure{Complex(0.0, -0.5 * 2e6) * std::polar(1.0, kPi / 6),
                                          Complex(0.0, -0.5 * 0.5e6) * std::polar(1.0, -kPi / 2)};
      for (int k = 1; k <= 20; ++k) {
        const auto i = static_cast<std::size_t>(k) - 1;
        const Complex expected = k <= 2 ? arm * pressure[i] * rowFactor(input, k) : Complex(0.0);
        EXPECT_NEAR(std::abs(torque[i] - expected), 0.0, 1e6 * arm * 1e-6) << k;
      }
    }
  }
}

TEST(ReciprocatingPump, HarmonicFileThatCannotBeReadStopsTheLoading) {
  ReadModel read(Pump{.pressure = "@DIR@/none.har\n", .isSimplified = false}.input());
  ASSERT_TRUE(read.isOk()) << read.log();
  EXPECT_FALSE(loadDataFiles(read.model));
  EXPECT_EQ(read.log(),
            " Error occurs when reading " + read.directory().file("none.har") + " in line1\n");
}

TEST(ReciprocatingPump, WithoutALoadCaseColumnExcitesNothing) {
  for (const bool isSimplified : {true, false}) {
    Pump input{.recipMass = 62.0, .isSimplified = isSimplified};
    if (!isSimplified) {
      input.pressure = "@DIR@/none.har\n";
    }
    ReadModel read(input.input());
    ASSERT_TRUE(read.isOk()) << read.log();
    for (const Complex& torque :
         CALCULATE_RECIPROCATINGPUMP_CYLFOURIERCOEFFICIENTS(read.model.reciprocatingPump, 1, 2)) {
      EXPECT_EQ(torque, Complex(0.0));
    }
  }
}

}  // namespace
}  // namespace verenwick
