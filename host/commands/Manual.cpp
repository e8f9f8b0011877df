#include <fmt/format.h>

#include <sstream>
#include <string>

#include "host/commands/CommandLine.h"
#include "host/commands/Commands.h"
#include "verenwick.h"

namespace verenwick::host {
namespace {

/// A text of the manual: nothing in it is taken for a request.
std::string roff(const std::string& text) {
  std::string safe = text.starts_with('.') || text.starts_with('\'') ? "\\&" : "";
  for (const char c : text) {
    if (c == '\\') {
      safe += "\\e";
    } else if (c == '-') {
      safe += "\\-";
    } else {
      safe += c;
    }
  }
  return safe;
}

/// "verenwick run [OPTION...] INPUT..."
std::string synopsis(const CLI::App& command) {
  std::string text = fmt::format("\\fBverenwick {}\\fP [\\fIOPTION\\fP...]", command.get_name());
  for (const CLI::Option* option : positionals(command)) {
    const std::string name = fmt::format("\\fI{}\\fP{}", option->get_name(true),
                                         option->get_expected_max() > 1 ? "..." : "");
    text += option->get_required() ? " " + name : fmt::format(" [{}]", name);
  }
  return text;
}

void printEntry(const CLI::Option& option) {
  std::string names;
  for (const std::string& name : namesOf(option)) {
    names += fmt::format("{}\\fB{}\\fP", names.empty() ? "" : ", ", roff(name));
  }
  if (option.get_positional()) {
    names = fmt::format("\\fI{}\\fP", option.get_name(true));
  }
  const std::string value = option.get_positional() ? "" : valueOf(option);
  fmt::print(".TP\n{}{}\n{}{}\n", names,
             value.empty() ? "" : fmt::format(" \\fI{}\\fP", roff(value)),
             roff(option.get_description()),
             option.get_required() && !option.get_positional() ? " (required)" : "");
}

void printCommand(const CLI::App& command) {
  fmt::print(".SS {}\n{}.\n", roff(command.get_name()), roff(command.get_description()));
  for (const CLI::Option* option : positionals(command)) {
    printEntry(*option);
  }
  for (const CLI::Option* option : listedOptions(command)) {
    printEntry(*option);
  }
  if (!command.get_footer().empty()) {
    std::istringstream lines(command.get_footer());
    std::string line;
    std::getline(lines, line);
    fmt::print(".PP\n{}\n.PP\n.nf\n", roff(line));
    while (std::getline(lines, line)) {
      fmt::print("{}\n", roff(line));
    }
    fmt::print(".fi\n");
  }
}

void printManual(const CLI::App& program) {
  fmt::print(".TH VERENWICK 1 \"\" \"verenwick " VERENWICK_VERSION
             "\" \"User Commands\"\n.SH NAME\nverenwick \\- torsional vibration of shaft lines\n"
             ".SH SYNOPSIS\n.nf\n");
  for (const CLI::App* command : listedCommands(program)) {
    fmt::print("{}\n", synopsis(*command));
  }
  fmt::print(
      "\\fBverenwick\\fP \\-\\-help | \\-\\-version\n.fi\n.SH DESCRIPTION\n"
      "Calculates natural frequencies and the forced torsional vibration of a shaft line with its\n"
      "engines, motors, propellers and gears, from a text file that describes the plant. The\n"
      "results are files in a directory, shown, exported or put on a page by the other commands.\n"
      ".PP\nEach command tells its options with \\fB\\-\\-help\\fP.\n.SH COMMANDS\n");
  for (const CLI::App* command : listedCommands(program)) {
    printCommand(*command);
  }
  fmt::print(
      ".SH EXIT STATUS\n.TP\n0\nAll is well.\n.TP\n1\nAn input is refused, a calculation stops "
      "early,\nor something can't be read or written.\n.TP\n2\nWrong usage.\n"
      ".SH ENVIRONMENT\n.TP\nNO_COLOR\nTurns colours off where it isn't empty.\n");
}

}  // namespace

void addManualCommand(CLI::App& program, int& status) {
  CLI::App* command = program.add_subcommand("manual", "Print the manual page");
  command->group("");
  command->callback([&program, &status] {
    printManual(program);
    status = 0;
  });
}

}  // namespace verenwick::host
