#include "host/NearestWord.h"

#include <fmt/format.h>

#include <algorithm>
#include <numeric>
#include <utility>

namespace verenwick::host {
namespace {

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
