#include "host/run/OpenResults.h"

#include <fmt/format.h>

#include <algorithm>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "host/GivenPaths.h"
#include "host/plant/ShaftLine.h"
#include "host/run/RunLock.h"
#include "host/run/RunPaths.h"

namespace verenwick::host {
namespace {

namespace fs = std::filesystem;
using results::ResultFile;

constexpr const char* kWithoutRecord =
    "without a run record: whether these files belong to one whole run is not known";
constexpr const char* kNotVerified =
    "not verified: whether these files belong to one whole run is not known";

[[noreturn]] void refuse(const fs::path& directory, const std::string& why) {
  throw std::runtime_error(
      fmt::format("{}: {} (--unverified shows the files all the same)", directory.string(), why));
}

void checkStatus(const RunRecord& record, const fs::path& directory) {
  const std::string words = record.words.empty() ? "" : ": " + record.words;
  switch (record.status) {
    case RunStatus::complete:
      return;
    case RunStatus::refused:
      refuse(directory, fmt::format("the run of {} refused its input{}", record.started, words));
    case RunStatus::stopped:
      refuse(directory, fmt::format("the run of {} broke off{}", record.started, words));
    case RunStatus::running:
      break;
  }
  refuse(
      directory,
      RunLock::isHeld(directory)
          ? fmt::format("the run of {} is still on", record.started)
          : fmt::format("the run of {} did not end: it was killed, or could not write its record",
                        record.started));
}

/// A file that the run has read must not have changed where it still lies.
void checkRead(const ReadFile& file, const fs::path& path, std::string_view what,
               const fs::path& directory) {
  std::error_code error;
  if (fs::is_regular_file(path, error) && stateOf(path, Checksum::sha256) != file.state) {
    refuse(directory, fmt::format("the {} {} is not as the run has read it", what, path.string()));
  }
}

void checkWritten(const RunRecord& record, const ResultFile& file, bool read,
                  const results::ResultDirectory& directory) {
  const fs::path& path = directory.path();
  const WrittenFile* const known = record.file(file.name);
  std::error_code error;
  const bool present = fs::exists(fs::symlink_status(path / file.name, error));
  if (known == nullptr) {
    if (present) {
      refuse(path, fmt::format("{} is not of the run of {}", file.name, record.started));
    }
    return;
  }
  if (!present) {
    refuse(path, fmt::format("{} of the run is missing", file.name));
  }
  const std::uintmax_t bytes = fs::file_size(path / file.name, error);
  if (error || bytes != known->state.bytes) {
    refuse(path, fmt::format("{} has another size than the run has left it with, {} bytes "
                             "instead of {}",
                             file.name, error ? 0 : bytes, known->state.bytes));
  }
  if (read && stateOf(path / file.name, Checksum::xxh3) != known->state) {
    refuse(path, fmt::format("{} is not as the run has left it, its checksum differs", file.name));
  }
}

void verify(const RunRecord& record, const results::ResultDirectory& directory,
            const OpenOptions& options) {
  const fs::path& path = directory.path();
  checkStatus(record, path);
  checkRead(record.input, record.input.path, "input", path);
  if (options.input) {
    checkRead(record.input, *options.input, "input", path);
  }
  for (const ReadFile& file : record.dataFiles) {
    checkRead(file, file.path, "data file", path);
  }
  for (const ResultFile& file : results::kResultFiles) {
    const auto& files = options.files;
    // The counts of the model say where a value stands in any file.
    const bool read = files.empty() || file.layout == results::Layout::systemInfo ||
                      std::find(files.begin(), files.end(), &file) != files.end();
    checkWritten(record, file, read, directory);
  }
}

}  // namespace

std::optional<fs::path> OpenedResults::input() const {
  std::error_code error;
  if (!record || !remark.empty() || !fs::is_regular_file(record->input.path, error)) {
    return std::nullopt;
  }
  return record->input.path;
}

OpenedResults openResults(const fs::path& path, const OpenOptions& options) {
  results::ResultDirectory directory(path);
  checkResultFiles(path);
  if (options.input) {
    checkReadable(*options.input);
  }
  std::optional<RunRecord> record;
  std::string remark;
  try {
    record = readRecord(path);
    remark = options.unverified ? kNotVerified : record ? "" : kWithoutRecord;
  } catch (const std::runtime_error& fault) {
    if (!options.unverified) {
      refuse(path, fault.what());
    }
    remark = kNotVerified;
  }
  results::KnownOrders orders;
  if (record) {
    if (!options.unverified) {
      verify(*record, directory, options);
    }
    orders = record->orders;
  }
  if (!orders.propeller && options.input) {
    if (const auto line = readShaftLine(*options.input)) {
      orders.propeller = propellerOrders(*line);
    }
  }
  return {results::ResultDirectory(path, orders), std::move(record), std::move(remark)};
}

}  // namespace verenwick::host
