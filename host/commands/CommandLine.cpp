#include "host/commands/CommandLine.h"

#include <fmt/format.h>

#include <algorithm>
#include <memory>
#include <sstream>

#include "host/commands/OptionChecks.h"

namespace verenwick::host {
namespace {

constexpr std::size_t kWidth = 80;
constexpr std::size_t kNameColumn = 28;

/// Name and explanation side by side, the name on a line of its own where it is long.
std::string helpEntry(const std::string& name, const std::string& words) {
  const std::string head = "  " + name;
  const bool fits = head.size() + 2 <= kNameColumn;
  return fmt::format("{:<{}}{}\n", fits ? head : head + "\n" + std::string(kNameColumn, ' '),
                     fits ? kNameColumn : 0, filled(words, kWidth - kNameColumn, kNameColumn));
}

class HelpText : public CLI::Formatter {
 public:
  std::string make_option(const CLI::Option* option, bool isPositional) const override {
    return helpEntry(make_option_name(option, isPositional) + make_option_opts(option),
                     make_option_desc(option));
  }
  std::string make_subcommand(const CLI::App* command) const override {
    return helpEntry(command->get_name(), command->get_description());
  }
  std::string make_option_opts(const CLI::Option* option) const override {
    if (option->get_positional()) {
      return option->get_expected_max() > 1 ? "..." : "";
    }
    const std::string type = valueOf(*option);
    return (type.empty() ? "" : " " + type) + (option->get_required() ? "  (required)" : "");
  }
  std::string make_description(const CLI::App* command) const override {
    return filled(command->get_description(), kWidth, 0) + "\n\n";
  }
};

std::string wordsOfUnknownOption(const std::string& word, const CLI::App& command) {
  const std::string name = word.substr(0, word.find('='));
  std::vector<std::string> known;
  for (const CLI::Option* option : listedOptions(command)) {
    for (const std::string& each : namesOf(*option)) {
      if (each.starts_with("--")) {
        known.push_back(each.substr(2));
      }
    }
  }
  const std::string bare = name.substr(std::min(name.find_first_not_of('-'), name.size()));
  const std::string near = nearest(bare, known);
  return fmt::format("unknown option {}{}", name,
                     near.empty() ? "" : fmt::format("; did you mean --{}?", near));
}

std::string wordsOf(const CLI::ParseError& error, const CLI::App& program,
                    const CLI::App& command) {
  const bool commandUsed = &command != &program;
  const std::vector<std::string> unknown = program.remaining(true);
  if (!unknown.empty()) {
    const std::string& word = unknown.front();
    if (word.starts_with('-') && word.size() > 1) {
      return wordsOfUnknownOption(word, command);
    }
    if (commandUsed) {
      return fmt::format("\"{}\" is one argument too many", word);
    }
    const std::vector<std::string> names = commandNames(program);
    const std::string near = didYouMean(word, names);
    return fmt::format("unknown command \"{}\"{}", word,
                       near.empty() ? "; the commands are " + listed(names) : near);
  }
  if (!commandUsed && dynamic_cast<const CLI::RequiredError*>(&error) != nullptr) {
    return "a command is missing; the commands are " + listed(commandNames(program));
  }
  std::string words = error.what();
  if (dynamic_cast<const CLI::ArgumentMismatch*>(&error) != nullptr) {
    const std::string name = words.substr(0, words.find(':'));
    const CLI::Option* option = command.get_option_no_throw(name);
    if (option != nullptr && option->get_type_size() > 0) {
      return option->count() > 1 ? fmt::format("{} is given more than once", name)
                                 : fmt::format("{} lacks its {}", name, option->get_type_name());
    }
  }
  return words;
}

}  // namespace

std::string filled(const std::string& text, std::size_t width, std::size_t indent) {
  std::istringstream words(text);
  std::string word;
  std::string lines;
  std::size_t column = 0;
  while (words >> word) {
    if (column > 0 && column + 1 + word.size() > width) {
      lines += '\n' + std::string(indent, ' ');
      column = 0;
    }
    lines += (column > 0 ? " " : "") + word;
    column += (column > 0 ? 1 : 0) + word.size();
  }
  return lines;
}

void formatHelp(CLI::App& program) {
  const auto format = std::make_shared<HelpText>();
  format->label("OPTIONS", "OPTION...");
  format->label("SUBCOMMAND", "COMMAND");
  format->label("SUBCOMMANDS", "COMMAND");
  format->label("Positionals", "What it takes");
  program.formatter(format);
  for (CLI::App* command : program.get_subcommands({})) {
    command->formatter(format);
    if (!command->get_group().empty()) {
      command->group("Commands");
    }
  }
}

std::string wordsOfWrongUsage(const CLI::App& program, const CLI::ParseError& error) {
  const auto used = program.get_subcommands();
  const CLI::App& command = used.empty() ? program : *used.front();
  return fmt::format("{}\n(verenwick{} --help tells more)", wordsOf(error, program, command),
                     used.empty() ? "" : " " + command.get_name());
}

std::vector<const CLI::App*> listedCommands(const CLI::App& program) {
  return program.get_subcommands(
      [](const CLI::App* command) { return !command->get_group().empty(); });
}

std::vector<std::string> commandNames(const CLI::App& program) {
  std::vector<std::string> names;
  for (const CLI::App* command : listedCommands(program)) {
    names.push_back(command->get_name());
  }
  return names;
}

std::vector<const CLI::Option*> listedOptions(const CLI::App& command) {
  return command.get_options([](const CLI::Option* option) {
    return option->nonpositional() && !option->get_group().empty();
  });
}

std::vector<const CLI::Option*> positionals(const CLI::App& command) {
  return command.get_options([](const CLI::Option* option) { return option->get_positional(); });
}

std::vector<std::string> namesOf(const CLI::Option& option) {
  std::vector<std::string> names;
  for (const std::string& name : option.get_snames()) {
    names.push_back("-" + name);
  }
  for (const std::string& name : option.get_lnames()) {
    names.push_back("--" + name);
  }
  return names;
}

std::string valueOf(const CLI::Option& option) {
  return option.get_type_size() == 0 ? "" : option.get_type_name();
}

std::vector<std::string> choicesOf(const CLI::Option& option) {
  const std::string type = valueOf(option);
  if (type.find('|') == std::string::npos) {
    return {};
  }
  return CLI::detail::split(type, '|');
}

}  // namespace verenwick::host
