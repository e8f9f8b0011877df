#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <utility>

namespace verenwick::host {

inline constexpr std::int32_t kModeDescribe = 0;
inline constexpr std::int32_t kModeFree = 1;
inline constexpr std::int32_t kModeForced = 2;
inline constexpr std::int32_t kModeBoth = 3;

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

/// What the log says of a run.
struct RunOutcome {
  bool accepted;
  std::string log;
};

/// One run of the solver, which serves one in a process. Makes the result directory and takes away
/// what an earlier run has left of the files that this one writes; a "Genset.txt" beside the input
/// is copied there. Throws std::runtime_error if that can't be done, or if the run leaves files
/// that aren't whole.
RunOutcome runSolver(const std::filesystem::path& input, const std::filesystem::path& directory,
                     std::int32_t mode);

}  // namespace verenwick::host
