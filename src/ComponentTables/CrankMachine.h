#pragma once

#include <array>
#include <complex>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "input/SectionTable.h"
#include "results/RecordNumbers.h"

/// What engines and reciprocating pumps have in common: cylinder rows on a crank, and Fourier
/// coefficients of what works on it.
namespace verenwick {

/// Design limit: cylinder rows of an engine or pump.
inline constexpr std::int32_t kMaxCylinders = input::kMostCylinders;
/// Design limit: harmonic orders of an engine or pump.
inline constexpr std::int32_t kMaxOrders = results::kHalfOrders;

/// Coefficients by order index, as a record keeps them.
using StoredCoefficients = std::array<std::complex<double>, kMaxOrders>;

/// Coefficients with the mean in front: element k belongs to order index k.
using Coefficients = std::vector<std::complex<double>>;

/// Keeps coefficients without their mean.
void store(const Coefficients& coefficients, StoredCoefficients& field);

/// Kept coefficients of the first orders behind a mean of zero.
Coefficients withMean(const StoredCoefficients& field, std::size_t nOrders);

void addTo(Coefficients& sum, const Coefficients& share);

/// Keeps the oscillating mass factor of a crank drive, dimensionless.
/// @param phi         crank angles over the period of the orders, rad
/// @param conrodRatio crank radius over rod length
void storeMassFactor(std::span<const double> phi, double conrodRatio, std::size_t nOrders,
                     StoredCoefficients& field);

}  // namespace verenwick
