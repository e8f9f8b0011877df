#include "host/check/Finding.h"

#include <algorithm>
#include <tuple>

namespace verenwick::host {

std::string_view wordOf(Severity severity) {
  switch (severity) {
    case Severity::error:
      return "error";
    case Severity::warning:
      return "warning";
    case Severity::hint:
      break;
  }
  return "hint";
}

void Findings::add(Finding finding) {
  constexpr unsigned char kDelete = 0x7F;
  for (std::string* text : {&finding.found, &finding.expected, &finding.advice}) {
    std::replace_if(
        text->begin(), text->end(),
        [](char each) {
          const auto byte = static_cast<unsigned char>(each);
          return byte < ' ' || byte == kDelete;
        },
        '?');
  }
  all_.push_back(std::move(finding));
}

std::size_t Findings::count(Severity severity) const {
  return static_cast<std::size_t>(std::count_if(
      all_.begin(), all_.end(), [=](const Finding& each) { return each.severity == severity; }));
}

Findings Findings::only(std::initializer_list<Severity> severities) const {
  Findings some;
  for (const Finding& each : all_) {
    if (std::find(severities.begin(), severities.end(), each.severity) != severities.end()) {
      some.add(each);
    }
  }
  return some;
}

void Findings::sort() {
  std::stable_sort(all_.begin(), all_.end(), [](const Finding& a, const Finding& b) {
    return std::tie(a.severity, a.line) < std::tie(b.severity, b.line);
  });
}

FirstFindings::FirstFindings(const Findings& findings, std::size_t most) {
  std::map<std::string_view, std::size_t> counts;
  for (const Finding& each : findings.all()) {
    if (counts[each.code]++ < most) {
      shown.push_back(&each);
    } else {
      ++further[each.code];
    }
  }
}

}  // namespace verenwick::host
