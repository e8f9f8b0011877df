#include "host/commands/OptionChecks.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <functional>
#include <limits>
#include <utility>

namespace verenwick::host {
namespace {

template <class Number>
bool readWhole(const std::string& text, Number& value) {
  const char* begin = text.data() + (text.starts_with('+') ? 1 : 0);
  const char* end = text.data() + text.size();
  const auto [rest, error] = std::from_chars(begin, end, value);
  return error == std::errc() && rest == end;
}

CLI::Validator validator(std::function<std::string(std::string&)> check) {
  return {std::move(check), ""};
}

}  // namespace

CLI::Validator wholeNumber() {
  return wholeNumber(std::numeric_limits<std::int64_t>::min(),
                     std::numeric_limits<std::int64_t>::max());
}

CLI::Validator wholeNumber(std::int64_t first, std::int64_t last) {
  return validator([first, last](std::string& text) -> std::string {
    std::int64_t value = 0;
    if (readWhole(text, value) && value >= first && value <= last) {
      text = std::to_string(value);
      return "";
    }
    return first == std::numeric_limits<std::int64_t>::min()
               ? fmt::format("\"{}\" is no whole number", text)
               : fmt::format("\"{}\" is no whole number from {} to {}", text, first, last);
  });
}

CLI::Validator finiteNumber() {
  return validator([](std::string& text) -> std::string {
    double value = 0;
    return readWhole(text, value) && std::isfinite(value)
               ? ""
               : fmt::format("\"{}\" is no number", text);
  });
}

CLI::Validator oneOf(std::vector<std::string> words) {
  return validator([words = std::move(words)](std::string& word) -> std::string {
    if (std::find(words.begin(), words.end(), word) != words.end()) {
      return "";
    }
    const std::string near = didYouMean(word, words);
    return fmt::format("\"{}\" is none of {}{}", word, listed(words), near);
  });
}

}  // namespace verenwick::host
