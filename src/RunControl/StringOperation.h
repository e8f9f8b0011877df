#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "input/Words.h"

/// In-place operations on text fields. A field's value is its content up to the last non-blank;
/// the blank ends a word, the end of the field ends the text.
namespace verenwick {

/// Every tab becomes a blank and every comma a full stop, so that a comma is a decimal point in
/// every input and data file.
void STRINGDELETETAB(std::string& text);

/// Leaves only the first word. Not part of a run.
void STRINGFIRSTWORD(std::string& text);

/// Removes the first word; what follows moves to the front.
void STRINGWITHOUTFIRSTWORD(std::string& text);

/// Codes 97 to 122 become 65 to 90, all else stays.
void STRINGUPCASE(std::string& text);

/// Removes every blank.
void STRINGADJUST(std::string& text);

/// Number of blank-separated words among the first 100 characters.
std::int32_t STRINGSPLITCOUNT(std::string_view text);

/// Moves the text to the front of its field; the blanks before it go to the end.
void shiftLeft(std::string& text);

using input::firstWord;
using input::isBlank;
using input::trimmed;
using input::withoutTrailingBlanks;

}  // namespace verenwick
