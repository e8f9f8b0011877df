#pragma once

#include <cstddef>
#include <vector>

#include "RunControl/Constants.h"

namespace verenwick {

/// Points of one crank revolution in whole degrees.
inline constexpr std::size_t kRevolution = 360;

/// Crank angles in whole degrees from top dead centre, as rad.
inline std::vector<double> crankAngles(std::size_t points) {
  std::vector<double> phi(points);
  for (std::size_t i = 0; i < points; ++i) {
    phi[i] = radians(static_cast<double>(i));
  }
  return phi;
}

}  // namespace verenwick
