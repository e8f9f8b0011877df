#pragma once

#include <complex>
#include <span>

namespace verenwick {

/// Coefficients of the tangential pressure of a cylinder pressure curve, mean first, in the
/// pressure's unit. The pressure array is left holding the tangential pressure curve.
/// @param phi     crank angles of the points, rad; as many as pressures
/// @param lambda  crank radius divided by rod length
void PRESSUREFOURIERCOEFFICIENTS(std::span<std::complex<double>> coefficients,
                                 std::span<double> pressure, std::span<const double> phi,
                                 double lambda);

}  // namespace verenwick
