#pragma once

#include <optional>
#include <vector>

#include "host/run/Run.h"
#include "host/run/RunMany.h"
#include "host/summary/RunSummary.h"

/// Several runs side by side.
namespace verenwick::host {

struct SummarisedRun {
  FinishedRun run;
  std::optional<RunSummary> summary;  ///< of a good run
};

/// As a table on standard output, a line each.
void printTable(const std::vector<SummarisedRun>& runs);

/// As a list of documents in SI units.
nlohmann::ordered_json jsonOf(const std::vector<SummarisedRun>& runs, Steps steps);

}  // namespace verenwick::host
