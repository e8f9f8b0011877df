#include <fmt/format.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "host/commands/CommandLine.h"
#include "host/commands/Commands.h"
#include "host/commands/OptionChecks.h"
#include "results/ResultFileTable.h"

namespace verenwick::host {
namespace {

/// The names of the result files as `show` takes them.
std::string resultNames() {
  std::vector<std::string_view> names;
  names.reserve(results::kResultFiles.size());
  for (const results::ResultFile& file : results::kResultFiles) {
    names.push_back(file.name.substr(0, file.name.rfind('.')));
  }
  return fmt::format("{}", fmt::join(names, " "));
}

std::string optionNames(const CLI::App& command) {
  std::vector<std::string> names;
  for (const CLI::Option* option : listedOptions(command)) {
    for (std::string& name : namesOf(*option)) {
      names.push_back(std::move(name));
    }
  }
  return fmt::format("{}", fmt::join(names, " "));
}

bool repeats(const CLI::Option& option) { return option.get_expected_max() > 1; }

/// What bash completes: FILE, DIRECTORY, NAME, the choices behind a colon, or nothing behind it.
std::string bashKind(const CLI::Option& option) {
  std::string type = valueOf(option);
  if (type == "FILE" || type == "DIRECTORY" || type == "NAME") {
    return type;
  }
  return fmt::format(":{}", fmt::join(choicesOf(option), " "));
}

void printBash(const CLI::App& program) {
  std::string options = fmt::format("    \"\") echo \"{}\" ;;\n", optionNames(program));
  std::string values;
  std::string places;
  for (const CLI::App* command : listedCommands(program)) {
    const std::string& name = command->get_name();
    options += fmt::format("    {}) echo \"{}\" ;;\n", name, optionNames(*command));
    for (const CLI::Option* option : listedOptions(*command)) {
      for (const std::string& each : namesOf(*option)) {
        if (!valueOf(*option).empty()) {
          values += fmt::format("    \"{} {}\") echo \"{}\" ;;\n", name, each, bashKind(*option));
        }
      }
    }
    int place = 0;
    for (const CLI::Option* option : positionals(*command)) {
      const std::string which = repeats(*option) ? "*" : std::to_string(++place);
      places += fmt::format("    \"{} \"{}) echo \"{}\" ;;\n", name, which, bashKind(*option));
    }
  }
  fmt::print(R"bash(# bash completion for verenwick, made by "verenwick completion bash"

_verenwick_options() {{
  case "$1" in
{0}  esac
}}

# What an option of a command takes: nothing for a flag.
_verenwick_value() {{
  case "$1 $2" in
{1}  esac
}}

# What stands at a place behind a command.
_verenwick_place() {{
  case "$1 $2" in
{2}  esac
}}

_verenwick() {{
  local word=${{COMP_WORDS[COMP_CWORD]}} before=${{COMP_WORDS[COMP_CWORD - 1]}}
  local command="" directory="" kind="" skip="" each name
  local -i place=1 i
  COMPREPLY=()
  # Bash takes an equals sign as a word.
  if [[ $word == "=" ]]; then
    word=""
  elif [[ $before == "=" ]]; then
    before=${{COMP_WORDS[COMP_CWORD - 2]}}
  fi
  for ((i = 1; i < COMP_CWORD; ++i)); do
    each=${{COMP_WORDS[i]}}
    if [[ $each == "=" ]]; then
      skip=1
    elif [[ $skip ]]; then
      skip=""
    elif [[ -z $command ]]; then
      [[ $each == -* ]] || command=$each
    elif [[ $each == -* ]]; then
      [[ -z $(_verenwick_value "$command" "$each") || ${{COMP_WORDS[i + 1]}} == "=" ]] || skip=1
    else
      [[ $place -gt 1 ]] || directory=$each
      place+=1
    fi
  done
  [[ $before != -* ]] || kind=$(_verenwick_value "$command" "$before")
  if [[ -z $kind && $word == -* ]]; then
    kind=":$(_verenwick_options "$command")"
  elif [[ -z $kind && -z $command ]]; then
    kind=":{3}"
  elif [[ -z $kind ]]; then
    kind=$(_verenwick_place "$command" "$place")
  fi
  case $kind in
    FILE | DIRECTORY)
      compopt -o filenames 2>/dev/null
      [[ $kind == FILE ]] && each=-f || each=-d
      mapfile -t COMPREPLY < <(compgen "$each" -- "$word")
      ;;
    NAME)
      for name in {4}; do
        [[ -f $directory/$name.bin || -f $directory/$name.txt || -f $directory/$name.log ]] &&
          [[ ${{name,,}} == "${{word,,}}"* ]] && COMPREPLY+=("$name")
      done
      ;;
    :*) mapfile -t COMPREPLY < <(compgen -W "${{kind:1}}" -- "$word") ;;
  esac
}}
complete -F _verenwick verenwick
)bash",
             options, values, places, fmt::format("{}", fmt::join(commandNames(program), " ")),
             resultNames());
}

