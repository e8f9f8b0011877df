#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "host/UsageError.h"
#include "host/commands/Commands.h"
#include "host/commands/OptionChecks.h"
#include "host/commands/ShowTable.h"
#include "host/plant/Readings.h"
#include "host/run/OpenResults.h"

namespace verenwick::host {
namespace {

using results::kResultFiles;
using results::Layout;
using results::ResultDirectory;
using results::resultFile;
using results::ResultFile;

struct ShowOptions {
  std::string directory;
  std::string name;
  std::string input;
  bool unverified = false;
  Choice choice;
  bool csv = false;
};

/// The file of a name in any letter case, with or without its ending.
const ResultFile& fileOf(const std::string& name) {
  const auto is = [&name](std::string_view file) {
    return CLI::detail::to_lower(std::string(file)) == CLI::detail::to_lower(name);
  };
  std::vector<std::string> names;
  for (const ResultFile& file : kResultFiles) {
    const std::string_view bare = file.name.substr(0, file.name.rfind('.'));
    if (is(file.name) || is(bare)) {
      return file;
    }
    names.emplace_back(bare);
  }
  throw UsageError(fmt::format("{} is no result file{}", name, didYouMean(name, names)));
}

void show(const ShowOptions& options) {
  const ResultFile* file = options.name.empty() ? nullptr : &fileOf(options.name);
  OpenOptions open{options.unverified, {}, {}};
  if (!options.input.empty()) {
    open.input = options.input;
  }
  if (file != nullptr) {
    open.files = {file};
    if (file->layout == Layout::engineModeOrder) {  // these tell the orders of its places
      open.files.push_back(&resultFile("VectorSumRpm.bin"));
      open.files.push_back(&resultFile("NaturalFrequency.bin"));
    }
  }
  const OpenedResults opened = openResults(options.directory, open);
  const ResultDirectory& directory = opened.directory;
  KnownLine line;
  if (open.input) {
    line = readLineOf(directory, *open.input);
  } else if (const auto input = opened.input()) {
    line = readLineOf(directory, *input);
  }
  const TableForm form{options.csv, opened.remark};
  if (file == nullptr) {
    showList(directory, fmt::format("Results in {}", options.directory), form);
    return;
  }
  if (file->layout == Layout::text) {
    if (!opened.remark.empty()) {
      std::fputs(fmt::format("{}: {}\n", file->name, opened.remark).c_str(), stderr);
    }
    const std::string text = directory.text(*file);
    if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size()) {
      throw std::runtime_error("the output can't be written");
    }
    return;
  }
  showTable(directory.open(*file), directory, line, options.choice, form);
}

}  // namespace

void addShowCommand(CLI::App& program, int& status) {
  CLI::App* command =
      program.add_subcommand("show", "Print a result file as a table, or list what there is");
  const auto options = std::make_shared<ShowOptions>();
  command->add_option("DIRECTORY", options->directory, "Result directory")
      ->required()
      ->type_name("DIRECTORY");
  command
      ->add_option("NAME", options->name,
                   "Name of the file in any letter case, with or without its ending; without it "
                   "all files are listed")
      ->type_name("NAME");
  const auto add = [command](const char* name, auto& value, const char* type, const char* help) {
    return command->add_option(name, value, help)->type_name(type);
  };
  Choice& choice = options->choice;
  add("--case", choice.loadCase, "N", "Only this load case")->check(wholeNumber());
  add("--source", choice.source, "ID",
      "Only this source, or engine of the vector sums, by its id in the input file")
      ->check(wholeNumber());
  add("--mode", choice.mode, "N", "Only this mode")->check(wholeNumber());
  add("--order", choice.order, "ORDER", "Only this order, by its value: 7.5")
      ->check(finiteNumber());
  add("--point", choice.point, "ID", "Only this inertia or shaft, by its id in the input file")
      ->check(wholeNumber());
  add("--step", choice.step, "N", "Only this step of the period")->check(wholeNumber());
  add("--input", options->input, "FILE",
      "Input file of the run, which tells ids, speeds and orders; known without it where the run "
      "record names it");
  command->add_flag("--csv", options->csv, "Separate by commas and print all digits");
  command->add_flag("--unverified", options->unverified,
                    "Show the files also where they differ from the record of their run");
  command->footer("Example:\n  verenwick show plant DieselTorque --order 7.5 --point 9");
  command->callback([options, &status] {
    show(*options);
    status = 0;
  });
}

}  // namespace verenwick::host
