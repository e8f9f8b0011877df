#include "host/RunSummary.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numeric>

#include "host/ShaftLine.h"
#include "host/Terminal.h"

namespace verenwick::host {
namespace {

using results::Index;
using results::Position;
using results::ResultDirectory;
using results::resultFile;
using results::ResultValues;
using results::SystemCount;

using json = nlohmann::ordered_json;

constexpr double kSecondsOfMinute = 60;
constexpr std::size_t kOrdersShown = 5;
constexpr double kKilo = 1e3;
constexpr double kMega = 1e6;
constexpr double kMilli = 1e-3;
/// Vector sums that differ by less are the same up to rounding: the major orders of an engine.
constexpr double kSameSum = 1e-6;

std::vector<std::pair<std::string_view, std::int64_t>> countsOf(
    const std::optional<ShaftLine>& line, const ResultDirectory& directory) {
  std::vector<std::pair<std::string_view, std::int64_t>> counts;
  const auto add = [&](SystemCount which, std::size_t inInput) {
    const std::int64_t count = directory.count(which).value_or(static_cast<std::int64_t>(inInput));
    if (count > 0) {
      counts.emplace_back(results::kSystemCountNames.at(static_cast<std::size_t>(which) - 1),
                          count);
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
  return counts;
}

std::vector<ModeSummary> modesOf(const std::optional<ShaftLine>& line,
                                 const ResultDirectory& directory) {
  ResultValues deflections = directory.open(resultFile("RelativeDeflection.bin"));
  const std::int64_t points = deflections.axis(Index::point)->size();
  std::vector<ModeSummary> modes;
  Position at;
  for (const double frequency : frequencies(directory)) {
    ModeSummary mode{frequency, {}};
    if (++at[Index::mode] == 1) {
      mode.nodes = 0;
    } else if (line && points == static_cast<std::int64_t>(line->inertias.size())) {
      if (const auto found = shapeNodes(pointValues(deflections, at), line->shafts)) {
        mode.nodes = found->size();
      }
    }
    modes.push_back(mode);
  }
  return modes;
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

std::vector<std::vector<std::vector<CriticalSpeed>>> enginesOf(const ResultDirectory& directory) {
  ResultValues sums = directory.open(resultFile("VectorSum.bin"));
  ResultValues speeds = directory.open(resultFile("VectorSumRpm.bin"));
  const std::vector<double> frequency = frequencies(directory);
  std::vector<std::vector<std::vector<CriticalSpeed>>> engines;
  Position at;
  for (at[Index::source] = 1; at[Index::source] <= sums.axis(Index::source)->last;
       ++at[Index::source]) {
    auto& modes = engines.emplace_back();
    for (at[Index::mode] = 2; at[Index::mode] <= sums.axis(Index::mode)->last; ++at[Index::mode]) {
      const double own = frequency.at(static_cast<std::size_t>(at[Index::mode] - 1));
      modes.push_back(largestSums(criticalSpeeds(sums, speeds, at, own)));
    }
  }
  return engines;
}

/// `idOf` gives the id at a row from 0.
template <class IdOf>
Largest largestOf(const std::vector<double>& values, IdOf idOf) {
  Largest largest;
  bool first = true;
  for (std::size_t row = 0; row < values.size(); ++row) {
    // What is not a number must not hide behind the numbers.
    if (first || !(values[row] <= largest.value)) {
      largest = {values[row], idOf(row)};
      first = false;
    }
    if (std::isnan(values[row])) {
      break;
    }
  }
  return largest;
}

std::vector<LoadCaseSummary> loadCasesOf(const std::optional<ShaftLine>& line,
                                         const ResultDirectory& directory) {
  ResultValues torque = directory.open(resultFile("SynthesisTorque.bin"));
  ResultValues stress = directory.open(resultFile("SynthesisStress.bin"));
  ResultValues deflection = directory.open(resultFile("SynthesisDeflection.bin"));
  ResultValues loss = directory.open(resultFile("ShaftPowerLoss.bin"));
  const auto shaftId = [&line](std::size_t row) -> std::int64_t {
    return line && row < line->shafts.size() ? line->shafts[row].id
                                             : static_cast<std::int64_t>(row) + 1;
  };
  const auto inertiaId = [&line](std::size_t row) -> std::int64_t {
    return line && row < line->inertias.size() ? line->inertias[row].id
                                               : static_cast<std::int64_t>(row) + 1;
  };
  std::vector<LoadCaseSummary> loadCases;
  Position at;
  for (at[Index::loadCase] = 1; at[Index::loadCase] <= torque.axis(Index::loadCase)->last;
       ++at[Index::loadCase]) {
    LoadCaseSummary each;
    if (line && loadCases.size() < line->loadCaseSpeeds.size()) {
      each.speed = line->loadCaseSpeeds[loadCases.size()];
    }
    each.torque = largestOf(pointValues(torque, at), shaftId);
    each.stress = largestOf(pointValues(stress, at), shaftId);
    each.deflection = largestOf(pointValues(deflection, at), inertiaId);
    const std::vector<double> losses = pointValues(loss, at);
    each.loss = std::accumulate(losses.begin(), losses.end(), 0.0);
    loadCases.push_back(each);
  }
  return loadCases;
}

void printTitle(std::string_view title) {
  fmt::print("\n{}\n", styled(stdout, fmt::emphasis::bold, title));
}

void printCounts(const std::string& name, const RunSummary& summary) {
  std::string text;
  for (auto [words, count] : summary.counts) {
    if (count == 1) {
      words.remove_suffix(1);
    }
    text += fmt::format("{}{} {}", text.empty() ? "" : ", ", count, words);
  }
  fmt::print("{}: {}\n", styled(stdout, fmt::emphasis::bold, name), text);
}

void printModes(const std::vector<ModeSummary>& modes) {
  printTitle("Natural frequencies");
  fmt::print("{:>6}{:>15}{:>15}{:>15}{:>7}\n", "mode", "rad/s", "Hz", "rpm", "nodes");
  bool allFinite = true;
  int number = 0;
  for (const ModeSummary& mode : modes) {
    allFinite = allFinite && mode.nodes;
    const double rpm = mode.frequency * kRpmOfAngularSpeed;
    fmt::print("{:>6}{:>15.4f}{:>15.4f}{:>15.3f}{:>7}\n", ++number, mode.frequency,
               rpm / kSecondsOfMinute, rpm, mode.nodes ? std::to_string(*mode.nodes) : "-");
  }
  if (!allFinite) {
    fmt::print("     -: the mode leaves the reference inertia of its shape at rest\n");
  }
}

void printEngine(std::size_t number, const std::vector<std::vector<CriticalSpeed>>& modes) {
  printTitle(
      fmt::format("Critical speeds of diesel {}: the orders with the largest vector sums", number));
  fmt::print("{:>6}", "mode");
  for (std::size_t i = 0; i < kOrdersShown; ++i) {
    fmt::print("{:>8}{:>7}{:>10}", "order", "sum", "rpm");
  }
  fmt::print("\n");
  int mode = 1;
  for (const std::vector<CriticalSpeed>& orders : modes) {
    fmt::print("{:>6}", ++mode);
    for (const CriticalSpeed& each : orders) {
      fmt::print("{:>8.1f}{:>7.3f}{:>10.2f}", each.order, each.sum, each.rpm);
    }
    fmt::print("\n");
  }
}

void printLoadCases(const std::vector<LoadCaseSummary>& loadCases) {
  printTitle("Largest vibratory values of each load case, with the id of the shaft or inertia");
  fmt::print("{:>6}{:>10}{:>15}{:>7}{:>16}{:>7}{:>18}{:>9}{:>17}\n", "case", "rpm", "torque [kN m]",
             "shaft", "stress [N/mm2]", "shaft", "deflection [mrad]", "inertia", "total loss [kW]");
  int number = 0;
  for (const LoadCaseSummary& each : loadCases) {
    fmt::print("{:>6}{:>10}{:>15.4g}{:>7}{:>16.4g}{:>7}{:>18.4g}{:>9}{:>17.4g}\n", ++number,
               each.speed ? fmt::format("{:.1f}", *each.speed) : "-", each.torque.value / kKilo,
               each.torque.id, each.stress.value / kMega, each.stress.id,
               each.deflection.value / kMilli, each.deflection.id, each.loss / kKilo);
  }
}

/// A number of the summary: null for what a document can't hold.
json number(double value) { return std::isfinite(value) ? json(value) : json(nullptr); }

json jsonOf(const Largest& largest, const char* point) {
  return {{"value", number(largest.value)}, {point, largest.id}};
}

}  // namespace

RunSummary summarise(const std::filesystem::path& input, const ResultDirectory& directory,
                     Steps steps) {
  const std::optional<ShaftLine> line = readShaftLine(input);
  RunSummary summary;
  summary.counts = countsOf(line, directory);
  if (steps.free) {
    summary.modes = modesOf(line, directory);
    if (directory.has(resultFile("VectorSum.bin"))) {
      summary.engines = enginesOf(directory);
    }
  }
  if (steps.forced) {
    summary.loadCases = loadCasesOf(line, directory);
  }
  return summary;
}

void printSummary(const std::string& name, const RunSummary& summary, Steps steps) {
  printCounts(name, summary);
  if (steps.free) {
    printModes(summary.modes);
    std::size_t engine = 0;
    for (const auto& modes : summary.engines) {
      printEngine(++engine, modes);
    }
  }
  if (steps.forced) {
    printLoadCases(summary.loadCases);
  }
}

json jsonOf(const RunSummary& summary, Steps steps) {
  json document = {{"counts", json::object()}};
  for (const auto& [words, count] : summary.counts) {
    document["counts"][std::string(words)] = count;
  }
  if (steps.free) {
    json& modes = document["modes"] = json::array();
    for (const ModeSummary& mode : summary.modes) {
      modes.push_back({{"mode", modes.size() + 1},
                       {"angularFrequency", number(mode.frequency)},
                       {"nodes", mode.nodes ? json(*mode.nodes) : json(nullptr)}});
    }
    json& criticals = document["criticalSpeeds"] = json::array();
    for (std::size_t engine = 0; engine < summary.engines.size(); ++engine) {
      for (std::size_t mode = 0; mode < summary.engines[engine].size(); ++mode) {
        for (const CriticalSpeed& each : summary.engines[engine][mode]) {
          criticals.push_back({{"diesel", engine + 1},
                               {"mode", mode + 2},
                               {"order", number(each.order)},
                               {"relativeVectorSum", number(each.sum)},
                               {"rpm", number(each.rpm)}});
        }
      }
    }
  }
  if (steps.forced) {
    json& loadCases = document["loadCases"] = json::array();
    for (const LoadCaseSummary& each : summary.loadCases) {
      loadCases.push_back({{"case", loadCases.size() + 1},
                           {"rpm", each.speed ? number(*each.speed) : json(nullptr)},
                           {"torque", jsonOf(each.torque, "shaft")},
                           {"stress", jsonOf(each.stress, "shaft")},
                           {"deflection", jsonOf(each.deflection, "inertia")},
                           {"powerLoss", number(each.loss)}});
    }
  }
  return document;
}

const LoadCaseSummary* worstLoadCase(const RunSummary& summary) {
  const auto& cases = summary.loadCases;
  const auto worst = [&cases](auto quantity) {
    return std::max_element(cases.begin(), cases.end(), [quantity](const auto& a, const auto& b) {
      const double left = (a.*quantity).value;
      const double right = (b.*quantity).value;
      return left < right || (std::isnan(right) && !std::isnan(left));
    });
  };
  if (cases.empty()) {
    return nullptr;
  }
  const auto stressed = worst(&LoadCaseSummary::stress);
  return stressed->stress.value != 0 ? &*stressed : &*worst(&LoadCaseSummary::torque);
}

}  // namespace verenwick::host
