#pragma once

#include <cmath>
#include <cstdint>
#include <limits>

namespace verenwick {

/// A single-precision constant of a formula, widened as it is: single(1.1F) is 1.100000023841858.
constexpr double single(float value) { return static_cast<double>(value); }

/// Rounds to single precision and widens again, where a formula keeps seven digits only. What is
/// nearer to the power of two behind the largest single is infinite.
inline double roundedToSingle(double value) {
  constexpr double kLargest = std::numeric_limits<float>::max();
  constexpr double kFirstInfinite = 0x1.ffffffp127;
  if (std::abs(value) > kLargest) {  // a conversion has no defined result
    return std::copysign(std::abs(value) < kFirstInfinite ? kLargest : HUGE_VAL, value);
  }
  // Volatile, since GCC 12 loses the rounding where it joins two of these into one vector
  // operation.
  const volatile float rounded = static_cast<float>(value);
  return static_cast<double>(rounded);
}

constexpr double kPi = 3.141592653589793;
/// Pi as several excitation formulas hold it.
constexpr double kPiSingle = single(3.14159274F);

constexpr double kBar = 100000.0;  ///< Pa

/// Angular speed in rad/s of a speed in rpm.
constexpr double angularSpeed(double rpm) { return rpm * kPi / 30; }

constexpr double radians(double degrees) { return degrees * kPi / 180; }

}  // namespace verenwick
