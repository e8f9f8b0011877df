#pragma once

#include <cstdint>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/plant/Readings.h"
#include "host/run/Run.h"
#include "host/summary/UnresolvedPeaks.h"
#include "results/ResultReader.h"

/// What an engineer wants to see of a run first, from the files that the run has left.
namespace verenwick::host {

/// A mode.
struct ModeSummary {
  double frequency;                  ///< rad/s
  std::optional<std::size_t> nodes;  ///< nothing where the mode shape isn't finite
};

/// A value and the id of the shaft or inertia that has it, 0 if there is none.
struct Largest {
  double value = 0;
  std::int64_t id = 0;
};

/// The largest vibratory values of a load case.
struct LoadCaseSummary {
  std::optional<double> speed;  ///< rpm; nothing if the input file can't be read
  Largest torque;               ///< N m
  Largest stress;               ///< Pa
  Largest deflection;           ///< rad
  double loss = 0;              ///< of all shafts, W
};

/// A peak that the load cases step over.
struct PeakSummary {
  UnresolvedPeak peak;
  std::vector<std::pair<std::string_view, std::int32_t>> sources;  ///< kinds and ids
  std::vector<std::size_t> engines;  ///< those of the sources that are engines, counted from 0
  double sourceSpeed = 0;            ///< of the sources at the peak, rpm
  std::int64_t shaft = 0;            ///< id
  std::string words;
};

/// Orders of an engine that a summary has at a mode.
inline constexpr std::size_t kOrdersShown = 5;

/// An engine.
struct EngineSummary {
  std::int64_t id = 0;  ///< that of the input file; the engine's number where it can't be read
  std::string name;     ///< empty where it isn't known
  /// From the second mode on: the orders with the largest vector sums, at most kOrdersShown.
  std::vector<std::vector<CriticalSpeed>> modes;
};

struct RunSummary {
  /// What the plant has, in the words of the count, and how many.
  std::vector<std::pair<std::string_view, std::int64_t>> counts;
  std::vector<ModeSummary> modes;
  std::vector<EngineSummary> engines;
  std::vector<LoadCaseSummary> loadCases;
  std::vector<PeakSummary> peaks;  ///< between the load cases, the worst first
};

RunSummary summarise(const std::filesystem::path& input, const results::ResultDirectory& directory,
                     Steps steps);

/// As tables on standard output, under the name of the input.
void printSummary(const std::string& name, const RunSummary& summary, Steps steps);

/// In SI units; what isn't finite is null.
nlohmann::ordered_json jsonOf(const RunSummary& summary, Steps steps);

/// Prints a document to standard output.
void printDocument(const nlohmann::ordered_json& document);

/// Whether a critical speed of an engine, counted from 0, is that of a peak between the load cases.
bool isUnresolved(const RunSummary& summary, std::size_t engine, std::int64_t mode,
                  const CriticalSpeed& critical);

/// The load case with the largest value of a quantity, NaN before all; null without load cases.
const LoadCaseSummary* worstLoadCase(const RunSummary& summary, Largest LoadCaseSummary::*quantity);

}  // namespace verenwick::host
