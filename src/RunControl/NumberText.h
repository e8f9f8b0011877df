#pragma once

#include <cstdint>
#include <string>

/// Numbers as text, for the log and the reports.
namespace verenwick {

/// The shortest text that reads back the same value.
std::string shortestText(double value);

/// An integer right-aligned in a field; asterisks where it does not fit.
std::string integerField(std::int32_t value, int width);

/// A fixed-point number right-aligned in a field; asterisks where it does not fit.
std::string fixedField(double value, int width, int decimals);

/// A number in scientific notation, one non-zero digit before the point, right-aligned in a field:
/// 1.234E+05 with two exponent digits. An exponent with one digit more than these drops the letter;
/// asterisks where the number does not fit.
std::string scientificField(double value, int width, int decimals, int exponentDigits);

}  // namespace verenwick
