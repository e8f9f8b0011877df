#include "RunControl/StringOperation.h"

#include <algorithm>

namespace verenwick {

void STRINGDELETETAB(std::string& text) {
  std::replace(text.begin(), text.end(), '\t', ' ');
  std::replace(text.begin(), text.end(), ',', '.');
}

void STRINGFIRSTWORD(std::string& text) { text = std::string(firstWord(text)); }

void STRINGWITHOUTFIRSTWORD(std::string& text) {
  const std::size_t start = std::min(text.find_first_not_of(' '), text.size());
  const std::size_t end = std::min(text.find(' ', start), text.size());
  text.erase(0, std::min(text.find_first_not_of(' ', end), text.size()));
}

void STRINGUPCASE(std::string& text) {
  for (char& c : text) {
    if (c >= 'a' && c <= 'z') {
      c = static_cast<char>(c - 'a' + 'A');
    }
  }
}

void STRINGADJUST(std::string& text) {
  text.erase(std::remove(text.begin(), text.end(), ' '), text.end());
}

std::int32_t STRINGSPLITCOUNT(std::string_view text) {
  constexpr std::size_t kLookedAt = 100;
  std::int32_t words = 0;
  char before = ' ';
  for (const char c : text.substr(0, kLookedAt)) {
    if (before == ' ' && c != ' ') {
      ++words;
    }
    before = c;
  }
  return words;
}

void shiftLeft(std::string& text) {
  const std::size_t start = text.find_first_not_of(' ');
  if (start != std::string::npos) {
    std::rotate(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(start), text.end());
  }
}

std::string_view withoutTrailingBlanks(std::string_view text) {
  return text.substr(0, text.find_last_not_of(' ') + 1);
}

std::string_view trimmed(std::string_view text) {
  return withoutTrailingBlanks(text.substr(std::min(text.find_first_not_of(' '), text.size())));
}

std::string_view firstWord(std::string_view text) {
  const std::size_t start = text.find_first_not_of(' ');
  if (start == std::string_view::npos) {
    return {};
  }
  text.remove_prefix(start);
  return text.substr(0, text.find(' '));
}

bool isBlank(std::string_view text) {
  return text.find_first_not_of(' ') == std::string_view::npos;
}

}  // namespace verenwick
