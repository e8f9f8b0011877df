#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <sstream>

#include "ForcedVibration/ReferredLine.h"
#include "Support/SolverRun.h"

/// Whole runs on small damped lines against their closed formulas.
namespace verenwick::test {
namespace {

using std::numbers::pi;

double rpm(double w) { return w * 30 / pi; }

/// The four records of an element of a family file with one source.
struct Element {
  double amplitude;
  double angle;
  Complex value;
};

/// One motor of one order on a line, over load cases of one speed each.
class MotorRun {
 public:
  MotorRun(const std::string& line, std::vector<double> frequencies, double torque)
      : frequencies_(std::move(frequencies)) {
    std::ostringstream input;
    input.precision(17);
    input << line;
    input << "ELECTRICMOTOR 1\n1 1000.0 1500.0 0 0.0 1\n1.0 0.0 0.0 0.0\n100.0 0.0 0.0 0.0\n";
    input << "LOADCASE\nRPM 1\nELECTRICMOTOR\n";
    for (const double w : frequencies_) {
      input << rpm(w) << ' ' << torque * w / 1000 << '\n';
    }
    run_.start(input.str(), 2);
  }
  const SolverRun& run() const { return run_; }

  /// Element of order 1 in a file of the motor's family.
  Element element(const std::string& file, std::size_t loadCase, std::size_t points,
                  std::size_t point) const {
    const auto records = run_.records(file);
    const std::size_t first = (loadCase * 4 * points + point) * 4;
    if (records.size() != frequencies_.size() * 4 * points * 4) {
      throw std::runtime_error(file + " has " + std::to_string(records.size()) + " records");
    }
    return {records[first], records[first + 1], {records[first + 2], records[first + 3]}};
  }
  double point(const std::string& file, std::size_t loadCase, std::size_t points,
               std::size_t point) const {
    return run_.records(file).at(loadCase * points + point);
  }

