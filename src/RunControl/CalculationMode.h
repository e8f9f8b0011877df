#pragma once

#include <cstdint>

namespace verenwick {

/// What a run calculates. Any other value is as `both`, but without preparing coupling power.
enum CalculationMode : std::int32_t { reportsOnly = 0, freeOnly = 1, forcedOnly = 2, both = 3 };

/// Which of the two problems a step prepares: the free one is without damping, without the rings of
/// viscous dampers and at nominal stiffness.
enum class Vibration { free, forced };

}  // namespace verenwick
