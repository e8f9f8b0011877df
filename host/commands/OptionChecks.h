#pragma once

#include <CLI/CLI.hpp>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

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

/// The candidate that a mistyped word most likely stands for, in any letter case; empty if none is
/// near.
std::string nearest(std::string_view word, const std::vector<std::string>& candidates);

/// "; did you mean NEAREST?", or nothing.
std::string didYouMean(std::string_view word, const std::vector<std::string>& candidates);

/// The words of a list: "a, b and c".
std::string listed(const std::vector<std::string>& words, std::string_view link = "and");

}  // namespace verenwick::host
