#pragma once

#include <complex>
#include <span>

/// Force factors of a crank drive over a grid of crank angles, and the torque coefficients of one
/// cylinder. Angles in rad from the cylinder's top dead centre; lambda is crank radius divided by
/// rod length, and lambda sin(phi) beyond 1 gives not-a-number. The arrays of one call have the
/// same length.
namespace verenwick {

/// Replaces a cylinder pressure by the tangential pressure on the crank pin (same unit).
void TANGENTIALFORCEGAS(std::span<double> pressure, std::span<const double> phi, double lambda);

/// Replaces a cylinder pressure by the radial pressure on the crank pin (same unit).
void RADIALFORCEGAS(std::span<double> pressure, std::span<const double> phi, double lambda);

/// Tangential factor of the oscillating mass, dimensionless: times crank radius, reciprocating mass
/// and the square of the angular speed it is the force that accelerates the mass. The inertia force
/// is its negative.
void TANGENTIALOSCILLATINGMASS(std::span<double> factor, std::span<const double> phi,
                               double lambda);

/// Radial factor of the oscillating mass, dimensionless as its tangential sister.
void RADIALOSCILLATINGMASS(std::span<double> factor, std::span<const double> phi, double lambda);

/// Torque coefficients of one cylinder in N m per order.
/// @param gas        coefficients of the tangential pressure, Pa
/// @param mass       coefficients of the tangential mass factor
/// @param radius     crank radius, m
/// @param area       piston area, m2
/// @param omega      angular speed, rad/s
/// @param recipMass  reciprocating mass, kg
void CYLINDEREXCITATION(std::span<std::complex<double>> excitation,
                        std::span<const std::complex<double>> gas,
                        std::span<const std::complex<double>> mass, double radius, double area,
                        double omega, double recipMass);

/// As CYLINDEREXCITATION where the gas coefficients are torques already (N m).
void CYLINDERSIMPLIFIEDEXCITATION(std::span<std::complex<double>> excitation,
                                  std::span<const std::complex<double>> gas,
                                  std::span<const std::complex<double>> mass, double radius,
                                  double omega, double recipMass);

}  // namespace verenwick
