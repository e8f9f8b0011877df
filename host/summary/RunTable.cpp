#include "host/summary/RunTable.h"

#include <fmt/format.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <utility>

#include "host/Terminal.h"
#include "host/Units.h"

namespace verenwick::host {
namespace {

using json = nlohmann::ordered_json;

/// Why a run failed: the first error among its words, or else the last line.
std::string reason(const FinishedRun& run) {
  std::istringstream lines(run.output);
  std::string line;
  std::string last = fmt::format("ended with status {}", run.status);
  while (std::getline(lines, line)) {
    line.erase(0, line.find_first_not_of(' '));
    if (line.starts_with("Error") || line.starts_with("error")) {
      return line;
    }
    last = line.empty() ? last : line;
  }
  return last;
}

/// The largest value of a quantity in a unit, its shaft and its speed, as columns of the table.
std::string worstColumns(const RunSummary& summary, Largest LoadCaseSummary::*quantity, double unit,
                         int width) {
  const LoadCaseSummary* worst = worstLoadCase(summary, quantity);
  if (worst == nullptr || (worst->*quantity).value == 0) {
    return fmt::format("{:>{}}{:>7}{:>9}", "-", width, "-", "-");
  }
  return fmt::format("{:>{}.4g}{:>7}{:>9}", (worst->*quantity).value / unit, width,
                     (worst->*quantity).id, worst->speed ? column(*worst->speed, 1, 9) : "-");
}

}  // namespace

void printTable(const std::vector<SummarisedRun>& runs) {
  std::size_t width = 5;
  for (const auto& [run, summary] : runs) {
    width = std::max(width, run.plan->name.size());
  }
  fmt::print("{}\n",
             styled(stdout, fmt::emphasis::bold,
                    fmt::format("{:<{}}{:>9}{:>7}{:>13}{:>15}{:>7}{:>9}{:>16}{:>7}{:>9}", "plant",
                                width, "time [s]", "modes", "mode 2 [Hz]", "torque [kN m]", "shaft",
                                "at rpm", "stress [N/mm2]", "shaft", "at rpm")));
  for (const auto& [run, found] : runs) {
    fmt::print("{:<{}}{:>9.1f}", run.plan->name, width, run.seconds);
    if (!found) {
      fmt::print("  {}\n", styled(stdout, fg(fmt::terminal_color::red), reason(run)));
      continue;
    }
    const RunSummary& summary = *found;
    fmt::print("{:>7}{:>13}", summary.modes.empty() ? "-" : std::to_string(summary.modes.size()),
               summary.modes.size() < 2
                   ? "-"
                   : fmt::format("{:.4g}", summary.modes[1].frequency / (2 * kPi)));
    fmt::print("{}{}\n", worstColumns(summary, &LoadCaseSummary::torque, kKilo, 15),
               worstColumns(summary, &LoadCaseSummary::stress, kMega, 16));
  }
}

json jsonOf(const std::vector<SummarisedRun>& runs, Steps steps) {
  json documents = json::array();
  for (const auto& [run, summary] : runs) {
    json document = {{"input", run.plan->input.string()},
                     {"results", run.plan->results.string()},
                     {"status", run.status},
                     {"seconds", run.seconds}};
    document.update(endingOf(run.record));
    if (summary) {
      document.update(jsonOf(*summary, steps));
    } else {
      document["words"] = run.output;
    }
    documents.push_back(std::move(document));
  }
  return documents;
}

}  // namespace verenwick::host
