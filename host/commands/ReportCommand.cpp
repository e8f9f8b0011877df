#include <fmt/format.h>

#include <cstdio>
#include <memory>
#include <string>

#include "host/GivenPaths.h"
#include "host/commands/Commands.h"
#include "host/report/Report.h"
#include "host/run/OpenResults.h"

namespace verenwick::host {
namespace {

struct ReportOptions {
  std::string input;
  std::string results;
  std::string output = "report.html";
  bool unverified = false;
};

}  // namespace

void addReportCommand(CLI::App& program, int& status) {
  CLI::App* command =
      program.add_subcommand("report", "Write a run as one page with tables and plots");
  const auto options = std::make_shared<ReportOptions>();
  command->add_option("INPUT", options->input, "Input file of the run")
      ->required()
      ->type_name("FILE");
  command->add_option("RESULTS", options->results, "Result directory of the run")
      ->required()
      ->type_name("DIRECTORY");
  command
      ->add_option("-o,--output", options->output,
                   "The page; report.html in the current directory if not given")
      ->type_name("FILE");
  command->footer("Example:\n  verenwick report plant.txt plant -o plant.html");
  command->add_flag("--unverified", options->unverified,
                    "Show the files also where they differ from the record of their run");
  command->callback([options, &status] {
    checkTarget(options->output);
    const OpenedResults opened =
        openResults(options->results,
                    {.unverified = options->unverified, .input = options->input, .files = {}});
    if (!opened.remark.empty()) {
      std::fputs(fmt::format("{}: {}\n", options->results, opened.remark).c_str(), stderr);
    }
    writeReport(options->input, opened.directory, options->output, opened.remark);
    status = 0;
  });
}

}  // namespace verenwick::host
