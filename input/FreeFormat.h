#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace verenwick::input {

/// Reads the values of a line one after the other; blanks separate them.
///
/// Integers are plain digits with a sign. Reals may have a point and an exponent, with the letter
/// D as well as E; they must be finite and within the range of a double. A word may be quoted with
/// ' or ", and then holds blanks. What stands behind the last value asked for is not looked at.
class FreeFormat {
 public:
  explicit FreeFormat(std::string_view line) : rest_(line) {}

  /// Each returns false, and leaves the value as it was, when the line has no such value next.
  [[nodiscard]] bool read(std::int32_t& value);
  [[nodiscard]] bool read(double& value);
  [[nodiscard]] bool read(std::string& word);

  /// Takes the next word whatever it is; empty at the end of the line.
  std::string_view nextToken();

  /// The value read last as it stands in the line, with its quotes.
  [[nodiscard]] std::string_view token() const { return token_; }

 private:
  std::string_view rest_;
  std::string_view token_;
};

}  // namespace verenwick::input
