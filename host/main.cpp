#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <exception>
#include <stdexcept>

#include "host/CommandLine.h"
#include "host/Commands.h"
#include "host/Ending.h"

namespace {

/// Words on standard error; takes no memory.
void say(const char* words) {
  std::fputs("verenwick: ", stderr);
  std::fputs(words, stderr);
  std::fputs("\n", stderr);
}

}  // namespace

int main(int argc, char** argv) {
  constexpr int kFailed = 1;
  constexpr int kWrongUsage = 2;
  int status = 0;
  verenwick::host::prepareEnding();
  const std::vector<std::string> words(argv + std::min(argc, 1), argv + argc);
  try {
    CLI::App program("Torsional vibration of shaft lines", "verenwick");
    program.require_subcommand(1);
    program.set_help_flag("-h,--help", "Print this help and exit");
    program.set_version_flag("--version", "verenwick " VERENWICK_VERSION,
                             "Print the version and exit");
    verenwick::host::addRunCommand(program, words, status);
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
    if (std::fflush(stdout) != 0) {
      throw std::runtime_error("the output can't be written");
    }
  } catch (const verenwick::host::UsageError& error) {
    say(error.what());
    if (words.size() > 1 && words[0] == "run" &&
        std::find(words.begin(), words.end(), "--json") != words.end()) {
      verenwick::host::printDocument({{"status", kWrongUsage}, {"words", error.what()}});
    }
    return kWrongUsage;
  } catch (const std::exception& error) {
    say(verenwick::host::wordsOf(error));
    return kFailed;
  }
  return status;
}
