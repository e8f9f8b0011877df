#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// What the look at a plant before its run finds.
namespace verenwick::host {

enum class Severity {
  error,    ///< the solver refuses it
  warning,  ///< it can't be meant
  hint      ///< it is unusual
};

std::string_view wordOf(Severity severity);

struct Finding {
  Severity severity;
  std::string_view code;  ///< its heading in docs/checking.md
  std::int32_t line;      ///< of the input file, from 1; 0 where no line is meant
  std::string found;      ///< whose value and what it is
  std::string expected;
  std::string advice;  ///< what to do
};

/// The findings of one look, each once.
class Findings {
 public:
  /// Control characters of the input, which a terminal would obey, become "?".
  void add(Finding finding);
  [[nodiscard]] const std::vector<Finding>& all() const { return all_; }
  [[nodiscard]] std::size_t count(Severity severity) const;
  /// Those of some severities.
  [[nodiscard]] Findings only(std::initializer_list<Severity> severities) const;
  /// Errors first, then warnings and hints, each in the order of the lines.
  void sort();

 private:
  std::vector<Finding> all_;
};

/// Some of each code, so that a fault that stands on every line hides no other.
struct FirstFindings {
  FirstFindings(const Findings& findings, std::size_t most);

  std::vector<const Finding*> shown;
  std::map<std::string_view, std::size_t> further;  ///< codes and how many more there are
};

}  // namespace verenwick::host
