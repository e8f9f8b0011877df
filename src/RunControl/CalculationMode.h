#pragma once

#include <cstdint>

#include "verenwick.h"

namespace verenwick {

/// What a run calculates. Any other value is as `both`, but without preparing coupling power.
enum CalculationMode : std::int32_t {
  reportsOnly = VERENWICK_MODE_REPORTS,
  freeOnly = VERENWICK_MODE_FREE,
  forcedOnly = VERENWICK_MODE_FORCED,
  both = VERENWICK_MODE_BOTH
};

/// Which of the two problems a step prepares: the free one is without damping, without the rings of
/// viscous dampers and at nominal stiffness.
enum class Vibration { free, forced };

}  // namespace verenwick
