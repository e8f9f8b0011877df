#include "host/summary/RunSummary.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numeric>

#include "host/plant/ShaftLine.h"

namespace verenwick::host {
namespace {

using results::Index;
using results::Position;
using results::ResultDirectory;
using results::resultFile;
using results::ResultValues;
using results::SystemCount;

/// Vector sums that differ by less are the same up to rounding: the major orders of an engine.
constexpr double kSameSum = 1e-6;

/// The orders of criticals are known from speeds and frequencies.
constexpr double kSameOrder = 1e-3;

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

std::vector<EngineSummary> enginesOf(const std::optional<ShaftLine>& line,
                                     const ResultDirectory& directory) {
  ResultValues sums = directory.open(resultFile("VectorSum.bin"));
  ResultValues speeds = directory.open(resultFile("VectorSumRpm.bin"));
  const std::vector<double> frequency = frequencies(directory);
  std::vector<EngineSummary> engines;
  Position at;
  for (at[Index::source] = 1; at[Index::source] <= sums.axis(Index::source)->last;
       ++at[Index::source]) {
    EngineSummary& engine = engines.emplace_back();
    engine.id = at[Index::source];
    if (line) {
      if (const auto row = sourceRow(*line, results::Family::diesel, at[Index::source])) {
        engine.id = line->components[*row].id;
        engine.name = line->components[*row].name;
      }
    }
    for (at[Index::mode] = 2; at[Index::mode] <= sums.axis(Index::mode)->last; ++at[Index::mode]) {
      const double own = frequency.at(static_cast<std::size_t>(at[Index::mode] - 1));
      engine.modes.push_back(largestSums(criticalSpeeds(sums, speeds, at, own)));
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

/// The number of an engine among the engines, from 0; nothing for another component.
std::optional<std::size_t> engineNumber(const ShaftLine& line, std::size_t row) {
  if (line.components[row].family != results::Family::diesel) {
    return std::nullopt;
  }
  return static_cast<std::size_t>(std::count_if(
      line.components.begin(), line.components.begin() + static_cast<std::ptrdiff_t>(row),
      [](const Component& each) { return each.family == results::Family::diesel; }));
}

std::vector<PeakSummary> peaksOf(const ShaftLine& line, const ResultDirectory& directory) {
  std::vector<PeakSummary> peaks;
  for (UnresolvedPeak& peak : unresolvedPeaks(line, directory)) {
    PeakSummary each;
    for (const std::size_t row : peak.components) {
      const Component& component = line.components[row];
      each.sources.emplace_back(component.kind, component.id);
      each.sourceSpeed = peak.speed * line.inertias[component.inertias[0]].rpmRatio;
      if (const auto engine = engineNumber(line, row)) {
        each.engines.push_back(*engine);
      }
    }
    each.shaft = line.shafts[peak.shaft].id;
    each.words = wordsOf(peak, line);
    each.peak = std::move(peak);
    peaks.push_back(std::move(each));
  }
  return peaks;
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
      summary.engines = enginesOf(line, directory);
    }
  }
  if (steps.forced) {
    summary.loadCases = loadCasesOf(line, directory);
  }
  if (steps.free && steps.forced && line) {
    summary.peaks = peaksOf(*line, directory);
  }
  return summary;
}

bool isUnresolved(const RunSummary& summary, std::size_t engine, std::int64_t mode,
                  const CriticalSpeed& critical) {
  return std::any_of(summary.peaks.begin(), summary.peaks.end(), [&](const PeakSummary& each) {
    const bool excites =
        std::find(each.engines.begin(), each.engines.end(), engine) != each.engines.end();
    return excites && std::abs(each.peak.order - critical.order) < kSameOrder &&
           (each.peak.mode == mode ||
            std::abs(each.sourceSpeed - critical.rpm) < kSamePeak * critical.rpm);
  });
}

const LoadCaseSummary* worstLoadCase(const RunSummary& summary,
                                     Largest LoadCaseSummary::*quantity) {
  const auto& cases = summary.loadCases;
  const auto worst =
      std::max_element(cases.begin(), cases.end(), [quantity](const auto& a, const auto& b) {
        const double left = (a.*quantity).value;
        const double right = (b.*quantity).value;
        return left < right || (std::isnan(right) && !std::isnan(left));
      });
  return worst == cases.end() ? nullptr : &*worst;
}

}  // namespace verenwick::host
