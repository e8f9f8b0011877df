#include "host/run/RunMany.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <optional>
#include <thread>
#include <utility>

#include "host/Ending.h"
#include "host/Terminal.h"
#include "host/run/ChildProcess.h"
#include "host/run/Progress.h"

namespace verenwick::host {
namespace {

using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

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
  std::string begun;  ///< as in a record, which is not of an earlier run then
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
  if (options.strict) {
    words.emplace_back("--strict");
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
    options.whenGood(*run.plan);
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

/// Draws a line for each run over those drawn before.
void draw(const std::vector<Progress>& runs, bool first) {
  std::string text = first ? "" : fmt::format("\x1b[{}A", runs.size());
  std::size_t width = 0;
  for (const Progress& run : runs) {
    width = std::max(width, run.plan->name.size());
  }
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

}  // namespace

std::vector<FinishedRun> runMany(const std::vector<PlannedRun>& plans, const ManyOptions& options) {
  std::vector<Progress> runs;
  runs.reserve(plans.size());
  for (const PlannedRun& plan : plans) {
    Progress& run = runs.emplace_back();
    run.plan = &plan;
  }
  runAll(runs, options);
  std::vector<FinishedRun> finished;
  finished.reserve(runs.size());
  for (Progress& run : runs) {
    finished.push_back(
        {run.plan, *run.status, run.seconds, std::move(run.output), std::move(run.record)});
  }
  return finished;
}

}  // namespace verenwick::host
