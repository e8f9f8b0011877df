#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "host/run/RunRecord.h"

namespace verenwick::host {

/// One of several runs.
struct PlannedRun {
  std::string name;
  std::filesystem::path input;
  std::filesystem::path results;
};

struct ManyOptions {
  std::int32_t mode;
  unsigned jobs;  ///< runs at the same time
  bool report;    ///< write the report of each
  bool strict;    ///< calculate none that has warnings
  bool quiet;     ///< show no progress
  /// What is to be done with a good run as soon as it has ended. One for which it throws has
  /// failed.
  std::function<void(const PlannedRun&)> whenGood;
};

/// What came of a planned run.
struct FinishedRun {
  const PlannedRun* plan;
  int status;          ///< 0 if it is good
  double seconds;      ///< it took
  std::string output;  ///< what it has printed; why it failed
  RunRecord record;    ///< one that broke off where it has left none
};

/// Runs each input in a process of its own, since the solver serves one run in a process, and shows
/// on standard error how far they are. A run that fails stops no other. Signals are to be held: one
/// that comes ends the runs.
std::vector<FinishedRun> runMany(const std::vector<PlannedRun>& plans, const ManyOptions& options);

}  // namespace verenwick::host
