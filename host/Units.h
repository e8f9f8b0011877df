#pragma once

namespace verenwick::host {

inline constexpr double kPi = 3.141592653589793;
/// Revolutions per minute of an angular speed of 1 rad/s.
inline constexpr double kRpmOfAngularSpeed = 30 / kPi;
inline constexpr double kSecondsOfMinute = 60;
inline constexpr double kKilo = 1e3;
inline constexpr double kMega = 1e6;
inline constexpr double kMilli = 1e-3;
inline constexpr double kBar = 1e5;  ///< Pa

}  // namespace verenwick::host
