#include "host/check/FindingOutput.h"

#include <fmt/color.h>
#include <fmt/format.h>

#include <cstdio>

#include "host/Terminal.h"

namespace verenwick::host {
namespace {

fmt::text_style styleOf(Severity severity) {
  switch (severity) {
    case Severity::error:
      return fmt::fg(fmt::terminal_color::red);
    case Severity::warning:
      return fmt::fg(fmt::terminal_color::yellow);
    case Severity::hint:
      break;
  }
  return fmt::fg(fmt::terminal_color::cyan);
}

std::string counted(std::size_t count, Severity severity) {
  return fmt::format("{} {}{}", count, wordOf(severity), count == 1 ? "" : "s");
}

std::string placeOf(const Finding& finding) {
  return finding.line == 0 ? "" : fmt::format("line {}: ", finding.line);
}

}  // namespace

void printFindings(const std::string& name, const Findings& findings) {
  fmt::print("{}: {}, {}, {}\n", styled(stdout, fmt::emphasis::bold, name),
             counted(findings.count(Severity::error), Severity::error),
             counted(findings.count(Severity::warning), Severity::warning),
             counted(findings.count(Severity::hint), Severity::hint));
  constexpr std::size_t kMost = 10;
  const FirstFindings first(findings, kMost);
  for (const Finding* each : first.shown) {
    fmt::print(
        "\n{} {}{} [{}]\n",
        styled(stdout, styleOf(each->severity), fmt::format("{:<7}", wordOf(each->severity))),
        placeOf(*each), each->found, each->code);
    if (!each->expected.empty()) {
      fmt::print("        expected: {}\n", each->expected);
    }
    if (!each->advice.empty()) {
      fmt::print("        to do:    {}\n", each->advice);
    }
  }
  for (const auto& [code, count] : first.further) {
    fmt::print("\nand {} more of [{}]; --json prints all\n", count, code);
  }
}

void printAdvice(const std::string& name, const Findings& findings) {
  constexpr std::size_t kMost = 3;
  const FirstFindings first(findings, kMost);
  std::string words;
  for (const Finding* each : first.shown) {
    const std::string word =
        styled(stderr, styleOf(each->severity), fmt::format("{}:", wordOf(each->severity)));
    words += fmt::format("{}: {} {}{} [{}]\n", name, word, placeOf(*each), each->found, each->code);
  }
  for (const auto& [code, count] : first.further) {
    words += fmt::format("{}: and {} more of [{}]\n", name, count, code);
  }
  if (!words.empty()) {
    words += fmt::format("{}: what to do: verenwick check {}\n", name, name);
  }
  std::fputs(words.c_str(), stderr);
}

nlohmann::ordered_json jsonOf(const Finding& finding) {
  return {{"severity", wordOf(finding.severity)},
          {"code", finding.code},
          {"line", finding.line},
          {"found", finding.found},
          {"expected", finding.expected},
          {"advice", finding.advice}};
}

nlohmann::ordered_json jsonOf(const Findings& findings) {
  auto list = nlohmann::ordered_json::array();
  for (const Finding& each : findings.all()) {
    list.push_back(jsonOf(each));
  }
  return list;
}

}  // namespace verenwick::host
