#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <complex>
#include <vector>

#include "ComputationsSrc/CylinderExcitations.h"
#include "Excitation/CrankAngles.h"

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

TEST(CylinderExcitations, InertiaTorqueOpposesGasTorque) {
  const std::array<std::complex<double>, 2> gas{{{100.0, -20.0}, {3.0, 4.0}}};
  const std::array<std::complex<double>, 2> mass{{{0.5, 0.25}, {0.0, -1.0}}};
  std::array<std::complex<double>, 2> excitation;
  // Crank radius 0.5 m, area 0.2 m2, 10 rad/s, 3 kg: the mass force amounts to 150 N.
  CYLINDEREXCITATION(excitation, gas, mass, 0.5, 0.2, 10.0, 3.0);
  for (std::size_t k = 0; k < 2; ++k) {
    EXPECT_NEAR(std::abs(excitation[k] - 0.5 * (0.2 * gas[k] - 150.0 * mass[k])), 0, 1e-12);
  }
  CYLINDERSIMPLIFIEDEXCITATION(excitation, gas, mass, 0.5, 10.0, 3.0);
  for (std::size_t k = 0; k < 2; ++k) {
    EXPECT_NEAR(std::abs(excitation[k] - (gas[k] - 0.5 * 150.0 * mass[k])), 0, 1e-12);
  }
}

}  // namespace
}  // namespace verenwick
