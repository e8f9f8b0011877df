#pragma once

#include <complex>
#include <span>

namespace verenwick {

/// Coefficients of the tangential factor of the oscillating mass, mean first, dimensionless.
/// @param phi     crank angles of the grid, rad
/// @param lambda  crank radius divided by rod length
void OSCILLATINGMASSFOURIERCOEFFICIENTS(std::span<std::complex<double>> coefficients,
                                        std::span<const double> phi, double lambda);

}  // namespace verenwick
