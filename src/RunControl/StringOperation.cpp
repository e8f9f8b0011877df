#include "RunControl/StringOperation.h"

#include <algorithm>

#include "input/LineRules.h"

namespace verenwick {

void STRINGDELETETAB(std::string& text) { input::treatLine(text); }

void STRINGFIRSTWORD(std::string& text) { text = std::string(firstWord(text)); }

void STRINGWITHOUTFIRSTWORD(std::string& text) { text = std::string(input::behindFirstWord(text)); }

void STRINGUPCASE(std::string& text) { text = input::upperCase(text); }

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

}  // namespace verenwick
