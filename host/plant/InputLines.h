#pragma once

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace verenwick::host {

/// The lines of an input file, each split into its tokens by the rules of the solver.
class InputLines {
 public:
  explicit InputLines(const std::filesystem::path& input) : stream_(input) {}

  /// Goes to the next line; false at the end of the file.
  bool next();

  [[nodiscard]] bool blank() const { return tokens_.empty(); }

  /// Whether the first token is the keyword, given in capitals.
  [[nodiscard]] bool startsWith(std::string_view keyword) const;

  /// The token at a position from 0, if it is such a number.
  template <class Number>
  [[nodiscard]] std::optional<Number> number(std::size_t position) const {
    if (position >= tokens_.size()) {
      return std::nullopt;
    }
    std::string token(tokens_[position]);
    std::replace_if(
        token.begin(), token.end(), [](char c) { return c == 'd' || c == 'D'; }, 'e');
    const char* begin = token.data() + (token.starts_with('+') ? 1 : 0);
    const char* end = token.data() + token.size();
    Number value{};
    const auto [rest, error] = std::from_chars(begin, end, value);
    if (error != std::errc() || rest != end) {
      return std::nullopt;
    }
    return value;
  }

  /// The numbers from a position on, up to the first token that is none.
  template <class Number>
  [[nodiscard]] std::vector<Number> numbers(std::size_t position) const {
    std::vector<Number> found;
    while (const auto each = number<Number>(position++)) {
      found.push_back(*each);
    }
    return found;
  }

  /// The line as the solver takes it, with decimal points for commas and blanks for tabs, without
  /// the blanks around it.
  [[nodiscard]] std::string_view treated() const;

  /// The word at a position: a token, or what stands between quotes.
  [[nodiscard]] std::string word(std::size_t position) const;

  /// The line from a position on, as it is written.
  [[nodiscard]] std::string rest(std::size_t position) const;

 private:
  std::ifstream stream_;
  std::string written_;
  std::string line_;  ///< with decimal points for commas and blanks for tabs
  std::vector<std::string_view> tokens_;
  bool first_ = true;
};

}  // namespace verenwick::host
