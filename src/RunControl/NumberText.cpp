#include "RunControl/NumberText.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>

namespace verenwick {
namespace {

std::string field(const std::string& text, int width) {
  const auto room = static_cast<std::size_t>(width);
  if (text.size() > room) {
    return std::string(room, '*');
  }
  return std::string(room - text.size(), ' ') + text;
}

/// The largest double has 309 digits before its point. The text knows no locale: a host's decimal
/// comma does not get into a file.
std::string printed(std::chars_format format, int decimals, double value) {
  std::array<char, 400> buffer{};
  const auto end =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, format, decimals);
  return {buffer.data(), end.ptr};
}

std::string notFinite(double value) {
  if (std::isnan(value)) {
    return "NaN";
  }
  return value > 0 ? "Inf" : "-Inf";
}

}  // namespace

std::string shortestText(double value) {
  std::array<char, 40> buffer{};
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
  return {buffer.data(), end.ptr};
}

std::string integerField(std::int32_t value, int width) {
  return field(std::to_string(value), width);
}

std::string fixedField(double value, int width, int decimals) {
  return field(
      std::isfinite(value) ? printed(std::chars_format::fixed, decimals, value) : notFinite(value),
      width);
}

std::string scientificField(double value, int width, int decimals, int exponentDigits) {
  if (!std::isfinite(value)) {
    return field(notFinite(value), width);
  }
  const std::string text = printed(std::chars_format::scientific, decimals, value);
  const std::size_t letter = text.find('e');
  const char sign = text[letter + 1];
  std::string digits = std::to_string(std::abs(std::atoi(text.c_str() + letter + 1)));
  const auto wanted = static_cast<std::size_t>(exponentDigits);
  if (digits.size() < wanted) {
    digits.insert(0, wanted - digits.size(), '0');
  }
  const std::string mantissa = text.substr(0, letter);
  if (digits.size() == wanted) {
    return field(mantissa + 'E' + sign + digits, width);
  }
  return field(mantissa + sign + digits, width);
}

}  // namespace verenwick
