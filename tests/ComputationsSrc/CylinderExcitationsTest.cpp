#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <vector>

#include "ComputationsSrc/CylinderExcitations.h"
#include "ComputationsSrc/OscillatingMassFourierCoefficients.h"
#include "Excitation/CrankAngles.h"
#include "RunControl/Constants.h"

namespace verenwick {
namespace {

/// Piston travel from top dead centre in crank radii.
double travel(double phi, double lambda) {
  const double s = lambda * std::sin(phi);
  return 1.0 - std::cos(phi) + (1.0 - std::sqrt(1.0 - s * s)) / lambda;
}

double pistonSpeed(double phi, double lambda) {
  const double h = 1e-5;
  return (travel(phi + h, lambda) - travel(phi - h, lambda)) / (2 * h);
}

TEST(CylinderExcitations, TangentialForceDoesTheWorkOfThePiston) {
  const std::vector<double> phi = crankAngles(360);
  for (const double lambda : {0.1, 0.25, 0.5}) {
    std::vector<double> gas(phi.size(), 3.0);
    std::vector<double> mass(phi.size());
    TANGENTIALFORCEGAS(gas, phi, lambda);
    TANGENTIALOSCILLATINGMASS(mass, phi, lambda);
    const double h = 1e-4;
    for (std::size_t i = 0; i < phi.size(); ++i) {
      EXPECT_NEAR(gas[i], 3.0 * pistonSpeed(phi[i], lambda), 1e-8);
      // The torque on the mass is the growth of its kinetic energy over the angle.
      const double ahead = pistonSpeed(phi[i] + h, lambda);
      const double behind = pistonSpeed(phi[i] - h, lambda);
      EXPECT_NEAR(mass[i], (ahead * ahead - behind * behind) / (4 * h), 1e-5);
    }
  }
}

TEST(CylinderExcitations, RadialAndTangentialPartsMakeUpTheRodForce) {
  const std::vector<double> phi = crankAngles(360);
  const double lambda = 0.3;
  std::vector<double> tangential(phi.size(), 2.0);
  std::vector<double> radial(phi.size(), 2.0);
  std::vector<double> tangentialMass(phi.size());
  std::vector<double> radialMass(phi.size());
  TANGENTIALFORCEGAS(tangential, phi, lambda);
  RADIALFORCEGAS(radial, phi, lambda);
  TANGENTIALOSCILLATINGMASS(tangentialMass, phi, lambda);
  RADIALOSCILLATINGMASS(radialMass, phi, lambda);
  for (std::size_t i = 0; i < phi.size(); ++i) {
    const double beta = std::asin(lambda * std::sin(phi[i]));
    EXPECT_NEAR(std::hypot(tangential[i], radial[i]), 2.0 / std::cos(beta), 1e-12);
    EXPECT_NEAR(tangentialMass[i] * radial[i], radialMass[i] * tangential[i], 1e-12);
  }
  EXPECT_EQ(tangential[0], 0.0);
  EXPECT_EQ(radial[0], 2.0) << "the piston pushes straight down at top dead centre";
  EXPECT_NEAR(radial[180], -2.0, 1e-12) << "and away from the shaft at bottom dead centre";
  EXPECT_NEAR(radialMass[0], 1.0 + lambda, 1e-12);
}

TEST(CylinderExcitations, EndlessRodLeavesSimpleCurves) {
  const std::vector<double> phi = crankAngles(360);
  std::vector<double> gas(phi.size(), 5.0);
  std::vector<double> mass(phi.size());
  TANGENTIALFORCEGAS(gas, phi, 0.0);
  TANGENTIALOSCILLATINGMASS(mass, phi, 0.0);
  for (std::size_t i = 0; i < phi.size(); ++i) {
    EXPECT_NEAR(gas[i], 5.0 * std::sin(phi[i]), 1e-14);
    EXPECT_NEAR(mass[i], 0.5 * std::sin(2 * phi[i]), 1e-14);
  }
}

TEST(CylinderExcitations, ImpossibleRodGivesNotANumber) {
  const std::array<double, 1> phi{kPi / 2};
  std::array<double, 1> value{1.0};
  TANGENTIALFORCEGAS(value, phi, 1.5);
  EXPECT_TRUE(std::isnan(value[0]));
}

TEST(CylinderExcitations, MassFactorHasTheKnownSineTerms) {
  const std::vector<double> phi = crankAngles(720);
  for (const std::size_t n : {360U, 720U}) {
    const std::size_t step = n / 360;  // element of order 1
    std::vector<std::complex<double>> c(step * 6 + 1);
    OSCILLATINGMASSFOURIERCOEFFICIENTS(c, std::span(phi).first(n), 0.25);
    const std::array<double, 6> sines{-0.0635063, 0.5001301,  0.1920556,
                                      0.0161290,  -0.0025923, -0.0003903};
    for (std::size_t order = 1; order <= sines.size(); ++order) {
      EXPECT_NEAR(-2 * c[order * step].imag(), sines[order - 1], 5e-8) << order;
      EXPECT_NEAR(c[order * step].real(), 0, 1e-15) << order;
    }
    EXPECT_NEAR(std::abs(c[0]), 0, 1e-15) << "no work over a revolution";
  }
}

TEST(CylinderExcitations, InertiaTorqueOpposesGasTorque) {
  const std::array<std::complex<double>, 2> gas{{{100.0, -20.0}, {3.0, 4.0}}};
  const std::array<std::complex<double>, 2> mass{{{0.5, 0.25}, {0.0, -1.0}}};
  std::array<std::complex<double>, 2> excitation;
  // Crank radius 0.5 m, area 0.2 m2, 10 rad/s, 3 kg: the mass force amounts to 150 N.
  CYLINDEREXCITATION(excitation, gas, mass, 0.5, 0.2, 10.0, 3.0);
  EXPECT_NEAR(excitation[0].real(), 0.5 * (0.2 * 100.0 - 150.0 * 0.5), 1e-12);
  EXPECT_NEAR(excitation[0].imag(), 0.5 * (0.2 * -20.0 - 150.0 * 0.25), 1e-12);
  EXPECT_NEAR(excitation[1].real(), 0.5 * 0.2 * 3.0, 1e-12);
  EXPECT_NEAR(excitation[1].imag(), 0.5 * (0.2 * 4.0 + 150.0), 1e-12);
  CYLINDERSIMPLIFIEDEXCITATION(excitation, gas, mass, 0.5, 10.0, 3.0);
  EXPECT_NEAR(excitation[0].real(), 100.0 - 75.0 * 0.5, 1e-12);
  EXPECT_NEAR(excitation[0].imag(), -20.0 - 75.0 * 0.25, 1e-12);
  EXPECT_NEAR(excitation[1].imag(), 4.0 + 75.0, 1e-12);
}

}  // namespace
}  // namespace verenwick
