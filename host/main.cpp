#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>

#include "host/Commands.h"

int main(int argc, char** argv) {
  constexpr int kFailed = 1;
  constexpr int kWrongUsage = 2;
  int status = 0;
  try {
    CLI::App program("Torsional vibration of shaft lines", "verenwick");
    program.require_subcommand(1);
    verenwick::host::addRunCommand(program, status);
    verenwick::host::addShowCommand(program, status);
    verenwick::host::addReportCommand(program, status);
    verenwick::host::addExportCommand(program, status);
    verenwick::host::addPressureCommand(program, status);
    verenwick::host::addForcesCommand(program, status);
    try {
      program.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
      return program.exit(error) == 0 ? 0 : kWrongUsage;
    }
    if (std::fflush(stdout) != 0) {
      throw std::runtime_error("the output can't be written");
    }
  } catch (const verenwick::host::UsageError& error) {
    std::fputs(fmt::format("verenwick: {}\n", error.what()).c_str(), stderr);
    return kWrongUsage;
  } catch (const std::exception& error) {
    std::fputs(fmt::format("verenwick: {}\n", error.what()).c_str(), stderr);
    return kFailed;
  }
  return status;
}
