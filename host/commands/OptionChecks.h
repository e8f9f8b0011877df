#pragma once

#include <CLI/CLI.hpp>
#include <cstdint>
#include <string>
#include <vector>

#include "host/NearestWord.h"

/// What an option takes. The words of a refusal name only bounds that mean something.
namespace verenwick::host {

/// A whole number of 64 bits; what it may be shows when the command runs.
CLI::Validator wholeNumber();

/// A whole number between bounds.
CLI::Validator wholeNumber(std::int64_t first, std::int64_t last);

/// A finite number.
CLI::Validator finiteNumber();

/// One of some words.
CLI::Validator oneOf(std::vector<std::string> words);

}  // namespace verenwick::host
