#include "host/run/Run.h"

#include <fmt/format.h>

#include <algorithm>
#include <initializer_list>
#include <new>
#include <sstream>
#include <stdexcept>
#include <string_view>
#include <system_error>
#include <utility>

#include "host/plant/ShaftLine.h"
#include "host/run/DataFiles.h"
#include "host/run/RunLock.h"
#include "verenwick.hpp"

namespace verenwick::host {
namespace {

namespace fs = std::filesystem;
using results::kResultFiles;
using results::Layout;
using results::Needs;
using results::ResultDirectory;
using results::ResultFile;
using results::resultFile;
using results::Step;
using results::SystemCount;

constexpr const ResultFile& kLog = resultFile("Verenwick.log");

/// The current directory for as long as it lives.
class CurrentFolder {
 public:
  explicit CurrentFolder(const fs::path& folder) : before_(fs::current_path(error_)) {
    fs::current_path(folder, error_);
  }
  CurrentFolder(const CurrentFolder&) = delete;
  CurrentFolder& operator=(const CurrentFolder&) = delete;
  ~CurrentFolder() {
    if (!before_.empty()) {
      fs::current_path(before_, error_);
    }
  }

 private:
  std::error_code error_;
  fs::path before_;
};

bool ran(Step step, Steps steps) {
  return step == Step::run || (step == Step::free ? steps.free : steps.forced);
}

void makeDirectory(const fs::path& directory) {
  std::error_code error;
  fs::create_directories(directory, error);
  if (!fs::is_directory(directory)) {
    throw std::runtime_error(fmt::format("the result directory {} can't be made{}{}",
                                         directory.string(), error ? ": " : "",
                                         error ? error.message() : ""));
  }
}

/// The names that an earlier run may have left: all files of the table, so that no result of
/// another plant stays beside those of this one, and what its record lists.
std::vector<std::string> earlierFiles(const fs::path& directory) {
  std::vector<std::string> names;
  for (const ResultFile& file : kResultFiles) {
    if (file.name != kGensetFile.name) {
      names.emplace_back(file.name);
    }
  }
  try {
    if (const auto record = readRecord(directory)) {
      for (const std::string& name : record->furtherFiles) {
        if (fs::path(name).filename() == name) {
          names.push_back(name);
        }
      }
    }
  } catch (const std::runtime_error&) {
    return names;  // a damaged record lists nothing
  }
  return names;
}

/// What stands under the name of a result file must be a file, or a link, which is taken away
/// itself; and nothing that this run reads.
void checkRemovable(const fs::path& path, const RunRecord& record) {
  std::error_code error;
  const fs::file_type type = fs::symlink_status(path, error).type();
  if (type != fs::file_type::not_found && type != fs::file_type::regular &&
      type != fs::file_type::symlink) {
    throw std::runtime_error(fmt::format(
        "{} can't be removed: it is no file, but stands in the place of one", path.string()));
  }
  const auto isRead = [&](const ReadFile& file) { return fs::equivalent(path, file.path, error); };
  if (type == fs::file_type::regular &&
      (isRead(record.input) ||
       std::any_of(record.dataFiles.begin(), record.dataFiles.end(), isRead))) {
    throw std::runtime_error(
        fmt::format("{} is read by this run and would be written over", path.string()));
  }
}

void removeFiles(const fs::path& directory, const std::vector<std::string>& names) {
  for (const std::string& name : names) {
    std::error_code error;
    fs::remove(directory / name, error);
    if (error) {
      throw std::runtime_error(
          fmt::format("{} of an earlier run can't be removed: {}", name, error.message()));
    }
  }
}

/// Gives the run the genset file that lies beside the input, in place of one in the result
/// directory.
void takeGensetFile(RunRecord& record, const fs::path& directory) {
  const fs::path source = record.input.path.parent_path() / kGensetFile.name;
  const fs::path target = directory / kGensetFile.name;
  std::error_code error;
  if (!fs::exists(source, error)) {
    return;
  }
  if (!fs::equivalent(source, target, error) || fs::is_symlink(target, error)) {
    if (fs::is_symlink(target, error)) {
      fs::remove(target, error);
    }
    fs::copy_file(source, target, fs::copy_options::overwrite_existing, error);
    if (error) {
      throw std::runtime_error(fmt::format("{} can't be copied to {}: {}", source.string(),
                                           target.string(), error.message()));
    }
  }
  record.dataFiles.push_back(
      {std::string(kGensetFile.name), source, stateOf(source, Checksum::sha256)});
}

/// Whether the model calls for a file; false too where only the file itself can tell.
bool calledFor(const ResultFile& file, const ResultDirectory& directory) {
  const auto any = [&directory](std::initializer_list<SystemCount> counts) {
    return std::any_of(counts.begin(), counts.end(), [&directory](SystemCount count) {
      return directory.count(count).value_or(0) > 0;
    });
  };
  switch (file.needs) {
    case Needs::nothing:
      return true;
    case Needs::diesel:
      return any({SystemCount::diesels});
    case Needs::couplingOrDamper:
      return any({SystemCount::linearCouplings, SystemCount::progressiveCouplings,
                  SystemCount::geislingerCouplings, SystemCount::viscousDampers,
                  SystemCount::rubberDampers, SystemCount::steelSpringDampers});
    case Needs::ice:
    case Needs::iceAndCouplingOrDamper:
    case Needs::angleBased:
      break;
  }
  return false;
}

/// Throws, with the first fault, if a file of the calculation is missing or a file of the run isn't
/// whole: a calculation that fails leaves its files as they are and tells the host nothing.
void checkWhole(const ResultDirectory& directory, Steps steps) {
  for (const ResultFile& file : kResultFiles) {
    if (file.layout != Layout::text && ran(file.step, steps) &&
        (calledFor(file, directory) || directory.has(file))) {
      static_cast<void>(directory.open(file));
    }
  }
}

/// Takes the findings from the log into the record. Returns the words of a stop, which the solver
/// puts behind two stars, also of a file that it could do without.
std::string takeFindings(const std::string& log, RunRecord& record) {
  constexpr std::string_view kStop = "** ";
  constexpr std::string_view kWarning = "Warning";
  std::string stop;
  std::istringstream lines(log);
  for (std::string line; std::getline(lines, line);) {
    line.erase(0, std::min(line.find_first_not_of(' '), line.size()));
    if (line.empty()) {
      continue;
    }
    const bool warns = line.starts_with(kWarning);
    (warns ? record.warnings : record.errors).push_back(line);
    const std::size_t words = warns ? line.find_first_not_of(": ", kWarning.size()) : 0;
    if (stop.empty() && words < line.size() && line.substr(words).starts_with(kStop)) {
      stop = line.substr(words + kStop.size());
    }
  }
  return stop;
}

/// Remembers what the run is about to read.
void takeStates(RunRecord& record) {
  std::error_code error;
  if (fs::is_regular_file(record.input.path, error)) {
    record.input.state = stateOf(record.input.path, Checksum::sha256);
  }
  for (ReadFile& file : record.dataFiles) {
    file.state = stateOf(file.path, Checksum::sha256);
  }
}

/// A run whose input changed under it is of no input.
void checkUnchanged(const ReadFile& file) {
  if (!file.state.checksum.empty() && stateOf(file.path, Checksum::sha256) != file.state) {
    throw std::runtime_error(fmt::format("{} has changed during the run", file.path.string()));
  }
}

void stop(RunRecord& record, std::string words) {
  record.status = RunStatus::stopped;
  record.words = std::move(words);
}

/// The calculation itself and what follows from it; sets how the run has ended.
void calculate(const RunRequest& request, const fs::path& folder, RunOutcome& outcome) {
  RunRecord& record = outcome.record;
  bool accepted = false;
  {
    const CurrentFolder current(folder);
    accepted = api::solve(request.input.parent_path().string(), request.input.filename().string(),
                          request.directory.string(), api::Mode{request.mode});
  }
  const ResultDirectory unsized(request.directory);
  if (!unsized.has(kLog)) {
    throw std::runtime_error(
        fmt::format("the run left no log in the result directory {}", request.directory.string()));
  }
  outcome.log = unsized.text(kLog);
  const std::string cause = takeFindings(outcome.log, record);
  if (!accepted) {
    if (!cause.empty()) {
      throw std::runtime_error(cause);
    }
    record.status = RunStatus::refused;
    record.words = record.errors.empty() ? "" : record.errors.front();
    return;
  }
  try {
    if (stepsOf(request.mode).forced) {
      if (const auto line = readShaftLine(request.input)) {
        record.orders.propeller = propellerOrders(*line);
      }
    }
    const ResultDirectory results(request.directory, record.orders);
    checkWhole(results, stepsOf(request.mode));
  } catch (const std::runtime_error& error) {
    throw std::runtime_error(fmt::format("the calculation stopped early: {}{}{}", cause,
                                         cause.empty() ? "" : "; ", error.what()));
  }
  if (!cause.empty()) {
    throw std::runtime_error(fmt::format("the calculation stopped early: {}", cause));
  }
  checkUnchanged(record.input);
  std::for_each(record.dataFiles.begin(), record.dataFiles.end(), checkUnchanged);
  if (request.furtherFiles) {
    record.furtherFiles = request.furtherFiles(ResultDirectory(request.directory, record.orders));
  }
  record.status = RunStatus::complete;
}

/// The result files that the run leaves.
std::vector<WrittenFile> writtenFiles(const ResultDirectory& directory) {
  std::vector<WrittenFile> files;
  for (const ResultFile& file : kResultFiles) {
    if (directory.has(file)) {
      files.push_back(
          {std::string(file.name), stateOf(directory.path() / file.name, Checksum::xxh3)});
    }
  }
  return files;
}

}  // namespace

RunOutcome runSolver(const RunRequest& request) {
  const fs::path& directory = request.directory;
  makeDirectory(directory);
  const RunLock lock(directory);

  RunOutcome outcome;
  RunRecord& record = outcome.record;
  record.command = request.command;
  record.mode = request.mode;
  record.started = momentNow();
  record.input = {request.input.filename().string(), request.input, {}};
  StartFolder start = startFolder(request.input);
  record.dataFiles = std::move(start.dataFiles);
  const std::vector<std::string> earlier = earlierFiles(directory);
  for (const std::string& name : earlier) {
    checkRemovable(directory / name, record);
  }
  takeStates(record);
  writeRecord(record, directory);

  try {
    removeFiles(directory, earlier);
    takeGensetFile(record, directory);
    calculate(request, start.path, outcome);
  } catch (const std::bad_alloc&) {
    stop(record, "the memory is exhausted");
  } catch (const std::exception& fault) {
    stop(record, fault.what());
  }
  try {
    record.files = writtenFiles(ResultDirectory(directory));
    record.ended = momentNow();
    writeRecord(record, directory);
  } catch (const std::exception& fault) {
    // The record that stays says that the run has begun and not that it has ended.
    if (record.status == RunStatus::complete) {
      stop(record, fault.what());
    }
  }
  return outcome;
}

}  // namespace verenwick::host
