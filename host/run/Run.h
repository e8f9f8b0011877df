#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/run/RunRecord.h"
#include "results/ResultReader.h"
#include "verenwick.h"

namespace verenwick::host {

inline constexpr std::int32_t kModeDescribe = VERENWICK_MODE_REPORTS;
inline constexpr std::int32_t kModeFree = VERENWICK_MODE_FREE;
inline constexpr std::int32_t kModeForced = VERENWICK_MODE_FORCED;
inline constexpr std::int32_t kModeBoth = VERENWICK_MODE_BOTH;

/// The words for the run modes.
inline constexpr std::array<std::pair<std::string_view, std::int32_t>, 4> kModeNames = {
    {{"describe", kModeDescribe},
     {"free", kModeFree},
     {"forced", kModeForced},
     {"both", kModeBoth}}};

/// What a run calculates.
struct Steps {
  bool free;
  bool forced;
};

/// What a run mode calculates.
constexpr Steps stepsOf(std::int32_t mode) {
  return {mode != kModeDescribe && mode != kModeForced, mode != kModeDescribe && mode != kModeFree};
}

/// What to run; paths are absolute.
struct RunRequest {
  std::filesystem::path input;
  std::filesystem::path directory;  ///< of the results, made if it isn't there
  std::int32_t mode;
  std::vector<std::string> command;  ///< for the record
  /// What is to be made of good results before the run has ended, in the result directory: the
  /// names of the files.
  std::function<std::vector<std::string>(const results::ResultDirectory&)> furtherFiles;
};

/// What a run has left.
struct RunOutcome {
  RunRecord record;
  std::string log;
};

/// One run of the solver, which serves one in a process, under the lock of its result directory and
/// with a record of it. Takes away what an earlier run has left there; a "Genset.txt" beside the
/// input is copied there. A refused input and a calculation that broke off are outcomes. Throws
/// std::runtime_error where the run can't begin or its record can't be kept; nothing is touched
/// while another run holds the directory.
RunOutcome runSolver(const RunRequest& request);

}  // namespace verenwick::host
