#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "input/SectionValues.h"

namespace verenwick::input {

/// The text of an input file with all that stands in it: nothing is lost, so that a text can be
/// written back with one value changed and everything else as it was.
///
/// Values have names: "SHAFT 17 Stiffness" is a value of the section with that id, "DIESEL 1
/// FiringStatusA 3" the third of several, "LOADCASE 4 RPM" the speed of the fourth load case,
/// "LOADCASE 4 DIESEL 1" a power in it and "LOADCASE 4" its whole row. Letters may be of either
/// case.
class InputDocument {
 public:
  /// A line that can't be read, where the reading of the text ends.
  struct Failure {
    std::int32_t line;
    std::string_view message;  ///< names the values of the line, as the solver's message does
    /// The section as far as it could be read, and its line that couldn't; nothing in LOADCASE.
    SectionValues section = {};
    const Line* wanted = nullptr;
  };
  /// A column of the load case table, of a kind that can have one.
  struct Column {
    std::int32_t id;
    std::string kind;  ///< in capitals
  };
  /// A row of the load case table: the speed in rpm and powers in kW, as many as are written.
  struct LoadCase {
    std::vector<Value> values;
  };

  explicit InputDocument(std::string text);

  [[nodiscard]] const std::string& text() const { return text_; }
  [[nodiscard]] const std::optional<Failure>& failure() const { return failure_; }
  /// The free text in front of the first section; empty if there is none.
  [[nodiscard]] const std::string& title() const { return title_; }
  /// Lines between sections that aren't blank: titles, comments, and what was meant to be one of a
  /// section and isn't.
  [[nodiscard]] std::span<const std::int32_t> skippedLines() const { return skipped_; }
  /// In the order of the text, LOADCASE not among them.
  [[nodiscard]] std::span<const SectionValues> sections() const { return sections_; }
  [[nodiscard]] std::span<const Column> columns() const { return columns_; }
  [[nodiscard]] std::span<const LoadCase> loadCases() const { return loadCases_; }

  [[nodiscard]] std::int32_t lineCount() const {
    return static_cast<std::int32_t>(starts_.size()) - 1;
  }
  /// A line as it is written, without its end; lines count from 1.
  [[nodiscard]] std::string_view line(std::int32_t number) const;
  /// What is written at a place.
  [[nodiscard]] std::string_view token(const Place& place) const {
    return std::string_view(text_).substr(offsetOf(place), place.length);
  }
  /// The free text behind a value on its line, as it is written.
  [[nodiscard]] std::string remarkBehind(const Place& place) const;
  /// The token of a named value, as it is written. Throws std::runtime_error for a name that is
  /// none.
  [[nodiscard]] std::string_view token(std::string_view name) const;
  /// Writes a named value anew; all else stays as it is, to the byte. Throws std::runtime_error,
  /// and changes nothing, for a name that is none and for a text that can't stand there: it must
  /// read as such a value, and no other value may change by it.
  void replace(std::string_view name, std::string_view token);

 private:
  class TextLines;

  void splitLines();
  void read();
  void readLoadCases(TextLines& lines);
  bool readColumns(std::string_view ids, std::string_view kinds);
  bool readRow(TextLines& lines);
  [[nodiscard]] Place find(std::string_view name) const;
  [[nodiscard]] Place findLoadCase(std::string_view name, std::span<const std::string> words) const;
  [[nodiscard]] std::size_t offsetOf(const Place& place) const;

  std::string text_;
  /// Where each line starts, and behind the last one the end of the text.
  std::vector<std::size_t> starts_;
  std::string title_;
  std::vector<std::int32_t> skipped_;
  std::vector<SectionValues> sections_;
  std::vector<Column> columns_;
  std::vector<LoadCase> loadCases_;
  std::optional<Failure> failure_;
};

}  // namespace verenwick::input
