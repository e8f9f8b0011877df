#pragma once

#include <cstdint>
#include <span>

#include "ComputationsSrc/ForcedVibrationSolver.h"

namespace verenwick {

/// Excitation by Fourier coefficients: coefficient (p - 1) NORDERS + k of point p and order k.
struct FourierExcitation {
  std::span<const double> EXFO;       ///< harmonic orders
  std::span<const double> FORE;       ///< real parts, N m
  std::span<const double> FOIM;       ///< imaginary parts, N m
  std::span<const double> phase;      ///< of each point, rad
  std::span<const std::int32_t> dof;  ///< inertia that each point acts on, from 1
};

/// Steady response of a damped system to an excitation at one speed.
/// @param system          the arrays at order 1
/// @param arraysOfOrder   rebuilds them for an order; empty if they don't depend on the frequency
/// @param omega           circular speed at order 1, rad/s
/// @param diagnosticLevel above 1 writes "ZBTQ_Forced.txt"
/// Throws RunStopped when the system can't be solved.
void FORCEDDAMPEDVIBRATIONSFC(const ForcedVibrationSolver::SystemArrays& system,
                              const ForcedVibrationSolver::ArraysOfOrder& arraysOfOrder,
                              double omega, const FourierExcitation& excitation,
                              const ForcedVibrationSolver::Response& response,
                              std::int32_t diagnosticLevel = 0);

}  // namespace verenwick
