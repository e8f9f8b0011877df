#include "input/FreeFormat.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "input/Words.h"

namespace verenwick::input {
namespace {

/// A plus sign before a digit or point is legal, and no other sign behind it.
bool dropPlus(std::string_view& token) {
  if (token.starts_with('+')) {
    token.remove_prefix(1);
    return !token.starts_with('-');
  }
  return true;
}

template <class Value>
bool convert(std::string_view token, Value& value) {
  Value read{};
  const auto [end, error] = std::from_chars(token.data(), token.data() + token.size(), read);
  if (error != std::errc{} || end != token.data() + token.size()) {
    return false;
  }
  value = read;
  return true;
}

}  // namespace

std::string_view FreeFormat::nextToken() {
  token_ = firstWord(rest_);
  rest_.remove_prefix(token_.empty() ? rest_.size()
                                     : static_cast<std::size_t>(token_.end() - rest_.begin()));
  return token_;
}

bool FreeFormat::read(std::int32_t& value) {
  std::string_view token = nextToken();
  return dropPlus(token) && convert(token, value);
}

bool FreeFormat::read(double& value) {
  std::string token{nextToken()};
  // Letters other than those of an exponent would be "inf", "nan" or a remark.
  if (token.find_first_not_of("0123456789+-.eEdD") != std::string::npos) {
    return false;
  }
  std::replace(token.begin(), token.end(), 'd', 'e');
  std::replace(token.begin(), token.end(), 'D', 'e');
  std::string_view number = token;
  return dropPlus(number) && convert(number, value);
}

bool FreeFormat::read(std::string& word) {
  const std::size_t start = rest_.find_first_not_of(' ');
  if (start == std::string_view::npos) {
    return false;
  }
  const char quote = rest_[start];
  if (quote == '"' || quote == '\'') {
    const std::size_t end = rest_.find(quote, start + 1);
    if (end == std::string_view::npos) {
      return false;
    }
    token_ = rest_.substr(start, end + 1 - start);
    word = rest_.substr(start + 1, end - start - 1);
    rest_.remove_prefix(end + 1);
    return true;
  }
  word = nextToken();
  return true;
}

}  // namespace verenwick::input
