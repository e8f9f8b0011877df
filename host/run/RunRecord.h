#pragma once

#include <cstdint>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/Checksum.h"
#include "results/ResultReader.h"
#include "verenwick.h"

/// The record of a run: what it was, how it ended, and which files are its results. It stands
/// beside the results, and whoever reads them asks it first.
namespace verenwick::host {

/// The name of the record in a result directory.
inline constexpr const char* kRecordName = "run.json";

/// How far a run has come.
enum class RunStatus {
  running,   ///< begun; still so if the process was killed
  complete,  ///< ended well: all results are there
  refused,   ///< the input was refused
  stopped    ///< broke off
};

std::string_view wordOf(RunStatus status);

/// A file that a run has read, with its SHA-256.
struct ReadFile {
  std::string name;            ///< as the input file or the command line names it
  std::filesystem::path path;  ///< absolute
  FileState state;
};

/// A file that a run has left in its result directory, with its XXH3.
struct WrittenFile {
  std::string name;
  FileState state;
};

struct RunRecord {
  std::vector<std::string> command;  ///< words behind the program's name
  std::int32_t mode = 0;
  RunStatus status = RunStatus::running;
  std::string words;    ///< why it ended as it did; empty for a complete run
  std::string started;  ///< UTC, ISO 8601
  std::string ended;
  std::string version = VERENWICK_VERSION;  ///< of the program
  ReadFile input;
  std::vector<ReadFile> dataFiles;
  std::vector<std::string> errors;  ///< lines of the log
  std::vector<std::string> warnings;
  results::KnownOrders orders;
  std::vector<WrittenFile> files;         ///< of the table of result files
  std::vector<std::string> furtherFiles;  ///< names of what else was made of them

  /// The file of this name among the files of the run; null if there is none.
  [[nodiscard]] const WrittenFile* file(std::string_view name) const;
};

/// This moment in UTC, ISO 8601 with milliseconds.
std::string momentNow();

/// Replaces the record of a directory in one step. Throws std::runtime_error if it can't be
/// written.
void writeRecord(const RunRecord& record, const std::filesystem::path& directory);

/// What a program wants to know of how a run ended: the outcome, its warnings and, unless it is
/// complete, its errors.
nlohmann::ordered_json endingOf(const RunRecord& record);

/// The record of a directory; nothing if it has none. Throws std::runtime_error if it is damaged.
std::optional<RunRecord> readRecord(const std::filesystem::path& directory);

}  // namespace verenwick::host