 private:
  std::vector<double> frequencies_;
  SolverRun run_;
};

/// The angle of deflections, velocities and accelerations: negative argument, 0 to 2 pi, and what
/// the derivatives add to it.
double phaseAngle(Complex value) {
  const double angle = -std::arg(value);
  return angle > 0 ? angle : angle + 2 * pi;
}

void expectElement(const Element& element, Complex value, double angle, const std::string& what) {
  EXPECT_LT(std::abs(element.value - value), 1e-11 * std::abs(value)) << what;
  EXPECT_NEAR(element.amplitude, 2 * std::abs(value), 2e-11 * std::abs(value)) << what;
  EXPECT_NEAR(element.angle, angle, 1e-10) << what;
}

/// The angle of shaft quantities: atan2(Re, -Im).
double shaftAngle(Complex value) { return std::atan2(value.real(), -value.imag()); }

constexpr double kTorque = 120.0;  ///< amplitude of the motor's excitation, N m
/// The motor's torque is kTorque sin(w t).
constexpr Complex kForce(0, -kTorque / 2);
constexpr Complex i(0, 1);

TEST(ClosedFormula, TwoDampedInertiasInEveryQuantityBelowAtAndAboveResonance) {
  const ReferredLine line{{{10, 1, 0, 25}, {4, 1, 6, 0}}, {{0, 1, 90000, 1, 30, 0}}};
  const double resonance = std::sqrt(90000 * (1 / 10.0 + 1 / 4.0));
  const std::vector<double> frequencies = {0.3 * resonance, resonance, 2.5 * resonance};
  const MotorRun motor(
      "INERTIA 1 1.0 10.0 0.0 25.0\nINERTIA 2 1.0 4.0 6.0 0.0\n"
      "SHAFT 1 1 2 1.0 90000.0 30.0 0.0 80.0 60.0 0 0\n",
      frequencies, kTorque);
  ASSERT_EQ(motor.run().status(), 1) << motor.run().log();
  const double modulus = (0.08 * 0.08 * 0.08 - 0.06 * 0.06 * 0.06) * pi / 16;
  for (std::size_t L = 0; L < frequencies.size(); ++L) {
    const double w = frequencies[L];
    const auto x = line.deflection(w, {kForce, 0});
    const std::string where = " at " + std::to_string(w) + " rad/s";
    for (std::size_t p = 0; p < 2; ++p) {
      const double angle = phaseAngle(x[p]);
      expectElement(motor.element("ElectricMotorDeflection.bin", L, 2, p), x[p], angle,
                    "deflection" + where);
      expectElement(motor.element("ElectricMotorVelocity.bin", L, 2, p), i * w * x[p],
                    angle + pi / 2, "velocity" + where);
      expectElement(motor.element("ElectricMotorAccele.bin", L, 2, p), -w * w * x[p], angle + pi,
                    "acceleration" + where);
    }
    const Complex torque = 90000.0 * (x[0] - x[1]);
    expectElement(motor.element("ElectricMotorTorque.bin", L, 1, 0), torque, shaftAngle(torque),
                  "torque" + where);
    expectElement(motor.element("ElectricMotorStress.bin", L, 1, 0), torque / modulus,
                  shaftAngle(torque), "stress" + where);
    const double loss = 0.5 * 30 * std::norm(w * 2.0 * (x[0] - x[1]));
    EXPECT_NEAR(motor.point("ShaftPowerLoss.bin", L, 1, 0), loss, 1e-11 * loss) << where;
    EXPECT_NEAR(motor.point("NominalTorque.bin", L, 1, 0), kTorque, 1e-11 * kTorque) << where;
    EXPECT_NEAR(motor.point("NominalStress.bin", L, 1, 0), kTorque / modulus,
                1e-11 * kTorque / modulus)
        << where;
    // The waveform of one order is sampled at 360 steps: its range misses at most 1 - cos(half
    // step).
    const double sampling = 1 - std::cos(pi / 360);
    const auto expectSynthesis = [&](const char* file, std::size_t points, std::size_t p,
                                     Complex value) {
      const double amplitude = 2 * std::abs(value);
      const double synthesis = motor.point(file, L, points, p);
      EXPECT_LE(synthesis, amplitude * (1 + 1e-11)) << file << where;
      EXPECT_GE(synthesis, amplitude * (1 - sampling)) << file << where;
    };
    expectSynthesis("SynthesisDeflection.bin", 2, 1, x[1]);
    expectSynthesis("SynthesisVelocity.bin", 2, 1, w * x[1]);
    expectSynthesis("SynthesisAcceleration.bin", 2, 0, w * w * x[0]);
    expectSynthesis("SynthesisTorque.bin", 1, 0, torque);
    expectSynthesis("SynthesisStress.bin", 1, 0, torque / modulus);
    // What goes in goes out: to ground at both ends and in the shaft.
    const double in = 2 * (kForce * std::conj(i * w * x[0])).real();
    const double toGround = 2 * w * w *
                            (line.inertias[0].coefficient(w) * std::norm(x[0]) +
                             line.inertias[1].coefficient(w) * std::norm(x[1]));
    EXPECT_NEAR(in, toGround + loss, 1e-10 * in) << where;
  }
}

TEST(ClosedFormula, ThreeInertiasAcrossAGearWithACouplingAndADamper) {
  // Motor, flexible coupling, gear wheel at a quarter of the speed, damper ring behind it.
  constexpr double kCoupling = 40000;
  const ReferredLine line{{{10, 1}, {30, 0.25}, {12, 0.25}},
                          {{0, 1, kCoupling, 1, 0, 8}, {1, 2, 26000, 0.25, 90, 0}}};
  std::vector<double> frequencies;
  frequencies.reserve(24);
  for (int step = 0; step < 24; ++step) {  // both resonances are inside
    frequencies.push_back(20 + 13 * step);
  }
  const MotorRun motor(
      "INERTIA 1 1.0 10.0 0.0 0.0\nINERTIA 2 0.25 30.0 0.0 0.0\nINERTIA 3 0.25 12.0 0.0 0.0\n"
      "SHAFT 1 1 2 1.0 40000.0 0.0 8.0 0.0 0.0 0 0\n"
      "SHAFT 2 2 3 0.25 26000.0 90.0 0.0 0.0 0.0 0 0\n"
      "LINEARCOUPLING 1\n1 500.0 40000.0\nSTEELSPRINGDAMPER 1\n3 2 90.0\n",
      frequencies, kTorque);
  ASSERT_EQ(motor.run().status(), 1) << motor.run().log();
  double largest = 0;
  double smallest = 1e9;
  for (std::size_t L = 0; L < frequencies.size(); ++L) {
    const double w = frequencies[L];
    const auto x = line.deflection(w, {kForce, 0, 0});
    const std::string where = " at " + std::to_string(w) + " rad/s";
    for (std::size_t p = 0; p < 3; ++p) {
      expectElement(motor.element("ElectricMotorDeflection.bin", L, 3, p), x[p], phaseAngle(x[p]),
                    "deflection" + where);
    }
    largest = std::max(largest, std::abs(x[0]));
    smallest = std::min(smallest, std::abs(x[0]));
    // The coupling's torque at the speed of its motor end, the damper's at the slow speed.
    const Complex coupling = kCoupling * (x[0] - 4.0 * x[1]);
    const Complex damper = 26000.0 * (x[1] - x[2]);
    expectElement(motor.element("ElectricMotorTorque.bin", L, 2, 0), coupling, shaftAngle(coupling),
                  "coupling torque" + where);
    expectElement(motor.element("ElectricMotorTorque.bin", L, 2, 1), damper, shaftAngle(damper),
                  "damper torque" + where);
    // Damping torques take the velocities as they are, without a ratio.
    const Complex inCoupling = kCoupling / (8 * w) * i * w * (x[0] - x[1]);
    const Complex inDamper = 90.0 * i * w * (x[1] - x[2]);
    expectElement(motor.element("ElectricMotorDampingTorque.bin", L, 2, 0), inCoupling,
                  shaftAngle(inCoupling), "damping torque of the coupling" + where);
    expectElement(motor.element("ElectricMotorDampingTorque.bin", L, 2, 1), inDamper,
                  shaftAngle(inDamper), "damping torque of the damper" + where);
    const double loss = 2 * w * w * kCoupling / (8 * w) * std::norm(x[0] - 4.0 * x[1]);
    EXPECT_NEAR(motor.point("ShaftPowerLoss.bin", L, 2, 0), loss, 1e-10 * loss) << where;
    const double damperLoss = 2 * w * w * 90 * std::norm(x[1] - x[2]);
    EXPECT_NEAR(motor.point("ShaftPowerLoss.bin", L, 2, 1), damperLoss, 1e-10 * damperLoss);
    const double in = 2 * (kForce * std::conj(i * w * x[0])).real();
    EXPECT_NEAR(in, loss + damperLoss, 1e-9 * in) << where;
    const double synthesised = motor.point("SynthesisDampingTorque.bin", L, 2, 1);
    EXPECT_NEAR(synthesised, 2 * std::abs(inDamper), 1e-4 * synthesised) << where;
    // Spring and damper are a quarter period apart.
    const double resultant = motor.point("ResultantTorque.bin", L, 2, 1);
    EXPECT_NEAR(resultant, 2 * std::abs(damper + inDamper), 1e-4 * resultant) << where;
  }
  EXPECT_GT(largest, 10 * smallest) << "the speeds go through resonances";
}

TEST(ClosedFormula, TheOptimumViscousDamperOfAMainMass) {
  // Frequency ratio, and amplitude of the main mass over its static twist, at equal inertias of
  // mass and ring and the damping that is best for them (Barton and Fieldhouse, Automotive Chassis
  // Engineering, equation 5.46). The ground is an inertia of 1e9 kg m2.
  const std::vector<std::pair<double, double>> published = {
      {0.25, 1.1297369}, {0.5, 1.6138932},   {0.7, 2.5403443},  {0.81649658, 3.0}, {0.9, 2.6953768},
      {1.0, 2.0},        {1.25, 0.97370918}, {1.5, 0.58305992}, {2.0, 0.28775432}};
  std::vector<double> frequencies;
  frequencies.reserve(published.size());
  for (const auto& row : published) {
    frequencies.push_back(row.first * 100);
  }
  const MotorRun motor(
      "INERTIA 2 1.0 1000000000.0 0.0 0.0\nINERTIA 1 1.0 10.0 0.0 0.0\nINERTIA 3 1.0 10.0 0.0 0.0\n"
      "SHAFT 1 2 1 1.0 100000.0 0.0 0.0 0.0 0.0 0 0\n"
      "SHAFT 2 1 3 1.0 0.0 577.3502691896258 0.0 0.0 0.0 0 0\n"
      "VISCOUSDAMPER 1\n1 3 577.3502691896258 0\n",
      frequencies, kTorque);
  ASSERT_EQ(motor.run().status(), 1) << motor.run().log();
  for (std::size_t L = 0; L < published.size(); ++L) {
    const double amplitude = motor.element("ElectricMotorDeflection.bin", L, 3, 1).amplitude;
    EXPECT_NEAR(amplitude * 100000 / kTorque, published[L].second, 1e-6 * published[L].second)
        << "frequency ratio " << published[L].first;
  }
}

}  // namespace
}  // namespace verenwick::test
