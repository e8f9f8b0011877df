#pragma once

#include <string>
#include <string_view>

/// Words of a line, which blanks separate.
namespace verenwick::input {

/// The first word of a text.
std::string_view firstWord(std::string_view text);

/// What stands behind the first word, without the blanks between them.
std::string_view behindFirstWord(std::string_view text);

/// A text without the blanks at its end.
std::string_view withoutTrailingBlanks(std::string_view text);

/// A text without the blanks around it.
std::string_view trimmed(std::string_view text);

/// Whether a text holds nothing but blanks.
bool isBlank(std::string_view text);

/// Codes 97 to 122 become 65 to 90, all else stays.
std::string upperCase(std::string_view text);

}  // namespace verenwick::input
