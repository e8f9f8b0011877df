#pragma once

#include <fmt/color.h>

#include <cstdio>
#include <string>
#include <string_view>

namespace verenwick::host {

/// Whether a person reads the stream.
bool isTerminal(std::FILE* stream);

/// The text in a style where the stream is a terminal that wants it (NO_COLOR isn't set), else as
/// it is.
std::string styled(std::FILE* stream, const fmt::text_style& style, std::string_view text);

/// Prints the lines of a log to standard error, errors and warnings in colour.
void printLog(const std::string& log);

}  // namespace verenwick::host
