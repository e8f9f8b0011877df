#pragma once

#include <span>
#include <string>
#include <string_view>

#include "RunControl/Files.h"
#include "input/FreeFormat.h"

namespace verenwick {

using input::FreeFormat;

/// A text file of numbers that the input file names, read line by line with tabs and commas
/// treated. A file that can't be opened fails at its first line.
class DataFile {
 public:
  explicit DataFile(std::string_view path);

  bool isOpen() const { return reader_.isOpen(); }
  /// Takes the next line; false at the end of the file.
  [[nodiscard]] bool nextLine();
  /// Takes lines without looking at them.
  [[nodiscard]] bool skipLines(int count);
  /// Takes the next line and reads its first values from it.
  [[nodiscard]] bool numbers(std::span<double> values);
  /// Takes the next line and reads a number and the values behind it.
  [[nodiscard]] bool numbers(double& first, std::span<double> values);

  const std::string& line() const { return line_; }
  /// Lines taken so far, with the one that failed.
  int lineNumber() const { return lineNumber_; }

  /// Appends "Error occurs when reading " file " in line " number to the log; returns false.
  bool reportFailure() const;

  /// The file's name without the blanks around it.
  const std::string& name() const { return name_; }

 private:
  std::string name_;
  TextReader reader_;
  std::string line_;
  int lineNumber_ = 0;
};

}  // namespace verenwick
