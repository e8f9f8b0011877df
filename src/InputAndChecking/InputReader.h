#pragma once

#include <algorithm>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "ComponentTables/ModelBundle.h"
#include "ComponentTables/TorqueOrders.h"
#include "RunControl/Constants.h"
#include "RunControl/DataFile.h"
#include "RunControl/Log.h"
#include "RunControl/StringOperation.h"

namespace verenwick {

/// The values of a line that a section wants, each with the unit that it has in the file; inside
/// all is SI. Every target reads itself from the line and says whether it could.
namespace target {

/// A real that is stored as factor x value / divisor.
struct Real {
  double& value;
  double factor = 1.0;
  double divisor = 1.0;
  [[nodiscard]] bool readFrom(FreeFormat& line) const {
    if (!line.read(value)) {
      return false;
    }
    value = factor * value / divisor;
    return true;
  }
};

/// Several reals behind each other, all in the same unit.
struct Reals {
  std::span<double> values;
  double factor = 1.0;
  double divisor = 1.0;
  [[nodiscard]] bool readFrom(FreeFormat& line) const {
    for (double& value : values) {
      if (!Real{value, factor, divisor}.readFrom(line)) {
        return false;
      }
    }
    return true;
  }
};

struct Integer {
  std::int32_t& value;
  [[nodiscard]] bool readFrom(FreeFormat& line) const { return line.read(value); }
};

struct Integers {
  std::span<std::int32_t> values;
  [[nodiscard]] bool readFrom(FreeFormat& line) const {
    for (std::int32_t& value : values) {
      if (!line.read(value)) {
        return false;
      }
    }
    return true;
  }
};

/// An integer that stands for a logical: 0 is false, any other value true.
struct Flag {
  bool& value;
  [[nodiscard]] bool readFrom(FreeFormat& line) const {
    std::int32_t number = 0;
    if (!line.read(number)) {
      return false;
    }
    value = number != 0;
    return true;
  }
};

/// A number of orders in use, of those that a machine can have; one below 0 means none.
struct OrderCount {
  std::int32_t& value;
  [[nodiscard]] bool readFrom(FreeFormat& line) const {
    return line.read(value) && value <= static_cast<std::int32_t>(kTorqueOrders);
  }
};

/// A word, cut at a length.
struct Word {
  std::string& value;
  std::size_t length;
  [[nodiscard]] bool readFrom(FreeFormat& line) const {
    if (!line.read(value)) {
      return false;
    }
    value.resize(std::min(value.size(), length));
    return true;
  }
};

}  // namespace target

/// Names of components are cut at this length.
inline constexpr std::size_t kNameLength = 20;

inline target::Integer integer(std::int32_t& value) { return {value}; }
inline target::Integers integers(std::span<std::int32_t> values) { return {values}; }
inline target::Flag flag(bool& value) { return {value}; }
inline target::Word word(std::string& value, std::size_t length) { return {value, length}; }
inline target::OrderCount orderCount(std::int32_t& value) { return {value}; }
inline target::Real real(double& value) { return {value}; }
inline target::Reals real(std::span<double> values) { return {values}; }
/// Millimetres in the file, metres inside.
inline target::Real millimetre(double& value) { return {value, 1.0, 1000.0}; }
/// Kilowatts in the file, watts inside.
inline target::Real kilowatt(double& value) { return {value, 1000.0}; }
/// Bar in the file, pascal inside.
inline target::Real bar(double& value) { return {value, kBar}; }
/// Percent in the file, a fraction inside.
inline target::Real percent(double& value) { return {value, 1.0, 100.0}; }
inline target::Reals percent(std::span<double> values) { return {values, 1.0, 100.0}; }
/// Degrees in the file, radians inside.
inline target::Real degree(double& value) { return {value, kPi, 180.0}; }
inline target::Reals degree(std::span<double> values) { return {values, kPi, 180.0}; }

/// Values of a section that stay in force for the sections behind it.
struct ReaderState {
  std::int32_t loadCases = 0;          ///< number of load cases
  std::int32_t isVengine = 0;          ///< of the last engine, as read
  std::int32_t isGenset = 0;           ///< of the last engine, as read
  std::int32_t propeller = 0;          ///< position of the last propeller
  std::int32_t propellerMethod = 0;    ///< damping method of the last propeller
  std::int32_t couplingDamping = 0;    ///< damping type of the last Geislinger coupling
  std::int32_t couplingOilSupply = 0;  ///< oil supply type of the last Geislinger coupling
  std::int32_t couplingDesign = 0;     ///< design type of the last Geislinger coupling
  ShaftsByNodes shafts;                ///< those whose line isn't read yet join 0 and 0
};

/// The input file as its sections see it: they take the values of one line after the other. Writes
/// the message of a line that can't be read.
class InputReader {
 public:
  InputReader(std::string_view path, Log& log) : file_(path), log_(log) {}

  /// Takes the next line of the file, tabs and commas treated; false at the end of the file.
  [[nodiscard]] bool nextLine() { return file_.nextLine(); }
  const std::string& line() const { return file_.line(); }
  std::int32_t lineNumber() const { return file_.lineNumber(); }
  Log& log() { return log_; }

  /// Begins a section, the current line being its keyword line.
  /// @param fields the keyword line's field list, as its message names it
  void beginSection(std::string_view fields) { keywordFields_ = fields; }

  /// Takes values from the keyword line behind its first word.
  template <class... Targets>
  [[nodiscard]] bool keywordLine(const Targets&... targets) {
    std::string rest = line();
    STRINGWITHOUTFIRSTWORD(rest);
    FreeFormat format(rest);
    return (targets.readFrom(format) && ...) || failKeywordLine();
  }
  bool failKeywordLine() { return fail(keywordFields_); }

  /// Takes the next line and values from it.
  /// @param fields the line's field list, as its message names it
  template <class... Targets>
  [[nodiscard]] bool line(std::string_view fields, const Targets&... targets) {
    if (!nextLine()) {
      return fail(fields);
    }
    FreeFormat format(line());
    return (targets.readFrom(format) && ...) || fail(fields);
  }

  /// Takes the next line as it stands, cut at the length of a path.
  [[nodiscard]] bool textLine(std::string_view fields, std::string& text);

  /// Takes the next line and the first word of it in upper case.
  [[nodiscard]] bool wordLine(std::string_view fields, std::string& word);

  /// Writes the message that the current line can't be read; returns false.
  bool fail(std::string_view fields);

  ReaderState state;

 private:
  DataFile file_;
  Log& log_;
  std::string_view keywordFields_;
};

}  // namespace verenwick
