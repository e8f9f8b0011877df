#include <gtest/gtest.h>

#include <cmath>

#include "Excitation/HarmonicFileText.h"
#include "InputAndChecking/DataFiles.h"
#include "Matrices/LoadCaseSetting.h"
#include "RunControl/Constants.h"
#include "Support/ReadModel.h"

namespace verenwick {
namespace {

using Complex = std::complex<double>;
using test::ReadModel;

/// Tangential pressure of two orders at 60, 80 and 100 % speed.
const test::HarmonicFileText kHarmonics{.columnLabel = "Speedpercentage:",
                                        .columns = {0.6, 0.8, 1.0},
                                        .resultant = {{1.0, 2.0, 4.0}, {0.5, 0.5, 0.5}},
                                        .phase = {{10.0, 30.0, 50.0}, {0.0, -90.0, 0.0}}};

/// A pump of three rows, driven through a gear at a fifth of the reference speed, beside a
/// four-stroke engine.
struct Pump {
  bool isOpposite = false;
  bool isDoubleActing = false;
  double recipMass = 0.0;  ///< kg
  /// Flag isSimplifiedPressure and the lines behind it.
  std::string pressure = "1\n0\n0 0 0 0\n0 0 0 0\n";

  std::string input() const {
    const auto text = [](auto value) { return std::to_string(value) + ' '; };
    return "INERTIA 1 1.0 10 0 0\nINERTIA 2 0.2 10 0 0\nINERTIA 3 0.2 10 0 0\n"
           "INERTIA 4 0.2 10 0 0\nSHAFT 1 1 2 1.0 1e6 0 0 0 0 0 0\n"
           "SHAFT 2 2 3 0.2 1e6 0 0 0 0 0 0\nSHAFT 3 3 4 0.2 1e6 0 0 0 0 0 0\n"
           "DIESEL 1 FourStroke\n1000 500 4 1 0 0 0 0 1.1\n1\n0\n0\n1\n1\n100\n100\n"
           "200 300 0.25 20 90 0 0 0\n\n\nRECIPROCATINGPUMP 9 Pump\n600 250 3 15 " +
           text(isOpposite) + text(isDoubleActing) + "\n2 3 4\n0 240 120\n0 0 0\n120 300 0.2 " +
           text(recipMass) + pressure + "LOADCASE\nRPM 9\nRECIPROCATINGPUMP\n1000 360\n";
  }
};

/// The pump at 200 rpm and 360 kW.
struct LoadedPump : ReadModel {
  explicit LoadedPump(const Pump& pump) {
    directory().write("pump.har", kHarmonics.text());
    read(pump.input());
    EXPECT_TRUE(isOk() && loadDataFiles(model)) << log();
    LOADCASESETTING(model, 1);
  }
  const RECIPROCATINGPUMP_RECORD& record() const { return model.reciprocatingPump.at(1); }
  std::vector<Complex> torque(std::int32_t row = 1) const {
    return CALCULATE_RECIPROCATINGPUMP_CYLFOURIERCOEFFICIENTS(model.reciprocatingPump, 1, row);
  }
};

constexpr double kTorque = 360e3 / (200.0 / 30.0 * kPi);  ///< N m at 200 rpm and 360 kW
const std::string kTable = "1\n4\n3.0 3.9 20.5 21.0\n50.0 6.0 2.0 30.0\n";
const std::string kFile = "0\n@DIR@/pump.har\n";

TEST(ReciprocatingPump, SharesItsPowerAmongRowsAndOppositeCylinders) {
  for (const bool isOpposite : {false, true}) {
    for (const bool isDoubleActing : {false, true}) {
      const LoadedPump pump({.isOpposite = isOpposite, .isDoubleActing = isDoubleActing});
      const RECIPROCATINGPUMP_RECORD& r = pump.record();
      const double share = isOpposite ? 60e3 : 120e3;
      for (std::size_t row = 0; row < 4; ++row) {
        EXPECT_DOUBLE_EQ(r.CYLPOWERA[row], row < 3 ? share : 0.0);
        EXPECT_DOUBLE_EQ(r.CYLPOWERB[row], row < 3 && isOpposite ? share : 0.0);
      }
      EXPECT_DOUBLE_EQ(r.POWERPERCYL, share);
      // Every side of every piston does one stroke's work a revolution.
      const double volume =
          kPi / 4 * 0.12 * 0.12 * 0.3 * 3 * (isOpposite ? 2 : 1) * (isDoubleActing ? 2 : 1);
      EXPECT_NEAR(r.MIPRPM * volume * (200.0 / 60.0), 360e3, 1e-6);
      EXPECT_NEAR(CALCULATE_RECIPROCATINGPUMP_MEPMCR(pump.model.reciprocatingPump, 1) * volume *
                      (250.0 / 60.0),
                  600e3, 0.1);
    }
  }
}

TEST(ReciprocatingPump, TorqueTableActsByItsIntegerOrders) {
  // 3.9 takes the index of 3 from the order before it, and 21 has none.
  const LoadedPump pump({.pressure = kTable});
  EXPECT_EQ(pump.record().SIMPLIFIEDORDER[2], 3.9);
  EXPECT_EQ(GET_RECIPROCATINGPUMP_ICYLINDER(pump.model.reciprocatingPump, 1, 4), 3);
  const auto torque = pump.torque(2);
  for (std::size_t k = 1; k <= 20; ++k) {
    const double amplitude = (k == 3 ? 0.06 : k == 20 ? 0.02 : 0.0) * kTorque;
    // The curve amplitude x sin has the coefficient -i/2 amplitude.
    EXPECT_NEAR(std::abs(torque[k - 1] - Complex(0.0, -0.5 * amplitude)), 0.0, 2e-7 * amplitude)
        << k;
  }
  // The torque of the table is held in single precision.
  EXPECT_EQ(pump.record().TORQUEAMP[2].imag(),
            static_cast<double>(static_cast<float>(-0.5 * pump.record().TORQUE * 0.06)));
  // Orders beyond the count are left out.
  const LoadedPump first({.pressure = "1\n1\n3.0 6.0 9.0 12.0\n6.0 3.0 1.2 5.0\n"});
  EXPECT_NE(first.torque()[2], Complex(0.0));
  EXPECT_EQ(first.torque()[5], Complex(0.0));
}

TEST(ReciprocatingPump, HarmonicFileGivesTheTangentialPressureAtItsSpeed) {
  const auto torque = LoadedPump({.pressure = kFile}).torque(3);
  const double arm = kPi / 4 * 0.12 * 0.12 * 0.15;
  // R sin(k angle + F) has the coefficient -i/2 R exp(i F).
  const std::array expected{Complex(0.0, -0.5 * 2e6 * arm) * std::polar(1.0, kPi / 6),
                            Complex(0.0, -0.5 * 0.5e6 * arm) * std::polar(1.0, -kPi / 2)};
  for (std::size_t i = 0; i < 20; ++i) {
    EXPECT_NEAR(std::abs(torque[i] - (i < 2 ? expected[i] : 0.0)), 0.0, arm) << i;
  }
}

TEST(ReciprocatingPump, MassTorqueIsThatOfThePistonsKineticEnergy) {
  // T = -m omega^2 x' x'' has the sine -m r^2 omega^2 (1/2 + L^4/32) at order 2, rod ratio L.
  const auto torque = LoadedPump({.recipMass = 62.0}).torque();
  const double unit = 62.0 * std::pow(0.15 * angularSpeed(200.0), 2);
  EXPECT_NEAR(torque[1].real() / unit, 0.0, 1e-12);
  EXPECT_NEAR(2.0 * torque[1].imag() / unit, 0.5 + std::pow(0.2, 4) / 32, 1e-5);
}

TEST(ReciprocatingPump, OppositeCylindersAndOtherSidesAddUpAsCounted) {
  struct Case {
    bool isOpposite;
    bool isDoubleActing;
    double even;  ///< times the torque of one side at even orders; at odd ones it cancels
  };
  for (const Pump& input : {Pump{.recipMass = 62.0}, {.pressure = kTable}, {.pressure = kFile}}) {
    const auto single = LoadedPump(input).torque();
    // The opposite cylinder is half a turn behind, and counts twice in a double-acting pump; the
    // other side of the first piston is half a turn behind, or a whole one then.
    for (const Case& c : {Case{true, false, 2.0}, {false, true, 2.0}, {true, true, 4.0}}) {
      Pump pump = input;
      pump.isOpposite = c.isOpposite;
      pump.isDoubleActing = c.isDoubleActing;
      const auto torque = LoadedPump(pump).torque();
      for (std::size_t i = 0; i < 20; ++i) {
        const double factor = i % 2 == 0 ? 0.0 : c.even;
        EXPECT_NEAR(std::abs(torque[i] - factor * single[i]), 0.0, 3e-5 * std::abs(single[i])) << i;
      }
    }
  }
}

TEST(ReciprocatingPump, WithoutALoadCaseColumnExcitesNothing) {
  ReadModel read(Pump{.recipMass = 62.0, .pressure = kFile}.input());
  EXPECT_EQ(CALCULATE_RECIPROCATINGPUMP_CYLFOURIERCOEFFICIENTS(read.model.reciprocatingPump, 1, 2),
            std::vector<Complex>(20));
  EXPECT_FALSE(loadDataFiles(read.model)) << "the file is missing";
}

}  // namespace
}  // namespace verenwick
