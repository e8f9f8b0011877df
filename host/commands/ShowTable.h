#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "host/plant/ShaftLine.h"
#include "results/ResultReader.h"

/// Result files printed for a person or, separated by commas, for a program.
namespace verenwick::host {

/// The input file of a run, where it is known.
using KnownLine = std::optional<ShaftLine>;

/// What a table is narrowed to.
struct Choice {
  std::optional<std::int64_t> loadCase;
  std::optional<std::int64_t> source;  ///< id, or number in its family where ids aren't known
  std::optional<std::int64_t> mode;
  std::optional<double> order;        ///< value, or place where values aren't known
  std::optional<std::int64_t> point;  ///< id, or row where ids aren't known
  std::optional<std::int64_t> step;
};

/// How a table is printed.
struct TableForm {
  bool csv = false;
  std::string remark;  ///< to be said of the results; may be empty
};

/// Prints a binary result file. Throws UsageError for a choice that the file doesn't have.
void showTable(results::ResultValues values, const results::ResultDirectory& directory,
               const KnownLine& line, const Choice& choice, const TableForm& form);

/// Prints which result files there are, with units, sizes and what they hold.
void showList(const results::ResultDirectory& directory, const std::string& about,
              const TableForm& form);

}  // namespace verenwick::host
