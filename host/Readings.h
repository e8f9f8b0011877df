#pragma once

#include <cstdint>
#include <vector>

#include "results/ResultReader.h"

/// Result files as the host's tables and pictures need them.
namespace verenwick::host {

inline constexpr double kRpmOfAngularSpeed = 30 / 3.141592653589793;

/// Natural angular frequencies, rad/s; the first is the rigid-body mode.
std::vector<double> frequencies(const results::ResultDirectory& directory);

/// The values of all points at a position.
std::vector<double> pointValues(results::ResultValues& values, results::Position at);

/// An order of an engine at a mode.
struct CriticalSpeed {
  double order;
  double sum;  ///< relative vector sum
  double rpm;  ///< of the engine
};

/// The orders of an engine that have a vector sum at a mode of this angular frequency. `at` names
/// engine and mode.
std::vector<CriticalSpeed> criticalSpeeds(results::ResultValues& sums,
                                          results::ResultValues& speeds, results::Position at,
                                          double frequency);

}  // namespace verenwick::host
