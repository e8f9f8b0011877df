#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <exception>
#include <stdexcept>
#include <string>
#include <vector>

#include "host/Ending.h"
#include "host/UsageError.h"
#include "host/commands/CommandLine.h"
#include "host/commands/Commands.h"
#include "host/summary/RunSummary.h"
#include "verenwick.h"

namespace {

/// Words on standard error; takes no memory.
void say(const char* words) {
  std::fputs("verenwick: ", stderr);
  std::fputs(words, stderr);
  std::fputs("\n", stderr);
}

/// Parses and does what is asked for; returns the exit status.
int perform(int argc, char** argv) {
  constexpr int kWrongUsage = 2;
  const std::vector<std::string> words(argv + std::min(argc, 1), argv + argc);
  int status = 0;
  try {
    CLI::App program("Torsional vibration of shaft lines", "verenwick");
    program.require_subcommand(1);
    program.set_help_flag("-h,--help", "Print this help and exit");
    program.set_version_flag("--version", "verenwick " VERENWICK_VERSION,
                             "Print the version and exit");
    verenwick::host::addNewCommand(program, status);
    verenwick::host::addRunCommand(program, words, status);
    verenwick::host::addCheckCommand(program, status);
    verenwick::host::addShowCommand(program, status);
    verenwick::host::addReportCommand(program, status);
    verenwick::host::addExportCommand(program, status);
    verenwick::host::addPressureCommand(program, status);
    verenwick::host::addForcesCommand(program, status);
    verenwick::host::addCompletionCommand(program, status);
    verenwick::host::addManualCommand(program, status);
    verenwick::host::formatHelp(program);
    try {
      program.parse(argc, argv);
    } catch (const CLI::Success& request) {
      program.exit(request);
    } catch (const CLI::ParseError& error) {
      throw verenwick::host::UsageError(verenwick::host::wordsOfWrongUsage(program, error));
    }
  } catch (const verenwick::host::UsageError& error) {
    say(error.what());
    status = kWrongUsage;
    // A program that reads the summary is answered in every case.
    if (words.size() > 1 && words.front() == "run" &&
        std::find(words.begin(), words.end(), "--json") != words.end()) {
      verenwick::host::printDocument({{"status", status}, {"words", error.what()}});
    }
  }
  if (std::fflush(stdout) != 0) {
    throw std::runtime_error("the output can't be written");
  }
  return status;
}

}  // namespace

int main(int argc, char** argv) {
  constexpr int kFailed = 1;
  verenwick::host::prepareEnding();
  try {
    return perform(argc, argv);
  } catch (const std::exception& error) {
    say(verenwick::host::wordsOf(error));
    return kFailed;
  }
}
