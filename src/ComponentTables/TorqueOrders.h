#pragma once

#include <array>
#include <cstddef>

#include "input/SectionTable.h"

namespace verenwick {

/// Design limit: harmonic orders of a motor, generator, centrifugal pump, or of a reciprocating
/// pump's table of torques.
inline constexpr std::size_t kTorqueOrders = input::kOrderPlaces;

/// Torque of each order, N m, as its fraction of a torque; slots beyond the orders in use have
/// theirs too.
inline std::array<double, kTorqueOrders> torqueAmplitudes(
    double torque, const std::array<double, kTorqueOrders>& fractions) {
  std::array<double, kTorqueOrders> amplitudes{};
  for (std::size_t i = 0; i < kTorqueOrders; ++i) {
    amplitudes[i] = torque * fractions[i];
  }
  return amplitudes;
}

}  // namespace verenwick
