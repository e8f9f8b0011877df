#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "input/SectionTable.h"

namespace verenwick::input {

/// Where a value stands: the number of its line, from 1, and its characters in it, from 0.
struct Place {
  std::int32_t line = 0;
  std::size_t column = 0;
  std::size_t length = 0;
};

/// A value that has been read.
struct Value {
  double real = 0.0;         ///< in SI units
  std::int32_t integer = 0;  ///< an integer, flag or count as written; the number of a choice
  std::string text;          ///< a word or path
  Place place;
};

/// The values of a section, found by the names of the table. A name that the section doesn't have
/// throws std::logic_error; a value whose line doesn't stand is 0, false or empty.
class SectionValues {
 public:
  [[nodiscard]] const Section& section() const { return *section_; }
  /// The keyword line's number, from 1.
  [[nodiscard]] std::int32_t firstLine() const { return firstLine_; }

  [[nodiscard]] double real(std::string_view name) const { return value(name).real; }
  [[nodiscard]] std::int32_t integer(std::string_view name) const { return value(name).integer; }
  [[nodiscard]] bool flag(std::string_view name) const { return integer(name) != 0; }
  [[nodiscard]] const std::string& text(std::string_view name) const { return value(name).text; }
  /// All values of a name; none if its line doesn't stand.
  [[nodiscard]] std::span<const Value> all(std::string_view name) const;
  /// Every value of the section, in the order of the text.
  [[nodiscard]] std::span<const Value> values() const { return values_; }
  /// The field of one of those.
  [[nodiscard]] const Field& fieldOf(const Value& value) const;
  /// Whether the name's line stands in the section.
  [[nodiscard]] bool has(std::string_view name) const { return !all(name).empty(); }
  /// Reals of a name into as many places from the first one on.
  void copyReals(std::string_view name, std::span<double> to) const;
  void copyIntegers(std::string_view name, std::span<std::int32_t> to) const;

 private:
  friend class SectionReader;

  /// The values of a field in `values_`.
  struct Found {
    const Field* field;
    std::size_t first;
    std::size_t count;
  };

  [[nodiscard]] const Value& value(std::string_view name) const;

  const Section* section_ = nullptr;
  std::int32_t firstLine_ = 0;
  std::vector<Found> found_;
  std::vector<Value> values_;
};

}  // namespace verenwick::input
