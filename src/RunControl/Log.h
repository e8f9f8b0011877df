#pragma once

#include <concepts>
#include <optional>
#include <string>
#include <string_view>

#include "RunControl/Files.h"
#include "RunControl/NumberText.h"

namespace verenwick {

/// The log "Verenwick.log" in the result directory. A record begins with one blank, its pieces
/// follow one behind the other; one blank stands before a number except after "(".
class Log {
 public:
  explicit Log(Opening opening);
  /// A log that nobody reads: what it takes is lost. For a look at an input file outside a run.
  Log() = default;
  bool isOpen() const { return writer_ && writer_->isOpen(); }
  /// Whether a record could not be written since this was called last; of any log.
  static bool takeLostRecord();

  template <class... Pieces>
  void record(const Pieces&... pieces) {
    std::string line = " ";
    (append(line, pieces), ...);
    write(line);
  }

 private:
  static void append(std::string& line, std::string_view text) { line += text; }
  static void append(std::string& line, std::integral auto number) {
    appendNumber(line, std::to_string(number));
  }
  static void append(std::string& line, double number) { appendNumber(line, shortestText(number)); }
  static void appendNumber(std::string& line, std::string_view number);
  /// Writes a record; one that the log can't take goes to standard error.
  void write(const std::string& line);

  std::optional<TextWriter> writer_;
};

/// Appends one record to the log.
template <class... Pieces>
void appendToLog(const Pieces&... pieces) {
  Log(Opening::append).record(pieces...);
}

}  // namespace verenwick
