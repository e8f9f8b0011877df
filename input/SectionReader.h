#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "input/FreeFormat.h"
#include "input/SectionTable.h"
#include "input/SectionValues.h"

namespace verenwick::input {

/// The lines of a text one after the other, cut and treated.
class Lines {
 public:
  Lines() = default;
  Lines(const Lines&) = delete;
  Lines& operator=(const Lines&) = delete;
  virtual ~Lines() = default;

  /// Takes the next line; false at the end of the text.
  [[nodiscard]] virtual bool next() = 0;
  [[nodiscard]] virtual const std::string& current() const = 0;
  /// Lines taken so far, with the one that failed.
  [[nodiscard]] virtual std::int32_t number() const = 0;
};

/// Reads sections by the table, one after the other: the choices of a section stay in force for
/// those behind it.
class SectionReader {
 public:
  explicit SectionReader(Lines& lines) : lines_(lines) {}

  /// Reads the keyword line of a section, which is the current line. False if it can't be read:
  /// message() names its values then, as in all that follows.
  [[nodiscard]] bool readKeywordLine(const Section& section, SectionValues& values);
  /// Reads the further lines of the section whose keyword line has been read.
  [[nodiscard]] bool readFurtherLines(SectionValues& values);

  /// The line that couldn't be read last, its message and its number.
  [[nodiscard]] const Line& line() const { return *line_; }
  [[nodiscard]] std::string_view message() const { return line_->message; }
  [[nodiscard]] std::int32_t failedLine() const { return lines_.number(); }

 private:
  bool readLine(const Line& line, std::string_view text, SectionValues& values);
  bool readFields(const Line& line, std::string_view text, SectionValues& values);
  bool readValue(const Field& field, FreeFormat& from, Value& value);
  void choose(const Field& field, std::string_view word, Value& value);
  std::int32_t& inForce(const Field& field);

  Lines& lines_;
  const Line* line_ = nullptr;
  /// The choice in force of each field that is one.
  std::vector<std::pair<const Field*, std::int32_t>> choices_;
};

/// The section that a line begins, by its first word; null for a line that begins none.
const Section* sectionBegunBy(std::string_view line);

}  // namespace verenwick::input
