#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "host/Terminal.h"
#include "host/Units.h"
#include "host/summary/RunSummary.h"

namespace verenwick::host {
namespace {

using json = nlohmann::ordered_json;

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
    fmt::print("{:>6}{}{}{}{:>7}\n", ++number, column(mode.frequency, 4, 15),
               column(rpm / kSecondsOfMinute, 4, 15), column(rpm, 3, 15),
               mode.nodes ? std::to_string(*mode.nodes) : "-");
  }
  if (!allFinite) {
    fmt::print("     -: the mode leaves the reference inertia of its shape at rest\n");
  }
}

void printEngine(const RunSummary& summary, std::size_t engine) {
  const EngineSummary& own = summary.engines[engine];
  printTitle(fmt::format("Critical speeds of diesel {}{}: the orders with the largest vector sums",
                         own.id, own.name.empty() ? "" : ", " + own.name));
  fmt::print("{:>6}", "mode");
  for (std::size_t i = 0; i < kOrdersShown; ++i) {
    fmt::print("{:>8}{:>7}{:>10}", "order", "sum", "rpm");
  }
  fmt::print("\n");
  int mode = 1;
  bool anyUnresolved = false;
  for (const std::vector<CriticalSpeed>& orders : own.modes) {
    fmt::print("{:>6}", ++mode);
    std::size_t width = 8;
    for (const CriticalSpeed& each : orders) {
      const bool unresolved = isUnresolved(summary, engine, mode, each);
      fmt::print("{}{}{}{}", column(each.order, 1, width), column(each.sum, 3, 7),
                 column(each.rpm, 2, 10), unresolved ? "*" : "");
      width = unresolved ? 7 : 8;
      anyUnresolved = anyUnresolved || unresolved;
    }
    fmt::print("\n");
  }
  if (anyUnresolved) {
    fmt::print("     *: lies between the load cases, see below\n");
  }
}

void printLoadCases(const std::vector<LoadCaseSummary>& loadCases) {
  printTitle("Largest vibratory values of each load case, with the id of the shaft or inertia");
  fmt::print("{:>6}{:>10}{:>15}{:>7}{:>16}{:>7}{:>18}{:>9}{:>17}\n", "case", "rpm", "torque [kN m]",
             "shaft", "stress [N/mm2]", "shaft", "deflection [mrad]", "inertia", "total loss [kW]");
  int number = 0;
  for (const LoadCaseSummary& each : loadCases) {
    fmt::print("{:>6}{:>10}{:>15.4g}{:>7}{:>16.4g}{:>7}{:>18.4g}{:>9}{:>17.4g}\n", ++number,
               each.speed ? column(*each.speed, 1, 10) : "-", each.torque.value / kKilo,
               each.torque.id, each.stress.value / kMega, each.stress.id,
               each.deflection.value / kMilli, each.deflection.id, each.loss / kKilo);
  }
}

/// Peaks that the load cases step over.
void printPeaks(const std::vector<PeakSummary>& peaks) {
  constexpr std::size_t shown = 10;
  if (peaks.empty()) {
    return;
  }
  printTitle("Between load cases the largest values may be higher");
  for (std::size_t i = 0; i < std::min(shown, peaks.size()); ++i) {
    // What it comes to on a line of its own, or a terminal breaks the line anywhere.
    const std::string& words = peaks[i].words;
    const std::size_t colon = words.rfind(": ");
    fmt::print("  {}\n      {}\n", words.substr(0, colon + 1), words.substr(colon + 2));
  }
  if (peaks.size() > shown) {
    fmt::print("  and {} more, which the JSON summary and the report hold\n", peaks.size() - shown);
  }
}

/// A number of the summary: null for what a document can't hold.
json number(double value) { return std::isfinite(value) ? json(value) : json(nullptr); }

json jsonOf(const Largest& largest, const char* point) {
  return {{"value", number(largest.value)}, {point, largest.id}};
}

}  // namespace

void printSummary(const std::string& name, const RunSummary& summary, Steps steps) {
  printCounts(name, summary);
  if (steps.free) {
    printModes(summary.modes);
    for (std::size_t engine = 0; engine < summary.engines.size(); ++engine) {
      printEngine(summary, engine);
    }
  }
  if (steps.forced) {
    printLoadCases(summary.loadCases);
    if (steps.free) {
      printPeaks(summary.peaks);
    } else {
      fmt::print(
          "Whether peaks lie between the load cases is not known without the free vibration.\n");
    }
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
      const EngineSummary& own = summary.engines[engine];
      for (std::size_t mode = 0; mode < own.modes.size(); ++mode) {
        for (const CriticalSpeed& each : own.modes[mode]) {
          criticals.push_back(
              {{"diesel", own.id},
               {"mode", mode + 2},
               {"order", number(each.order)},
               {"relativeVectorSum", number(each.sum)},
               {"rpm", number(each.rpm)},
               {"unresolved",
                isUnresolved(summary, engine, static_cast<std::int64_t>(mode) + 2, each)}});
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
  if (steps.free && steps.forced) {
    json& peaks = document["unresolvedPeaks"] = json::array();
    for (const PeakSummary& each : summary.peaks) {
      json sources = json::array();
      for (const auto& [kind, id] : each.sources) {
        sources.push_back({{"kind", kind}, {"id", id}});
      }
      peaks.push_back({{"sources", std::move(sources)},
                       {"order", number(each.peak.order)},
                       {"mode", each.peak.mode},
                       {"rpm", number(each.peak.speed)},
                       {"below", number(each.peak.below)},
                       {"above", number(each.peak.above)},
                       {"shaft", each.shaft},
                       {"expectedTorque", number(each.peak.torque)},
                       {"largestTorque", number(each.peak.stated)},
                       {"words", each.words}});
    }
  }
  return document;
}

void printDocument(const json& document) {
  constexpr int indent = 2;
  fmt::print("{}\n", document.dump(indent, ' ', false, json::error_handler_t::replace));
}

}  // namespace verenwick::host
