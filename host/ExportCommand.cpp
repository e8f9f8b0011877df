#include <fmt/format.h>

#include <cstdio>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "host/Commands.h"
#include "host/Export.h"
#include "host/GivenPaths.h"
#include "host/OpenResults.h"
#include "host/OptionChecks.h"
#include "host/Readings.h"

namespace verenwick::host {
namespace {

using Format = void (*)(const OpenedResults&, const Names&, const std::filesystem::path&);

struct ExportOptions {
  std::string results;
  std::string format;
  std::string output;
  std::string input;
  bool unverified = false;
};

int exportResults(const ExportOptions& options) {
  const std::map<std::string, Format> formats = {
      {"csv", exportCsv}, {"xlsx", exportWorkbook}, {"hdf5", exportHdf5}};
  const std::map<std::string, std::string> endings = {
      {"csv", "-csv"}, {"xlsx", ".xlsx"}, {"hdf5", ".h5"}};
  const OpenedResults opened = openResults(
      options.results,
      {.unverified = options.unverified,
       .input = options.input.empty() ? std::nullopt
                                      : std::optional<std::filesystem::path>(options.input),
       .files = {}});
  const results::ResultDirectory& directory = opened.directory;
  if (!opened.remark.empty()) {
    std::fputs(fmt::format("{}: {}\n", options.results, opened.remark).c_str(), stderr);
  }
  if (binaryFiles(directory).empty()) {
    throw std::runtime_error(fmt::format("{} holds no results", options.results));
  }
  Names names;
  if (!options.input.empty()) {
    names = readLineOf(directory, options.input);
  }
  const std::filesystem::path whole = std::filesystem::absolute(options.results) / "";
  const std::string output =
      options.output.empty() ? whole.parent_path().filename().string() + endings.at(options.format)
                             : options.output;
  if (options.format != "csv") {
    checkTarget(output);
  }
  formats.at(options.format)(opened, names, output);
  return 0;
}

}  // namespace

void addExportCommand(CLI::App& program, int& status) {
  CLI::App* command =
      program.add_subcommand("export", "Write all results in the format of another program");
  const auto options = std::make_shared<ExportOptions>();
  command->add_option("RESULTS", options->results, "Result directory")
      ->required()
      ->type_name("DIRECTORY");
  command->add_option("--format", options->format, "csv is a directory of files")
      ->required()
      ->check(oneOf({"csv", "xlsx", "hdf5"}))
      ->type_name("csv|xlsx|hdf5");
  command
      ->add_option("-o,--output", options->output,
                   "File or directory; RESULTS-csv, RESULTS.xlsx or RESULTS.h5 in the current "
                   "directory if not given")
      ->type_name("FILE");
  command
      ->add_option("--input", options->input,
                   "Input file of the run: ids, speeds and orders in place of numbers")
      ->type_name("FILE");
  command->footer("Example:\n  verenwick export plant --format xlsx --input plant.txt");
  command->add_flag("--unverified", options->unverified,
                    "Show the files also where they differ from the record of their run");
  command->callback([options, &status] { status = exportResults(*options); });
}

}  // namespace verenwick::host
