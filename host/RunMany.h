#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

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
  bool json;      ///< print a document instead of a table
  bool quiet;     ///< print nothing but what went wrong
};

/// Runs each input in a process of its own, since the solver serves one run in a process, and
/// prints a table of them. A run that fails stops no other. The exit status: 0 if all are good.
int runMany(const std::vector<PlannedRun>& runs, const ManyOptions& options);

}  // namespace verenwick::host
