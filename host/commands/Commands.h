#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

/// The subcommands of the program. Each registers itself on the program with its options and runs
/// as its callback; `status` takes the exit status: 0, or 1 for what is wrong with the data.
namespace verenwick::host {

/// verenwick run INPUT: one run of the solver and what an engineer wants to see of it first. The
/// words behind the program's name go into the record of the run.
void addRunCommand(CLI::App& program, const std::vector<std::string>& words, int& status);

/// verenwick check INPUT: what is wrong or unusual in a plant, before it is calculated.
void addCheckCommand(CLI::App& program, int& status);

/// verenwick new KIND: a commented input file to begin with.
void addNewCommand(CLI::App& program, int& status);

/// verenwick show DIR NAME: any result file as a table.
void addShowCommand(CLI::App& program, int& status);

/// verenwick report INPUT RESULTS: a run as one HTML page.
void addReportCommand(CLI::App& program, int& status);

/// verenwick export RESULTS: all results as CSV, a workbook or HDF5.
void addExportCommand(CLI::App& program, int& status);

/// verenwick pressure: the pressure curve of a cylinder, or its harmonics, as CSV.
void addPressureCommand(CLI::App& program, int& status);

/// verenwick forces: the forces on the crank pin of a cylinder, or their harmonics, as CSV.
void addForcesCommand(CLI::App& program, int& status);

/// verenwick completion SHELL: completion of command lines for bash or zsh. Help doesn't list it.
void addCompletionCommand(CLI::App& program, int& status);

/// verenwick manual: the manual page. Help doesn't list it.
void addManualCommand(CLI::App& program, int& status);

}  // namespace verenwick::host
