#include "host/RunMany.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <optional>
#include <sstream>
#include <thread>
#include <utility>

#include "host/ChildProcess.h"
#include "host/Ending.h"
#include "host/OpenResults.h"
#include "host/Progress.h"
#include "host/Run.h"
#include "host/RunRecord.h"
#include "host/RunSummary.h"
#include "host/Terminal.h"
#include "host/Units.h"

namespace verenwick::host {
namespace {

using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;
using json = nlohmann::ordered_json;

/// Stands for the record of a run that has left none.
RunRecord brokenOff() {
  RunRecord record;
  record.status = RunStatus::stopped;
  return record;
}

/// A planned run on its way.
struct Progress {
  const PlannedRun* plan;
  std::optional<ChildProcess> process;
  Clock::time_point started;
  double seconds = 0;
  std::optional<int> status;  ///< once it has ended
  std::string output;
  std::optional<RunSummary> summary;  ///< of a good run
  std::string begun;                  ///< as in a record, which is not of an earlier run then
  RunRecord record = brokenOff();
};

void fail(Progress& run, const std::exception& error) {
  run.status = 1;
  run.output += fmt::format("verenwick: {}\n", wordsOf(error));
}

void start(Progress& run, const ManyOptions& options) {
  std::vector<std::string> words = {"run", run.plan->input.string(), "--quiet",
                                    "--results=" + run.plan->results.string(),
                                    fmt::format("--mode={}", options.mode)};
  if (options.report) {
    words.emplace_back("--report");
  }
  run.started = Clock::now();
  run.begun = momentNow();
  try {
    run.process.emplace(words);
  } catch (const std::exception& error) {
    fail(run, error);
  }
}

/// The record that a run has left; one that broke off where there is none of its own.
RunRecord recordOf(const Progress& run) {
  try {
    if (auto record = readRecord(run.plan->results); record && record->started >= run.begun) {
      if (record->status == RunStatus::running) {
        record->status = RunStatus::stopped;
      }
      return std::move(*record);
    }
  } catch (const std::exception&) {
    // A damaged record says no more than a missing one.
  }
  return brokenOff();
}

/// Looks after a run; true if it is still on.
bool running(Progress& run, const ManyOptions& options) {
  run.seconds = Seconds(Clock::now() - run.started).count();
  std::optional<ChildEnd> end = run.process->ended();
  if (!end) {
    return true;
  }
  run.status = end->status;
  run.output = std::move(end->words);
  run.process.reset();
  run.record = recordOf(run);
  if (*run.status != 0) {
    return false;
  }
  try {
    run.summary =
        summarise(run.plan->input, openResults(run.plan->results).directory, stepsOf(options.mode));
  } catch (const std::exception& error) {
    fail(run, error);
  }
  return false;
}

std::string stateOf(const Progress& run) {
  if (run.status) {
    return *run.status == 0 ? "done" : "failed";
  }
  if (!run.process) {
    return "waits";
  }
  return progressOf(run.plan->results);
}

std::size_t widthOfNames(const std::vector<Progress>& runs) {
  std::size_t width = 0;
  for (const Progress& run : runs) {
    width = std::max(width, run.plan->name.size());
  }
  return width;
}

/// Draws a line for each run over those drawn before.
void draw(const std::vector<Progress>& runs, bool first) {
  std::string text = first ? "" : fmt::format("\x1b[{}A", runs.size());
  const std::size_t width = widthOfNames(runs);
  for (const Progress& run : runs) {
    const std::string time = run.seconds > 0 ? fmt::format("{:7.1f} s", run.seconds) : "";
    text +=
        fmt::format("{:<{}}  {:<34}{}{}\n", run.plan->name, width, stateOf(run), time, kClearToEnd);
  }
  std::fputs(text.c_str(), stderr);
}

/// After a signal to this program: sends it on to the runs, ends them if they don't heed it, and
/// starts no other.
void stopAll(std::vector<Progress>& runs, std::optional<Clock::time_point>& stopped) {
  constexpr auto grace = std::chrono::seconds(5);
  const bool first = !stopped;
  if (first) {
    stopped = Clock::now();
  }
  const bool atOnce = HeldSignals::count() > 1 || Clock::now() - *stopped > grace;
  for (Progress& run : runs) {
    if (run.process && (first || atOnce)) {
      run.process->stop(atOnce);
    } else if (!run.process && !run.status) {
      run.status = 1;
      run.output = "verenwick: not started\n";
    }
  }
}

void runAll(std::vector<Progress>& runs, const ManyOptions& options) {
  constexpr auto pause = std::chrono::milliseconds(50);
  const bool watched = canRedraw(stderr) && !options.quiet;
  std::optional<Clock::time_point> stopped;
  std::size_t next = 0;
  bool first = true;
  while (true) {
    if (HeldSignals::caught()) {
      stopAll(runs, stopped);
    }
    std::size_t active = 0;
    for (Progress& run : runs) {
      active += run.process && running(run, options) ? 1 : 0;
    }
    for (; next < runs.size() && active < options.jobs && !stopped; ++next) {
      start(runs[next], options);
      active += runs[next].process ? 1 : 0;
    }
    if (watched) {
      draw(runs, first);
      first = false;
    }
    if (active == 0 && (stopped || next == runs.size())) {
      return;
    }
    std::this_thread::sleep_for(pause);
  }
}

/// Why a run failed: the first error among its words, or else the last line.
std::string reason(const Progress& run) {
  std::istringstream lines(run.output);
  std::string line;
  std::string last = fmt::format("ended with status {}", *run.status);
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

void printTable(const std::vector<Progress>& runs) {
  const std::size_t width = std::max<std::size_t>(widthOfNames(runs), 5);
  fmt::print("{}\n",
             styled(stdout, fmt::emphasis::bold,
                    fmt::format("{:<{}}{:>9}{:>7}{:>13}{:>15}{:>7}{:>9}{:>16}{:>7}{:>9}", "plant",
                                width, "time [s]", "modes", "mode 2 [Hz]", "torque [kN m]", "shaft",
                                "at rpm", "stress [N/mm2]", "shaft", "at rpm")));
  for (const Progress& run : runs) {
    fmt::print("{:<{}}{:>9.1f}", run.plan->name, width, run.seconds);
    if (!run.summary) {
      fmt::print("  {}\n", styled(stdout, fg(fmt::terminal_color::red), reason(run)));
      continue;
    }
    const RunSummary& summary = *run.summary;
    fmt::print("{:>7}{:>13}", summary.modes.empty() ? "-" : std::to_string(summary.modes.size()),
               summary.modes.size() < 2
                   ? "-"
                   : fmt::format("{:.4g}", summary.modes[1].frequency / (2 * kPi)));
    fmt::print("{}{}\n", worstColumns(summary, &LoadCaseSummary::torque, kKilo, 15),
               worstColumns(summary, &LoadCaseSummary::stress, kMega, 16));
  }
}

void printJson(const std::vector<Progress>& runs, Steps steps) {
  json documents = json::array();
  for (const Progress& run : runs) {
    json document = {{"input", run.plan->input.string()},
                     {"results", run.plan->results.string()},
                     {"status", *run.status},
                     {"seconds", run.seconds}};
    document.update(endingOf(run.record));
    if (run.summary) {
      document.update(jsonOf(*run.summary, steps));
    } else {
      document["words"] = run.output;
    }
    documents.push_back(std::move(document));
  }
  printDocument(documents);
}

}  // namespace

int runMany(const std::vector<PlannedRun>& plans, const ManyOptions& options) {
  std::vector<Progress> runs;
  runs.reserve(plans.size());
  for (const PlannedRun& plan : plans) {
    Progress& run = runs.emplace_back();
    run.plan = &plan;
  }
  const HeldSignals held;  // takes effect in the end
  runAll(runs, options);
  if (const auto signal = HeldSignals::caught()) {
    std::fputs(fmt::format("verenwick: ended by {}; the runs that are not done have no results\n",
                           signalName(*signal))
                   .c_str(),
               stderr);
  }
  for (const Progress& run : runs) {
    if (*run.status != 0) {
      std::fputs(fmt::format("{}:\n{}", run.plan->name, run.output).c_str(), stderr);
    }
  }
  if (options.json) {
    printJson(runs, stepsOf(options.mode));
  } else if (!options.quiet) {
    printTable(runs);
  }
  if (HeldSignals::caught()) {
    static_cast<void>(std::fflush(stdout));
  }
  return std::all_of(runs.begin(), runs.end(), [](const Progress& run) { return *run.status == 0; })
             ? 0
             : 1;
}

}  // namespace verenwick::host
