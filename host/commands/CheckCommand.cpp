#include <fmt/format.h>

#include <memory>
#include <stdexcept>
#include <string>

#include "host/GivenPaths.h"
#include "host/check/Check.h"
#include "host/check/FindingOutput.h"
#include "host/commands/Commands.h"
#include "host/summary/RunSummary.h"

namespace verenwick::host {
namespace {

struct CheckOptions {
  std::string input;
  bool json = false;
  bool strict = false;
};

}  // namespace

void addCheckCommand(CLI::App& program, int& status) {
  CLI::App* command =
      program.add_subcommand("check", "Tell what is wrong or unusual in an input file");
  const auto options = std::make_shared<CheckOptions>();
  command->add_option("INPUT", options->input, "Input file")->required()->type_name("FILE");
  command->add_flag("--json", options->json, "Print a JSON object instead");
  command->add_flag("--strict", options->strict, "Fail on warnings too");
  command->footer(
      "The status is 1 where an error was found: what the solver refuses.\n\nExample:\n"
      "  verenwick check plant.txt");
  command->callback([options, &status] {
    const std::filesystem::path input =
        std::filesystem::absolute(options->input).lexically_normal();
    Findings findings;
    try {
      checkReadable(options->input);
      findings = checkByCalculation(input);
    } catch (const std::runtime_error& error) {
      if (options->json) {
        printDocument({{"input", input.string()}, {"status", 1}, {"words", error.what()}});
      }
      throw;
    }
    const bool failed = findings.count(Severity::error) > 0 ||
                        (options->strict && findings.count(Severity::warning) > 0);
    status = failed ? 1 : 0;
    if (options->json) {
      nlohmann::ordered_json document = {{"input", input.string()}, {"status", status}};
      document["findings"] = jsonOf(findings);
      printDocument(document);
    } else {
      printFindings(input.filename().string(), findings);
    }
  });
}

}  // namespace verenwick::host
