#include <fmt/format.h>

#include <fstream>
#include <memory>
#include <stdexcept>
#include <string>

#include "host/Commands.h"
#include "host/Report.h"
#include "host/ReportData.h"
#include "host/ReportPage.h"

namespace verenwick::host {
namespace {

/// The document as the text of a script element: nothing in it may end the element.
std::string scriptText(const nlohmann::json& data) {
  std::string text = data.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
  std::string safe;
  safe.reserve(text.size());
  for (const char c : text) {
    if (c == '<') {
      safe += "\\u003c";
    } else {
      safe += c;
    }
  }
  return safe;
}

struct ReportOptions {
  std::string input;
  std::string results;
  std::string output = "report.html";
};

}  // namespace

void writeReport(const std::filesystem::path& input, const results::ResultDirectory& directory,
                 const std::filesystem::path& output) {
  const std::string data = scriptText(reportData(input, directory));
  const std::string_view page = reportPage();
  const std::size_t marker = page.find(kDataMarker);
  std::ofstream stream(output, std::ios::binary);
  stream << page.substr(0, marker) << data << page.substr(marker + kDataMarker.size());
  stream.close();
  if (!stream) {
    throw std::runtime_error(fmt::format("{} can't be written", output.string()));
  }
}

void addReportCommand(CLI::App& program, int& status) {
  CLI::App* command =
      program.add_subcommand("report", "Write a run as one page with tables and plots");
  const auto options = std::make_shared<ReportOptions>();
  command->add_option("INPUT", options->input, "Input file of the run")->required();
  command->add_option("RESULTS", options->results, "Result directory of the run")->required();
  command->add_option("-o,--output", options->output, "The page (report.html)");
  command->callback([options, &status] {
    writeReport(options->input, results::ResultDirectory(options->results), options->output);
    status = 0;
  });
}

}  // namespace verenwick::host
