#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "host/commands/Commands.h"
#include "host/commands/OptionChecks.h"
#include "host/export/Export.h"
#include "host/plant/Readings.h"
#include "host/run/OpenResults.h"

namespace verenwick::host {
namespace {

struct ExportOptions {
  std::string results;
  std::string format;
  std::string output;
  std::string input;
  bool unverified = false;
};

int exportResults(const ExportOptions& options) {
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
  const ExportFormat& format =
      *std::find_if(kExportFormats.begin(), kExportFormats.end(),
                    [&](const ExportFormat& each) { return each.name == options.format; });
  const std::filesystem::path whole = std::filesystem::absolute(options.results) / "";
  const std::string output =
      options.output.empty()
          ? fmt::format("{}{}", whole.parent_path().filename().string(), format.ending)
          : options.output;
  format.write(opened, names, output);
  return 0;
}

}  // namespace

void addExportCommand(CLI::App& program, int& status) {
  CLI::App* command =
      program.add_subcommand("export", "Write all results in the format of another program");
  const auto options = std::make_shared<ExportOptions>();
  std::vector<std::string> names;
  std::vector<std::string> made;
  std::vector<std::string> outputs;
  for (const ExportFormat& format : kExportFormats) {
    names.emplace_back(format.name);
    made.push_back(fmt::format("{}: {}", format.name, format.makes));
    outputs.push_back(fmt::format("RESULTS{}", format.ending));
  }
  command->add_option("RESULTS", options->results, "Result directory")
      ->required()
      ->type_name("DIRECTORY");
  command->add_option("--format", options->format, fmt::format("{}", fmt::join(made, ", ")))
      ->required()
      ->check(oneOf(names))
      ->type_name(fmt::format("{}", fmt::join(names, "|")));
  command
      ->add_option("-o,--output", options->output,
                   fmt::format("File or directory; {} in the current directory if not given",
                               listed(outputs, "or")))
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
