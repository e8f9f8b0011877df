#pragma once

#include <fmt/color.h>

#include <cstdio>
#include <string>
#include <string_view>

namespace verenwick::host {

/// Clears a line of a terminal from the cursor on.
inline constexpr const char* kClearToEnd = "\x1b[K";

/// Whether a person reads the stream.
bool isTerminal(std::FILE* stream);

/// Whether lines of it can be drawn anew.
bool canRedraw(std::FILE* stream);

/// The text in a style where the stream is a terminal that wants it (NO_COLOR isn't set), else as
/// it is.
std::string styled(std::FILE* stream, const fmt::text_style& style, std::string_view text);

/// A number of a table, right-aligned: with fixed decimals, or where it would fill the column in as
/// many digits as find room in scientific form.
std::string column(double value, int decimals, std::size_t width);

/// Prints the lines of a log to standard error, errors and warnings in colour.
void printLog(const std::string& log);

}  // namespace verenwick::host
