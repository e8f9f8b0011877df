#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "host/run/RunRecord.h"
#include "results/ResultReader.h"

namespace verenwick::host {

struct OpenOptions {
  /// Open whatever is there, and only say that it wasn't verified.
  bool unverified = false;
  /// The input file of the run as the user names it; it must be the one that the record knows.
  std::optional<std::filesystem::path> input;
  /// The files that will be read; all if none are named. Of these the checksum must be right, of
  /// all others the size.
  std::vector<const results::ResultFile*> files;
};

/// A result directory that may be shown.
struct OpenedResults {
  results::ResultDirectory directory;
  std::optional<RunRecord> record;
  /// What must be said of every table and page made from it; empty for the whole results of a run.
  std::string remark;

  /// The input file of the run, where the results are verified and it still lies where it was.
  [[nodiscard]] std::optional<std::filesystem::path> input() const;
};

/// The one way in which results are opened to be shown: holds them against the record of their run.
/// Throws std::runtime_error, with words that name the file, where the run broke off or is still
/// on, where a file of the run, its input or a data file is another one than the record says, or
/// where the record is damaged. A directory without a record, as another host leaves it, is opened
/// with a remark.
OpenedResults openResults(const std::filesystem::path& directory, const OpenOptions& options = {});

}  // namespace verenwick::host
