#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "host/GivenPaths.h"
#include "host/UsageError.h"
#include "host/WholeFile.h"
#include "host/commands/CommandLine.h"
#include "host/commands/Commands.h"
#include "host/commands/OptionChecks.h"
#include "host/plant/Placeholder.h"
#include "host/templates/Templates.h"

namespace verenwick::host {
namespace {

struct NewOptions {
  std::string kind;
  std::string output;
};

/// "  genset       Generating set: ..." for each kind: its name and the title of its file.
std::string kindLines(const std::vector<std::string>& kinds) {
  constexpr std::size_t kWidth = 80;
  constexpr std::size_t kTitleColumn = 15;
  std::string lines;
  for (std::size_t i = 0; i < kinds.size(); ++i) {
    const std::string_view text = templates()[i].text;
    lines += fmt::format(
        "\n  {:<{}}{}", kinds[i], kTitleColumn - 2,
        filled(std::string(text.substr(0, text.find('\n'))), kWidth - kTitleColumn, kTitleColumn));
  }
  return lines;
}

void printTemplate(const NewOptions& options) {
  const auto chosen = std::ranges::find(templates(), options.kind, &Template::kind);
  if (options.output.empty()) {
    fmt::print("{}", chosen->text);
    return;
  }
  checkTarget(options.output);
  std::error_code error;
  if (std::filesystem::exists(options.output, error)) {
    refusePath(options.output, "is there already; nothing is written over it");
  }
  if (error) {
    refusePath(options.output, "can't be written: " + error.message());
  }
  WholeFile file(options.output);
  file.write(chosen->text);
  file.finish();
}

}  // namespace

void addNewCommand(CLI::App& program, int& status) {
  std::vector<std::string> kinds;
  for (const Template& each : templates()) {
    kinds.emplace_back(each.kind);
  }
  CLI::App* command = program.add_subcommand("new", "Print an input file to begin with");
  const auto options = std::make_shared<NewOptions>();
  command->add_option("KIND", options->kind, "The kind of plant")
      ->required()
      ->check(oneOf(kinds))
      ->type_name(fmt::format("{}", fmt::join(kinds, "|")));
  const CLI::Option* output =
      command
          ->add_option("-o,--output", options->output,
                       "Write it to a file that isn't there yet, instead of standard output")
          ->type_name("FILE");
  command->footer(fmt::format("The kinds; each runs as it is, with {} where your values belong:{}",
                              kPlaceholder, kindLines(kinds)));
  command->callback([options, output, &status] {
    if (output->count() > 0 && options->output.empty()) {
      throw UsageError("--output lacks its FILE");
    }
    printTemplate(*options);
    status = 0;
  });
}

}  // namespace verenwick::host