/// A text in an argument between single quotes, where zsh gives colons and brackets a meaning.
std::string zshText(const std::string& text) {
  std::string quoted;
  for (const char c : text) {
    if (c == '\'') {
      quoted += "'\\''";
      continue;
    }
    if (c == ':' || c == '[' || c == ']' || c == '\\') {
      quoted += '\\';
    }
    quoted += c;
  }
  return quoted;
}

std::string zshAction(const CLI::Option& option) {
  const std::string type = valueOf(option);
  if (type == "FILE" || type == "DIRECTORY") {
    return type == "FILE" ? "_files" : "_files -/";
  }
  if (type == "NAME") {
    return "_verenwick_names";
  }
  return choicesOf(option).empty() ? " " : fmt::format("({})", fmt::join(choicesOf(option), " "));
}

std::string zshArguments(const CLI::App& command) {
  std::string text;
  for (const CLI::Option* option : listedOptions(command)) {
    const std::vector<std::string> names = namesOf(*option);
    for (const std::string& name : names) {
      const std::string value = valueOf(*option);
      text += fmt::format(" \\\n        '({}){}[{}]{}'", fmt::join(names, " "), name,
                          zshText(option->get_description()),
                          value.empty() ? "" : fmt::format(":{}:{}", value, zshAction(*option)));
    }
  }
  int place = 0;
  for (const CLI::Option* option : positionals(command)) {
    const std::string which = repeats(*option) ? "*" : std::to_string(++place);
    text +=
        fmt::format(" \\\n        '{}:{}:{}'", which, option->get_name(true), zshAction(*option));
  }
  return text;
}

void printZsh(const CLI::App& program) {
  std::string commands;
  std::string cases;
  for (const CLI::App* command : listedCommands(program)) {
    commands +=
        fmt::format("    '{}:{}'\n", command->get_name(), zshText(command->get_description()));
    cases += fmt::format("    {})\n      _arguments{}\n      ;;\n", command->get_name(),
                         zshArguments(*command));
  }
  fmt::print(R"zsh(#compdef verenwick
# zsh completion for verenwick, made by "verenwick completion zsh"

# The result files in the directory behind "show".
_verenwick_names() {{
  local -a names
  local each name
  for each in ${{words[2,-1]}}; do
    [[ -d $each ]] || continue
    for name in {0}; do
      [[ -f $each/$name.bin || -f $each/$name.txt || -f $each/$name.log ]] && names+=($name)
    done
    break
  done
  compadd -M 'm:{{a-zA-Z}}={{A-Za-z}}' -a names
}}

_verenwick() {{
  local curcontext=$curcontext state line
  local -A opt_args
  local -a commands
  commands=(
{1}  )
  _arguments -C{2} \
        '1:command:->command' '*::argument:->argument'
  case $state in
    command) _describe command commands ;;
    argument)
      case $words[1] in
{3}      esac
      ;;
  esac
}}

if [[ $zsh_eval_context[-1] == loadautofunc ]]; then
  _verenwick "$@"
else
  compdef _verenwick verenwick
fi
)zsh",
             resultNames(), commands, zshArguments(program), cases);
}

}  // namespace

void addCompletionCommand(CLI::App& program, int& status) {
  CLI::App* command =
      program.add_subcommand("completion", "Print what completes command lines in a shell");
  command->group("");
  const auto shell = std::make_shared<std::string>();
  command->add_option("SHELL", *shell, "The shell")
      ->required()
      ->check(oneOf({"bash", "zsh"}))
      ->type_name("bash|zsh");
  command->callback([&program, shell, &status] {
    *shell == "bash" ? printBash(program) : printZsh(program);
    status = 0;
  });
}

}  // namespace verenwick::host
