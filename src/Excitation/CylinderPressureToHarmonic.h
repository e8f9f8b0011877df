#pragma once

#include <span>

/// A cylinder pressure curve and the harmonics of its tangential pressure. Pressures in Pa, angles
/// in rad from top dead centre, lambda is crank radius divided by rod length. The curve and its
/// angles have the same length, and so have the two component arrays; component k belongs to
/// harmonic k of the curve's period.
namespace verenwick {

/// Leaves the tangential pressure in the pressure array and its harmonics in the components.
void CYLINDERPRESSURETOHARMONIC(std::span<double> pressure, std::span<const double> phi,
                                double lambda, std::span<double> SINECOMPONENT,
                                std::span<double> COSINECOMPONENT);

/// Sums the harmonics by INVERSEDISCRETEFOURIERTRANSFORM, with what is peculiar to it, and divides
/// by the tangential factor. Where the rod force has no tangential part the neighbour before stands
/// in, at the first point the one behind. A curve of other than 360 or 720 points comes out zero.
/// Not part of a run.
void HARMONICTOCYLINDERPRESSURE(std::span<double> pressure, std::span<const double> phi,
                                double lambda, std::span<const double> SINECOMPONENT,
                                std::span<const double> COSINECOMPONENT);

}  // namespace verenwick
