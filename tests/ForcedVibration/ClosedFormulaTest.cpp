#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <complex>
#include <iomanip>
#include <numbers>
#include <sstream>

#include "ForcedVibration/ShaftResults.h"
#include "ShaftLineGraph/GraphTheory.h"
#include "Support/ReadModel.h"

/// Whole runs on small damped lines against their equations of motion.
namespace verenwick::test {
namespace {

using Complex = std::complex<double>;
using std::numbers::pi;
constexpr Complex i(0, 1);

/// Viscous coefficient that acts at circular frequency w, N m s/rad.
double coefficient(const MASS_RECORD& x, double w) {
  return x.DYNMAGNIFIER == 0 ? x.ABSDAMPING : w * x.INERTIA / x.DYNMAGNIFIER;
}
double coefficient(const SHAFT_RECORD& x, double w) {
  return x.DYNMAGNIFIER == 0 ? x.ABSDAMPING : x.STIFFNESS / (x.DYNMAGNIFIER * w);
}

/// Complex deflection of every inertia at its own speed under harmonic torques, by the equations
/// of motion in one common angle and elimination without any library.
std::vector<Complex> deflectionOf(const ModelBundle& line, double w, std::vector<Complex> torque) {
  const std::size_t n = torque.size();
  std::vector<std::vector<Complex>> a(n, std::vector<Complex>(n));
  for (std::size_t p = 0; p < n; ++p) {
    const MASS_RECORD& x = line.mass.at(static_cast<std::int32_t>(p) + 1);
    a[p][p] = x.RPMRATIO * x.RPMRATIO * (-w * w * x.INERTIA + i * w * coefficient(x, w));
    torque[p] *= x.RPMRATIO;
  }
  for (std::int32_t s = 1; s <= line.shaft.number(); ++s) {
    const SHAFT_RECORD& x = line.shaft.at(s);
    const auto [org, des] = shaftEnds(line, s);
    const Complex k = x.RPMRATIO * x.RPMRATIO * (x.STIFFNESS + i * w * coefficient(x, w));
    a[index(org)][index(org)] += k;
    a[index(des)][index(des)] += k;
    a[index(org)][index(des)] -= k;
    a[index(des)][index(org)] -= k;
  }
  for (std::size_t c = 0; c < n; ++c) {
    for (std::size_t r = 0; r < n; ++r) {
      const Complex factor = r == c ? 0.0 : a[r][c] / a[c][c];
      for (std::size_t m = 0; m < n; ++m) {
        a[r][m] -= factor * a[c][m];
      }
      torque[r] -= factor * torque[c];
    }
  }
  for (std::size_t p = 0; p < n; ++p) {
    torque[p] *= line.mass.at(static_cast<std::int32_t>(p) + 1).RPMRATIO / a[p][p];
  }
  return torque;
}

constexpr double kTorque = 120.0;  ///< amplitude of the motor's excitation, N m
/// The motor's torque is kTorque sin(order w t).
constexpr Complex kForce(0, -kTorque / 2);

/// A forced run whose family files have one source of so many orders.
struct ForcedRun : SolverRun {
  /// Amplitude, angle, real and imaginary part at a place, all counted from 0.
  std::array<double, 4> element(const std::string& file, std::size_t orders, std::size_t points,
                                std::size_t L, std::size_t k, std::size_t p) const {
    const auto r = records(file);
    const std::size_t at = ((L * orders + k) * points + p) * 4;
    return {r.at(at), r.at(at + 1), r.at(at + 2), r.at(at + 3)};
  }
  /// Order 1 of a motor.
  void expectMotor(const std::string& file, std::size_t points, std::size_t L, std::size_t p,
                   Complex value, double angle) const {
    const auto [amplitude, phase, re, im] = element("ElectricMotor" + file, 4, points, L, 0, p);
    EXPECT_LT(std::abs(Complex(re, im) - value), 1e-10 * std::abs(value) + 1e-15) << file << L << p;
    EXPECT_NEAR(amplitude, 2 * std::abs(value), 2e-10 * std::abs(value) + 1e-15) << file << L;
    EXPECT_NEAR(phase, angle, 1e-9) << file << L << p;
  }
  /// A quantity of a shaft; its angle is atan2(Re, -Im).
  void expectShaft(const std::string& file, std::size_t points, std::size_t L, std::size_t p,
                   Complex value) const {
    expectMotor(file, points, L, p, value, std::atan2(value.real(), -value.imag()));
  }
  void expectPoint(const std::string& file, std::size_t points, std::size_t L, std::size_t p,
                   double value, double tolerance = 1e-10) const {
    EXPECT_NEAR(records(file).at(L * points + p), value, tolerance * value) << file << L << p;
  }
};

TEST(ClosedFormula, EveryQuantityOfAGearedLineWithACouplingAndDampers) {
  // Motor, flexible coupling, gear wheel at a quarter of the speed and a spring damper on it; on
  // the motor a rubber damper, and a viscous one whose table is good for 8, 12 and 20 Hz.
  struct Row {
    double hertz;
    double damping;
    double stiffness;
  };
  const std::vector<Row> rows = {{4, -100, -2000}, {6, 100, 0},     {8, 300, 2000},
                                 {9, 400, 3000},   {12, 700, 6000}, {24, 400, 3000}};
  const std::string text =
      "INERTIA 30 1 10 0 25\nINERTIA 29 0.25 30 0 0\nINERTIA 28 0.25 12 6 0\nINERTIA 27 1 2 0 0\n"
      "INERTIA 26 1 6 0 0\nSHAFT 1 30 29 1 40000 0 8 80 60 0 0\n"
      "SHAFT 2 29 28 0.25 26000 90 0 80 60 0 0\nSHAFT 3 30 27 1 14000 0 4 80 60 0 0\n"
      "SHAFT 4 30 26 1 0 1 0 80 60 0 0\n";
  ModelBundle line = std::move(ReadModel(text).model);
  std::ostringstream input;
  input << text << std::setprecision(17)
        << "LINEARCOUPLING 1\n1 500.0 40000.0\nSTEELSPRINGDAMPER 1\n28 29 90.0\n"
           "RUBBERDAMPER 1\n27 30 0.0\nVISCOUSDAMPER 1\n30 26 1 1\n@DIR@/table.txt\n"
           "ELECTRICMOTOR 1\n30 1000 1500 0 0 1\n2 0 0 0\n100 0 0 0\n"
           "LOADCASE\nRPM 1\nELECTRICMOTOR\n";
  for (const Row& row : rows) {  // the motor excites at twice its speed
    input << row.hertz * 30 << ' ' << kTorque * pi * row.hertz / 1000 << '\n';
  }
  ForcedRun run;
  run.directory().write("table.txt", "Hz Nms/rad Nm/rad\n8 300 2000\n12 700 6000\n20 500 4000\n");
  run.start(input.str(), 2);
  ASSERT_EQ(run.status(), 1) << run.log();
  EXPECT_EQ(run.records("ElectricMotorDeflection.bin").size(), rows.size() * 4 * 5 * 4);
  // The cubes of the diameters, for a hollow shaft too.
  const double modulus = (0.08 * 0.08 * 0.08 - 0.06 * 0.06 * 0.06) * pi / 16;
  // The waveform is sampled at 360 steps: its range misses at most 1 - cos(half a step).
  const double sampling = 1 - std::cos(pi / 360);
  for (std::size_t L = 0; L < rows.size(); ++L) {
    const double w = 2 * pi * rows[L].hertz;
    line.shaft.at(4).STIFFNESS = rows[L].stiffness;
    line.shaft.at(4).ABSDAMPING = rows[L].damping;
    const auto x = deflectionOf(line, w, {kForce, 0, 0, 0, 0});
    for (std::size_t p = 0; p < 5; ++p) {
      // The derivatives add to the angle without a wrap.
      const double angle = std::fmod(2 * pi - std::arg(x[p]), 2 * pi);
      run.expectMotor("Deflection.bin", 5, L, p, x[p], angle);
      run.expectMotor("Velocity.bin", 5, L, p, i * w * x[p], angle + pi / 2);
      run.expectMotor("Accele.bin", 5, L, p, -w * w * x[p], angle + pi);
      const double amplitude = 2 * std::abs(x[p]);
      run.expectPoint("SynthesisDeflection.bin", 5, L, p, amplitude, sampling);
      run.expectPoint("SynthesisVelocity.bin", 5, L, p, w * amplitude, sampling);
      run.expectPoint("SynthesisAcceleration.bin", 5, L, p, w * w * amplitude, sampling);
    }
    for (std::size_t s = 0; s < 4; ++s) {
      const SHAFT_RECORD& shaft = line.shaft.at(static_cast<std::int32_t>(s) + 1);
      const auto [org, des] = shaftEnds(line, static_cast<std::int32_t>(s) + 1);
      // A shaft's torque is that of its first end, and so is the twist behind its power loss; the
      // damping torque takes the velocities as they are, without a ratio.
      const double ratio = line.mass.at(org).RPMRATIO / line.mass.at(des).RPMRATIO;
      const double c = coefficient(shaft, w);
      const Complex twist = x[index(org)] - ratio * x[index(des)];
      const Complex torque = shaft.STIFFNESS * twist;
      const Complex damping = c * i * w * (x[index(org)] - x[index(des)]);
      const double nominal = kTorque / shaft.RPMRATIO;
      run.expectShaft("Torque.bin", 4, L, s, torque);
      run.expectShaft("Stress.bin", 4, L, s, torque / modulus);
      run.expectShaft("DampingTorque.bin", 4, L, s, damping);
      run.expectPoint("NominalTorque.bin", 4, L, s, nominal);
      run.expectPoint("NominalStress.bin", 4, L, s, nominal / modulus);
      run.expectPoint("SynthesisTorque.bin", 4, L, s, 2 * std::abs(torque), sampling);
      run.expectPoint("SynthesisStress.bin", 4, L, s, 2 * std::abs(torque) / modulus, sampling);
      run.expectPoint("SynthesisDampingTorque.bin", 4, L, s, 2 * std::abs(damping), sampling);
      run.expectPoint("ResultantTorque.bin", 4, L, s, 2 * std::abs(torque + damping), sampling);
      // Where the table runs below zero, the loss asks for a magnifier, and there is none.
      if (c > 0) {
        run.expectPoint("ShaftPowerLoss.bin", 4, L, s, 2 * c * w * w * std::norm(twist));
      } else {
        EXPECT_TRUE(std::isinf(run.records("ShaftPowerLoss.bin").at(L * 4 + s)));
      }
    }
  }
}

TEST(ClosedFormula, MachinesShakeTheLineWithTheirHarmonicTorques) {
  // At a reference speed of 600 rpm inertia 30 turns at 900 rpm, each machine has 90 kW.
  const std::string text =
      "INERTIA 30 1.5 10 0 30\nINERTIA 29 1 4 6 0\nINERTIA 28 1 5 0 0\n"
      "SHAFT 1 30 29 1 90000 30 0 80 60 0 0\nSHAFT 2 29 28 1 80000 20 0 80 60 0 0\n";
  const ModelBundle line = std::move(ReadModel(text).model);
  /// At an order slot: amplitude x sin(order x (omega t - phase)).
  struct Slot {
    double order;
    double amplitude;
  };
  /// The slots of a machine of so many orders: 5, 3, 2 and 1 % of a torque. One of order 0, and
  /// those beyond the count, stand still.
  const auto slots = [](std::size_t count, double torque) {
    std::vector<Slot> moving = {{2.5, 0.05 * torque}, {}, {1, 0.02 * torque}, {6, 0.01 * torque}};
    moving.resize(count);
    moving.resize(4);
    return moving;
  };
  const std::string machine = "\n2.5 0 1 6\n5 3 2 1\n";
  std::vector<Slot> crankSlots(20);
  crankSlots[0] = {1, 0.06 * 90e3 / (20 * pi)};
  crankSlots[2] = {3, 0.04 * 90e3 / (20 * pi)};
  struct Case {
    std::string family;
    std::string values;
    double rpm;
    std::vector<Slot> slots;
    std::vector<std::pair<std::size_t, double>> points;  ///< inertia and phase, degrees
    double tolerance = 1e-11;
  };
  const double torque = 90e3 / (30 * pi);
  const double rated = 200e3 / (50 * pi);
  for (const Case& c : {
           Case{
               "ElectricMotor", "\n30 200 1500 0 700 3" + machine, 900, slots(3, torque), {{0, 0}}},
           {"ElectricMotor", "\n30 200 1500 1 700 4" + machine, 700, slots(4, rated), {{0, 0}}},
           {"Generator", "\n30 200 1500 1" + machine, 900, slots(1, torque), {{0, 0}}},
           {"CentrifugalPump", "\n30 200 1500 4 40" + machine, 900, slots(4, torque), {{0, 40}}},
           {"Propeller",
            "\n30 200 1000 4 10 0 0\n400 2500 0.8 0.6 1 100 0\nMANUAL 0 0 0 5 2 15 1\n0\n",
            900,
            {{4, 0.05 * torque}, {8, 0.02 * torque}},
            {{0, 15}}},
           // The torques of its table are held in single precision.
           {"ReciprocatingPump",
            "Mud\n100 750 2 15 0 0\n29 28\n20 110\n0 0\n120 200 0.2 0 1\n2\n1 3 0 0\n6 4 0 0\n",
            600,
            crankSlots,
            {{1, 35}, {2, 125}},
            2e-7},
       }) {
    std::string keyword = c.family;
    std::transform(keyword.begin(), keyword.end(), keyword.begin(), ::toupper);
    std::ostringstream input;
    input << text << keyword << " 1 " << c.values << "LOADCASE\nRPM 1\n" << keyword << "\n600 90\n";
    ForcedRun run;
    run.start(input.str(), 2);
    ASSERT_EQ(run.status(), 1) << run.log();
    for (std::size_t k = 0; k < c.slots.size(); ++k) {
      const auto& [order, amplitude] = c.slots[k];
      std::vector<Complex> x(3);
      if (order != 0) {
        for (const auto& [inertia, degrees] : c.points) {
          x[inertia] = -i * amplitude / 2.0 * std::exp(-i * order * degrees * pi / 180.0);
        }
        x = deflectionOf(line, order * c.rpm * pi / 30, x);
      }
      for (std::size_t p = 0; p < 3; ++p) {
        const auto record = run.element(c.family + "Deflection.bin", c.slots.size(), 3, 0, k, p);
        EXPECT_LT(std::abs(Complex(record[2], record[3]) - x[p]),
                  c.tolerance * std::abs(x[p]) + 1e-20)
            << c.values << " slot " << k << " inertia " << p;
      }
    }
  }
}

}  // namespace
}  // namespace verenwick::test
