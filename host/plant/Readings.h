#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "host/plant/ShaftLine.h"
#include "results/ResultReader.h"

/// Result files as the host's tables and pictures need them.
namespace verenwick::host {

/// The shaft line of the input file that results are of. Throws std::runtime_error if it can't be
/// read, or if it has other numbers of inertias, shafts or load cases than the results.
ShaftLine readLineOf(const results::ResultDirectory& directory, const std::filesystem::path& input);

/// Natural angular frequencies, rad/s; the first is the rigid-body mode.
std::vector<double> frequencies(const results::ResultDirectory& directory);

/// Moves to the next position, the last axis fastest; false behind the last one.
bool advance(results::Position& at, const std::vector<results::Axis>& axes);

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

/// The row of a source among the components, by its number in its family.
std::optional<std::size_t> sourceRow(const ShaftLine& line, results::Family family,
                                     std::int64_t source);

/// The order at a place of the files of a family that have so many places; 0 for one not used.
double orderAt(const Component& component, results::Family family, std::int64_t places,
               std::int64_t place);

}  // namespace verenwick::host
