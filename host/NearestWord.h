#pragma once

#include <string>
#include <string_view>
#include <vector>

/// Words for who has mistyped one.
namespace verenwick::host {

/// The candidate that a mistyped word most likely stands for, in any letter case; empty if none is
/// near.
std::string nearest(std::string_view word, const std::vector<std::string>& candidates);

/// "; did you mean NEAREST?", or nothing.
std::string didYouMean(std::string_view word, const std::vector<std::string>& candidates);

/// The words of a list: "a, b and c".
std::string listed(const std::vector<std::string>& words, std::string_view link = "and");

}  // namespace verenwick::host
