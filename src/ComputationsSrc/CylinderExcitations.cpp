#include "ComputationsSrc/CylinderExcitations.h"

#include <cmath>
#include <cstddef>

namespace verenwick {
namespace {

double rodAngle(double phi, double lambda) { return std::asin(lambda * std::sin(phi)); }

/// The oscillating mass's factor; `direction` is sine for the tangential and cosine for the radial
/// part of the rod force.
template <class Direction>
void oscillatingMass(std::span<double> factor, std::span<const double> phi, double lambda,
                     Direction direction) {
  for (std::size_t i = 0; i < factor.size(); ++i) {
    const double beta = rodAngle(phi[i], lambda);
    const double cosPhi = std::cos(phi[i]);
    const double cosBetaSquared = std::cos(beta) * std::cos(beta);
    const double part = direction(phi[i] + beta) / cosBetaSquared;
    factor[i] = (std::cos(phi[i] + beta) + lambda * cosPhi * cosPhi / cosBetaSquared) * part;
  }
}

}  // namespace

void TANGENTIALFORCEGAS(std::span<double> pressure, std::span<const double> phi, double lambda) {
  for (std::size_t i = 0; i < pressure.size(); ++i) {
    const double beta = rodAngle(phi[i], lambda);
    pressure[i] = pressure[i] * std::sin(phi[i] + beta) / std::cos(beta);
  }
}

void RADIALFORCEGAS(std::span<double> pressure, std::span<const double> phi, double lambda) {
  for (std::size_t i = 0; i < pressure.size(); ++i) {
    const double beta = rodAngle(phi[i], lambda);
    pressure[i] = pressure[i] * std::cos(phi[i] + beta) / std::cos(beta);
  }
}

void TANGENTIALOSCILLATINGMASS(std::span<double> factor, std::span<const double> phi,
                               double lambda) {
  oscillatingMass(factor, phi, lambda, [](double angle) { return std::sin(angle); });
}

void RADIALOSCILLATINGMASS(std::span<double> factor, std::span<const double> phi, double lambda) {
  oscillatingMass(factor, phi, lambda, [](double angle) { return std::cos(angle); });
}

void CYLINDEREXCITATION(std::span<std::complex<double>> excitation,
                        std::span<const std::complex<double>> gas,
                        std::span<const std::complex<double>> mass, double radius, double area,
                        double omega, double recipMass) {
  // Gas torque and inertia torque oppose each other.
  const double massForce = radius * recipMass * omega * omega;
  for (std::size_t k = 0; k < excitation.size(); ++k) {
    excitation[k] = radius * (area * gas[k] - massForce * mass[k]);
  }
}

void CYLINDERSIMPLIFIEDEXCITATION(std::span<std::complex<double>> excitation,
                                  std::span<const std::complex<double>> gas,
                                  std::span<const std::complex<double>> mass, double radius,
                                  double omega, double recipMass) {
  const double massTorque = radius * radius * recipMass * omega * omega;
  for (std::size_t k = 0; k < excitation.size(); ++k) {
    excitation[k] = gas[k] - massTorque * mass[k];
  }
}

}  // namespace verenwick
