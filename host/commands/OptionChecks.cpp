#include "host/commands/OptionChecks.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <functional>
#include <limits>
#include <numeric>
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

char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

/// Letters to change, insert, leave out or exchange with a neighbour to come from a word to
/// another.
std::size_t distance(std::string_view a, std::string_view b) {
  std::vector<std::size_t> before;
  std::vector<std::size_t> last;
  std::vector<std::size_t> row(b.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t i = 1; i <= a.size(); ++i) {
    before = std::exchange(last, row);
    row[0] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const bool same = lower(a[i - 1]) == lower(b[j - 1]);
      row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (same ? 0 : 1)});
      if (i > 1 && j > 1 && lower(a[i - 1]) == lower(b[j - 2]) &&
          lower(a[i - 2]) == lower(b[j - 1])) {
        row[j] = std::min(row[j], before[j - 2] + 1);
      }
    }
  }
  return row[b.size()];
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

std::string nearest(std::string_view word, const std::vector<std::string>& candidates) {
  constexpr std::size_t kFewest = 2;  // wrong letters that are always forgiven
  constexpr std::size_t kShare = 3;   // of the letters, one in so many
  std::string best;
  std::size_t least = std::max(kFewest, word.size() / kShare) + 1;
  for (const std::string& candidate : candidates) {
    std::size_t away = distance(word, candidate);
    if (!word.empty() && away > 1 && distance(word, candidate.substr(0, word.size())) == 0) {
      away = 1;  // its beginning
    }
    if (away < least && away < std::max(word.size(), candidate.size())) {
      least = away;
      best = candidate;
    }
  }
  return best;
}

std::string didYouMean(std::string_view word, const std::vector<std::string>& candidates) {
  const std::string near = nearest(word, candidates);
  return near.empty() ? "" : fmt::format("; did you mean {}?", near);
}

std::string listed(const std::vector<std::string>& words, std::string_view link) {
  const std::string last = fmt::format(" {} ", link);
  std::string text;
  for (std::size_t i = 0; i < words.size(); ++i) {
    text += (i == 0 ? "" : i + 1 == words.size() ? last : ", ") + words[i];
  }
  return text;
}

}  // namespace verenwick::host
