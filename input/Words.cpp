#include "input/Words.h"

#include <algorithm>

namespace verenwick::input {

std::string_view firstWord(std::string_view text) {
  const std::size_t start = text.find_first_not_of(' ');
  if (start == std::string_view::npos) {
    return {};
  }
  text.remove_prefix(start);
  return text.substr(0, text.find(' '));
}

std::string_view behindFirstWord(std::string_view text) {
  const std::string_view word = firstWord(text);
  if (word.empty()) {
    return {};
  }
  text.remove_prefix(static_cast<std::size_t>(word.data() + word.size() - text.data()));
  return text.substr(std::min(text.find_first_not_of(' '), text.size()));
}

std::string_view withoutTrailingBlanks(std::string_view text) {
  return text.substr(0, text.find_last_not_of(' ') + 1);
}

std::string_view trimmed(std::string_view text) {
  return withoutTrailingBlanks(text.substr(std::min(text.find_first_not_of(' '), text.size())));
}

bool isBlank(std::string_view text) {
  return text.find_first_not_of(' ') == std::string_view::npos;
}

std::string upperCase(std::string_view text) {
  std::string upper(text);
  for (char& c : upper) {
    if (c >= 'a' && c <= 'z') {
      c = static_cast<char>(c - 'a' + 'A');
    }
  }
  return upper;
}

}  // namespace verenwick::input
