#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

/// The command line as its tree of commands and options tells it: help, and words for wrong usage.
/// The name of an option's type says what it takes, for help, completion and manual alike: FILE,
/// DIRECTORY, NAME (of a result file), choices separated by bars, or any other word.
namespace verenwick::host {

/// Lets help fill lines of 80 columns.
void formatHelp(CLI::App& program);

/// What is wrong with a command line that didn't parse, with the nearest command or option.
std::string wordsOfWrongUsage(const CLI::App& program, const CLI::ParseError& error);

/// The commands that help shows.
std::vector<const CLI::App*> listedCommands(const CLI::App& program);

/// Their names, in the same order.
std::vector<std::string> commandNames(const CLI::App& program);

/// The options of a command that help shows, or what it takes without an option's name.
std::vector<const CLI::Option*> listedOptions(const CLI::App& command);
std::vector<const CLI::Option*> positionals(const CLI::App& command);

/// The names of an option: "-o", "--output".
std::vector<std::string> namesOf(const CLI::Option& option);

/// The name of what an option takes; empty for a flag.
std::string valueOf(const CLI::Option& option);

/// The choices that an option takes; none if it takes something else.
std::vector<std::string> choicesOf(const CLI::Option& option);

/// Words in lines of a width, each behind the first with an indent.
std::string filled(const std::string& text, std::size_t width, std::size_t indent);

}  // namespace verenwick::host
