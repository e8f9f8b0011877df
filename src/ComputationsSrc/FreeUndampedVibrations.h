#pragma once

#include <cstdint>
#include <span>

namespace verenwick {

/// Natural angular frequencies and mode shapes of an undamped system.
/// @param D      out, N: natural angular frequencies, rad/s, ascending; the first may be not a
///               number where rounding made the rigid-body eigenvalue negative
/// @param V      out, N x N: mode shapes, mode after mode, scaled so that x' M x = 1
/// @param ROWIND, COLIND, K coordinate entries of the stiffness, from 1, N m/rad
/// @param M      N: diagonal inertia, kg m2
/// @param printLevel 0 prints nothing, 1 prints the frequencies to standard output, above 1 all of
///               the problem goes into a file "ZBTQ.txt" in the result directory
/// @returns INFO of the solve, 0 for success; a failed one leaves D and V as they were, but for the
///          square root of D
std::int32_t FREEUNDAMPEDVIBRATIONS(std::int32_t N, std::span<double> D, std::span<double> V,
                                    std::span<const std::int32_t> ROWIND,
                                    std::span<const std::int32_t> COLIND, std::span<const double> K,
                                    std::span<const double> M, std::int32_t printLevel);

}  // namespace verenwick
