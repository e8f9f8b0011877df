#include "host/Run.h"

#include <fmt/format.h>

#include <algorithm>
#include <initializer_list>
#include <stdexcept>
#include <string_view>
#include <system_error>
#include <vector>

#include "results/ResultReader.h"
#include "verenwick.h"

namespace verenwick::host {
namespace {

using results::kResultFiles;
using results::Layout;
using results::Needs;
using results::ResultDirectory;
using results::ResultFile;
using results::resultFile;
using results::Step;
using results::SystemCount;

/// A text as the solver takes it, one character an element.
std::vector<std::int32_t> elements(const std::string& text) {
  std::vector<std::int32_t> result(text.size());
  std::transform(text.begin(), text.end(), result.begin(),
                 [](char c) { return static_cast<std::int32_t>(static_cast<unsigned char>(c)); });
  return result;
}

/// One call of the solver; true if it accepts the input.
bool solve(const std::filesystem::path& input, const std::filesystem::path& directory,
           std::int32_t mode) {
  const auto inputDirectory = elements(input.parent_path().string());
  const auto inputName = elements(input.filename().string());
  const auto resultDirectory = elements(directory.string());
  const auto inputDirectoryLength = static_cast<std::int32_t>(inputDirectory.size());
  const auto inputNameLength = static_cast<std::int32_t>(inputName.size());
  const auto resultDirectoryLength = static_cast<std::int32_t>(resultDirectory.size());
  std::int32_t status = 0;
  VERENWICKSOLVER(inputDirectory.data(), &inputDirectoryLength, inputName.data(), &inputNameLength,
                  resultDirectory.data(), &resultDirectoryLength, &status, &mode);
  return status == 1;
}

bool ran(Step step, Steps steps) {
  return step == Step::run || (step == Step::free ? steps.free : steps.forced);
}

/// Makes the result directory and takes away what an earlier run has left of the files that this
/// one writes, so that whatever stands there afterwards is of this run.
void prepare(const std::filesystem::path& directory, Steps steps) {
  std::error_code error;
  std::filesystem::create_directories(directory, error);
  if (!std::filesystem::is_directory(directory)) {
    throw std::runtime_error(fmt::format("the result directory {} can't be made{}{}",
                                         directory.string(), error ? ": " : "",
                                         error ? error.message() : ""));
  }
  for (const ResultFile& file : kResultFiles) {
    if (ran(file.step, steps) && file.name != resultFile("Genset.txt").name) {
      std::filesystem::remove(directory / file.name, error);
      if (error) {
        throw std::runtime_error(
            fmt::format("{} of an earlier run can't be removed: {}", file.name, error.message()));
      }
    }
  }
}

/// Gives the run the genset file that lies beside the input, in place of one in the result
/// directory.
void copyGensetFile(const std::filesystem::path& input, const std::filesystem::path& directory) {
  constexpr std::string_view name = resultFile("Genset.txt").name;
  const std::filesystem::path source = input.parent_path() / name;
  const std::filesystem::path target = directory / name;
  std::error_code error;
  if (!std::filesystem::exists(source, error) ||
      std::filesystem::equivalent(source, target, error)) {
    return;
  }
  std::filesystem::copy_file(source, target, std::filesystem::copy_options::overwrite_existing,
                             error);
  if (error) {
    throw std::runtime_error(fmt::format("{} can't be copied to {}: {}", source.string(),
                                         target.string(), error.message()));
  }
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

}  // namespace

RunOutcome runSolver(const std::filesystem::path& input, const std::filesystem::path& directory,
                     std::int32_t mode) {
  const Steps steps = stepsOf(mode);
  prepare(directory, steps);
  copyGensetFile(input, directory);
  const bool accepted = solve(input, directory, mode);

  const ResultDirectory results(directory);
  constexpr const ResultFile& log = resultFile("Verenwick.log");
  if (!results.has(log)) {
    throw std::runtime_error(
        fmt::format("the run left no log in the result directory {}", directory.string()));
  }
  if (accepted) {
    try {
      checkWhole(results, steps);
    } catch (const std::exception& error) {
      // The solver has put the words of a stop to standard error itself.
      throw std::runtime_error(fmt::format("the calculation stopped early: {}", error.what()));
    }
  }
  return {accepted, results.text(log)};
}

}  // namespace verenwick::host
