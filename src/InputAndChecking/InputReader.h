#pragma once

#include <cstdint>
#include <ios>
#include <streambuf>
#include <string>
#include <string_view>

#include "ComponentTables/ModelBundle.h"
#include "RunControl/Log.h"
#include "RunControl/StringOperation.h"
#include "input/LineRules.h"
#include "input/SectionReader.h"

namespace verenwick {

/// What the sections read so far leave to those behind them.
struct ReaderState {
  std::int32_t loadCases = 0;          ///< number of load cases
  std::int32_t isVengine = 0;          ///< of the last engine, as read
  std::int32_t isGenset = 0;           ///< of the last engine, as read
  std::int32_t propeller = 0;          ///< position of the last propeller
  std::int32_t couplingOilSupply = 0;  ///< oil supply type of the last Geislinger coupling
  std::int32_t couplingDesign = 0;     ///< design type of the last Geislinger coupling
  ShaftsByNodes shafts;                ///< those whose line isn't read yet join 0 and 0
};

/// An input text from its start on, line by line and section by section. Writes the message of a
/// line that can't be read.
class InputReader {
 public:
  InputReader(std::streambuf& text, Log& log) : lines_(text), log_(log) {}

  /// Takes the next line of the text, tabs and commas treated; false at its end.
  [[nodiscard]] bool nextLine() { return lines_.next(); }
  const std::string& line() const { return lines_.current(); }
  std::int32_t lineNumber() const { return lines_.number(); }
  Log& log() { return log_; }

  /// Reads the keyword line of a section, which is the current line.
  [[nodiscard]] bool readKeywordLine(const input::Section& section, input::SectionValues& values) {
    return sections_.readKeywordLine(section, values) || fail();
  }
  /// Reads the lines behind the keyword line that has been read.
  [[nodiscard]] bool readFurtherLines(input::SectionValues& values) {
    return sections_.readFurtherLines(values) || fail();
  }
  /// Writes the message that the line read last can't be read; returns false.
  bool fail() {
    log_.record("Error occurs when reading \"", sections_.message(), "\" in input file line ",
                lineNumber());
    return false;
  }

  ReaderState state;

 private:
  class TextLines : public input::Lines {
   public:
    explicit TextLines(std::streambuf& text) : text_(text) { text_.pubseekpos(0, std::ios::in); }
    bool next() override {
      ++number_;
      const bool any = lines_.next(text_, line_);
      input::treatLine(line_);
      return any;
    }
    [[nodiscard]] const std::string& current() const override { return line_; }
    [[nodiscard]] std::int32_t number() const override { return number_; }

   private:
    std::streambuf& text_;
    input::LineReader lines_;
    std::string line_;
    std::int32_t number_ = 0;
  };

  TextLines lines_;
  input::SectionReader sections_{lines_};
  Log& log_;
};

}  // namespace verenwick
