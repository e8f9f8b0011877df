#include "host/RunSummary.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numeric>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/Readings.h"
#include "host/ShaftLine.h"

namespace verenwick::host {
namespace {

using results::Index;
using results::Position;
using results::ResultDirectory;
using results::resultFile;
using results::ResultValues;
using results::SystemCount;

constexpr double kSecondsOfMinute = 60;
constexpr std::size_t kOrdersShown = 5;
/// Vector sums that differ by less are the same up to rounding: the major orders of an engine.
constexpr double kSameSum = 1e-6;

void printCounts(const std::filesystem::path& input, const std::optional<ShaftLine>& line,
                 const ResultDirectory& directory) {
  std::string text;
  const auto add = [&](SystemCount which, std::size_t inInput) {
    const std::int64_t count = directory.count(which).value_or(static_cast<std::int64_t>(inInput));
    std::string_view words = results::kSystemCountNames.at(static_cast<std::size_t>(which) - 1);
    if (count == 1) {
      words.remove_suffix(1);
    }
    if (count > 0) {
      text += fmt::format("{}{} {}", text.empty() ? "" : ", ", count, words);
    }
  };
  add(SystemCount::inertias, line ? line->inertias.size() : 0);
  add(SystemCount::shafts, line ? line->shafts.size() : 0);
  for (std::int64_t record = 3; record <= results::kSystemCounts; ++record) {
    const auto which = static_cast<SystemCount>(record);
    if (which != SystemCount::dieselOrders && which != SystemCount::loadCases) {
      add(which, 0);
    }
  }
  add(SystemCount::loadCases, line ? line->loadCaseSpeeds.size() : 0);
  fmt::print("{}: {}\n", input.filename().string(), text);
}

void printFrequencies(const std::optional<ShaftLine>& line, const ResultDirectory& directory) {
  fmt::print("\nNatural frequencies\n{:>6}{:>15}{:>15}{:>15}{:>7}\n", "mode", "rad/s", "Hz", "rpm",
             "nodes");
  ResultValues deflections = directory.open(resultFile("RelativeDeflection.bin"));
  const std::int64_t points = deflections.axis(Index::point)->size();
  bool allFinite = true;
  Position at;
  for (const double frequency : frequencies(directory)) {
    const std::int64_t mode = ++at[Index::mode];
    std::optional<std::size_t> nodes;
    if (mode == 1) {
      nodes = 0;
    } else if (line && points == static_cast<std::int64_t>(line->inertias.size())) {
      if (const auto found = shapeNodes(pointValues(deflections, at), line->shafts)) {
        nodes = found->size();
      }
      allFinite = allFinite && nodes;
    }
    const double rpm = frequency * kRpmOfAngularSpeed;
    fmt::print("{:>6}{:>15.4f}{:>15.4f}{:>15.3f}{:>7}\n", mode, frequency, rpm / kSecondsOfMinute,
               rpm, nodes ? std::to_string(*nodes) : "-");
  }
  if (!allFinite) {
    fmt::print("     -: the mode leaves the reference inertia of its shape at rest\n");
  }
}

/// The orders with the largest vector sums, low orders first among equals.
std::vector<CriticalSpeed> largestSums(std::vector<CriticalSpeed> orders) {
  std::sort(orders.begin(), orders.end(), [](const CriticalSpeed& a, const CriticalSpeed& b) {
    const double left = std::round(a.sum / kSameSum);
    const double right = std::round(b.sum / kSameSum);
    return left != right ? left > right : a.order < b.order;
  });
  orders.resize(std::min(orders.size(), kOrdersShown));
  return orders;
}

void printCriticalSpeeds(const ResultDirectory& directory) {
  ResultValues sums = directory.open(resultFile("VectorSum.bin"));
  ResultValues speeds = directory.open(resultFile("VectorSumRpm.bin"));
  const std::vector<double> frequency = frequencies(directory);
  Position at;
  for (at[Index::source] = 1; at[Index::source] <= sums.axis(Index::source)->last;
       ++at[Index::source]) {
    fmt::print("\nCritical speeds of diesel {}: the orders with the largest vector sums\n{:>6}",
               at[Index::source], "mode");
    for (std::size_t i = 0; i < kOrdersShown; ++i) {
      fmt::print("{:>8}{:>7}{:>10}", "order", "sum", "rpm");
    }
    fmt::print("\n");
    for (at[Index::mode] = 2; at[Index::mode] <= sums.axis(Index::mode)->last; ++at[Index::mode]) {
      fmt::print("{:>6}", at[Index::mode]);
      const double own = frequency.at(static_cast<std::size_t>(at[Index::mode] - 1));
      for (const CriticalSpeed& each : largestSums(criticalSpeeds(sums, speeds, at, own))) {
        fmt::print("{:>8.1f}{:>7.3f}{:>10.2f}", each.order, each.sum, each.rpm);
      }
      fmt::print("\n");
    }
  }
}

/// The largest value of a load case and its point, which is 0 if there are no points.
struct Largest {
  double value = 0;
  std::int64_t point = 0;
};

Largest largestOf(const std::vector<double>& values) {
  Largest largest;
  std::int64_t point = 0;
  for (const double value : values) {
    ++point;
    // What is not a number must not hide behind the numbers.
    if (largest.point == 0 || !(value <= largest.value)) {
      largest = {value, point};
    }
    if (std::isnan(value)) {
      break;
    }
  }
  return largest;
}

/// The id that the input file gives a point, or its row.
std::int64_t inertiaId(const std::optional<ShaftLine>& line, std::int64_t row) {
  const auto index = static_cast<std::size_t>(row - 1);
  return line && index < line->inertias.size() ? line->inertias[index].id : row;
}

std::int64_t shaftId(const std::optional<ShaftLine>& line, std::int64_t row) {
  const auto index = static_cast<std::size_t>(row - 1);
  return line && index < line->shafts.size() ? line->shafts[index].id : row;
}

void printLoadCases(const std::optional<ShaftLine>& line, const ResultDirectory& directory) {
  constexpr double kKilo = 1e3;
  constexpr double kMilli = 1e-3;
  constexpr double kPascalOfNewtonPerSquareMillimetre = 1e6;
  ResultValues torque = directory.open(resultFile("SynthesisTorque.bin"));
  ResultValues stress = directory.open(resultFile("SynthesisStress.bin"));
  ResultValues deflection = directory.open(resultFile("SynthesisDeflection.bin"));
  ResultValues loss = directory.open(resultFile("ShaftPowerLoss.bin"));
  fmt::print(
      "\nLargest vibratory values of each load case, with the id of the shaft or inertia\n"
      "{:>6}{:>10}{:>15}{:>7}{:>16}{:>7}{:>18}{:>9}{:>17}\n",
      "case", "rpm", "torque [kN m]", "shaft", "stress [N/mm2]", "shaft", "deflection [mrad]",
      "inertia", "total loss [kW]");
  Position at;
  for (at[Index::loadCase] = 1; at[Index::loadCase] <= torque.axis(Index::loadCase)->last;
       ++at[Index::loadCase]) {
    const auto index = static_cast<std::size_t>(at[Index::loadCase] - 1);
    const std::string rpm = line && index < line->loadCaseSpeeds.size()
                                ? fmt::format("{:.1f}", line->loadCaseSpeeds[index])
                                : "-";
    const Largest t = largestOf(pointValues(torque, at));
    const Largest s = largestOf(pointValues(stress, at));
    const Largest d = largestOf(pointValues(deflection, at));
    const std::vector<double> losses = pointValues(loss, at);
    fmt::print("{:>6}{:>10}{:>15.4g}{:>7}{:>16.4g}{:>7}{:>18.4g}{:>9}{:>17.4g}\n",
               at[Index::loadCase], rpm, t.value / kKilo, shaftId(line, t.point),
               s.value / kPascalOfNewtonPerSquareMillimetre, shaftId(line, s.point),
               d.value / kMilli, inertiaId(line, d.point),
               std::accumulate(losses.begin(), losses.end(), 0.0) / kKilo);
  }
}

}  // namespace

void printRunSummary(const std::filesystem::path& input, const ResultDirectory& directory,
                     Steps steps) {
  const std::optional<ShaftLine> line = readShaftLine(input);
  printCounts(input, line, directory);
  if (steps.free) {
    printFrequencies(line, directory);
    if (directory.has(resultFile("VectorSum.bin"))) {
      printCriticalSpeeds(directory);
    }
  }
  if (steps.forced) {
    printLoadCases(line, directory);
  }
}

}  // namespace verenwick::host
