#pragma once

#include <complex>
#include <cstdint>
#include <span>

/// Direct Fourier sums of a real curve over one engine cycle.
///
/// Element 1 of a coefficient array is the mean, element j + 1 belongs to harmonic j of the grid's
/// period: the cosine amplitude is twice the real part, the sine amplitude minus twice the
/// imaginary part. On 360 points of one degree element j + 1 is order j, on 720 points order j / 2.
namespace verenwick {

/// Coefficients of a signal over one period. No points give zeros.
void DISCRETEFOURIERTRANSFORM(std::span<std::complex<double>> coefficients,
                              std::span<const double> signal);

/// Sums the terms of all coefficients into the signal. The terms of coefficient j over all points
/// gather in element j of the signal, the elements beyond the number of coefficients stay zero:
/// the routine is kept as the system has it. Not part of a run.
void INVERSEDISCRETEFOURIERTRANSFORM(std::span<const std::complex<double>> coefficients,
                                     std::span<double> signal);

/// Delays the curve behind the coefficients by shiftAngle (same unit as period). The first element
/// is harmonic startIndex. In and out have the same length and may be the same array.
void FOURIERCOEFFICIENTTRANSFORM(std::span<const std::complex<double>> coefficientsIn,
                                 std::span<std::complex<double>> coefficientsOut, double shiftAngle,
                                 double period, std::int32_t startIndex);

}  // namespace verenwick
