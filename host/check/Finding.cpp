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

std::size_t Findings::count(Severity severity) const {
  return static_cast<std::size_t>(std::count_if(
      all_.begin(), all_.end(), [=](const Finding& each) { return each.severity == severity; }));
}

void Findings::sort() {
  std::stable_sort(all_.begin(), all_.end(), [](const Finding& a, const Finding& b) {
    return std::tie(a.severity, a.line) < std::tie(b.severity, b.line);
  });
}

}  // namespace verenwick::host
