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
  for (const Finding& each : findings.all()) {
    fmt::print("\n{} {}{} [{}]\n",
               styled(stdout, styleOf(each.severity), fmt::format("{:<7}", wordOf(each.severity))),
               placeOf(each), each.found, each.code);
    if (!each.expected.empty()) {
      fmt::print("        expected: {}\n", each.expected);
    }
    if (!each.advice.empty()) {
      fmt::print("        to do:    {}\n", each.advice);
    }
  }
}

void printAdvice(const Findings& findings) {
  for (const Finding& each : findings.all()) {
    const std::string word =
        styled(stderr, styleOf(each.severity), fmt::format("{}:", wordOf(each.severity)));
    std::fputs(fmt::format(" {} {}{} [{}]\n", word, placeOf(each), each.found, each.code).c_str(),
               stderr);
  }
}

nlohmann::ordered_json jsonOf(const Findings& findings) {
  auto list = nlohmann::ordered_json::array();
  for (const Finding& each : findings.all()) {
    list.push_back({{"severity", wordOf(each.severity)},
                    {"code", each.code},
                    {"line", each.line},
                    {"found", each.found},
                    {"expected", each.expected},
                    {"advice", each.advice}});
  }
  return list;
}

}  // namespace verenwick::host
